// The stock ledger: from item to item, what is asked for wrongly, and the pages of all items.
import { execFileSync } from "node:child_process";
import { readFileSync } from "node:fs";
import axe from "axe-core";
import { afterAll, beforeAll, beforeEach, describe, expect, it } from "vitest";
import { openBrowser, type OpenBrowser } from "./browser";
import { run, Server } from "./server";

const server = new Server("--items", "60", "--months", "6");
const kPassword = "Kucun-2026-demo";
const kQuestion = "所选物料数超过 50 ,所选期间数超过 2 ,取数时间较长,确认继续操作吗?";
let clerk: OpenBrowser;
let today = ""; // the first of this month
let halfYear = ""; // with the five months before it

beforeAll(async () => {
  run(["user", "add", server.book, "总管"], `${kPassword}\n`);
  run(["user", "add", server.book, "新人", "--restricted"], `${kPassword}\n`);
  run(["user", "grant", server.book, "新人", "item"]);
  await server.start();
  clerk = await openBrowser();
  await signIn(clerk, "总管");
  const now = new Date();
  const then = new Date(now.getFullYear(), now.getMonth() - 5, 1);
  halfYear = `${then.getFullYear()}-${String(then.getMonth() + 1).padStart(2, "0")}-01`;
  today = `${now.getFullYear()}-${String(now.getMonth() + 1).padStart(2, "0")}-01`;
});
afterAll(async () => {
  await clerk?.close();
  await server.stop();
});
beforeEach(() => void (clerk.errors.length = 0));

async function signIn({ page }: OpenBrowser, name: string): Promise<void> {
  await page.goto(`${server.address}/`);
  await page.locator("[data-name=userName]").fill(name);
  await page.locator("[data-name=password]").fill(kPassword);
  await page.locator("[data-name=signIn]").click();
  await page.locator("[data-name=reportSearch]").waitFor();
}
const named = (name: string) => clerk.page.locator(`[data-name='${name}']:visible`);
const place = (position: number, count = 60) => named("ledger.place").filter({ hasText: `第 ${position} / ${count} 个商品` }).waitFor();
const numberShown = async () => /(\d[\d.]+) /.exec((await named("ledger.place").locator("strong").textContent())!)![1]!;
const sheet = (number: number) => clerk.page.locator(`[data-form=ledgerPages] [data-sheet='${number}']`);

async function closeTabs(): Promise<void> {
  const closers = clerk.page.locator("[data-close-tab]");
  for (let left = await closers.count(); left > 0; left = await closers.count()) {
    await closers.first().click();
    await expect.poll(() => closers.count()).toBe(left - 1);
  }
}
async function open(query: string): Promise<void> {
  await closeTabs();
  await clerk.page.goto(`${server.address}/r/10402${query || `?BDate=${today}&EDate=${today}`}`);
  await named("ledger.place").waitFor();
}
async function seriousFindings(): Promise<string[]> {
  await clerk.page.waitForTimeout(350); // windows fade in
  await clerk.page.evaluate(axe.source);
  const { violations } = await clerk.page.evaluate(() => (globalThis as unknown as { axe: typeof axe }).axe.run({ runOnly: ["wcag2a", "wcag2aa"] }));
  return violations.filter((one) => one.impact === "serious" || one.impact === "critical").map((one) => `${one.id}: ${one.nodes[0]?.html}`);
}
async function openPages(): Promise<void> {
  await named("ledger.all").click();
  await clerk.page.getByText(kQuestion).waitFor();
  await clerk.page.locator("[data-answer=ok]:focus").waitFor();
  await clerk.page.keyboard.press("Enter");
  await sheet(0).locator("tbody tr").first().waitFor();
}

describe("the walk over the items", () => {
  it("goes by buttons, which rest at the ends, and the title follows", async () => {
    await open("");
    await place(1);
    expect(await named("ledger.first").isDisabled()).toBe(true);
    expect(await named("ledger.previous").isDisabled()).toBe(true);
    const first = await numberShown();
    await named("ledger.next").click();
    await place(2);
    const second = await numberShown();
    expect(second).not.toBe(first);
    await named("titleLine").filter({ hasText: `(${second})` }).waitFor();
    await clerk.page.locator("[data-name='ledger.next']:focus").waitFor(); // so that it can be pressed again
    await clerk.page.keyboard.press("Enter");
    await place(3);
    await named("ledger.last").click();
    await place(60);
    expect(await named("ledger.next").isDisabled()).toBe(true);
    expect(await named("ledger.last").isDisabled()).toBe(true);
    await named("ledger.previous").click();
    await place(59);
    await named("ledger.first").click();
    await place(1);
    expect(clerk.errors).toEqual([]);
  });

  it("goes by keys, wherever the focus is in the report", async () => {
    await clerk.page.locator(".grid:visible").focus();
    for (const [key, position] of [["Control+PageDown", 2], ["Control+End", 60], ["Control+PageDown", 60], ["Control+PageUp", 59], ["Control+Home", 1], ["Alt+PageDown", 2], ["Alt+PageUp", 1]] as const) {
      await clerk.page.keyboard.press(key);
      await place(position);
    }
    await named("quickFilter").focus();
    await clerk.page.keyboard.press("Control+End");
    await place(60);
    await named("reportSearch").focus(); // not in the report
    await clerk.page.keyboard.press("Control+Home");
    await clerk.page.waitForTimeout(300);
    await place(60);
  });

  it("finds an item by its number, and says the report's words when there is none", async () => {
    await clerk.page.locator(".grid:visible").focus();
    await clerk.page.keyboard.press("Control+Home");
    await place(1);
    await clerk.page.keyboard.press("F3");
    await clerk.page.locator("[data-name='ledger.number']:focus").waitFor();
    await clerk.page.keyboard.type("99.99");
    await clerk.page.keyboard.press("Enter");
    await named("ledger.missed").filter({ hasText: "在当前物料范围内未找到代码为 [99.99]的物料!" }).waitFor();
    await place(1);
    await clerk.page.locator("[data-name='ledger.number']:focus").waitFor();
    expect(await seriousFindings()).toEqual([]);
    await clerk.page.keyboard.press("Control+PageDown");
    await place(2);
    const wanted = await numberShown();
    await clerk.page.keyboard.press("Control+End");
    await place(60);
    await named("ledger.number").fill(wanted);
    await named("ledger.find").click();
    await place(2);
    expect(await named("ledger.missed").count()).toBe(0);
  });
});

describe("what is wrongly asked for", () => {
  it("an end before the start shows the one period, and the dates as they were given", async () => {
    const year = Number(today.slice(0, 4));
    await open(`?BDate=${year}-${today.slice(5, 7)}-20&EDate=${year}-01-05`);
    await place(1);
    await named("titleLine").filter({ hasText: `截止日期：${year}-01-05` }).waitFor();
    const periods = await clerk.page.locator("[data-report='10402']:visible [data-field=FPeriodName][data-row]").allTextContents();
    expect(new Set(periods)).toEqual(new Set([`${year}.${Number(today.slice(5, 7))}`]));
  });
  it("dates before the book began show empty periods", async () => {
    await open("?BDate=1999-01-01&EDate=1999-02-01");
    await place(1);
    await named("statusRows").filter({ hasText: "共 4 行" }).waitFor();
    await open("?BDate=1999-01-01&EDate=1999-02-01&ShowNoHappen=1");
    await named("empty").getByText("没有符合条件的数据").waitFor();
  });
  it("items that do not exist give an empty page, and no pages", async () => {
    await open("?BItemNumber=zz");
    await named("ledger.place").filter({ hasText: "没有符合条件的商品" }).waitFor();
    for (const to of ["first", "previous", "next", "last"]) expect(await named(`ledger.${to}`).isDisabled()).toBe(true);
    await named("empty").waitFor();
    await named("ledger.all").click();
    await named("ledger.missed").filter({ hasText: "没有符合条件的物料。" }).waitFor();
    await named("ledger.number").fill("01");
    await clerk.page.keyboard.press("Enter");
    await named("ledger.missed").filter({ hasText: "在当前物料范围内未找到代码为 [01]的物料!" }).waitFor();
  });
  it("a window that closes leaves the focus with who types already", async () => {
    await open("?BItemNumber=zz");
    await clerk.page.evaluate(() => {
      const observer = new MutationObserver(() => {
        if (!document.querySelector("[data-name='ledger.missed']")) return;
        observer.disconnect();
        document.querySelector<HTMLElement>("[data-name='ledger.number']")!.focus();
      });
      observer.observe(document.body, { childList: true, subtree: true });
    });
    await named("ledger.all").click();
    await named("ledger.missed").waitFor();
    await clerk.page.waitForTimeout(300);
    expect(await clerk.page.evaluate(() => (document.activeElement as HTMLElement).dataset["name"])).toBe("ledger.number");
  });
  it("an address that no field takes is told, whatever else is open", async () => {
    await clerk.page.goto(`${server.address}/r/10402?NoSuchKey=1`);
    await named("failure").getByText("没有这个过滤条件：NoSuchKey").waitFor();
  });
  it("a clerk without a right to any warehouse sees no movement", async () => {
    const other = await openBrowser();
    try {
      await signIn(other, "新人");
      await other.page.goto(`${server.address}/r/10402?BDate=${today}&EDate=${today}`);
      const shown = other.page.locator("[data-name='ledger.place'], [data-name=failure]").first();
      await shown.waitFor();
      const kinds = await other.page.locator("[data-report='10402'] [data-field=FTranTypeName][data-row]").allTextContents();
      expect(kinds.filter((kind) => !["期初结存", "期末结存"].includes(kind))).toEqual([]);
      for (const cell of await other.page.locator("[data-report='10402'] [data-field=FBalQty][data-row]").allTextContents()) expect(Number(cell)).toBe(0);
      expect(other.errors).toEqual([]);
    } finally {
      await other.close();
    }
  });
  it("data that fails is told, and the next run is clean", async () => {
    await open("");
    await place(1);
    const execute = (statement: string) => execFileSync("python3", ["-c", `import sqlite3; b = sqlite3.connect('${server.book}'); b.execute('${statement}'); b.commit()`]);
    execute("ALTER TABLE movement RENAME TO movement_gone");
    try {
      await clerk.page.keyboard.press("Control+PageDown");
      const said = clerk.page.locator(".error[role=alert]:visible");
      await said.waitFor();
      expect((await said.textContent())!.length).toBeGreaterThan(5);
      expect(await clerk.page.locator("[data-form=frmProgBar]").count()).toBe(0);
    } finally {
      execute("ALTER TABLE movement_gone RENAME TO movement");
    }
    await clerk.page.keyboard.press("F5");
    await place(2);
    expect(await clerk.page.locator(".error[role=alert]:visible").count()).toBe(0);
  });
});

describe("the pages of all items", () => {
  it("are declined with the question, and the page stays", async () => {
    await open(`?BDate=${halfYear}&EDate=${today}`);
    await place(1);
    await named("ledger.all").click();
    await clerk.page.getByText(kQuestion).waitFor();
    expect(await seriousFindings()).toEqual([]);
    await clerk.page.keyboard.press("Escape");
    await clerk.page.getByText(kQuestion).waitFor({ state: "detached" });
    expect(await clerk.page.locator("[data-form=ledgerPages]").count()).toBe(0);
    expect(await named("ledger.missed").count()).toBe(0);
    await place(1);
  });
  it("leave the button that cancels where it is while they are made", async () => {
    await open(`?BDate=${halfYear}&EDate=${today}`);
    await clerk.page.evaluate(() => {
      const tops = new Set<number>();
      new MutationObserver(() => {
        const button = document.querySelector<HTMLElement>("[data-name=progressCancel]");
        if (button) document.body.dataset["tops"] = [...tops.add(button.offsetTop)].join();
      }).observe(document.body, { childList: true, subtree: true, characterData: true });
    });
    await openPages();
    expect(await clerk.page.evaluate(() => document.body.dataset["tops"])).toMatch(/^\d+$/);
    await clerk.page.keyboard.press("Escape");
    await clerk.page.locator("[data-form=ledgerPages]").waitFor({ state: "detached" });
  });
  it("are cancelled while they are made", async () => {
    await open(`?BDate=1753-01-01&EDate=${today}`); // takes long enough
    await named("ledger.all").click();
    await clerk.page.locator("[data-answer=ok]:focus").waitFor();
    await clerk.page.keyboard.press("Enter");
    const box = clerk.page.locator("[data-form=frmProgBar]");
    await box.getByText(/\d+\/60:.+\([\d.]+\) 正在/).waitFor();
    await named("progressCancel").click();
    await box.waitFor({ state: "detached" });
    await named("ledger.missed").filter({ hasText: "已取消" }).waitFor();
    await clerk.page.keyboard.press("Control+PageDown");
    await place(2);
  });
  it("begin each item on a sheet of its own, and carry totals on long ones", async () => {
    await open(`?BDate=${halfYear}&EDate=${today}`);
    await clerk.page.locator(".grid:visible").focus();
    await clerk.page.keyboard.press("Control+PageDown");
    await place(2);
    await openPages();
    const lines = (number: number) => sheet(number).locator("tbody tr");
    expect(await sheet(0).locator(".lines span").count()).toBe(7);
    await sheet(0).locator("thead").getByText("结存").waitFor();
    const handedOn = lines(0).last();
    expect(await handedOn.getAttribute("data-name")).toBe("carried");
    await handedOn.getByText("过次页").waitFor();
    await clerk.page.locator("[data-form=ledgerPages] .windowed").evaluate((view) => (view.scrollTop = 600));
    await lines(1).first().getByText("承前页").waitFor();
    const figures = (line: ReturnType<typeof lines>) => line.locator("td.number").allTextContents();
    expect(await figures(lines(1).first())).toEqual(await figures(handedOn));
    expect(await seriousFindings()).toEqual([]);
  });
  it("hold few sheets in the page, and are gone through by item and by number", async () => {
    const count = Number(/共 ([\d,]+) 页/.exec((await named("pageCount").textContent())!)![1]!.replaceAll(",", ""));
    expect(count).toBeGreaterThan(60);
    await clerk.page.keyboard.press("Control+End");
    const last = clerk.page.locator("[data-form=ledgerPages] [data-page='59']");
    await last.locator("tbody tr").first().waitFor();
    expect(await clerk.page.locator("[data-form=ledgerPages] .sheet").count()).toBeLessThan(6);
    const number = /\(([\d.]+)\)/.exec((await last.first().locator(".lines").textContent())!)![1]!;
    await clerk.page.keyboard.press("Control+PageUp");
    await clerk.page.locator("[data-form=ledgerPages] [data-page='58'] tbody tr").first().waitFor();
    await clerk.page.keyboard.press("Control+Home");
    await sheet(0).locator("tbody tr").first().waitFor();
    await clerk.page.keyboard.press("F3");
    await clerk.page.keyboard.type(number);
    await clerk.page.keyboard.press("Enter");
    await last.locator("tbody tr").first().waitFor();
    await named("goToPage").fill("2");
    await clerk.page.keyboard.press("Enter");
    await sheet(1).locator("tbody tr").first().waitFor();
    await named("goToItem").fill("没有这个");
    await clerk.page.keyboard.press("Enter");
    await clerk.page.getByText("全部账页里没有“没有这个”。").first().waitFor();
  });
  it("become a PDF and a workbook, and go to the printer", async () => {
    for (const [name, file, head] of [["pagesPdf", "库存商品明细账.pdf", "%PDF-"], ["pagesXlsx", "库存商品明细账.xlsx", "PK"]] as const) {
      const [download] = await Promise.all([clerk.page.waitForEvent("download"), named(name).click()]);
      expect(download.suggestedFilename()).toBe(file);
      expect(readFileSync(await download.path()).subarray(0, head.length).toString("latin1")).toBe(head);
    }
    await clerk.page.evaluate(() => (window.print = () => void (document.title = String(document.querySelectorAll("[data-form=ledgerPages] .sheet tbody").length))));
    const count = /共 ([\d,]+) 页/.exec((await named("pageCount").textContent())!)![1]!;
    await named("printNow").click();
    await expect.poll(() => clerk.page.title(), { timeout: 30_000 }).toBe(count);
  });
  it("close with Esc and leave the walk where it was", async () => {
    await clerk.page.keyboard.press("Escape");
    await clerk.page.locator("[data-form=ledgerPages]").waitFor({ state: "detached" });
    await place(2);
    expect(clerk.errors).toEqual([]);
  });
});
