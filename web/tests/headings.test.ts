import { describe, expect, it } from "vitest";
import { headingPath, headingSpans, readHeadings } from "../src/grid/headings";

const column = (caption: string, second = "") => ({ caption, second });

describe("the caption language", () => {
  const cases = [
    { name: "one line", columns: [column("商品代码$")], paths: ["商品代码"] },
    { name: "a percent sign is text", columns: [column("占比%$")], paths: ["占比%"] },
    { name: "a plain heading of two lines", columns: [column("收入", "数量")], paths: ["收入/数量"] },
    {
      name: "a group of five with four marks",
      columns: [column("期初结存+|+|+|+|", "数量"), column("", "整件散包"), column("", "辅助数量"), column("", "单价"), column("", "金额")],
      paths: ["期初结存/数量", "期初结存/整件散包", "期初结存/辅助数量", "期初结存/单价", "期初结存/金额"],
    },
    {
      name: "an empty caption behind the end of a group stands alone",
      columns: [column("期初结存+|", "数量"), column("", "金额"), column("", "备注")],
      paths: ["期初结存/数量", "期初结存/金额", "备注"],
    },
    {
      name: "a caption of blanks belongs to the group",
      columns: [column("采购收货+|+|", "数量"), column("", "辅助数量"), column(" ", "金额"), column("单价$")],
      paths: ["采购收货/数量", "采购收货/辅助数量", "采购收货/金额", "单价"],
    },
    { name: "category level", columns: [column("类别级次2$")], paths: ["类别级次2"] },
  ];
  it.each(cases)("$name", ({ columns, paths }) => {
    expect(readHeadings(columns).map((heading) => headingPath(heading).join("/"))).toEqual(paths);
  });
});

describe("groups over the columns shown", () => {
  const all = readHeadings([column("代码$"), column("期初+|+|", "数量"), column("", "单价"), column("", "金额"), column("收入+|", "数量"), column("", "金额")]);
  const spans = (shown: number[], frozen = 0) => headingSpans(shown.map((at) => all[at]!), frozen).map((span) => `${span.text} ${span.from}-${span.to}`);
  const cases = [
    { name: "all", shown: [0, 1, 2, 3, 4, 5], frozen: 0, expected: ["期初 1-4", "收入 4-6"] },
    { name: "one hidden in the middle", shown: [0, 1, 3, 4, 5], frozen: 0, expected: ["期初 1-3", "收入 3-5"] },
    { name: "the first of the group hidden", shown: [0, 2, 3], frozen: 0, expected: ["期初 1-3"] },
    { name: "moved apart", shown: [1, 4, 2, 3], frozen: 0, expected: ["期初 0-1", "收入 1-2", "期初 2-4"] },
    { name: "cut where scrolling begins", shown: [0, 1, 2, 3], frozen: 2, expected: ["期初 1-2", "期初 2-4"] },
  ];
  it.each(cases)("$name", ({ shown, frozen, expected }) => expect(spans(shown, frozen)).toEqual(expected));
});
