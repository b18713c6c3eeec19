/** Things in words, for tips, the side panel and readers of screens. */

import { BOX_KINDS, BoxFlag, type Lane, type Picture, type Row, ROW_KINDS, RowFlag } from "./picture";
import { formatPosition, formatTime, type TimeBase, toWhole } from "./times";

export function positionText(time: TimeBase, position: number): string {
    return formatPosition(time, toWhole(position));
}

/** A length as hours, minutes and seconds; as samples if there is no rate. */
export function lengthText(time: TimeBase, length: number): string {
    if (time.sampleRate === 0) {
        return `${Math.round(length)} samples`;
    }
    const text = formatTime(toWhole(length), time.sampleRate, 3);
    return text.replace(/^0:(?:0)?/u, "");
}

export function capital(text: string): string {
    return text.charAt(0).toUpperCase() + text.slice(1);
}

export function countText(count: number, thing: string): string {
    return `${count.toLocaleString("en")} ${thing}${count === 1 ? "" : "s"}`;
}

export function rowKindText(row: Row): string {
    const kind = ROW_KINDS[row.kind] ?? "audio";
    return kind === "bus" || kind === "master" || kind === "metronome" ? kind : `${kind} track`;
}

export function rowName(row: Row): string {
    return row.name || `unnamed ${rowKindText(row)}`;
}

/** Such as "stereo → Master". */
export function routeText(row: Row): string {
    return [row.channels, row.output && `→ ${row.output}`].filter(Boolean).join(" ");
}

export function rowStates(picture: Picture, row: Row): string[] {
    const states = Object.entries(RowFlag).filter(([, flag]) => row.flags & flag);
    return [picture.changeWord(row.change), ...states.map(([state]) => state)].filter(Boolean);
}

/** What there is to say of a row beside its name. */
export function rowAbout(picture: Picture, row: Row): string {
    return [
        rowKindText(row),
        row.channels,
        row.output && `to ${row.output}`,
        ...rowStates(picture, row),
        countText(row.end - row.begin, "clip"),
        row.lanes.length > 0 ? `automation of ${row.lanes.map((lane) => lane.name).join(", ")}` : "",
    ]
        .filter(Boolean)
        .join(", ");
}

export function rowLabel(picture: Picture, row: Row): string {
    return `${rowName(row)}, ${rowAbout(picture, row)}`;
}

export function boxKindText(picture: Picture, box: number): string {
    return `${BOX_KINDS[picture.boxes.kind[box]!] ?? ""} clip`.trim();
}

export function boxName(picture: Picture, box: number): string {
    return picture.boxName(box) || `unnamed ${boxKindText(picture, box)}`;
}

/** What is special about a clip. */
export function boxStates(picture: Picture, box: number): string[] {
    const change = picture.changeWord(picture.boxes.change[box]!);
    const states: string[] = change ? [change] : [];
    if (picture.has(box, BoxFlag.missing)) {
        states.push("media missing");
    }
    for (const state of ["offline", "muted", "locked", "looped", "stretched"] as const) {
        if (picture.has(box, BoxFlag[state])) {
            states.push(state);
        }
    }
    const takes = picture.boxes.takes[box]!;
    if (takes > 0) {
        states.push(countText(takes, "take"));
    }
    const effects = picture.boxes.effects[box]!;
    if (effects > 0) {
        states.push(countText(effects, "effect"));
    }
    if (picture.boxes.next[box]! >= 0) {
        states.push("crossfade into the next clip");
    }
    return states;
}

/** What there is to say of a clip beside its name. */
export function boxAbout(picture: Picture, time: TimeBase, box: number): string {
    const { start, end, row } = picture.boxes;
    return [
        `${boxKindText(picture, box)} on ${rowName(picture.rows[row[box]!]!)}`,
        `at ${positionText(time, start[box]!)}`,
        `${lengthText(time, end[box]! - start[box]!)} long`,
        ...boxStates(picture, box),
    ].join(", ");
}

export function boxLabel(picture: Picture, time: TimeBase, box: number): string {
    return `${boxName(picture, box)}, ${boxAbout(picture, time, box)}`;
}

/** The last part of a path, of any system. */
export function fileName(path: string): string {
    return path.split(/[/\\]/u).pop() ?? path;
}

export function numberText(value: number): string {
    return Number.isFinite(value) ? Number(value.toPrecision(6)).toString() : "not a number";
}

export function laneText(lane: Lane): string {
    const range = `from ${numberText(lane.low)} to ${numberText(lane.high)}`;
    return `${lane.name}: ${countText(lane.end - lane.begin, "keyframe")}, ${range}`;
}
