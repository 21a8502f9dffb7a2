// Writing what is seen to a file, all rows, with progress and cancel. The session writes it beside everything else,
// and it is fetched part by part; so the report may be closed or fetched anew meanwhile, and the page keeps what
// it knows of the file outside of the report's pane.
import { computed, reactive, type ComputedRef } from "vue";
import type { GridColumn } from "../grid/columns";
import type { ExportReportCommand, ReportReadyMessage } from "../protocol";
import { preferences } from "../session/preferences";
import type { Session } from "../session/Session";
import { t } from "../texts";

export type FileFormat = ExportReportCommand["format"];

const kTypes: Record<FileFormat, string> = {
  csv: "text/csv;charset=utf-8",
  xlsx: "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet",
  pdf: "application/pdf",
};
const kShareOfWriting = 0.9; // of the way to a file; the rest is fetching it

export function saveFile(name: string, parts: BlobPart[], type: string): void {
  const link = document.createElement("a");
  link.href = URL.createObjectURL(new Blob(parts, { type }));
  link.download = name;
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 10_000);
}

// A report's name as every system takes it for a file.
export function fileName(name: string, format: FileFormat): string {
  return `${name.replace(/[\\/:*?"<>|\u0000-\u001f]/g, "_").trim() || "report"}.${format}`;
}

export function bytesOf(base64: string): Uint8Array<ArrayBuffer> {
  return Uint8Array.from(atob(base64), (character) => character.charCodeAt(0));
}

interface Run {
  format: FileFormat;
  name: string; // of the report
  goes: boolean; // not cancelled
  writing: boolean; // by the session
  share: number; // of the work, as far as it is known here
}

// All pages of a ledger go the same way, on the paper that they are looked at on.
export interface PagesSetup {
  paper: string;
  orientation: "portrait" | "landscape";
}

export interface Exporter {
  running: ComputedRef<FileFormat | null>;
  name: ComputedRef<string>;
  percent: ComputedRef<number>;
  write(ready: Pick<ReportReadyMessage, "report" | "name">, format: FileFormat, columns: readonly GridColumn[], emptyForZero: boolean, allPages?: PagesSetup): Promise<void>;
  cancel(): void;
}

function makeExporter(session: Session): Exporter {
  const state = reactive<{ run: Run | null }>({ run: null });
  const percent = computed(() => {
    const { run } = state;
    const told = session.state.exporting;
    const written = run?.writing && told ? (kShareOfWriting * told.done) / Math.max(1, told.all) : 0;
    return Math.floor(100 * (run?.writing ? written : (run?.share ?? 0)));
  });

  async function fetched(run: Run, type: "exportReport" | "exportPages", command: Omit<ExportReportCommand, "type" | "id">): Promise<BlobPart[]> {
    session.state.exporting = null;
    run.writing = true;
    const { export: file, size } = await session.line.ask(type, command);
    run.writing = false;
    run.goes &&= file !== 0;
    const parts: BlobPart[] = [];
    let start = 0;
    for (let more = true; more && run.goes; ) {
      run.share = kShareOfWriting + ((1 - kShareOfWriting) * start) / Math.max(1, size);
      const part = await session.line.ask("readExport", { export: file, start });
      const bytes = bytesOf(part.data);
      parts.push(bytes);
      start += bytes.length;
      more = part.more;
    }
    return parts;
  }

  async function write(ready: Pick<ReportReadyMessage, "report" | "name">, format: FileFormat, columns: readonly GridColumn[], emptyForZero: boolean, allPages?: PagesSetup): Promise<void> {
    if (state.run) return session.onNotice(t.exportBusy);
    state.run = { format, name: ready.name, goes: true, writing: false, share: 0 };
    const { run } = state;
    const { paper, orientation } = allPages ?? preferences;
    const pages = format === "pdf" ? { paper, orientation } : {};
    try {
      const fields = columns.map((column) => column.field);
      const parts = await fetched(run, allPages ? "exportPages" : "exportReport", { report: ready.report, format, fields, emptyForZero, ...pages });
      if (run.goes) saveFile(fileName(run.name, format), parts, kTypes[format]);
    } catch (error) {
      session.tell(error);
    } finally {
      if (state.run === run) state.run = null;
    }
  }

  function cancel(): void {
    const { run } = state;
    state.run = null;
    if (!run) return;
    run.goes = false;
    void session.tryAsk("cancelExport", {});
  }
  return { running: computed(() => state.run?.format ?? null), name: computed(() => state.run?.name ?? ""), percent, write, cancel };
}

const exporters = new WeakMap<Session, Exporter>();

// The one exporter of a session.
export function useExport(session: Session): Exporter {
  const known = exporters.get(session) ?? makeExporter(session);
  exporters.set(session, known);
  return known;
}
