// What happens to a clerk's work when something breaks: the process of the session in the middle of a fetch,
// the line between page and server.
import { afterAll, afterEach, beforeAll, beforeEach, describe, expect, it } from "vitest";
import { openBrowser, type OpenBrowser } from "./browser";
import { Line } from "./line";
import { Server } from "./server";

const server = new Server("--items", "3000", "--months", "12");
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

const page = () => browser.page;
const named = (name: string) => page().locator(`[data-name="${name}"]:visible`);
const dialog = () => page().locator("[data-form=frmFirter10414]");
const notice = () => page().locator("[data-form=lineNotice]");
const grid = () => page().locator("[data-report='10414']:visible");

async function openDialog(): Promise<void> {
  await page().goto(`${line.address}/icon.svg`);
  await page().evaluate(() => sessionStorage.clear());
  await page().goto(`${line.address}/`);
  await page().locator("[data-report-open='10414']").last().click();
  await dialog().waitFor();
  await named("schemeReset").click();
  await page().locator("[data-name='txtItem(0)']:focus").waitFor();
}

// Lets the worker go on for moments only, until the page has been told that a fetch began and not yet that it
// ended. The worker stands still then.
async function stopInFetch(worker: number, start: () => Promise<void>): Promise<boolean> {
  const told: string[] = [];
  line.onText = (text) => told.push(...(text.match(/"type":"(progressShown|progressClosed|reportReady)"/g) ?? []));
  process.kill(worker, "SIGSTOP");
  await start();
  while (told.length === 0) {
    process.kill(worker, "SIGCONT");
    await new Promise((resolve) => setTimeout(resolve, 2));
    process.kill(worker, "SIGSTOP");
    await new Promise((resolve) => setTimeout(resolve, 20));
  }
  line.onText = () => {};
  return told.length === 1;
}

describe("a worker that is killed in the middle of a fetch", () => {
  it("is shown as what it is, and the clerk starts again", async () => {
    await openDialog();
    const [worker] = server.workers();
    let caught = await stopInFetch(worker!, () => named("cmdOK").click());
    for (let attempt = 0; !caught && attempt < 20; ++attempt) {
      process.kill(worker!, "SIGCONT");
      await grid().waitFor();
      await page().locator("[data-form=frmProgBar]").waitFor({ state: "detached" });
      caught = await stopInFetch(worker!, () => named("toolRefresh").click());
    }
    expect(caught).toBe(true);
    await page().locator("[data-form=frmProgBar]").waitFor();
    process.kill(worker!, "SIGKILL");
    await notice().getByText("报表程序意外中止").waitFor();
    expect(await notice().textContent()).toContain("其他用户不受影响");
    await named("restart").click();
    await notice().waitFor({ state: "detached" });
    await page().locator("[data-form=frmProgBar]").waitFor({ state: "detached" });
    expect(await page().locator("[role=tab]").count()).toBe(0);
    await page().locator("[data-report-open='10414']").last().click();
    await named("cmdOK").click();
    await grid().waitFor();
    await page().locator("[data-field=FItemNumber][data-row='0']").filter({ hasText: /\d/ }).waitFor();
    expect(server.workers()).not.toContain(worker);
  });
});

describe("a page that loses its line", () => {
  it("says so, comes back by itself and finds its report and its open dialog", async () => {
    await openDialog();
    await named("cmdOK").click();
    await grid().waitFor();
    const workers = server.workers();
    const session = await page().evaluate(() => sessionStorage.getItem("stockrpt.session"));
    await named("toolFilter").click();
    await named("txtItem(0)").fill("01");
    await named("txtItem(0)").press("Tab");
    await page().locator("[data-name='txtItem(1)']:focus").waitFor();
    line.cut();
    await notice().getByText("正在重新连接").waitFor();
    await new Promise((resolve) => setTimeout(resolve, 2500)); // some attempts fail
    expect(await notice().count()).toBe(1);
    line.mend();
    await notice().waitFor({ state: "detached" });
    await dialog().waitFor();
    expect(await named("txtItem(0)").inputValue()).toBe("01");
    expect(await page().evaluate(() => sessionStorage.getItem("stockrpt.session"))).toBe(session);
    expect(server.workers()).toEqual(workers);
    await named("cmdOK").click();
    await dialog().waitFor({ state: "detached" });
    await named("titleLine").filter({ hasText: "商品代码从[01]" }).waitFor();
  });
});
