// The over and short stock report from the list to paper, in a real browser against a real server.
import { execFileSync } from "node:child_process";
import { readFileSync } from "node:fs";
import { afterAll, afterEach, beforeAll, beforeEach, describe, expect, it } from "vitest";
import axe from "axe-core";
import { openBrowser, type OpenBrowser } from "./browser";
import { Server } from "./server";

const server = new Server();
let browser: OpenBrowser;
beforeAll(async () => {
  await server.start();
  browser = await openBrowser();
});
afterAll(async () => {
  await browser?.close();
  await server.stop();
});
beforeEach(() => void (browser.errors.length = 0));
afterEach(() => expect(browser.errors).toEqual([]));

const page = () => browser.page;
const named = (name: string) => page().locator(`[data-name="${name}"]:visible`);
const dialog = () => page().locator("[data-form=frmFirter10414]");
const cell = (row: number, field: string) => page().locator(`[data-field=${field}][data-row='${row}']:visible`);
const grid = () => page().locator("[data-report='10414']:visible");
const rowsShown = async () => Number(/([\d,]+) 行/.exec((await named("statusRows").textContent()) ?? "")?.[1]?.replaceAll(",", ""));

async function start(): Promise<void> {
  await page().goto(`${server.address}/icon.svg`);
  await page().evaluate(() => sessionStorage.clear());
  await page().goto(`${server.address}/`);
  await page().locator("[data-report-open='10414']").first().waitFor();
}
async function openDialog(): Promise<void> {
  await start();
  await page().locator("[data-report-open='10414']").last().click();
  await dialog().waitFor();
  await named("schemeReset").click();
  await page().locator("[data-name='txtItem(0)']:focus").waitFor();
}
async function openReport(): Promise<void> {
  await openDialog();
  await named("cmdOK").click();
  await grid().waitFor();
  await cell(0, "FItemNumber").filter({ hasText: /\d/ }).waitFor();
}
async function exported(entry: string) {
  await named("toolExport").click();
  const [download] = await Promise.all([page().waitForEvent("download"), named(entry).click()]);
  return download;
}
async function seriousFindings(): Promise<string[]> {
  await page().waitForTimeout(350);
  await page().evaluate(axe.source);
  const { violations } = await page().evaluate(() => (globalThis as unknown as { axe: typeof axe }).axe.run({ runOnly: ["wcag2a", "wcag2aa"] }));
  return violations.filter((one) => one.impact === "serious" || one.impact === "critical").map((one) => `${one.id}: ${one.nodes[0]?.html}`);
}

describe("finding the report", () => {
  it.each(["超储", "10414", "spcc"])("by %s, with Enter", async (typed) => {
    await start();
    await named("reportSearch").fill(typed);
    await named("reportSearch").press("Enter");
    await dialog().waitFor();
    await page().keyboard.press("Escape");
    await dialog().waitFor({ state: "detached" });
  });
  it("as a favourite", async () => {
    await start();
    await page().getByRole("button", { name: "加入收藏 商品超储短缺表" }).first().click();
    await page().getByRole("region", { name: "收藏" }).getByText("商品超储短缺表").waitFor();
    await page().getByRole("button", { name: "取消收藏 商品超储短缺表" }).first().click();
  });
});

describe("the filter dialog", () => {
  it("shows its fields, the first one with the focus, and no hidden sort key", async () => {
    await openDialog();
    await page().locator("[data-name='txtItem(0)']:focus").waitFor();
    const entries = await named("cboSort").locator("option").allTextContents();
    expect(entries).toEqual(["无", "最高库存", "最低库存", "结存数量", "超储短缺数量"]);
    expect(await dialog().getByText("物料类别代码").count()).toBe(0);
    expect(await seriousFindings()).toEqual([]);
  });
  it("goes from field to field with Enter and swallows a quote", async () => {
    await openDialog();
    await page().keyboard.type("01'");
    await page().keyboard.press("Enter");
    await page().locator("[data-name='txtItem(1)']:focus").waitFor();
    await page().keyboard.press("Enter");
    await page().locator("[data-name='txtItem(2)']:focus").waitFor();
    expect(await named("txtItem(0)").inputValue()).toBe("01");
  });
  it("is confirmed with Alt+O and cancelled with Alt+E", async () => {
    await openDialog();
    await page().keyboard.press("Alt+e");
    await dialog().waitFor({ state: "detached" });
    expect(await grid().count()).toBe(0);
    await openDialog();
    await page().keyboard.press("Alt+o");
    await grid().waitFor();
  });
  it("looks goods up with F7, by what is typed, and takes with Enter", async () => {
    await openReport();
    const number = (await cell(0, "FItemNumber").textContent())!;
    await named("toolFilter").click();
    await named("txtItem(0)").press("F7");
    const lookup = page().locator("[data-form=frmLookup]");
    await lookup.waitFor();
    await named("txtSearch").fill(number);
    await lookup.locator(".node.ticked").waitFor();
    expect(await seriousFindings()).toEqual([]);
    await named("txtSearch").press("Enter");
    await lookup.waitFor({ state: "detached" });
    await expect.poll(() => named("txtItem(0)").inputValue()).not.toBe("");
    await page().keyboard.press("Escape");
    await dialog().waitFor({ state: "detached" });
    expect(await grid().count()).toBe(1);
  });
  it("looks goods up by the initials of their pinyin", async () => {
    await openDialog();
    await named("txtItem(0)").press("F8");
    await named("txtSearch").pressSequentially("ywh");
    await page().locator("[data-form=frmLookup] .node").filter({ hasText: "原味" }).first().waitFor();
    await named("txtSearch").press("Enter");
    await expect.poll(() => named("txtItem(0)").inputValue()).not.toBe("");
  });
  it("a lookup is left with Esc, and the field keeps what it had", async () => {
    await openDialog();
    await named("txtItem(2)").fill("02");
    await named("cmdItem(2)").click();
    await page().locator("[data-form=frmLookup]").waitFor();
    await page().keyboard.press("Escape");
    await page().locator("[data-form=frmLookup]").waitFor({ state: "detached" });
    expect(await named("txtItem(2)").inputValue()).toBe("02");
  });
  it("saves, recalls, renames and deletes a scheme", async () => {
    await openDialog();
    await named("txtItem(0)").fill("01");
    await named("schemeSaveAs").click();
    await page().locator(".el-message-box input").fill("五金");
    await page().locator(".el-message-box input").press("Enter");
    await named("scheme").locator("option", { hasText: "五金" }).waitFor({ state: "attached" });
    await named("schemeReset").click();
    await expect.poll(() => named("txtItem(0)").inputValue()).toBe("");
    await named("scheme").selectOption("五金");
    await expect.poll(() => named("txtItem(0)").inputValue()).toBe("01");
    await named("schemeRename").click();
    await page().locator(".el-message-box input").fill("五金类");
    await page().locator(".el-message-box input").press("Enter");
    await named("scheme").locator("option", { hasText: "五金类" }).waitFor({ state: "attached" });
    await named("schemeDelete").click();
    await page().locator(".el-message-box").getByRole("button", { name: "确定" }).click();
    await expect.poll(() => named("scheme").locator("option", { hasText: "五金" }).count()).toBe(0);
  });
});

describe("the grid", () => {
  it("shows title lines and columns, and the address tells the report", async () => {
    await openReport();
    expect(await named("titleLine").allTextContents()).toEqual(["商品代码[全部]", "仓库代码[全部]"]);
    const heads = await page().locator(".grid-heading.leaf span").allTextContents();
    expect(heads.slice(0, 6)).toEqual(["商品代码", "商品名称", "规格型号", "单位", "最低库存", "最高库存"]);
    expect(new URL(page().url()).pathname).toBe("/r/10414");
    expect(await seriousFindings()).toEqual([]);
  });
  it("sorts by a heading up, down and back", async () => {
    await openReport();
    const quantity = async () => Number((await cell(0, "FQty").textContent())?.replaceAll(",", ""));
    const head = page().locator("[data-head-field=FQty] span");
    const first = await quantity();
    await head.click();
    await page().locator("[data-head-field=FQty][aria-sort=ascending]").waitFor();
    await cell(0, "FQty").filter({ hasText: /\d/ }).waitFor();
    const least = await quantity();
    await head.click();
    await page().locator("[data-head-field=FQty][aria-sort=descending]").waitFor();
    await cell(0, "FQty").filter({ hasText: /\d/ }).waitFor();
    await expect.poll(quantity).toBeGreaterThan(least);
    await head.click();
    await expect.poll(quantity).toBe(first);
  });
  it("filters quickly, finds, and says when nothing is left", async () => {
    await openReport();
    const all = await rowsShown();
    const number = (await cell(0, "FItemNumber").textContent())!;
    await named("quickFilter").fill(number);
    await expect.poll(rowsShown).toBeLessThan(all);
    await named("quickFilter").fill("没有这样的");
    await page().getByText("快速筛选没有留下任何行").waitFor();
    expect(await page().locator(".error:visible").count()).toBe(0);
    await page().getByRole("button", { name: "清除筛选" }).click();
    await expect.poll(rowsShown).toBe(all);
    await page().keyboard.press("Control+f");
    await named("findText").fill(number);
    await named("findText").press("Enter");
    await page().locator(".grid-cell.found").waitFor();
    await named("findText").fill("没有这样的");
    await named("findText").press("Enter");
    await named("findNone").waitFor();
  });
  it("sums what is selected and copies it", async () => {
    await openReport();
    await cell(0, "FQty").click();
    await page().keyboard.press("Shift+ArrowDown");
    await named("statusCount").filter({ hasText: "2" }).waitFor();
    const values = await Promise.all([0, 1].map(async (row) => Number((await cell(row, "FQty").textContent())!.replaceAll(",", ""))));
    const sum = Number((await named("statusSum").textContent())!.replaceAll(",", ""));
    expect(sum).toBeCloseTo(values[0]! + values[1]!, 1);
    await page().keyboard.press("Control+c");
    await page().getByText("已复制 2 个单元格").waitFor();
    expect(await page().evaluate(() => navigator.clipboard.readText())).toMatch(/^结存数量\r\n/);
  });
  it("hides a column, remembers it for the next opening, and forgets it again", async () => {
    await openReport();
    await named("toolColumns").click();
    await named("column.FModel").click();
    await named("columnsClose").click();
    await expect.poll(() => page().locator("[data-head-field=FModel]").count()).toBe(0);
    await openReport();
    await expect.poll(() => page().locator("[data-head-field=FModel]").count()).toBe(0);
    await named("toolColumns").click();
    await named("columnsReset").click();
    await named("columnsClose").click();
    await page().locator("[data-head-field=FModel]").waitFor();
  });
  it("explains a cell", async () => {
    await openReport();
    await cell(0, "FQty").click();
    await named("toolExplain").click();
    const said = page().locator("[data-form=explain]");
    await said.waitFor();
    expect(await said.textContent()).toContain("结存数量");
    await page().keyboard.press("Escape");
  });
});

describe("addresses", () => {
  it("set the filter and run, and the back button leads back", async () => {
    await openReport();
    const all = await rowsShown();
    const number = (await cell(0, "FItemNumber").textContent())!;
    await page().goto(`${server.address}/r/10414?BItemNumber=${number}&EItemNumber=${number}`);
    await grid().waitFor();
    await expect.poll(rowsShown).toBeLessThan(all);
    expect(await named("titleLine").first().textContent()).toBe(`商品代码从[${number}]到[${number}]`);
    await page().goBack();
    await expect.poll(() => new URL(page().url()).search).not.toContain(number);
  });
  it("of no report say so", async () => {
    await page().goto(`${server.address}/r/99999`);
    await page().getByText("没有编号为 99999 的报表").waitFor();
  });
});

describe("on paper and in files", () => {
  it("exports what is seen as CSV", async () => {
    await openReport();
    const count = await rowsShown();
    const download = await exported("toolCsv");
    expect(download.suggestedFilename()).toBe("商品超储短缺表.csv");
    const text = readFileSync(await download.path(), "utf8");
    expect(text.startsWith("\uFEFF商品代码,商品名称,")).toBe(true);
    expect(text.trimEnd().split("\r\n")).toHaveLength(count + 1);
  });
  it("exports what is seen as a workbook: columns and rows as they are arranged", async () => {
    await openReport();
    const count = await rowsShown();
    await named("toolColumns").click();
    await named("column.FModel").click();
    await named("columnsClose").click();
    await expect.poll(() => page().locator("[data-head-field=FModel]").count()).toBe(0);
    const head = page().locator("[data-head-field=FItemNumber] span");
    await head.click();
    await head.click();
    await page().locator("[data-head-field=FItemNumber][aria-sort=descending]").waitFor();
    await cell(0, "FItemNumber").filter({ hasText: /\d/ }).waitFor();
    const first = (await cell(0, "FItemNumber").textContent())!;
    const heads = await page().locator(".grid-heading.leaf span").allTextContents();
    const download = await exported("toolXlsx");
    expect(download.suggestedFilename()).toBe("商品超储短缺表.xlsx");
    const file = await download.path();
    expect(readFileSync(file).subarray(0, 4).toString("latin1")).toBe("PK\x03\x04");
    const sheet = execFileSync("python3", ["-c", "import sys, zipfile; sys.stdout.buffer.write(zipfile.ZipFile(sys.argv[1]).read('xl/worksheets/sheet1.xml'))", file], { encoding: "utf8", maxBuffer: 1 << 26 });
    const lines = [...sheet.matchAll(/<row [^>]*>(.*?)<\/row>/gs)].map(([, line]) => [...line!.matchAll(/<c [^>]*?(?:\/>|>(.*?)<\/c>)/gs)].map(([, value]) => (value ?? "").replace(/<[^>]*>/g, "")));
    expect(lines.map((line) => line[0]).slice(0, 3)).toEqual(["商品超储短缺表", "商品代码[全部]", "仓库代码[全部]"]);
    expect(lines[3]).toEqual(heads);
    expect(lines[3]).not.toContain("规格型号");
    expect(lines).toHaveLength(4 + count);
    expect(lines[4]![0]).toBe(first);
    await named("toolColumns").click();
    await named("columnsReset").click();
    await named("columnsClose").click();
  });
  it("exports pages as PDF", async () => {
    await openReport();
    const download = await exported("toolPdf");
    expect(download.suggestedFilename()).toBe("商品超储短缺表.pdf");
    const bytes = readFileSync(await download.path()).toString("latin1");
    expect(bytes.startsWith("%PDF-")).toBe(true);
    expect(bytes.match(/\/Type \/Page\b/g)!.length).toBeGreaterThan(0);
  });
  it("remembers the paper for PDF", async () => {
    await openReport();
    await named("toolExport").click();
    await named("pdfPaper").selectOption("A3");
    await named("pdfOrientation").selectOption("portrait");
    await page().keyboard.press("Escape");
    await page().reload();
    await grid().waitFor();
    await named("toolExport").click();
    expect(await named("pdfPaper").inputValue()).toBe("A3");
    const [download] = await Promise.all([page().waitForEvent("download"), named("toolPdf").click()]);
    expect(readFileSync(await download.path()).toString("latin1")).toContain("/MediaBox [ 0 0 841.889764 1190.551181 ]");
    await named("toolExport").click();
    await named("pdfPaper").selectOption("A4");
    await named("pdfOrientation").selectOption("auto");
    await page().keyboard.press("Escape");
  });
  it("writes a file while its report is closed", async () => {
    await openReport();
    await named("toolExport").click();
    const waiting = page().waitForEvent("download");
    await named("toolPdf").click();
    await page().locator("[role=tablist] [role=tab][aria-selected=true]").press("Delete");
    await grid().waitFor({ state: "detached" });
    expect((await waiting).suggestedFilename()).toBe("商品超储短缺表.pdf");
    await named("exporting").waitFor({ state: "detached" });
  });
  it("the menu of formats works by keys alone", async () => {
    await openReport();
    await named("toolExport").press("ArrowDown");
    await page().locator("[data-name=toolCsv]:focus").waitFor();
    await page().keyboard.press("ArrowDown");
    await page().locator("[data-name=toolXlsx]:focus").waitFor();
    expect(await seriousFindings()).toEqual([]);
    await page().keyboard.press("Escape");
    await page().locator("[data-name=toolExport]:focus").waitFor();
    expect(await named("toolCsv").count()).toBe(0);
  });
  it("shows sheets with repeated headings and page numbers", async () => {
    await openReport();
    await page().keyboard.press("Control+p");
    const sheets = page().locator(".sheet");
    await sheets.first().waitFor();
    expect(await sheets.first().locator("th").first().textContent()).toBe("商品代码");
    await sheets.first().getByText(/第 1 页/).waitFor();
    await named("paper").selectOption("A4 纵向");
    await expect.poll(() => sheets.count()).toBeGreaterThan(0);
    await named("printClose").click();
  });
});

describe("a session", () => {
  it("finds its report again after the page is loaded anew", async () => {
    await openReport();
    const count = await rowsShown();
    await page().reload();
    await grid().waitFor();
    expect(await rowsShown()).toBe(count);
  });
  it("comes back with its open dialog after the line was lost", async () => {
    await openDialog();
    await named("txtItem(0)").fill("01");
    await named("txtItem(0)").press("Tab");
    await browser.context.setOffline(true);
    await page().reload().catch(() => {});
    await browser.context.setOffline(false);
    await page().goto(`${server.address}/`);
    await dialog().waitFor();
    expect(await named("txtItem(0)").inputValue()).toBe("01");
  });
  it("whose worker is killed says so and starts again, and another one notices nothing", async () => {
    await openReport();
    const before = new Set(server.workers());
    const other = await openBrowser();
    try {
      await other.page.goto(`${server.address}/`);
      await other.page.locator("[data-report-open='10414']").first().waitFor();
      for (const worker of server.workers().filter((pid) => before.has(pid))) process.kill(worker, "SIGKILL");
      await page().getByText("报表程序意外中止").waitFor();
      await named("restart").click();
      await page().locator("[data-form=lineNotice]").waitFor({ state: "detached" });
      await page().locator("[data-report-open='10414']").last().click();
      await dialog().waitFor();
      await other.page.locator("[data-report-open='10414']").last().click();
      await other.page.locator("[data-form=frmFirter10414]").waitFor();
      expect(other.errors).toEqual([]);
    } finally {
      await other.close();
    }
  });
});
