/** Which boxes of a row are in view, without a look at all others. */

import type { Lane, Picture } from "./picture";

export class RowIndex {
    /** Boxes by their start. */
    readonly order: Uint32Array;
    /** For each place in `order`, the last end up to there. */
    private readonly reach: Float64Array;
    /** Whether boxes that start later lie in front. */
    readonly isInOrder: boolean;

    constructor(
        private readonly picture: Picture,
        begin: number,
        end: number,
    ) {
        const { start, end: ends } = picture.boxes;
        this.order = Uint32Array.from({ length: end - begin }, (_, i) => begin + i);
        let sorted = true;
        for (let box = begin + 1; box < end && sorted; box += 1) {
            sorted = start[box]! >= start[box - 1]!;
        }
        this.isInOrder = sorted;
        if (!sorted) {
            this.order.sort((a, b) => start[a]! - start[b]! || a - b);
        }
        this.reach = new Float64Array(this.order.length);
        let reach = -Infinity;
        this.order.forEach((box, i) => {
            reach = Math.max(reach, ends[box]!);
            this.reach[i] = reach;
        });
    }

    /** The places in `order` that hold all boxes that touch a range, and others that do not. */
    range(from: number, to: number): { begin: number; end: number } {
        const { start } = this.picture.boxes;
        const begin = firstWhere(this.order.length, (i) => this.reach[i]! >= from);
        const end = firstWhere(this.order.length, (i) => start[this.order[i]!]! > to);
        return { begin, end: Math.max(begin, end) };
    }

    /** The box in front at a range; -1 if there is none. */
    top(from: number, to: number): number {
        const { end } = this.picture.boxes;
        const range = this.range(from, to);
        let top = -1;
        for (let i = range.begin; i < range.end; i += 1) {
            const box = this.order[i]!;
            if (end[box]! >= from && box > top) {
                top = box;
            }
        }
        return top;
    }

    /** The box whose start is nearest to a position; -1 if there is none. */
    nearest(position: number): number {
        const { start } = this.picture.boxes;
        const after = firstWhere(this.order.length, (i) => start[this.order[i]!]! >= position);
        const candidates = [after - 1, after].filter((i) => i >= 0 && i < this.order.length);
        const distance = (i: number): number => Math.abs(start[this.order[i]!]! - position);
        candidates.sort((a, b) => distance(a) - distance(b));
        return candidates.length > 0 ? this.order[candidates[0]!]! : -1;
    }

    /** The place of a box in `order`. */
    placeOf(box: number): number {
        return this.order.indexOf(box);
    }
}

/** The first number below `count` at which `isTrue`, which stays true from there on; or `count`. */
export function firstWhere(count: number, isTrue: (index: number) => boolean): number {
    let low = 0;
    let high = count;
    while (low < high) {
        const middle = (low + high) >> 1;
        if (isTrue(middle)) {
            high = middle;
        } else {
            low = middle + 1;
        }
    }
    return low;
}

/** The keyframe of a lane nearest to a position, if it is within a distance; else -1. */
export function keyframeAt(picture: Picture, lane: Lane, position: number, reach: number): number {
    const places = picture.keyframes.position;
    const after = lane.begin + firstWhere(lane.end - lane.begin, (i) => places[lane.begin + i]! >= position);
    const distance = (i: number): number =>
        i >= lane.begin && i < lane.end ? Math.abs(places[i]! - position) : Infinity;
    const nearest = distance(after - 1) < distance(after) ? after - 1 : after;
    return distance(nearest) <= reach ? nearest : -1;
}

/** The indexes of all rows, each made when it is first needed. */
export class Indexes {
    private readonly made = new Map<number, RowIndex>();

    constructor(private readonly picture: Picture) {}

    of(row: number): RowIndex {
        let index = this.made.get(row);
        if (!index) {
            const { begin, end } = this.picture.rows[row]!;
            index = new RowIndex(this.picture, begin, end);
            this.made.set(row, index);
        }
        return index;
    }
}
