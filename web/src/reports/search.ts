// Finding a report by name, number or the initials of its pinyin.
import { pinyin } from "pinyin-pro";
import type { ReportClass } from "../protocol";

const known = new Map<string, string>();

export function initialsOf(text: string): string {
  let initials = known.get(text);
  if (initials === undefined) {
    initials = pinyin(text, { pattern: "first", toneType: "none", type: "array" }).join("").toLowerCase();
    known.set(text, initials);
  }
  return initials;
}

export function matchesSearch(report: Pick<ReportClass, "name" | "number" | "className">, typed: string): boolean {
  const wanted = typed.trim().toLowerCase();
  if (wanted === "") return true;
  return [report.name, report.number, report.className, initialsOf(report.name)].some((text) => text.toLowerCase().includes(wanted));
}
