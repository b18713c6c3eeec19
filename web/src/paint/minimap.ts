import type { Stack } from "../stack";
import type { Viewport } from "../viewport";
import type { Scene } from "./scene";
import { Surface } from "./surface";

const PADDING = 4;

/** The whole session, drawn once, and the frame of what is shown. */
export class Minimap {
    private readonly still = new Surface(document.createElement("canvas"));
    private drawn = "";

    constructor(private readonly surface: Surface) {}

    /** The position at `x`. */
    position(x: number, view: Viewport): number {
        return view.from + (x / this.surface.width) * (view.to - view.from);
    }

    paint(scene: Scene, view: Viewport, stack: Stack): void {
        const { surface, still } = this;
        const { width, height, ratio } = surface;
        const state = [width, height, ratio, scene.theme.name, stack.slots.length, stack.height].join(" ");
        if (state !== this.drawn) {
            this.drawn = state;
            still.resize(width, height, ratio);
            this.paintSession(scene, view, stack);
        }
        const context = surface.begin(scene.theme.panel);
        context.drawImage(still.canvas, 0, 0, width, height);
        this.paintFrame(scene, view);
    }

    private paintSession(scene: Scene, view: Viewport, stack: Stack): void {
        const { picture, theme } = scene;
        const context = this.still.begin(theme.panel);
        const { width, height } = this.still;
        const scale = (view.to - view.from) / width;
        const { start, end } = picture.boxes;
        const room = height - 2 * PADDING;
        const step = room / Math.max(1, stack.slots.length);
        stack.slots.forEach((slot, place) => {
            const row = picture.rows[slot.row]!;
            const top = Math.floor(PADDING + place * step);
            const size = Math.max(1, Math.min(6, step - 1));
            for (let box = row.begin, last = -1; box < row.end; box += 1) {
                const x = Math.floor((start[box]! - view.from) / scale);
                const boxWidth = Math.max(1, (end[box]! - start[box]!) / scale);
                // Nothing new would be seen.
                if (boxWidth === 1 && x === last) {
                    continue;
                }
                last = x;
                context.fillStyle = theme.clips.of(picture.boxColour(box), false).edge;
                context.fillRect(x, top, boxWidth, size);
            }
        });
    }

    private paintFrame(scene: Scene, view: Viewport): void {
        const { context, width, height } = this.surface;
        const { theme, picture } = scene;
        const scale = (view.to - view.from) / width;
        const x = (view.left - view.from) / scale;
        const right = (view.right - view.from) / scale;
        context.globalAlpha = 0.62;
        context.fillStyle = theme.panel;
        context.fillRect(0, 0, Math.max(0, x), height);
        context.fillRect(right, 0, Math.max(0, width - right), height);
        context.globalAlpha = 1;
        context.fillStyle = theme.accent;
        context.fillRect(Math.round((picture.wire.cursor - view.from) / scale), 0, 1, height);
        const left = Math.max(0.75, x);
        context.strokeStyle = theme.quiet;
        context.lineWidth = 1.5;
        context.beginPath();
        context.roundRect(left, 1.5, Math.max(3, Math.min(width - 0.75, right) - left), height - 3, 3);
        context.stroke();
    }
}
