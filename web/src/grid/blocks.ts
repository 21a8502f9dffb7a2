// The rows of a report, fetched block by block as the window comes to them. A block is a rectangle of rows and
// columns; the least recently used ones are dropped. The newest wish is served first, so that a quick scroll
// does not wait for the rows that it has left behind.
import type { Cell } from "./formats";

// A block row by row; `summary` holds the positions in the view of the summary rows among them.
export interface RowBlock {
  values: Cell[][];
  summary: readonly number[];
}

// Where rows come from; `columns` are positions in the report's heading.
export interface RowSource {
  readonly rows: number;
  readonly columns: number;
  read(first: number, count: number, columns: number[]): Promise<RowBlock>;
}

// Rows and columns that are or will soon be seen, the last row not included.
export interface Area {
  first: number;
  end: number;
  columns: readonly number[];
}

interface Wish {
  block: number; // of rows
  chunk: number; // of columns
}

export const kBlockRows = 200;
const kBlockColumns = 20;
const kMostChunks = 1000;
const kMostBlocks = 1200;
const kMostAtOnce = 4;

export class Blocks {
  private readonly held = new Map<number, RowBlock>();
  private readonly summaries = new Set<number>();
  private readonly asked = new Set<number>();
  private wishes: Wish[] = [];
  private ended = false;
  onLoaded: () => void = () => {};
  onFailed: (error: unknown) => void = () => {};

  constructor(private readonly source: RowSource) {}

  // The cell, undefined while it has not been fetched.
  cell(row: number, column: number): Cell | undefined {
    const block = this.held.get(keyOf(Math.floor(row / kBlockRows), Math.floor(column / kBlockColumns)));
    return block?.values[row % kBlockRows]?.[column % kBlockColumns];
  }

  isLoaded(row: number, column: number): boolean {
    return this.held.has(keyOf(Math.floor(row / kBlockRows), Math.floor(column / kBlockColumns)));
  }

  // Wishes for the areas given, the more urgent first; what is held already is only marked as used.
  want(areas: readonly Area[]): void {
    if (this.ended || this.source.rows === 0) return;
    const wishes = new Map<number, Wish>();
    for (const { first, end, columns } of areas) {
      const chunks = new Set(columns.map((column) => Math.floor(column / kBlockColumns)));
      const last = Math.floor((Math.min(end, this.source.rows) - 1) / kBlockRows);
      for (let block = Math.floor(Math.max(0, first) / kBlockRows); block <= last; ++block) {
        for (const chunk of chunks) wishes.set(keyOf(block, chunk), { block, chunk });
      }
    }
    this.wishes = [];
    for (const [key, wish] of wishes) {
      const cells = this.held.get(key);
      if (cells) {
        this.held.delete(key);
        this.held.set(key, cells);
      } else if (!this.asked.has(key)) {
        this.wishes.push(wish);
      }
    }
    this.serve();
  }

  isSummary(row: number): boolean {
    return this.summaries.has(row);
  }

  end(): void {
    this.ended = true;
    this.wishes = [];
  }

  private serve(): void {
    while (this.asked.size < kMostAtOnce && this.wishes.length > 0) {
      const { block, chunk } = this.wishes.shift()!;
      void this.fetch(block, chunk);
    }
  }

  private async fetch(block: number, chunk: number): Promise<void> {
    const key = keyOf(block, chunk);
    this.asked.add(key);
    const first = block * kBlockRows;
    const columns: number[] = [];
    for (let c = chunk * kBlockColumns; c < Math.min((chunk + 1) * kBlockColumns, this.source.columns); ++c) columns.push(c);
    try {
      const cells = await this.source.read(first, Math.min(kBlockRows, this.source.rows - first), columns);
      if (this.ended) return;
      this.held.set(key, cells);
      for (const row of cells.summary) this.summaries.add(row);
      if (this.held.size > kMostBlocks) this.held.delete(this.held.keys().next().value!);
      this.onLoaded();
    } catch (error) {
      if (!this.ended) this.onFailed(error);
    } finally {
      this.asked.delete(key);
      if (!this.ended) this.serve();
    }
  }
}

function keyOf(block: number, chunk: number): number {
  return block * kMostChunks + chunk;
}
