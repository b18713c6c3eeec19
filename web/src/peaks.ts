/** Waveforms: the lowest and highest levels of media, at every size. */

import { bytesOf } from "./base64";
import type { Media, Picture } from "./picture";

/** From -127 to 127. */
interface Level {
    lowest: Int8Array;
    highest: Int8Array;
}

export interface Waveform {
    sampleRate: number;
    /** Samples of each channel. */
    frames: number;
    framesPerPeak: number;
    /** Each half as long as the one before it. */
    levels: Level[];
}

const signed = (base64: string): Int8Array => new Int8Array(bytesOf(base64).buffer);

function halved(level: Level): Level {
    const count = Math.ceil(level.lowest.length / 2);
    const half = { lowest: new Int8Array(count), highest: new Int8Array(count) };
    for (let i = 0; i < count; i += 1) {
        const other = Math.min(2 * i + 1, level.lowest.length - 1);
        half.lowest[i] = Math.min(level.lowest[2 * i]!, level.lowest[other]!);
        half.highest[i] = Math.max(level.highest[2 * i]!, level.highest[other]!);
    }
    return half;
}

function levelsOf(first: Level): Level[] {
    const levels = [first];
    for (let last = first; last.lowest.length > 1; ) {
        last = halved(last);
        levels.push(last);
    }
    return levels;
}

export function waveformOf(media: Media): Waveform | null {
    const { waveform } = media;
    if (!waveform) {
        return null;
    }
    const { sampleRate, frames, framesPerPeak, lowest, highest } = waveform;
    const levels = levelsOf({ lowest: signed(lowest), highest: signed(highest) });
    return { sampleRate, frames, framesPerPeak, levels };
}

/** The waveforms of all media, each decoded when it is first drawn. */
export class Waveforms {
    private readonly made = new Map<number, Waveform | null>();

    constructor(private readonly picture: Picture) {}

    of(media: number): Waveform | null {
        if (media < 0) {
            return null;
        }
        let waveform = this.made.get(media);
        if (waveform === undefined) {
            waveform = waveformOf(this.picture.media[media]!);
            this.made.set(media, waveform);
        }
        return waveform;
    }
}

/**
 * The lowest and highest level in a stretch, in samples of the media.
 * @param out takes both, from -1 to 1
 */
export function extremes(waveform: Waveform, from: number, to: number, out: { low: number; high: number }): void {
    const peaks = Math.max(1, (to - from) / waveform.framesPerPeak);
    const depth = Math.min(Math.floor(Math.log2(peaks)), waveform.levels.length - 1);
    const { lowest, highest } = waveform.levels[depth]!;
    const size = waveform.framesPerPeak * 2 ** depth;
    const first = Math.max(0, Math.floor(from / size));
    const last = Math.min(lowest.length - 1, Math.max(first, Math.ceil(to / size) - 1));
    let low = 127;
    let high = -127;
    for (let i = first; i <= last; i += 1) {
        low = Math.min(low, lowest[i]!);
        high = Math.max(high, highest[i]!);
    }
    out.low = low > high ? 0 : low / 127;
    out.high = low > high ? 0 : high / 127;
}
