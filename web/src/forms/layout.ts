// From the controls of a form to rows on the page: a label before its field, a lookup button and a note ("contains")
// behind it, the end of a range beside its beginning, options and check boxes of a row together, frames around what they
// hold, and the buttons that end the form below.
import type { Control } from "../protocol";

export interface FieldCell {
  control: Control;
  label: Control | null;
  button: Control | null;
  spin: Control | null;
  note: Control | null;
}

export interface FieldRow {
  kind: "fields" | "choices" | "wide";
  cells: FieldCell[];
  beside: FieldCell[]; // options in the second half of a row of one field
}

export interface Section {
  frame: Control | null;
  heading: Control | null; // what the frame says of itself, over its fields
  rows: FieldRow[];
}

export interface FormLayout {
  sections: Section[];
  ending: Control[];
}

const kEnding = /^cmd(OK|Cacel|Cancel|Yes|No|Close|Exit)$/i;

interface Companions {
  labels: Map<string, Control>;
  buttons: Map<string, Control>;
  spins: Map<string, Control>;
  notes: Map<string, Control>;
  taken: Set<Control>;
}

function findCompanions(controls: readonly Control[]): Companions {
  const byName = new Map(controls.map((control) => [control.control.toLowerCase(), control]));
  const found: Companions = { labels: new Map(), buttons: new Map(), spins: new Map(), notes: new Map(), taken: new Set() };
  // A button that is given a place stands behind the field there, whatever its name.
  const placed = controls.filter((control) => control.kind === "button" && control.row > 0);
  const texts = controls.filter((control) => control.kind === "text");
  for (const control of controls) {
    if (control.kind === "label" || control.kind === "button" || control.kind === "frame") continue;
    const index = /\(\d+\)$/.exec(control.control)?.[0] ?? "";
    const label = byName.get(`lbl_${control.control}`.toLowerCase()) ?? (control.kind === "check" ? byName.get(`lblsign${index}`) : undefined);
    if (label) {
      found.labels.set(control.control, label);
      found.taken.add(label);
    }
    const stepped = control.kind === "spin" ? steppedBy(control, texts) : undefined;
    if (stepped) {
      found.spins.set(stepped.control, control);
      found.taken.add(control);
    }
    if (control.kind !== "text") continue;
    const note = byName.get(`lblcontained${index}`);
    if (note) {
      found.notes.set(control.control, note);
      found.taken.add(note);
    }
    const button =
      placed.find((each) => each.row === control.row && each.column === control.column) ?? byName.get(control.control.toLowerCase().replace(/^txt/, "cmd"));
    if (button?.kind !== "button" || kEnding.test(button.control)) continue;
    if (button.row > 0 && (button.row !== control.row || button.column !== control.column)) continue;
    found.buttons.set(control.control, button);
    found.taken.add(button);
  }
  return found;
}

// The text box that a pair of arrows steps: that of its name, or the last one before it.
function steppedBy(spin: Control, texts: readonly Control[]): Control | undefined {
  const wanted = spin.control.toLowerCase().replace(/^(updown|upd)/, "txt");
  return texts.find((text) => text.control.toLowerCase() === wanted) ?? texts.findLast((text) => text.tabIndex <= spin.tabIndex);
}

function isChoice(control: Control): boolean {
  return control.kind === "check" || control.kind === "option";
}

function isWide(control: Control): boolean {
  return control.kind === "tree" || control.kind === "progress" || control.kind === "label";
}

// Both ends of a date range stand in one row, like those of a code range.
function endsRange(control: Control, before: Control | undefined): boolean {
  return control.kind === "date" && before?.kind === "date" && control.name === before.name && control.index === before.index + 1 && control.index % 2 === 1;
}

// Two lists to choose from, or two texts to be contained, share a row.
function goesBeside(cell: FieldCell, before: FieldCell | undefined): boolean {
  if (!before || cell.control.row !== before.control.row + 1) return false;
  const { kind } = cell.control;
  return kind === before.control.kind && (kind === "combo" || (kind === "text" && cell.note !== null && before.note !== null));
}

// The direction of a sort stands beside the list of what is sorted by, which has a row of its own then.
function besideList(rows: FieldRow[]): boolean {
  const last = rows[rows.length - 1];
  if (last?.kind !== "fields" || last.cells[last.cells.length - 1]?.control.kind !== "combo") return false;
  if (last.cells.length > 1) rows.push({ kind: "fields", cells: last.cells.splice(1), beside: [] });
  return true;
}

function addToRows(rows: FieldRow[], cell: FieldCell): void {
  const { control } = cell;
  const last = rows[rows.length - 1];
  const lastCell = last?.cells[last.cells.length - 1]?.control;
  if (isChoice(control)) {
    if (control.kind === "option" && besideList(rows)) {
      rows[rows.length - 1]!.beside.push(cell);
      return;
    }
    // A term of a formula, which has its sign in front, has a row of its own.
    if (last?.kind === "choices" && lastCell?.kind === control.kind && !cell.label) last.cells.push(cell);
    else rows.push({ kind: "choices", cells: [cell], beside: [] });
    return;
  }
  if (isWide(control) || control.kind === "button") {
    const joins = control.kind === "button" && last?.kind === "wide" && lastCell?.kind === "button";
    if (joins) last.cells.push(cell);
    else rows.push({ kind: "wide", cells: [cell], beside: [] });
    return;
  }
  const open = last?.kind === "fields" && last.cells.length < 2 && last.beside.length === 0;
  const joins = open && ((control.column > 0 && lastCell?.row === control.row) || endsRange(control, lastCell) || goesBeside(cell, last.cells[0]));
  if (joins) last.cells.push(cell);
  else rows.push({ kind: "fields", cells: [cell], beside: [] });
}

// A frame around nothing but words is a note.
function standAlone(section: Section, words: Control): void {
  section.heading = null;
  addToRows(section.rows, { control: words, label: null, button: null, spin: null, note: null });
}

// Controls that are hidden for now keep out of the layout, so that nothing gapes.
export function layOut(controls: readonly Control[]): FormLayout {
  const companions = findCompanions(controls);
  const frames = new Map(controls.filter((c) => c.kind === "frame").map((c) => [c.control, c]));
  const sections: Section[] = [];
  const ending: Control[] = [];
  for (const control of controls) {
    if (!control.visible || companions.taken.has(control)) continue;
    if (control.kind === "frame" || control.kind === "embedded") continue;
    if (control.kind === "button" && kEnding.test(control.control)) {
      ending.push(control);
      continue;
    }
    if (control.kind === "label" && control.caption.trim() === "") continue;
    const frame = (control.frame && frames.get(control.frame)) || null;
    let section = sections.find((s) => s.frame === frame && (frame !== null || s === sections[sections.length - 1]));
    if (!section) sections.push((section = { frame, heading: null, rows: [] }));
    if (frame !== null && control.kind === "label" && section.heading === null) {
      section.heading = control;
      continue;
    }
    addToRows(section.rows, {
      control,
      label: shown(companions.labels.get(control.control)),
      button: shown(companions.buttons.get(control.control)),
      spin: shown(companions.spins.get(control.control)),
      note: shown(companions.notes.get(control.control)),
    });
  }
  for (const section of sections) if (section.heading && section.rows.length === 0) standAlone(section, section.heading);
  return { sections: sections.filter((section) => section.rows.length > 0), ending };
}

function shown(control: Control | undefined): Control | null {
  return control?.visible ? control : null;
}
