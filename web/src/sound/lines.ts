/** Values that change along the timeline. */

import { slopeOf } from "../curve";
import type { Fade } from "../picture";
import { type Json, type JsonObject, listOf, numberOf, objectOf } from "../session";

export interface Point {
    position: number;
    value: number;
}

/**
 * Points in the order of positions, with a straight way from one to the next. Of two at one position
 * the second counts from there on. Before the first point and after the last one, their values hold.
 * Never empty.
 */
export type Line = readonly Point[];

/** Into how many straight parts a way is divided that is not straight. */
const PARTS = 16;

export function constant(value: number): Line {
    return [{ position: 0, value }];
}

export function isConstant(line: Line, value: number): boolean {
    return line.every((point) => point.value === value);
}

export function valueAt(line: Line, position: number): number {
    const next = line.findIndex((point) => point.position > position);
    const after = line[next];
    const before = line[next < 0 ? line.length - 1 : next - 1];
    if (!after || !before) {
        return (before ?? after)?.value ?? 0;
    }
    const share = (position - before.position) / (after.position - before.position);
    return before.value + share * (after.value - before.value);
}

/** Nothing is made louder than by this many dB, whatever a session says. */
const LOUDEST = 60;

/** A level in dB as a factor. */
export function gainOf(decibels: number): number {
    return 10 ** (Math.min(decibels, LOUDEST) / 20);
}

/** A fade's levels from an end of a clip inwards; `direction` is 1 at its start and -1 at its end. */
export function fadeLine(fade: Fade, position: number, direction: 1 | -1): Line {
    const steps = fade.curve.length - 1;
    const line = fade.curve.map((value, i) => ({ position: position + (direction * fade.length * i) / steps, value }));
    return direction > 0 ? line : line.reverse();
}

interface Keyframe {
    position: number;
    value: number;
    isHeld: boolean;
}

/** In the order of time. Of several at one position, the last one counts. */
function keyframesOf(lane: Json | undefined, start: number): Keyframe[] {
    const keyframes = listOf(objectOf(lane)?.["keyframes"]).map((json): Keyframe => {
        const keyframe = objectOf(json) ?? {};
        return {
            position: start + numberOf(keyframe["sampleOffset"], 0),
            value: numberOf(keyframe["value"], 0),
            isHeld: keyframe["type"] === "hold",
        };
    });
    keyframes.sort((a, b) => a.position - b.position);
    return keyframes.filter((keyframe, i) => keyframes[i + 1]?.position !== keyframe.position);
}

/** Automation as a line of converted values; null if there is none. */
export function laneLine(lane: Json | undefined, start: number, convert: (value: number) => number): Line | null {
    const keyframes = keyframesOf(lane, start);
    if (keyframes.length === 0) {
        return null;
    }
    const position = keyframes.map((keyframe) => keyframe.position);
    const value = keyframes.map((keyframe) => keyframe.value);
    const isSpline = objectOf(lane)?.["enableSplines"] === true;
    const slope = (i: number): number => (isSpline ? slopeOf(position, value, 0, value.length, i) : 0);
    const line: Point[] = [];
    keyframes.forEach((keyframe, i) => {
        line.push({ position: keyframe.position, value: convert(keyframe.value) });
        const next = keyframes[i + 1];
        if (!next || next.value === keyframe.value) {
            return;
        }
        if (keyframe.isHeld) {
            line.push({ position: next.position, value: convert(keyframe.value) });
            return;
        }
        const length = next.position - keyframe.position;
        for (let part = 1; part < PARTS; part += 1) {
            const share = part / PARTS;
            const between = isSpline
                ? hermite(share, keyframe.value, next.value, slope(i) * length, slope(i + 1) * length)
                : keyframe.value + share * (next.value - keyframe.value);
            line.push({ position: keyframe.position + share * length, value: convert(between) });
        }
    });
    return line;
}

/** Between two values with the slopes that a curve has at them. */
function hermite(share: number, from: number, to: number, fromSlope: number, toSlope: number): number {
    const rest = 1 - share;
    return (
        rest * rest * (1 + 2 * share) * from +
        share * share * (1 + 2 * rest) * to +
        share * rest * rest * fromSlope -
        share * share * rest * toSlope
    );
}

/** The first parameter of a control. */
function parameterOf(control: Json | undefined): JsonObject {
    return objectOf(objectOf(objectOf(control)?.["parameters"])?.["0"]) ?? {};
}

/** The automation of a control, or else its value; null if it has neither. */
export function controlLine(control: Json | undefined, start: number, convert: (value: number) => number): Line | null {
    const { parameterKeyframes, parameterValue } = parameterOf(control);
    const automated = laneLine(parameterKeyframes, start, convert);
    return automated ?? (typeof parameterValue === "number" ? constant(convert(parameterValue)) : null);
}

export function isAutomated(control: Json | undefined): boolean {
    return laneLine(parameterOf(control)["parameterKeyframes"], 0, (value) => value) !== null;
}
