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
  width: number;
  hidden: boolean;
}

// What is remembered for a user and report, by field.
export interface ColumnMemory {
  order: string[];
  widths: Record<string, number>;
  hidden: Record<string, boolean>;
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
  return descriptions.flatMap((column, index) => {
    const heading = headings[index]!;
    if (column.forceHide) return [];
    const width = standardWidth(column, heading);
    return [{ index, field: column.field, type: column.type, heading, width, hidden: !column.visible }];
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

export function memoryOf(columns: readonly GridColumn[]): ColumnMemory {
  return {
    order: columns.map((column) => column.field),
    widths: Object.fromEntries(columns.map((column) => [column.field, column.width])),
    hidden: Object.fromEntries(columns.map((column) => [column.field, column.hidden])),
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
