// A real `stockrpt serve` on a demo book of its own. Without a built program the tests fail and say so.
import { execFileSync, spawn, type ChildProcess } from "node:child_process";
import { existsSync, mkdtempSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join, resolve } from "node:path";

const kRoot = resolve(process.cwd(), "..");
const kBuilds = ["release", "quick", "debug"].map((build) => join(kRoot, "build", build, "bin", "stockrpt"));

export function program(): string {
  const found = process.env["STOCKRPT"] ?? kBuilds.find((path) => existsSync(path));
  if (!found) throw new Error(`no stockrpt in ${kRoot}/build; build it first, or name it in STOCKRPT`);
  return found;
}

export function run(args: string[], input = ""): string {
  return execFileSync(program(), args, { input, encoding: "utf8" });
}

export class Server {
  readonly folder = mkdtempSync(join(tmpdir(), "stockrpt-e2e-"));
  readonly book = join(this.folder, "demo.db");
  address = "";
  private process: ChildProcess | null = null;

  // With what `demo` takes for the size of the book.
  constructor(...size: string[]) {
    run(["demo", this.book, ...(size.length > 0 ? size : ["--size", "small"]), "--quiet"]);
  }

  async start(...options: string[]): Promise<void> {
    const process = spawn(program(), ["serve", "--book", this.book, "--listen", "127.0.0.1:0", "--page", join(kRoot, "web", "dist"), ...options]);
    this.process = process;
    let said = "";
    process.stderr.on("data", (part: Buffer) => (said += part.toString()));
    this.address = await new Promise((resolved, refused) => {
      process.stdout.on("data", (part: Buffer) => {
        const found = /http:\/\/[^\s/]+/.exec(part.toString());
        if (found) resolved(found[0]);
      });
      process.on("exit", (code) => refused(new Error(`serve ended with ${code}: ${said}`)));
    });
  }

  // The process ids of the sessions' workers.
  workers(): number[] {
    if (!this.process?.pid) return [];
    const children = execFileSync("ps", ["-o", "pid=", "--ppid", String(this.process.pid)], { encoding: "utf8" });
    return children.split("\n").map((line) => Number(line.trim())).filter((pid) => pid > 0);
  }

  async stop(): Promise<void> {
    const { process } = this;
    this.process = null;
    if (process && process.exitCode === null) {
      const ended = new Promise((done) => process.once("exit", done));
      process.kill("SIGTERM");
      await ended;
    }
    rmSync(this.folder, { recursive: true, force: true });
  }
}
