import { describe, expect, it } from "vitest";
import { standardColumns } from "../src/grid/columns";
import { ledgerCapacity, paperWidth, rowsOfSheet, scaleToFit, SheetPlan, sheetsDown, textMillimetres } from "../src/print/ledgerSheets";
import { papersOf } from "../src/print/pages";
import { moveOfKey } from "../src/reports/ledgerKeys";
import { apply, newState } from "../src/session/state";

const kA4 = papersOf([{ name: "A4", width: 210, height: 297 }]);

describe("rows of a page on sheets", () => {
  it.each([
    { rows: 0, sheets: [[0, 0]] },
    { rows: 10, sheets: [[0, 10]] },
    { rows: 11, sheets: [[0, 9], [9, 11]] },
    { rows: 18, sheets: [[0, 9], [9, 18]] },
    { rows: 19, sheets: [[0, 9], [9, 17], [17, 19]] },
    { rows: 26, sheets: [[0, 9], [9, 17], [17, 26]] },
    { rows: 27, sheets: [[0, 9], [9, 17], [17, 25], [25, 27]] },
  ])("$rows rows, ten lines a sheet", ({ rows, sheets }) => {
    expect(sheetsDown(rows, 10)).toBe(sheets.length);
    expect(sheets.map((_, part) => rowsOfSheet(rows, 10, part)).map(({ start, end }) => [start, end])).toEqual(sheets);
  });
  it("never overflow a sheet with what is carried", () => {
    for (let rows = 0; rows < 300; rows += 1) {
      const parts = sheetsDown(rows, 12);
      let next = 0;
      for (let part = 0; part < parts; part += 1) {
        const { start, end } = rowsOfSheet(rows, 12, part);
        expect(start).toBe(next);
        expect(end - start + (part > 0 ? 1 : 0) + (part < parts - 1 ? 1 : 0)).toBeLessThanOrEqual(12);
        expect(end > start || rows === 0).toBe(true);
        next = end;
      }
      expect(next).toBe(rows);
    }
  });
});

describe("all sheets", () => {
  const plan = new SheetPlan([5, 25, 26], 10, 2);
  it("are counted, strips across included", () => expect(plan.count).toBe(2 + 3 * 2 + 2));
  it.each([
    [0, { page: 0, strip: 0, start: 0, end: 5, part: 1, parts: 1 }], [1, { page: 0, strip: 1, start: 0, end: 5, part: 1, parts: 1 }],
    [2, { page: 1, strip: 0, start: 0, end: 9, part: 1, parts: 3 }], [5, { page: 1, strip: 1, start: 9, end: 17, part: 2, parts: 3 }],
    [9, { page: 2, strip: 1, start: 0, end: 1, part: 1, parts: 1 }],
  ])("sheet %i", (sheet, expected) => expect(plan.at(sheet as number)).toEqual(expected));
  it("begin with each page", () => expect([0, 1, 2, 3].map((page) => plan.firstOf(page))).toEqual([0, 2, 8, 0]));
  it("are none without pages", () => expect(new SheetPlan([], 10, 1).count).toBe(0));
});

describe("columns on a sheet", () => {
  const [text, figure] = standardColumns([
    { caption: "备注$", second: "", type: 1, field: "FNote", visible: true, forceHide: false },
    { caption: "收入+|", second: "数量", type: 2, field: "FInQty", visible: true, forceHide: false },
  ]);
  it("are as wide as what stands in them, within bounds", () => {
    expect(paperWidth(text!, [])).toBe(10);
    expect(paperWidth(figure!, ["1.00"])).toBe(15);
    expect(paperWidth(text!, ["XSFH-202609-00001"])).toBeCloseTo(textMillimetres("XSFH-202609-00001"));
    expect(paperWidth(text!, ["长".repeat(50)])).toBe(60);
  });
  it.each([[[100, 100], 1], [[200, 100], 0.91], [[300, 100], 1]])("%j of them, set at %d", (widths, scale) => {
    expect(scaleToFit(widths as number[], kA4["A4 横向"]!)).toBeCloseTo(scale as number, 2);
  });
  it("leave room for more lines without a second heading line", () => {
    const a4 = kA4["A4 横向"]!;
    expect(ledgerCapacity(a4, 7, false)).toBeGreaterThan(ledgerCapacity(a4, 7, true));
    expect(ledgerCapacity({ width: 50, height: 60, margin: 10 }, 11, true)).toBe(5);
  });
});

describe("keys that walk the items", () => {
  const key = (name: string, held: "ctrl" | "alt" | "none" | "ctrl+shift" = "ctrl") => ({ key: name, ctrlKey: held.startsWith("ctrl"), metaKey: false, altKey: held === "alt", shiftKey: held.endsWith("shift") });
  it.each([
    [key("Home"), "first"], [key("PageUp"), "previous"], [key("PageDown"), "next"], [key("End"), "last"], [key("PageDown", "alt"), "next"], [key("PageUp", "alt"), "previous"],
    [key("Home", "alt"), null], [key("Home", "none"), null], [key("End", "ctrl+shift"), null], [key("ArrowUp"), null],
  ])("%j", (event, to) => expect(moveOfKey(event as ReturnType<typeof key>)).toBe(to));
});

describe("a report that failed to open", () => {
  it("is told on the start page, whatever else is open", () => {
    const state = newState();
    state.active = 3;
    apply(state, { type: "reportFailed", report: 4, programmaticId: "TOVStockRpt.Rpt10402", error: "没有权限", cancelled: false, opened: false });
    expect(state).toMatchObject({ active: 0, failure: { text: "没有权限" } });
    state.active = 3;
    apply(state, { type: "reportFailed", report: 5, programmaticId: "TOVStockRpt.Rpt10402", error: "", cancelled: true, opened: false });
    expect(state.active).toBe(3);
  });
});
