// How far rows are scrolled whose scroll bar is shorter than their way.
import { describe, expect, it } from "vitest";
import { RowWay } from "../src/grid/RowWay";
import { kMostScrollHeight } from "../src/grid/windowing";

const kHeight = 500;
const kRows = 1_000_000;
const kBarsWay = kMostScrollHeight - kHeight;
const kRowsWay = kRows * 26 - kHeight;

function scrolled(rows: number, ...bars: number[]): { host: { scrollTop: number }; way: RowWay } {
  const host = { scrollTop: 0 };
  const way = new RowWay(host, 26);
  way.measure(rows, kHeight);
  for (const bar of bars) {
    host.scrollTop = bar;
    way.follow();
  }
  return { host, way };
}

describe("the way of the rows", () => {
  it.each([
    { name: "of few rows is the bar's", rows: 1000, bars: [120, 5000], top: 5000 },
    { name: "goes by its share where the bar is pulled", rows: kRows, bars: [kBarsWay / 2], top: kRowsWay / 2 },
    { name: "goes as far as the wheel does", rows: kRows, bars: [kBarsWay / 2, kBarsWay / 2 + 120, kBarsWay / 2 + 240], top: kRowsWay / 2 + 240 },
    { name: "and as far back", rows: kRows, bars: [kBarsWay / 2, kBarsWay / 2 - 120], top: kRowsWay / 2 - 120 },
    { name: "ends with the bar", rows: kRows, bars: [kBarsWay], top: kRowsWay },
    { name: "ends with the bar that the wheel takes there", rows: kRows, bars: [kBarsWay - 200, kBarsWay], top: kRowsWay },
    { name: "begins with the bar", rows: kRows, bars: [300, 0], top: 0 },
  ])("$name", ({ rows, bars, top }) => expect(scrolled(rows, ...bars).way.top).toBe(Math.round(top)));

  it("does not skip rows where the wheel brings the bar to its end before them", () => {
    const steps = Array.from({ length: 50 }, (_, step) => kBarsWay - 20_000 + 400 * (step + 1));
    const { host, way } = scrolled(kRows, kBarsWay - 20_000, ...steps);
    expect(way.top).toBeLessThan(kRowsWay - kHeight);
    expect(host.scrollTop).toBeLessThan(kBarsWay);
    for (let step = 0; step < 60; ++step) {
      const before = way.top;
      host.scrollTop = Math.min(kBarsWay, host.scrollTop + 400);
      way.follow();
      expect(way.top - before).toBeLessThanOrEqual(400 + kHeight);
    }
    expect(way.top).toBe(kRowsWay);
  });

  it("has the bar put right when it rests, and stays where it is", () => {
    const { host, way } = scrolled(kRows, kBarsWay / 2, kBarsWay / 2 + 400);
    const { top } = way;
    way.settle();
    expect(host.scrollTop).toBe(Math.round((top / kRowsWay) * kBarsWay));
    way.follow();
    expect(way.top).toBe(top);
  });

  it("leads to a row exactly", () => {
    const { way } = scrolled(kRows);
    for (const row of [1, 12_345, 777_777]) {
      way.goTo(row * 26);
      way.follow();
      expect(way.top).toBe(row * 26);
    }
  });
});
