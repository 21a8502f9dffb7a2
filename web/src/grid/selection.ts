// A rectangle of selected cells, in positions as shown. The anchor is the cell from which it was drawn, the
// head the one that keys move.

export interface Spot {
  row: number;
  column: number;
}

export interface Selection {
  anchor: Spot;
  head: Spot;
  wholeRows: boolean;
}

export interface Rectangle {
  top: number;
  bottom: number; // included
  left: number;
  right: number; // included
}

export function rectangleOf(selection: Selection, columns: number): Rectangle {
  const { anchor, head, wholeRows } = selection;
  return {
    top: Math.min(anchor.row, head.row),
    bottom: Math.max(anchor.row, head.row),
    left: wholeRows ? 0 : Math.min(anchor.column, head.column),
    right: wholeRows ? columns - 1 : Math.max(anchor.column, head.column),
  };
}

export function contains(rectangle: Rectangle, row: number, column: number): boolean {
  return row >= rectangle.top && row <= rectangle.bottom && column >= rectangle.left && column <= rectangle.right;
}

export interface Extent {
  rows: number;
  columns: number;
  page: number; // rows a window holds
}

export interface Key {
  key: string;
  ctrl: boolean;
  shift: boolean;
}

// Where a key takes the head; null for a key that moves nothing.
export function moveBy(from: Spot, key: Key, extent: Extent): Spot | null {
  const lastRow = extent.rows - 1;
  const lastColumn = extent.columns - 1;
  const to = { ...from };
  switch (key.key) {
    case "ArrowUp": to.row = key.ctrl ? 0 : from.row - 1; break;
    case "ArrowDown": to.row = key.ctrl ? lastRow : from.row + 1; break;
    case "ArrowLeft": to.column = key.ctrl ? 0 : from.column - 1; break;
    case "ArrowRight": to.column = key.ctrl ? lastColumn : from.column + 1; break;
    case "PageUp": to.row = from.row - extent.page; break;
    case "PageDown": to.row = from.row + extent.page; break;
    case "Home": to.column = 0; if (key.ctrl) to.row = 0; break;
    case "End": to.column = lastColumn; if (key.ctrl) to.row = lastRow; break;
    default: return null;
  }
  return { row: clamp(to.row, lastRow), column: clamp(to.column, lastColumn) };
}

function clamp(value: number, most: number): number {
  return Math.max(0, Math.min(most, value));
}
