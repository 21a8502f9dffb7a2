// Groups of columns that their reader has folded. A folded group, such as 入库 with 数量, 单价 and 金额, keeps the
// one column that sums it up: its last amount; without one, as where a warehouse is kept by quantity alone, its
// first quantity; without either its first column. Only columns that are shown count, so that who has hidden the
// amounts reads the quantities. Folding hides and shows nothing by itself: a forbidden column takes part in
// nothing here either, and one that its reader has hidden stays hidden in a group that is opened again.
import type { GridColumn } from "./columns";
import { ColumnType } from "./formats";

// The groups that can be folded, and whether they are.
export type Groups = ReadonlyMap<string, boolean>;

function standsFor(group: readonly GridColumn[]): GridColumn {
  return group.findLast((column) => column.type === ColumnType.amount) ?? group.find((column) => column.type === ColumnType.quantity) ?? group[0]!;
}

// What is left of the columns shown, and what there is to fold: a group of one column is not.
export function foldGroups(shown: readonly GridColumn[], folded: ReadonlySet<string>): { columns: GridColumn[]; groups: Groups } {
  const members = new Map<string, GridColumn[]>();
  for (const column of shown) if (column.group !== "") members.set(column.group, [...(members.get(column.group) ?? []), column]);
  const several = [...members].filter(([, columns]) => columns.length > 1);
  const groups = new Map(several.map(([group]) => [group, folded.has(group)]));
  const columns = shown.filter((column) => !groups.get(column.group) || column === standsFor(members.get(column.group)!));
  return { columns, groups };
}

// Where a column is found after others were folded or hidden: itself, or what is left of its group; -1 where
// neither is.
export function placeAfter(columns: readonly GridColumn[], column: GridColumn): number {
  const at = columns.findIndex((one) => one.field === column.field);
  return at >= 0 || column.group === "" ? at : columns.findIndex((one) => one.group === column.group);
}
