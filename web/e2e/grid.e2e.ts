// The grid under a clerk's hands: folding groups of columns, and a report with a band for each of many warehouses.
import axe from "axe-core";
import { afterAll, afterEach, beforeAll, beforeEach, describe, expect, it } from "vitest";
import { openBrowser, type OpenBrowser } from "./browser";
import { kOrigin, ScriptedSession, type Script } from "./scripted";

let browser: OpenBrowser;
beforeAll(async () => void (browser = await openBrowser()));
afterAll(() => browser.close());
beforeEach(() => void (browser.errors.length = 0));
afterEach(async () => {
  expect(browser.errors).toEqual([]);
  await browser.page.unrouteAll();
  await browser.page.goto("about:blank");
});

const page = () => browser.page;
const cell = (row: number, field: string) => page().locator(`[data-field=${field}][data-row='${row}']`);
const heads = () => page().locator(".grid-heading.leaf span").allTextContents();
const fold = (group: string) => page().locator(`[data-group=${group}]`);
const named = (name: string) => page().locator(`[data-name=${name}]`);

async function openScripted(script: Script): Promise<ScriptedSession> {
  const session = new ScriptedSession(script);
  await session.serve(page());
  await show();
  return session;
}
async function show(): Promise<void> {
  await page().goto(`${kOrigin}/`);
  await page().locator("[data-report-open='10412']").first().click();
  await cell(0, "FItemNumber").filter({ hasText: "01.0000000" }).waitFor();
}
async function seriousFindings(): Promise<string[]> {
  await page().waitForTimeout(350);
  await page().evaluate(axe.source);
  const { violations } = await page().evaluate(() => (globalThis as unknown as { axe: typeof axe }).axe.run({ runOnly: ["wcag2a", "wcag2aa"] }));
  return violations.filter((one) => one.impact === "serious" || one.impact === "critical").map((one) => `${one.id}: ${one.nodes[0]?.html}`);
}

describe("a group of columns", () => {
  it("folds to its amount and opens again, by its button", async () => {
    await openScripted({ rows: 200, columns: 9, frozen: 3 });
    expect(await heads()).toEqual(["商品代码", "商品名称", "规格型号", "数量", "单价", "金额", "数量", "单价", "金额"]);
    await fold("F0").click();
    await expect.poll(heads).toEqual(["商品代码", "商品名称", "规格型号", "金额", "数量", "单价", "金额"]);
    expect(await fold("F0").getAttribute("aria-expanded")).toBe("false");
    expect(await page().locator(".grid:focus").count()).toBe(1);
    expect(await seriousFindings()).toEqual([]);
    await fold("F0").click();
    await expect.poll(heads).toHaveLength(9);
    expect(await fold("F0").getAttribute("aria-expanded")).toBe("true");
  });

  it("folds by keys, and the current cell stays with what is left", async () => {
    await openScripted({ rows: 200, columns: 9, frozen: 3 });
    await cell(2, "F4").click();
    await page().keyboard.press("-");
    await page().locator(".grid-cell.current[data-field=F5][data-row='2']").waitFor();
    expect(await cell(2, "F4").count()).toBe(0);
    await page().keyboard.press("+");
    await cell(2, "F4").waitFor();
    await page().locator(".grid-cell.current[data-field=F5][data-row='2']").waitFor();
  });

  it("is remembered with the other arrangements of its reader, and forgotten with them", async () => {
    await openScripted({ rows: 200, columns: 9, frozen: 3 });
    await named("toolColumns").click();
    await named("foldAll").click();
    expect(await page().locator(".columns").getByText("（已收起）").count()).toBe(4);
    await named("columnsClose").click();
    await show();
    await expect.poll(heads).toEqual(["商品代码", "商品名称", "规格型号", "金额", "金额"]);
    await named("toolColumns").click();
    await named("columnsReset").click();
    await named("columnsClose").click();
    await expect.poll(heads).toHaveLength(9);
    await show();
    await expect.poll(heads).toHaveLength(9);
  });

  it("opens for who asks for one of its columns", async () => {
    await openScripted({ rows: 200, columns: 6, frozen: 3 });
    await named("toolColumns").click();
    await page().locator("[data-name='column.F1']").uncheck();
    await named("foldAll").click();
    await page().locator("[data-name='column.F1']").check();
    await named("columnsClose").click();
    await expect.poll(heads).toEqual(["商品代码", "商品名称", "规格型号", "数量", "单价", "金额"]);
  });

  it("is copied and exported as it is seen", async () => {
    const session = await openScripted({ rows: 20, columns: 9, frozen: 3 });
    await fold("F3").click();
    await cell(0, "F0").click();
    await cell(1, "F5").click({ modifiers: ["Shift"] });
    await page().keyboard.press("Control+c");
    await page().getByText("已复制 8 个单元格").waitFor();
    expect((await page().evaluate(() => navigator.clipboard.readText())).split("\r\n")[0]).toBe("期初结存 数量\t期初结存 单价\t期初结存 金额\t采购入库 金额");
    await named("toolExport").click();
    await Promise.all([page().waitForEvent("download"), named("toolXlsx").click()]);
    expect(session.said.find((command) => command.type === "exportReport")).toMatchObject({ fields: ["FItemNumber", "FItemName", "FModel", "F0", "F1", "F2", "F5"] });
    await page().keyboard.press("Control+p");
    const printed = await page().locator(".sheet").first().locator("thead th").allTextContents();
    expect(printed.map((text) => text.trim()).filter((text) => text === "单价")).toHaveLength(1);
  });

  it("never shows a forbidden column by being opened", async () => {
    const session = new ScriptedSession({ rows: 20, columns: 9, frozen: 3 });
    session.columns[5]!.forceHide = true;
    await session.serve(page());
    await show();
    await fold("F0").click();
    await expect.poll(heads).toEqual(["商品代码", "商品名称", "规格型号", "数量", "数量", "单价", "金额"]);
    await fold("F0").click();
    await expect.poll(heads).toEqual(["商品代码", "商品名称", "规格型号", "数量", "单价", "数量", "单价", "金额"]);
    await named("toolColumns").click();
    expect(await page().locator("[data-name='column.F2']").count()).toBe(0);
    expect(session.said.flatMap((command) => (command.type === "fetchRows" ? command.fields : []))).not.toContain("F2");
  });
});
