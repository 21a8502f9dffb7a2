// Two clerks with different rights side by side, and signing in.
import { afterAll, beforeAll, describe, expect, it } from "vitest";
import { openBrowser, type OpenBrowser } from "./browser";
import { run, Server } from "./server";

const server = new Server();
const kPassword = "Kucun-2026-demo";
let chief: OpenBrowser;
let clerk: OpenBrowser;

beforeAll(async () => {
  run(["user", "add", server.book, "总管"], `${kPassword}\n`);
  run(["user", "add", server.book, "小王", "--restricted"], `${kPassword}\n`);
  run(["user", "grant", server.book, "小王", "item"]);
  run(["user", "grant", server.book, "小王", "warehouse", "01"]);
  await server.start();
  [chief, clerk] = await Promise.all([openBrowser(), openBrowser()]);
});
afterAll(async () => {
  await Promise.all([chief?.close(), clerk?.close()]);
  await server.stop();
});

async function signIn({ page }: OpenBrowser, name: string, password: string): Promise<void> {
  await page.goto(`${server.address}/`);
  await page.locator("[data-name=userName]").fill(name);
  await page.locator("[data-name=password]").fill(password);
  await page.locator("[data-name=signIn]").click();
}
async function rowsOf({ page }: OpenBrowser): Promise<number> {
  await page.locator("[data-report-open='10414']").last().click();
  await page.locator("[data-name=cmdOK]").click();
  await page.locator("[data-report='10414']").waitFor();
  return Number(/([\d,]+) 行/.exec((await page.locator("[data-name=statusRows]").textContent()) ?? "")?.[1]?.replaceAll(",", ""));
}

async function rightsToldTo({ page }: OpenBrowser): Promise<string> {
  await page.locator("[data-field=FQty][data-row='0']").click();
  await page.keyboard.press("Control+i");
  const said = page.locator("[data-form=explain]");
  await said.waitFor();
  const text = (await said.locator("dd").last().textContent())!.trim();
  await page.keyboard.press("Escape");
  await said.waitFor({ state: "detached" });
  return text;
}

describe("signing in", () => {
  it("a wrong password is refused with a word", async () => {
    await signIn(clerk, "小王", "falsch");
    await clerk.page.locator("[role=alert]").waitFor();
    await clerk.page.locator("[data-name=password]:focus").waitFor();
    expect(await clerk.page.locator("[data-name=reportSearch]").count()).toBe(0);
  });
  it("two clerks see their own rows side by side", async () => {
    await signIn(chief, "总管", kPassword);
    await signIn(clerk, "小王", kPassword);
    await clerk.page.getByText("部分数据").waitFor();
    // Stock in warehouses that the clerk may not see counts as none to him, so that more is short.
    expect(await rowsOf(clerk)).toBeGreaterThan(await rowsOf(chief));
    expect(await rightsToldTo(chief)).toBe("可见全部数据");
    expect(await rightsToldTo(clerk)).toMatch(/仓库：可见 1 个，共 \d+ 个/);
    expect([...chief.errors, ...clerk.errors]).toEqual([]);
  });
  it("signing out ends the session", async () => {
    await clerk.page.locator("[data-name=signOut]").click();
    await clerk.page.locator("[data-name=userName]").waitFor();
  });
});
