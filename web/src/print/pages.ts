// A report on sheets of paper: rows broken into pages, wide tables broken into groups of columns that each
// repeat the key columns. Sizes are in millimetres.
import type { GridColumn } from "../grid/columns";
import { headingSpans } from "../grid/headings";
import type { Paper as PaperSize } from "../protocol";

export interface Paper {
  width: number;
  height: number;
  margin: number;
}

const kMargin = 12;

// Sizes of paper, upright and lying, by the name that a clerk chooses them by.
export function papersOf(sizes: readonly PaperSize[]): Record<string, Paper> {
  return Object.fromEntries(sizes.flatMap(({ name, width, height }) => [
    [`${name} 纵向`, { width, height, margin: kMargin }],
    [`${name} 横向`, { width: height, height: width, margin: kMargin }],
  ]));
}

// More rows than these make more sheets than a browser prints in reasonable time.
export const kMostPrinted = 5000;

const kMillimetresAPixel = 25.4 / 96;
const kScale = 0.82; // print is read from nearer than a screen

export function columnMillimetres(column: GridColumn): number {
  return column.width * kMillimetresAPixel * kScale;
}

// Positions of columns for each strip of pages. A group under one heading stays together where it fits.
export function columnStrips(columns: readonly GridColumn[], keys: number, width: number): number[][] {
  const keyColumns = columns.slice(0, keys).map((_, at) => at);
  const keyWidth = keyColumns.reduce((sum, at) => sum + columnMillimetres(columns[at]!), 0);
  const fits = keyWidth < width * 0.6 ? keyColumns : [];
  const base = fits.length > 0 ? keyWidth : 0;
  const strips: number[][] = [];
  let strip: number[] = [];
  let used = base;
  for (let at = fits.length; at < columns.length; ) {
    const group = columns[at]!.heading.group;
    let end = at + 1;
    while (group >= 0 && end < columns.length && columns[end]!.heading.group === group) end += 1;
    const unit = columns.slice(at, end).reduce((sum, column) => sum + columnMillimetres(column), 0);
    if (unit > width - base) end = at + 1;
    const need = columns.slice(at, end).reduce((sum, column) => sum + columnMillimetres(column), 0);
    if (strip.length > 0 && used + need > width) {
      strips.push([...fits, ...strip]);
      strip = [];
      used = base;
    }
    for (; at < end; ++at) strip.push(at);
    used += need;
  }
  if (strip.length > 0 || strips.length === 0) strips.push([...fits, ...strip]);
  return strips;
}

export function rowsAPage(paper: Paper, titleLines: number, rowHeight = 5.2): number {
  const taken = 2 * paper.margin + 12 + titleLines * 5 + 12 + 8;
  return Math.max(5, Math.floor((paper.height - taken) / rowHeight));
}

// The upper line of a table's heading: a cell of one column that spans both lines, or one over its group.
export interface UpperHeading {
  key: string;
  text: string;
  span: number;
  deep: number;
}

export function upperHeadings(columns: readonly GridColumn[], twoLines: boolean): UpperHeading[] {
  const spans = headingSpans(columns.map((column) => column.heading));
  return columns.flatMap((column, at) => {
    if (column.heading.oneLine) return [{ key: column.field, text: column.heading.first, span: 1, deep: twoLines ? 2 : 1 }];
    const span = spans.find((one) => one.from === at);
    return span ? [{ key: `g${at}`, text: span.text, span: span.to - span.from, deep: 1 }] : [];
  });
}

// Prints the sheets that stand in the page.
export function printSheets(paper: Paper): void {
  const sheet = new CSSStyleSheet();
  sheet.replaceSync(`@page { size: ${paper.width}mm ${paper.height}mm; margin: 0 }`);
  document.adoptedStyleSheets = [sheet];
  window.print();
  document.adoptedStyleSheets = [];
}
