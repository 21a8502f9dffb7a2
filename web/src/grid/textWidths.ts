// How wide a cell's text is drawn, known without asking the browser for its layout: a cell is cut off only where
// its text does not fit, since each cut costs a frame more than the cell itself does.

const kBold = "600"; // sums are drawn so, and no text is wider
const kFullWidth = 0x2e80; // from here on scripts whose letters fill a square
const kDigit = /\d/;

export class TextWidths {
  private readonly known = new Map<string, number>();
  private readonly context: Pick<CanvasRenderingContext2D, "font" | "measureText"> | null;

  constructor(private readonly size: number, family: string) {
    this.context = typeof OffscreenCanvas === "undefined" ? null : new OffscreenCanvas(1, 1).getContext("2d");
    if (this.context) this.context.font = `${kBold} ${size}px ${family}`;
  }

  of(text: string): number {
    let width = 0;
    for (const letter of text) width += this.known.get(letter) ?? this.measure(letter);
    return width;
  }

  // Digits are drawn equally wide, and so are the letters that fill a square: only a hundred or so are measured.
  private measure(letter: string): number {
    const drawn = kDigit.test(letter) ? "0" : letter;
    const fills = letter.codePointAt(0)! >= kFullWidth;
    const width = fills ? this.size : this.context?.measureText(drawn).width ?? 0.7 * this.size;
    this.known.set(letter, width);
    return width;
  }
}
