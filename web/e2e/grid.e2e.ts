// The grid under a clerk's hands: folding groups of columns, and a report with a band for each of many warehouses.
import axe from "axe-core";
import { afterAll, afterEach, beforeAll, beforeEach, describe, expect, it } from "vitest";
import { openBrowser, type OpenBrowser } from "./browser";
import { kOrigin, ScriptedSession, type Script } from "./scripted";
import { Server } from "./server";
import { processorTime } from "./work";

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

  it("has its columns hidden in all groups at once, by what they are called", async () => {
    await openScripted({ rows: 200, columns: 9, frozen: 3 });
    await named("toolColumns").click();
    await named("columnSearch").fill("单价");
    expect(await page().locator(".columns li").count()).toBe(2);
    await named("columnsHide").click();
    await named("columnsClose").click();
    await expect.poll(heads).toEqual(["商品代码", "商品名称", "规格型号", "数量", "金额", "数量", "金额"]);
    await named("toolColumns").click();
    await named("columnSearch").fill("没有");
    expect(await named("columnsShow").isDisabled()).toBe(true);
    await named("columnSearch").fill("单价");
    await named("columnsShow").click();
    await named("columnsClose").click();
    await expect.poll(heads).toHaveLength(9);
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

describe("selecting and arranging", () => {
  it("drawn beyond the lower edge, takes the rows along", async () => {
    await openScripted({ rows: 2000, columns: 9, frozen: 3 });
    await cell(2, "F0").hover();
    await page().mouse.down();
    await page().mouse.move(900, 715, { steps: 4 });
    await page().locator(".grid-cell.current[data-row='60']").or(cell(80, "F0")).first().waitFor();
    await page().mouse.up();
    const status = await page().locator(".status").textContent();
    expect(Number(/选中 ([\d,]+) 行/.exec(status!)![1]!.replaceAll(",", ""))).toBeGreaterThan(30);
    const rested = await page().locator(".grid").evaluate((grid) => grid.scrollTop);
    await page().waitForTimeout(200);
    expect(await page().locator(".grid").evaluate((grid) => grid.scrollTop)).toBe(rested);
  });

  it("widens a column by keys, and remembers it", async () => {
    await openScripted({ rows: 20, columns: 9, frozen: 3 });
    await cell(0, "F0").click();
    const width = async () => (await cell(0, "F0").boundingBox())!.width;
    const before = await width();
    await page().keyboard.press("Alt+Shift+ArrowRight");
    await page().keyboard.press("Alt+Shift+ArrowRight");
    expect(await width()).toBe(before + 24);
    await show();
    await expect.poll(width).toBe(before + 24);
  });

  it("cuts off what does not fit a column that was made narrow, and nothing else", async () => {
    await openScripted({ rows: 2000, columns: 12, frozen: 3 });
    for (const field of ["FItemName", "F0"]) {
      await cell(3, field).click();
      for (let step = 0; step < 10; ++step) await page().keyboard.press("Alt+Shift+ArrowLeft");
    }
    await page().locator(".grid").evaluate((grid) => (grid.scrollTop = 1500 * 26));
    await page().locator(".grid-cell.cut[data-field=F0][data-row='1501']").waitFor();
    const tooWide = await page().locator(".grid-cell").evaluateAll((cells) => cells.filter((one) => one.scrollWidth > one.clientWidth).map((one) => `${(one as HTMLElement).dataset["field"]} ${getComputedStyle(one).textOverflow}`));
    expect([...new Set(tooWide)].sort()).toEqual(["F0 ellipsis", "FItemName ellipsis"]);
  });

  it("tells a screen reader where the current cell stands", async () => {
    await openScripted({ rows: 2000, columns: 30, frozen: 3 });
    await cell(0, "F0").click();
    await page().keyboard.press("Control+End");
    const current = page().locator(".grid-cell.current[data-row='1999']");
    await current.waitFor();
    expect(await page().locator(".grid").getAttribute("aria-activedescendant")).toBe(await current.getAttribute("id"));
    expect(await current.getAttribute("aria-colindex")).toBe("31"); // the row's number is the first
    expect(await page().locator(".grid-row[data-row='1999']").getAttribute("aria-rowindex")).toBe("2002");
    expect(await page().locator(".grid").evaluate((grid) => [grid.getAttribute("aria-rowcount"), grid.getAttribute("aria-colcount")])).toEqual(["2002", "31"]);
    const ordered = () => page().locator(".grid-row").evaluateAll((lines) => lines.every((line, at) => at === 0 || Number((line as HTMLElement).dataset["row"]) === Number((lines[at - 1] as HTMLElement).dataset["row"]) + 1));
    await expect.poll(ordered).toBe(true);
  });
});

describe("figures", () => {
  it.each([
    { name: "below zero", field: "F0", names: "negative", sign: /^-/ },
    { name: "days past the shelf life", field: "Overdays", names: "over", sign: /^\+/ },
  ])("$name stand out by colour and by sign", async ({ field, names, sign }) => {
    const session = new ScriptedSession({ rows: 200, columns: 6, frozen: 3 });
    session.columns[3]!.field = field;
    await session.serve(page());
    await show();
    const marked = page().locator(`.grid-cell.${names}[data-field=${field}]`).first();
    await page().locator(".grid").evaluate((grid) => (grid.scrollTop = 92 * 26)); // both kinds stand there
    await marked.waitFor();
    const { text, colour, usual } = await marked.evaluate((cell) => {
      const before = getComputedStyle(cell, "::before").content;
      return { text: `${before === "none" ? "" : before.replaceAll('"', "")}${cell.textContent}`, colour: getComputedStyle(cell).color, usual: getComputedStyle(cell.closest(".grid-row")!).color };
    });
    expect(text).toMatch(sign);
    expect(colour).not.toBe(usual);
  });
});

const kFrames = 80;
const kMostScriptAFrame = 6; // milliseconds of processor time

interface Seen {
  withoutRows: number; // frames
  lostColumns: number; // frames in which a frozen column was not in its place
  longestWait: number; // milliseconds in which a cell in sight had no value
}

// Scrolls frame by frame and looks at what each has drawn.
function scrollAndLook(report: string, across: number, down: number): Promise<Seen> {
  return page().evaluate(async ({ selector, dx, dy, frames }) => {
    const grid = document.querySelector<HTMLElement>(selector)!;
    const { left, right, bottom } = grid.getBoundingClientRect();
    const top = grid.querySelector(".grid-head")!.getBoundingClientRect().bottom;
    const frozen = grid.querySelector<HTMLElement>(".grid-cell.frozen")!.dataset["field"];
    const cellAt = (x: number, y: number) => document.elementFromPoint(x, y)?.closest<HTMLElement>(".grid-cell");
    const seen = { withoutRows: 0, lostColumns: 0, longestWait: 0 };
    let waitsSince = 0;
    for (let frame = 0; frame < frames; ++frame) {
      grid.scrollBy(dx, dy);
      await new Promise((done) => requestAnimationFrame(done)); // the scroll event comes before
      const cells = [top + 4, (top + bottom) / 2, bottom - 20].flatMap((y) => [right - 40, right - 200].map((x) => cellAt(x, y)));
      if (cells.some((cell) => !cell)) seen.withoutRows += 1;
      if (cellAt(left + 60, (top + bottom) / 2)?.dataset["field"] !== frozen) seen.lostColumns += 1;
      waitsSince = cells.some((cell) => cell?.classList.contains("waiting")) ? waitsSince || performance.now() : 0;
      if (waitsSince) seen.longestWait = Math.max(seen.longestWait, performance.now() - waitsSince);
    }
    return seen;
  }, { selector: `[data-report='${report}']`, dx: across, dy: down, frames: kFrames });
}

describe("a book with sixty warehouses", () => {
  let server: Server;
  beforeAll(async () => {
    server = new Server("--size", "large", "--items", "300", "--months", "2");
    await Promise.all([server.start(), browser.close()]); // a scripted line stays with its browser
    browser = await openBrowser();
  });
  afterAll(() => server.stop());

  async function open(report: string): Promise<void> {
    await page().goto(`${server.address}/`);
    await page().locator(`[data-report-open='${report}']`).last().click();
    await page().locator("[data-form]").waitFor();
    await page().getByRole("button", { name: /确定/ }).click();
    await page().locator(`[data-report='${report}'] .grid-cell:not(.waiting)`).first().waitFor();
  }
  const closeTab = () => page().locator("[data-close-tab]").first().click();

  it("shows 即时库存表 with a band for each, without a frame that has no rows", async () => {
    await open("10422");
    const grid = page().locator("[data-report='10422']");
    expect(Number(await grid.getAttribute("aria-colcount"))).toBeGreaterThan(60 * 3);
    for (const { across, down } of [{ across: 90, down: 0 }, { across: 400, down: 0 }, { across: -500, down: 40 }]) {
      let seen!: Seen;
      const work = await processorTime(browser, async () => void (seen = await scrollAndLook("10422", across, down)));
      expect(seen).toMatchObject({ withoutRows: 0, lostColumns: 0 });
      expect(seen.longestWait).toBeLessThan(1000);
      expect(work.script / kFrames).toBeLessThan(kMostScriptAFrame);
      console.log(`across ${across}, down ${down}: longest wait ${seen.longestWait.toFixed(0)} ms, work a frame ${(work.all / kFrames).toFixed(1)} ms, of it script ${(work.script / kFrames).toFixed(1)} ms`);
    }
    await closeTab();
  });

  it("folds all bands at once to their amounts or quantities", async () => {
    await open("10422");
    const count = async () => Number(await page().locator("[data-report='10422']").getAttribute("aria-colcount"));
    const before = await count();
    await named("toolColumns").click();
    await named("foldAll").click();
    await named("columnsClose").click();
    await expect.poll(count).toBeLessThan(before / 2);
    const seconds = await page().locator(".grid-head [role=row]:nth-child(2) .grid-heading span").allTextContents();
    expect(new Set(seconds.filter((text) => !["金额", "数量"].includes(text)))).toEqual(new Set());
    await named("toolColumns").click();
    await named("columnsReset").click();
    await named("columnsClose").click();
    await expect.poll(count).toBe(before);
    await closeTab();
  });
});
