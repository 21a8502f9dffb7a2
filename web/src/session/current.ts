import { inject, provide, type InjectionKey } from "vue";
import type { Session } from "./Session";

const kSession: InjectionKey<Session> = Symbol("session");

export function provideSession(session: Session): void {
  provide(kSession, session);
}

export function useSession(): Session {
  const session = inject(kSession);
  if (!session) throw new Error("no session above this component");
  return session;
}
