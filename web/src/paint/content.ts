import type { ClipColours } from "../colours";
import { extremes, type Waveform } from "../peaks";
import { BoxFlag, BoxKind } from "../picture";
import type { Frame, Scene, Span } from "./scene";

/** Paints what is in boxes: sound, film, notes. */
export class ContentPainter {
    private readonly level = { low: 0, high: 0 };

    constructor(
        private readonly context: CanvasRenderingContext2D,
        private readonly scene: Scene,
        private readonly span: Span,
    ) {}

    paint(box: number, frame: Frame, colours: ClipColours): void {
        const { boxes } = this.scene.picture;
        switch (boxes.kind[box]) {
            case BoxKind.midi:
                this.paintStaff(frame, colours);
                return;
            case BoxKind.video:
                this.paintFilm(box, frame, colours);
                return;
            default:
                break;
        }
        const waveform = this.scene.waveforms.of(boxes.media[box]!);
        if (waveform) {
            this.paintWaveform(box, waveform, frame, colours);
        }
    }

    /** Lines as of notes, for clips whose notes are the host's. */
    private paintStaff(frame: Frame, colours: ClipColours): void {
        const { context } = this;
        const lines = 5;
        const gap = Math.min(7, (frame.height - 8) / (lines - 1));
        const top = frame.y + (frame.height - gap * (lines - 1)) / 2;
        context.fillStyle = colours.edge;
        for (let line = 0; line < lines; line += 1) {
            context.fillRect(frame.x + 1, Math.round(top + gap * line), frame.width - 2, 1);
        }
    }

    /** The holes of a film, at both edges. */
    private paintFilm(box: number, frame: Frame, colours: ClipColours): void {
        const { context, scene, span } = this;
        const gap = 12;
        const origin = (scene.picture.boxes.start[box]! - span.left) / span.scale;
        const first = origin + Math.ceil((frame.x + 4 - origin) / gap) * gap;
        context.fillStyle = colours.edge;
        for (let x = first; x < frame.x + frame.width - 8; x += gap) {
            context.fillRect(x, frame.y + 3, 6, 4);
            context.fillRect(x, frame.y + frame.height - 7, 6, 4);
        }
    }

    /** Draws one column for each pixel. */
    private paintWaveform(box: number, waveform: Waveform, frame: Frame, colours: ClipColours): void {
        const { context, scene, span, level } = this;
        const { boxes } = scene.picture;
        const middle = frame.y + frame.height / 2;
        const half = (frame.height / 2) * 0.92;
        // Samples of the media for each of the session, at its own speed, and for each pixel.
        const rate = waveform.sampleRate / Math.max(1, scene.time.sampleRate);
        const step = span.scale * rate * boxes.speed[box]!;
        const isLooped = scene.picture.has(box, BoxFlag.looped);
        const begin = Math.max(0, Math.floor(frame.x));
        const end = Math.min(span.width, frame.x + frame.width);
        context.fillStyle = colours.wave;
        for (let x = begin; x < end; x += 1) {
            const played = (span.left + x * span.scale - boxes.start[box]!) * boxes.speed[box]!;
            let from = (boxes.sourceStart[box]! + played) * rate;
            if (isLooped && waveform.frames > 0) {
                from -= Math.floor(from / waveform.frames) * waveform.frames;
            }
            if (from + step <= 0 || from >= waveform.frames) {
                continue;
            }
            extremes(waveform, from, from + step, level);
            const top = middle - level.high * half;
            context.fillRect(x, top, 1, Math.max(1, middle - level.low * half - top));
        }
    }
}
