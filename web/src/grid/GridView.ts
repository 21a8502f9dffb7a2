// The grid on the page: DOM cells for the window of rows and columns that can be seen, drawn into a layer that
// stays in place while a spacer behind it gives the scroll bars their way. Nothing moves before it is redrawn,
// so that no blank area shows while scrolling. Once a scrolled frame the layer moves its parts and gives the
// lines and cells that went out of sight to the rows and columns that came in; layout is read there but once.
import type { Blocks } from "./blocks";
import type { GridColumn } from "./columns";
import type { Precision } from "./formats";
import type { Groups } from "./groups";
import { Headings, kHeadLine } from "./headingCells";
import { cellId } from "./cells";
import { Lines } from "./Lines";
import { RowWay } from "./RowWay";
import { moveBy, rectangleOf, type Selection, type Spot } from "./selection";
import { TextWidths } from "./textWidths";
import { columnEdges, columnWindow, columnsThatFit, rowWindow, scrollHeight } from "./windowing";

export const kRowHeight = 26;
const kTextSize = 13;
const kRest = 300;
const kLate = 20; // milliseconds that an old picture may stay for its successor's values

// What the host is scrolled to.
interface Sight {
  left: number;
  top: number;
  rows: { first: number; end: number };
  columns: { first: number; end: number };
}

export interface GridContent {
  columns: readonly GridColumn[]; // shown, in order
  groups: Groups;
  frozen: number;
  rows: number;
  blocks: Blocks;
  precision: Precision;
  emptyForZero: boolean;
  sort: { field: string; descending: boolean } | null;
  found: { row: number; field: string } | null;
}

export class GridView {
  readonly headings = element("grid-head", "rowgroup");
  private readonly spacer = element("grid-spacer", "presentation");
  private readonly layer = element("grid-layer", "presentation");
  private readonly body = element("grid-body", "rowgroup");
  private readonly head = new Headings(this.headings);
  private readonly lines = new Lines(this.body, kRowHeight);
  private content!: GridContent;
  private readonly widths: TextWidths;
  private readonly way: RowWay;
  private edges: number[] = [0]; // behind the gutter of row numbers
  private headHeight = kHeadLine;
  private viewWidth = 0;
  private viewHeight = 0;
  private resting = 0;
  private late = 0; // the timer of a picture that waits for values; 0 for none
  selection: Selection | null = null;
  onSelect: () => void = () => {};

  constructor(readonly host: HTMLElement) {
    host.setAttribute("role", "grid");
    host.setAttribute("aria-multiselectable", "true");
    host.tabIndex = 0;
    this.layer.append(this.headings, this.body);
    this.spacer.append(this.layer);
    host.append(this.spacer);
    this.widths = new TextWidths(kTextSize, getComputedStyle(host).fontFamily);
    this.way = new RowWay(host, kRowHeight);
    host.addEventListener("scroll", () => this.follow(), { passive: true });
  }

  show(content: GridContent): void {
    this.content = content;
    const gutter = Math.max(44, 18 + 8 * String(content.rows).length);
    this.edges = columnEdges(content.columns.map((column) => column.width)).map((edge) => edge + gutter);
    const twoLines = content.columns.some((column) => !column.heading.oneLine);
    this.headHeight = twoLines ? 2 * kHeadLine : kHeadLine;
    this.host.setAttribute("aria-rowcount", String(content.rows + this.headLines));
    this.host.setAttribute("aria-colcount", String(content.columns.length + 1));
    this.head.show({ ...content, edges: this.edges, height: this.headHeight });
    this.measure();
  }

  // After the host's size has changed too.
  measure(): void {
    if (!this.content) return;
    this.viewWidth = this.host.clientWidth;
    this.viewHeight = this.host.clientHeight;
    this.spacer.style.width = `${this.edges[this.edges.length - 1]!}px`;
    this.spacer.style.height = `${scrollHeight(this.content.rows, kRowHeight) + this.headHeight}px`;
    this.layer.style.width = `${this.viewWidth}px`;
    this.layer.style.height = `${this.viewHeight}px`;
    this.headings.style.height = `${this.headHeight}px`;
    const { rows, frozen } = this.content;
    this.way.measure(rows, this.bodyHeight);
    this.lines.shape({
      lines: Math.min(rows, 2 * Math.ceil((this.bodyHeight / kRowHeight + 1) / 2)), // even, so that a line keeps its shade
      cells: columnsThatFit(this.edges, frozen, this.viewWidth),
      firstNumber: this.headLines + 1,
    });
    this.refresh();
  }

  // Everything anew: something about the cells has changed.
  refresh(): void {
    this.lines.forget();
    this.draw();
  }

  // Values have come: shown with the next frame, and not with the one after it.
  drawValues(): void {
    if (this.late) {
      const sight = this.sight();
      if (this.hasValues(sight)) this.draw(sight);
    } else if (this.lines.wait) {
      this.draw();
    }
  }

  // A screen reader walks the cells in their order on the page; scrolling does without.
  private orderAtRest(): void {
    clearTimeout(this.resting);
    this.resting = window.setTimeout(() => {
      this.lines.putInOrder();
      this.way.settle();
    }, kRest);
  }

  get pageRows(): number {
    return Math.max(1, Math.floor(this.bodyHeight / kRowHeight) - 1);
  }

  // The rows that can be seen, the last one not included.
  get seenRows(): { first: number; end: number } {
    return rowWindow(this.way.top, this.content.rows, kRowHeight, this.bodyHeight);
  }

  // Left edge of a column in the view.
  columnLeft(at: number): number {
    return this.edges[at]! - (at < this.content.frozen ? 0 : this.host.scrollLeft);
  }

  select(selection: Selection | null, reveal = true): void {
    this.selection = selection;
    if (selection && reveal) this.scrollTo(selection.head);
    this.refresh();
    if (selection) this.host.setAttribute("aria-activedescendant", cellId(selection.head));
    else this.host.removeAttribute("aria-activedescendant");
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

  // At once, not when the browser gets round to tell of the scrolling.
  reveal(spot: Spot): void {
    this.scrollTo(spot);
    this.follow();
  }

  private scrollTo({ row, column }: Spot): void {
    const { rows, frozen } = this.content;
    const { top } = this.way;
    const y = row * kRowHeight;
    if (y < top) this.way.goTo(y);
    else if (y + kRowHeight > top + this.bodyHeight) this.way.goTo(y + kRowHeight - this.bodyHeight);
    if (column < frozen || rows === 0) return;
    const left = this.edges[column]! - this.edges[frozen]!;
    const right = this.edges[column + 1]! - this.viewWidth;
    if (left < this.host.scrollLeft) this.host.scrollLeft = left;
    else if (right > this.host.scrollLeft) this.host.scrollLeft = right;
  }

  // The cell under an event, null outside the cells; the gutter answers column -1.
  spotAt(target: EventTarget | null): Spot | null {
    const cell = (target as HTMLElement | null)?.closest<HTMLElement>(".grid-cell, .grid-number");
    const row = cell?.closest<HTMLElement>(".grid-row")?.dataset["row"];
    if (!cell || row === undefined || !this.body.contains(cell)) return null;
    return { row: Number(row), column: Number(cell.dataset["at"] ?? -1) };
  }

  // The cell at a point of the window, or the nearest one to it. `over` tells how far the point lies outside the
  // part that scrolls.
  spotNear(x: number, y: number): { spot: Spot; over: { x: number; y: number } } | null {
    const { rows, columns, frozen } = this.content;
    if (rows === 0 || columns.length === 0) return null;
    const { left, top } = this.host.getBoundingClientRect();
    const [across, down] = [x - left, y - top - this.headHeight];
    const into = (value: number, most: number) => Math.max(0, Math.min(most - 1, value));
    const row = into(Math.floor((into(down, this.bodyHeight) + this.way.top) / kRowHeight), rows);
    const inside = into(across, this.viewWidth);
    const place = inside < this.edges[frozen]! ? inside : inside + this.host.scrollLeft;
    const at = this.edges.findIndex((edge) => edge > place);
    const column = at < 0 ? columns.length - 1 : Math.max(0, at - 1);
    return { spot: { row, column }, over: { x: across - inside, y: down - into(down, this.bodyHeight) } };
  }

  private get bodyHeight(): number {
    return Math.max(0, this.viewHeight - this.headHeight);
  }

  private get headLines(): number {
    return this.headHeight / kHeadLine;
  }

  // After scrolling. Where not one row stays, the values mostly come before an empty picture would be seen, so that it
  // is not drawn at all if they are quick.
  private follow(): void {
    if (!this.content) return;
    const sight = this.sight();
    if (this.lines.hold(sight.rows) || this.hasValues(sight)) return this.draw(sight);
    this.ask(sight);
    if (this.late) return;
    this.late = window.setTimeout(() => this.draw(), kLate);
    this.host.setAttribute("aria-busy", "true");
  }

  private sight(): Sight {
    const { rows, frozen } = this.content;
    const left = Math.round(this.host.scrollLeft);
    this.way.follow();
    const { top } = this.way;
    return { left, top, rows: rowWindow(top, rows, kRowHeight, this.bodyHeight), columns: columnWindow(this.edges, frozen, left, this.viewWidth) };
  }

  private draw(known?: Sight): void {
    if (!this.content) return;
    if (this.late) {
      clearTimeout(this.late);
      this.late = 0;
      this.host.removeAttribute("aria-busy");
    }
    const { content, selection } = this;
    const sight = known ?? this.sight();
    const { left, top, rows, columns } = sight;
    this.ask(sight); // before the drawing, so that it is fetched meanwhile
    this.head.draw(columns.first, columns.end, left, this.viewWidth);
    const selected = selection && rectangleOf(selection, content.columns.length);
    this.lines.draw({ ...content, edges: this.edges, selected, head: selection?.head ?? null, widths: this.widths }, { top: this.headHeight - top, left, firstRow: rows.first, firstColumn: columns.first });
    this.orderAtRest();
  }

  private ask({ rows, columns }: Sight): void {
    const wanted = this.columnsIn(columns);
    const page = rows.end - rows.first;
    this.content.blocks.want([
      { first: rows.first, end: rows.end, columns: wanted },
      { first: rows.end, end: rows.end + page, columns: wanted },
      { first: rows.first - page, end: rows.first, columns: wanted },
      { first: rows.first, end: rows.end, columns: this.indexes(columns.end, 2 * columns.end - columns.first) },
    ]);
  }

  private hasValues({ rows, columns }: Sight): boolean {
    const { blocks } = this.content;
    return this.columnsIn(columns).every((column) => blocks.isLoaded(rows.first, column) && blocks.isLoaded(rows.end - 1, column));
  }

  private columnsIn({ first, end }: { first: number; end: number }): number[] {
    return [...this.indexes(0, this.content.frozen), ...this.indexes(first, end)];
  }

  private indexes(from: number, to: number): number[] {
    return this.content.columns.slice(from, to).map((column) => column.index);
  }
}

function element(className: string, role: string): HTMLElement {
  const made = document.createElement("div");
  made.className = className;
  made.setAttribute("role", role);
  return made;
}
