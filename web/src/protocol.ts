// Made by tools/protocol_types from browser/protocol/messages.json; change it there.

export const protocolVersion = 1;

/** One control of a form. `control` is its name as in data-name. What a kind does not have is left out. */
export interface Control {
  control: string;
  name: string;
  index: number;
  kind: "text" | "combo" | "check" | "option" | "button" | "label" | "date" | "spin" | "tree" | "progress" | "frame" | "embedded";
  caption: string;
  tag: string;
  value?: string | number | boolean | null;
  enabled: boolean;
  visible: boolean;
  tabIndex: number;
  takesFocus: boolean;
  frame: string;
  row: number;
  column: number;
  columns: number;
  readOnly?: boolean;
  minDate?: string;
  items?: ListItem[];
  listIndex?: number;
  nodes?: TreeNode[];
  min?: number;
  max?: number;
}

/** An entry of a combo as the form holds it. `text` ends before the blanks that push a hidden sort key out of sight. */
export interface ListItem {
  text: string;
  data: number;
}

/** In the order of adding; a parent stands before its children and is empty at the root. `color` is red in the lowest byte, 0 the normal one. */
export interface TreeNode {
  key: string;
  parent: string;
  text: string;
  tag: string;
  checked: boolean;
  color: number;
  image: string;
}

/** What changed of one control; everything else of it is as it was. `items` and `nodes` come whole. */
export interface ControlChange {
  control: string;
  caption?: string;
  tag?: string;
  value?: string | number | boolean | null;
  enabled?: boolean;
  visible?: boolean;
  readOnly?: boolean;
  minDate?: string;
  items?: ListItem[];
  listIndex?: number;
  nodes?: TreeNode[];
  min?: number;
  max?: number;
}

/** The filter control of a dialog. With `buttons` the page draws OK, Cancel and, when `quick` is not empty, a quick query button for the frame of that name; without them the form has its own cmdOK and cmdCacel. */
export interface FilterControl {
  name: string;
  kind: "TOVRptFilter" | "ReportFilter";
  buttons: boolean;
  title: string;
  quick: string;
  dateFrame: string;
  itemFrame: string;
  schemes: string[];
  current: string;
  standard: string;
}

/** `available` is false for a class that this component names but does not make. */
export interface ReportClass {
  programmaticId: string;
  className: string;
  number: string;
  name: string;
  available: boolean;
}

/** One subsystem. */
export interface ReportGroup {
  name: string;
  reports: ReportClass[];
}

export interface TitleLine {
  caption: string;
  index: number;
}

/** A column description as the report gives it, captions with the marks of the caption language. `type` is the code as text (1 text, 2 quantity, 4 price, 5 packages, 6 amount). `fieldType` is what the rows hold under `field`, empty when they have no such field. A column with `forceHide` is neither shown nor offered. */
export interface Column {
  caption: string;
  second: string;
  type: string;
  field: string;
  visible: boolean;
  forceHide: boolean;
  fieldType: "text" | "integer" | "double" | "currency" | "date" | "boolean" | "";
}

/** The item list that a ledger stands in; only reports with item navigation have it. */
export interface Ledger {
  position: number;
  pages: boolean;
}

export interface SortKey {
  field: string;
  descending: boolean;
}

/** A row of base data; `detail` false is a group, `disabled` is out of use. */
export interface LookupRow {
  id: number;
  parent: number;
  number: string;
  shortNumber: string;
  name: string;
  detail: boolean;
  disabled: boolean;
}

/** How many detail rows of a class of base data the user may see. */
export interface RightShare {
  dataType: number;
  name: string;
  visible: number;
  all: number;
}

/** Of the cells that hold a number; `sum` is exact text for money. */
export interface FieldSum {
  field: string;
  count: number;
  sum: string;
  average: number;
}

/** null for a field without a value; money comes as exact decimal text, a date as YYYY-MM-DD, optionally with HH:MM:SS. */
export type Cell = string | number | boolean | null;

/** The first message. `token` is the one that /api/start or /api/login gave. `session` names a session of the same login to come back to; when it is gone a new one is made. */
export interface HelloCommand {
  type: 'hello';
  id?: number;
  token: string;
  protocol: number;
  session?: string;
}

/** The classes by subsystem. */
export interface ListReportsCommand {
  type: 'listReports';
  id?: number;
}

/** Makes a report object. Without `filter` its dialog comes (formOpened …), and after its end reportReady or reportFailed. With `filter` (field key → text, as in the address line) the dialog is filled and confirmed without being shown. `noFilter` runs a report that allows it without conditions. `done` comes when all this is over. */
export interface OpenReportCommand {
  type: 'openReport';
  id?: number;
  programmaticId: string;
  filter?: Record<string, string>;
  noFilter?: boolean;
}

/** Shows the dialog of an open report again and runs the report when it is confirmed. */
export interface ShowFilterCommand {
  type: 'showFilter';
  id?: number;
  report: number;
}

/** Fetches again with the present filter. */
export interface RefreshCommand {
  type: 'refresh';
  id?: number;
  report: number;
}

/** Ends the report object and frees its rows. */
export interface CloseReportCommand {
  type: 'closeReport';
  id?: number;
  report: number;
}

/** Drill-down from a row (its position in the present view). A detail comes as reportReady with `parent`; a row without one only gets done. */
export interface OpenDetailCommand {
  type: 'openDetail';
  id?: number;
  report: number;
  row: number;
}

/** Walks the item list of a ledger; reportReady brings the new page. */
export interface MoveItemCommand {
  type: 'moveItem';
  id?: number;
  report: number;
  to: "first" | "previous" | "next" | "last";
}

/** Turns a ledger to the item of a number. */
export interface FindItemCommand {
  type: 'findItem';
  id?: number;
  report: number;
  number: string;
}

/** The user changed a control: text, 0 or 1 of a check, true of an option, the index of a combo, YYYY-MM-DD of a date. Send it on leaving a text field and at once for the others; in the search field of a lookup at once too. A refused value is answered with an error of code `refused`, and formChanged restores what stands. */
export interface SetValueCommand {
  type: 'setValue';
  id?: number;
  form: number;
  control: string;
  value: string | number | boolean;
}

/** A button, a check box, an option button, or the box of a tree node. */
export interface ClickCommand {
  type: 'click';
  id?: number;
  form: number;
  control: string;
  node?: string;
}

/** F7 and F8 look up, Enter and Tab move on; or one character. Set the typed value first. */
export interface PressKeyCommand {
  type: 'pressKey';
  id?: number;
  form: number;
  control: string;
  key: string;
}

/** The focus came into a control. */
export interface EnterCommand {
  type: 'enter';
  id?: number;
  form: number;
  control: string;
}

/** The focus left a control. */
export interface LeaveCommand {
  type: 'leave';
  id?: number;
  form: number;
  control: string;
}

/** The arrows of a spin button: 1 or -1. */
export interface StepCommand {
  type: 'step';
  id?: number;
  form: number;
  control: string;
  by: number;
}

/** The window's own close button, or Esc. */
export interface CloseFormCommand {
  type: 'closeForm';
  id?: number;
  form: number;
}

/** What the filter control itself offers: its OK, quick query and Cancel buttons (with `buttons`), and for all dialogs the reset of the fields. */
export interface FilterActionCommand {
  type: 'filterAction';
  id?: number;
  form: number;
  action: "ok" | "quick" | "cancel" | "reset";
}

/** The filter control's own lookup for a field (dialogs with `buttons`, fields without a lookup button of their own). A lookup form opens; the pick stands in the field afterwards. */
export interface LookUpCommand {
  type: 'lookUp';
  id?: number;
  form: number;
  control: string;
}

/** Saved schemes of the dialog. load, save, delete and setStandard take `scheme`; rename also `to`. setStandard with an empty scheme takes the mark away. formChanged brings the new list. */
export interface SchemeActionCommand {
  type: 'schemeAction';
  id?: number;
  form: number;
  action: "load" | "save" | "rename" | "delete" | "setStandard";
  scheme: string;
  to?: string;
}

/** The button of a message box. */
export interface AnswerCommand {
  type: 'answer';
  id?: number;
  message: number;
  answer: "ok" | "cancel" | "yes" | "no";
}

/** Ends the fetch at its next step; the report then fails with the text of a cancelled fetch. */
export interface CancelProgressCommand {
  type: 'cancelProgress';
  id?: number;
  progress: number;
}

/** A block of the present view: `start` from 0, at most 500 rows, the fields wanted in their order. */
export interface FetchRowsCommand {
  type: 'fetchRows';
  id?: number;
  report: number;
  start: number;
  count: number;
  fields: string[];
}

/** Order and quick filter of a report's rows. An empty `sort` is the report's own order. `text` keeps rows in which it occurs in one of `fields` (all shown columns). Summary rows stay behind the rows that they sum while sorting, and stay while filtering only when a row of theirs stays. */
export interface SetViewCommand {
  type: 'setView';
  id?: number;
  report: number;
  sort: SortKey[];
  text?: string;
  fields?: string[];
}

/** The next row of the view from `start`, forwards or back, in which the text occurs in one of the fields. */
export interface FindCommand {
  type: 'find';
  id?: number;
  report: number;
  text: string;
  start: number;
  back?: boolean;
  fields: string[];
}

/** Of a block of rows of the view, `count` rows from `start`. */
export interface SumCommand {
  type: 'sum';
  id?: number;
  report: number;
  start: number;
  count: number;
  fields: string[];
}

/** Where a cell comes from. */
export interface ExplainCommand {
  type: 'explain';
  id?: number;
  report: number;
  row: number;
  field: string;
}

/** Base data for suggestions and trees: rows in which the text occurs, or all; `withGroups` also groups. */
export interface QueryLookupCommand {
  type: 'queryLookup';
  id?: number;
  dataType: number;
  text: string;
  withGroups?: boolean;
  limit?: number;
}

/** What the page kept for this user under a key; null when nothing is. */
export interface GetPreferenceCommand {
  type: 'getPreference';
  id?: number;
  key: string;
}

/** Keeps any JSON value up to 64 KB for this user; null removes it. */
export interface SetPreferenceCommand {
  type: 'setPreference';
  id?: number;
  key: string;
  value: unknown;
}

/** Ends the worker of the session, also one that hangs, and starts a new one. Answered by the parent. */
export interface RestartCommand {
  type: 'restart';
  id?: number;
}

/** Keeps an idle session awake. Answered by the parent. */
export interface PingCommand {
  type: 'ping';
  id?: number;
}

/** The session is ready. After `resumed` the open forms, boxes and reports follow as if they had just come. `companyName` may be empty. Decimals are of quantities, prices and amounts. */
export interface WelcomeMessage {
  type: 'welcome';
  re?: number;
  protocol: number;
  session: string;
  resumed: boolean;
  user: string;
  restricted: boolean;
  companyName: string;
  quantityDecimals: number;
  priceDecimals: number;
  amountDecimals: number;
  appType: number;
}

export interface ReportsMessage {
  type: 'reports';
  re?: number;
  groups: ReportGroup[];
}

/** A form came up on top of what is there. `report` is 0 for a lookup form. Controls come in tab order. */
export interface FormOpenedMessage {
  type: 'formOpened';
  re?: number;
  form: number;
  name: string;
  caption: string;
  report: number;
  focus: string;
  controls: Control[];
  filter: FilterControl | null;
}

/** Only what changed. A changed `filter` comes whole. */
export interface FormChangedMessage {
  type: 'formChanged';
  re?: number;
  form: number;
  caption?: string;
  focus?: string;
  controls?: ControlChange[];
  filter?: FilterControl;
}

export interface FormClosedMessage {
  type: 'formClosed';
  re?: number;
  form: number;
}

/** A message box; an empty title is the page's own. */
export interface MessageShownMessage {
  type: 'messageShown';
  re?: number;
  message: number;
  text: string;
  title: string;
  icon: "none" | "information" | "question";
  buttons: "ok" | "okcancel" | "yesno";
  standard: "ok" | "cancel" | "yes" | "no";
}

export interface MessageClosedMessage {
  type: 'messageClosed';
  re?: number;
  message: number;
}

/** A progress box. `bar` false hides the bar. */
export interface ProgressShownMessage {
  type: 'progressShown';
  re?: number;
  progress: number;
  text: string;
  min: number;
  max: number;
  value: number;
  bar: boolean;
}

/** The whole state again. */
export interface ProgressChangedMessage {
  type: 'progressChanged';
  re?: number;
  progress: number;
  text: string;
  min: number;
  max: number;
  value: number;
  bar: boolean;
}

export interface ProgressClosedMessage {
  type: 'progressClosed';
  re?: number;
  progress: number;
}

export interface PointerMessage {
  type: 'pointer';
  re?: number;
  pointer: "default" | "hourglass";
}

/** A report has rows, for the first time or anew: all earlier rows, views and headings of it are void. `filter` are the texts of the dialog's fields, for the address line. `property` are the report's facts (Name, RptProperty, FrozenColumn, DetailRptID …). `parent` is the report that a detail belongs to, 0 for none. `detail` tells that rows have a drill-down. */
export interface ReportReadyMessage {
  type: 'reportReady';
  re?: number;
  report: number;
  parent: number;
  programmaticId: string;
  number: string;
  name: string;
  title: TitleLine[];
  columns: Column[];
  property: Record<string, Cell>;
  filter: Record<string, Cell>;
  rowCount: number;
  detail: boolean;
  ledger: Ledger | null;
}

/** No rows. `cancelled`: the user closed the dialog, and what the report showed before stands. `opened` false: there is no such report after this, close its tab. */
export interface ReportFailedMessage {
  type: 'reportFailed';
  re?: number;
  report: number;
  programmaticId: string;
  error: string;
  cancelled: boolean;
  opened: boolean;
}

export interface ReportClosedMessage {
  type: 'reportClosed';
  re?: number;
  report: number;
}

/** `values` row by row in the order of `fields`. `summary` holds the positions (in the view) of the summary rows among them. Fewer rows than asked for only at the end. */
export interface RowsMessage {
  type: 'rows';
  re?: number;
  report: number;
  start: number;
  fields: string[];
  summary: number[];
  values: Cell[][];
}

export interface ViewMessage {
  type: 'view';
  re?: number;
  report: number;
  rowCount: number;
}

/** `row` is -1 when it occurs nowhere. */
export interface FoundMessage {
  type: 'found';
  re?: number;
  report: number;
  row: number;
  field: string;
}

export interface SumsMessage {
  type: 'sums';
  re?: number;
  report: number;
  sums: FieldSum[];
}

/** `path`: the heading from group to column. `key`: the row's code and name fields. `filter`: the title lines. `rights` is empty when all may be seen. */
export interface ExplanationMessage {
  type: 'explanation';
  re?: number;
  report: number;
  row: number;
  field: string;
  path: string[];
  value: Cell;
  key: Record<string, Cell>;
  filter: string[];
  rights: RightShare[];
}

export interface LookupRowsMessage {
  type: 'lookupRows';
  re?: number;
  dataType: number;
  rows: LookupRow[];
  more: boolean;
}

export interface PreferenceMessage {
  type: 'preference';
  re?: number;
  key: string;
  value: unknown;
}

/** The command with that id has been carried out. */
export interface DoneMessage {
  type: 'done';
  re?: number;
}

/** A command was not carried out. `malformed`, `unknown`, `fields`: the message itself; `state`: not now; `refused`: the form does not take it (`text` for users); `failed`: it went wrong (`text` for users). */
export interface ErrorMessage {
  type: 'error';
  re?: number;
  code: "malformed" | "unknown" | "fields" | "state" | "refused" | "failed";
  text: string;
}

/** `crashed`: the worker of this session is gone, and with it reports and forms; `restart` starts a new one. `hangs`: it has not answered for a while; wait, or restart. `answers`: it came back. */
export interface WorkerFailedMessage {
  type: 'workerFailed';
  re?: number;
  state: "crashed" | "hangs" | "answers";
  text: string;
}

/** The connection closes after this. `replaced`: another page took the session. */
export interface SessionEndedMessage {
  type: 'sessionEnded';
  re?: number;
  reason: "idle" | "logout" | "replaced" | "shutdown";
}

export type Command =
  | HelloCommand
  | ListReportsCommand
  | OpenReportCommand
  | ShowFilterCommand
  | RefreshCommand
  | CloseReportCommand
  | OpenDetailCommand
  | MoveItemCommand
  | FindItemCommand
  | SetValueCommand
  | ClickCommand
  | PressKeyCommand
  | EnterCommand
  | LeaveCommand
  | StepCommand
  | CloseFormCommand
  | FilterActionCommand
  | LookUpCommand
  | SchemeActionCommand
  | AnswerCommand
  | CancelProgressCommand
  | FetchRowsCommand
  | SetViewCommand
  | FindCommand
  | SumCommand
  | ExplainCommand
  | QueryLookupCommand
  | GetPreferenceCommand
  | SetPreferenceCommand
  | RestartCommand
  | PingCommand;

export type Message =
  | WelcomeMessage
  | ReportsMessage
  | FormOpenedMessage
  | FormChangedMessage
  | FormClosedMessage
  | MessageShownMessage
  | MessageClosedMessage
  | ProgressShownMessage
  | ProgressChangedMessage
  | ProgressClosedMessage
  | PointerMessage
  | ReportReadyMessage
  | ReportFailedMessage
  | ReportClosedMessage
  | RowsMessage
  | ViewMessage
  | FoundMessage
  | SumsMessage
  | ExplanationMessage
  | LookupRowsMessage
  | PreferenceMessage
  | DoneMessage
  | ErrorMessage
  | WorkerFailedMessage
  | SessionEndedMessage;

export interface Replies {
  hello: WelcomeMessage;
  listReports: ReportsMessage;
  openReport: DoneMessage;
  showFilter: DoneMessage;
  refresh: DoneMessage;
  closeReport: DoneMessage;
  openDetail: DoneMessage;
  moveItem: DoneMessage;
  findItem: DoneMessage;
  setValue: DoneMessage;
  click: DoneMessage;
  pressKey: DoneMessage;
  enter: DoneMessage;
  leave: DoneMessage;
  step: DoneMessage;
  closeForm: DoneMessage;
  filterAction: DoneMessage;
  lookUp: DoneMessage;
  schemeAction: DoneMessage;
  answer: DoneMessage;
  cancelProgress: DoneMessage;
  fetchRows: RowsMessage;
  setView: ViewMessage;
  find: FoundMessage;
  sum: SumsMessage;
  explain: ExplanationMessage;
  queryLookup: LookupRowsMessage;
  getPreference: PreferenceMessage;
  setPreference: DoneMessage;
  restart: WelcomeMessage;
  ping: DoneMessage;
}
