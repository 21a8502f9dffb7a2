// How a value is shown, by the column type code that the report hands over.

export type Cell = string | number | boolean | null;

export const ColumnType = { text: 1, quantity: 2, price: 4, packages: 5, amount: 6 } as const;

export interface Precision {
  quantity: number;
  price: number;
  amount: number;
}

export const kStandardPrecision: Precision = { quantity: 2, price: 2, amount: 2 };

export function isNumeric(type: number): boolean {
  return type === ColumnType.quantity || type === ColumnType.price || type === ColumnType.amount;
}

const formatters = new Map<number, Intl.NumberFormat>();

function formatter(places: number): Intl.NumberFormat {
  let found = formatters.get(places);
  if (!found) {
    found = new Intl.NumberFormat("zh-CN", { minimumFractionDigits: places, maximumFractionDigits: places });
    formatters.set(places, found);
  }
  return found;
}

function placesOf(type: number, precision: Precision): number {
  if (type === ColumnType.quantity) return precision.quantity;
  return type === ColumnType.price ? precision.price : precision.amount;
}

const kDecimal = /^-?\d+(\.\d+)?$/;

// Days past a due date warn when there are some; those still left to it are below zero and do not.
const kWarnAbove: ReadonlySet<string> = new Set(["Overdays"]);

// How a figure stands out: below zero it does, by its minus and by colour, but for the fields that warn above,
// which get a plus to tell it without the colour too.
export function standsOut(column: { field: string; type: number }, value: Cell | undefined): "" | "negative" | "over" {
  if (!isNumeric(column.type)) return "";
  const number = numberOf(value) ?? 0;
  if (kWarnAbove.has(column.field)) return number > 0 ? "over" : "";
  return number < 0 ? "negative" : "";
}

// A value as a number, null when it is none. Exact amounts arrive as text.
export function numberOf(value: Cell | undefined): number | null {
  if (typeof value === "number") return value;
  return typeof value === "string" && kDecimal.test(value) ? Number(value) : null;
}

// What the cell reads. An exact amount is formatted from its text, so that no digit passes through a double.
export function formatCell(value: Cell | undefined, type: number, precision: Precision, emptyForZero: boolean): string {
  if (value === null || value === undefined) return "";
  if (!isNumeric(type)) return String(value);
  const number = numberOf(value);
  if (number === null) return String(value);
  if (number === 0 && emptyForZero) return "";
  const text = formatter(placesOf(type, precision)).format(value as number);
  return /^-[0.,]*$/.test(text) ? text.slice(1) : text;
}

// The plain number for a spreadsheet: no thousands separators.
export function plainCell(value: Cell | undefined): string {
  return value === null || value === undefined ? "" : String(value);
}
