// The browser that the tests drive: Debian's Chromium, with a profile of its own.
import { mkdtempSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { chromium, type BrowserContext, type Page } from "playwright-core";

const kFlags = [
  "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking", "--disable-component-update", "--disable-sync",
];

export interface OpenBrowser {
  context: BrowserContext;
  page: Page;
  // Errors of the page's own code, and refusals by its content security policy.
  errors: string[];
  close: () => Promise<void>;
}

export async function openBrowser(size = { width: 1280, height: 720 }): Promise<OpenBrowser> {
  const profile = mkdtempSync(join(tmpdir(), "stockrpt-page-"));
  const context = await chromium.launchPersistentContext(profile, {
    executablePath: process.env["CHROMIUM"] ?? "/usr/bin/chromium", args: kFlags, viewport: size, locale: "zh-CN", permissions: ["clipboard-read", "clipboard-write"], acceptDownloads: true,
  });
  const errors: string[] = [];
  const watch = (page: Page) => {
    page.on("pageerror", (error) => errors.push(String(error)));
    page.on("console", (message) => message.type() === "error" && !/Failed to load resource|WebSocket connection/.test(message.text()) && errors.push(message.text()));
  };
  context.on("page", watch);
  const page = context.pages()[0] ?? (await context.newPage());
  watch(page);
  const close = async () => {
    await context.close();
    rmSync(profile, { recursive: true, force: true, maxRetries: 5 });
  };
  return { context, page, errors, close };
}
