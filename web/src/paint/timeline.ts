import type { Slot, Stack } from "../stack";
import type { Viewport } from "../viewport";
import { ClipPainter } from "./clip";
import { paintCurve } from "./lane";
import type { Scene, Span } from "./scene";
import type { Surface } from "./surface";

/** The least distance of labels and of marks on the ruler, in pixels. */
export const LABEL_ROOM = 104;
export const MARK_ROOM = 8;

/** Paints a row and its lanes, from a height on. */
export function paintSlot(
    context: CanvasRenderingContext2D,
    scene: Scene,
    span: Span,
    slot: Slot,
    top: number,
    painter: ClipPainter,
): void {
    const { theme, picture } = scene;
    const row = picture.rows[slot.row]!;
    painter.paintRow(slot.row, top, slot.head - 1);
    row.lanes.forEach((lane, i) => {
        const laneTop = top + slot.head + slot.lane * i;
        context.fillStyle = theme.faint;
        context.fillRect(0, laneTop - 1, span.width, 1);
        const colour = theme.clips.of(row.colour, false).wave;
        paintCurve(context, scene, span, lane, laneTop + 5, slot.lane - 11, colour, true);
    });
}

export function paintGround(context: CanvasRenderingContext2D, scene: Scene, width: number, slot: Slot, top: number): void {
    const { theme } = scene;
    context.fillStyle = slot.row % 2 === 0 ? theme.row : theme.rowOther;
    context.fillRect(0, top, width, slot.height);
    context.fillStyle = theme.line;
    context.fillRect(0, top + slot.height - 1, width, 1);
}

/** Lines at the labels of the ruler. */
export function paintGrid(context: CanvasRenderingContext2D, scene: Scene, span: Span, top: number, height: number): void {
    const to = span.left + span.width * span.scale;
    context.fillStyle = scene.theme.faint;
    for (const tick of scene.ruler.ticks(span.left, to, LABEL_ROOM * span.scale, MARK_ROOM * span.scale)) {
        if (tick.label) {
            context.fillRect(Math.round((tick.position - span.left) / span.scale), top, 1, height);
        }
    }
}

/** A range from top to bottom. */
export function paintRange(
    context: CanvasRenderingContext2D,
    span: Span,
    from: number,
    to: number,
    height: number,
    colour: string,
    edge: string,
): void {
    const x = (from - span.left) / span.scale;
    const width = (to - from) / span.scale;
    if (x > span.width || x + width < 0) {
        return;
    }
    const left = Math.max(x, -2);
    context.fillStyle = colour;
    context.fillRect(left, 0, Math.min(x + width, span.width + 2) - left, height);
    context.fillStyle = edge;
    context.globalAlpha = 0.6;
    context.fillRect(Math.round(x), 0, 1, height);
    context.fillRect(Math.round(x + width) - 1, 0, 1, height);
    context.globalAlpha = 1;
}

function paintPosition(context: CanvasRenderingContext2D, span: Span, position: number, height: number, colour: string): void {
    const x = Math.round((position - span.left) / span.scale);
    if (x >= 0 && x <= span.width) {
        context.fillStyle = colour;
        context.fillRect(x, 0, 1, height);
    }
}

export function paintCursor(context: CanvasRenderingContext2D, scene: Scene, span: Span, height: number): void {
    paintPosition(context, span, scene.picture.wire.cursor, height, scene.theme.accent);
    if (scene.playhead !== null) {
        paintPosition(context, span, scene.playhead, height, scene.theme.text);
    }
}

/** What lies beyond the end of the session is quieter. */
function paintEnd(context: CanvasRenderingContext2D, scene: Scene, span: Span, height: number): void {
    const { end } = scene.picture.wire;
    const x = (end - span.left) / span.scale;
    const start = -span.left / span.scale;
    context.globalAlpha = 0.45;
    context.fillStyle = scene.theme.ground;
    if (x < span.width) {
        context.fillRect(Math.max(0, x), 0, span.width - Math.max(0, x), height);
    }
    if (start > 0) {
        context.fillRect(0, 0, Math.min(start, span.width), height);
    }
    context.globalAlpha = 1;
}

export function paintTimeline(surface: Surface, scene: Scene, view: Viewport, stack: Stack): void {
    const context = surface.begin(scene.theme.ground);
    const slots = stack.between(view.top, view.top + view.height);
    for (const slot of slots) {
        paintGround(context, scene, view.width, slot, slot.top - view.top);
    }
    paintEnd(context, scene, view, view.height);
    paintGrid(context, scene, view, 0, Math.min(view.height, stack.height - view.top));
    const { selection } = scene.picture.wire;
    if (selection[1] > selection[0]) {
        paintRange(context, view, selection[0], selection[1], view.height, scene.theme.range, scene.theme.accent);
    }
    const painter = new ClipPainter(context, scene, view);
    for (const slot of slots) {
        paintSlot(context, scene, view, slot, slot.top - view.top, painter);
    }
    if (scene.range) {
        paintRange(context, view, scene.range[0], scene.range[1], view.height, scene.theme.range, scene.theme.text);
    }
    paintCursor(context, scene, view, view.height);
}
