import {
    boxKindText,
    boxName,
    boxStates,
    capital,
    countText,
    fileName,
    laneText,
    lengthText,
    numberText,
    positionText,
    routeText,
    rowKindText,
    rowName,
    rowStates,
} from "../describe";
import { BoxFlag, type Picture } from "../picture";
import type { Json, SessionText } from "../session";
import type { TimeBase } from "../times";
import { type Child, make } from "./dom";

/** Longer lists are shown in parts. */
const PART = 100;
const LONG_TEXT = 600;
const ALL = "All that the file says";

/** What the page shows of one thing. */
export class Details {
    /** What mutes a row and makes it solo, where that can be heard. */
    switchesOf: (row: number) => Child = () => "";

    constructor(
        private readonly panel: HTMLElement,
        private readonly picture: Picture,
        private readonly time: TimeBase,
        private readonly session: SessionText,
        private readonly goTo: (row: number, box: number) => void,
    ) {}

    showSession(): void {
        const { picture, time } = this;
        const { wire } = picture;
        const missing = picture.media.filter((file) => !file.found).length;
        this.show(
            wire.title || "Session",
            "Session",
            [
                ["Length", lengthText(time, wire.end)],
                ["Sample rate", `${wire.sampleRate.toLocaleString("en")} Hz`],
                ["Tracks", picture.rows.length.toLocaleString("en")],
                ["Clips", picture.boxes.count.toLocaleString("en")],
                ["Media", countText(picture.media.length, "file") + (missing > 0 ? `, ${missing.toLocaleString("en")} missing` : "")],
                ["Position", positionText(time, wire.cursor)],
                ["Selection", this.rangeText(wire.selection)],
            ],
            "",
        );
    }

    showRow(row: number): void {
        const { picture } = this;
        const it = picture.rows[row]!;
        this.show(
            rowName(it),
            capital(rowKindText(it)),
            [
                ["Route", routeText(it)],
                ["State", rowStates(picture, it).join(", ")],
                ["Change", this.changesText(row, -1)],
                ["Hear", this.switchesOf(row)],
                ["Clips", (it.end - it.begin).toLocaleString("en")],
                ["Effects", it.effects > 0 ? it.effects.toString() : ""],
                ["Sends", it.sends > 0 ? it.sends.toString() : ""],
                ["Lanes", it.lanes.map(laneText).join("\n")],
            ],
            it.path,
        );
    }

    showBox(box: number): void {
        const { picture, time } = this;
        const { boxes } = picture;
        const row = boxes.row[box]!;
        const lead = make("span", {}, `${capital(boxKindText(picture, box))} on `);
        lead.append(this.link(rowName(picture.rows[row]!), row, -1));
        const next = boxes.next[box]!;
        this.show(
            boxName(picture, box),
            lead,
            [
                ["Start", positionText(time, boxes.start[box]!)],
                ["End", positionText(time, boxes.end[box]!)],
                ["Length", lengthText(time, boxes.end[box]! - boxes.start[box]!)],
                ["State", boxStates(picture, box).join(", ")],
                ["Change", this.changesText(row, box)],
                ["Media", this.mediaText(boxes.media[box]!)],
                ["In media", boxes.media[box]! < 0 ? "" : `from ${lengthText(time, boxes.sourceStart[box]!)}`],
                ["Speed", picture.has(box, BoxFlag.stretched) ? `× ${numberText(boxes.speed[box]!)}` : ""],
                ["Fade in", this.fadeText(picture.fadesIn.get(box)?.length)],
                ["Fade out", this.fadeText(picture.fadesOut.get(box)?.length)],
                ["Crossfade", next < 0 ? "" : this.link(`into ${boxName(picture, next)}`, row, next)],
                ["Group", this.groupText(boxes.group[box]!)],
                ["Lanes", (picture.boxLanes.get(box) ?? []).map(laneText).join("\n")],
            ],
            picture.boxPath(box),
        );
    }

    private show(title: string, lead: Child, facts: [string, Child][], path: string): void {
        const list = make("dl");
        for (const [name, value] of facts) {
            if (value !== "") {
                list.append(make("dt", {}, name), make("dd", {}, value));
            }
        }
        this.panel.replaceChildren(
            make("h2", { dir: "auto" }, title),
            make("p", { class: "lead" }, lead),
            list,
            ...(path ? [make("h3", {}, ALL), this.render(path)] : [this.folded()]),
        );
        this.panel.scrollTop = 0;
    }

    /** The whole session, which may be large, for who asks. */
    private folded(): HTMLElement {
        const fold = make("details", { class: "whole" }, make("summary", {}, ALL));
        fold.addEventListener("toggle", () => fold.append(this.render("")), { once: true });
        return fold;
    }

    /** The JSON at a path. */
    private render(path: string): Child {
        const value = this.session.at(path);
        if (value === undefined) {
            const { compared } = this.picture.wire;
            return make("p", { class: "lead" }, compared ? "Only the first session has it." : "The session's text has no such part.");
        }
        return valueOf(value, true);
    }

    /** The sentences that are about a thing. */
    private changesText(row: number, box: number): string {
        const notes = this.picture.wire.notes.filter((note) => note.row === row && note.box === box);
        return notes.map((note) => capital(note.sentence)).join("\n");
    }

    private link(text: string, row: number, box: number): HTMLElement {
        const button = make("button", { class: "goto", type: "button" }, text);
        button.addEventListener("click", () => this.goTo(row, box));
        return button;
    }

    private rangeText(range: readonly [number, number]): string {
        return range[1] > range[0]
            ? `${positionText(this.time, range[0])} to ${positionText(this.time, range[1])}`
            : "";
    }

    private mediaText(media: number): Child {
        const file = this.picture.media[media];
        if (!file) {
            return "";
        }
        const name = make("span", { title: file.path, dir: "auto" }, fileName(file.path) || "no path");
        name.append(file.found ? "" : " (missing)");
        return name;
    }

    private fadeText(length: number | undefined): string {
        return length === undefined ? "" : lengthText(this.time, length);
    }

    private groupText(group: number): Child {
        const it = this.picture.wire.groups[group];
        if (!it) {
            return "";
        }
        return `${it.name || "unnamed"} (${countText(this.picture.membersOf(group).length, "clip")})`;
    }
}

/** "trackHue" as "Track hue". */
export function keyText(key: string): string {
    const words = key.replace(/([a-z0-9])([A-Z])/gu, "$1 $2").split(" ");
    return capital(words.map((word) => (/^[A-Z]{2,}/u.test(word) ? word : word.toLowerCase())).join(" "));
}

/** A line that says what is in a value before it is opened. */
function summaryOf(value: Json[] | Record<string, Json>): string {
    if (Array.isArray(value)) {
        return countText(value.length, "item");
    }
    const { name } = value;
    return typeof name === "string" ? name : "";
}

function valueOf(value: Json, isOpen = false): Child {
    if (value === null || typeof value !== "object") {
        return textOf(value);
    }
    const entries = Array.isArray(value)
        ? value.map((item, i): [string, Json] => [(i + 1).toString(), item])
        : Object.entries(value).map(([key, item]): [string, Json] => [keyText(key), item]);
    if (entries.length === 0) {
        return isOpen ? make("p", { class: "lead" }, "Everything is at its default.") : "none";
    }
    const list = make("dl");
    appendEntries(list, entries, 0);
    return list;
}

function textOf(value: null | boolean | number | string): Child {
    if (typeof value === "boolean") {
        return value ? "yes" : "no";
    }
    const text = String(value ?? "none");
    if (text.length <= LONG_TEXT) {
        return make("span", { dir: "auto" }, text);
    }
    const fold = make("details", {}, make("summary", {}, countText(text.length, "character")));
    fold.addEventListener("toggle", () => fold.append(text), { once: true });
    return fold;
}

function appendEntries(list: HTMLElement, entries: [string, Json][], begin: number): void {
    for (const [key, value] of entries.slice(begin, begin + PART)) {
        if (value === null || typeof value !== "object" || Object.keys(value).length === 0) {
            list.append(make("dt", {}, key), make("dd", {}, valueOf(value)));
            continue;
        }
        const about = summaryOf(value);
        const fold = make("details", {}, make("summary", {}, about ? `${key} · ${about}` : key));
        // Sessions are large; what nobody opens is never made.
        fold.addEventListener("toggle", () => fold.append(valueOf(value)), { once: true });
        list.append(make("dt", { class: "for-readers" }, key), make("dd", { class: "fold" }, fold));
    }
    if (entries.length > begin + PART) {
        const more = make("button", { class: "goto", type: "button" }, `Show ${PART} more`);
        const line = make("dd", { class: "fold" }, more);
        more.addEventListener("click", () => {
            line.remove();
            appendEntries(list, entries, begin + PART);
        });
        list.append(line);
    }
}
