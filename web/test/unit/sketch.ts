import type { ClipColours } from "../../src/colours";
import { Picture, type Wire } from "../../src/picture";

/** Colours that differ by theme and place. */
const coloursOf = (start: string): ClipColours[] =>
    Array.from({ length: 6 }, (_, i) => ({ body: `${start}${i}0`, bar: `${start}${i}1`, edge: `${start}${i}2`, wave: `${start}${i}3`, text: `${start}${i}4` }));

/** A small session; parts replace its own. */
export function sketch(parts: Partial<Wire> = {}): Picture {
    return new Picture({
        title: "Sketch",
        watch: "",
        audio: false,
        compared: false,
        sampleRate: 1000,
        from: 0,
        to: 10000,
        cursor: 0,
        selection: [0, 0],
        end: 10000,
        time: {
            form: "time",
            rate: { count: 25, ntsc: false, dropFrame: false },
            beatsPerMinute: 0,
            beatsPerBar: 0,
            subdivisions: 0,
        },
        clipKeys: ["videoClips", "audioClips", "midiClips"],
        strings: ["", "Voices", "Rain", "/a", "Ödland", "Master", "/b"],
        rows: {
            count: 2,
            kind: [1, 3],
            name: [1, 5],
            channels: 0,
            output: [5, 0],
            colour: [0, 1],
            flags: 0,
            boxes: [4, 0],
            lanes: [1, 0],
            effects: 0,
            sends: 0,
            path: [3, 6],
            change: -1,
        },
        boxes: {
            count: 4,
            kind: [1, 1, 1, 2],
            name: [2, 4, 2, 0],
            start: [0, 2000, 1000, 9000],
            length: [5000, 100, 200, 0],
            colour: [-1, 2, -1, -1],
            flags: [0, 4, 0, 64],
            media: [0, 0, 1, -1],
            sourceStart: 0,
            speed: 1,
            takes: 0,
            effects: 0,
            group: [0, -1, 0, -1],
            crossfade: [2, 0, 0, 0],
            lanes: [1, 0, 0, 0],
            index: [0, 1, 2, 0],
            change: -1,
        },
        fades: { count: 2, box: 0, out: [0, 1], length: [500, 700], curve: 0 },
        lanes: { count: 2, name: [1, 2], low: [0, null], high: 1, keyframes: [3, 1] },
        keyframes: { count: 4, position: [0, 100, 200, 50], level: [0, 1, 0.5, 0.25], value: [0, 1, 2, null], segment: [0, 1, 2, 0] },
        media: [
            { path: "/media/rain.wav", found: true },
            { path: "C:\\media\\wind.wav", found: false },
        ],
        groups: [{ name: "Weather" }],
        curves: [[0, 0.5, 1]],
        changes: ["", "added", "removed", "moved", "changed", "was here"].map((word, i) => ({ word, colour: i - 1 })),
        notes: [],
        light: coloursOf("#a"),
        lightMuted: coloursOf("#b"),
        dark: coloursOf("#c"),
        darkMuted: coloursOf("#d"),
        ...parts,
    });
}
