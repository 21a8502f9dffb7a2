// What the page's main thread works while something happens, in milliseconds of processor time: other programs on
// the machine do not count.
import type { OpenBrowser } from "./browser";

export interface Work {
  all: number;
  script: number;
  style: number;
  layout: number;
}

const kMetrics: Record<keyof Work, string> = { all: "TaskDuration", script: "ScriptDuration", style: "RecalcStyleDuration", layout: "LayoutDuration" };

export async function processorTime({ context, page }: OpenBrowser, act: () => Promise<void>): Promise<Work> {
  const devtools = await context.newCDPSession(page);
  await devtools.send("Performance.enable", { timeDomain: "threadTicks" });
  const spent = async () => new Map((await devtools.send("Performance.getMetrics")).metrics.map((metric) => [metric.name, 1000 * metric.value]));
  const before = await spent();
  await act();
  const after = await spent();
  await devtools.detach();
  const part = (name: keyof Work) => after.get(kMetrics[name])! - before.get(kMetrics[name])!;
  return { all: part("all"), script: part("script"), style: part("style"), layout: part("layout") };
}
