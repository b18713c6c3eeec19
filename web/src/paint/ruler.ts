import type { Scene, Span } from "./scene";
import type { Surface } from "./surface";
import { LABEL_ROOM, MARK_ROOM, paintRange } from "./timeline";

const LABEL_GAP = 5;

export function paintRuler(surface: Surface, scene: Scene, span: Span): void {
    const { theme } = scene;
    const context = surface.begin(theme.panel);
    const { height } = surface;
    const { selection, cursor } = scene.picture.wire;
    if (selection[1] > selection[0]) {
        paintRange(context, span, selection[0], selection[1], height, theme.range, theme.accent);
    }
    if (scene.range) {
        paintRange(context, span, scene.range[0], scene.range[1], height, theme.range, theme.text);
    }
    // Rulers are not where clips are: their font is not that of the clips' cache.
    context.font = `11px ${theme.font}`;
    context.textBaseline = "middle";
    const to = span.left + span.width * span.scale;
    const from = span.left - LABEL_ROOM * span.scale;
    for (const tick of scene.ruler.ticks(from, to, LABEL_ROOM * span.scale, MARK_ROOM * span.scale)) {
        const x = Math.round((tick.position - span.left) / span.scale);
        const size = tick.label ? height : 5;
        context.fillStyle = theme.line;
        context.fillRect(x, height - size, 1, size);
        if (tick.label) {
            context.fillStyle = theme.quiet;
            context.fillText(tick.label, x + LABEL_GAP, height / 2 - 1);
        }
    }
    paintCursorHead(context, Math.round((cursor - span.left) / span.scale), height, theme.accent);
    if (scene.playhead !== null) {
        paintCursorHead(context, Math.round((scene.playhead - span.left) / span.scale), height, theme.text);
    }
}

function paintCursorHead(context: CanvasRenderingContext2D, x: number, height: number, colour: string): void {
    context.fillStyle = colour;
    context.beginPath();
    context.moveTo(x - 4.5, height - 9);
    context.lineTo(x + 5.5, height - 9);
    context.lineTo(x + 5.5, height - 5);
    context.lineTo(x + 0.5, height);
    context.lineTo(x - 4.5, height - 5);
    context.closePath();
    context.fill();
}
