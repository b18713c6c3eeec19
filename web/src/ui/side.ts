import { get } from "./dom";

const TABS = ["details", "outline", "changes"] as const;
export type Tab = (typeof TABS)[number];

/** The panel at the side, with its tabs. */
export class SidePanel {
    private readonly element = get("side", HTMLElement);

    /** @param shown  called when a tab comes to the front */
    constructor(private readonly shown: (tab: Tab) => void) {
        for (const tab of TABS) {
            get(`tab-${tab}`, HTMLElement).addEventListener("click", () => this.select(tab));
        }
        document.querySelector(".tabs")?.addEventListener("keydown", (event) => {
            if (event instanceof KeyboardEvent && (event.key === "ArrowLeft" || event.key === "ArrowRight")) {
                this.step(event.key === "ArrowRight" ? 1 : -1);
                event.stopPropagation();
            }
        });
    }

    show(isShown: boolean): void {
        this.element.hidden = !isShown;
        get("panel", HTMLElement).setAttribute("aria-expanded", String(isShown));
    }

    toggle(): void {
        this.show(this.element.hidden);
    }

    select(name: Tab): void {
        for (const tab of TABS) {
            const button = get(`tab-${tab}`, HTMLElement);
            button.setAttribute("aria-selected", String(tab === name));
            button.tabIndex = tab === name ? 0 : -1;
            get(tab, HTMLElement).hidden = tab !== name;
        }
        this.shown(name);
    }

    /** Opens it with a tab in front. */
    open(name: Tab): void {
        this.show(true);
        this.select(name);
    }

    private step(by: number): void {
        const tabs = TABS.filter((tab) => !get(`tab-${tab}`, HTMLElement).hidden);
        const front = tabs.findIndex((tab) => !get(tab, HTMLElement).hidden);
        const name = tabs[(front + by + tabs.length) % tabs.length]!;
        this.select(name);
        get(`tab-${name}`, HTMLElement).focus();
    }
}
