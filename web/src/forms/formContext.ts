import type { InjectionKey } from "vue";
import type { Control } from "../protocol";
import type { FormActions } from "./FormActions";

export interface FormContext {
  actions: FormActions;
  // Whether the dialog's filter control looks the field up by itself, since no button stands beside it.
  lookupByControl: (control: Control) => boolean;
}

export const kFormActions: InjectionKey<FormContext> = Symbol("form");
