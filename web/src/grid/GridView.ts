// The grid on the page: DOM cells for the window of rows and columns that can be seen, drawn into a layer that
// stays in place while a spacer behind it gives the scroll bars their way. Nothing moves before it is redrawn,
// so that no blank area shows while scrolling.
import type { Blocks } from "./blocks";
import type { GridColumn } from "./columns";
import { formatCell, isNumeric, standsOut, type Precision } from "./formats";
import { drawHeadings, kHeadLine } from "./headingCells";
import { contains, moveBy, rectangleOf, type Selection, type Spot } from "./selection";
import { columnEdges, columnWindow, rowsTop, rowWindow, scrollHeight, scrollTopOf } from "./windowing";

export const kRowHeight = 26;

export interface GridContent {
  columns: GridColumn[]; // shown, in order
  frozen: number;
  rows: number;
  blocks: Blocks;
  precision: Precision;
  emptyForZero: boolean;
  sort: { field: string; descending: boolean } | null;
  found: { row: number; field: string } | null;
}

export class GridView {
  readonly headings: HTMLElement;
  private readonly spacer = element("div", "grid-spacer");
  private readonly layer = element("div", "grid-layer");
  private readonly body = element("div", "grid-body", "rowgroup");
  private readonly drawn = new Map<number, HTMLElement>();
  private spare: HTMLElement[] = [];
  private content!: GridContent;
  private edges: number[] = [0];
  private headHeight = kHeadLine;
  private drawAgain = 0;
  private drawnHead = "";
  private gutter = 0; // for the row numbers
  private stamp = 0; // grows when every cell must be looked at again
  selection: Selection | null = null;
  onSelect: () => void = () => {};

  constructor(readonly host: HTMLElement) {
    host.setAttribute("role", "grid");
    host.setAttribute("aria-multiselectable", "true");
    host.tabIndex = 0;
    this.headings = element("div", "grid-head", "rowgroup");
    this.layer.append(this.headings, this.body);
    this.spacer.append(this.layer);
    host.append(this.spacer);
    host.addEventListener("scroll", () => this.redraw(), { passive: true });
  }

  show(content: GridContent): void {
    this.content = content;
    this.gutter = Math.max(44, 18 + 8 * String(content.rows).length);
    this.edges = columnEdges(content.columns.map((column) => column.width)).map((edge) => edge + this.gutter);
    const twoLines = content.columns.some((column) => !column.heading.oneLine);
    this.headHeight = twoLines ? 2 * kHeadLine : kHeadLine;
    this.host.setAttribute("aria-rowcount", String(content.rows + (twoLines ? 2 : 1)));
    this.host.setAttribute("aria-colcount", String(content.columns.length));
    this.measure();
  }

  // After the host's size has changed too.
  measure(): void {
    if (!this.content) return;
    const { clientWidth, clientHeight } = this.host;
    this.spacer.style.width = `${this.edges[this.edges.length - 1]!}px`;
    this.spacer.style.height = `${scrollHeight(this.content.rows, kRowHeight) + this.headHeight}px`;
    this.layer.style.width = `${clientWidth}px`;
    this.layer.style.height = `${clientHeight}px`;
    this.headings.style.height = `${this.headHeight}px`;
    this.refresh();
  }

  // Everything anew: values have come, or something else about the cells has changed.
  refresh(): void {
    this.stamp += 1;
    this.drawnHead = "";
    this.redraw();
  }

  get pageRows(): number {
    return Math.max(1, Math.floor(this.bodyHeight / kRowHeight) - 1);
  }

  get frozenWidth(): number {
    return this.edges[this.content.frozen]!;
  }

  // Left edge of a column in the view.
  columnLeft(at: number): number {
    return this.edges[at]! - (at < this.content.frozen ? 0 : this.host.scrollLeft);
  }

  select(selection: Selection | null, reveal = true): void {
    this.selection = selection;
    if (selection && reveal) this.reveal(selection.head);
    this.refresh();
    this.host.setAttribute("aria-activedescendant", selection ? cellId(selection.head) : "");
    this.onSelect();
  }

  moveSelection(key: { key: string; ctrl: boolean; shift: boolean }): boolean {
    const { rows, columns } = this.content;
    if (rows === 0 || columns.length === 0) return false;
    const from = this.selection?.head ?? { row: 0, column: 0 };
    const to = moveBy(from, key, { rows, columns: columns.length, page: this.pageRows });
    if (!to) return false;
    const anchor = key.shift && this.selection ? this.selection.anchor : to;
    this.select({ anchor, head: to, wholeRows: key.shift && (this.selection?.wholeRows ?? false) });
    return true;
  }

  reveal({ row, column }: Spot): void {
    const { rows, frozen } = this.content;
    const top = this.top();
    const y = row * kRowHeight;
    if (y < top) this.scrollToTop(y);
    else if (y + kRowHeight > top + this.bodyHeight) this.scrollToTop(y + kRowHeight - this.bodyHeight);
    if (column < frozen || rows === 0) return;
    const left = this.edges[column]! - this.frozenWidth;
    const right = this.edges[column + 1]! - this.host.clientWidth;
    if (left < this.host.scrollLeft) this.host.scrollLeft = left;
    else if (right > this.host.scrollLeft) this.host.scrollLeft = right;
  }

  // The cell under an event, null outside the cells; the gutter answers column -1.
  spotAt(target: EventTarget | null): Spot | null {
    const cell = (target as HTMLElement | null)?.closest<HTMLElement>(".grid-cell, .grid-number");
    const row = cell?.parentElement?.dataset["row"];
    if (!cell || row === undefined || !this.body.contains(cell)) return null;
    return { row: Number(row), column: Number(cell.dataset["at"] ?? -1) };
  }

  private get bodyHeight(): number {
    return Math.max(0, this.host.clientHeight - this.headHeight);
  }

  private top(): number {
    return rowsTop(this.host.scrollTop, this.content.rows, kRowHeight, this.bodyHeight);
  }

  private scrollToTop(top: number): void {
    this.host.scrollTop = Math.ceil(scrollTopOf(top, this.content.rows, kRowHeight, this.bodyHeight));
  }

  private redraw(): void {
    if (!this.content) return;
    const { rows, columns, frozen, blocks } = this.content;
    const scrollLeft = this.host.scrollLeft;
    const seen = rowWindow(this.top(), rows, kRowHeight, this.bodyHeight);
    const bodyEdges = this.edges;
    const { first, end } = columnWindow(bodyEdges, frozen, scrollLeft, this.host.clientWidth);
    const head = `${this.stamp}:${scrollLeft}:${first}:${end}`;
    const moved = head !== this.drawnHead;
    if (moved) {
      drawHeadings(this.headings, { ...this.content, edges: this.edges, first, end, scrollLeft, height: this.headHeight });
    }
    this.drawnHead = head;
    for (const [row, line] of this.drawn) {
      if (row >= seen.first && row < seen.end) continue;
      this.drawn.delete(row);
      line.style.display = "none";
      this.spare.push(line);
    }
    for (let row = seen.first; row < seen.end; ++row) {
      const y = this.headHeight + seen.offset + (row - seen.first) * kRowHeight;
      let line = this.drawn.get(row);
      const isNew = !line;
      line ??= this.takeLine(row);
      line.style.transform = `translateY(${y}px)`;
      if (isNew || moved) this.fill(line, row, first, end, scrollLeft);
    }
    const wanted = [...columns.slice(0, frozen), ...columns.slice(first, end)].map((column) => column.index);
    blocks.want(this.wantedRows(seen.first, seen.end), wanted);
  }

  // What is seen first, then a page ahead and behind.
  private *wantedRows(first: number, end: number): Generator<number> {
    const page = end - first;
    for (let row = first; row < end; row += 10) yield row;
    if (end > first) yield end - 1;
    if (end + page < this.content.rows) yield end + page;
    if (first - page >= 0) yield first - page;
  }

  private takeLine(row: number): HTMLElement {
    const line = this.spare.pop() ?? element("div", "grid-row", "row");
    if (!line.parentElement) this.body.append(line);
    line.style.display = "";
    line.dataset["row"] = String(row);
    line.setAttribute("aria-rowindex", String(row + (this.headHeight > kHeadLine ? 3 : 2)));
    this.drawn.set(row, line);
    return line;
  }

  private fill(line: HTMLElement, row: number, first: number, end: number, scrollLeft: number): void {
    const { frozen, blocks } = this.content;
    const shown = this.selection ? rectangleOf(this.selection, this.content.columns.length) : null;
    const summary = blocks.isSummary(row);
    line.className = summary ? "grid-row summary" : row % 2 === 1 ? "grid-row odd" : "grid-row";
    let at = 0;
    const next = (): HTMLElement => {
      const cell = (line.children[at] as HTMLElement | undefined) ?? line.appendChild(element("div", ""));
      at += 1;
      return cell;
    };
    const number = next();
    number.className = "grid-number";
    number.setAttribute("role", "rowheader");
    number.style.cssText = `left:0;width:${this.gutter}px`;
    number.textContent = String(row + 1);
    delete number.dataset["at"];
    delete number.dataset["field"];
    const put = (column: number, x: number) => this.fillCell(next(), row, column, x, shown !== null && contains(shown, row, column));
    for (let column = 0; column < frozen; ++column) put(column, this.edges[column]!);
    for (let column = first; column < end; ++column) put(column, this.edges[column]! - scrollLeft);
    while (line.children.length > at) line.lastElementChild!.remove();
  }

  private fillCell(cell: HTMLElement, row: number, at: number, x: number, selected: boolean): void {
    const { columns, frozen, blocks, precision, emptyForZero, found } = this.content;
    const column = columns[at]!;
    const value = blocks.cell(row, column.index);
    const loaded = value !== undefined || blocks.isLoaded(row, column.index);
    const text = formatCell(value, column.type, precision, emptyForZero);
    const head = this.selection?.head;
    let names = "grid-cell";
    if (isNumeric(column.type)) names += standsOut(column, value) ? " number negative" : " number";
    if (at < frozen) names += at === frozen - 1 ? " frozen last-frozen" : " frozen";
    if (!loaded) names += " waiting";
    if (selected) names += " selected";
    if (found?.row === row && found.field === column.field) names += " found";
    const current = head?.row === row && head.column === at;
    if (current) names += " current";
    if (cell.className !== names) cell.className = names;
    if (cell.textContent !== text) cell.textContent = text;
    cell.id = current ? cellId({ row, column: at }) : "";
    cell.setAttribute("role", "gridcell");
    cell.setAttribute("aria-selected", String(selected));
    cell.setAttribute("aria-colindex", String(at + 1));
    cell.dataset["at"] = String(at);
    cell.dataset["field"] = column.field;
    cell.dataset["row"] = String(row);
    cell.style.left = `${x}px`;
    cell.style.width = `${column.width}px`;
  }

  scheduleRefresh(): void {
    if (this.drawAgain) return;
    this.drawAgain = requestAnimationFrame(() => {
      this.drawAgain = 0;
      this.refresh();
    });
  }
}

function cellId({ row, column }: Spot): string {
  return `cell-${row}-${column}`;
}

function element(tag: string, className: string, role = ""): HTMLElement {
  const made = document.createElement(tag);
  made.className = className;
  if (role) made.setAttribute("role", role);
  return made;
}
