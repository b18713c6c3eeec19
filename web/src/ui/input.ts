import type { Viewport } from "../viewport";

/** What a hand on the timeline does. */
export interface Hand {
    moved(): void;
    hover(x: number, y: number): void;
    leave(): void;
    press(x: number, y: number): void;
}

const WHEEL_ZOOM = 0.0022;
const PINCH_ZOOM = 0.01;
const LINE = 20;
/** Pixels that a press may move and still be no drag. */
const STILL = 4;

interface Point {
    x: number;
    y: number;
}

/** A wheel's turn in pixels. */
function pixelsOf(event: WheelEvent, page: number): Point {
    const unit = event.deltaMode === WheelEvent.DOM_DELTA_LINE ? LINE : event.deltaMode === WheelEvent.DOM_DELTA_PAGE ? page : 1;
    return { x: event.deltaX * unit, y: event.deltaY * unit };
}

/** Wheel and trackpad: scrolls, and zooms with Ctrl, Alt or a pinch. */
export function listenToWheel(element: HTMLElement, view: Viewport, hand: Pick<Hand, "moved">, zoomsAt: (event: WheelEvent) => number): void {
    element.addEventListener(
        "wheel",
        (event) => {
            event.preventDefault();
            const turn = pixelsOf(event, view.height);
            if (event.ctrlKey || event.metaKey || event.altKey) {
                // Browsers tell a pinch as a slow turn with Ctrl.
                const speed = Math.abs(turn.y) < 40 ? PINCH_ZOOM : WHEEL_ZOOM;
                view.zoom(Math.exp(-turn.y * speed), zoomsAt(event));
            } else if (event.shiftKey) {
                view.scrollBy(turn.x + turn.y, 0);
            } else if (turn.x === 0 && view.rowsHeight <= view.height) {
                view.scrollBy(turn.y, 0);
            } else {
                view.scrollBy(turn.x, turn.y);
            }
            hand.moved();
        },
        { passive: false },
    );
}

/** Pointers on the timeline: one drags, two pinch, a still one presses. */
export class Pointers {
    private readonly down = new Map<number, Point>();
    private distance = 0;
    private isStill = true;
    private pressed: Point = { x: 0, y: 0 };

    constructor(
        private readonly element: HTMLElement,
        private readonly view: Viewport,
        private readonly hand: Hand,
    ) {
        element.addEventListener("pointerdown", (event) => this.begin(event));
        element.addEventListener("pointermove", (event) => this.move(event));
        element.addEventListener("pointerup", (event) => this.end(event, true));
        element.addEventListener("pointercancel", (event) => this.end(event, false));
        element.addEventListener("pointerleave", () => {
            if (this.down.size === 0) {
                this.hand.leave();
            }
        });
    }

    private begin(event: PointerEvent): void {
        if (event.button !== 0) {
            return;
        }
        this.element.setPointerCapture(event.pointerId);
        this.isStill = this.down.size === 0;
        this.pressed = this.pointOf(event);
        this.down.set(event.pointerId, this.pressed);
        this.distance = this.spread();
    }

    private move(event: PointerEvent): void {
        const point = this.pointOf(event);
        const before = this.down.get(event.pointerId);
        if (!before) {
            this.hand.hover(point.x, point.y);
            return;
        }
        if (this.isStill && Math.hypot(point.x - this.pressed.x, point.y - this.pressed.y) < STILL) {
            return;
        }
        this.isStill = false;
        this.hand.leave();
        this.element.parentElement?.classList.add("is-dragging");
        this.down.set(event.pointerId, point);
        const share = 1 / this.down.size;
        this.view.scrollBy((before.x - point.x) * share, (before.y - point.y) * share);
        const spread = this.spread();
        if (this.down.size === 2 && this.distance > 0 && spread > 0) {
            this.view.zoom(spread / this.distance, this.middle());
        }
        this.distance = spread;
        this.hand.moved();
    }

    private end(event: PointerEvent, isPress: boolean): void {
        if (!this.down.delete(event.pointerId)) {
            return;
        }
        this.distance = this.spread();
        this.element.parentElement?.classList.toggle("is-dragging", this.down.size > 0);
        if (isPress && this.isStill && this.down.size === 0) {
            this.hand.press(this.pressed.x, this.pressed.y);
        }
    }

    private pointOf(event: PointerEvent): Point {
        const frame = this.element.getBoundingClientRect();
        return { x: event.clientX - frame.left, y: event.clientY - frame.top };
    }

    /** How far the first two pointers are apart. */
    private spread(): number {
        const [one, other] = [...this.down.values()];
        return one && other ? Math.hypot(one.x - other.x, one.y - other.y) : 0;
    }

    private middle(): number {
        const points = [...this.down.values()];
        return points.reduce((sum, point) => sum + point.x, 0) / points.length;
    }
}

/** Tells the x of a pointer that is pressed and dragged along a strip. */
export function listenToDrag(element: HTMLElement, begin: (x: number) => void, move: (x: number, from: number) => void): void {
    let from: number | null = null;
    const xOf = (event: PointerEvent): number => event.clientX - element.getBoundingClientRect().left;
    element.addEventListener("pointerdown", (event) => {
        if (event.button === 0) {
            element.setPointerCapture(event.pointerId);
            from = xOf(event);
            begin(from);
        }
    });
    element.addEventListener("pointermove", (event) => {
        if (from !== null) {
            move(xOf(event), from);
        }
    });
    const end = (): void => {
        from = null;
    };
    element.addEventListener("pointerup", end);
    element.addEventListener("pointercancel", end);
}
