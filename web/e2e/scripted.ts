// A session whose answers are scripted: the built page without a server, for reports of any size and for
// states that a real session reaches only by accident.
import { readFileSync } from "node:fs";
import { extname, join } from "node:path";
import type { Page, WebSocketRoute } from "playwright-core";
import type { Column, Command, Message } from "../src/protocol";

const kDist = join(process.cwd(), "dist");
const kKinds: Record<string, string> = { ".html": "text/html", ".js": "text/javascript", ".css": "text/css", ".svg": "image/svg+xml", ".png": "image/png" };
export const kOrigin = "http://localhost:18999";

export const kFile = "%PDF-1.7 scripted";

export interface Script {
  columns: number;
  rows: number;
  frozen: number;
}

const kGroups = ["期初结存", "采购入库", "销售出库", "盘盈盘亏", "期末结存"];
const kSeconds = ["数量", "单价", "金额"];

export function scriptedColumns(count: number): Column[] {
  const text = (caption: string, field: string): Column => ({ caption: `${caption}$`, second: "", type: "1", field, visible: true, forceHide: false, fieldType: "text" });
  const columns = [text("商品代码", "FItemNumber"), text("商品名称", "FItemName"), text("规格型号", "FModel")];
  for (let at = 0; columns.length < count; ++at) {
    const group = kGroups[Math.floor(at / 3) % kGroups.length]!;
    const type = ["2", "4", "6"][at % 3]!;
    columns.push({ caption: at % 3 === 0 ? `${group}+|+|` : "", second: kSeconds[at % 3]!, type, field: `F${at}`, visible: true, forceHide: false, fieldType: type === "6" ? "currency" : "double" });
  }
  return columns;
}

export function scriptedCell(row: number, column: number): string | number {
  if (column === 0) return `01.${String(row).padStart(7, "0")}`;
  if (column === 1) return (row + 1) % 50 === 0 ? "小计" : `商品${row}`;
  if (column === 2) return `规格${row % 89}`;
  const value = ((row * 7919 + column * 104_729) % 1_000_000) - 100_000;
  return column % 3 === 2 ? `${value}.2500` : value / 100;
}

// Answers `start` and plays the server's part on the line.
export class ScriptedSession {
  line: WebSocketRoute | null = null;
  readonly said: Command[] = [];
  private readonly preferences = new Map<string, unknown>();
  onCommand: (command: Command) => boolean = () => false; // true: answered

  readonly columns: Column[];

  constructor(private readonly script: Script, private readonly pages = kDist) {
    this.columns = scriptedColumns(script.columns);
  }

  async serve(page: Page): Promise<void> {
    await page.route(`${kOrigin}/**`, (route) => {
      const path = new URL(route.request().url()).pathname;
      if (path === "/api/start") return route.fulfill({ json: { protocol: 1, login: "none", user: "", token: "t" } });
      const file = extname(path) ? path : "/index.html";
      return route.fulfill({ body: readFileSync(join(this.pages, file)), contentType: kKinds[extname(file)] ?? "application/octet-stream" });
    });
    await page.routeWebSocket(/\/ws$/, (line) => {
      this.line = line;
      line.onMessage((text) => this.take(JSON.parse(String(text)) as Command));
    });
  }

  tell(message: Message): void {
    this.line?.send(JSON.stringify(message));
  }

  ready(): void {
    this.tell({
      type: "reportReady", report: 1, parent: 0, programmaticId: "TOVStockRpt.Rpt10412", number: "10412", name: "商品收发汇总表", title: [{ caption: "商品代码[全部]", index: 0 }, { caption: "仓库代码从[01]到[09]", index: 1 }],
      columns: this.columns, property: { FrozenColumn: this.script.frozen }, filter: {}, rowCount: this.script.rows, detail: true, ledger: null,
    });
  }

  private take(command: Command): void {
    this.said.push(command);
    if (this.onCommand(command)) return;
    const re = command.id!;
    switch (command.type) {
      case "hello":
      case "restart":
        return this.tell({
          type: "welcome", re, protocol: 1, session: "s", resumed: false, user: "张三", restricted: true, companyName: "示例商贸公司", quantityDecimals: 2, priceDecimals: 4, amountDecimals: 2, papers: [{ name: "A4", width: 210, height: 297 }], appType: 2,
        });
      case "listReports": {
        const report = { programmaticId: "TOVStockRpt.Rpt10412", className: "Rpt10412", number: "10412", name: "商品收发汇总表", available: true };
        return this.tell({ type: "reports", re, groups: [{ name: "收发业务", reports: [report] }] });
      }
      case "openReport": this.ready(); break;
      case "fetchRows": {
        const places = command.fields.map((field) => this.columns.findIndex((column) => column.field === field));
        const count = Math.min(command.count, this.script.rows - command.start);
        const at = Array.from({ length: count }, (_, row) => command.start + row);
        const values = at.map((row) => places.map((column) => scriptedCell(row, column)));
        const summary = at.filter((row) => (row + 1) % 50 === 0);
        return this.tell({ type: "rows", re, report: 1, start: command.start, fields: command.fields, summary, values });
      }
      case "setView": return this.tell({ type: "view", re, report: 1, rowCount: this.script.rows });
      case "exportReport":
        this.tell({ type: "exportProgress", report: 1, done: 0, all: this.script.rows });
        return this.tell({ type: "exported", re, report: 1, export: 1, size: kFile.length });
      case "readExport": return this.tell({ type: "exportPart", re, export: 1, start: command.start, data: btoa(kFile), more: false });
      case "getPreference": return this.tell({ type: "preference", re, key: command.key, value: this.preferences.get(command.key) ?? null });
      case "setPreference": this.preferences.set(command.key, command.value); break;
      case "sum": return this.tell({ type: "sums", re, report: 1, sums: command.fields.map((field) => ({ field, count: command.count, sum: "12.5", average: 1 })) });
      default: break;
    }
    this.tell({ type: "done", re });
  }
}
