// The keys that walk a ledger's items, and the focus that a walk leaves where it was.

export const kMoves = ["first", "previous", "next", "last"] as const;
export type Move = (typeof kMoves)[number];

const kKeys: Record<string, Move> = { Home: "first", PageUp: "previous", PageDown: "next", End: "last" };

// Ctrl with Home, PageUp, PageDown and End. Browsers with tabs keep Ctrl+PageUp and Ctrl+PageDown for
// themselves, so that Alt does the same.
export function moveOfKey(event: Pick<KeyboardEvent, "key" | "ctrlKey" | "metaKey" | "altKey" | "shiftKey">): Move | null {
  const { key, ctrlKey, metaKey, altKey, shiftKey } = event;
  if (shiftKey) return null;
  const ctrl = (ctrlKey || metaKey) && !altKey;
  const alt = altKey && !ctrlKey && !metaKey && key.startsWith("Page");
  return ctrl || alt ? (kKeys[key] ?? null) : null;
}

// A page is drawn anew for every item; the button that was pressed keeps the focus, so that it can be pressed
// again.
class FocusAgain {
  private report = 0;
  private name = "";

  remember(report: number, bar: HTMLElement | undefined): void {
    const held = document.activeElement as HTMLElement | null;
    this.report = report;
    this.name = (held && bar?.contains(held) && held.dataset["name"]) || "";
  }

  give(report: number, bar: () => HTMLElement | undefined): void {
    const { name } = this;
    if (report !== this.report || !name) return;
    this.name = "";
    setTimeout(() => bar()?.querySelector<HTMLElement>(`[data-name='${name}']:not(:disabled)`)?.focus(), 80);
  }
}

export const takeFocusAgain = new FocusAgain();
