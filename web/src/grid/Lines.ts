// The elements of the rows in the window. A row keeps its line, and a column its cell, for as long as the window
// holds them: both are found by their position modulo how many there are. So scrolling makes and removes no
// element, and writes to those only whose row or column came in.
import { drawCell, fitCells, setText, type Cell, type Picture } from "./cells";

export interface Shape {
  lines: number;
  cells: number; // of the scrolled columns
  firstNumber: number; // of the first row, for a screen reader, which counts the heading's lines too
}

export interface Window {
  top: number; // of row 0 in the layer, in pixels
  left: number; // how far the scrolled columns are scrolled
  firstRow: number;
  firstColumn: number;
}

interface Line {
  element: HTMLElement;
  frozen: HTMLElement;
  number: HTMLElement;
  scrolled: HTMLElement;
  frozenCells: Cell[];
  cells: Cell[];
  row: number;
  y: number;
  left: number;
  gutter: number;
  firstColumn: number;
  waits: boolean;
  names: string;
}

// Rows are placed from a row near by, since browsers keep places of many millions of pixels badly.
const kRowsAPlace = 4096;

export class Lines {
  private lines: Line[] = [];
  private shaped: Shape = { lines: 0, cells: 0, firstNumber: 1 };

  constructor(private readonly body: HTMLElement, private readonly rowHeight: number) {}

  shape(shape: Shape): void {
    this.shaped = shape;
    while (this.lines.length > shape.lines) this.lines.pop()!.element.remove();
    while (this.lines.length < shape.lines) this.lines.push(this.makeLine());
  }

  // Whether a cell in the window has no value yet.
  get wait(): boolean {
    return this.lines.some((line) => line.waits);
  }

  // Whether one of these rows has its line.
  hold({ first, end }: { first: number; end: number }): boolean {
    return this.lines.some((line) => line.row >= first && line.row < end);
  }

  // Every cell is looked at again by the next drawing; what it finds unchanged is not written.
  forget(): void {
    for (const line of this.lines) line.row = -1;
  }

  draw(picture: Picture, { top, left, firstRow, firstColumn }: Window): void {
    const { lines, cells } = this.shaped;
    const first = Math.max(0, Math.min(firstRow, picture.rows - lines));
    const column = Math.max(picture.frozen, Math.min(firstColumn, picture.columns.length - cells));
    const place = first - (first % kRowsAPlace);
    this.body.style.transform = `translateY(${top + place * this.rowHeight}px)`;
    for (let row = first; row < first + this.lines.length; ++row) {
      const line = this.lines[row % this.lines.length]!;
      this.place(line, (row - place) * this.rowHeight, left);
      const anew = line.row !== row;
      if (!anew && !line.waits && line.firstColumn === column) continue;
      if (anew) this.giveTo(line, row, picture);
      line.waits = false;
      line.firstColumn = column;
      const fill = (cell: Cell, at: number) => {
        if (anew || cell.waits || cell.at !== at) drawCell(cell, row, at, picture);
        line.waits ||= cell.waits;
      };
      for (let at = 0; at < picture.frozen; ++at) fill(line.frozenCells[at]!, at);
      for (let at = column; at < column + cells; ++at) fill(line.cells[at % cells]!, at);
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
    if (line.y !== y) line.element.style.top = `${y}px`;
    if (line.left !== left) line.scrolled.style.transform = `translateX(${-left}px)`;
    line.y = y;
    line.left = left;
  }

  private giveTo(line: Line, row: number, { frozen, edges }: Picture): void {
    fitCells(line.frozenCells, frozen, line.frozen);
    fitCells(line.cells, this.shaped.cells, line.scrolled);
    line.row = row;
    line.element.dataset["row"] = String(row);
    line.element.setAttribute("aria-rowindex", String(row + this.shaped.firstNumber));
    setText(line.number, String(row + 1));
    const gutter = edges[0]!;
    if (line.gutter !== gutter) line.number.style.width = `${(line.gutter = gutter)}px`;
  }

  private mark(line: Line, { blocks }: Picture): void {
    const names = blocks.isSummary(line.row) ? "grid-row summary" : line.row % 2 === 1 ? "grid-row odd" : "grid-row";
    if (line.names !== names) line.element.className = line.names = names;
  }

  private makeLine(): Line {
    const element = kLine.cloneNode(true) as HTMLElement;
    const [frozen, scrolled] = element.children as unknown as [HTMLElement, HTMLElement];
    const number = frozen.firstElementChild as HTMLElement;
    this.body.append(element);
    return { element, frozen, number, scrolled, frozenCells: [], cells: [], row: -1, y: -1, left: -1, gutter: -1, firstColumn: -1, waits: false, names: "grid-row" };
  }
}

const kLine = made(
  '<div class="grid-row" role="row"><div class="grid-frozen" role="presentation"><div class="grid-number" role="rowheader" aria-colindex="1"></div></div>' +
    '<div class="grid-scrolled" role="presentation"></div></div>',
);

function made(html: string): HTMLElement {
  const template = document.createElement("template");
  template.innerHTML = html;
  return template.content.firstElementChild as HTMLElement;
}

function arrange(parent: HTMLElement, inOrder: readonly HTMLElement[]): void {
  if (inOrder.some((element, at) => parent.children[at] !== element)) parent.append(...inOrder);
}
