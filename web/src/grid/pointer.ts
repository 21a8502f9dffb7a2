// The mouse on the grid: selecting by dragging, and on the headings sorting, resizing and moving columns.
import { clampWidth, type GridColumn } from "./columns";
import type { GridView } from "./GridView";

export interface HeadingActions {
  columns: () => GridColumn[];
  sort: (column: GridColumn) => void;
  resize: (column: GridColumn, width: number) => void;
  resized: () => void;
  fit: (column: GridColumn) => void;
  move: (column: GridColumn, before: GridColumn | null) => void;
  fold: (group: string) => void;
}

export function selectByPointer(view: GridView, open: (row: number) => void): void {
  const { host } = view;
  host.addEventListener("pointerdown", (event) => {
    const spot = view.spotAt(event.target);
    if (!spot || event.button !== 0) return;
    const wholeRows = spot.column < 0;
    const head = { row: spot.row, column: Math.max(0, spot.column) };
    const anchor = event.shiftKey && view.selection ? view.selection.anchor : head;
    view.select({ anchor, head, wholeRows }, false);
    if (event.pointerType !== "touch") followSelection(view); // a finger scrolls
  });
  host.addEventListener("dblclick", (event) => {
    const spot = view.spotAt(event.target);
    if (spot) open(spot.row);
  });
}

const kMostADragFrame = 60; // pixels

// Drawn beyond an edge, the selection takes the rows and columns along, the faster the farther.
function followSelection(view: GridView): void {
  let at: PointerEvent | null = null;
  let frame = 0;
  const step = () => {
    frame = 0;
    const near = at && view.spotNear(at.clientX, at.clientY);
    if (!near || !view.selection) return;
    const { anchor, head, wholeRows } = view.selection;
    const column = wholeRows ? head.column : near.spot.column;
    if (near.spot.row !== head.row || column !== head.column) view.select({ anchor, head: { row: near.spot.row, column }, wholeRows }, false);
    const way = (over: number) => Math.max(-kMostADragFrame, Math.min(kMostADragFrame, over));
    view.host.scrollBy(wholeRows ? 0 : way(near.over.x), way(near.over.y));
    if (near.over.x !== 0 || near.over.y !== 0) frame = requestAnimationFrame(step);
  };
  follow(
    (event) => {
      at = event;
      frame ||= requestAnimationFrame(step);
    },
    () => {
      at = null;
      cancelAnimationFrame(frame);
    },
  );
}

export function arrangeByPointer(view: GridView, actions: HeadingActions): void {
  view.headings.addEventListener("pointerdown", (event) => {
    const cell = (event.target as HTMLElement).closest<HTMLElement>("[data-head-field]");
    const column = actions.columns()[Number(cell?.dataset["at"])];
    if (!cell || !column || event.button !== 0) return;
    event.preventDefault();
    view.host.focus({ preventScroll: true });
    if ((event.target as HTMLElement).classList.contains("grid-grip")) followWidth(event, column, actions);
    else followMove(event, view, column, actions);
  });
  view.headings.addEventListener("click", (event) => {
    const group = (event.target as HTMLElement).closest<HTMLElement>("[data-group]")?.dataset["group"];
    if (group === undefined) return;
    view.host.focus({ preventScroll: true });
    actions.fold(group);
  });
  view.headings.addEventListener("dblclick", (event) => {
    if (!(event.target as HTMLElement).classList.contains("grid-grip")) return;
    const cell = (event.target as HTMLElement).closest<HTMLElement>("[data-head-field]");
    const column = actions.columns()[Number(cell?.dataset["at"])];
    if (column) actions.fit(column);
  });
}

function follow(move: (event: PointerEvent) => void, end: (event: PointerEvent) => void): void {
  const stop = new AbortController();
  window.addEventListener("pointermove", move, { signal: stop.signal });
  const finish = (event: PointerEvent) => {
    stop.abort();
    end(event);
  };
  for (const name of ["pointerup", "pointercancel"] as const) window.addEventListener(name, finish, { signal: stop.signal });
}

function followWidth(start: PointerEvent, column: GridColumn, actions: HeadingActions): void {
  const { width } = column;
  follow(
    (event) => actions.resize(column, clampWidth(width + event.clientX - start.clientX)),
    () => actions.resized(),
  );
}

const kMoveStarts = 6;

function followMove(start: PointerEvent, view: GridView, column: GridColumn, actions: HeadingActions): void {
  const mark = document.createElement("div");
  mark.className = "grid-drop";
  let target: number | null = null;
  follow(
    (event) => {
      if (Math.abs(event.clientX - start.clientX) < kMoveStarts && target === null) return;
      const columns = actions.columns();
      const x = event.clientX - view.host.getBoundingClientRect().left;
      target = columns.findIndex((candidate, at) => x < view.columnLeft(at) + candidate.width / 2);
      if (target < 0) target = columns.length;
      mark.style.left = `${view.columnLeft(target) - 1}px`;
      if (!mark.parentElement) view.headings.parentElement!.append(mark);
    },
    ({ type }) => {
      mark.remove();
      if (type === "pointercancel") return;
      if (target === null) actions.sort(column);
      else actions.move(column, actions.columns()[target] ?? null);
    },
  );
}
