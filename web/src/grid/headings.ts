// The caption language of report headings. A caption is one of:
//   "商品代码$"      a heading of one line over one column
//   "期初结存+|+|"   a group over this column and one more for each "+|"; each column's second line is its own
//   ""               a later column of the group before it
//   "数量"           a plain heading of two lines

export interface HeadColumn {
  caption: string;
  second: string;
}

// One column's heading: `group` numbers the group it belongs to, -1 outside any group.
export interface Heading {
  first: string;
  second: string;
  oneLine: boolean;
  group: number;
}

const kGroupMark = "+|";

function splitMarks(caption: string): { text: string; marks: number } {
  let text = caption;
  let marks = 0;
  while (text.endsWith(kGroupMark)) {
    text = text.slice(0, -kGroupMark.length);
    marks += 1;
  }
  return { text, marks };
}

export function readHeadings(columns: readonly HeadColumn[]): Heading[] {
  const headings: Heading[] = [];
  let group = -1;
  let groupText = "";
  let left = 0;
  for (const column of columns) {
    const { text, marks } = splitMarks(column.caption);
    if (marks > 0) {
      group += 1;
      groupText = text;
      left = marks;
      headings.push({ first: text, second: column.second, oneLine: false, group });
    } else if (column.caption.trim() === "" && left > 0) {
      left -= 1;
      headings.push({ first: groupText, second: column.second, oneLine: false, group });
    } else {
      left = 0;
      const oneLine = column.caption.endsWith("$");
      const first = oneLine ? column.caption.slice(0, -1) : column.caption;
      headings.push({ first, second: oneLine ? "" : column.second, oneLine, group: -1 });
    }
  }
  return headings;
}

// The words that lead to a column: "期初结存 / 数量".
export function headingPath(heading: Heading): string[] {
  return [heading.first, heading.second].filter((line) => line !== "");
}

// A run of neighbouring columns under one first line, as positions among the columns shown.
export interface HeadingSpan {
  from: number;
  to: number;
  text: string;
}

// The groups over the columns shown, in their order: a group whose columns were moved apart or partly hidden
// stands over each of its runs. A run never crosses `frozen`, where the scrolled part begins.
export function headingSpans(shown: readonly Heading[], frozen = 0): HeadingSpan[] {
  const spans: HeadingSpan[] = [];
  shown.forEach((heading, at) => {
    if (heading.oneLine) return;
    const last = spans[spans.length - 1];
    const joins =
      last !== undefined && last.to === at && at !== frozen && heading.group >= 0 && shown[at - 1]?.group === heading.group;
    if (joins) last.to = at + 1;
    else spans.push({ from: at, to: at + 1, text: heading.first });
  });
  return spans;
}
