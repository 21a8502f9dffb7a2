// Writing what is seen to a file, all rows, with progress and cancel.
import { ref } from "vue";
import type { GridColumn } from "../grid/columns";
import type { ReportRows } from "../grid/ReportRows";
import type { Session } from "../session/Session";
import { csvHead, csvRows } from "./csv";

export function saveFile(name: string, parts: BlobPart[], type: string): void {
  const link = document.createElement("a");
  link.href = URL.createObjectURL(new Blob(parts, { type }));
  link.download = name;
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 10_000);
}

export function useExport(session: Session, rows: ReportRows, name: string) {
  const running = ref(false);
  const percent = ref(0);

  async function csv(columns: GridColumn[]): Promise<void> {
    if (running.value) return;
    running.value = true;
    percent.value = 0;
    const count = rows.rows;
    const parts = [csvHead(columns)];
    let read = 0;
    try {
      for await (const { values } of rows.readAll(0, count, columns.map((column) => column.index), () => running.value)) {
        parts.push(csvRows(columns, values));
        read += values.length;
        percent.value = Math.floor((100 * read) / Math.max(1, count));
      }
      if (running.value) saveFile(`${name}.csv`, parts, "text/csv;charset=utf-8");
    } catch (error) {
      session.tell(error);
    } finally {
      running.value = false;
    }
  }
  return { running, percent, csv, cancel: () => (running.value = false) };
}
