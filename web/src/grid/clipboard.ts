// A selection as a spreadsheet takes it: text with tabs, and a table with headings.
import { formatCell, isNumeric, plainCell, type Cell, type Precision } from "./formats";
import { headingPath, headingSpans } from "./headings";
import type { GridColumn } from "./columns";

export interface Excerpt {
  columns: readonly GridColumn[];
  rows: readonly (readonly (Cell | undefined)[])[];
  precision: Precision;
  withHeadings: boolean;
}

// A cell that holds a tab, a line break or a quote is quoted.
function quoted(text: string): string {
  return /[\t\n\r"]/.test(text) ? `"${text.replaceAll('"', '""')}"` : text;
}

// Without headings a single cell is copied as it reads.
export function asText({ columns, rows, withHeadings }: Excerpt): string {
  const lines = rows.map((row) => row.map((value) => quoted(plainCell(value))).join("\t"));
  if (withHeadings) lines.unshift(columns.map((column) => quoted(headingPath(column.heading).join(" "))).join("\t"));
  return lines.join("\r\n");
}

export function escapeHtml(text: string): string {
  return text.replaceAll("&", "&amp;").replaceAll("<", "&lt;").replaceAll(">", "&gt;").replaceAll('"', "&quot;");
}

function headRows(columns: readonly GridColumn[]): string {
  const headings = columns.map((column) => column.heading);
  const twoLines = headings.some((heading) => !heading.oneLine);
  const spans = new Map(headingSpans(headings).map((span) => [span.from, span]));
  let first = "";
  let second = "";
  headings.forEach((heading, at) => {
    if (heading.oneLine) {
      first += `<th${twoLines ? ' rowspan="2"' : ""}>${escapeHtml(heading.first)}</th>`;
      return;
    }
    const span = spans.get(at);
    if (span) first += `<th colspan="${span.to - span.from}">${escapeHtml(span.text)}</th>`;
    second += `<th>${escapeHtml(heading.second)}</th>`;
  });
  return `<thead><tr>${first}</tr>${twoLines ? `<tr>${second}</tr>` : ""}</thead>`;
}

// Codes are marked as text, or a spreadsheet would eat their leading zeros.
export function asHtml({ columns, rows, precision, withHeadings }: Excerpt): string {
  const body = rows
    .map((row) => {
      const cells = row.map((value, at) => {
        const type = columns[at]!.type;
        if (isNumeric(type)) return `<td align="right">${escapeHtml(formatCell(value, type, precision, false))}</td>`;
        return `<td style="mso-number-format:'\\@'">${escapeHtml(plainCell(value))}</td>`;
      });
      return `<tr>${cells.join("")}</tr>`;
    })
    .join("");
  return `<table border="1">${withHeadings ? headRows(columns) : ""}<tbody>${body}</tbody></table>`;
}
