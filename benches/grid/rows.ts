// The same invented report for every grid: three columns of text, then groups of quantity, price and amount. A row
// is worked out when it is read, so that the grids and not the data are weighed.
export const kTexts = 3;
const kGroups = ["期初结存", "采购入库", "销售出库", "盘盈盘亏", "期末结存"];
const kSeconds = ["数量", "单价", "金额"];

export interface BenchColumn {
  key: string;
  group: string; // empty for a heading of one line
  title: string;
}

export function columnsOf(count: number): BenchColumn[] {
  return Array.from({ length: count }, (_, at) => {
    const key = `c${at}`;
    if (at < kTexts) return { key, group: "", title: ["商品代码", "商品名称", "规格型号"][at]! };
    const place = at - kTexts;
    return { key, group: `${kGroups[Math.floor(place / 3) % kGroups.length]!}${Math.floor(place / 15) + 1}`, title: kSeconds[place % 3]! };
  });
}

export const codeOf = (row: number): string => `01.${String(row).padStart(7, "0")}`;

export function valueOf(row: number, column: number): string | number {
  if (column === 0) return codeOf(row);
  if (column < kTexts) return column === 1 ? `商品${row % 997}` : `规格${row % 89}`;
  return (((row * 7919 + column * 104_729) % 1_000_000) - 100_000) / 100;
}

const kFormat = new Intl.NumberFormat("zh-CN", { minimumFractionDigits: 2, maximumFractionDigits: 2 });
export function textOf(value: string | number | undefined): string {
  return typeof value === "number" ? kFormat.format(value) : (value ?? "");
}

// Rows as objects for the grids that want them: one number each, the fields are read from it.
export function objectRows(rows: number, columns: number): Record<string, string | number>[] {
  class Row {
    constructor(readonly id: number) {}
  }
  for (let at = 0; at < columns; ++at) {
    Object.defineProperty(Row.prototype, `c${at}`, { enumerable: true, get(this: Row) { return valueOf(this.id, at); }, set() {} });
  }
  return Array.from({ length: rows }, (_, row) => new Row(row) as unknown as Record<string, string | number>);
}
