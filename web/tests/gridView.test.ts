// What the grid writes to the page while it is scrolled.
import { afterEach, beforeEach, describe, expect, it, vi } from "vitest";
import { Blocks, type RowBlock, type RowSource } from "../src/grid/blocks";
import { standardColumns } from "../src/grid/columns";
import { kStandardPrecision } from "../src/grid/formats";
import { GridView, kRowHeight } from "../src/grid/GridView";
import { columnEdges, columnsThatFit } from "../src/grid/windowing";

const kColumns = 40;
const kRows = 10_000;
const columns = standardColumns(Array.from({ length: kColumns }, (_, at) => ({
  caption: at === 0 ? "代码$" : at % 2 === 1 ? "收入+|" : "", second: at % 2 === 1 ? "数量" : "金额", type: at === 0 ? 1 : 2, field: `F${at}`, visible: true, forceHide: false,
})));

class TableSource implements RowSource {
  rows = kRows;
  columns = kColumns;
  read(first: number, count: number, wanted: number[]): Promise<RowBlock> {
    const values = Array.from({ length: count }, (_, row) => wanted.map((column) => (first + row) * 100 + column));
    return Promise.resolve({ values, summary: [] });
  }
}

let host: HTMLElement;
let view: GridView;
let blocks: Blocks;
beforeEach(async () => {
  vi.useFakeTimers({ toFake: ["setTimeout", "clearTimeout"] });
  host = document.createElement("div");
  Object.defineProperties(host, { clientWidth: { value: 900 }, clientHeight: { value: 56 + 10 * kRowHeight } });
  document.body.append(host);
  view = new GridView(host);
  blocks = new Blocks(new TableSource());
  view.show({ columns, groups: new Map(), frozen: 1, rows: kRows, blocks, precision: { ...kStandardPrecision, quantity: 0 }, emptyForZero: false, sort: null, found: null });
  await settled();
});
afterEach(() => {
  vi.useRealTimers();
  blocks.end();
  host.remove();
});

async function fetched(): Promise<void> {
  for (let turn = 0; turn < 40; ++turn) await Promise.resolve();
}
async function settled(): Promise<void> {
  await fetched();
  view.refresh();
}

function scrollTo(top: number, left = 0): void {
  host.scrollTop = top;
  host.scrollLeft = left;
  host.dispatchEvent(new Event("scroll"));
}

const shown = (row: number, column: number) => host.querySelector(`[data-row='${row}'][data-field=F${column}]`)?.textContent?.replaceAll(",", "");
const lines = () => [...host.querySelectorAll<HTMLElement>(".grid-row")];

describe("the grid while it is scrolled", () => {
  it("shows the values of the rows in the window", async () => {
    scrollTo(5000 * kRowHeight, 600);
    await settled();
    for (const row of [5000, 5004, 5009]) for (const column of [0, 8, 11]) expect(shown(row, column)).toBe(String(row * 100 + column));
  });

  it("keeps its picture until the values of a jump come", async () => {
    blocks.onLoaded = () => view.drawValues();
    scrollTo(7000 * kRowHeight);
    expect(shown(0, 1)).toBe("1");
    expect(host.getAttribute("aria-busy")).toBe("true");
    await fetched();
    expect(shown(7000, 1)).toBe("700001");
    expect(shown(0, 1)).toBeUndefined();
    expect(host.hasAttribute("aria-busy")).toBe(false);
  });

  it("shows the rows of a jump without values when those are late", async () => {
    blocks.onLoaded = () => view.drawValues();
    scrollTo(7000 * kRowHeight);
    scrollTo(7100 * kRowHeight);
    vi.advanceTimersByTime(20);
    expect(shown(7100, 1)).toBe("");
    expect(host.hasAttribute("aria-busy")).toBe(false);
    await fetched();
    expect(shown(7100, 1)).toBe("710001");
  });

  it("draws at once where rows stay", () => {
    scrollTo(5 * kRowHeight);
    expect(shown(12, 1)).toBeDefined();
    expect(host.hasAttribute("aria-busy")).toBe(false);
  });

  it("goes to a row that is led to before the browser tells of the scrolling", async () => {
    blocks.onLoaded = () => view.drawValues();
    view.reveal({ row: 4000, column: 0 });
    await fetched();
    expect(shown(4000, 0)).toBe("400000");
  });

  it("cuts off the texts only that do not fit their columns", async () => {
    const narrow = columns.map((column, at) => (at === 2 ? { ...column, width: 60 } : column));
    view.show({ columns: narrow, groups: new Map(), frozen: 1, rows: kRows, blocks, precision: kStandardPrecision, emptyForZero: false, sort: null, found: null });
    await settled();
    const cut = [...host.querySelectorAll<HTMLElement>(".grid-cell.cut")];
    expect(new Set(cut.map((cell) => cell.dataset["field"]))).toEqual(new Set(["F2"]));
    expect(cut.map((cell) => cell.textContent)).toContain("102.00");
    expect(host.querySelector("[data-row='0'][data-field=F2]")!.classList).not.toContain("cut"); // 2.00
  });

  it.each([
    { name: "down a row", top: 101, left: 0, rows: 1 },
    { name: "down half a window", top: 105, left: 0, rows: 5 },
    { name: "up a row", top: 99, left: 0, rows: 1 },
    { name: "within a row", top: 100.4, left: 0, rows: 0 },
  ])("$name, writes to the lines that come in only", async ({ top, left, rows }) => {
    scrollTo(100 * kRowHeight);
    await settled();
    const written = new Set<Node>();
    const before = lines();
    const watch = new MutationObserver(() => {});
    watch.observe(host, { subtree: true, childList: true, characterData: true, attributes: true, attributeFilter: ["data-row", "class"] });
    scrollTo(top * kRowHeight, left);
    for (const { target, type, addedNodes } of watch.takeRecords()) {
      expect(type === "childList" && addedNodes.length > 0).toBe(false);
      written.add((target.nodeType === Node.TEXT_NODE ? target.parentElement! : (target as HTMLElement)).closest(".grid-row")!);
    }
    expect(written.size).toBe(rows);
    expect(new Set(lines())).toEqual(new Set(before));
  });

  it("sideways, writes to the cells that come in only", async () => {
    scrollTo(0, 1000);
    const watch = new MutationObserver(() => {});
    watch.observe(host.querySelector(".grid-body")!, { subtree: true, attributes: true, attributeFilter: ["data-field"] });
    scrollTo(0, 1000 + 2 * columns[20]!.width);
    expect(watch.takeRecords()).toHaveLength(2 * lines().length);
    expect(new Set(lines().map((line) => line.querySelectorAll(".grid-cell").length)).size).toBe(1);
  });

  it("puts rows and cells in order on the page when it rests", async () => {
    scrollTo(103 * kRowHeight, 1000);
    const rows = () => lines().map((line) => Number(line.dataset["row"]));
    const cells = () => [...lines()[0]!.querySelectorAll<HTMLElement>(".grid-cell")].map((cell) => Number(cell.dataset["at"]));
    const ordered = (numbers: number[]) => numbers.every((number, at) => at === 0 || number > numbers[at - 1]!);
    expect(ordered(rows())).toBe(false);
    vi.advanceTimersByTime(400);
    expect([ordered(rows()), ordered(cells())]).toEqual([true, true]);
  });
});

describe("cells a line", () => {
  it.each([
    { name: "equal widths, one more for those cut at both ends", widths: [50, 100, 100, 100, 100], width: 250, expected: 3 },
    { name: "where the narrow ones stand", widths: [50, 300, 40, 40, 40, 300], width: 150, expected: 4 },
    { name: "no more than there are", widths: [50, 100], width: 800, expected: 1 },
    { name: "none behind the frozen ones", widths: [50], width: 800, expected: 0 },
  ])("are enough for $name", ({ widths, width, expected }) => expect(columnsThatFit(columnEdges(widths), 1, width)).toBe(expected));
});
