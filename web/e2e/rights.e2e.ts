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

describe("signing in", () => {
  it("a wrong password is refused with a word", async () => {
    await signIn(clerk, "小王", "falsch");
    await clerk.page.locator("[role=alert]").waitFor();
    expect(await clerk.page.locator("[data-name=reportSearch]").count()).toBe(0);
  });
  it("two clerks see their own rows side by side", async () => {
    await signIn(chief, "总管", kPassword);
    await signIn(clerk, "小王", kPassword);
    await clerk.page.getByText("部分数据").waitFor();
    const [all, some] = [await rowsOf(chief), await rowsOf(clerk)];
    expect(all).toBeGreaterThan(0);
    expect(some).toBeLessThan(all);
    expect([...chief.errors, ...clerk.errors]).toEqual([]);
  });
  it("signing out ends the session", async () => {
    await clerk.page.locator("[data-name=signOut]").click();
    await clerk.page.locator("[data-name=userName]").waitFor();
  });
});
