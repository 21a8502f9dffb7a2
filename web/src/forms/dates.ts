// Dates as a clerk types them. A year is written in full: "0423" is no year but a slip.

const kShapes = [/^(\d{4})-(\d{1,2})-(\d{1,2})$/, /^(\d{4})\/(\d{1,2})\/(\d{1,2})$/, /^(\d{4})\.(\d{1,2})\.(\d{1,2})$/, /^(\d{4})(\d{2})(\d{2})$/];
const kFirstYear = 1900;
const kLastYear = 2199;

// "2026-11-05", or null for what is no day of the calendar or lies before `minimum`.
export function readDate(text: string, minimum = ""): string | null {
  const trimmed = text.trim();
  for (const shape of kShapes) {
    const found = shape.exec(trimmed);
    if (!found) continue;
    const [year, month, day] = [Number(found[1]), Number(found[2]), Number(found[3])];
    const date = new Date(Date.UTC(year, month - 1, day));
    const exists = date.getUTCMonth() === month - 1 && date.getUTCDate() === day;
    if (!exists || year < kFirstYear || year > kLastYear) return null;
    const written = date.toISOString().slice(0, 10);
    return minimum !== "" && written < minimum ? null : written;
  }
  return null;
}
