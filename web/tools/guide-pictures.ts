// Makes the pictures of docs/guide.zh.md from the demo book: `npm run guide-pictures`, with a built page and
// a built program.
import { mkdirSync } from "node:fs";
import { join } from "node:path";
import { afterAll, beforeAll, it } from "vitest";
import { openBrowser, type OpenBrowser } from "../e2e/browser";
import { Server } from "../e2e/server";

const kFolder = join(process.cwd(), "..", "docs", "pictures");
const server = new Server();
let browser: OpenBrowser;
beforeAll(async () => {
  mkdirSync(kFolder, { recursive: true });
  await server.start();
  browser = await openBrowser({ width: 1120, height: 640 });
});
afterAll(async () => {
  await browser?.close();
  await server.stop();
});

it("makes the pictures", async () => {
  const { page } = browser;
  const named = (name: string) => page.locator(`[data-name="${name}"]`);
  const take = async (name: string) => {
    await page.waitForTimeout(500); // windows fade in
    await page.screenshot({ path: join(kFolder, `${name}.png`) });
  };
  await page.goto(`${server.address}/`);
  await named("hint").waitFor();
  await take("start");
  await named("hintDone").click();
  await named("reportSearch").fill("spcc");
  await take("search");
  await named("reportSearch").press("Enter");
  await named("cmdOK").waitFor();
  await take("filter");
  await named("txtItem(0)").press("F7");
  await page.locator("[data-form=frmLookup]").waitFor();
  await take("lookup");
  await page.keyboard.press("Escape");
  await page.locator("[data-form=frmLookup]").waitFor({ state: "detached" });
  await named("cmdOK").click();
  await page.locator("[data-field=FQty][data-row='0']").filter({ hasText: /\d/ }).waitFor();
  await named("reportSearch").fill("");
  await page.locator("[data-field=FLowerQty][data-row='1']").click();
  await page.locator("[data-field=FQty][data-row='6']").click({ modifiers: ["Shift"] });
  await named("statusSum").waitFor();
  await take("grid");
  await named("toolColumns").click();
  await take("columns");
  await named("columnsClose").click();
  await named("toolPrint").click();
  await page.locator(".sheet").first().waitFor();
  await take("print");
});
