// The address of a report with its filter: /r/10414?BItemNumber=01. Opening it sets the filter and runs.

export interface ReportAddress {
  number: string;
  filter: Record<string, string> | null; // null: ask for it in the dialog
}

// What a filter holds for the system's own purposes is left out of the address: it is set anew on opening.
const kInner = new Set(["OK", "UserID", "RptID", "DataRightWhere", "InvoiceStyle", "ShowTypeValue"]);

export function readAddress(path: string, query: string): ReportAddress | null {
  const found = /^\/r\/(\w+)\/?$/.exec(path);
  if (!found) return null;
  const values = [...new URLSearchParams(query)];
  return { number: found[1]!, filter: values.length > 0 ? Object.fromEntries(values) : null };
}

export function writeAddress({ number, filter }: ReportAddress): string {
  const query = new URLSearchParams();
  for (const [key, value] of Object.entries(filter ?? {})) if (!kInner.has(key)) query.set(key, value);
  const text = query.toString();
  return `/r/${number}${text ? `?${text}` : ""}`;
}
