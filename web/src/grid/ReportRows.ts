// The rows of one report as the session serves them: views, blocks, finding, sums. One interface between the
// grid and the line.
import type { Column, SortKey } from "../protocol";
import type { Session } from "../session/Session";
import type { RowBlock, RowSource } from "./blocks";
import type { Cell } from "./formats";
import { totalOf, type Total } from "./sums";

export const kMostAtOnce = 500;

export class ReportRows implements RowSource {
  constructor(private readonly session: Session, private readonly report: number, private readonly headings: readonly Column[], public rows: number) {}

  get columns(): number {
    return this.headings.length;
  }

  // Forbidden columns are not even asked for.
  async read(first: number, count: number, columns: number[]): Promise<RowBlock> {
    const wanted = columns.filter((column) => !this.headings[column]!.forceHide && this.headings[column]!.fieldType !== "");
    const fields = wanted.map((column) => this.headings[column]!.field);
    const { values, summary } = await this.session.line.ask("fetchRows", { report: this.report, start: first, count, fields });
    if (wanted.length === columns.length) return { values, summary };
    const places = columns.map((column) => wanted.indexOf(column));
    return { values: values.map((row) => places.map((place): Cell => (place < 0 ? null : row[place]!))), summary };
  }

  // All rows from `first`, in blocks of what the line allows.
  async *readAll(first: number, count: number, columns: number[]): AsyncGenerator<RowBlock> {
    for (let start = first; start < first + count; start += kMostAtOnce) {
      yield await this.read(start, Math.min(kMostAtOnce, first + count - start), columns);
    }
  }

  async setView(sort: SortKey[], text: string, fields: string[]): Promise<number> {
    const { rowCount } = await this.session.line.ask("setView", { report: this.report, sort, text, fields });
    this.rows = rowCount;
    return rowCount;
  }

  async find(text: string, start: number, back: boolean, fields: string[]): Promise<{ row: number; field: string }> {
    return this.session.line.ask("find", { report: this.report, text, start, back, fields });
  }

  async total(start: number, count: number, fields: string[]): Promise<Total> {
    const { sums } = await this.session.line.ask("sum", { report: this.report, start, count, fields });
    return totalOf(sums);
  }
}
