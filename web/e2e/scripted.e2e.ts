// The page against scripted sessions: sizes that no demo book has, and states that come by accident.
import { readFileSync } from "node:fs";
import axe from "axe-core";
import { afterAll, afterEach, beforeAll, beforeEach, describe, expect, it } from "vitest";
import { openBrowser, type OpenBrowser } from "./browser";
import type { Control } from "../src/protocol";
import { kFile, kOrigin, scriptedCell, ScriptedSession, type Script } from "./scripted";

let browser: OpenBrowser;
beforeAll(async () => void (browser = await openBrowser()));
afterAll(() => browser.close());
beforeEach(() => void (browser.errors.length = 0));
afterEach(async () => {
  expect(browser.errors).toEqual([]);
  await browser.page.unrouteAll();
  await browser.page.goto("about:blank");
});

async function open(script: Script): Promise<ScriptedSession> {
  const session = new ScriptedSession(script);
  await session.serve(browser.page);
  await browser.page.goto(`${kOrigin}/`);
  await browser.page.locator("[data-report-open='10412']").first().click();
  await browser.page.locator("[data-field=FItemNumber][data-row='0']").filter({ hasText: "01.0000000" }).waitFor();
  return session;
}
const cell = (row: number, field: string) => browser.page.locator(`[data-field=${field}][data-row='${row}']`);

async function seriousFindings(): Promise<string[]> {
  await browser.page.waitForTimeout(350); // windows fade in
  await browser.page.evaluate(axe.source);
  const { violations } = await browser.page.evaluate(() => (globalThis as unknown as { axe: typeof axe }).axe.run({ runOnly: ["wcag2a", "wcag2aa"] }));
  return violations.filter((one) => one.impact === "serious" || one.impact === "critical").map((one) => `${one.id}: ${one.nodes[0]?.html}`);
}

describe("a report of 100,000 rows and 300 columns", () => {
  it("opens and reaches its last cell by keys", async () => {
    await open({ rows: 100_000, columns: 300, frozen: 3 });
    await cell(0, "F0").click();
    await browser.page.keyboard.press("Control+End");
    await cell(99_999, "F296").filter({ hasText: /\d/ }).waitFor();
    expect(await browser.page.locator(".grid-row:visible .grid-cell").count()).toBeLessThan(1000);
  });

  it("shows the right values wherever it is scrolled to", async () => {
    await open({ rows: 100_000, columns: 300, frozen: 3 });
    for (const { top, left } of [{ top: 190_000, left: 1500 }, { top: 1_400_000, left: 9000 }, { top: 60_000, left: 20_000 }, { top: 2_500_000, left: 0 }]) {
      await browser.page.locator(".grid").evaluate((grid, to) => grid.scrollTo(to.left, to.top), { top, left });
      const row = Math.floor(top / 26) + 5; // a few lines below the upper edge, whatever the heading covers
      await cell(row, "FItemNumber").filter({ hasText: String(scriptedCell(row, 0)) }).waitFor();
      await expect.poll(() => browser.page.locator(".grid[aria-busy], .grid-row:visible .grid-cell.waiting").count()).toBe(0);
      let compared = 0;
      // Read in one go: the cells change their order on the page when the grid comes to rest.
      const line = browser.page.locator(`.grid-row[data-row='${row}'] .grid-cell[data-field]`);
      for (const { field, text } of await line.evaluateAll((cells) => cells.map((one) => ({ field: (one as HTMLElement).dataset["field"]!, text: one.textContent! })))) {
        const column = Number(field.slice(1)) + 3;
        if (Number.isNaN(column)) continue;
        const shown = Number(text.replaceAll(",", ""));
        expect(shown).toBeCloseTo(Number(scriptedCell(row, column)), 1);
        compared += 1;
      }
      expect(compared).toBeGreaterThan(3);
    }
  });

  it("goes to paper as a file, without a preview", async () => {
    const session = await open({ rows: 100_000, columns: 12, frozen: 3 });
    const [download] = await Promise.all([browser.page.waitForEvent("download"), browser.page.keyboard.press("Control+p")]);
    expect(download.suggestedFilename()).toBe("商品收发汇总表.pdf");
    expect(readFileSync(await download.path(), "utf8")).toBe(kFile);
    expect(await browser.page.locator("[data-form=print]").count()).toBe(0);
    expect(session.said.find((command) => command.type === "exportReport")).toMatchObject({ format: "pdf", report: 1 });
  });

  it("keeps frozen columns, marks summary rows and negative values", async () => {
    await open({ rows: 1000, columns: 60, frozen: 3 });
    await browser.page.locator(".grid").evaluate((grid) => (grid.scrollLeft = 3000));
    await cell(3, "F30").waitFor();
    expect(await cell(3, "FItemName").isVisible()).toBe(true);
    await browser.page.locator(".grid").evaluate((grid) => (grid.scrollTop = 40 * 26));
    await browser.page.locator(".grid-row.summary [data-field=FItemName][data-row='49']").waitFor();
    const negative = Array.from({ length: 10 }, (_, at) => at + 50).flatMap((row) => [30, 31, 32].map((at) => ({ row, at }))).find(({ row, at }) => Number(scriptedCell(row, at + 3)) < 0);
    if (negative) expect(await cell(negative.row, `F${negative.at}`).getAttribute("class")).toContain("negative");
  });
});

describe("a report of a million rows", () => {
  it("scrolls to its end", async () => {
    await open({ rows: 1_000_000, columns: 120, frozen: 2 });
    await browser.page.locator(".grid").evaluate((grid) => (grid.scrollTop = grid.scrollHeight));
    await cell(999_999, "FItemNumber").filter({ hasText: "01.0999999" }).waitFor();
    await cell(999_999, "FItemNumber").click();
    await browser.page.keyboard.press("ArrowUp");
    await browser.page.locator(".grid-cell.current[data-row='999998']").waitFor();
  });
});

describe("selecting and copying", () => {
  it("copies a range as text with headings", async () => {
    await open({ rows: 1000, columns: 12, frozen: 1 });
    await cell(1, "F0").click();
    await cell(2, "F2").click({ modifiers: ["Shift"] });
    await browser.page.locator("[data-name=statusSum]").waitFor();
    await browser.page.keyboard.press("Control+c");
    await browser.page.getByText("已复制 6 个单元格").waitFor();
    const text = await browser.page.evaluate(() => navigator.clipboard.readText());
    const line = (row: number) => [3, 4, 5].map((column) => scriptedCell(row, column)).join("\t");
    expect(text).toBe(`期初结存 数量\t期初结存 单价\t期初结存 金额\r\n${line(1)}\r\n${line(2)}`);
  });
  it("selects whole rows by their number", async () => {
    await open({ rows: 1000, columns: 12, frozen: 1 });
    await browser.page.locator(".grid-row[data-row='4'] .grid-number").click();
    expect(await browser.page.locator(".grid-row[data-row='4'] .grid-cell.selected").count()).toBeGreaterThan(5);
  });
});

describe("an export", () => {
  it("shows how far it is and can be cancelled", async () => {
    const session = await open({ rows: 10, columns: 6, frozen: 1 });
    session.onCommand = (command) => command.type === "exportReport";
    await browser.page.locator("[data-name=toolExport]").click();
    await browser.page.locator("[data-name=toolXlsx]").click();
    session.tell({ type: "exportProgress", report: 1, done: 5, all: 10 });
    const box = browser.page.locator("[data-name=exporting]");
    await box.getByText("45%").waitFor();
    expect(await seriousFindings()).toEqual([]);
    await browser.page.locator("[data-name=exportCancel]").click();
    await box.waitFor({ state: "detached" });
    await expect.poll(() => session.said.at(-1)).toMatchObject({ type: "cancelExport" });
  });
});

describe("what happens to a session", () => {
  it("a crashed worker is told and can be started again", async () => {
    const session = await open({ rows: 10, columns: 6, frozen: 1 });
    session.tell({ type: "workerFailed", state: "crashed", text: "" });
    await browser.page.getByText("报表程序意外中止").waitFor();
    expect(await seriousFindings()).toEqual([]);
    await browser.page.locator("[data-name=restart]").click();
    await browser.page.locator("[data-form=lineNotice]").waitFor({ state: "detached" });
    expect(await browser.page.locator("[role=tab]").count()).toBe(0);
  });
  it("a lost line comes back by itself", async () => {
    const session = await open({ rows: 10, columns: 6, frozen: 1 });
    await session.line!.close();
    await browser.page.getByText("正在重新连接").waitFor();
    await browser.page.locator("[data-form=lineNotice]").waitFor({ state: "detached" });
    expect(session.said.filter((command) => command.type === "hello").at(-1)).toMatchObject({ session: "s" });
  });
  it("a message box answers with its default on Enter", async () => {
    const session = await open({ rows: 10, columns: 6, frozen: 1 });
    session.tell({ type: "messageShown", message: 5, text: "要继续吗？", title: "信息提示", icon: "question", buttons: "yesno", standard: "no" });
    await browser.page.locator("[data-answer=no]:focus").waitFor();
    expect(await seriousFindings()).toEqual([]);
    await browser.page.keyboard.press("Enter");
    await expect.poll(() => session.said.at(-1)).toMatchObject({ type: "answer", message: 5, answer: "no" });
  });
  it("a progress box shows its words and offers no button, not even Esc", async () => {
    const session = await open({ rows: 10, columns: 6, frozen: 1 });
    session.tell({ type: "progressShown", progress: 2, text: "正在连接服务器", min: 0, max: 4, value: 1, bar: true });
    const box = browser.page.locator("[data-form=frmProgBar]");
    await box.getByText("正在连接服务器").waitFor();
    expect(await seriousFindings()).toEqual([]);
    expect(await box.locator("button").count()).toBe(0);
    await browser.page.keyboard.press("Escape");
    session.tell({ type: "progressChanged", progress: 2, text: "正在读取", min: 0, max: 4, value: 4, bar: true });
    await box.getByText("100%").waitFor();
    session.tell({ type: "progressClosed", progress: 2 });
    await box.waitFor({ state: "detached" });
  });
  it("a date without a full year is not sent, and not confirmed over", async () => {
    const session = await open({ rows: 10, columns: 6, frozen: 1 });
    const date: Control = {
      control: "DtpDate(0)", name: "DtpDate", index: 0, kind: "date", caption: "", tag: "BDate", value: "2026-11-01", enabled: true, visible: true, tabIndex: 0, takesFocus: true, frame: "", row: 1, column: 0, columns: 1,
    };
    const filter = { name: "TOVRptFilter", kind: "ReportFilter" as const, buttons: true, title: "", quick: "", dateFrame: "", itemFrame: "", schemes: [], current: "", standard: "" };
    session.tell({ type: "formOpened", form: 9, name: "frmFirter10412", caption: "过滤", report: 1, focus: "DtpDate(0)", controls: [date], filter });
    const field = browser.page.locator("[data-name='DtpDate(0)']");
    await field.fill("0423");
    await browser.page.keyboard.press("Alt+o");
    await browser.page.getByText("日期不对").waitFor();
    expect(session.said.filter((command) => command.type === "setValue" || command.type === "filterAction")).toEqual([]);
    await field.fill("20261105");
    await browser.page.keyboard.press("Alt+o");
    await expect.poll(() => session.said.filter((command) => command.type === "setValue" || command.type === "filterAction")).toMatchObject([{ control: "DtpDate(0)", value: "2026-11-05" }, { action: "ok" }]);
  });
  it("a report that this version has not got says so on the start page, and keeps saying it", async () => {
    const session = new ScriptedSession({ rows: 10, columns: 6, frozen: 1 });
    session.onCommand = (command) => {
      if (command.type !== "openReport") return false;
      session.tell({ type: "error", re: command.id!, code: "failed", text: "本版本还没有“商品收发汇总表”，请选择其他报表。" });
      return true;
    };
    await session.serve(browser.page);
    await browser.page.goto(`${kOrigin}/r/10412?BItemNumber=01`);
    const card = browser.page.locator("[data-name=failure]");
    await card.getByText("本版本还没有“商品收发汇总表”，请选择其他报表。").waitFor();
    await card.getByText("商品收发汇总表 报表没有打开").waitFor();
    expect(await seriousFindings()).toEqual([]);
  });
  it("an empty report says so", async () => {
    const session = new ScriptedSession({ rows: 0, columns: 6, frozen: 1 });
    await session.serve(browser.page);
    await browser.page.goto(`${kOrigin}/`);
    await browser.page.locator("[data-report-open='10412']").first().click();
    await browser.page.getByText("没有符合条件的数据").waitFor();
  });
});

describe("everybody can use it", () => {
  it.each(["light", "dark"] as const)("without serious findings in the %s look", async (theme) => {
    await browser.page.emulateMedia({ colorScheme: theme });
    const session = new ScriptedSession({ rows: 100, columns: 12, frozen: 1 });
    await session.serve(browser.page);
    await browser.page.goto(`${kOrigin}/`);
    await browser.page.locator("[data-name=hint]").waitFor();
    expect(await seriousFindings()).toEqual([]);
    await browser.page.locator("[data-report-open='10412']").first().click();
    await cell(0, "F0").filter({ hasText: /\d/ }).waitFor();
    expect(await seriousFindings()).toEqual([]);
    await browser.page.keyboard.press("F1");
    await browser.page.locator("[data-form=guide]").waitFor();
    expect(await seriousFindings()).toEqual([]);
    await browser.page.keyboard.press("F1");
    await browser.page.locator("[data-name=toolPrint]").click();
    await browser.page.locator(".sheet").first().waitFor();
    expect(await seriousFindings()).toEqual([]);
    await browser.page.emulateMedia({ colorScheme: null });
  });
});
