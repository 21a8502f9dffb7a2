import { describe, expect, it } from "vitest";
import { applyMemory, memoryOf, standardColumns, type ColumnDescription, type GridColumn } from "../src/grid/columns";
import { foldGroups, placeAfter } from "../src/grid/groups";

const column = (caption: string, second: string, type: number, field: string, more: Partial<ColumnDescription> = {}): ColumnDescription => ({ caption, second, type, field, visible: true, forceHide: false, ...more });
const kGoods = column("商品代码$", "", 1, "FItemNumber");
// Bands as the movement, stock and partner reports head them.
const kMovement = [column("本期收入+|+|+|", "数量", 2, "FInQty"), column("", "整件散包", 5, "FInPacks"), column("", "单价", 4, "FInPrice"), column("", "金额", 6, "FInAmount")];
const kByQuantity = [column("样品仓+|+|", "数量", 2, "F7FQty"), column("", "整件散包", 5, "F7FPacks"), column("", "辅助数量", 2, "F7FSecQty")];
const kTexts = [column("供应商+|", "代码", 1, "FSupplierNumber"), column("", "名称", 1, "FSupplierName")];
const kForbidden = [column("出库+|+|", "数量", 2, "FOutQty"), column("", "单价", 4, "FOutPrice"), column("", "金额", 6, "FOutAmount", { forceHide: true })];
const kFirstForbidden = [column("返利+|+|", "数量", 2, "FBackQty", { forceHide: true }), column("", "单价", 4, "FBackPrice"), column("", "金额", 6, "FBackAmount")];

const shownOf = (columns: GridColumn[]) => columns.filter((one) => !one.hidden);
const fields = (columns: readonly GridColumn[]) => columns.map((one) => one.field).join(" ");

describe("a folded group", () => {
  it.each([
    { name: "its amount", group: kMovement, left: "FInAmount" },
    { name: "its quantity where it has no amount", group: kByQuantity, left: "F7FQty" },
    { name: "its first column where it has neither", group: kTexts, left: "FSupplierNumber" },
    { name: "its quantity where the amount is forbidden", group: kForbidden, left: "FOutQty" },
    { name: "its quantity where the amount is hidden", group: kMovement.map((one) => ({ ...one, visible: one.field !== "FInAmount" })), left: "FInQty" },
    { name: "its amount where its first column is forbidden", group: kFirstForbidden, left: "FBackAmount" },
  ])("keeps $name", ({ group, left }) => {
    const shown = shownOf(standardColumns([kGoods, ...group, column("备注$", "", 1, "FNote")]));
    const key = shown[1]!.group;
    expect(fields(foldGroups(shown, new Set([key])).columns)).toBe(`FItemNumber ${left} FNote`);
    expect(fields(foldGroups(shown, new Set()).columns)).toBe(fields(shown));
  });

  it("leaves the others open", () => {
    const shown = standardColumns([kGoods, ...kMovement, ...kForbidden]);
    const { columns, groups } = foldGroups(shown, new Set(["FInQty"]));
    expect(fields(columns)).toBe("FItemNumber FInAmount FOutQty FOutPrice");
    expect([...groups]).toEqual([["FInQty", true], ["FOutQty", false]]);
  });

  it("of one shown column has nothing to fold", () => {
    const shown = shownOf(standardColumns(kMovement.map((one) => ({ ...one, visible: one.field === "FInPrice" }))));
    const { columns, groups } = foldGroups(shown, new Set(["FInQty"]));
    expect(fields(columns)).toBe("FInPrice");
    expect(groups.size).toBe(0);
  });

  it("whose columns were moved apart folds to one all the same", () => {
    const [goods, ...band] = standardColumns([kGoods, ...kMovement]);
    expect(fields(foldGroups([band[3]!, goods!, band[0]!, band[2]!], new Set(["FInQty"])).columns)).toBe("FInAmount FItemNumber");
  });
});

describe("the current cell", () => {
  const open = standardColumns([kGoods, ...kMovement]);
  const folded = foldGroups(open, new Set(["FInQty"])).columns;
  it.each([
    { name: "stays with its column", columns: folded, at: open[4]!, expected: 1 },
    { name: "goes to what is left of its group", columns: folded, at: open[1]!, expected: 1 },
    { name: "stays when the group opens", columns: open, at: open[4]!, expected: 4 },
    { name: "is lost with a column outside any group", columns: folded.slice(1), at: open[0]!, expected: -1 },
  ])("$name", ({ columns, at, expected }) => expect(placeAfter(columns, at)).toBe(expected));
});

describe("what is remembered", () => {
  const all = standardColumns([kGoods, ...kMovement, ...kByQuantity]);
  const without = standardColumns([kGoods, ...kMovement]);
  it("holds the folded groups", () => expect(memoryOf(all, new Set(["F7FQty"])).folded).toEqual(["F7FQty"]));
  it("keeps what it knows of a warehouse that this filter left out", () => {
    const before = memoryOf(all.map((one) => (one.field === "F7FPacks" ? { ...one, hidden: true, width: 77 } : one)), ["F7FQty"]);
    const after = memoryOf(without.map((one) => ({ ...one, width: 60 })), ["F7FQty"], before);
    const back = applyMemory(all, after);
    expect(back.find((one) => one.field === "F7FPacks")).toMatchObject({ hidden: true, width: 77 });
    expect(back[0]).toMatchObject({ field: "FItemNumber", width: 60 });
    expect(fields(back)).toBe(fields(all));
    expect(after.folded).toEqual(["F7FQty"]);
  });
});
