// One page's session: signing in, the line with its reconnecting, and what the page asks for.
import { protocolVersion, type ReportClass } from "../protocol";
import { CommandError, Connection, LineBroken } from "./Connection";
import { t } from "../texts";
import { apply, clearOpen, newState } from "./state";
import { Twins } from "./Twins";

interface Start {
  login: "none" | "needed" | "done";
  user: string;
  token: string;
}

const kSessionKey = "stockrpt.session";
const kRetries = [300, 700, 1500, 3000, 5000, 8000, 10000, 12000, 15000]; // about a minute in all
const kPingEvery = 60_000;

export class Session {
  readonly state = newState();
  readonly line = new Connection();
  private readonly twins = new Twins(() => (this.state.line === "ready" ? sessionStorage.getItem(kSessionKey) : null));
  private token = "";
  private stopped = false;
  private waking = 0;
  onNotice: (text: string) => void = () => {};

  constructor() {
    this.line.onMessage = (message) => {
      apply(this.state, message);
      if (message.type === "workerFailed" && message.state === "crashed") this.line.breakOff();
    };
    this.line.onClosed = () => void this.reconnect();
  }

  async start(): Promise<void> {
    this.state.line = "starting";
    try {
      const answer = await fetch("/api/start");
      if (!answer.ok) throw new Error(String(answer.status));
      const start = (await answer.json()) as Start;
      if (start.login === "needed") this.state.line = "login";
      else await this.connect(start.token);
    } catch {
      this.line.close();
      if (this.state.line === "starting") this.state.line = "unreachable";
    }
  }

  // Answers the text of a refusal, empty when signed in.
  async login(name: string, password: string): Promise<string> {
    const answer = await fetch("/api/login", {
      method: "POST",
      headers: { "Content-Type": "application/json" },
      body: JSON.stringify({ name, password }),
    });
    const said = (await answer.json()) as Partial<Start> & { error?: string };
    if (!answer.ok) return said.error ?? String(answer.status);
    await this.connect(said.token ?? "");
    return "";
  }

  async logout(): Promise<void> {
    this.stopped = true;
    await fetch("/api/logout", { method: "POST", headers: { "X-Token": this.token } });
    sessionStorage.removeItem(kSessionKey);
    location.assign("/");
  }

  // After the end of a session, or with a server that could not be reached.
  async beginAnew(): Promise<void> {
    if (this.state.line === "ended") sessionStorage.removeItem(kSessionKey);
    clearOpen(this.state);
    await this.start();
  }

  // Starts a new worker after a crash or while the present one hangs.
  async restart(): Promise<void> {
    this.line.breakOff(); // the worker that was asked goes
    const welcome = await this.line.ask("restart", {});
    sessionStorage.setItem(kSessionKey, welcome.session);
    await this.line.ask("listReports", {});
  }

  findReport(number: string): ReportClass | undefined {
    const all = this.state.groups.flatMap((group) => group.reports);
    return all.find((report) => report.number === number) ?? all.find((report) => report.className === `Rpt${number}`);
  }

  async openReport(report: ReportClass, filter: Record<string, string> | null): Promise<void> {
    if (this.state.opening || this.state.windows.length > 0) return;
    this.state.opening = report.programmaticId;
    this.state.failure = null;
    try {
      await this.line.ask("openReport", { programmaticId: report.programmaticId, ...(filter ? { filter } : {}) });
    } catch (error) {
      if (error instanceof CommandError && error.reply.code === "failed") this.state.failure = { programmaticId: report.programmaticId, text: error.message };
      if (this.state.active !== 0 || !this.state.failure) this.tell(error); // else the start page says it, and keeps saying it
    } finally {
      this.state.opening = "";
    }
  }

  // Asks for something whose failure is told to the user; answers null then.
  async tryAsk(...command: Parameters<Connection["ask"]>): Promise<unknown> {
    try {
      return await this.line.ask(...command);
    } catch (error) {
      this.tell(error);
      return null;
    }
  }

  tell(error: unknown): void {
    if (error instanceof LineBroken) return; // the page shows the lost line as such
    if (error instanceof CommandError && error.reply.code === "state") return; // the window is already gone
    this.onNotice(error instanceof Error ? error.message : String(error));
  }

  private async connect(token: string): Promise<void> {
    this.token = token;
    await this.line.open(`${location.protocol === "https:" ? "wss" : "ws"}://${location.host}/ws`);
    const held = await this.heldSession();
    const welcome = await this.line.ask("hello", { token, protocol: protocolVersion, ...(held ? { session: held } : {}) });
    const lost = this.state.line === "lost" && !welcome.resumed;
    sessionStorage.setItem(kSessionKey, welcome.session);
    await this.line.ask("listReports", {});
    this.state.line = "ready";
    if (lost) this.onNotice(t.sessionGone);
    this.keepAwake();
  }

  // A tab of the browser that was copied holds the session of the first one, and begins one of its own.
  private async heldSession(): Promise<string | null> {
    const held = sessionStorage.getItem(kSessionKey);
    if (!held || this.state.line !== "starting") return held;
    return (await this.twins.isInUse(held)) ? null : held;
  }

  private keepAwake(): void {
    clearInterval(this.waking);
    this.waking = window.setInterval(() => {
      if (this.state.line !== "ready") clearInterval(this.waking);
      else if (document.visibilityState === "visible") void this.line.ask("ping", {}).catch(() => {});
    }, kPingEvery);
  }

  private async reconnect(): Promise<void> {
    if (this.stopped || this.state.line !== "ready") return;
    this.state.line = "lost";
    for (const pause of kRetries) {
      await new Promise((resolve) => setTimeout(resolve, pause));
      try {
        const answer = await fetch("/api/start");
        const start = (await answer.json()) as Start;
        if (start.login === "needed") {
          clearOpen(this.state);
          this.state.line = "login";
          return;
        }
        await this.connect(start.token);
        return;
      } catch {
        this.line.close();
      }
    }
    this.state.line = "unreachable";
  }
}
