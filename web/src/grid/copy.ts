// Puts an excerpt into the clipboard as text and as a table.
import { asHtml, asText, type Excerpt } from "./clipboard";

// Browsers give the clipboard only to pages on safe addresses; elsewhere the older road is taken.
export async function putIntoClipboard(excerpt: Excerpt): Promise<boolean> {
  const text = asText(excerpt);
  const html = asHtml(excerpt);
  if (navigator.clipboard && window.isSecureContext) {
    try {
      const kinds = { "text/plain": new Blob([text], { type: "text/plain" }), "text/html": new Blob([html], { type: "text/html" }) };
      await navigator.clipboard.write([new ClipboardItem(kinds)]);
      return true;
    } catch {
      // refused: the older road below
    }
  }
  let done = false;
  const fill = (event: ClipboardEvent) => {
    event.preventDefault();
    event.clipboardData?.setData("text/plain", text);
    event.clipboardData?.setData("text/html", html);
    done = event.clipboardData !== null;
  };
  document.addEventListener("copy", fill);
  document.execCommand("copy");
  document.removeEventListener("copy", fill);
  return done;
}
