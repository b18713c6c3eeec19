/** Which part of the timeline is shown, and how large. */

const SMALLEST_SCALE = 1 / 32;
/** Room beside the session when everything is shown, as a part of it. */
const MARGIN = 0.02;
/** How much of the view may lie beyond the session. */
const MOST_BEYOND = 0.5;

export class Viewport {
    /** The position at the left edge. */
    left = 0;
    /** Samples in a pixel. */
    scale = 1;
    width = 1;
    /** Pixels of rows above the upper edge. */
    top = 0;
    height = 1;
    /** Pixels of all rows. */
    rowsHeight = 0;

    constructor(
        readonly from: number,
        readonly to: number,
    ) {}

    get right(): number {
        return this.left + this.width * this.scale;
    }

    /** Whether the whole session is shown, so that a new width shows it whole again. */
    get isWhole(): boolean {
        return Math.abs(this.scale / this.wholeScale - 1) < 1e-6;
    }

    get wholeScale(): number {
        return Math.max(((this.to - this.from) * (1 + 2 * MARGIN)) / this.width, SMALLEST_SCALE);
    }

    x(position: number): number {
        return (position - this.left) / this.scale;
    }

    position(x: number): number {
        return this.left + x * this.scale;
    }

    resize(width: number, height: number): void {
        const wasWhole = this.isWhole;
        this.width = Math.max(1, width);
        this.height = Math.max(1, height);
        if (wasWhole) {
            this.showAll();
        }
        this.clamp();
    }

    showAll(): void {
        this.scale = this.wholeScale;
        this.left = this.from - (this.width * this.scale - (this.to - this.from)) / 2;
    }

    /** Shows a range with some room at both sides. */
    showRange(from: number, to: number, room = 0.1): void {
        const length = Math.max(1, to - from);
        this.scale = (length * (1 + 2 * room)) / this.width;
        this.left = from - length * room;
        this.clamp();
    }

    /** Enlarges by a factor, and keeps the position at `x` where it is. */
    zoom(factor: number, x: number): void {
        const anchor = this.position(x);
        this.scale = this.limited(this.scale / factor);
        this.left = anchor - x * this.scale;
        this.clamp();
    }

    scrollBy(dx: number, dy: number): void {
        this.left += dx * this.scale;
        this.top += dy;
        this.clamp();
    }

    /** Scrolls as little as shows a stretch of the timeline and of the rows. */
    reveal(from: number, to: number, top: number, bottom: number): void {
        const room = this.width * this.scale * 0.05;
        if (to < this.left || from > this.right) {
            this.left = (from + Math.min(to, from + this.width * this.scale)) / 2 - (this.width * this.scale) / 2;
        } else if (from < this.left) {
            this.left = from - room;
        } else if (to > this.right) {
            this.left = Math.min(from - room, to + room - this.width * this.scale);
        }
        if (top < this.top) {
            this.top = top;
        } else if (bottom > this.top + this.height) {
            this.top = Math.min(top, bottom - this.height);
        }
        this.clamp();
    }

    clamp(): void {
        this.scale = this.limited(this.scale);
        const span = this.width * this.scale;
        const length = this.to - this.from;
        const beyond = Math.min(span * MOST_BEYOND, Math.max(0, length - span) * MOST_BEYOND + span * MARGIN);
        const middle = this.from - (span - length) / 2;
        const lowest = Math.min(this.from - beyond, middle);
        const highest = Math.max(this.to + beyond - span, middle);
        this.left = Math.min(Math.max(this.left, lowest), highest);
        this.top = Math.min(Math.max(0, this.top), Math.max(0, this.rowsHeight - this.height));
    }

    private limited(scale: number): number {
        return Math.min(Math.max(scale, SMALLEST_SCALE), Math.max(this.wholeScale, SMALLEST_SCALE));
    }
}
