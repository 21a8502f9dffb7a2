// The columns of one report as its reader has arranged them: order, width, shown or hidden. A forbidden
// column takes part in nothing.
import { isNumeric } from "./formats";
import { readHeadings, type Heading } from "./headings";

export interface ColumnDescription {
  caption: string;
  second: string;
  type: number;
  field: string;
  visible: boolean;
  forceHide: boolean;
}

export interface GridColumn {
  index: number; // position in the report's heading
  field: string;
  type: number;
  heading: Heading;
  group: string; // the field of its group's first column, empty outside a group
  width: number;
  hidden: boolean;
}

// What is remembered for a user and report, by field.
export interface ColumnMemory {
  order: string[];
  widths: Record<string, number>;
  hidden: Record<string, boolean>;
  folded?: string[]; // groups; not there in what older pages have kept
}

export const kLeastWidth = 36;
const kMostWidth = 800;

function standardWidth(column: ColumnDescription, heading: Heading): number {
  if (isNumeric(column.type)) return Math.max(104, (heading.second || heading.first).length * 15 + 24);
  const base = /Unit|Status/.test(column.field) ? 72 : /Name$/.test(column.field) ? 168 : /BillNo/.test(column.field) ? 152 : /Model|Batch|Bar/.test(column.field) ? 128 : 104;
  return Math.max(base, heading.oneLine ? heading.first.length * 15 + 24 : 0);
}

export function standardColumns(descriptions: readonly ColumnDescription[]): GridColumn[] {
  const headings = readHeadings(descriptions);
  const firstOf = (group: number) => descriptions[headings.findIndex((heading) => heading.group === group)]!.field;
  return descriptions.flatMap((column, index) => {
    const heading = headings[index]!;
    if (column.forceHide) return [];
    const width = standardWidth(column, heading);
    const group = heading.group < 0 ? "" : firstOf(heading.group);
    return [{ index, field: column.field, type: column.type, heading, group, width, hidden: !column.visible }];
  });
}

export function applyMemory(columns: readonly GridColumn[], memory: ColumnMemory | null): GridColumn[] {
  if (!memory) return [...columns];
  const place = new Map(memory.order.map((field, at) => [field, at]));
  const known = columns
    .map((column) => ({
      ...column,
      width: clampWidth(memory.widths[column.field] ?? column.width),
      hidden: memory.hidden[column.field] ?? column.hidden,
    }));
  // A column that the memory does not know keeps its neighbour on the left.
  let last = -1;
  const ranked = known.map((column, at) => {
    const at2 = place.get(column.field);
    if (at2 !== undefined) last = at2;
    return { column, rank: at2 ?? last + 0.5, at };
  });
  return ranked.sort((a, b) => a.rank - b.rank || a.at - b.at).map((entry) => entry.column);
}

// What was kept `before` of columns that this heading has not got stays: another filter brings other warehouses.
export function memoryOf(columns: readonly GridColumn[], folded: Iterable<string> = [], before: ColumnMemory | null = null): ColumnMemory {
  const fields = columns.map((column) => column.field);
  const here = new Set(fields);
  return {
    order: [...fields, ...(before?.order.filter((field) => !here.has(field)) ?? [])],
    widths: { ...before?.widths, ...Object.fromEntries(columns.map((column) => [column.field, column.width])) },
    hidden: { ...before?.hidden, ...Object.fromEntries(columns.map((column) => [column.field, column.hidden])) },
    folded: [...folded],
  };
}

export function clampWidth(width: number): number {
  return Math.round(Math.min(kMostWidth, Math.max(kLeastWidth, width)));
}

export function moveColumn(columns: readonly GridColumn[], field: string, beforeField: string | null): GridColumn[] {
  const moved = columns.find((column) => column.field === field);
  if (!moved || field === beforeField) return [...columns];
  const rest = columns.filter((column) => column !== moved);
  const at = beforeField === null ? rest.length : rest.findIndex((column) => column.field === beforeField);
  rest.splice(at < 0 ? rest.length : at, 0, moved);
  return rest;
}

// How many of the columns shown are frozen: those that stand among the report's first `frozenColumn`, as
// long as they leave room to scroll.
export function frozenCount(shown: readonly GridColumn[], frozenColumn: number, viewWidth: number): number {
  const wanted = shown.filter((column) => column.index < frozenColumn).length;
  let width = 0;
  for (let count = 0; count < wanted; ++count) {
    width += shown[count]!.width;
    if (viewWidth > 0 && width > viewWidth * 0.65) return count;
  }
  return wanted;
}
