// What a user does in an open form, sent as commands. A typed text goes out when its field is left, and before
// anything else that the form is told.
import type { Session } from "../session/Session";
import type { OpenForm } from "./model";

export class FormActions {
  private readonly typed = new Map<string, string>();
  private entering = 0;

  constructor(private readonly session: Session, readonly form: OpenForm) {}

  type(control: string, text: string): void {
    this.typed.set(control, text);
  }

  async flush(): Promise<void> {
    const sent = [...this.typed].map(([control, value]) => this.set(control, value));
    this.typed.clear();
    await Promise.all(sent);
  }

  async set(control: string, value: string | number | boolean): Promise<boolean> {
    return (await this.session.tryAsk("setValue", { form: this.form.form, control, value })) !== null;
  }

  async click(control: string, node?: string): Promise<void> {
    void this.flush();
    await this.session.tryAsk("click", { form: this.form.form, control, ...(node === undefined ? {} : { node }) });
  }

  async press(control: string, key: string): Promise<void> {
    void this.flush();
    await this.session.tryAsk("pressKey", { form: this.form.form, control, key });
  }

  async lookUp(control: string): Promise<void> {
    void this.flush();
    await this.session.tryAsk("lookUp", { form: this.form.form, control });
  }

  async step(control: string, by: number): Promise<void> {
    void this.flush();
    await this.session.tryAsk("step", { form: this.form.form, control, by });
  }

  async filterAction(action: "ok" | "quick" | "cancel" | "reset"): Promise<void> {
    if (action === "reset") this.typed.clear();
    else void this.flush();
    await this.session.tryAsk("filterAction", { form: this.form.form, action });
  }

  async scheme(action: "load" | "save" | "rename" | "delete" | "setStandard", scheme: string, to?: string): Promise<void> {
    if (action === "load") this.typed.clear();
    else void this.flush();
    await this.session.tryAsk("schemeAction", { form: this.form.form, action, scheme, ...(to === undefined ? {} : { to }) });
  }

  async enter(control: string): Promise<void> {
    this.entering += 1;
    await this.session.tryAsk("enter", { form: this.form.form, control });
    this.entering -= 1;
  }

  async leave(control: string): Promise<void> {
    const value = this.typed.get(control);
    this.typed.delete(control);
    if (value !== undefined) await this.set(control, value);
  }

  // While the user moves on, an answer to an earlier move does not pull the focus back.
  get followsFocus(): boolean {
    return this.entering === 0;
  }

  async close(): Promise<void> {
    this.typed.clear();
    await this.session.tryAsk("closeForm", { form: this.form.form });
  }
}
