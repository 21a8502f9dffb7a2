// The ledger of all items beside the same question put to a column database: `npm install && npm run ledger`, or
// `npm run ledger -- large` for the large demo book instead of the medium one.
//
// Takes the demo book that ./bench made, loads it into the column database, asks it the window query of
// benches/ledger/window_query.sql on one thread, reads every row, and compares rows a CPU second with the
// component's run over the same book, in the same minute. Needs the program sqlite3 to read the book.
import { execFileSync, spawnSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync, existsSync } from "node:fs";
import { tmpdir } from "node:os";
import { dirname, join, resolve } from "node:path";
import { fileURLToPath } from "node:url";
import { DuckDBInstance } from "@duckdb/node-api";

const kBenches = resolve(dirname(fileURLToPath(import.meta.url)), "..");
const kPrograms = resolve(kBenches, "..", "build", "release", "bin");
const kLedgerBenches = { medium: "LedgerAllPagesOfTheMediumBook", large: "LedgerAllPages/20000" };
// A day is kept as a number, which the query only compares and hands on.
const kTables = {
  item: "id, model, valuation, quantity_decimals, price_decimals",
  base_data: "id, number, name",
  valuation_method: "id, name",
  batch: "id, number",
  bill: "id, voucher_number, explanation, number",
  bill_class: "id, name",
  accounting_period: "period, first_day, last_day",
  balance: "item_id, period, batch_id, quantity, amount",
  movement: "item_id, date, day_order, bill_id, direction, line, period, bill_class, batch_id, aux_id, quantity, amount",
};
const kTexts = new Set(["model", "name", "number", "voucher_number", "explanation"]);
const kPeriods = [2024 * 12 + 11, 2026 * 12 + 10]; // as the bench's ledger: December 2024 to November 2026

function fail(message) {
  console.error(`ledger.mjs: ${message}`);
  process.exit(1);
}

const size = process.argv[2] ?? "medium";
if (!Object.hasOwn(kLedgerBenches, size)) fail(`no demo book is called ${size}; say medium or large`);

// The bench's figures: the component's rows and CPU seconds.
function componentRun(folder) {
  const bench = join(kPrograms, "stockrpt_bench");
  if (!existsSync(bench)) fail(`no ${bench}; run ./bench ledger first`);
  const report = join(folder, "bench.json");
  // A target that is missed is another matter: the bench ends with 1 then, and has written its figures.
  spawnSync(bench, [`--benchmark_filter=^${kLedgerBenches[size]}/`, `--benchmark_out=${report}`, "--benchmark_out_format=json"], { stdio: "ignore" });
  if (!existsSync(report)) fail(`${bench} wrote no figures`);
  const found = JSON.parse(readFileSync(report, "utf8")).benchmarks[0];
  return { rows: found.rows, seconds: found.cpu_time / 1000 };
}

function findBook() {
  const book = resolve(kPrograms, "..", `demo-${size}.book`);
  if (!existsSync(book)) fail(`no ${book}; run ./bench ledger first`);
  return book;
}

async function load(connection, book, folder) {
  for (const [table, columns] of Object.entries(kTables)) {
    const file = join(folder, `${table}.csv`);
    execFileSync("sqlite3", ["-readonly", "-cmd", ".mode csv", "-cmd", `.once ${file}`, book, `SELECT ${columns} FROM ${table}`]);
    const types = columns.split(", ").map((name) => `'${name}': '${kTexts.has(name) ? "VARCHAR" : "BIGINT"}'`);
    await connection.run(`CREATE TABLE ${table} AS SELECT * FROM read_csv('${file}', header = false, columns = {${types.join(", ")}})`);
  }
}

async function ask(connection) {
  let place = 0;
  const sql = readFileSync(join(kBenches, "ledger", "window_query.sql"), "utf8").replaceAll("?", () => String(kPeriods[place++]));
  const before = process.cpuUsage();
  const answer = await connection.stream(sql);
  let rows = 0;
  for (let chunk = await answer.fetchChunk(); chunk && chunk.rowCount > 0; chunk = await answer.fetchChunk()) rows += chunk.rowCount;
  const used = process.cpuUsage(before);
  return { rows, seconds: (used.user + used.system) / 1e6 };
}

const tell = (name, { rows, seconds }) =>
  console.log(`${name.padEnd(16)} ${String(rows).padStart(9)} rows ${seconds.toFixed(2).padStart(7)} CPU s ${Math.round(rows / seconds).toLocaleString("en").padStart(10)} rows/s`);

const folder = mkdtempSync(join(tmpdir(), "peers-"));
try {
  const ours = componentRun(folder);
  const instance = await DuckDBInstance.create(":memory:", { threads: "1" });
  const connection = await instance.connect();
  await connection.run("SET integer_division = true");
  await load(connection, findBook(), folder);
  const theirs = await ask(connection);
  tell("the component", ours);
  tell("column database", theirs);
  console.log(`time a row, component to column database: ${(ours.seconds / ours.rows / (theirs.seconds / theirs.rows)).toFixed(3)}`);
} finally {
  rmSync(folder, { recursive: true, force: true });
}
