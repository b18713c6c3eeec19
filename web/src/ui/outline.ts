import { boxAbout, boxName, positionText, rowAbout, rowName } from "../describe";
import type { Indexes } from "../cull";
import type { Picture } from "../picture";
import type { Stack } from "../stack";
import type { TimeBase } from "../times";
import { make } from "./dom";

/** Longer lists are shown in parts. */
const PART = 200;

/** All tracks and clips as a tree, for the keyboard and for readers of screens. */
export class Outline {
    private readonly tree = make("ul", { role: "tree", "aria-label": "Tracks and clips" });
    private state = "";

    constructor(
        panel: HTMLElement,
        private readonly picture: Picture,
        private readonly time: TimeBase,
        private readonly indexes: Indexes,
        private readonly stack: Stack,
        private readonly choose: (row: number, box: number) => void,
    ) {
        panel.append(this.tree);
        this.tree.addEventListener("keydown", (event) => this.onKey(event));
        this.tree.addEventListener("click", (event) => {
            const item = itemOf(event.target);
            if (item) {
                this.enter(item);
                this.activate(item, true);
            }
        });
    }

    /** Shows the rows of the stack. */
    update(): void {
        const state = this.stack.slots.map((slot) => slot.row).join();
        if (state !== this.state || this.tree.childElementCount === 0) {
            this.state = state;
            this.tree.replaceChildren();
            this.appendRows(0);
            this.makeReachable();
        }
    }

    focus(): void {
        this.reachable()?.focus();
    }

    private reachable(): HTMLElement | null {
        return this.tree.querySelector<HTMLElement>('[tabindex="0"]');
    }

    private makeReachable(): void {
        if (!this.reachable()) {
            this.tree.querySelector("li")?.setAttribute("tabindex", "0");
        }
    }

    private appendRows(begin: number): void {
        const { slots } = this.stack;
        slots.slice(begin, begin + PART).forEach((slot, i) => {
            const row = this.picture.rows[slot.row]!;
            const item = this.item(rowName(row), (row.end - row.begin || "").toString(), `, ${rowAbout(this.picture, row)}`, 1);
            item.dataset["row"] = slot.row.toString();
            item.setAttribute("aria-posinset", (begin + i + 1).toString());
            item.setAttribute("aria-setsize", slots.length.toString());
            if (row.begin < row.end) {
                item.setAttribute("aria-expanded", "false");
            }
            this.tree.append(item);
        });
        if (slots.length > begin + PART) {
            this.tree.append(this.more(1, begin + PART));
        }
    }

    private item(name: string, where: string, about: string, level: number): HTMLLIElement {
        const line = make(
            "span",
            { class: "line" },
            make("span", { class: "name", dir: "auto" }, name),
            make("span", { class: "where", "aria-hidden": "true" }, where),
            make("span", { class: "for-readers" }, about),
        );
        const attributes = { role: "treeitem", "aria-level": level.toString(), tabindex: "-1", "aria-selected": "false" };
        return make("li", attributes, line);
    }

    private more(level: number, begin: number): HTMLElement {
        const item = this.item(`Show ${PART} more`, "", "", level);
        item.classList.add("more");
        item.dataset["begin"] = begin.toString();
        return item;
    }

    /** The clips of a row, as items of the second level. */
    private boxItems(row: number, begin: number): HTMLElement[] {
        const { order } = this.indexes.of(row);
        const items: HTMLElement[] = Array.from(order.slice(begin, begin + PART), (box, i) => {
            const start = positionText(this.time, this.picture.boxes.start[box]!);
            const about = `, ${boxAbout(this.picture, this.time, box)}`;
            const item = this.item(boxName(this.picture, box), start, about, 2);
            item.dataset["row"] = row.toString();
            item.dataset["box"] = box.toString();
            item.setAttribute("aria-posinset", (begin + i + 1).toString());
            item.setAttribute("aria-setsize", order.length.toString());
            return item;
        });
        if (order.length > begin + PART) {
            const more = this.more(2, begin + PART);
            more.dataset["row"] = row.toString();
            items.push(more);
        }
        return items;
    }

    private expand(item: HTMLElement, isExpanded: boolean): void {
        if (!item.hasAttribute("aria-expanded")) {
            return;
        }
        item.setAttribute("aria-expanded", String(isExpanded));
        if (isExpanded) {
            item.after(...this.boxItems(Number(item.dataset["row"]), 0));
            return;
        }
        while (item.nextElementSibling?.getAttribute("aria-level") === "2") {
            item.nextElementSibling.remove();
        }
    }

    private activate(item: HTMLElement, isToggled: boolean): void {
        const { row, box, begin } = item.dataset;
        if (begin !== undefined) {
            this.showMore(item, Number(begin), row);
            return;
        }
        if (isToggled && box === undefined) {
            this.expand(item, item.getAttribute("aria-expanded") === "false");
        }
        this.tree.querySelector('[aria-selected="true"]')?.setAttribute("aria-selected", "false");
        item.setAttribute("aria-selected", "true");
        this.choose(Number(row), box === undefined ? -1 : Number(box));
    }

    private showMore(item: HTMLElement, begin: number, row: string | undefined): void {
        const before = item.previousElementSibling;
        if (row === undefined) {
            this.appendRows(begin);
        } else {
            item.after(...this.boxItems(Number(row), begin));
        }
        item.remove();
        if (before?.nextElementSibling instanceof HTMLElement) {
            this.enter(before.nextElementSibling);
        }
    }

    private enter(item: HTMLElement): void {
        this.reachable()?.setAttribute("tabindex", "-1");
        item.setAttribute("tabindex", "0");
        item.focus();
    }

    private onKey(event: KeyboardEvent): void {
        const item = itemOf(event.target);
        if (!item || event.ctrlKey || event.metaKey || event.altKey) {
            return;
        }
        const items = [...this.tree.querySelectorAll<HTMLElement>("li")];
        const place = items.indexOf(item);
        const isExpanded = item.getAttribute("aria-expanded") === "true";
        let next: HTMLElement | null | undefined = null;
        switch (event.key) {
            case "ArrowDown":
                next = items[place + 1];
                break;
            case "ArrowUp":
                next = items[place - 1];
                break;
            case "Home":
                next = items[0];
                break;
            case "End":
                next = items[items.length - 1];
                break;
            case "ArrowRight":
                if (isExpanded) {
                    next = items[place + 1];
                } else {
                    this.expand(item, true);
                }
                break;
            case "ArrowLeft":
                if (isExpanded) {
                    this.expand(item, false);
                } else {
                    next = items.slice(0, place).findLast((before) => before.getAttribute("aria-level") === "1");
                }
                break;
            case "Enter":
            case " ":
                this.activate(item, false);
                break;
            default:
                return;
        }
        event.preventDefault();
        event.stopPropagation();
        if (next) {
            this.enter(next);
        }
    }
}

function itemOf(target: EventTarget | null): HTMLElement | null {
    return target instanceof Element ? target.closest<HTMLElement>("li") : null;
}
