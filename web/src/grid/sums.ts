// Sums of exact decimal texts for the status line: amounts never pass through a double.
import type { FieldSum } from "../protocol";

const kPlaces = 10;

function scaled(text: string): bigint | null {
  const found = /^(-?)(\d+)(?:\.(\d+))?$/.exec(text);
  if (!found) return null;
  const digits = BigInt(found[2]! + (found[3] ?? "").slice(0, kPlaces).padEnd(kPlaces, "0"));
  return found[1] ? -digits : digits;
}

export function addDecimals(texts: readonly string[]): string {
  let total = 0n;
  for (const text of texts) total += scaled(text) ?? scaled(Number(text).toFixed(kPlaces)) ?? 0n;
  const digits = (total < 0n ? -total : total).toString().padStart(kPlaces + 1, "0");
  const fraction = digits.slice(-kPlaces).replace(/0+$/, "");
  return `${total < 0n ? "-" : ""}${digits.slice(0, -kPlaces)}${fraction ? `.${fraction}` : ""}`;
}

export interface Total {
  count: number;
  sum: string;
  average: number;
}

export function totalOf(sums: readonly FieldSum[]): Total {
  const count = sums.reduce((all, one) => all + one.count, 0);
  const sum = addDecimals(sums.map((one) => one.sum));
  return { count, sum, average: count === 0 ? 0 : Number(sum) / count };
}
