import { capital, countText } from "../describe";
import type { Picture } from "../picture";
import type { Theme } from "../theme";
import { make } from "./dom";

/** Longer lists are shown in parts. */
const PART = 200;

/** What changed between two sessions, as sentences that lead to their things. */
export class ChangeList {
    private readonly list = make("ol");
    private at = -1;

    /** @param goTo  shows a row, or a box of it */
    constructor(
        private readonly panel: HTMLElement,
        private readonly picture: Picture,
        private readonly theme: () => Theme,
        private readonly goTo: (row: number, box: number) => void,
    ) {}

    get count(): number {
        return this.picture.wire.notes.length;
    }

    update(): void {
        this.list.replaceChildren();
        this.append(0);
        const title = this.count > 0 ? countText(this.count, "change") : "Nothing changed but ids";
        this.panel.replaceChildren(make("h2", {}, title), this.list);
    }

    /** Goes to the sentence that is some places further, round and round. */
    step(by: number): void {
        if (this.count > 0) {
            this.at = this.at < 0 && by < 0 ? this.count - 1 : (this.at + by + this.count) % this.count;
            this.show();
        }
    }

    private append(begin: number): void {
        const { notes, changes } = this.picture.wire;
        notes.slice(begin, begin + PART).forEach((note, i) => {
            const change = note.box >= 0 ? this.picture.boxes.change[note.box]! : (this.picture.rows[note.row]?.change ?? -1);
            const item = make("li", {}, this.sentence(note, begin + i));
            const colour = changes[change]?.colour ?? -1;
            item.style.borderLeftColor = colour < 0 ? this.theme().line : this.theme().clips.of(colour, false).wave;
            this.list.append(item);
        });
        if (this.count > begin + PART) {
            const more = make("button", { type: "button", class: "goto" }, `Show ${PART} more`);
            const line = make("li", {}, more);
            more.addEventListener("click", () => {
                line.remove();
                this.append(begin + PART);
            });
            this.list.append(line);
        }
    }

    /** What is about no track leads nowhere. */
    private sentence(note: Picture["wire"]["notes"][number], place: number): HTMLElement {
        const text = capital(note.sentence);
        if (note.row < 0) {
            return make("span", { dir: "auto" }, text);
        }
        const button = make("button", { type: "button", dir: "auto" }, text);
        button.addEventListener("click", () => {
            this.at = place;
            this.show();
        });
        return button;
    }

    private show(): void {
        const note = this.picture.wire.notes[this.at]!;
        this.goTo(note.row, note.box);
        [...this.list.children].forEach((item, place) => {
            item.classList.toggle("is-current", place === this.at);
            if (place === this.at) {
                item.setAttribute("aria-current", "true");
                item.scrollIntoView({ block: "nearest" });
            } else {
                item.removeAttribute("aria-current");
            }
        });
    }
}
