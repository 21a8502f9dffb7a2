// Every report's dialog as a clerk meets it: how it is drawn, how far the keyboard goes, what a scheme keeps, what
// addresses and wrong input are answered with.
import axe from "axe-core";
import { afterAll, afterEach, beforeAll, beforeEach, describe, expect, it } from "vitest";
import { openBrowser, type OpenBrowser } from "./browser";
import { Line } from "./line";
import { Server } from "./server";

const server = new Server();
const line = new Line();
let browser: OpenBrowser;
beforeAll(async () => {
  await server.start();
  await line.open(server.address);
  browser = await openBrowser();
});
afterAll(async () => {
  await browser?.close();
  await line.close();
  await server.stop();
});
beforeEach(() => void (browser.errors.length = 0));
afterEach(() => expect(browser.errors).toEqual([]));

const kReports = ["10422", "10432", "303", "10424", "10411", "10414", "10415", "10402", "10401", "10412", "10413", "10416", "10417", "10403", "10418"];
const page = () => browser.page;
const named = (name: string) => page().locator(`[data-name="${name}"]:visible`);
const form = (name: string) => page().locator(`[data-form=${name}]`);
const forms = () => page().locator("[data-form^=frm]").evaluateAll((all) => all.map((one) => one.getAttribute("data-form")));
const focused = () => page().evaluate(() => document.activeElement?.getAttribute("data-name") ?? "");

async function start(path = "/"): Promise<void> {
  await page().goto(`${server.address}/icon.svg`);
  await page().evaluate(() => sessionStorage.clear());
  await page().goto(`${server.address}${path}`);
  await page().locator("[data-name=reportSearch]").waitFor({ state: "attached" });
}
async function choose(number: string): Promise<void> {
  await page().locator(`[data-report-open='${number}']`).last().click();
  await page().locator("[data-form^=frm]").waitFor();
}
async function open(number: string): Promise<void> {
  await start();
  await choose(number);
  await named("schemeReset").click();
  await expect.poll(focused).not.toMatch(/^(schemeReset)?$/); // it ends on the first field, and may set each of them
}
async function seriousFindings(): Promise<string[]> {
  await page().waitForTimeout(350);
  await page().evaluate(axe.source);
  const { violations } = await page().evaluate(() => (globalThis as unknown as { axe: typeof axe }).axe.run({ runOnly: ["wcag2a", "wcag2aa"] }));
  return violations.filter((one) => one.impact === "serious" || one.impact === "critical").map((one) => `${one.id}: ${one.nodes[0]?.html}`);
}

// What is crooked in the open dialog: words cut off, things one over the other, fields out of their columns.
const crooked = () =>
  page().evaluate(() => {
    const found: string[] = [];
    const dialog = document.querySelector<HTMLElement>(".form")!;
    const all = [...dialog.querySelectorAll<HTMLElement>(".label, .choice, .btn, .field, legend, .behind, .note")].filter((one) => one.offsetParent);
    const called = (one: HTMLElement) => one.dataset["name"] ?? one.textContent!.trim();
    for (const one of all) if (!(one instanceof HTMLInputElement) && one.scrollWidth > one.clientWidth + 1 && one.clientWidth > 0) found.push(`cut: ${called(one)}`);
    const boxes = all.map((one) => one.getBoundingClientRect());
    all.forEach((one, i) => all.slice(i + 1).forEach((other, k) => {
      if (one.contains(other) || other.contains(one)) return;
      const [a, b] = [boxes[i]!, boxes[i + 1 + k]!];
      if (Math.min(a.right, b.right) - Math.max(a.left, b.left) > 1.5 && Math.min(a.bottom, b.bottom) - Math.max(a.top, b.top) > 1.5) found.push(`over each other: ${called(one)}, ${called(other)}`);
    }));
    const lefts = [...dialog.querySelectorAll(".row.fields > .cell")].map((cell) => cell.getBoundingClientRect().left).sort((a, b) => a - b);
    const columns = lefts.filter((left, i) => i === 0 || left - lefts[i - 1]! > 3).length;
    if (columns > 2) found.push(`fields begin at ${columns} places`);
    const rows = dialog.querySelector(".sections")!;
    if (rows.scrollWidth > rows.clientWidth + 1 || rows.scrollHeight > rows.clientHeight + 1) found.push("its rows do not fit");
    if (document.documentElement.scrollWidth > window.innerWidth) found.push("the page scrolls sideways");
    return found;
  });

describe("each report's dialog", () => {
  it.each(kReports)("%s is drawn straight, whole at 1280 × 720, under its report's name and its form's control names", async (number) => {
    await start();
    const opened = new Promise<{ controls: { control: string; kind: string; visible: boolean; enabled: boolean; caption: string }[] }>((resolve) => {
      page().once("websocket", (socket) => socket.on("framereceived", ({ payload }) => String(payload).includes('"type":"formOpened"') && resolve(JSON.parse(String(payload)))));
    });
    await page().reload();
    await page().locator(`[data-report-open='${number}']`).first().waitFor();
    const report = await page().locator(`[data-report-open='${number}'] .name`).last().textContent();
    await choose(number);
    expect(await page().locator(".el-dialog__title").textContent()).toMatch(new RegExp(`^(${report!.replace("/", "\\/")}|序列号跟踪分析表) · 过滤$`));
    expect(await crooked()).toEqual([]);
    const drawn = new Set(await page().locator(".form [data-name]").evaluateAll((all) => all.map((one) => one.getAttribute("data-name"))));
    const { controls } = await opened;
    const wanted = controls.filter((one) => one.visible && !["frame", "embedded", "progress"].includes(one.kind) && (one.kind !== "label" || one.caption.trim() !== ""));
    expect(wanted.map((one) => one.control).filter((control) => !drawn.has(control))).toEqual([]);
    // Tab goes through the fields in the form's order; a group of options is one stop.
    const order = wanted.filter((one) => one.enabled && ["text", "date", "combo", "check"].includes(one.kind)).map((one) => one.control);
    const gone = [await focused()];
    for (let step = 0; step < 60 && gone[gone.length - 1] !== "cmdOK" && gone[gone.length - 1] !== "filterOk"; step += 1) {
      await page().keyboard.press("Tab");
      gone.push(await focused());
    }
    expect(gone.filter((control) => order.includes(control))).toEqual(order);
    expect(await seriousFindings()).toEqual([]);
    await page().keyboard.press("Escape");
    await expect.poll(forms).toEqual([]);
  });

  it.each([
    { size: { width: 1024, height: 768 }, dark: false }, { size: { width: 768, height: 1024 }, dark: true }, { size: { width: 1280, height: 720 }, dark: true },
  ])("fits $size.width × $size.height, dark: $dark", async ({ size, dark }) => {
    await page().setViewportSize(size);
    await page().emulateMedia({ colorScheme: dark ? "dark" : "light" });
    await open("10422");
    await named("chkMultiLevel").click();
    await named("txtMultiLevelBegin").waitFor();
    expect(await crooked()).toEqual([]);
    expect(await seriousFindings()).toEqual([]);
    await page().emulateMedia({ colorScheme: "light" });
    await page().setViewportSize({ width: 1280, height: 720 });
  });
});

describe("the keyboard in a dialog", () => {
  it("Enter leaves disabled fields out, and F7 does not turn on the browser's caret", async () => {
    await open("10422");
    await page().locator("[data-name='txtItem(0)']:focus").waitFor(); // the date is disabled for stock as of now
    await page().evaluate(() => window.addEventListener("keydown", (event) => ((window as unknown as { kept: boolean }).kept = event.defaultPrevented)));
    await page().keyboard.press("F7");
    await form("frmLookup").waitFor();
    expect(await page().evaluate(() => (window as unknown as { kept: boolean }).kept)).toBe(true);
    await page().keyboard.press("Escape");
    await form("frmLookup").waitFor({ state: "detached" });
    await expect.poll(focused).toBe("txtItem(0)");
    await named("chkitem(2)").focus();
    await page().keyboard.press("Enter");
    await expect.poll(focused).toBe("optItem(0)"); // chkitem(3) is disabled
  });
  it("a text that is to be contained has no lookup", async () => {
    await open("10422");
    expect(await page().locator("[data-name='txtItem(8)'] ~ button").count()).toBe(0);
    expect(await page().locator("[data-name='txtItem(6)'] ~ button").count()).toBe(1);
  });
  it("access keys and Esc work wherever in the window the focus is", async () => {
    await open("10412");
    await page().locator(".sections").click({ position: { x: 4, y: 4 } });
    await page().keyboard.press("Alt+e");
    await expect.poll(forms).toEqual([]);
    await choose("10412");
    await page().locator(".el-dialog__header").click({ position: { x: 200, y: 10 } });
    await page().keyboard.press("Escape");
    await expect.poll(forms).toEqual([]);
  });
  it("the arrows of a level step their own text", async () => {
    await open("10422");
    await named("chkMultiLevel").click();
    await named("UpDownMultiLevelEnd").getByRole("button").first().click();
    await expect.poll(() => named("txtMultiLevelEnd").inputValue()).toBe("2");
    expect(await named("txtMultiLevelBegin").inputValue()).toBe("1");
    await named("UpDownMultiLevelEnd").getByRole("button").last().click();
    await expect.poll(() => named("txtMultiLevelEnd").inputValue()).toBe("1");
  });
  it("F1 opens the guide above the window, searchable, and leads back", async () => {
    await open("10414");
    await page().keyboard.press("F1");
    await page().locator("[data-name=guideSearch]:focus").waitFor();
    await page().keyboard.type("保质期");
    await page().locator("[data-form=guide] details").first().waitFor();
    expect(await seriousFindings()).toEqual([]);
    await page().keyboard.press("Escape");
    await form("guide").waitFor({ state: "detached" });
    expect(await forms()).toEqual(["frmFirter10414"]);
    await page().keyboard.press("Escape");
    await expect.poll(forms).toEqual([]);
  });
});

describe("the guide", () => {
  it("has a chapter about every report, and opens at that of the report worked in", async () => {
    await start();
    const names = await page().locator("[data-report-open] .name").allTextContents();
    await choose("10418");
    await page().keyboard.press("F1");
    await page().locator("[data-name=guideSearch]:focus").waitFor();
    const chapters = await page().locator("[data-form=guide] summary").allTextContents();
    expect(names.filter((name) => !chapters.includes(name))).toEqual([]);
    expect(await page().locator("[data-form=guide] details[open] summary").allTextContents()).toEqual(["S/N号跟踪分析表"]);
    await expect.poll(() => page().locator("[data-form=guide] details[open]").evaluate((one) => {
      const text = one.closest(".text")!.getBoundingClientRect();
      const { top, bottom } = one.getBoundingClientRect();
      return top >= text.top - 1 && bottom <= text.bottom + 1;
    })).toBe(true);
  });
});

describe("the page", () => {
  it("begins with the focus where a report is looked for", async () => {
    await start();
    await page().locator("[data-name=reportSearch]:focus").waitFor();
    await page().keyboard.type("kykc");
    await page().keyboard.press("Enter");
    await form("frmFirter10424").waitFor();
    expect(await page().locator(".el-dialog__title").textContent()).toBe("可用库存查询表 · 过滤");
  });
  it("shows the guide on a tablet over the work, without scrolling sideways", async () => {
    await page().setViewportSize({ width: 768, height: 1024 });
    await start();
    await page().keyboard.press("F1");
    await form("guide").waitFor();
    const { right, width } = await form("guide").evaluate((one) => one.getBoundingClientRect().toJSON() as DOMRect);
    expect([Math.round(right), Math.round(width)]).toEqual([768, 420]);
    expect(await page().evaluate(() => document.documentElement.scrollWidth)).toBe(768);
    expect(await seriousFindings()).toEqual([]);
    await page().keyboard.press("Escape");
    await page().setViewportSize({ width: 1280, height: 720 });
  });
});

describe("a message box", () => {
  it("has the component's words, title and buttons, and the focus on its default", async () => {
    await open("10415");
    await named("DtpBDate").fill("2026-11-30");
    await named("DtpEDate").fill("2026-11-05");
    await page().keyboard.press("Tab");
    await page().keyboard.press("Alt+o");
    await form("message").waitFor();
    expect(await named("text").textContent()).toBe("起始日期不能大于截止日期!");
    expect(await page().locator(".el-dialog__title").last().textContent()).toBe("摩文提示");
    await page().locator("[data-answer=ok]:focus").waitFor();
    expect(await page().locator("[data-form=message] button").count()).toBe(1);
    expect(await seriousFindings()).toEqual([]);
    await page().keyboard.press("Enter");
    await form("message").waitFor({ state: "detached" });
    await expect.poll(() => named("DtpBDate").inputValue()).toBe("2026-11-05");
    expect(await forms()).toEqual(["frmFirter10415"]);
    // A list that has nothing to choose from says so.
    expect(await named("cboSort").locator("option").allTextContents()).toEqual(["（没有可选的）"]);
  });
});

describe("the title of a report", () => {
  it("tells its range of dates", async () => {
    await open("10412");
    await named("DtpBDate").fill("2026-11-01");
    await page().keyboard.press("Tab");
    await named("DtpEDate").fill("2026-11-05");
    await page().keyboard.press("Tab");
    await named("filterOk").click();
    await named("titleLine").first().waitFor();
    expect(await named("titleLine").first().textContent()).toBe("日期从[2026-11-01]到[2026-11-05]");
  });
});

describe("lookups", () => {
  it.each(["10412", "10416", "10401"])("batches of %s are picked from their list by keys", async (number) => {
    await open(number);
    await named(number === "10401" ? "txtItem(8)" : "txtItem(2)").press("F7");
    await form("frmBatchList").waitFor();
    const first = (await page().locator("[data-form=frmBatchList] .node .words").first().textContent())!;
    expect(first).toMatch(/^\S+ {2}01\.\S+ \S+ {2}[\d.]+$/);
    await page().keyboard.press("Enter");
    await form("frmBatchList").waitFor({ state: "detached" });
    await expect.poll(() => named(number === "10401" ? "txtItem(8)" : "txtItem(2)").inputValue()).toBe(first.split("  ")[0]);
  });
  it("finding nothing is said", async () => {
    await open("10414");
    await named("txtItem(0)").press("F7");
    await named("txtSearch").fill("没有这样的商品");
    await page().getByText("没有找到，请换个编号").waitFor();
    expect(await seriousFindings()).toEqual([]);
  });
  it("the scope of stock is ticked by keys, keeps its place, and comes back", async () => {
    await open("10424");
    await named("cmdItem(2)").click();
    await page().locator("[data-form=frmSelStock] [data-name=tree]:focus").waitFor();
    const red = page().locator("[data-form=frmSelStock] .words", { hasText: "停用" });
    expect(await red.evaluate((one) => getComputedStyle(one).color)).not.toBe(await page().locator("[data-form=frmSelStock] .words").first().evaluate((one) => getComputedStyle(one).color));
    await page().keyboard.press("ArrowDown");
    await page().keyboard.press("Space");
    await page().locator("[role=treeitem][aria-checked=true]").first().waitFor();
    await page().keyboard.press("ArrowDown");
    await page().keyboard.press("ArrowDown");
    const place = await page().locator(".node.current").textContent();
    await page().keyboard.press("Space");
    await expect.poll(() => page().locator("[role=treeitem][aria-checked=true]").count()).toBeGreaterThan(1);
    expect((await page().locator(".node.current").textContent())!.slice(2)).toBe(place!.slice(2));
    expect(await crooked()).toEqual([]);
    await named("cmdQXAll").click();
    await expect.poll(() => page().locator("[role=treeitem][aria-checked=true]").count()).toBe(0);
    await named("cmdSelAll").click();
    const all = await page().locator("[role=treeitem]").count();
    await expect.poll(() => page().locator("[role=treeitem][aria-checked=true]").count()).toBe(all);
    await page().keyboard.press("Alt+o");
    await form("frmSelStock").waitFor({ state: "detached" });
    expect(await named("txtItem(4)").inputValue()).not.toBe("");
  });
});

describe("lookups in a large book", () => {
  const large = new Server("--items", "3000", "--months", "2");
  beforeAll(async () => {
    await large.start();
    await page().goto(`${large.address}/`);
    await choose("10414");
    await named("txtItem(0)").press("F7");
    await form("frmLookup").waitFor();
  });
  afterAll(() => large.stop());
  const nodes = () => page().locator("[data-form=frmLookup] .node");

  it("every class is in the tree, and one is searched by Enter", async () => {
    await page().getByText(/个类别，请选择类别/).waitFor();
    await page().keyboard.press("End");
    const last = (await page().locator(".node.current").textContent())!.trim().split("  ")[0]!;
    expect(last).not.toMatch(/^01/);
    await page().keyboard.press("Enter");
    await expect.poll(() => named("txtSearch").inputValue()).toBe(last);
    await expect.poll(async () => (await nodes().first().textContent())!.trim()).toMatch(new RegExp(`^${last.replaceAll(".", "\\.")}\\.`));
  });
  it("initials find an item that stands far behind", async () => {
    await named("txtSearch").fill("05.");
    await expect.poll(async () => (await nodes().last().textContent())!.trim()).toMatch(/^05\./);
    const [number, name] = (await nodes().last().textContent())!.trim().split("  ");
    const { pinyin } = await import("pinyin-pro");
    await named("txtSearch").fill(pinyin(name!, { pattern: "first", toneType: "none", type: "array" }).join("").toLowerCase());
    await nodes().filter({ hasText: number! }).waitFor();
  });
});

describe("wrong input", () => {
  it.each(["0423-01-01", "2026-02-30", "明天"])("the date %s is refused in its place and not confirmed", async (typed) => {
    await open("10412");
    await named("DtpBDate").fill(typed);
    await page().keyboard.press("Enter");
    await page().getByText("日期不对").waitFor();
    await named("filterOk").click();
    await page().waitForTimeout(200);
    expect(await forms()).toEqual(["frmFirter10412"]);
    await expect.poll(focused).toBe("DtpBDate");
    expect(await crooked()).toEqual([]);
  });
  it.each([
    { path: "/r/99999?x=1", said: "没有编号为 99999 的报表" },
    { path: "/r/10414?Foo=1", said: "没有这个过滤条件：Foo" },
    { path: "/r/10414?cboSort=99", said: "cboSort=99 用不上" },
    { path: "/r/10412?BDate=0423-01-01", said: "BDate=0423-01-01 用不上" },
    { path: "/r/10414/more", said: "没有这个地址" },
  ])("the address $path is answered in words that stay", async ({ path, said }) => {
    await start(path);
    await named("failure").getByText(said).waitFor();
    expect(await seriousFindings()).toEqual([]);
  });
  it("a quote in an address never arrives", async () => {
    await start("/r/10414?BItemNumber=01'%20or%20'1");
    await named("titleLine").filter({ hasText: "商品代码从[01 or 1]" }).waitFor();
  });
});

describe("schemes", () => {
  it.each([
    { number: "10414", field: "txtItem(0)", ok: "cmdOK" },
    { number: "10412", field: "txtItem(0)", ok: "filterOk" },
  ])("of $number: the last conditions come back, then the default scheme does", async ({ number, field, ok }) => {
    await open(number);
    await named(field).fill("01");
    await named(ok).click();
    await page().locator(`[data-report='${number}']`).waitFor();
    await start();
    await choose(number);
    await expect.poll(() => named(field).inputValue()).toBe("01");
    await named(field).fill("02");
    await named("schemeSaveAs").click();
    await page().locator(".el-message-box input").fill("饮料");
    await page().keyboard.press("Enter");
    await named("scheme").locator("option", { hasText: "饮料" }).waitFor({ state: "attached" });
    await named("schemeStandard").click();
    await named("scheme").locator("option", { hasText: "饮料（默认）" }).waitFor({ state: "attached" });
    await start();
    await choose(number);
    await expect.poll(() => named(field).inputValue()).toBe("02");
    expect(await named("scheme").inputValue()).toBe("饮料");
    // Saving under the name of another asks first.
    await named("schemeSaveAs").click();
    await page().locator(".el-message-box input").fill("饮料");
    await page().keyboard.press("Enter");
    await page().getByText("已有方案“饮料”").waitFor();
    await page().keyboard.press("Escape");
    await page().getByText("已有方案“饮料”").waitFor({ state: "hidden" });
    await named("schemeDelete").click();
    await page().locator(".el-message-box:visible").getByRole("button", { name: "确定" }).last().click();
    await expect.poll(() => named("scheme").locator("option", { hasText: "饮料" }).count()).toBe(0);
    await start();
    await choose(number);
    await expect.poll(() => named(field).inputValue()).toBe("01");
  });
});

describe("tabs of the browser", () => {
  it("a copied tab begins a session of its own, and the first one works on", async () => {
    await open("10414");
    await named("cmdOK").click();
    await page().locator("[data-report='10414']").waitFor();
    const [copy] = await Promise.all([browser.context.waitForEvent("page"), page().evaluate(() => void window.open(location.href))]);
    await copy.locator("[data-report='10414']").waitFor();
    expect(await copy.evaluate(() => sessionStorage.getItem("stockrpt.session"))).not.toBe(await page().evaluate(() => sessionStorage.getItem("stockrpt.session")));
    expect(await page().locator("[data-form=lineNotice]").count()).toBe(0);
    await copy.close();
  });
  it("a page that cannot reach its server tries again where it stands", async () => {
    await page().goto(`${line.address}/icon.svg`);
    await page().evaluate(() => sessionStorage.clear());
    await page().route("**/api/start", (route) => route.abort());
    await page().goto(`${line.address}/`);
    await page().getByText("连接不上服务器").waitFor();
    expect(await seriousFindings()).toEqual([]);
    await named("restart").click();
    await page().getByText("连接不上服务器").waitFor();
    await page().unroute("**/api/start");
    await named("restart").click();
    await named("reportSearch").waitFor();
  });
});
