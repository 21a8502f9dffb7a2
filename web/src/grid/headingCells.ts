// The heading cells of the columns in the window: one line over a single column, or a group over the second
// lines of its columns.
import type { GridColumn } from "./columns";
import { t } from "../texts";
import { headingSpans } from "./headings";

export const kHeadLine = 28;

export interface HeadingDrawing {
  columns: readonly GridColumn[];
  frozen: number;
  edges: readonly number[];
  first: number; // window of the scrolled columns
  end: number;
  scrollLeft: number;
  height: number;
  sort: { field: string; descending: boolean } | null;
}

interface Box {
  left: number;
  top: number;
  width: number;
  height: number;
}

function headCell(box: Box, text: string, frozen: boolean): HTMLElement {
  const cell = document.createElement("div");
  cell.className = frozen ? "grid-heading frozen" : "grid-heading";
  cell.setAttribute("role", "columnheader");
  cell.style.cssText = `left:${box.left}px;top:${box.top}px;width:${box.width}px;height:${box.height}px`;
  const label = document.createElement("span");
  label.textContent = text;
  cell.append(label);
  return cell;
}

export function drawHeadings(into: HTMLElement, drawing: HeadingDrawing): void {
  const { columns, frozen, edges, first, end, scrollLeft, height, sort } = drawing;
  const upper = document.createElement("div");
  const lower = document.createElement("div");
  upper.setAttribute("role", "row");
  lower.setAttribute("role", "row");
  const leftOf = (at: number) => edges[at]! - (at < frozen ? 0 : scrollLeft);
  const corner = headCell({ left: 0, top: 0, width: edges[0]!, height }, t.rowNumber, true);
  corner.classList.add("corner");
  upper.append(corner);

  const spans = headingSpans(columns.map((column) => column.heading), frozen);
  for (const span of spans) {
    if (span.to > frozen && (span.to <= first || span.from >= end)) continue;
    const width = edges[span.to]! - edges[span.from]!;
    const cell = headCell({ left: leftOf(span.from), top: 0, width, height: kHeadLine }, span.text, span.to <= frozen);
    cell.classList.add("group");
    upper.append(cell);
  }
  const leaf = (at: number) => {
    const column = columns[at]!;
    const { oneLine, first: line, second } = column.heading;
    const top = oneLine ? 0 : kHeadLine;
    const cell = headCell({ left: leftOf(at), top, width: column.width, height: height - top }, oneLine ? line : second, at < frozen);
    cell.classList.add("leaf");
    cell.dataset["at"] = String(at);
    cell.dataset["headField"] = column.field;
    cell.title = [line, second].filter(Boolean).join(" · ");
    cell.setAttribute("aria-colindex", String(at + 1));
    if (sort?.field === column.field) {
      cell.classList.add(sort.descending ? "descending" : "ascending");
      cell.setAttribute("aria-sort", sort.descending ? "descending" : "ascending");
    }
    const grip = document.createElement("i");
    grip.className = "grid-grip";
    cell.append(grip);
    (oneLine ? upper : lower).append(cell);
  };
  for (let at = 0; at < frozen; ++at) leaf(at);
  for (let at = first; at < end; ++at) leaf(at);
  into.replaceChildren(...(lower.childElementCount > 0 ? [upper, lower] : [upper]));
}
