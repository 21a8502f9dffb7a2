import { describe, expect, it } from "vitest";
import { applyMemory, clampWidth, frozenCount, memoryOf, moveColumn, standardColumns } from "../src/grid/columns";

const describeColumn = (field: string, more: object = {}) => ({ caption: `${field}$`, second: "", type: 1, field, visible: true, forceHide: false, ...more });
const columns = standardColumns([
  describeColumn("FItemNumber"), describeColumn("FItemName"), describeColumn("FModel", { visible: false }),
  describeColumn("FSecret", { forceHide: true }), describeColumn("FQty", { type: 2 }),
]);
const fields = (list: { field: string }[]) => list.map((column) => column.field).join(" ");

describe("columns", () => {
  it("leave a forbidden column out and keep the others' places in the heading", () => {
    expect(fields(columns)).toBe("FItemNumber FItemName FModel FQty");
    expect(columns.map((column) => column.index)).toEqual([0, 1, 2, 4]);
  });
  it("start hidden where the report says so", () => expect(columns.map((column) => column.hidden)).toEqual([false, false, true, false]));
  it("come back as remembered", () => {
    const changed = moveColumn(columns, "FQty", "FItemName").map((column) => (column.field === "FModel" ? { ...column, hidden: false, width: 222 } : column));
    const back = applyMemory(columns, memoryOf(changed));
    expect(back).toEqual(changed);
  });
  it("put a column that is new beside its neighbour", () => {
    const memory = memoryOf(columns.filter((column) => column.field !== "FItemName"));
    memory.order.reverse();
    expect(fields(applyMemory(columns, memory))).toBe("FQty FModel FItemNumber FItemName");
  });
  it("never bring a forbidden column back", () => {
    const memory = { order: ["FSecret", "FQty"], widths: {}, hidden: { FSecret: false } };
    expect(fields(applyMemory(columns, memory))).not.toContain("FSecret");
  });
  it.each([
    { name: "to the front", field: "FQty", before: "FItemNumber", expected: "FQty FItemNumber FItemName FModel" },
    { name: "to the end", field: "FItemNumber", before: null, expected: "FItemName FModel FQty FItemNumber" },
    { name: "onto itself", field: "FQty", before: "FQty", expected: "FItemNumber FItemName FModel FQty" },
    { name: "an unknown one", field: "FNone", before: null, expected: "FItemNumber FItemName FModel FQty" },
  ])("move $name", ({ field, before, expected }) => expect(fields(moveColumn(columns, field, before))).toBe(expected));
  it.each([
    { name: "as many as the report freezes", frozen: 2, width: 1200, expected: 2 },
    { name: "fewer in a narrow view", frozen: 2, width: 300, expected: 1 },
    { name: "none", frozen: 0, width: 1200, expected: 0 },
  ])("freeze $name", ({ frozen, width, expected }) => expect(frozenCount(columns, frozen, width)).toBe(expected));
  it("keep widths in bounds", () => expect([clampWidth(1), clampWidth(99.6), clampWidth(5000)]).toEqual([36, 100, 800]));
});
