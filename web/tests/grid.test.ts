import { describe, expect, it } from "vitest";
import { Blocks, kBlockRows, type RowBlock, type RowSource } from "../src/grid/blocks";
import { asHtml, asText } from "../src/grid/clipboard";
import { standardColumns } from "../src/grid/columns";
import { moveBy, rectangleOf } from "../src/grid/selection";
import { columnEdges, columnWindow, kMostScrollHeight, rowsTop, rowWindow, scrollHeight, scrollTopOf } from "../src/grid/windowing";

describe("the window", () => {
  it.each([
    { name: "top", top: 0, expected: { first: 0, end: 10, offset: 0 } },
    { name: "between rows", top: 30, expected: { first: 1, end: 12, offset: -4 } },
    { name: "end", top: 100 * 26 - 260, expected: { first: 90, end: 100, offset: 0 } },
  ])("of rows at the $name", ({ top, expected }) => expect(rowWindow(top, 100, 26, 260)).toEqual(expected));
  it("reaches the last of a million rows where the scroll way is shorter than the rows", () => {
    const rows = 1_000_000;
    const way = scrollHeight(rows, 26) - 500;
    expect(scrollHeight(rows, 26)).toBe(kMostScrollHeight);
    expect(rowWindow(rowsTop(way, rows, 26, 500), rows, 26, 500).end).toBe(rows);
    expect(rowsTop(scrollTopOf(13_000_000, rows, 26, 500), rows, 26, 500)).toBeCloseTo(13_000_000, 3);
  });
  it("of columns leaves out what lies under the frozen ones", () => {
    const edges = columnEdges([100, 100, 100, 100, 100, 100]);
    expect(columnWindow(edges, 1, 0, 300)).toEqual({ first: 1, end: 3 });
    expect(columnWindow(edges, 1, 150, 300)).toEqual({ first: 2, end: 5 });
    expect(columnWindow(edges, 0, 300, 300)).toEqual({ first: 3, end: 6 });
  });
});

describe("the selection", () => {
  const extent = { rows: 100, columns: 5, page: 20 };
  const press = (key: string, ctrl = false) => moveBy({ row: 50, column: 2 }, { key, ctrl, shift: false }, extent);
  it.each([
    ["ArrowDown", false, { row: 51, column: 2 }], ["ArrowLeft", false, { row: 50, column: 1 }], ["PageDown", false, { row: 70, column: 2 }],
    ["Home", false, { row: 50, column: 0 }], ["End", true, { row: 99, column: 4 }], ["ArrowUp", true, { row: 0, column: 2 }], ["PageUp", false, { row: 30, column: 2 }], ["x", false, null],
  ])("goes with %s (Ctrl %s)", (key, ctrl, expected) => expect(press(key as string, ctrl as boolean)).toEqual(expected));
  it("stays inside", () => expect(moveBy({ row: 0, column: 4 }, { key: "ArrowRight", ctrl: false, shift: false }, extent)).toEqual({ row: 0, column: 4 }));
  it("spans whole rows", () => {
    const selection = { anchor: { row: 9, column: 3 }, head: { row: 4, column: 1 }, wholeRows: true };
    expect(rectangleOf(selection, 5)).toEqual({ top: 4, bottom: 9, left: 0, right: 4 });
  });
});

class CountingSource implements RowSource {
  rows = 10_000;
  columns = 100;
  asked: string[] = [];
  open: (() => void)[] = [];
  read(first: number, count: number, columns: number[]): Promise<RowBlock> {
    this.asked.push(`${first}+${count}:${columns[0]}-${columns[columns.length - 1]}`);
    const values = Array.from({ length: count }, (_, row) => columns.map((column) => (first + row) * 1000 + column));
    return new Promise((resolve) => this.open.push(() => resolve({ values, summary: [first + count - 1] })));
  }
  async answer(): Promise<void> {
    for (const open of this.open.splice(0)) open();
    await new Promise((resolve) => setTimeout(resolve));
  }
}

describe("blocks of rows", () => {
  it("are fetched once, with the columns around those wanted", async () => {
    const source = new CountingSource();
    const blocks = new Blocks(source);
    blocks.want([{ first: 0, end: 11, columns: [3] }]);
    blocks.want([{ first: 0, end: 11, columns: [3] }]);
    expect(source.asked).toEqual([`0+${kBlockRows}:0-19`]);
    expect(blocks.cell(10, 3)).toBeUndefined();
    await source.answer();
    expect(blocks.cell(10, 3)).toBe(10_003);
    expect(blocks.isSummary(kBlockRows - 1)).toBe(true);
    expect(blocks.isLoaded(0, 50)).toBe(false);
  });
  it("serve the newest wish first and forget what was scrolled past", async () => {
    const source = new CountingSource();
    const blocks = new Blocks(source);
    blocks.want([{ first: 0, end: 1301, columns: [0] }]);
    expect(source.asked).toHaveLength(4);
    blocks.want([{ first: 9000, end: 9001, columns: [0] }]);
    await source.answer();
    expect(source.asked.slice(4)).toEqual([`9000+${kBlockRows}:0-19`]);
  });
  it("say when a block could not be read", async () => {
    const errors: unknown[] = [];
    const blocks = new Blocks({ rows: 10, columns: 1, read: () => Promise.reject(new Error("gone")) });
    blocks.onFailed = (error) => errors.push(error);
    blocks.want([{ first: 0, end: 1, columns: [0] }]);
    await new Promise((resolve) => setTimeout(resolve));
    expect(errors).toHaveLength(1);
  });
});

describe("the clipboard", () => {
  const columns = standardColumns([
    { caption: "代码$", second: "", type: 1, field: "FNumber", visible: true, forceHide: false },
    { caption: "期初+|", second: "数量", type: 2, field: "FQty", visible: true, forceHide: false },
    { caption: "", second: "金额", type: 6, field: "FBal", visible: true, forceHide: false },
  ]);
  const excerpt = { columns, rows: [["01", 1234.5, "10.5000"], ['a"b\t<c>', null, "-1"]], precision: { quantity: 2, price: 2, amount: 2 }, withHeadings: true };
  it("holds text with tabs and plain numbers", () => expect(asText(excerpt)).toBe('代码\t期初 数量\t期初 金额\r\n01\t1234.5\t10.5000\r\n"a""b\t<c>"\t\t-1'));
  it("holds a table with headings of two lines", () => {
    const html = asHtml(excerpt);
    expect(html).toContain('<th rowspan="2">代码</th><th colspan="2">期初</th></tr><tr><th>数量</th><th>金额</th>');
    expect(html).toContain("a&quot;b\t&lt;c&gt;");
    expect(html).toContain('<td align="right">1,234.50</td>');
  });
});
