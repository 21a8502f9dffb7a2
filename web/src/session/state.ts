// What the session has told the page: open windows as a stack, reports as tabs. Messages are applied here and
// nowhere else.
import { reactive } from "vue";
import type { OpenForm } from "../forms/model";
import type {
  FormChangedMessage, MessageShownMessage, Message, ProgressShownMessage, ReportGroup, ReportReadyMessage, WelcomeMessage,
} from "../protocol";

export type Line = "starting" | "login" | "ready" | "lost" | "ended" | "unreachable";

export type OpenWindow =
  | { kind: "form"; id: number; form: OpenForm }
  | { kind: "message"; id: number; box: MessageShownMessage }
  | { kind: "progress"; id: number; progress: Omit<ProgressShownMessage, "type"> };

export interface ReportTab {
  report: number;
  ready: ReportReadyMessage;
  generation: number; // counts the fetches
  error: string;
}

export interface SessionState {
  line: Line;
  endReason: string;
  worker: "works" | "crashed" | "hangs";
  welcome: WelcomeMessage | null;
  groups: ReportGroup[];
  windows: OpenWindow[];
  tabs: ReportTab[];
  active: number; // the report shown, 0 for the start page
  failure: { programmaticId: string; text: string } | null;
  opening: string; // programmatic id of the report that is being opened
  busy: boolean; // hourglass
  stoppable: boolean; // what runs now may be cancelled in its progress box
  exporting: { report: number; done: number; all: number } | null; // the file that is being written
}

export function newState(): SessionState {
  return reactive({
    line: "starting", endReason: "", worker: "works", welcome: null, groups: [],
    windows: [], tabs: [], active: 0, failure: null, opening: "", busy: false, stoppable: false, exporting: null,
  });
}

export function tabOf(state: SessionState, report: number): ReportTab | undefined {
  return state.tabs.find((tab) => tab.report === report);
}

export function clearOpen(state: SessionState): void {
  state.windows = [];
  state.tabs = [];
  state.active = 0;
  state.opening = "";
  state.busy = false;
  state.exporting = null;
}

function changeForm(form: OpenForm, change: FormChangedMessage): void {
  if (change.caption !== undefined) form.caption = change.caption;
  if (change.focus !== undefined) form.focus = change.focus;
  if (change.filter !== undefined) form.filter = change.filter;
  for (const one of change.controls ?? []) {
    const control = form.controls.find((candidate) => candidate.control === one.control);
    if (control) Object.assign(control, one);
  }
}

function closeWindow(state: SessionState, kind: OpenWindow["kind"], id: number): void {
  state.windows = state.windows.filter((window) => window.kind !== kind || window.id !== id);
}

function takeReport(state: SessionState, ready: ReportReadyMessage): void {
  const tab = tabOf(state, ready.report);
  if (tab) {
    tab.ready = ready;
    tab.generation += 1;
    tab.error = "";
  } else {
    state.tabs.push({ report: ready.report, ready, generation: 1, error: "" });
  }
  state.active = ready.report;
  state.failure = null;
}

function dropReport(state: SessionState, report: number): void {
  const at = state.tabs.findIndex((tab) => tab.report === report);
  if (at < 0) return;
  const [gone] = state.tabs.splice(at, 1);
  if (state.active !== report) return;
  const parent = tabOf(state, gone!.ready.parent);
  state.active = (parent ?? state.tabs[Math.min(at, state.tabs.length - 1)])?.report ?? 0;
}

export function apply(state: SessionState, message: Message): void {
  switch (message.type) {
    case "welcome":
      state.welcome = message;
      clearOpen(state);
      state.worker = "works";
      break;
    case "reports": state.groups = message.groups; break;
    case "formOpened": state.windows.push({ kind: "form", id: message.form, form: { ...message } }); break;
    case "formChanged": {
      const open = state.windows.find((window) => window.kind === "form" && window.id === message.form);
      if (open?.kind === "form") changeForm(open.form, message);
      break;
    }
    case "formClosed": closeWindow(state, "form", message.form); break;
    case "messageShown": state.windows.push({ kind: "message", id: message.message, box: message }); break;
    case "messageClosed": closeWindow(state, "message", message.message); break;
    case "progressShown": state.windows.push({ kind: "progress", id: message.progress, progress: message }); break;
    case "progressChanged": {
      const open = state.windows.find((window) => window.kind === "progress" && window.id === message.progress);
      if (open?.kind === "progress") open.progress = message;
      break;
    }
    case "progressClosed": closeWindow(state, "progress", message.progress); break;
    case "pointer": state.busy = message.pointer === "hourglass"; break;
    case "reportReady": takeReport(state, message); break;
    case "reportFailed": {
      if (!message.opened) dropReport(state, message.report);
      if (message.cancelled) break;
      const tab = tabOf(state, message.report);
      if (tab) tab.error = message.error;
      else {
        state.failure = { programmaticId: message.programmaticId, text: message.error };
        state.active = 0; // the start page says it
      }
      break;
    }
    case "reportClosed": dropReport(state, message.report); break;
    case "exportProgress": state.exporting = { report: message.report, done: message.done, all: message.all }; break;
    case "workerFailed":
      state.worker = message.state === "answers" ? "works" : message.state;
      break;
    case "sessionEnded":
      state.line = "ended";
      state.endReason = message.reason;
      break;
    default: break; // answers, which go to who asked
  }
}
