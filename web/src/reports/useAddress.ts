// The address line follows the report shown, and the back button follows the address line.
import { nextTick, onMounted, onUnmounted, watch } from "vue";
import type { ReportReadyMessage } from "../protocol";
import type { Session } from "../session/Session";
import { t } from "../texts";
import { readAddress, writeAddress } from "./address";

export function addressOf(ready: ReportReadyMessage): string {
  const filter = Object.fromEntries(Object.entries(ready.filter).flatMap(([key, value]) => (value === null || value === "" ? [] : [[key, String(value)]])));
  return writeAddress({ number: ready.number, filter });
}

export function useAddress(session: Session) {
  const { state } = session;
  let following = 0; // the page goes where the address says: the full address takes the place of the one given

  const present = () => {
    const tab = state.tabs.find((one) => one.report === state.active);
    return tab ? addressOf(tab.ready) : "/";
  };

  async function openPresent(): Promise<void> {
    const here = `${location.pathname}${location.search}`;
    const open = state.tabs.find((tab) => addressOf(tab.ready) === here);
    if (open) {
      state.active = open.report;
      return;
    }
    const address = readAddress(location.pathname, location.search);
    if (!address) {
      state.active = 0;
      if (location.pathname !== "/") state.failure = { programmaticId: "", text: t.unknownAddress };
      return;
    }
    const report = session.findReport(address.number);
    if (!report) {
      state.active = 0;
      state.failure = { programmaticId: "", text: t.unknownReport(address.number) };
    } else await session.openReport(report, address.filter);
  }

  watch(present, (address) => {
    if (state.line !== "ready" || address === `${location.pathname}${location.search}`) return;
    if (following > 0) history.replaceState(null, "", address);
    else history.pushState(null, "", address);
  });

  async function follow(): Promise<void> {
    if (state.line !== "ready" || state.windows.length > 0) return;
    following += 1;
    try {
      await openPresent();
      await nextTick();
    } finally {
      following -= 1;
    }
  }
  onMounted(() => window.addEventListener("popstate", follow));
  onUnmounted(() => window.removeEventListener("popstate", follow));
  return { follow };
}
