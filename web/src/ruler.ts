import {
    floorDiv,
    formatPosition,
    gridOf,
    type Precision,
    samplesOfFrame,
    samplesOfUnit,
    type TimeBase,
    toWhole,
} from "./times";

export interface Tick {
    position: number;
    /** Empty for a small mark between two labels. */
    label: string;
}

/** Counts that a scale of times has, in its own unit, and where its marks lie. */
interface Scale {
    /** Samples of one unit, about. */
    unit: number;
    /** Distances of marks in units, rising; each a multiple of one before it. */
    steps: number[];
    positionOf: (count: number) => number;
    label: (count: number, step: number) => string;
}

const MOST_TICKS = 4000;
const MOST_DECIMALS = 6;

/** 1, 2, 5, 10, 20, ... */
function decadesTo(most: number, first = 1): number[] {
    const steps: number[] = [];
    for (let decade = first; decade <= most; decade *= 10) {
        steps.push(decade, decade * 2, decade * 5);
    }
    return steps;
}

/** Round numbers of seconds up to days. */
const SECONDS = [1, 2, 5, 10, 30, 60, 120, 300, 600, 1800, 3600, 7200, 21600, 43200, 86400];
const LONG = decadesTo(1e9, 10).map((days) => days * 86400);

function samplesScale(base: TimeBase): Scale {
    return {
        unit: 1,
        steps: decadesTo(1e15),
        positionOf: (count) => count,
        label: (count) => formatPosition(base, BigInt(count)),
    };
}

function timeScale(base: TimeBase): Scale {
    const perSecond = 10 ** MOST_DECIMALS;
    const label = (count: number, step: number): string => {
        let decimals = MOST_DECIMALS;
        for (let rest = step; decimals > 0 && rest % 10 === 0; rest /= 10) {
            decimals -= 1;
        }
        const precision: Precision = { decimals, subdivisions: true };
        return formatPosition(base, toWhole((count / perSecond) * base.sampleRate), precision);
    };
    return {
        unit: base.sampleRate / perSecond,
        steps: [...decadesTo(perSecond / 10), ...[...SECONDS, ...LONG].map((seconds) => seconds * perSecond)],
        positionOf: (count) => (count / perSecond) * base.sampleRate,
        label,
    };
}

function timecodeScale(base: TimeBase): Scale {
    const { count, ntsc } = base.rate;
    const frames = [1, 2, 5, 10].filter((step) => step < count && count % step === 0);
    const positionOf = (number: number): number => Number(samplesOfFrame(BigInt(number), base));
    return {
        unit: (base.sampleRate * (ntsc ? 1.001 : 1)) / count,
        steps: [...frames, ...[...SECONDS, ...LONG].map((seconds) => seconds * count)],
        positionOf,
        label: (number) => formatPosition(base, BigInt(positionOf(number))),
    };
}

function barsScale(base: TimeBase): Scale {
    const grid = gridOf(base);
    const subdivisions = Number(grid.subdivisions);
    const bar = subdivisions * base.beatsPerBar;
    const parts = decadesTo(subdivisions).filter((step) => step < subdivisions && subdivisions % step === 0);
    const steps = [...parts, subdivisions];
    for (let bars = 1; bars <= 2 ** 30; bars *= 2) {
        if (bar * bars > steps[steps.length - 1]!) {
            steps.push(bar * bars);
        }
    }
    const positionOf = (unit: number): number => Number(samplesOfUnit(BigInt(unit), grid));
    return {
        unit: Number(grid.samples) / Number(grid.units),
        steps,
        positionOf,
        label: (unit, step) =>
            formatPosition(base, BigInt(positionOf(unit)), { decimals: 0, subdivisions: step % subdivisions !== 0 }),
    };
}

export class Ruler {
    private readonly scale: Scale;

    constructor(base: TimeBase) {
        const scales = { samples: samplesScale, time: timeScale, timecode: timecodeScale, bars: barsScale };
        this.scale = scales[base.form](base);
    }

    /**
     * The marks from one position to another.
     * @param room the least number of samples between two labels
     * @param small the least number of samples between two marks
     */
    ticks(from: number, to: number, room: number, small: number): Tick[] {
        const { unit, steps, positionOf, label } = this.scale;
        const widest = steps[steps.length - 1]!;
        const major = steps.find((step) => step * unit >= room) ?? widest;
        const minor = steps.find((step) => step * unit >= small && major % step === 0) ?? major;
        const ticks: Tick[] = [];
        let count = Math.floor(from / unit / minor) * minor;
        for (; ticks.length < MOST_TICKS; count += minor) {
            const position = positionOf(count);
            if (position > to) {
                break;
            }
            if (position >= from) {
                ticks.push({ position, label: count % major === 0 ? label(count, major) : "" });
            }
        }
        return ticks;
    }
}

/** Where a bar begins at or before a position, for stripes behind the clips; none without bars. */
export function barLength(base: TimeBase): number {
    if (base.form !== "bars") {
        return 0;
    }
    const grid = gridOf(base);
    return Number(floorDiv(grid.beatsPerBar * grid.subdivisions * grid.samples, grid.units));
}
