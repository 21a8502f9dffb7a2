// One grid on the page, chosen by the address: ?grid=own&rows=100000&columns=120. The driver calls what is put on
// the window. Every grid has the first three columns frozen, two lines of headings and formatted numbers.
import "../../web/src/styles/theme.css";
import "../../web/src/styles/grid.css";
import { codeOf, columnsOf, kTexts, objectRows, textOf, valueOf, type BenchColumn } from "./rows";

interface Table {
  rows: number;
  columns: BenchColumn[];
}
type ToRow = (row: number) => void;
type Mount = (host: HTMLElement, table: Table) => Promise<ToRow>;

function groupsOf(columns: BenchColumn[]): { title: string; members: BenchColumn[] }[] {
  const groups: { title: string; members: BenchColumn[] }[] = [];
  for (const column of columns.slice(kTexts)) {
    if (groups.at(-1)?.title !== column.group) groups.push({ title: column.group, members: [] });
    groups.at(-1)!.members.push(column);
  }
  return groups;
}

const own: Mount = async (host, { rows, columns }) => {
  const [{ GridView }, { Blocks }, { standardColumns }, { kStandardPrecision }] = await Promise.all([
    import("../../web/src/grid/GridView"), import("../../web/src/grid/blocks"), import("../../web/src/grid/columns"), import("../../web/src/grid/formats"),
  ]);
  const shown = standardColumns(columns.map((column, at) => {
    const caption = at < kTexts ? `${column.title}$` : (at - kTexts) % 3 === 0 ? `${column.group}+|+|` : "";
    return { caption, second: at < kTexts ? "" : column.title, type: at < kTexts ? 1 : 2, field: column.key, visible: true, forceHide: false };
  }));
  const read = (first: number, count: number, wanted: number[]) =>
    Promise.resolve({ values: Array.from({ length: count }, (_, row) => wanted.map((column) => valueOf(first + row, column))), summary: [] });
  const grid = document.createElement("div");
  grid.className = "grid";
  host.append(grid);
  const view = new GridView(grid);
  const blocks = new Blocks({ rows, columns: columns.length, read });
  blocks.onLoaded = () => view.drawValues();
  view.show({ columns: shown, groups: new Map(), frozen: kTexts, rows, blocks, precision: kStandardPrecision, emptyForZero: false, sort: null, found: null });
  return (row) => view.reveal({ row, column: 0 });
};

const regularTable: Mount = async (host, { rows, columns }) => {
  await import("regular-table");
  await import("regular-table/dist/css/container.css");
  const table = document.createElement("regular-table") as HTMLElement & { setDataListener: (listener: unknown) => void; draw: () => Promise<void> };
  table.style.cssText = "position:absolute;inset:0";
  host.append(table);
  table.setDataListener(async (x0: number, y0: number, x1: number, y1: number) => {
    const rowsOf = Array.from({ length: Math.max(0, Math.min(y1, rows) - y0) }, (_, at) => y0 + at);
    const column = (at: number) => rowsOf.map((row) => textOf(valueOf(row, at)));
    const seen = Array.from({ length: Math.max(0, Math.min(x1, columns.length - kTexts) - x0) }, (_, at) => x0 + at + kTexts);
    return {
      num_rows: rows, num_columns: columns.length - kTexts, row_headers: rowsOf.map((row) => [0, 1, 2].map((at) => textOf(valueOf(row, at)))),
      column_headers: seen.map((at) => [columns[at]!.group, columns[at]!.title]), data: seen.map(column),
    };
  });
  await table.draw();
  return (row) => (table.scrollTop = (row / rows) * (table.scrollHeight - table.clientHeight));
};

const agGrid: Mount = async (host, { rows, columns }) => {
  const { AllCommunityModule, ModuleRegistry, createGrid } = await import("ag-grid-community");
  ModuleRegistry.registerModules([AllCommunityModule]);
  const leaf = (column: BenchColumn) => ({ field: column.key, headerName: column.title, width: 104, valueFormatter: ({ value }: { value: string | number }) => textOf(value) });
  const api = createGrid(host, {
    columnDefs: [...columns.slice(0, kTexts).map((column) => ({ ...leaf(column), pinned: "left" as const })), ...groupsOf(columns).map(({ title, members }) => ({ headerName: title, children: members.map(leaf) }))],
    rowData: objectRows(rows, columns.length), rowHeight: 26, headerHeight: 28,
  });
  return (row) => api.ensureIndexVisible(row, "top");
};

const revoGrid: Mount = async (host, { rows, columns }) => {
  const { defineCustomElements } = await import("@revolist/revogrid/loader");
  await defineCustomElements();
  const grid = document.createElement("revo-grid") as HTMLElement & Record<string, unknown> & { scrollToRow: (row: number) => Promise<void> };
  grid.style.cssText = "position:absolute;inset:0";
  const leaf = (column: BenchColumn) => ({ prop: column.key, name: column.title, size: 104, cellTemplate: (_: unknown, { value }: { value: string | number }) => textOf(value) });
  Object.assign(grid, { columns: [...columns.slice(0, kTexts).map((column) => ({ ...leaf(column), pin: "colPinStart" })), ...groupsOf(columns).map(({ title, members }) => ({ name: title, children: members.map(leaf) }))], rowSize: 26, readonly: true });
  grid["source"] = objectRows(rows, columns.length);
  host.append(grid);
  return (row) => void grid.scrollToRow(row);
};

const tabulator: Mount = async (host, { rows, columns }) => {
  const { TabulatorFull } = await import("tabulator-tables");
  await import("tabulator-tables/dist/css/tabulator.min.css");
  const leaf = (column: BenchColumn) => ({ field: column.key, title: column.title, width: 104, formatter: (cell: { getValue: () => string | number }) => textOf(cell.getValue()) });
  const table = new TabulatorFull(host, {
    height: 720, data: objectRows(rows, columns.length), index: "id", renderHorizontal: "virtual", rowHeight: 26,
    columns: [...columns.slice(0, kTexts).map((column) => ({ ...leaf(column), frozen: true })), ...groupsOf(columns).map(({ title, members }) => ({ title, columns: members.map(leaf) }))],
  });
  await new Promise((done) => table.on("tableBuilt", () => done(null)));
  return (row) => void table.scrollToRow(row, "top", true);
};

const kMounts: Record<string, Mount> = { own, "regular-table": regularTable, "ag-grid": agGrid, revogrid: revoGrid, tabulator };

// Fetched before the clock runs.
const kCode: Record<string, () => Promise<unknown>> = {
  own: () => Promise.all([import("../../web/src/grid/GridView"), import("../../web/src/grid/blocks"), import("../../web/src/grid/columns"), import("../../web/src/grid/formats")]),
  "regular-table": () => Promise.all([import("regular-table"), import("regular-table/dist/css/container.css")]),
  "ag-grid": () => import("ag-grid-community"),
  revogrid: () => import("@revolist/revogrid/loader"),
  tabulator: () => Promise.all([import("tabulator-tables"), import("tabulator-tables/dist/css/tabulator.min.css")]),
};

const asked = new URLSearchParams(location.search);
const table: Table = { rows: Number(asked.get("rows")), columns: columnsOf(Number(asked.get("columns"))) };
const host = document.getElementById("app")!;
let toRow: ToRow = () => {};

async function shown(text: string, since: number): Promise<number> {
  while (!host.textContent.includes(text)) {
    if (performance.now() - since > 20_000) throw new Error(`${text} is not shown`);
    await new Promise((done) => requestAnimationFrame(done));
  }
  return performance.now() - since;
}

Object.assign(window, {
  fetchCode: () => kCode[asked.get("grid")!]!().then(() => {}),
  mountGrid: async () => {
    const mount = kMounts[asked.get("grid")!]!;
    const begin = performance.now();
    const mounted = mount(host, table);
    const first = await shown(codeOf(0), begin);
    toRow = await mounted;
    return first;
  },
  jumpTo: (row: number) => {
    const begin = performance.now();
    toRow(row);
    return shown(codeOf(row), begin);
  },
});
