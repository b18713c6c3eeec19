import { firstWhere } from "../cull";
import { slopeOf as slopeThrough } from "../curve";
import { type Keyframes, type Lane, Segment } from "../picture";
import type { Scene, Span } from "./scene";

/** Closer keyframes are drawn as the range of their levels. */
const LEAST_DISTANCE = 1.5;
const LEAST_DOT_DISTANCE = 7;
const DOT = 2.25;

function slopeOf(keyframes: Keyframes, lane: Lane, i: number): number {
    return slopeThrough(keyframes.position, keyframes.level, lane.begin, lane.end, i);
}

class CurvePainter {
    constructor(
        private readonly context: CanvasRenderingContext2D,
        private readonly keyframes: Keyframes,
        private readonly span: Span,
        private readonly lane: Lane,
        private readonly top: number,
        private readonly height: number,
    ) {}

    x(i: number): number {
        return (this.keyframes.position[i]! - this.span.left) / this.span.scale;
    }

    y(level: number): number {
        return this.top + (1 - Math.min(1, Math.max(0, level))) * this.height;
    }

    yOf(i: number): number {
        return this.y(this.keyframes.level[i]!);
    }

    /** Traces keyframes from `first` up to `last`, and what lies beside them. */
    trace(first: number, last: number): void {
        const { context } = this;
        context.moveTo(Math.min(-2, this.x(first)), this.yOf(first));
        context.lineTo(this.x(first), this.yOf(first));
        for (let i = first; i < last; i += 1) {
            this.traceSegment(i);
        }
        context.lineTo(Math.max(this.span.width + 2, this.x(last)), this.yOf(last));
    }

    /** Traces keyframes that lie closer than pixels: each pixel's lowest and highest level. */
    traceDense(first: number, last: number): void {
        const { context, keyframes } = this;
        context.moveTo(-2, this.yOf(first));
        for (let i = first; i <= last; ) {
            const x = this.x(i);
            let low = Infinity;
            let high = -Infinity;
            for (; i <= last && this.x(i) < x + LEAST_DISTANCE; i += 1) {
                low = Math.min(low, keyframes.level[i]!);
                high = Math.max(high, keyframes.level[i]!);
            }
            context.lineTo(x, this.y(low));
            context.lineTo(x, this.y(high));
        }
        context.lineTo(this.span.width + 2, this.yOf(last));
    }

    dots(first: number, last: number): void {
        for (let i = first; i <= last; i += 1) {
            this.context.moveTo(this.x(i) + DOT, this.yOf(i));
            this.context.arc(this.x(i), this.yOf(i), DOT, 0, Math.PI * 2);
        }
    }

    private traceSegment(i: number): void {
        const { context, keyframes, lane } = this;
        const x = this.x(i + 1);
        const y = this.yOf(i + 1);
        switch (keyframes.segment[i]) {
            case Segment.hold:
                context.lineTo(x, this.yOf(i));
                context.lineTo(x, y);
                return;
            case Segment.spline: {
                const third = (keyframes.position[i + 1]! - keyframes.position[i]!) / 3;
                const from = keyframes.level[i]! + slopeOf(keyframes, lane, i) * third;
                const to = keyframes.level[i + 1]! - slopeOf(keyframes, lane, i + 1) * third;
                const width = third / this.span.scale;
                context.bezierCurveTo(this.x(i) + width, this.y(from), x - width, this.y(to), x, y);
                return;
            }
            default:
                context.lineTo(x, y);
        }
    }
}

export function paintCurve(
    context: CanvasRenderingContext2D,
    scene: Scene,
    span: Span,
    lane: Lane,
    top: number,
    height: number,
    colour: string,
    isFilled: boolean,
): void {
    const { keyframes } = scene.picture;
    const count = lane.end - lane.begin;
    if (count === 0) {
        return;
    }
    const to = span.left + span.width * span.scale;
    const begin = lane.begin + firstWhere(count, (i) => keyframes.position[lane.begin + i]! > span.left);
    const end = lane.begin + firstWhere(count, (i) => keyframes.position[lane.begin + i]! > to);
    // One more at both sides, from and to which curves lead.
    const first = Math.max(lane.begin, begin - 1);
    const last = Math.min(lane.end - 1, Math.max(first, end));
    const painter = new CurvePainter(context, keyframes, span, lane, top, height);
    const isDense = last - first > span.width / LEAST_DISTANCE;
    context.beginPath();
    if (isDense) {
        painter.traceDense(first, last);
    } else {
        painter.trace(first, last);
    }
    context.strokeStyle = colour;
    context.lineWidth = isFilled ? 1.5 : 1;
    context.stroke();
    if (isFilled) {
        context.lineTo(Math.max(span.width + 2, painter.x(last)), top + height);
        context.lineTo(Math.min(-2, painter.x(first)), top + height);
        context.closePath();
        context.save();
        context.globalAlpha = 0.14;
        context.fillStyle = colour;
        context.fill();
        context.restore();
    }
    if (isFilled && (last - first) * LEAST_DOT_DISTANCE < span.width) {
        context.beginPath();
        painter.dots(first, last);
        context.fillStyle = colour;
        context.fill();
    }
}
