// One cell of the grid. What it shows is remembered beside its element, so that only what changes is written.
import type { Blocks } from "./blocks";
import type { GridColumn } from "./columns";
import { formatCell, isNumeric, standsOut, type Precision } from "./formats";
import { contains, type Rectangle, type Spot } from "./selection";
import type { TextWidths } from "./textWidths";

// What the cells are drawn from.
export interface Picture {
  columns: readonly GridColumn[];
  edges: readonly number[];
  frozen: number;
  rows: number;
  blocks: Blocks;
  precision: Precision;
  emptyForZero: boolean;
  found: { row: number; field: string } | null;
  selected: Rectangle | null;
  head: Spot | null;
  widths: TextWidths;
}

export interface Cell {
  element: HTMLElement;
  at: number; // column
  row: number;
  waits: boolean; // for its value
  names: string;
  text: string;
  selected: boolean;
  id: string;
  field: string;
  left: number;
  width: number;
}

const kAround = 16; // padding and line

const kCell = document.createElement("div");
kCell.className = "grid-cell";
kCell.setAttribute("role", "gridcell");
kCell.setAttribute("aria-selected", "false");

export function fitCells(cells: Cell[], count: number, parent: HTMLElement): void {
  while (cells.length > count) cells.pop()!.element.remove();
  while (cells.length < count) {
    const element = kCell.cloneNode() as HTMLElement;
    parent.append(element);
    cells.push({ element, at: -1, row: -1, waits: false, names: "grid-cell", text: "", selected: false, id: "", field: "", left: -1, width: -1 });
  }
}

export function drawCell(cell: Cell, row: number, at: number, picture: Picture): void {
  const { element } = cell;
  const column = picture.columns[at]!;
  const value = picture.blocks.cell(row, column.index);
  cell.waits = value === undefined && !picture.blocks.isLoaded(row, column.index);
  if (cell.row !== row) element.dataset["row"] = String((cell.row = row));
  moveTo(cell, at, column, picture.edges[at]!);
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
  if (picture.widths.of(outstanding === "over" ? `+${text}` : text) > column.width - kAround) names += " cut";
  if (cell.waits) names += " waiting";
  if (selected) names += " selected";
  if (picture.found?.row === row && picture.found.field === column.field) names += " found";
  if (current) names += " current";
  if (cell.names !== names) element.className = cell.names = names;
}

function moveTo(cell: Cell, at: number, { field, width }: GridColumn, left: number): void {
  const { element } = cell;
  if (cell.at !== at) {
    element.setAttribute("aria-colindex", String(at + 2));
    element.dataset["at"] = String((cell.at = at));
  }
  if (cell.field !== field) element.dataset["field"] = cell.field = field;
  if (cell.left !== left) element.style.marginLeft = `${(cell.left = left)}px`;
  if (cell.width !== width) element.style.width = `${(cell.width = width)}px`;
}

// Keeps the text node, which is cheaper than a new one.
export function setText(element: HTMLElement, text: string): void {
  const node = element.firstChild as Text | null;
  if (node) node.data = text;
  else element.textContent = text;
}

export function cellId({ row, column }: Spot): string {
  return `cell-${row}-${column}`;
}
