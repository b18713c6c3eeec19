import type { Indexes } from "../cull";
import type { Waveforms } from "../peaks";
import type { Picture } from "../picture";
import type { Ruler } from "../ruler";
import type { Theme } from "../theme";
import type { TimeBase } from "../times";
import type { TextFitter } from "./text";

/** What painters need of the page, apart from the place that is shown. */
export interface Scene {
    picture: Picture;
    time: TimeBase;
    ruler: Ruler;
    indexes: Indexes;
    waveforms: Waveforms;
    theme: Theme;
    texts: TextFitter;
    /** The box that is chosen; -1: none. */
    chosen: number;
    /** The box under the pointer; -1: none. */
    hovered: number;
    /** The texts, by their numbers, that a search has found; null: no search. */
    found: ReadonlySet<number> | null;
    /** The range that the reader chose. */
    range: readonly [number, number] | null;
    /** The position that is heard; null if the page cannot be heard. */
    playhead: number | null;
}

/** Where something is, in pixels. */
export interface Frame {
    x: number;
    y: number;
    width: number;
    height: number;
}

/** Horizontal places of a picture. */
export interface Span {
    left: number;
    scale: number;
    width: number;
}
