// From a summary of movements to the bills behind a row, and back.
import { afterAll, beforeAll, describe, expect, it } from "vitest";
import { openBrowser, type OpenBrowser } from "./browser";
import { Server } from "./server";

const server = new Server();
let clerk: OpenBrowser;

beforeAll(async () => {
  await server.start();
  clerk = await openBrowser();
});
afterAll(async () => {
  await clerk?.close();
  await server.stop();
});

const cell = (report: string, field: string, row: number) => clerk.page.locator(`[data-report='${report}'] [data-field=${field}][data-row='${row}']`);

async function text(report: string, field: string, row: number): Promise<string> {
  const found = cell(report, field, row);
  await found.waitFor();
  return ((await found.textContent()) ?? "").trim();
}

async function openSummary(report: string): Promise<void> {
  await clerk.page.goto(`${server.address}/`);
  await clerk.page.locator(`[data-report-open='${report}']`).last().click();
  await clerk.page.locator("[data-form]").waitFor();
  await clerk.page.getByRole("button", { name: /确定/ }).click();
  await cell(report, "FItemNumber", 0).waitFor();
}

async function closeTabs(): Promise<void> {
  const closers = clerk.page.locator("[data-close-tab]");
  for (let left = await closers.count(); left > 0; left -= 1) await closers.first().click();
}

describe("a summary of movements", () => {
  it.each([
    { summary: "10412", detail: "10413", name: "商品收发明细表" },
    { summary: "10416", detail: "10417", name: "批号管理商品收发明细表" },
  ])("$summary opens a row's bills in a tab of their own", async ({ summary, detail, name }) => {
    await openSummary(summary);
    const item = await text(summary, "FItemNumber", 0);
    await cell(summary, "FItemNumber", 0).dblclick();
    await clerk.page.getByRole("tab", { name }).waitFor();
    expect(await text(detail, "FItemNumber", 0)).toBe(item);
    await clerk.page.locator("[data-name=titleLine]:visible", { hasText: `商品代码从[${item}]到[${item}]` }).waitFor();
    await closeTabs();
    expect(clerk.errors).toEqual([]);
  });

  it("says of a row that sums up others why nothing opens", async () => {
    await openSummary("10412");
    await cell("10412", "FItemNumber", 0).click();
    await clerk.page.keyboard.press("Control+End");
    await clerk.page.keyboard.press("Enter");
    await clerk.page.getByText("这是汇总行").first().waitFor();
    expect(await clerk.page.getByRole("tab").count()).toBe(1);
    await closeTabs();
  });
});
