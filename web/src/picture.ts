/** What the page shows, from the columns that the library writes into it. */

import type { WireColours } from "./colours";
import type { FrameRate, TimeForm } from "./times";

/** A value for each thing, or one value that all have. */
type Column<T> = T | T[];

/** The JSON in the page; toolkit/view/page/PageData.cpp writes it. Names are places in `strings`. */
export interface Wire extends WireColours {
    title: string;
    /** An address whose text changes when the session does; empty: none. */
    watch: string;
    /** Whether the page can be heard. */
    audio: boolean;
    /** Whether it shows what changed between two sessions. */
    compared: boolean;
    sampleRate: number;
    from: number;
    to: number;
    cursor: number;
    selection: [number, number];
    end: number;
    time: {
        form: TimeForm;
        rate: FrameRate;
        beatsPerMinute: number;
        beatsPerBar: number;
        subdivisions: number;
    };
    /** The keys under which tracks have their clips, by kinds of boxes. */
    clipKeys: string[];
    strings: string[];
    rows: {
        count: number;
        kind: Column<number>;
        name: Column<number>;
        channels: Column<number>;
        output: Column<number>;
        colour: Column<number>;
        flags: Column<number>;
        effects: Column<number>;
        sends: Column<number>;
        boxes: Column<number>;
        lanes: Column<number>;
        path: Column<number>;
        /** A place in `changes`; -1: nothing is compared. */
        change: Column<number>;
    };
    boxes: {
        count: number;
        kind: Column<number>;
        name: Column<number>;
        start: Column<number>;
        length: Column<number>;
        colour: Column<number>;
        flags: Column<number>;
        media: Column<number>;
        sourceStart: Column<number>;
        speed: Column<number>;
        effects: Column<number>;
        takes: Column<number>;
        group: Column<number>;
        /** How many boxes later the one is into which this one fades; 0: none. */
        crossfade: Column<number>;
        lanes: Column<number>;
        /** In the list of clips of its kind that its track has. */
        index: Column<number>;
        change: Column<number>;
    };
    fades: { count: number; box: Column<number>; out: Column<number>; length: Column<number>; curve: Column<number> };
    lanes: {
        count: number;
        name: Column<number>;
        low: Column<number | null>;
        high: Column<number | null>;
        keyframes: Column<number>;
    };
    keyframes: {
        count: number;
        position: Column<number>;
        level: Column<number>;
        value: Column<number | null>;
        segment: Column<number>;
    };
    media: { path: string; found: boolean; sound?: string; waveform?: WireWaveform }[];
    groups: { name: string }[];
    curves: number[][];
    /** How things change; no colour: -1. */
    changes: { word: string; colour: number }[];
    /** What changed, and the row and box of the first thing that did; -1: none. */
    notes: { sentence: string; row: number; box: number }[];
}

export interface WireWaveform {
    sampleRate: number;
    frames: number;
    framesPerPeak: number;
    /** Base64 of signed bytes, in 127ths. */
    lowest: string;
    highest: string;
}

export const BoxFlag = {
    looped: 1,
    stretched: 2,
    muted: 4,
    offline: 8,
    locked: 16,
    selected: 32,
    missing: 64,
} as const;

export const RowFlag = { muted: 1, solo: 2, armed: 4, hidden: 8, selected: 16 } as const;

/** In the order of the library's numbers. */
export const ROW_KINDS = ["video", "audio", "bus", "master", "metronome", "instrument"] as const;
export const BOX_KINDS = ["video", "audio", "MIDI"] as const;
export const BoxKind = { video: 0, audio: 1, midi: 2 } as const;

export const Change = { none: -1, same: 0, added: 1, removed: 2, moved: 3, changed: 4, former: 5 } as const;

export const Segment = { linear: 0, hold: 1, spline: 2 } as const;

export interface Fade {
    length: number;
    curve: readonly number[];
}

export interface Lane {
    name: string;
    low: number;
    high: number;
    /** Keyframes, as a range of the columns. */
    begin: number;
    end: number;
}

export interface Row {
    kind: number;
    name: string;
    channels: string;
    output: string;
    colour: number;
    flags: number;
    effects: number;
    sends: number;
    /** In the session's text; that of a row which only the first session has begins with "/before". */
    path: string;
    change: number;
    /** Boxes, as a range of the columns. */
    begin: number;
    end: number;
    lanes: Lane[];
}

export interface Media {
    path: string;
    found: boolean;
    /** The address of the file; that of a part of the page, such as "#sound-0", has it as Base64. Empty: not heard. */
    sound: string;
    waveform: WireWaveform | null;
}

export interface Boxes {
    count: number;
    kind: Uint8Array;
    name: Uint32Array;
    start: Float64Array;
    end: Float64Array;
    /** -1: that of the row. */
    colour: Int32Array;
    flags: Uint8Array;
    /** -1: none. */
    media: Int32Array;
    sourceStart: Float64Array;
    speed: Float64Array;
    effects: Uint32Array;
    takes: Uint32Array;
    /** -1: none. */
    group: Int32Array;
    /** -1: none. */
    next: Int32Array;
    row: Uint32Array;
    index: Uint32Array;
    change: Int8Array;
}

export interface Keyframes {
    position: Float64Array;
    level: Float64Array;
    value: Float64Array;
    segment: Uint8Array;
}

type Numbers = Int8Array | Uint8Array | Uint32Array | Int32Array | Float32Array | Float64Array;

function fill<T extends Numbers>(target: T, column: Column<number | null>): T {
    if (Array.isArray(column)) {
        for (let i = 0; i < target.length; i += 1) {
            target[i] = column[i] ?? NaN;
        }
    } else {
        target.fill(column ?? NaN);
    }
    return target;
}

/** What sets paths of the first session apart. */
const FORMER = "/before";

function at<T>(column: Column<T>, index: number): T {
    return Array.isArray(column) ? (column)[index]! : column;
}

/** A session as the page draws it. Positions beyond 2^53 samples are rounded. */
export class Picture {
    readonly wire: Wire;
    readonly strings: string[];
    readonly rows: Row[] = [];
    readonly boxes: Boxes;
    readonly keyframes: Keyframes;
    readonly media: Media[];
    readonly boxLanes = new Map<number, Lane[]>();
    readonly fadesIn = new Map<number, Fade>();
    readonly fadesOut = new Map<number, Fade>();
    private readonly members = new Map<number, number[]>();

    constructor(wire: Wire) {
        this.wire = wire;
        this.strings = wire.strings;
        this.media = wire.media.map((file) => ({ ...file, sound: file.sound ?? "", waveform: file.waveform ?? null }));
        const { count } = wire.boxes;
        this.boxes = {
            count,
            kind: fill(new Uint8Array(count), wire.boxes.kind),
            name: fill(new Uint32Array(count), wire.boxes.name),
            start: fill(new Float64Array(count), wire.boxes.start),
            end: fill(new Float64Array(count), wire.boxes.length),
            colour: fill(new Int32Array(count), wire.boxes.colour),
            flags: fill(new Uint8Array(count), wire.boxes.flags),
            media: fill(new Int32Array(count), wire.boxes.media),
            sourceStart: fill(new Float64Array(count), wire.boxes.sourceStart),
            speed: fill(new Float64Array(count), wire.boxes.speed),
            effects: fill(new Uint32Array(count), wire.boxes.effects),
            takes: fill(new Uint32Array(count), wire.boxes.takes),
            group: fill(new Int32Array(count), wire.boxes.group),
            next: fill(new Int32Array(count), wire.boxes.crossfade),
            row: new Uint32Array(count),
            index: fill(new Uint32Array(count), wire.boxes.index),
            change: fill(new Int8Array(count), wire.boxes.change),
        };
        this.finishBoxes();
        const keyframes = wire.keyframes.count;
        this.keyframes = {
            position: fill(new Float64Array(keyframes), wire.keyframes.position),
            level: fill(new Float64Array(keyframes), wire.keyframes.level),
            value: fill(new Float64Array(keyframes), wire.keyframes.value),
            segment: fill(new Uint8Array(keyframes), wire.keyframes.segment),
        };
        this.readRows();
        this.readFades();
    }

    private finishBoxes(): void {
        const { start, end, next, group } = this.boxes;
        for (let box = 0; box < this.boxes.count; box += 1) {
            end[box] = end[box]! + start[box]!;
            next[box] = next[box] === 0 ? -1 : box + next[box]!;
            if (group[box]! >= 0) {
                const members = this.members.get(group[box]!) ?? [];
                members.push(box);
                this.members.set(group[box]!, members);
            }
        }
    }

    private readRows(): void {
        const { rows } = this.wire;
        const lanes = new LaneReader(this.wire);
        let box = 0;
        for (let i = 0; i < rows.count; i += 1) {
            const begin = box;
            const row: Row = {
                kind: at(rows.kind, i),
                name: this.strings[at(rows.name, i)]!,
                channels: this.strings[at(rows.channels, i)]!,
                output: this.strings[at(rows.output, i)]!,
                colour: at(rows.colour, i),
                flags: at(rows.flags, i),
                effects: at(rows.effects, i),
                sends: at(rows.sends, i),
                path: `${at(rows.change, i) === Change.removed ? FORMER : ""}${this.strings[at(rows.path, i)]!}`,
                change: at(rows.change, i),
                begin,
                end: begin + at(rows.boxes, i),
                lanes: lanes.take(at(rows.lanes, i)),
            };
            for (; box < row.end; box += 1) {
                this.boxes.row[box] = i;
                const own = lanes.take(at(this.wire.boxes.lanes, box));
                if (own.length > 0) {
                    this.boxLanes.set(box, own);
                }
            }
            this.rows.push(row);
        }
    }

    private readFades(): void {
        const { fades, curves } = this.wire;
        for (let i = 0; i < fades.count; i += 1) {
            const fade: Fade = { length: at(fades.length, i), curve: curves[at(fades.curve, i)] ?? [0, 1] };
            (at(fades.out, i) ? this.fadesOut : this.fadesIn).set(at(fades.box, i), fade);
        }
    }

    boxName(box: number): string {
        return this.strings[this.boxes.name[box]!]!;
    }

    /** In the session's text; that of a clip which only the first session has has "/before" in it. */
    boxPath(box: number): string {
        const row = this.rows[this.boxes.row[box]!]!;
        return `${row.path}${this.isGone(box) ? FORMER : ""}/${this.wire.clipKeys[this.boxes.kind[box]!]!}/${this.boxes.index[box]!}`;
    }

    boxColour(box: number): number {
        const own = this.boxes.colour[box]!;
        return own < 0 ? this.rows[this.boxes.row[box]!]!.colour : own;
    }

    has(box: number, flag: number): boolean {
        return (this.boxes.flags[box]! & flag) !== 0;
    }

    /** Whether a box shows where a clip of the first session was. */
    isGone(box: number): boolean {
        const change = this.boxes.change[box]!;
        return change === Change.removed || change === Change.former;
    }

    /** How a change is called; empty for what stayed the same. */
    changeWord(change: number): string {
        return this.wire.changes[change]?.word ?? "";
    }

    /** The boxes of a group. */
    membersOf(group: number): readonly number[] {
        return this.members.get(group) ?? [];
    }

    /** The row or box at a path; null if the page does not show it. */
    find(path: string): { row: number; box: number } | null {
        const row = this.rows.findIndex((candidate) => path === candidate.path || path.startsWith(`${candidate.path}/`));
        const found = this.rows[row];
        if (!found || path === found.path) {
            return found ? { row, box: -1 } : null;
        }
        for (let box = found.begin; box < found.end; box += 1) {
            if (this.boxPath(box) === path) {
                return { row, box };
            }
        }
        return null;
    }
}

/** Lanes stand in the order of rows, those of a row before those of its boxes. */
class LaneReader {
    private lane = 0;
    private keyframe = 0;

    constructor(private readonly wire: Wire) {}

    take(count: number): Lane[] {
        const { lanes, strings } = this.wire;
        const taken: Lane[] = [];
        for (const end = this.lane + count; this.lane < end; this.lane += 1) {
            const begin = this.keyframe;
            this.keyframe += at(lanes.keyframes, this.lane);
            taken.push({
                name: strings[at(lanes.name, this.lane)]!,
                low: at(lanes.low, this.lane) ?? NaN,
                high: at(lanes.high, this.lane) ?? NaN,
                begin,
                end: this.keyframe,
            });
        }
        return taken;
    }
}
