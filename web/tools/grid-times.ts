// Measures the built page's grid on scripted reports and prints a line a size and page: `npm run grid-times`.
// Aims: 100 ms to the first values, 35 ms a jump, 6 ms of the page's processor time a scrolled frame. The rows
// come through this process, which adds its own share to the waiting times. `PAGES=dist,OTHER` compares built
// pages, turn by turn, so that what else the machine does meets them alike.
import { resolve } from "node:path";
import { afterAll, beforeAll, it } from "vitest";
import { openBrowser, type OpenBrowser } from "../e2e/browser";
import { processorTime, type Work } from "../e2e/work";
import { kOrigin, ScriptedSession, type Script } from "../e2e/scripted";

const kPages = (process.env["PAGES"] ?? "dist").split(",").map((page) => resolve(page));
const kTurns = Number(process.env["TURNS"] ?? 5);

let browser: OpenBrowser;
beforeAll(async () => void (browser = await openBrowser()));
afterAll(() => browser?.close());

const median = (values: number[]) => [...values].sort((a, b) => a - b)[Math.floor(values.length / 2)]!;

// From the click on the report to its first value.
async function openReport(): Promise<number> {
  const { page } = browser;
  await page.goto(`${kOrigin}/`);
  await page.locator("[data-report-open='10412']").first().waitFor();
  await page.waitForTimeout(200);
  return page.evaluate(async () => {
    const begin = performance.now();
    document.querySelector<HTMLElement>("[data-report-open='10412']")!.click();
    while (!/\d/.test(document.querySelector("[data-field=FItemNumber][data-row='0']")?.textContent ?? "")) await new Promise((done) => requestAnimationFrame(done));
    return performance.now() - begin;
  });
}

// From a jump to values all over the window.
function jump(share: number): Promise<number> {
  return browser.page.evaluate(async (to) => {
    const grid = document.querySelector<HTMLElement>(".grid")!;
    grid.scrollTop = to * grid.scrollHeight;
    grid.scrollLeft = to * grid.scrollWidth;
    const begin = performance.now();
    await new Promise((done) => requestAnimationFrame(done));
    while (document.querySelector(".grid[aria-busy], .grid-row:not([style*='display: none']) .grid-cell.waiting")) await new Promise((done) => setTimeout(done, 1));
    return performance.now() - begin;
  }, share);
}

const kFrames = 60;

function scroll(across: number, down: number): Promise<void> {
  return browser.page.evaluate(async ({ frames, dx, dy }) => {
    const grid = document.querySelector<HTMLElement>(".grid")!;
    for (let frame = 0; frame < frames; ++frame) {
      grid.scrollBy(dx, dy);
      await new Promise((done) => requestAnimationFrame(done));
    }
  }, { frames: kFrames, dx: across, dy: down });
}

async function workAFrame(across: number, down: number): Promise<Work> {
  await browser.page.locator(".grid").evaluate((grid) => grid.scrollTo(0, 0));
  await browser.page.waitForTimeout(300);
  const work = await processorTime(browser, () => scroll(across, down));
  return { all: work.all / kFrames, script: work.script / kFrames, style: work.style / kFrames, layout: work.layout / kFrames };
}

interface Turn {
  opened: number;
  jumps: number[];
  down: Work;
  across: Work;
}

async function takeTurn(script: Script, page: string): Promise<Turn> {
  await new ScriptedSession(script, page).serve(browser.page);
  const opened = await openReport();
  const jumps: number[] = [];
  for (let at = 1; at <= 6; ++at) jumps.push(await jump(at / 7));
  const down = await workAFrame(0, 120);
  const across = await workAFrame(60, 0);
  await browser.page.unrouteAll();
  await browser.page.goto("about:blank");
  return { opened, jumps, down, across };
}

function told(works: Work[]): string {
  const part = (name: keyof Work) => median(works.map((work) => work[name])).toFixed(1);
  return `${part("all")} ms (script ${part("script")}, style ${part("style")}, layout ${part("layout")})`;
}

it.each([
  { rows: 100_000, columns: 120 }, { rows: 100_000, columns: 300 }, { rows: 1_000_000, columns: 120 },
])("$rows rows, $columns columns", async (size) => {
  const turns = kPages.map((page) => ({ page, taken: [] as Turn[] }));
  for (let turn = 0; turn < kTurns; ++turn) {
    for (const { page, taken } of turns) taken.push(await takeTurn({ ...size, frozen: 3 }, page));
  }
  for (const { page, taken } of turns) {
    const times = `first values ${median(taken.map((turn) => turn.opened)).toFixed(0)} ms, jump ${median(taken.flatMap((turn) => turn.jumps)).toFixed(0)} ms`;
    console.log(`${size.rows} x ${size.columns} ${kPages.length > 1 ? page : ""}: ${times}, a frame down ${told(taken.map((turn) => turn.down))}, across ${told(taken.map((turn) => turn.across))}`);
  }
});
