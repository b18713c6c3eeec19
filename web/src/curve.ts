/** Curves through keyframes, as they are drawn and heard. */

/**
 * The slope of a curve through points that never leaves the levels of its two neighbours: at each
 * point the harmonic mean of the slopes beside it; flat at peaks and at both ends.
 */
export function slopeAt(before: number, after: number): number {
    return before * after <= 0 ? 0 : (2 * before * after) / (before + after);
}

type Numbers = ArrayLike<number>;

function slopeBetween(position: Numbers, level: Numbers, i: number): number {
    const distance = position[i + 1]! - position[i]!;
    return distance > 0 ? (level[i + 1]! - level[i]!) / distance : 0;
}

/** The slope at keyframe `i` of those from `begin` up to `end`. */
export function slopeOf(position: Numbers, level: Numbers, begin: number, end: number, i: number): number {
    if (i === begin || i === end - 1) {
        return 0;
    }
    return slopeAt(slopeBetween(position, level, i - 1), slopeBetween(position, level, i));
}
