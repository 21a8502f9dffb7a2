// The columns of the report shown, and what the user's arranging of them keeps.
import { computed, shallowRef } from "vue";
import { applyMemory, memoryOf, moveColumn, standardColumns, type ColumnMemory, type GridColumn } from "../grid/columns";
import { foldGroups } from "../grid/groups";
import type { ReportReadyMessage } from "../protocol";
import type { Session } from "../session/Session";

export function useColumns(session: Session, ready: ReportReadyMessage) {
  const key = `columns.${ready.number}`;
  const standard = () => standardColumns(ready.columns.map((column) => ({ ...column, type: Number(column.type) })));
  const columns = shallowRef(standard());
  const folded = shallowRef<ReadonlySet<string>>(new Set());
  const arranged = computed(() => foldGroups(columns.value.filter((column) => !column.hidden), folded.value));
  const shown = computed(() => arranged.value.columns);
  const groups = computed(() => arranged.value.groups);
  let memory: ColumnMemory | null = null;

  async function recall(): Promise<void> {
    const { value } = await session.line.ask("getPreference", { key });
    memory = value as ColumnMemory | null;
    columns.value = applyMemory(standard(), memory);
    folded.value = new Set(memory?.folded);
  }
  function keep(): void {
    memory = memoryOf(columns.value, folded.value, memory);
    void session.tryAsk("setPreference", { key, value: memory });
  }
  function setFolded(group: string, fold: boolean): void {
    const next = new Set(folded.value);
    if (fold) next.add(group);
    else next.delete(group);
    folded.value = next;
  }
  function change(next: GridColumn[], keepNow = true): void {
    columns.value = next;
    if (keepNow) keep();
  }
  return {
    columns, shown, groups, recall, keep,
    fold: (which: Iterable<string>, fold: boolean) => {
      for (const group of which) setFolded(group, fold);
      keep();
    },
    resize: (column: GridColumn, width: number) => change(columns.value.map((one) => (one.field === column.field ? { ...one, width } : one)), false),
    move: (field: string, before: string | null) => change(moveColumn(columns.value, field, before)),
    hide: (fields: readonly string[], hidden: boolean) => {
      const wanted = new Set(fields);
      const next = columns.value.map((one) => (wanted.has(one.field) ? { ...one, hidden } : one));
      if (next.every((one) => one.hidden)) return; // a grid without columns cannot be brought back by its heading
      // Who asks for a column wants to see it.
      if (!hidden) for (const one of next) if (wanted.has(one.field)) setFolded(one.group, false);
      change(next);
    },
    reset: () => {
      columns.value = standard();
      folded.value = new Set();
      memory = null;
      void session.tryAsk("setPreference", { key, value: null });
    },
  };
}
