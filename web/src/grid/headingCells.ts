// The heading cells of the columns in the window: one line over a single column, or a group over the second
// lines of its columns. A cell is made when its column comes in and goes when it leaves.
import type { GridColumn } from "./columns";
import type { Groups } from "./groups";
import { t } from "../texts";
import { headingPath, headingSpans, type HeadingSpan } from "./headings";

export const kHeadLine = 28;

export interface HeadingContent {
  columns: readonly GridColumn[];
  groups: Groups;
  frozen: number;
  edges: readonly number[];
  height: number;
  sort: { field: string; descending: boolean } | null;
}

interface Box {
  left: number;
  top: number;
  width: number;
  height: number;
}

function headCell(box: Box, text: string): HTMLElement {
  const cell = document.createElement("div");
  cell.className = "grid-heading";
  cell.setAttribute("role", "columnheader");
  cell.style.cssText = `left:${box.left}px;top:${box.top}px;width:${box.width}px;height:${box.height}px`;
  const label = document.createElement("span");
  label.textContent = text;
  cell.append(label);
  return cell;
}

// One line of the heading: cells that stay, and behind them cells that scroll.
class HeadLine {
  readonly element = document.createElement("div");
  readonly scrolled = document.createElement("div");

  constructor(number: number) {
    this.element.setAttribute("role", "row");
    this.element.setAttribute("aria-rowindex", String(number));
    this.scrolled.className = "grid-scrolled";
    this.scrolled.setAttribute("role", "presentation");
    this.element.append(this.scrolled);
  }
}

export class Headings {
  private content!: HeadingContent;
  private spans: HeadingSpan[] = [];
  private upper = new HeadLine(1);
  private lower = new HeadLine(2);
  private readonly scrolledCells = new Map<string, HTMLElement>();
  private drawn = { first: -1, end: -1, left: -1 };

  constructor(private readonly host: HTMLElement) {}

  show(content: HeadingContent): void {
    this.content = content;
    const { columns, frozen, edges, height } = content;
    this.spans = headingSpans(columns.map((column) => column.heading), frozen);
    this.upper = new HeadLine(1);
    this.lower = new HeadLine(2);
    this.scrolledCells.clear();
    this.drawn = { first: -1, end: -1, left: -1 };
    const corner = headCell({ left: 0, top: 0, width: edges[0]!, height }, t.rowNumber);
    corner.classList.add("frozen", "corner");
    corner.setAttribute("aria-colindex", "1");
    this.upper.scrolled.before(corner);
    for (const span of this.spans) if (span.to <= frozen) this.upper.scrolled.before(freeze(this.groupCell(span)));
    for (let at = 0; at < frozen; ++at) this.lineOf(at).scrolled.before(freeze(this.leafCell(at)));
    this.host.replaceChildren(this.upper.element, ...(height > kHeadLine ? [this.lower.element] : []));
  }

  draw(first: number, end: number, left: number, viewWidth: number): void {
    const { drawn } = this;
    if (drawn.first !== first || drawn.end !== end) this.fill(first, end);
    if (drawn.left !== left) {
      for (const line of [this.upper, this.lower]) line.scrolled.style.transform = `translateX(${-left}px)`;
    }
    this.keepNamesInView(first, end, left, viewWidth);
    this.drawn = { first, end, left };
  }

  // The name of a wide group stands over the part of it that is seen.
  private keepNamesInView(first: number, end: number, left: number, viewWidth: number): void {
    const { edges, frozen } = this.content;
    const seenFrom = edges[frozen]! + left;
    const seenTo = viewWidth + left;
    for (const span of this.spans) {
      if (span.to <= Math.max(first, frozen) || span.from >= end || span.to - span.from < 2) continue;
      const { style } = this.scrolledCells.get(`group ${span.from}`)!;
      const before = `${6 + Math.max(0, seenFrom - edges[span.from]!)}px`;
      const behind = `${6 + Math.max(0, edges[span.to]! - seenTo)}px`;
      if (style.paddingLeft !== before) style.paddingLeft = before;
      if (style.paddingRight !== behind) style.paddingRight = behind;
    }
  }

  private fill(first: number, end: number): void {
    const { frozen } = this.content;
    const wanted = new Set<string>();
    const put = (line: HeadLine, name: string, make: () => HTMLElement) => {
      let cell = this.scrolledCells.get(name);
      if (!cell) {
        cell = make();
        this.scrolledCells.set(name, cell);
        line.scrolled.append(cell);
      }
      wanted.add(name);
    };
    for (const span of this.spans) {
      if (span.to > Math.max(first, frozen) && span.from < end) put(this.upper, `group ${span.from}`, () => this.groupCell(span));
    }
    for (let at = first; at < end; ++at) put(this.lineOf(at), `leaf ${at}`, () => this.leafCell(at));
    for (const [name, cell] of this.scrolledCells) {
      if (wanted.has(name)) continue;
      cell.remove();
      this.scrolledCells.delete(name);
    }
    // A row without cells is none to a screen reader.
    const { element, scrolled } = this.lower;
    element.hidden = scrolled.childElementCount === 0 && element.childElementCount === 1;
  }

  private lineOf(at: number): HeadLine {
    return this.content.columns[at]!.heading.oneLine ? this.upper : this.lower;
  }

  private groupCell(span: HeadingSpan): HTMLElement {
    const { columns, groups, edges } = this.content;
    const left = edges[span.from]!;
    const cell = headCell({ left, top: 0, width: edges[span.to]! - left, height: kHeadLine }, span.text);
    cell.classList.add("group");
    cell.title = span.text;
    cell.setAttribute("aria-colindex", String(span.from + 2));
    cell.setAttribute("aria-colspan", String(span.to - span.from));
    const { group } = columns[span.from]!;
    const folded = groups.get(group);
    if (folded !== undefined) cell.prepend(foldButton(group, span.text, folded));
    return cell;
  }

  private leafCell(at: number): HTMLElement {
    const { columns, edges, height, sort } = this.content;
    const column = columns[at]!;
    const { oneLine, first, second } = column.heading;
    const top = oneLine ? 0 : kHeadLine;
    const cell = headCell({ left: edges[at]!, top, width: column.width, height: height - top }, oneLine ? first : second);
    cell.classList.add("leaf");
    cell.dataset["at"] = String(at);
    cell.dataset["headField"] = column.field;
    cell.title = headingPath(column.heading).join(" · ");
    cell.setAttribute("aria-colindex", String(at + 2));
    if (oneLine && height > kHeadLine) cell.setAttribute("aria-rowspan", "2");
    if (sort?.field === column.field) {
      cell.classList.add(sort.descending ? "descending" : "ascending");
      cell.setAttribute("aria-sort", sort.descending ? "descending" : "ascending");
    }
    const grip = document.createElement("i");
    grip.className = "grid-grip";
    cell.append(grip);
    return cell;
  }
}

// Reached by the grid's own keys: with a group for each warehouse it would take long to walk over them all.
function foldButton(group: string, name: string, folded: boolean): HTMLElement {
  const button = document.createElement("button");
  button.type = "button";
  button.className = "grid-fold";
  button.tabIndex = -1;
  button.dataset["group"] = group;
  button.title = folded ? t.unfold(name) : t.fold(name);
  button.setAttribute("aria-label", button.title);
  button.setAttribute("aria-expanded", String(!folded));
  return button;
}

function freeze(cell: HTMLElement): HTMLElement {
  cell.classList.add("frozen");
  return cell;
}
