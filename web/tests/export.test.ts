// Files of a report: their names, their bytes, and the way to them through the session.
import { afterEach, beforeEach, describe, expect, it, vi } from "vitest";
import { standardColumns } from "../src/grid/columns";
import { bytesOf, fileName, useExport } from "../src/reports/useExport";
import { preferences } from "../src/session/preferences";
import type { Session } from "../src/session/Session";
import { apply, newState } from "../src/session/state";

describe("a file's name", () => {
  it.each([
    ["商品超储短缺表", "xlsx", "商品超储短缺表.xlsx"], ["收/发:表?", "pdf", "收_发_表_.pdf"], ['a"b<c>|d\\e*', "csv", "a_b_c__d_e_.csv"], [" ", "csv", "report.csv"],
  ] as const)("%s as %s", (name, format, expected) => expect(fileName(name, format)).toBe(expected));
});

it("bytes come out of base64 as they went in", () => expect([...bytesOf("//79AA==")]).toEqual([255, 254, 253, 0]));

describe("an export", () => {
  const columns = standardColumns(["FItemNumber", "FQty"].map((field) => ({ caption: `${field}$`, second: "", type: 1, field, visible: true, forceHide: false })));
  const saved: { name: string; blob: Blob }[] = [];
  const notices: string[] = [];
  let said: { type: string; fields: Record<string, unknown> }[] = [];
  let answer: (type: string, fields: Record<string, unknown>) => unknown = () => ({});
  const state = newState();
  const ask = async (type: string, fields: Record<string, unknown>) => {
    said.push({ type, fields });
    return answer(type, fields);
  };
  const report = { report: 7, name: "表" };
  const makeSession = () => ({ state, line: { ask }, tryAsk: ask, tell: (error: Error) => notices.push(error.message), onNotice: (text: string) => notices.push(text) }) as unknown as Session;
  let exporter: ReturnType<typeof useExport>;

  beforeEach(() => {
    saved.length = notices.length = 0;
    said = [];
    let made: Blob | null = null;
    URL.createObjectURL = (blob) => {
      made = blob as Blob;
      return "blob:1";
    };
    URL.revokeObjectURL = () => {};
    vi.spyOn(HTMLAnchorElement.prototype, "click").mockImplementation(function (this: HTMLAnchorElement) {
      saved.push({ name: this.download, blob: made! });
    });
    exporter = useExport(makeSession());
  });
  afterEach(() => vi.restoreAllMocks());

  it("asks for what is seen and puts the parts together", async () => {
    answer = (type, fields) => {
      if (type === "exportReport") return { export: 3, size: 4 };
      return fields["start"] === 0 ? { data: btoa("%PD"), more: true } : { data: btoa("F"), more: false };
    };
    Object.assign(preferences, { paper: "B5", orientation: "landscape" });
    await exporter.write(report, "pdf", columns, true);
    expect(said).toEqual([
      { type: "exportReport", fields: { report: 7, format: "pdf", fields: ["FItemNumber", "FQty"], emptyForZero: true, paper: "B5", orientation: "landscape" } },
      { type: "readExport", fields: { export: 3, start: 0 } },
      { type: "readExport", fields: { export: 3, start: 3 } },
    ]);
    expect(saved.map((one) => [one.name, one.blob.size, one.blob.type])).toEqual([["表.pdf", 4, "application/pdf"]]);
    expect(exporter.running.value).toBeNull();
  });
  it("tells how far it is, one file at a time", async () => {
    let finish: (reply: unknown) => void = () => {};
    answer = (type) => (type === "exportReport" ? new Promise((resolve) => (finish = resolve)) : { data: "", more: false });
    const done = exporter.write(report, "xlsx", columns, false);
    expect(exporter.percent.value).toBe(0);
    apply(state, { type: "exportProgress", report: 7, done: 50, all: 100 });
    expect(exporter.percent.value).toBe(45);
    await exporter.write(report, "csv", columns, false);
    expect(notices).toHaveLength(1);
    finish({ export: 1, size: 0 });
    await done;
    expect(saved).toHaveLength(1);
  });
  it("that is cancelled saves nothing and leaves no file behind", async () => {
    let finish: (reply: unknown) => void = () => {};
    answer = (type) => (type === "exportReport" ? new Promise((resolve) => (finish = resolve)) : {});
    const done = exporter.write(report, "xlsx", columns, false);
    exporter.cancel();
    expect(exporter.running.value).toBeNull();
    finish({ export: 1, size: 9 });
    await done;
    expect(said.map((one) => one.type)).toEqual(["exportReport", "cancelExport"]);
    expect(saved).toEqual([]);
  });
  it("that fails says why", async () => {
    answer = () => { throw new Error("没有空间"); };
    await exporter.write(report, "xlsx", columns, false);
    expect(notices).toEqual(["没有空间"]);
    expect(exporter.running.value).toBeNull();
  });
  it("is one and the same wherever the session is at hand", () => {
    const session = makeSession();
    expect(useExport(session)).toBe(useExport(session));
    expect(useExport(makeSession())).not.toBe(useExport(session));
  });
});
