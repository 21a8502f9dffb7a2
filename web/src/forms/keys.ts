// Keys in a form: Enter goes to the next field that can take the focus, Alt with a caption's letter presses.

import { onMounted, onUnmounted, type Ref } from "vue";

const kFields = "input:not([disabled]):not([type=hidden]), select:not([disabled]), [data-name][tabindex='0'], button.ending:not([disabled])";

export function focusNext(within: HTMLElement, from: HTMLElement): void {
  const fields = [...within.querySelectorAll<HTMLElement>(kFields)].filter(
    (field) => field.offsetParent !== null && field.tabIndex >= 0 && !field.closest(".scheme-bar"),
  );
  const at = fields.indexOf(from);
  const next = fields[(at + 1) % fields.length];
  next?.focus();
  if (next instanceof HTMLInputElement && next.type === "text") next.select();
}

// The element inside with that access key.
export function byAccessKey(within: HTMLElement, key: string): HTMLElement | null {
  return within.querySelector<HTMLElement>(`[data-access-key="${CSS.escape(key.toLowerCase())}"]:not([disabled])`);
}

// Alt and a letter press in the topmost window, wherever in it the focus is.
export function useAccessKeys(root: Ref<HTMLElement | undefined>, isTop: () => boolean): void {
  const press = (event: KeyboardEvent) => {
    const { activeElement } = document;
    if (!event.altKey || event.key.length !== 1 || !root.value || !isTop()) return;
    // The focus may stand in something above: a question for a name, the guide.
    if (activeElement !== document.body && !root.value.closest(".el-dialog")?.contains(activeElement)) return;
    const found = byAccessKey(root.value, event.key);
    if (!found) return;
    event.preventDefault();
    found.focus();
    found.click();
  };
  onMounted(() => window.addEventListener("keydown", press));
  onUnmounted(() => window.removeEventListener("keydown", press));
}

export function withoutQuotes(text: string): string {
  return text.replaceAll("'", "");
}
