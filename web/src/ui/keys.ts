import { get, make } from "./dom";

/** What keys do. */
export interface Command {
    /** As the list of keys shows them; none: not in it. */
    shown: readonly string[];
    meaning: string;
    /** By the names of the keys as events have them, letters as small ones; `factor` is more than 1 with Shift. */
    actions: Readonly<Record<string, (factor: number) => void>>;
}

const WITH_SHIFT = 5;

/** Keys that a button or a list takes itself. */
const OF_CONTROLS = /^(?:Arrow|Enter| |Home|End|Page)/u;

/** Runs commands at their keys, and lists them. */
export class Keys {
    private readonly dialog = get("keys", HTMLDialogElement);

    constructor(
        private readonly commands: readonly Command[],
        notes: string,
    ) {
        this.fillDialog(notes);
        document.addEventListener("keydown", (event) => this.onKey(event));
    }

    show(): void {
        this.dialog.showModal();
    }

    private fillDialog(notes: string): void {
        const list = make("dl");
        for (const { shown, meaning } of this.commands.filter((command) => command.shown.length > 0)) {
            list.append(make("dt", {}, ...shown.map((key) => make("kbd", {}, key))), make("dd", {}, meaning));
        }
        const close = make("button", { type: "button" }, "Close");
        close.addEventListener("click", () => this.dialog.close());
        this.dialog.append(make("h2", { id: "keys-title" }, "Keys"), list, make("p", {}, notes), close);
    }

    private onKey(event: KeyboardEvent): void {
        if (event.ctrlKey || event.metaKey || event.altKey || this.dialog.open || isTaken(event)) {
            return;
        }
        const key = event.key.length === 1 ? event.key.toLowerCase() : event.key;
        const action = this.commands.find(({ actions }) => Object.hasOwn(actions, key))?.actions[key];
        if (action) {
            event.preventDefault();
            action(event.shiftKey ? WITH_SHIFT : 1);
        }
    }
}

/** Whether the element that has the focus takes a key. */
function isTaken({ target, key }: KeyboardEvent): boolean {
    if (target instanceof HTMLInputElement) {
        // A slider takes all keys but the space bar.
        return !(target.type === "range" && key === " ");
    }
    return target instanceof HTMLElement && target.closest("button, summary, .side") !== null && OF_CONTROLS.test(key);
}
