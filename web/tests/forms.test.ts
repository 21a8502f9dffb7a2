import { describe, expect, it } from "vitest";
import { readCaption, visibleEntry } from "../src/forms/captions";
import { readDate } from "../src/forms/dates";
import { withoutQuotes } from "../src/forms/keys";
import { layOut } from "../src/forms/layout";
import type { Control } from "../src/protocol";

function control(id: string, kind: Control["kind"], more: Partial<Control> = {}): Control {
  const index = /\((\d+)\)/.exec(id);
  return {
    control: id, name: id.replace(/\(.*/, ""), index: index ? Number(index[1]) : -1, kind, caption: "", tag: "", enabled: true, visible: true,
    tabIndex: 0, takesFocus: true, frame: "", row: 0, column: 0, columns: 1, ...more,
  };
}

const range = (index: number, row: number, labels: [string, string]) => [
  control(`lbl_txtItem(${index})`, "label", { caption: labels[0] }), control(`txtItem(${index})`, "text", { row }), control(`cmdItem(${index})`, "button", { caption: "…" }),
  control(`lbl_txtItem(${index + 1})`, "label", { caption: labels[1] }), control(`txtItem(${index + 1})`, "text", { row, column: 1 }), control(`cmdItem(${index + 1})`, "button", { caption: "…" }),
];

function picture(controls: Control[]): string[] {
  const { sections, ending } = layOut(controls);
  const lines = sections.flatMap((section) => [
    ...(section.frame ? [`[${section.heading?.control ?? section.frame.caption}]`] : []),
    ...section.rows.map((row) => [...row.cells, ...row.beside].map((cell) => `${cell.label?.caption ?? ""}${cell.control.control}${cell.button ? "…" : ""}${cell.spin ? `±${cell.spin.control}` : ""}`).join(" | ")),
  ]);
  return [...lines, `= ${ending.map((button) => button.control).join(" ")}`];
}

describe("a dialog's layout", () => {
  it("puts ranges beside each other and the ending buttons below", () => {
    const controls = [
      ...range(0, 1, ["商品代码:", "至:"]), ...range(2, 2, ["仓库代码:", "至:"]),
      control("lbl_cboSort", "label", { caption: "排序:" }), control("cboSort", "combo", { row: 3 }),
      control("OptSortD", "option", { caption: "升序", row: 4 }), control("OptSortA", "option", { caption: "降序", row: 5 }),
      control("TOVRptFilter", "embedded"), control("cmdOK", "button"), control("cmdCacel", "button"),
      control("lblItemClass", "label", { caption: "物料类别代码:    ", visible: false }),
    ];
    expect(picture(controls)).toEqual([
      "商品代码:txtItem(0)… | 至:txtItem(1)…", "仓库代码:txtItem(2)… | 至:txtItem(3)…", "排序:cboSort | OptSortD | OptSortA", "= cmdOK cmdCacel",
    ]);
  });
  it("draws frames with their caption, and steps beside their text", () => {
    const controls = [
      control("fraPeriod", "frame", { caption: "期间" }), control("dtpB", "date", { frame: "fraPeriod", row: 1 }), control("dtpE", "date", { frame: "fraPeriod", row: 1, column: 1 }),
      control("txtLevel", "text", { row: 2 }), control("updLevel", "spin", { row: 2 }),
    ];
    expect(picture(controls)).toEqual(["[期间]", "dtpB | dtpE", "txtLevel±updLevel", "= "]);
  });
  it("gives each pair of arrows its own text, wherever it stands in the form", () => {
    const controls = [
      control("txtMultiLevelBegin", "text", { row: 1 }), control("txtMultiLevelEnd", "text", { row: 1, column: 1 }), control("txtItem(10)", "text", { row: 2 }),
      control("UpDownMultiLevelBegin", "spin"), control("UpDownMultiLevelEnd", "spin"),
    ];
    expect(picture(controls)).toEqual(["txtMultiLevelBegin±UpDownMultiLevelBegin | txtMultiLevelEnd±UpDownMultiLevelEnd", "txtItem(10)", "= "]);
  });
  it("lets two lists, or two texts to be contained, share a row, and a sort keep its direction", () => {
    const controls = [
      control("txtItem(8)", "text", { row: 1 }), control("lblContained(8)", "label", { caption: "(包含)" }), control("txtItem(9)", "text", { row: 2 }), control("lblContained(9)", "label", { caption: "(包含)" }),
      control("cmbitem(0)", "combo", { row: 3 }), control("cmbitem(1)", "combo", { row: 4 }), control("cmbitem(2)", "combo", { row: 5 }),
      control("cmbGroup", "combo", { row: 6 }), control("OptSortD", "option", { row: 7 }), control("OptSortA", "option", { row: 8 }), control("txtLast", "text", { row: 9 }),
    ];
    expect(picture(controls)).toEqual(["txtItem(8) | txtItem(9)", "cmbitem(0) | cmbitem(1)", "cmbitem(2)", "cmbGroup | OptSortD | OptSortA", "txtLast", "= "]);
  });
  it("puts both ends of a date range in one row", () => {
    expect(picture([control("DtpDate(0)", "date", { row: 1 }), control("DtpDate(1)", "date", { row: 2 }), control("DtpOther", "date", { row: 3 })])).toEqual(["DtpDate(0) | DtpDate(1)", "DtpOther", "= "]);
  });
  it("draws a formula term by term, and a placed button behind its field", () => {
    const controls = [
      control("lbl_txtItem(2)", "label", { caption: "商品名称:" }), control("txtItem(2)", "text", { row: 3 }), control("lblContained(2)", "label", { caption: "(包含)" }),
      control("txtItem(4)", "text", { row: 4 }), control("cmdItem(2)", "button", { caption: "…", row: 4 }),
      control("chkitem(4)", "check", { frame: "fraFormula", row: 5 }), control("chkitem(5)", "check", { frame: "fraFormula", row: 6 }),
      control("fraFormula", "frame"), control("lblFormula", "label", { caption: "可用库存", frame: "fraFormula" }),
      control("lblSign(4)", "label", { caption: "=", frame: "fraFormula" }), control("lblSign(5)", "label", { caption: "+", frame: "fraFormula" }),
    ];
    expect(picture(controls)).toEqual(["商品名称:txtItem(2)", "txtItem(4)…", "[lblFormula]", "=chkitem(4)", "+chkitem(5)", "= "]);
    expect(layOut(controls).sections[0]!.rows[0]!.cells[0]!.note?.caption).toBe("(包含)");
  });
  it("takes a frame around nothing but words for a note", () => {
    expect(picture([control("frazc", "frame"), control("lblzc", "label", { caption: "请注意", frame: "frazc" })])).toEqual(["[]", "lblzc", "= "]);
  });
  it("leaves hidden controls out", () => {
    expect(picture([control("txtA", "text", { visible: false }), control("chkB", "check")])).toEqual(["chkB", "= "]);
  });
});

describe("captions", () => {
  it.each([
    ["确定(&O)", "确定(O)", "o"], ["取消(&E)", "取消(E)", "e"], ["A && B", "A & B", ""], ["数量", "数量", ""],
  ])("%s", (caption, text, accessKey) => expect(readCaption(caption)).toEqual({ text, accessKey }));
  it.each([
    [`最高库存${" ".repeat(50)}|FMostQty`, "最高库存"], ["甲|乙", "甲|乙"], ["无", "无"],
  ])("entry %s", (entry, shown) => expect(visibleEntry(entry)).toBe(shown));
  it("a quote never arrives", () => expect(withoutQuotes("01' or '1")).toBe("01 or 1"));
});

describe("dates as typed", () => {
  it.each([
    ["2026-11-05", "2026-11-05"], ["2026/1/5", "2026-01-05"], ["2026.2.28", "2026-02-28"], ["20261105", "2026-11-05"], [" 2024-02-29 ", "2024-02-29"],
    ["0423", null], ["0423-01-01", null], ["2026-02-30", null], ["2026-13-01", null], ["26-1-5", null], ["", null], ["明天", null],
  ])("%s", (text, expected) => expect(readDate(text)).toBe(expected));
  it("not before the first day allowed", () => expect([readDate("2025-12-31", "2026-01-01"), readDate("2026-01-01", "2026-01-01")]).toEqual([null, "2026-01-01"]));
});
