// The columns of the report shown, and what the user's arranging of them keeps.
import { computed, shallowRef } from "vue";
import { applyMemory, memoryOf, moveColumn, standardColumns, type ColumnMemory, type GridColumn } from "../grid/columns";
import type { ReportReadyMessage } from "../protocol";
import type { Session } from "../session/Session";

export function useColumns(session: Session, ready: ReportReadyMessage) {
  const key = `columns.${ready.number}`;
  const standard = () => standardColumns(ready.columns.map((column) => ({ ...column, type: Number(column.type) })));
  const columns = shallowRef(standard());
  const shown = computed(() => columns.value.filter((column) => !column.hidden));

  async function recall(): Promise<void> {
    const { value } = await session.line.ask("getPreference", { key });
    columns.value = applyMemory(standard(), value as ColumnMemory | null);
  }
  function keep(): void {
    void session.tryAsk("setPreference", { key, value: memoryOf(columns.value) });
  }
  function change(next: GridColumn[], keepNow = true): void {
    columns.value = next;
    if (keepNow) keep();
  }
  return {
    columns, shown, recall, keep,
    resize: (column: GridColumn, width: number) => change(columns.value.map((one) => (one.field === column.field ? { ...one, width } : one)), false),
    move: (field: string, before: string | null) => change(moveColumn(columns.value, field, before)),
    hide: (field: string, hidden: boolean) => {
      if (hidden && shown.value.length === 1) return; // a grid without columns cannot be brought back by its heading
      change(columns.value.map((one) => (one.field === field ? { ...one, hidden } : one)));
    },
    reset: () => {
      columns.value = standard();
      void session.tryAsk("setPreference", { key, value: null });
    },
  };
}
