// The elements of the rows in the window. A row keeps its line, and a column its cell, for as long as the window
// holds them: both are found by their position modulo how many there are. So scrolling makes and removes no
// element, and writes to those only whose row or column came in.
import type { Blocks } from "./blocks";
import type { GridColumn } from "./columns";
import { formatCell, isNumeric, standsOut, type Precision } from "./formats";
import { contains, type Rectangle, type Spot } from "./selection";

export interface Shape {
  lines: number;
  cells: number; // of the scrolled columns
  firstNumber: number; // of the first row, for a screen reader, which counts the heading's lines too
  edges: readonly number[];
}

// What the cells are drawn from.
export interface Picture {
  columns: readonly GridColumn[];
  frozen: number;
  rows: number;
  blocks: Blocks;
  precision: Precision;
  emptyForZero: boolean;
  found: { row: number; field: string } | null;
  selected: Rectangle | null;
  head: Spot | null;
}

export interface Window {
  top: number; // of row 0 in the layer, in pixels
  left: number; // how far the scrolled columns are scrolled
  firstRow: number;
  firstColumn: number;
}

interface Cell {
  element: HTMLElement;
  at: number; // column
  row: number;
  waits: boolean; // for its value
  names: string;
  text: string;
  selected: boolean;
  id: string;
}

interface Line {
  element: HTMLElement;
  number: HTMLElement;
  scrolled: HTMLElement;
  frozenCells: Cell[];
  cells: Cell[];
  row: number;
  y: number;
  left: number;
  firstColumn: number;
  waits: boolean;
  names: string;
}

// Rows are placed from a row near by, since browsers keep places of many millions of pixels badly.
const kRowsAPlace = 4096;

export class Lines {
  private lines: Line[] = [];
  private shaped: Shape = { lines: 0, cells: 0, firstNumber: 1, edges: [0] };

  constructor(private readonly body: HTMLElement, private readonly rowHeight: number) {}

  shape(shape: Shape): void {
    this.shaped = shape;
    while (this.lines.length > shape.lines) this.lines.pop()!.element.remove();
    while (this.lines.length < shape.lines) this.lines.push(this.makeLine());
  }

  // Every cell is looked at again by the next drawing; what it finds unchanged is not written.
  forget(): void {
    for (const line of this.lines) line.row = -1;
  }

  draw(picture: Picture, { top, left, firstRow, firstColumn }: Window): void {
    const { lines, cells, edges } = this.shaped;
    const first = Math.max(0, Math.min(firstRow, picture.rows - lines));
    const column = Math.max(picture.frozen, Math.min(firstColumn, picture.columns.length - cells));
    const place = first - (first % kRowsAPlace);
    this.body.style.transform = `translateY(${top + place * this.rowHeight}px)`;
    for (let row = first; row < first + this.lines.length; ++row) {
      const line = this.lines[row % this.lines.length]!;
      this.place(line, (row - place) * this.rowHeight, left);
      const isNew = line.row !== row;
      if (!isNew && !line.waits && line.firstColumn === column) continue;
      if (isNew) this.giveTo(line, row, picture, edges);
      line.waits = false;
      line.firstColumn = column;
      for (let at = 0; at < picture.frozen; ++at) this.fill(line, line.frozenCells[at]!, at, picture, isNew);
      for (let at = column; at < column + cells; ++at) this.fill(line, line.cells[at % cells]!, at, picture, isNew);
      this.mark(line, picture);
    }
  }

  // The cells in their order on the page, for who reads them in it.
  putInOrder(): void {
    const byRow = [...this.lines].sort((a, b) => a.row - b.row);
    arrange(this.body, byRow.map((line) => line.element));
    for (const line of byRow) arrange(line.scrolled, [...line.cells].sort((a, b) => a.at - b.at).map((cell) => cell.element));
  }

  private place(line: Line, y: number, left: number): void {
    if (line.y !== y) line.element.style.transform = `translateY(${y}px)`;
    if (line.left !== left) line.scrolled.style.transform = `translateX(${-left}px)`;
    line.y = y;
    line.left = left;
  }

  private giveTo(line: Line, row: number, { frozen }: Picture, edges: readonly number[]): void {
    line.row = row;
    fitCells(line.frozenCells, frozen, line.element, line.scrolled);
    fitCells(line.cells, this.shaped.cells, line.scrolled, null);
    line.element.dataset["row"] = String(row);
    line.element.setAttribute("aria-rowindex", String(row + this.shaped.firstNumber));
    setText(line.number, String(row + 1));
    line.number.style.width = `${edges[0]!}px`;
  }

  private mark(line: Line, { blocks }: Picture): void {
    const names = blocks.isSummary(line.row) ? "grid-row summary" : line.row % 2 === 1 ? "grid-row odd" : "grid-row";
    if (line.names !== names) line.element.className = line.names = names;
  }

  // `anew` after the report's columns, formats, selection or finds may have changed too.
  private fill(line: Line, cell: Cell, at: number, picture: Picture, anew: boolean): void {
    if (!anew && !cell.waits && cell.at === at) return;
    const { row } = line;
    const { element } = cell;
    const column = picture.columns[at]!;
    const value = picture.blocks.cell(row, column.index);
    cell.waits = value === undefined && !picture.blocks.isLoaded(row, column.index);
    if (cell.waits) line.waits = true;
    if (cell.row !== row) element.dataset["row"] = String(row);
    cell.row = row;
    if (anew || cell.at !== at) this.moveTo(cell, at, column);
    const text = formatCell(value, column.type, picture.precision, picture.emptyForZero);
    if (cell.text !== text) setText(element, (cell.text = text));
    const selected = picture.selected !== null && contains(picture.selected, row, at);
    if (cell.selected !== selected) element.setAttribute("aria-selected", String((cell.selected = selected)));
    const current = picture.head?.row === row && picture.head.column === at;
    const id = current ? cellId(picture.head!) : "";
    if (cell.id !== id) element.id = cell.id = id;
    let names = "grid-cell";
    if (isNumeric(column.type)) names += " number";
    const outstanding = standsOut(column, value);
    if (outstanding) names += ` ${outstanding}`;
    if (at < picture.frozen) names += at === picture.frozen - 1 ? " frozen last-frozen" : " frozen";
    if (cell.waits) names += " waiting";
    if (selected) names += " selected";
    if (picture.found?.row === row && picture.found.field === column.field) names += " found";
    if (current) names += " current";
    if (cell.names !== names) element.className = cell.names = names;
  }

  private moveTo(cell: Cell, at: number, column: GridColumn): void {
    const { element } = cell;
    if (cell.at !== at) {
      element.setAttribute("aria-colindex", String(at + 2));
      element.dataset["at"] = String(at);
    }
    cell.at = at;
    if (element.dataset["field"] !== column.field) element.dataset["field"] = column.field;
    element.style.left = `${this.shaped.edges[at]!}px`;
    element.style.width = `${column.width}px`;
  }

  private makeLine(): Line {
    const element = kLine.cloneNode(true) as HTMLElement;
    const [number, scrolled] = element.children as unknown as [HTMLElement, HTMLElement];
    this.body.append(element);
    return { element, number, scrolled, frozenCells: [], cells: [], row: -1, y: -1, left: -1, firstColumn: -1, waits: false, names: "grid-row" };
  }
}

const kLine = made('<div class="grid-row" role="row"><div class="grid-number" role="rowheader" aria-colindex="1"></div><div class="grid-scrolled" role="presentation"></div></div>');
const kCell = made('<div class="grid-cell" role="gridcell" aria-selected="false"></div>');

function made(html: string): HTMLElement {
  const template = document.createElement("template");
  template.innerHTML = html;
  return template.content.firstElementChild as HTMLElement;
}

function fitCells(cells: Cell[], count: number, parent: HTMLElement, before: HTMLElement | null): void {
  while (cells.length > count) cells.pop()!.element.remove();
  while (cells.length < count) {
    const element = kCell.cloneNode() as HTMLElement;
    parent.insertBefore(element, before);
    cells.push({ element, at: -1, row: -1, waits: false, names: "grid-cell", text: "", selected: false, id: "" });
  }
}

// Keeps the text node, which is cheaper than a new one.
function setText(element: HTMLElement, text: string): void {
  const node = element.firstChild as Text | null;
  if (node) node.data = text;
  else element.textContent = text;
}

function arrange(parent: HTMLElement, inOrder: readonly HTMLElement[]): void {
  if (inOrder.some((element, at) => parent.children[at] !== element)) parent.append(...inOrder);
}

export function cellId({ row, column }: Spot): string {
  return `cell-${row}-${column}`;
}
