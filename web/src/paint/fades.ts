import type { ClipColours } from "../colours";
import type { Fade } from "../picture";
import type { Frame, Scene, Span } from "./scene";

/** Shorter fades are not drawn. */
const LEAST_FADE = 3;
const FADE_SHADE = 0.5;

/** Paints fades of boxes. */
export class FadePainter {
    constructor(
        private readonly context: CanvasRenderingContext2D,
        private readonly scene: Scene,
        private readonly span: Span,
    ) {}

    paint(box: number, frame: Frame, colours: ClipColours): void {
        const { picture } = this.scene;
        const { start, end } = picture.boxes;
        const fadeIn = picture.fadesIn.get(box);
        const fadeOut = picture.fadesOut.get(box);
        if (fadeIn) {
            this.paintFade(fadeIn, start[box]!, 1, frame, colours);
        }
        if (fadeOut) {
            this.paintFade(fadeOut, end[box]!, -1, frame, colours);
        }
    }

    /** Traces a fade from the end of the box inwards; `direction` is 1 at its start. */
    private trace(fade: Fade, position: number, direction: number, frame: Frame): number {
        const { context, span } = this;
        const x = (position - span.left) / span.scale;
        const width = (fade.length / span.scale) * direction;
        const bottom = frame.y + frame.height - 1;
        const steps = fade.curve.length - 1;
        fade.curve.forEach((level, i) => {
            context.lineTo(x + (width * i) / steps, bottom - level * (frame.height - 2));
        });
        return x;
    }

    private paintFade(fade: Fade, position: number, direction: number, frame: Frame, colours: ClipColours): void {
        const { context, span, scene } = this;
        if (fade.length / span.scale < LEAST_FADE) {
            return;
        }
        context.save();
        context.beginPath();
        context.rect(frame.x, frame.y, frame.width, frame.height);
        context.clip();
        context.beginPath();
        const x = this.trace(fade, position, direction, frame);
        context.lineTo(x, frame.y);
        context.closePath();
        context.globalAlpha *= FADE_SHADE;
        context.fillStyle = scene.theme.ground;
        context.fill();
        context.globalAlpha /= FADE_SHADE;
        this.stroke(fade, position, direction, frame, colours.text);
        context.restore();
    }

    stroke(fade: Fade, position: number, direction: number, frame: Frame, colour: string): void {
        const { context } = this;
        context.beginPath();
        this.trace(fade, position, direction, frame);
        context.strokeStyle = colour;
        context.lineWidth = 1.25;
        context.stroke();
    }
}
