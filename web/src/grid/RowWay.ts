// How far the rows are scrolled. The scroll bar's way is shorter than that of very many rows: a pull at the bar goes
// to its share of them, but wheel and finger move them by as much as in any other report. The bar is put right when
// the scrolling rests.
import { kMostScrollHeight, rowsTop, scrollHeight, scrollTopOf } from "./windowing";

export class RowWay {
  top = 0; // in whole pixels, so that texts stay sharp
  private bar = 0;
  private rows = 0;
  private height = 0;

  constructor(private readonly host: { scrollTop: number }, private readonly rowHeight: number) {}

  // Other rows, or another height to show them in.
  measure(rows: number, height: number): void {
    const sameRows = rows === this.rows;
    this.rows = rows;
    this.height = height;
    if (sameRows && this.isScaled) this.top = this.inside(this.top);
    else this.takeShare();
  }

  // The bar has been scrolled.
  follow(): void {
    const bar = this.host.scrollTop;
    const moved = bar - this.bar;
    if (moved === 0) return;
    if (!this.isScaled || Math.abs(moved) > this.height) return this.takeShare();
    this.bar = bar;
    this.top = this.inside(this.top + moved);
    const [barEnds, rowsEnd] = moved > 0 ? [bar >= this.barsWay - 1, this.rowsWay] : [bar <= 0, 0];
    if (!barEnds) return;
    if (Math.abs(rowsEnd - this.top) <= this.height) this.top = rowsEnd;
    else this.settle();
  }

  goTo(top: number): void {
    this.top = this.inside(top);
    this.settle();
    if (!this.isScaled) this.takeShare();
  }

  // Puts the bar where the rows are. Only at the ends of the rows it stands at its own.
  settle(): void {
    const share = Math.round(scrollTopOf(this.top, this.rows, this.rowHeight, this.height));
    const isBetween = this.top > 0 && this.top < this.rowsWay;
    const bar = isBetween && this.isScaled ? Math.max(1, Math.min(this.barsWay - 1, share)) : share;
    if (bar === this.bar) return;
    this.host.scrollTop = bar;
    this.bar = this.host.scrollTop;
  }

  private takeShare(): void {
    this.bar = this.host.scrollTop;
    this.top = Math.round(rowsTop(this.bar, this.rows, this.rowHeight, this.height));
  }

  private inside(top: number): number {
    return Math.round(Math.max(0, Math.min(this.rowsWay, top)));
  }

  private get isScaled(): boolean {
    return this.rows * this.rowHeight > kMostScrollHeight;
  }

  private get rowsWay(): number {
    return Math.max(0, this.rows * this.rowHeight - this.height);
  }

  private get barsWay(): number {
    return Math.max(0, scrollHeight(this.rows, this.rowHeight) - this.height);
  }
}
