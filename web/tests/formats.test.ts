import { describe, expect, it } from "vitest";
import { ColumnType, formatCell, numberOf, standsOut, type Cell } from "../src/grid/formats";
import { addDecimals, totalOf } from "../src/grid/sums";

describe("a figure stands out", () => {
  it.each([
    { name: "below zero", field: "FQty", type: ColumnType.quantity, value: -1, expected: "negative" },
    { name: "an exact amount below zero", field: "FBal", type: ColumnType.amount, value: "-0.5", expected: "negative" },
    { name: "days past the date", field: "Overdays", type: ColumnType.quantity, value: 3, expected: "over" },
    { name: "not days left", field: "Overdays", type: ColumnType.quantity, value: -3, expected: "" },
    { name: "not zero", field: "FQty", type: ColumnType.quantity, value: 0, expected: "" },
    { name: "not a code", field: "FItemNumber", type: ColumnType.text, value: "-1", expected: "" },
    { name: "not what is missing", field: "FQty", type: ColumnType.quantity, value: null, expected: "" },
  ])("$name", ({ field, type, value, expected }) => expect(standsOut({ field, type }, value)).toBe(expected));
});

const precision = { quantity: 3, price: 4, amount: 2 };

describe("a cell reads by its column's type", () => {
  const cases: { name: string; value: Cell | undefined; type: number; zero?: boolean; text: string }[] = [
    { name: "quantity", value: 1234.5, type: ColumnType.quantity, text: "1,234.500" },
    { name: "price", value: 0.12345, type: ColumnType.price, text: "0.1235" },
    { name: "amount as exact text", value: "900719925474099.1234", type: ColumnType.amount, text: "900,719,925,474,099.12" },
    { name: "negative", value: -12, type: ColumnType.amount, text: "-12.00" },
    { name: "no negative zero", value: -0.0001, type: ColumnType.amount, text: "0.00" },
    { name: "zero shown", value: 0, type: ColumnType.quantity, text: "0.000" },
    { name: "zero left out", value: 0, type: ColumnType.quantity, zero: true, text: "" },
    { name: "exact zero left out", value: "0.0000", type: ColumnType.amount, zero: true, text: "" },
    { name: "a code keeps its zeros", value: "0010", type: ColumnType.text, text: "0010" },
    { name: "packages are text", value: "3箱2个", type: ColumnType.packages, text: "3箱2个" },
    { name: "a text in a number column stays", value: "不适用", type: ColumnType.quantity, text: "不适用" },
    { name: "no value", value: null, type: ColumnType.quantity, text: "" },
    { name: "not fetched yet", value: undefined, type: ColumnType.quantity, text: "" },
  ];
  it.each(cases)("$name", ({ value, type, zero = false, text }) => expect(formatCell(value, type, precision, zero)).toBe(text));
});

describe("numbers", () => {
  it.each([["12.5000", 12.5], ["-3", -3], ["", null], ["1e5", null], [7, 7], [null, null]] as [Cell, number | null][])("%s", (value, expected) => {
    expect(numberOf(value)).toBe(expected);
  });
  it.each([
    { texts: ["0.1", "0.2"], sum: "0.3" },
    { texts: ["922337203685477.5807", "0.0001"], sum: "922337203685477.5808" },
    { texts: ["-1.5", "1"], sum: "-0.5" },
    { texts: [], sum: "0" },
    { texts: ["1e2"], sum: "100" },
  ])("sum of $texts", ({ texts, sum }) => expect(addDecimals(texts)).toBe(sum));
  it("averages over fields", () => {
    const sums = [{ field: "FQty", count: 3, sum: "6", average: 2 }, { field: "FBal", count: 1, sum: "2", average: 2 }];
    expect(totalOf(sums)).toEqual({ count: 4, sum: "8", average: 2 });
    expect(totalOf([])).toEqual({ count: 0, sum: "0", average: 0 });
  });
});
