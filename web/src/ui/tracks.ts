import { routeText, rowAbout, rowKindText, rowName } from "../describe";
import { type Picture, type Row, RowFlag } from "../picture";
import type { Slot, Stack } from "../stack";
import type { Theme } from "../theme";
import type { Viewport } from "../viewport";
import { make } from "./dom";

const TWO_LINES = 44;
const BADGES = [
    { name: "muted", text: "M", style: "mute", title: "Muted" },
    { name: "solo", text: "S", style: "solo", title: "Solo" },
    { name: "armed", text: "R", style: "armed", title: "Armed for recording" },
] as const;

/** Mutes tracks and makes them solo, where that can be heard. */
export interface Switches {
    isMixed(row: number): boolean;
    switch(row: number, name: "muted" | "solo"): void;
}

/** The tracks beside the timeline. Only those in view are in the document. */
export class TrackList {
    private readonly shown = new Map<number, HTMLElement>();
    private state = "";
    /** The row that the tabulator key reaches. */
    private roving = 0;
    switches: Switches | null = null;

    constructor(
        private readonly list: HTMLElement,
        private readonly picture: Picture,
        private readonly stack: Stack,
        private readonly choose: (row: number) => void,
        private readonly reveal: (slot: Slot) => void,
    ) {
        list.setAttribute("role", "listbox");
        list.setAttribute("aria-label", "Tracks");
        list.addEventListener("keydown", (event) => this.onKey(event));
        list.addEventListener("click", (event) => {
            const row = this.rowOf(event.target);
            const name = event.target instanceof HTMLElement ? event.target.dataset["switch"] : undefined;
            if (row !== null && (name === "muted" || name === "solo")) {
                this.switches?.switch(row, name);
            } else if (row !== null) {
                this.roving = row;
                this.choose(row);
            }
        });
    }

    update(view: Viewport, theme: Theme, chosen: number): void {
        const slots = this.stack.between(view.top, view.top + view.height);
        if (!slots.some((slot) => slot.row === this.roving)) {
            const focused = this.shown.get(this.roving) === document.activeElement;
            this.roving = focused ? this.roving : (slots[0]?.row ?? 0);
        }
        const state = `${theme.name} ${this.stack.slots.length} ${this.stack.height}`;
        if (state !== this.state) {
            this.state = state;
            this.clear();
        }
        const wanted = new Set(slots.map((slot) => slot.row));
        for (const [row, element] of this.shown) {
            if (!wanted.has(row) && element !== document.activeElement) {
                element.remove();
                this.shown.delete(row);
            }
        }
        for (const slot of slots) {
            this.place(slot, view, theme, chosen);
        }
    }

    /** Builds all rows anew at the next update. */
    refresh(): void {
        this.state = "";
    }

    /** Moves the keyboard to a row. */
    focus(row: number): void {
        this.roving = row;
        this.shown.get(row)?.focus({ preventScroll: true });
    }

    private clear(): void {
        const focused = [...this.shown].find(([, element]) => element === document.activeElement);
        this.list.replaceChildren();
        this.shown.clear();
        if (focused) {
            this.list.setAttribute("tabindex", "-1");
            this.list.focus();
        }
    }

    private place(slot: Slot, view: Viewport, theme: Theme, chosen: number): void {
        let element = this.shown.get(slot.row);
        if (!element) {
            element = this.build(slot, theme);
            this.shown.set(slot.row, element);
            this.insert(element, slot.row);
        }
        element.style.transform = `translateY(${slot.top - view.top}px)`;
        element.setAttribute("aria-selected", String(slot.row === chosen));
        element.tabIndex = slot.row === this.roving ? 0 : -1;
    }

    /** Keeps the elements in the order of rows, as readers of screens go through them. */
    private insert(element: HTMLElement, row: number): void {
        const after = [...this.list.children].find(
            (child) => child instanceof HTMLElement && Number(child.dataset["row"]) > row,
        );
        this.list.insertBefore(element, after ?? null);
    }

    private build(slot: Slot, theme: Theme): HTMLElement {
        const row = this.picture.rows[slot.row]!;
        const stripe = make("span", { class: "stripe" });
        stripe.style.background = theme.clips.of(row.colour, false).edge;
        const element = make("div", { class: "track", role: "option" }, stripe, this.head(row, slot));
        element.dataset["row"] = slot.row.toString();
        element.setAttribute("aria-posinset", (this.stack.slots.indexOf(slot) + 1).toString());
        element.setAttribute("aria-setsize", this.stack.slots.length.toString());
        element.classList.toggle("is-muted", (row.flags & (RowFlag.muted | RowFlag.hidden)) !== 0);
        element.style.height = `${slot.height}px`;
        for (const lane of row.lanes) {
            const line = make("div", { class: "lane", "aria-hidden": "true" }, make("span", { title: lane.name }, lane.name));
            line.style.height = `${slot.lane}px`;
            element.append(line);
        }
        return element;
    }

    private head(row: Row, slot: Slot): HTMLElement {
        const name = make("span", { class: "name", title: row.name, dir: "auto" }, rowName(row));
        const first = make("div", { class: "first" }, name);
        for (const badge of BADGES) {
            const isOn = (row.flags & RowFlag[badge.name]) !== 0;
            const isSwitch = badge.name !== "armed" && (this.switches?.isMixed(slot.row) ?? false);
            if (isOn || isSwitch) {
                const element = make("span", { class: `badge ${badge.style}`, title: badge.title, "aria-hidden": "true" }, badge.text);
                element.classList.toggle("is-off", !isOn);
                if (isSwitch) {
                    element.dataset["switch"] = badge.name;
                    element.title = `${badge.title} (${badge.text})`;
                }
                first.append(element);
            }
        }
        const about = make("span", { class: "for-readers" }, `, ${rowAbout(this.picture, row)}`);
        const head = make("div", { class: "head" }, first, about);
        head.style.height = `${slot.head}px`;
        if (slot.head >= TWO_LINES) {
            const hidden = row.flags & RowFlag.hidden ? " · hidden" : "";
            const route = routeText(row);
            const change = this.picture.changeWord(row.change);
            const text = `${change && `${change} · `}${route || rowKindText(row)}${hidden}`;
            const title = `${rowKindText(row)} ${route}`;
            head.append(make("div", { class: "second", title, "aria-hidden": "true" }, text));
        }
        return head;
    }

    private rowOf(target: EventTarget | null): number | null {
        const element = target instanceof Element ? target.closest(".track") : null;
        return element instanceof HTMLElement ? Number(element.dataset["row"]) : null;
    }

    private onKey(event: KeyboardEvent): void {
        const { slots } = this.stack;
        const place = slots.findIndex((slot) => slot.row === this.roving);
        const places: Record<string, number> = {
            ArrowDown: place + 1,
            ArrowUp: place - 1,
            Home: 0,
            End: slots.length - 1,
        };
        // Where there is something to hear, the space bar plays.
        if (event.key === "Enter" || (event.key === " " && !this.switches)) {
            this.choose(this.roving);
        } else if (event.key in places) {
            const slot = slots[Math.min(Math.max(0, places[event.key]!), slots.length - 1)];
            if (slot) {
                this.reveal(slot);
                this.focus(slot.row);
            }
        } else {
            return;
        }
        event.preventDefault();
        event.stopPropagation();
    }
}
