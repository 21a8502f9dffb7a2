// Drives each grid in Chromium and prints a line each: wall time to the first row and of a jump, and the main
// thread's processor time to open and a scrolled frame. `npm start -- ROWS COLUMNS [GRID...]`; a round visits every
// grid once, so that what else the machine does meets them alike.
import { readFileSync } from "node:fs";
import { extname, join } from "node:path";
import { chromium } from "playwright-core";

const [rows = "100000", columns = "120", ...wanted] = process.argv.slice(2);
const kGrids = wanted.length > 0 ? wanted : ["own", "regular-table", "ag-grid", "revogrid", "tabulator"];
const kRounds = Number(process.env.ROUNDS ?? 3);
const kFrames = 60;
const kBuilt = join(import.meta.dirname ?? ".", "../../build/grid-bench");
const kKinds = { ".html": "text/html", ".js": "text/javascript", ".css": "text/css" };
const kOrigin = "http://localhost:18998";

const median = (values) => [...values].sort((a, b) => a - b)[Math.floor(values.length / 2)];

async function visit(browser, grid) {
  const page = await browser.newPage({ viewport: { width: 1280, height: 720 } });
  try {
    await page.route(`${kOrigin}/**`, (route) => {
      const path = new URL(route.request().url()).pathname;
      const file = path === "/" ? "/index.html" : path;
      return route.fulfill({ body: readFileSync(join(kBuilt, file)), contentType: kKinds[extname(file)] ?? "application/octet-stream" });
    });
    const devtools = await page.context().newCDPSession(page);
    await devtools.send("Performance.enable", { timeDomain: "threadTicks" });
    const worked = async () => 1000 * (await devtools.send("Performance.getMetrics")).metrics.find((metric) => metric.name === "TaskDuration").value;
    await page.goto(`${kOrigin}/?grid=${grid}&rows=${rows}&columns=${columns}`);
    await page.waitForFunction("window.mountGrid");
    await page.evaluate("fetchCode()");
    let before = await worked();
    const first = await page.evaluate("mountGrid()");
    const opening = (await worked()) - before;
    await page.waitForTimeout(300);
    await page.mouse.move(900, 400);
    const drawn = () => page.evaluate("document.getElementById('app').textContent");
    const scroll = async (x, y) => {
      const stood = await drawn();
      before = await worked();
      for (let frame = 0; frame < kFrames; ++frame) {
        await page.mouse.wheel(x, y);
        await page.evaluate(() => new Promise((done) => requestAnimationFrame(done)));
      }
      const work = ((await worked()) - before) / kFrames;
      if ((await drawn()) === stood) throw new Error("the wheel moved nothing");
      return work;
    };
    const down = await scroll(0, 120);
    const across = await scroll(60, 0);
    const jumps = [];
    for (let at = 1; at <= 5; ++at) jumps.push(await page.evaluate(`jumpTo(${Math.floor((at * Number(rows)) / 6)})`));
    return { first, opening, down, across, jump: median(jumps) };
  } finally {
    await page.close();
  }
}

const browser = await chromium.launch({ executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium", args: ["--no-sandbox", "--disable-gpu"] });
const results = new Map(kGrids.map((grid) => [grid, []]));
for (let round = 0; round < kRounds; ++round) {
  for (const grid of kGrids) {
    await visit(browser, grid).then((result) => results.get(grid).push(result), (error) => console.error(`${grid}: ${String(error).split("\n")[0]}`));
  }
}
await browser.close();

console.log(`${rows} rows, ${columns} columns; milliseconds`);
console.log("| grid | first row | work to open | jump | work a frame down | across |\n|---|---|---|---|---|---|");
for (const [grid, taken] of results) {
  if (taken.length === 0) continue;
  const part = (name) => median(taken.map((one) => one[name])).toFixed(1);
  console.log(`| ${grid} | ${part("first")} | ${part("opening")} | ${part("jump")} | ${part("down")} | ${part("across")} |`);
}
