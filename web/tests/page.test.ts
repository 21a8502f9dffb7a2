import { describe, expect, it } from "vitest";
import { standardColumns } from "../src/grid/columns";
import { readChapters } from "../src/help/markdown";
import { columnStrips, papersOf, rowsAPage } from "../src/print/pages";
import { readAddress, writeAddress } from "../src/reports/address";
import { initialsOf, matchesSearch } from "../src/reports/search";
import type { ReportReadyMessage } from "../src/protocol";
import { apply, newState } from "../src/session/state";

describe("addresses", () => {
  it.each([
    { path: "/r/10414", query: "", expected: { number: "10414", filter: null } },
    { path: "/r/10414", query: "?BItemNumber=01&cboSort=2", expected: { number: "10414", filter: { BItemNumber: "01", cboSort: "2" } } },
    { path: "/", query: "", expected: null }, { path: "/x/1", query: "", expected: null },
  ])("$path$query", ({ path, query, expected }) => expect(readAddress(path, query)).toEqual(expected));
  it("say the filter, but not what the system sets itself", () => {
    expect(writeAddress({ number: "10414", filter: { BItemNumber: "01 甲", UserID: "7", OK: "True" } })).toBe("/r/10414?BItemNumber=01+%E7%94%B2");
  });
});

describe("finding a report", () => {
  const report = { name: "商品超储短缺表", number: "10414", className: "Rpt10414" };
  it("knows initials", () => expect(initialsOf("商品超储短缺表")).toBe("spccdqb"));
  it.each([["", true], ["超储", true], ["414", true], ["spcc", true], ["SPCC", true], [" dqb ", true], ["xyz", false], ["批号", false]])("%s", (typed, found) => {
    expect(matchesSearch(report, typed as string)).toBe(found);
  });
});

const a4 = papersOf([{ name: "A4", width: 210, height: 297 }]);

describe("sheets of paper", () => {
  const column = (field: string, caption = `${field}$`) => ({ caption, second: "数量", type: 2, field, visible: true, forceHide: false });
  const columns = standardColumns([column("K1"), column("K2"), column("A", "期初+|+|"), column("B", ""), column("C", ""), column("D", "收入+|+|"), column("E", ""), column("F", "")]);
  it("repeat the key columns and keep groups together", () => expect(columnStrips(columns, 2, 130)).toEqual([[0, 1, 2, 3, 4], [0, 1, 5, 6, 7]]));
  it("hold a narrow report in one strip", () => expect(columnStrips(columns, 2, 400)).toEqual([[0, 1, 2, 3, 4, 5, 6, 7]]));
  it("break a group that is wider than the paper", () => {
    const strips = columnStrips(columns, 0, 50);
    expect(strips.flat()).toEqual([0, 1, 2, 3, 4, 5, 6, 7]);
    expect(strips.length).toBeGreaterThan(3);
  });
  it("hold more rows upright", () => expect(rowsAPage(a4["A4 纵向"]!, 2)).toBeGreaterThan(rowsAPage(a4["A4 横向"]!, 2)));
});

describe("the session's messages", () => {
  const ready = (report: number, parent = 0): ReportReadyMessage => ({
    type: "reportReady", report, parent, programmaticId: "TOVStockRpt.Rpt10412", number: "10412", name: "表", title: [], columns: [], property: {}, filter: {}, rowCount: 0, detail: false, ledger: null,
  });
  it("open, change and close a form", () => {
    const state = newState();
    const text = { control: "txtItem(0)", name: "txtItem", index: 0, kind: "text" as const, caption: "", tag: "", value: "", enabled: true, visible: true, tabIndex: 0, takesFocus: true, frame: "", row: 0, column: 0, columns: 1 };
    apply(state, { type: "formOpened", form: 1, name: "frmFirter10414", caption: "过滤", report: 1, focus: "txtItem(0)", controls: [text], filter: null });
    apply(state, { type: "formChanged", form: 1, controls: [{ control: "txtItem(0)", value: "01" }] });
    const open = state.windows[0]!;
    expect(open.kind === "form" && open.form.controls[0]).toMatchObject({ value: "01", enabled: true });
    apply(state, { type: "formClosed", form: 1 });
    expect(state.windows).toEqual([]);
  });
  it("bring a report anew in its own tab, and go back to the parent when a detail closes", () => {
    const state = newState();
    apply(state, ready(1));
    apply(state, ready(2));
    apply(state, ready(3, 1));
    apply(state, ready(1));
    expect(state.tabs.map((tab) => `${tab.report}.${tab.generation}`)).toEqual(["1.2", "2.1", "3.1"]);
    state.active = 3;
    apply(state, { type: "reportClosed", report: 3 });
    expect(state.active).toBe(1);
  });
  it("keep what a report showed when its dialog is cancelled, and tell a failure", () => {
    const state = newState();
    apply(state, ready(1));
    apply(state, { type: "reportFailed", report: 1, programmaticId: "x", error: "", cancelled: true, opened: true });
    expect(state.tabs[0]!.error).toBe("");
    apply(state, { type: "reportFailed", report: 1, programmaticId: "x", error: "没有权限", cancelled: false, opened: true });
    expect(state.tabs[0]!.error).toBe("没有权限");
    apply(state, { type: "reportFailed", report: 2, programmaticId: "y", error: "坏了", cancelled: false, opened: false });
    expect(state.failure).toEqual({ programmaticId: "y", text: "坏了" });
  });
  it("tell a crashed worker and its return", () => {
    const state = newState();
    apply(state, { type: "workerFailed", state: "hangs", text: "" });
    expect(state.worker).toBe("hangs");
    apply(state, { type: "workerFailed", state: "answers", text: "" });
    expect(state.worker).toBe("works");
  });
});

describe("the guide", () => {
  it("is read by chapters and escapes what is written", () => {
    const [chapter] = readChapters("# 说明\n\n## 查找\n\n按 `F7` **查找** <b>。\n\n- 甲\n- 乙\n\n![图](pictures/a.png)", (path) => `/${path}`);
    expect(chapter!.title).toBe("查找");
    expect(chapter!.html).toBe('<p>按 <kbd>F7</kbd> <strong>查找</strong> &lt;b&gt;。</p><ul><li>甲</li><li>乙</li></ul><p><img src="/pictures/a.png" alt="图"></p>');
  });
});
