// Writing what is seen to a file, all rows, with progress and cancel. CSV is put together here; workbooks and
// pages for paper are written by the session and fetched part by part.
import { computed, onUnmounted, reactive } from "vue";
import type { GridColumn } from "../grid/columns";
import type { ReportRows } from "../grid/ReportRows";
import type { ReportReadyMessage } from "../protocol";
import { preferences } from "../session/preferences";
import type { Session } from "../session/Session";
import { t } from "../texts";
import { csvHead, csvRows } from "./csv";

export type FileFormat = "csv" | "xlsx" | "pdf";

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
  goes: boolean; // not cancelled
  writing: boolean; // by the session
  share: number; // of the work, as far as it is known here
}

// All pages of a ledger go the same way, on the paper that they are looked at on.
export interface PagesWish {
  setup: () => { paper: string; orientation: "portrait" | "landscape" };
}

export function useExport(session: Session, rows: ReportRows | null, ready: Pick<ReportReadyMessage, "report" | "name">, allPages: PagesWish | null = null) {
  const state = reactive<{ run: Run | null }>({ run: null });
  const percent = computed(() => {
    const { run } = state;
    const told = session.state.exporting;
    const written = run?.writing && told?.report === ready.report ? (kShareOfWriting * told.done) / Math.max(1, told.all) : 0;
    return Math.floor(100 * (run?.writing ? written : (run?.share ?? 0)));
  });

  async function csv(run: Run, columns: GridColumn[]): Promise<BlobPart[]> {
    if (!rows) return [];
    const count = rows.rows;
    const parts = [csvHead(columns)];
    let read = 0;
    for await (const { values } of rows.readAll(0, count, columns.map((column) => column.index), () => run.goes)) {
      parts.push(csvRows(columns, values));
      read += values.length;
      run.share = read / Math.max(1, count);
    }
    return parts;
  }

  async function written(run: Run, format: "xlsx" | "pdf", columns: GridColumn[], emptyForZero: boolean): Promise<BlobPart[]> {
    session.state.exporting = null;
    run.writing = true;
    const fields = columns.map((column) => column.field);
    const { paper, orientation } = allPages?.setup() ?? preferences;
    const pages = format === "pdf" ? { paper, orientation } : {};
    const { export: file, size } = await session.line.ask(allPages ? "exportPages" : "exportReport", { report: ready.report, format, fields, emptyForZero, ...pages });
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

  async function write(format: FileFormat, columns: GridColumn[], emptyForZero: boolean): Promise<void> {
    if (state.run) return session.onNotice(t.exportBusy);
    state.run = { format, goes: true, writing: false, share: 0 };
    const { run } = state;
    try {
      const parts = format === "csv" ? await csv(run, columns) : await written(run, format, columns, emptyForZero);
      if (run.goes) saveFile(fileName(ready.name, format), parts, kTypes[format]);
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
    if (run.format !== "csv") void session.tryAsk("cancelExport", {});
  }
  onUnmounted(cancel);
  return { running: computed(() => state.run?.format ?? null), percent, write, cancel };
}
