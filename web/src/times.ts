/** Positions as text, as the library's FormatPosition writes them; exact for whole numbers of any size. */

export interface FrameRate {
    count: number;
    ntsc: boolean;
    dropFrame: boolean;
}

/** In which form positions are shown. */
export type TimeForm = "samples" | "time" | "timecode" | "bars";

export interface TimeBase {
    sampleRate: number;
    form: TimeForm;
    /** For timecode. */
    rate: FrameRate;
    /** For bars and beats: above 0, and in the range that the library takes. */
    beatsPerMinute: number;
    beatsPerBar: number;
    subdivisions: number;
}

const TEMPO_SCALE = 1000000;

export function floorDiv(a: bigint, b: bigint): bigint {
    const quotient = a / b;
    return a % b < 0n ? quotient - 1n : quotient;
}

/** The nearest whole number to a / b; halves away from 0. */
function nearest(a: bigint, b: bigint): bigint {
    const magnitude = a < 0n ? -a : a;
    const rounded = (magnitude * 2n + b) / (b * 2n);
    return a < 0n ? -rounded : rounded;
}

function pad(value: bigint, digits: number): string {
    return value.toString().padStart(digits, "0");
}

export function formatTime(position: bigint, sampleRate: number, decimals: number): string {
    const scale = 10n ** BigInt(decimals);
    const units = nearest(position * scale, BigInt(sampleRate));
    const magnitude = units < 0n ? -units : units;
    const seconds = magnitude / scale;
    const fraction = decimals > 0 ? `.${pad(magnitude % scale, decimals)}` : "";
    const sign = units < 0n ? "-" : "";
    return `${sign}${seconds / 3600n}:${pad((seconds / 60n) % 60n, 2)}:${pad(seconds % 60n, 2)}${fraction}`;
}

/** `frames` frames last `samples` samples. */
function periodOf(rate: FrameRate, sampleRate: number): { frames: bigint; samples: bigint } {
    return rate.ntsc
        ? { frames: BigInt(rate.count) * 1000n, samples: BigInt(sampleRate) * 1001n }
        : { frames: BigInt(rate.count), samples: BigInt(sampleRate) };
}

/** Frames with the numbers that drop frame skips. */
function frameNumber(frames: bigint, rate: FrameRate): bigint {
    if (!rate.dropFrame) {
        return frames;
    }
    const dropped = BigInt(Math.floor(rate.count / 15));
    const minute = BigInt(rate.count) * 60n - dropped;
    const tenMinutes = minute * 10n + dropped;
    const inTen = frames % tenMinutes;
    const minutes = inTen < dropped ? 0n : (inTen - dropped) / minute;
    return frames + dropped * ((frames / tenMinutes) * 9n + minutes);
}

/** The frames before a frame number; those of a skipped number are the first after it. */
function framesBefore(number: bigint, rate: FrameRate): bigint {
    if (!rate.dropFrame) {
        return number;
    }
    const dropped = BigInt(Math.floor(rate.count / 15));
    const minute = BigInt(rate.count) * 60n;
    const minutes = number / minute;
    const skips = minutes % 10n !== 0n && number % minute < dropped;
    const valid = skips ? minutes * minute + dropped : number;
    return valid - dropped * (minutes - minutes / 10n);
}

/** The first sample of the frame with that number, which may be negative. */
export function samplesOfFrame(number: bigint, base: TimeBase): bigint {
    const { rate } = base;
    const period = periodOf(rate, base.sampleRate);
    const magnitude = framesBefore(number < 0n ? -number : number, rate);
    const frames = number < 0n ? -magnitude : magnitude;
    return -floorDiv(-(frames * period.samples), period.frames);
}

function formatTimecode(position: bigint, base: TimeBase): string {
    const { rate } = base;
    const period = periodOf(rate, base.sampleRate);
    const frames = nearest(position * period.frames, period.samples);
    const number = frameNumber(frames < 0n ? -frames : frames, rate);
    const count = BigInt(rate.count);
    const seconds = number / count;
    const digits = Math.max(2, (rate.count - 1).toString().length);
    const parts = [seconds / 3600n, (seconds / 60n) % 60n, seconds % 60n].map((part) => pad(part, 2));
    return `${frames < 0n ? "-" : ""}${parts.join(":")}${rate.dropFrame ? ";" : ":"}${pad(number % count, digits)}`;
}

/** Bars and beats in whole numbers: `units` subdivisions last `samples` samples. */
export interface Grid {
    beatsPerBar: bigint;
    subdivisions: bigint;
    units: bigint;
    samples: bigint;
}

export function gridOf(base: TimeBase): Grid {
    const subdivisions = BigInt(Math.max(1, base.subdivisions));
    return {
        beatsPerBar: BigInt(base.beatsPerBar),
        subdivisions,
        units: BigInt(Math.round(base.beatsPerMinute * TEMPO_SCALE)) * subdivisions,
        samples: BigInt(base.sampleRate) * 60n * BigInt(TEMPO_SCALE),
    };
}

/** The first sample of a subdivision. */
export function samplesOfUnit(unit: bigint, grid: Grid): bigint {
    return -floorDiv(-(unit * grid.samples), grid.units);
}

function formatBarsAndBeats(position: bigint, grid: Grid, withSubdivision: boolean): string {
    const units = nearest(position * grid.units, grid.samples);
    const beats = floorDiv(units, grid.subdivisions);
    const bars = floorDiv(beats, grid.beatsPerBar);
    const text = `${bars + 1n}:${beats - bars * grid.beatsPerBar + 1n}`;
    if (grid.subdivisions === 1n || !withSubdivision) {
        return text;
    }
    const digits = (grid.subdivisions - 1n).toString().length;
    return `${text}.${pad(units - beats * grid.subdivisions, digits)}`;
}

export function toWhole(position: number): bigint {
    return BigInt(Math.round(position));
}

/** Forms a position takes on a ruler. */
export interface Precision {
    /** Decimals of a second, where times are seconds. */
    decimals: number;
    /** With the part of a beat, where times are bars and beats. */
    subdivisions: boolean;
}

const FULL: Precision = { decimals: 3, subdivisions: true };

export function formatPosition(base: TimeBase, position: bigint, precision: Precision = FULL): string {
    switch (base.form) {
        case "samples":
            return position.toString();
        case "time":
            return formatTime(position, base.sampleRate, precision.decimals);
        case "timecode":
            return formatTimecode(position, base);
        case "bars":
            return formatBarsAndBeats(position, gridOf(base), precision.subdivisions);
    }
}
