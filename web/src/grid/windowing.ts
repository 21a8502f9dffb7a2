// Which rows and columns lie in the window. Browsers bound the height of an element, so that a very tall
// report scrolls at a scale: the scroll bar's way is shorter than the rows' way.

export const kMostScrollHeight = 15_000_000;

export interface RowWindow {
  first: number;
  end: number; // behind the last
  offset: number; // of the first row from the top of the body, in pixels, zero or negative
}

export function scrollHeight(rows: number, rowHeight: number): number {
  return Math.min(rows * rowHeight, kMostScrollHeight);
}

// The rows' own position for a scroll position, and back.
export function rowsTop(scrollTop: number, rows: number, rowHeight: number, bodyHeight: number): number {
  const full = Math.max(0, rows * rowHeight - bodyHeight);
  const way = Math.max(0, scrollHeight(rows, rowHeight) - bodyHeight);
  if (full === way || way === 0) return Math.min(scrollTop, full);
  return Math.min(full, (scrollTop / way) * full);
}

export function scrollTopOf(top: number, rows: number, rowHeight: number, bodyHeight: number): number {
  const full = Math.max(0, rows * rowHeight - bodyHeight);
  const way = Math.max(0, scrollHeight(rows, rowHeight) - bodyHeight);
  return full === 0 ? 0 : full === way ? top : (top / full) * way;
}

export function rowWindow(top: number, rows: number, rowHeight: number, bodyHeight: number): RowWindow {
  const first = Math.max(0, Math.min(rows, Math.floor(top / rowHeight)));
  const end = Math.min(rows, Math.ceil((top + bodyHeight) / rowHeight));
  return { first, end, offset: first * rowHeight - top };
}

// Left edges of the columns, and behind them the whole width.
export function columnEdges(widths: readonly number[]): number[] {
  const edges = [0];
  for (const width of widths) edges.push(edges[edges.length - 1]! + width);
  return edges;
}

// The scrolled columns that can be seen between the frozen ones and the right edge.
export function columnWindow(
  edges: readonly number[],
  frozen: number,
  scrollLeft: number,
  viewWidth: number,
): { first: number; end: number } {
  const count = edges.length - 1;
  const left = edges[frozen]! + scrollLeft;
  let low = frozen;
  let high = count;
  while (low < high) {
    const middle = (low + high) >> 1;
    if (edges[middle + 1]! <= left) low = middle + 1;
    else high = middle;
  }
  let end = low;
  while (end < count && edges[end]! < scrollLeft + viewWidth) end += 1;
  return { first: low, end };
}

// How many scrolled columns a window of this width can show at most, wherever it stands.
export function columnsThatFit(edges: readonly number[], frozen: number, viewWidth: number): number {
  const count = edges.length - 1;
  const width = viewWidth - edges[frozen]!;
  let most = 0;
  for (let first = frozen, end = frozen; first < count; ++first) {
    while (end < count && edges[end]! - edges[first + 1]! < width) end += 1;
    most = Math.max(most, end - first);
  }
  return most;
}
