// What the page keeps for its user, on the server, so that it is the same at every desk.
import { reactive } from "vue";
import type { ExportReportCommand } from "../protocol";
import type { Session } from "./Session";

export interface Preferences {
  favourites: string[];
  recent: string[];
  theme: "light" | "dark" | "";
  zeroEmpty: boolean;
  hintDone: boolean;
  listHidden: boolean;
  paper: string; // of pages for paper
  orientation: NonNullable<ExportReportCommand["orientation"]>;
}

const kKey = "page";
const kMostRecent = 6;

export const preferences: Preferences = reactive({ favourites: [], recent: [], theme: "", zeroEmpty: false, hintDone: true, listHidden: false, paper: "A4", orientation: "auto" });

export async function loadPreferences(session: Session): Promise<void> {
  const { value } = await session.line.ask("getPreference", { key: kKey });
  Object.assign(preferences, { hintDone: false }, value ?? {});
}

export function keepPreferences(session: Session): void {
  session.line.ask("setPreference", { key: kKey, value: { ...preferences } }).catch((error: unknown) => session.tell(error));
}

export function toggleFavourite(session: Session, number: string): void {
  const { favourites } = preferences;
  preferences.favourites = favourites.includes(number) ? favourites.filter((one) => one !== number) : [...favourites, number];
  keepPreferences(session);
}

export function rememberRecent(session: Session, number: string): void {
  if (preferences.recent[0] === number) return;
  preferences.recent = [number, ...preferences.recent.filter((one) => one !== number)].slice(0, kMostRecent);
  keepPreferences(session);
}
