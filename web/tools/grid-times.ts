// Measures the built page's grid on scripted reports and prints a line a size: `npm run grid-times`. Aims: 100 ms
// to the first values, 35 ms a jump, 6 ms of work a scrolled frame. The rows come through this process, which
// adds its own share to the first two.
import { afterAll, beforeAll, it } from "vitest";
import { openBrowser, type OpenBrowser } from "../e2e/browser";
import { kOrigin, ScriptedSession } from "../e2e/scripted";

let browser: OpenBrowser;
beforeAll(async () => void (browser = await openBrowser()));
afterAll(() => browser?.close());

const median = (values: number[]) => [...values].sort((a, b) => a - b)[Math.floor(values.length / 2)]!;
const worst = (values: number[]) => Math.max(...values);
const shown = (values: number[]) => `${median(values).toFixed(1)} ms (worst ${worst(values).toFixed(1)})`;

// From the click on the report to its first value.
async function openings(): Promise<number[]> {
  const { page } = browser;
  const times: number[] = [];
  for (let turn = 0; turn < 5; ++turn) {
    await page.goto(`${kOrigin}/`);
    await page.locator("[data-report-open='10412']").first().waitFor();
    times.push(await page.evaluate(async () => {
      const begin = performance.now();
      document.querySelector<HTMLElement>("[data-report-open='10412']")!.click();
      while (!/\d/.test(document.querySelector("[data-field=FItemNumber][data-row='0']")?.textContent ?? "")) await new Promise((resolve) => requestAnimationFrame(resolve));
      return performance.now() - begin;
    }));
  }
  return times;
}

// From a jump to values all over the window.
function jumps(): Promise<number[]> {
  return browser.page.evaluate(async () => {
    const grid = document.querySelector<HTMLElement>(".grid")!;
    const times: number[] = [];
    for (let jump = 1; jump <= 12; ++jump) {
      grid.scrollTop = (jump * grid.scrollHeight) / 13;
      grid.scrollLeft = (jump * grid.scrollWidth) / 13;
      const begin = performance.now();
      await new Promise((resolve) => requestAnimationFrame(resolve));
      while (document.querySelector(".grid-row:not([style*='display: none']) .grid-cell.waiting")) await new Promise((resolve) => setTimeout(resolve, 1));
      times.push(performance.now() - begin);
    }
    return times;
  });
}

// What a scrolled frame costs the page in work, all of it: script, style, layout, paint.
async function workAFrame(): Promise<number> {
  const { page } = browser;
  const devtools = await browser.context.newCDPSession(page);
  await devtools.send("Performance.enable");
  const spent = async () => (await devtools.send("Performance.getMetrics")).metrics.find((metric) => metric.name === "TaskDuration")!.value;
  await page.locator(".grid").evaluate((grid) => (grid.scrollTop = 0));
  await page.waitForTimeout(300);
  const kFrames = 120;
  const before = await spent();
  await page.evaluate(async (frames) => {
    const grid = document.querySelector<HTMLElement>(".grid")!;
    for (let frame = 0; frame < frames; ++frame) {
      grid.scrollTop += 120;
      await new Promise((resolve) => requestAnimationFrame(resolve));
    }
  }, kFrames);
  const work = (1000 * ((await spent()) - before)) / kFrames;
  await devtools.detach();
  return work;
}

it.each([
  { rows: 100_000, columns: 120 }, { rows: 100_000, columns: 300 }, { rows: 1_000_000, columns: 120 },
])("$rows rows, $columns columns", async (size) => {
  await new ScriptedSession({ ...size, frozen: 3 }).serve(browser.page);
  const opened = await openings();
  const jumped = await jumps();
  const work = await workAFrame();
  console.log(`${size.rows} x ${size.columns}: first values ${shown(opened)}, jump ${shown(jumped)}, work a frame ${work.toFixed(1)} ms`);
  await browser.page.unrouteAll();
  await browser.page.goto("about:blank");
});
