import { fileName, positionText, rowName } from "../describe";
import { BOX_KINDS, type Picture } from "../picture";
import { fold } from "../stack";
import type { TimeBase } from "../times";
import { make } from "./dom";

const MOST_SHOWN = 60;

export interface Found {
    what: string;
    name: string;
    where: string;
    row: number;
    box: number;
}

export interface FoundThings {
    things: Found[];
    count: number;
    /** The names of boxes that fit, by their numbers among the texts. */
    names: Set<number>;
}

/** Finds things by their names. */
export class Finder {
    private folded: string[] | null = null;

    constructor(
        private readonly picture: Picture,
        private readonly time: TimeBase,
    ) {}

    find(query: string): FoundThings {
        const words = fold(query.trim()).split(/\s+/u);
        const fits = (text: string): boolean => words.every((word) => text.includes(word));
        const { picture } = this;
        this.folded ??= picture.strings.map(fold);
        const names = new Set<number>();
        this.folded.forEach((text, i) => {
            if (fits(text)) {
                names.add(i);
            }
        });
        const found: FoundThings = { things: [], count: 0, names };
        picture.rows.forEach((row, i) => {
            if (fits(fold(row.name))) {
                this.add(found, { what: "track", name: rowName(row), where: row.output, row: i, box: -1 });
            }
        });
        picture.wire.groups.forEach((group, i) => {
            const box = picture.membersOf(i)[0];
            if (box !== undefined && fits(fold(group.name))) {
                this.add(found, { what: "group", name: group.name, where: "", row: picture.boxes.row[box]!, box });
            }
        });
        this.findMedia(found, fits);
        for (let box = 0; box < picture.boxes.count; box += 1) {
            if (names.has(picture.boxes.name[box]!)) {
                this.addBox(found, box);
            }
        }
        return found;
    }

    private findMedia(found: FoundThings, fits: (text: string) => boolean): void {
        const { picture } = this;
        picture.media.forEach((file, i) => {
            if (fits(fold(fileName(file.path)))) {
                const box = picture.boxes.media.indexOf(i);
                this.add(found, {
                    what: "media",
                    name: fileName(file.path),
                    where: box < 0 ? "unused" : "",
                    row: box < 0 ? -1 : picture.boxes.row[box]!,
                    box,
                });
            }
        });
    }

    private addBox(found: FoundThings, box: number): void {
        found.count += 1;
        if (found.things.length < MOST_SHOWN) {
            const { boxes } = this.picture;
            found.things.push({
                what: BOX_KINDS[boxes.kind[box]!] === "audio" ? "clip" : (BOX_KINDS[boxes.kind[box]!] ?? "clip"),
                name: this.picture.boxName(box),
                where: positionText(this.time, boxes.start[box]!),
                row: boxes.row[box]!,
                box,
            });
        }
    }

    private add(found: FoundThings, thing: Found): void {
        found.count += 1;
        if (found.things.length < MOST_SHOWN) {
            found.things.push(thing);
        }
    }
}

/** The field at the top, and the list of what it finds. */
export class SearchBox {
    private found: FoundThings | null = null;
    private active = -1;

    constructor(
        private readonly input: HTMLInputElement,
        private readonly list: HTMLElement,
        private readonly finder: Finder,
        private readonly changed: (names: ReadonlySet<number> | null) => void,
        private readonly choose: (row: number, box: number) => void,
        private readonly say: (text: string) => void,
    ) {
        input.addEventListener("input", () => this.search());
        input.addEventListener("focus", () => this.show());
        input.addEventListener("blur", () => this.hide());
        input.addEventListener("keydown", (event) => this.onKey(event));
        // The field keeps the keyboard while something is chosen with the pointer.
        list.addEventListener("pointerdown", (event) => event.preventDefault());
        list.addEventListener("click", (event) => {
            const item = event.target instanceof Element ? event.target.closest("li") : null;
            this.pick(item ? [...list.children].indexOf(item) : -1);
        });
    }

    private search(): void {
        const { value } = this.input;
        this.found = value.trim() ? this.finder.find(value) : null;
        this.active = -1;
        this.changed(this.found?.names ?? null);
        this.fill();
        this.show();
        if (this.found) {
            this.say(this.found.count === 1 ? "1 result" : `${this.found.count.toLocaleString("en")} results`);
        }
    }

    private fill(): void {
        this.list.replaceChildren();
        if (!this.found) {
            return;
        }
        this.found.things.forEach((thing, i) => {
            this.list.append(
                make(
                    "li",
                    { role: "option", id: `result-${i}`, "aria-selected": "false" },
                    make("span", { class: "what" }, thing.what),
                    make("span", { class: "name", dir: "auto" }, thing.name),
                    make("span", { class: "where" }, thing.where),
                ),
            );
        });
        const rest = this.found.count - this.found.things.length;
        if (rest > 0 || this.found.count === 0) {
            const text = rest > 0 ? `and ${rest.toLocaleString("en")} more` : "Nothing has this name.";
            this.list.append(
                make("li", { role: "option", "aria-disabled": "true", "aria-selected": "false", class: "note" }, text),
            );
        }
    }

    private show(): void {
        this.list.hidden = this.found === null;
        this.input.setAttribute("aria-expanded", String(!this.list.hidden));
    }

    private hide(): void {
        this.list.hidden = true;
        this.input.setAttribute("aria-expanded", "false");
    }

    private activate(place: number): void {
        const count = this.found?.things.length ?? 0;
        if (count === 0) {
            return;
        }
        this.list.children[this.active]?.setAttribute("aria-selected", "false");
        this.active = (place + count) % count;
        const item = this.list.children[this.active]!;
        item.setAttribute("aria-selected", "true");
        item.scrollIntoView({ block: "nearest" });
        this.input.setAttribute("aria-activedescendant", item.id);
    }

    private pick(place: number): void {
        const thing = this.found?.things[place];
        if (thing && thing.row >= 0) {
            this.choose(thing.row, thing.box);
            this.hide();
        }
    }

    private onKey(event: KeyboardEvent): void {
        switch (event.key) {
            case "ArrowDown":
                this.show();
                this.activate(this.active + 1);
                break;
            case "ArrowUp":
                this.activate(this.active < 0 ? -1 : this.active - 1);
                break;
            case "Enter":
                this.pick(Math.max(0, this.active));
                break;
            case "Escape":
                if (this.input.value) {
                    this.input.value = "";
                    this.search();
                } else {
                    this.input.blur();
                }
                break;
            default:
                return;
        }
        event.preventDefault();
        event.stopPropagation();
    }
}
