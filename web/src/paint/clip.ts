import type { ClipColours } from "../colours";
import { extremes, type Waveform } from "../peaks";
import { BoxFlag, BoxKind, Change, type Fade } from "../picture";
import { paintCurve } from "./lane";
import type { Scene, Span } from "./scene";

/** Narrower boxes are drawn as one with their neighbours. */
const MERGED = 3;
/** Narrower boxes have no round corners, names and marks. */
const PLAIN = 24;
/** Narrower boxes have no curves of their own automation. */
const LEAST_WITH_LANES = 60;
/** Narrower boxes are hatched, and have waveforms and fades, no more. */
const LEAST_WITH_CONTENT = 8;
const RADIUS = 4;
const BAR = 18;
const LEAST_WITH_BAR = 40;
const LEAST_WITH_WAVE = 18;
const LEAST_NAME = 18;
/** Marks leave a name this room, if it needs it. */
const NAME_BEFORE_MARKS = 72;
const MARK = 15;
const LEAST_FADE = 3;
const FADE_SHADE = 0.5;
const OWN_LANE = 0.75;
const DIMMED = 0.22;
const UNCHANGED = 0.4;
const CHANGE_SHADE = 0.14;

interface Frame {
    x: number;
    y: number;
    width: number;
    height: number;
}

/** Paints the boxes of one row. */
export class ClipPainter {
    private readonly level = { low: 0, high: 0 };

    constructor(
        private readonly context: CanvasRenderingContext2D,
        private readonly scene: Scene,
        private readonly span: Span,
    ) {}

    paintRow(row: number, top: number, height: number): void {
        const { scene, span } = this;
        const index = scene.indexes.of(row);
        const { start, end } = scene.picture.boxes;
        const to = span.left + span.width * span.scale;
        const range = index.range(span.left, to);
        const small = MERGED * span.scale;
        const large: number[] = [];
        const run = new Run(this.context, top + 1, height - 2);
        for (let i = range.begin; i < range.end; i += 1) {
            const box = index.order[i]!;
            if (end[box]! < span.left) {
                continue;
            }
            if (end[box]! - start[box]! >= small) {
                large.push(box);
            } else {
                const x = (start[box]! - span.left) / span.scale;
                run.add(x, (end[box]! - start[box]!) / span.scale, this.barColour(box), this.opacityOf(box));
            }
        }
        run.finish();
        if (!index.isInOrder) {
            large.sort((a, b) => a - b);
        }
        for (const box of large) {
            this.paintBox(box, top, height);
        }
        for (const box of large) {
            this.paintCrossfade(box, top, height);
            this.paintOutline(box, this.frameOf(box, top, height));
        }
    }

    private colours(box: number): ClipColours {
        const { picture, theme } = this.scene;
        const muted = picture.has(box, BoxFlag.muted);
        return theme.clips.of(picture.boxColour(box), muted);
    }

    /** What a search has not found, and what stayed the same, is faint. */
    private opacityOf(box: number): number {
        const { found, picture } = this.scene;
        if (found !== null && !found.has(picture.boxes.name[box]!)) {
            return DIMMED;
        }
        return picture.boxes.change[box] === Change.same ? UNCHANGED : 1;
    }

    private frameOf(box: number, top: number, height: number): Frame {
        const { start, end } = this.scene.picture.boxes;
        const x = (start[box]! - this.span.left) / this.span.scale;
        const right = (end[box]! - this.span.left) / this.span.scale;
        // Canvases lose precision far outside of them.
        const beyond = RADIUS * 4;
        const left = Math.max(x, -beyond);
        const width = Math.min(right, this.span.width + beyond) - left;
        return { x: left, y: top + 2, width: Math.max(1, width - 0.75), height: height - 4 };
    }

    private paintBox(box: number, top: number, height: number): void {
        const { context } = this;
        const frame = this.frameOf(box, top, height);
        const colours = this.colours(box);
        context.globalAlpha = this.opacityOf(box);
        const isThere = this.scene.picture.boxes.change[box] !== Change.former;
        if (isThere && frame.width < PLAIN) {
            this.paintNarrow(box, frame, colours);
        } else if (isThere) {
            this.paintWide(box, frame, colours);
        }
        this.paintChange(box, frame);
        context.globalAlpha = 1;
    }

    /** The colour of what became of a box; null if nothing did. */
    private changeColour(box: number): string | null {
        const { picture, theme } = this.scene;
        const colour = picture.wire.changes[picture.boxes.change[box]!]?.colour ?? -1;
        return colour < 0 ? null : theme.clips.of(colour, false).wave;
    }

    /** Boxes too narrow for a frame have the colour of their change. */
    private barColour(box: number): string {
        return this.changeColour(box) ?? this.colours(box).bar;
    }

    /** A frame around what changed; dashed where nothing is any more. */
    private paintChange(box: number, frame: Frame): void {
        const { context, scene } = this;
        const colour = this.changeColour(box);
        if (!colour) {
            return;
        }
        const opacity = context.globalAlpha;
        context.fillStyle = colour;
        context.globalAlpha = opacity * CHANGE_SHADE;
        this.trace(frame);
        context.fill();
        context.globalAlpha = opacity;
        context.strokeStyle = colour;
        context.lineWidth = 2;
        context.setLineDash(scene.picture.isGone(box) ? [5, 3] : []);
        this.trace({ x: frame.x + 1, y: frame.y + 1, width: Math.max(1, frame.width - 2), height: frame.height - 2 });
        context.stroke();
        context.setLineDash([]);
        this.paintChangeWord(box, frame, colour);
    }

    /** At the lower edge, where no name is. */
    private paintChangeWord(box: number, frame: Frame, colour: string): void {
        const { context, scene } = this;
        const text = scene.picture.changeWord(scene.picture.boxes.change[box]!);
        const left = Math.max(frame.x, 0) + 5;
        const room = Math.min(frame.x + frame.width, this.span.width) - 5 - left;
        if (frame.height < LEAST_WITH_BAR || room < LEAST_NAME) {
            return;
        }
        scene.texts.use(context, `600 10.5px ${scene.theme.font}`);
        const shown = scene.texts.fit(context, text, room);
        if (!shown) {
            return;
        }
        const bottom = frame.y + frame.height - 3;
        context.fillStyle = scene.theme.ground;
        context.fillRect(left - 3, bottom - 14, Math.min(room, scene.texts.width(context, shown)) + 6, 14);
        context.fillStyle = colour;
        context.textBaseline = "middle";
        context.fillText(shown, left, bottom - 6.5);
    }

    /** Without corners and texts: there may be a great many. */
    private paintNarrow(box: number, frame: Frame, colours: ClipColours): void {
        const { context } = this;
        const bar = frame.height >= LEAST_WITH_BAR ? BAR : 0;
        const inner = { ...frame, y: frame.y + bar, height: frame.height - bar };
        context.fillStyle = colours.body;
        context.fillRect(inner.x, inner.y, inner.width, inner.height);
        if (frame.width >= LEAST_WITH_CONTENT) {
            this.paintHatch(box, colours, () => context.fillRect(inner.x, inner.y, inner.width, inner.height));
            this.paintContent(box, inner, colours);
            this.paintFades(box, inner, colours);
        }
        context.fillStyle = bar > 0 ? colours.bar : colours.body;
        context.fillRect(frame.x, frame.y, frame.width, bar);
        context.fillStyle = colours.edge;
        context.fillRect(frame.x, frame.y, 1, frame.height);
    }

    private paintHatch(box: number, colours: ClipColours, fill: () => void): void {
        const { picture } = this.scene;
        if (picture.has(box, BoxFlag.missing) || picture.has(box, BoxFlag.offline)) {
            this.context.fillStyle = hatchOf(this.context, colours.edge) ?? colours.body;
            fill();
        }
    }

    private paintWide(box: number, frame: Frame, colours: ClipColours): void {
        const { context } = this;
        const hasBar = frame.height >= LEAST_WITH_BAR;
        const body = { x: frame.x + 1, y: frame.y + 1, width: frame.width - 2, height: frame.height - 2 };
        // The edge first, and the body on it: strokes take longer.
        context.fillStyle = colours.edge;
        this.trace(frame);
        context.fill();
        context.fillStyle = colours.body;
        this.trace(body);
        context.fill();
        this.paintHatch(box, colours, () => context.fill());
        const inner = hasBar ? { ...body, y: frame.y + BAR, height: body.height - BAR + 1 } : body;
        if (inner.height >= LEAST_WITH_WAVE) {
            this.paintContent(box, inner, colours);
        }
        this.paintFades(box, inner, colours);
        if (frame.width >= LEAST_WITH_LANES) {
            this.paintOwnLanes(box, inner, colours.text);
        }
        if (hasBar) {
            context.fillStyle = colours.bar;
            context.beginPath();
            context.roundRect(body.x, body.y, body.width, BAR - 1, [RADIUS - 1, RADIUS - 1, 0, 0]);
            context.fill();
        }
        this.paintName(box, frame, colours, hasBar ? BAR : frame.height);
    }

    private trace(frame: Frame): void {
        this.context.beginPath();
        this.context.roundRect(frame.x, frame.y, frame.width, frame.height, RADIUS);
    }

    private paintOutline(box: number, frame: Frame): void {
        const { context, scene } = this;
        const group = scene.chosen < 0 ? -1 : scene.picture.boxes.group[scene.chosen]!;
        const isChosen = box === scene.chosen;
        const isFellow = group >= 0 && scene.picture.boxes.group[box] === group;
        const isSelected = scene.picture.has(box, BoxFlag.selected);
        if (!isChosen && !isFellow && !isSelected && box !== scene.hovered) {
            return;
        }
        context.strokeStyle = isChosen || isFellow ? scene.theme.accent : scene.theme.text;
        context.lineWidth = isChosen ? 2.5 : 1.5;
        context.setLineDash(isFellow && !isChosen ? [4, 3] : []);
        this.trace({ x: frame.x + 0.5, y: frame.y + 0.5, width: Math.max(1, frame.width - 1), height: frame.height - 1 });
        context.stroke();
        context.setLineDash([]);
    }

    private paintName(box: number, frame: Frame, colours: ClipColours, height: number): void {
        const { context, scene } = this;
        const left = Math.max(frame.x, 0) + 6;
        let right = Math.min(frame.x + frame.width, this.span.width) - 4;
        if (right - left < LEAST_NAME) {
            return;
        }
        const name = scene.picture.boxName(box);
        scene.texts.use(context, `500 11.5px ${scene.theme.font}`);
        const wanted = Math.min(scene.texts.width(context, name), NAME_BEFORE_MARKS);
        for (const mark of this.marksOf(box)) {
            if (right - left < MARK + wanted) {
                break;
            }
            right -= MARK;
            this.paintMark(mark, right + 1, frame.y + height / 2, colours.text);
        }
        const text = scene.texts.fit(context, name, right - left);
        if (text) {
            context.fillStyle = colours.text;
            context.textBaseline = "middle";
            context.fillText(text, left, frame.y + height / 2 + 0.5);
        }
    }

    private marksOf(box: number): (keyof typeof MARKS)[] {
        const { picture } = this.scene;
        const marks: (keyof typeof MARKS)[] = [];
        const flags = ["locked", "looped", "stretched", "muted", "offline"] as const;
        for (const flag of flags) {
            if (picture.has(box, BoxFlag[flag])) {
                marks.push(flag);
            }
        }
        if (picture.has(box, BoxFlag.missing) && !picture.has(box, BoxFlag.offline)) {
            marks.push("offline");
        }
        if (picture.boxes.takes[box]! > 0) {
            marks.push("takes");
        }
        if (picture.boxes.group[box]! >= 0) {
            marks.push("group");
        }
        return marks;
    }

    private paintMark(mark: keyof typeof MARKS, x: number, y: number, colour: string): void {
        const { context } = this;
        context.save();
        context.translate(x, y - 6);
        context.strokeStyle = colour;
        context.lineWidth = 1.3;
        context.lineCap = "round";
        context.lineJoin = "round";
        context.stroke(pathOf(mark));
        context.restore();
    }

    private paintContent(box: number, frame: Frame, colours: ClipColours): void {
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

    private paintFades(box: number, frame: Frame, colours: ClipColours): void {
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
    private traceFade(fade: Fade, position: number, direction: number, frame: Frame): number {
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
        const x = this.traceFade(fade, position, direction, frame);
        context.lineTo(x, frame.y);
        context.closePath();
        context.globalAlpha *= FADE_SHADE;
        context.fillStyle = scene.theme.ground;
        context.fill();
        context.globalAlpha /= FADE_SHADE;
        this.strokeFade(fade, position, direction, frame, colours.text);
        context.restore();
    }

    private strokeFade(fade: Fade, position: number, direction: number, frame: Frame, colour: string): void {
        const { context } = this;
        context.beginPath();
        this.traceFade(fade, position, direction, frame);
        context.strokeStyle = colour;
        context.lineWidth = 1.25;
        context.stroke();
    }

    /** Draws the fade-out that the next box covers once more, over it. */
    private paintCrossfade(box: number, top: number, height: number): void {
        const { context, scene, span } = this;
        const { boxes, fadesOut } = scene.picture;
        const next = boxes.next[box]!;
        const fade = fadesOut.get(box);
        if (next < 0 || (boxes.end[box]! - boxes.start[next]!) / span.scale < PLAIN) {
            return;
        }
        const frame = this.frameOf(box, top, height);
        const bar = frame.height >= LEAST_WITH_BAR ? BAR : 0;
        const inner = { ...frame, y: frame.y + bar, height: frame.height - bar };
        context.globalAlpha = this.opacityOf(box);
        if (fade) {
            this.strokeFade(fade, boxes.end[box]!, -1, inner, this.colours(box).text);
        }
        context.globalAlpha = 1;
    }

    private paintOwnLanes(box: number, frame: Frame, colour: string): void {
        const { context, scene, span } = this;
        for (const lane of scene.picture.boxLanes.get(box) ?? []) {
            context.save();
            context.beginPath();
            context.rect(frame.x, frame.y, frame.width, frame.height);
            context.clip();
            context.globalAlpha *= OWN_LANE;
            paintCurve(context, scene, span, lane, frame.y + 3, frame.height - 6, colour, false);
            context.restore();
        }
    }
}

/** Boxes too narrow to be told apart, drawn together. */
class Run {
    private begin = 0;
    private end = -Infinity;
    private colour = "";
    private opacity = 1;

    constructor(
        private readonly context: CanvasRenderingContext2D,
        private readonly top: number,
        private readonly height: number,
    ) {}

    /** Takes whole pixels, so that a pixel has the colour of one box. */
    add(x: number, width: number, colour: string, opacity: number): void {
        const left = Math.max(Math.floor(x), this.end);
        const right = Math.max(Math.ceil(x + width), Math.floor(x) + 1);
        if (right <= this.end) {
            return;
        }
        if (left > this.end || colour !== this.colour || opacity !== this.opacity) {
            this.finish();
            this.begin = left;
            this.colour = colour;
            this.opacity = opacity;
        }
        this.end = right;
    }

    finish(): void {
        if (this.end > this.begin) {
            this.context.globalAlpha = this.opacity;
            this.context.fillStyle = this.colour;
            this.context.fillRect(this.begin, this.top, this.end - this.begin, this.height);
            this.context.globalAlpha = 1;
        }
    }
}

/** In a square of 12 pixels. */
const MARKS = {
    locked: "M3.5 5.5h5v4h-5zM4.5 5.5V4a1.5 1.5 0 0 1 3 0v1.5",
    looped: "M9.5 6a3.5 3.5 0 1 1-1.2-2.6M8.6 1.4v2.2H6.4",
    stretched: "M1.5 6h9M3.5 4l-2 2 2 2M8.5 4l2 2-2 2",
    muted: "M2 5v2.5h1.5L6 9.5V3L3.5 5zM8 4.8l2.6 2.6M10.6 4.8 8 7.4",
    offline: "M6 2 10.7 10H1.3zM6 5v2.2M6 8.6v.1",
    takes: "M2 3.5h8M2 6h8M2 8.5h5",
    group: "M2 3h3.5v2.5H2zM6.5 6.5H10V9H6.5zM5.5 4.5h2.5v2",
};

const paths = new Map<string, Path2D>();

function pathOf(mark: keyof typeof MARKS): Path2D {
    let path = paths.get(mark);
    if (!path) {
        path = new Path2D(MARKS[mark]);
        paths.set(mark, path);
    }
    return path;
}

const hatches = new Map<string, CanvasPattern | null>();

function hatchOf(context: CanvasRenderingContext2D, colour: string): CanvasPattern | null {
    let hatch = hatches.get(colour);
    if (hatch === undefined) {
        hatch = makeHatch(context, colour);
        hatches.set(colour, hatch);
    }
    return hatch;
}

function makeHatch(context: CanvasRenderingContext2D, colour: string): CanvasPattern | null {
    const size = 8;
    const tile = document.createElement("canvas");
    tile.width = size;
    tile.height = size;
    const pen = tile.getContext("2d");
    if (!pen) {
        return null;
    }
    pen.strokeStyle = colour;
    pen.globalAlpha = 0.7;
    pen.lineWidth = 1.5;
    pen.beginPath();
    for (const x of [-size, 0, size]) {
        pen.moveTo(x, size);
        pen.lineTo(x + size, 0);
    }
    pen.stroke();
    return context.createPattern(tile, "repeat");
}
