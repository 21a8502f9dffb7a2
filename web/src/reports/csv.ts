// A report as CSV: what is seen, all rows, with a byte order mark so that spreadsheets take it for UTF-8.
import type { GridColumn } from "../grid/columns";
import { isNumeric, plainCell, type Cell } from "../grid/formats";
import { headingPath } from "../grid/headings";

// A text that a spreadsheet would run as a formula is marked as text.
export function csvCell(value: Cell | undefined, type: number): string {
  let text = plainCell(value);
  if (!isNumeric(type) && /^[=+\-@\t\r]/.test(text)) text = `'${text}`;
  return /[",\r\n]/.test(text) ? `"${text.replaceAll('"', '""')}"` : text;
}

export function csvHead(columns: readonly GridColumn[]): string {
  return `\uFEFF${columns.map((column) => csvCell(headingPath(column.heading).join(" "), 1)).join(",")}\r\n`;
}

export function csvRows(columns: readonly GridColumn[], rows: readonly (readonly Cell[])[]): string {
  return rows.map((row) => `${row.map((value, at) => csvCell(value, columns[at]!.type)).join(",")}\r\n`).join("");
}
