// A caption marks its access key with "&": "确定(&O)". Two of them stand for one.

export interface Caption {
  text: string;
  accessKey: string; // lower case, empty without one
}

export function readCaption(caption: string): Caption {
  let accessKey = "";
  const text = caption.replace(/&(.)/g, (_, next: string) => {
    if (next !== "&" && accessKey === "") accessKey = next.toLowerCase();
    return next;
  });
  return { text, accessKey };
}

// An entry of a drop-down list as its reader sees it: what stands behind the fifty blanks is the field to
// sort by and never shows.
export function visibleEntry(entry: string): string {
  const hidden = /\s{20,}\|.*$/s.exec(entry);
  return (hidden ? entry.slice(0, hidden.index) : entry).trimEnd();
}
