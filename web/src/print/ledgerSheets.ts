// The pages of a ledger on sheets of paper: a page an item, begun on a sheet of its own. A page that is longer
// than a sheet hands its totals on: a line at the foot says so, and the next sheet begins with them.
import type { GridColumn } from "../grid/columns";
import { isNumeric } from "../grid/formats";
import type { Paper } from "./pages";

export interface LedgerSheet {
  page: number;
  strip: number; // of columns across
  start: number; // of its rows within the page
  end: number;
  part: number; // from 1, of the sheets down its page
  parts: number;
}

// How many sheets down a page of so many rows takes, `capacity` lines each.
export function sheetsDown(rows: number, capacity: number): number {
  if (rows <= capacity) return 1;
  return 2 + Math.max(0, Math.ceil((rows - 2 * (capacity - 1)) / (capacity - 2)));
}

// The rows of one of them: the first gives a line to what it hands on, the last one to what it takes over,
// those between to both.
export function rowsOfSheet(rows: number, capacity: number, part: number): { start: number; end: number } {
  const parts = sheetsDown(rows, capacity);
  const start = part === 0 ? 0 : capacity - 1 + (part - 1) * (capacity - 2);
  const end = part === parts - 1 ? rows : capacity - 1 + part * (capacity - 2);
  return { start, end };
}

// All sheets of all pages, found by number without being made.
export class SheetPlan {
  private readonly first: number[] = []; // sheet of each page
  readonly count: number;

  // `ends`: the number of rows up to the end of each page.
  constructor(private readonly ends: readonly number[], private readonly capacity: number, private readonly strips: number) {
    let sheets = 0;
    ends.forEach((_, page) => {
      this.first.push(sheets);
      sheets += strips * sheetsDown(this.rowsOf(page), capacity);
    });
    this.count = sheets;
  }

  rowsOf(page: number): number {
    return this.ends[page]! - (page === 0 ? 0 : this.ends[page - 1]!);
  }

  firstOf(page: number): number {
    return this.first[page] ?? 0;
  }

  at(sheet: number): LedgerSheet {
    let low = 0;
    let high = this.first.length - 1;
    while (low < high) {
      const middle = (low + high + 1) >> 1;
      if (this.first[middle]! <= sheet) low = middle;
      else high = middle - 1;
    }
    const within = sheet - this.first[low]!;
    const part = Math.floor(within / this.strips);
    const rows = this.rowsOf(low);
    return { page: low, strip: within % this.strips, ...rowsOfSheet(rows, this.capacity, part), part: part + 1, parts: sheetsDown(rows, this.capacity) };
  }
}

export const kRowMillimetres = 5.2;
export const kTitleColumns = 3;
const kLetter = 1.62; // widths of the sheets' font
const kWide = 2.8;
const kPadding = 2.6;
const kLeast = 10;
const kLeastFigure = 15;
const kMost = 60;
const kSmallest = 0.75; // columns that nearly fit are made smaller down to this

export function textMillimetres(text: string): number {
  let width = kPadding;
  for (const character of text) width += character.charCodeAt(0) < 0x80 ? kLetter : kWide;
  return width;
}

// What a column needs on paper, by its heading and the texts of some rows.
export function paperWidth(column: GridColumn, texts: readonly string[]): number {
  const heading = column.heading.oneLine ? column.heading.first : column.heading.second;
  const least = isNumeric(column.type) ? kLeastFigure : kLeast;
  return Math.min(kMost, Math.max(least, ...[heading, ...texts].map(textMillimetres)));
}

// How much smaller everything is set so that all columns stand side by side; 1 where they do, or where it
// would be too small and they go on several sheets across.
export function scaleToFit(widths: readonly number[], paper: Paper): number {
  const usable = paper.width - 2 * paper.margin;
  const wanted = widths.reduce((sum, width) => sum + width, 0);
  return wanted > usable && wanted * kSmallest <= usable ? usable / wanted : 1;
}

// Lines of rows on a sheet: what name, title lines, heading and foot leave.
export function ledgerCapacity(paper: Paper, titleLines: number, twoLines: boolean): number {
  const title = 9 + 5 * Math.ceil(titleLines / kTitleColumns) + 3;
  const heading = kRowMillimetres * (twoLines ? 2 : 1);
  return Math.max(5, Math.floor((paper.height - 2 * paper.margin - title - heading - 8) / kRowMillimetres));
}
