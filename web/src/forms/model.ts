import type { Control, FilterControl } from "../protocol";

// A dialog as it stands open: what the form says, and the filter control in it.
export interface OpenForm {
  form: number;
  name: string;
  caption: string;
  report: number;
  focus: string;
  controls: Control[];
  filter: FilterControl | null;
}

export function isFilterDialog(form: OpenForm): boolean {
  return form.name.startsWith("frmFirter");
}

// The windows for picking one row: a search text over a tree or list.
export function isLookup(form: OpenForm): boolean {
  return form.name === "frmLookup" || form.name === "frmBatchList";
}
