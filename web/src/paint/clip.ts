import type { ClipColours } from "../colours";
import { BoxFlag, Change, RowFlag } from "../picture";
import { ContentPainter } from "./content";
import { FadePainter } from "./fades";
import { Front } from "./front";
import { hatchOf } from "./hatch";
import { paintCurve } from "./lane";
import { marksOf, paintMark } from "./marks";
import type { Frame, Scene, Span } from "./scene";

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
const OWN_LANE = 0.75;
const DIMMED = 0.22;
const UNCHANGED = 0.4;
const CHANGE_SHADE = 0.14;
const HIDDEN_END = 0.6;
/** Ends that are closer to those of the box in front are not drawn. */
const APART = 2;

/** Paints the boxes of one row. */
export class ClipPainter {
    private readonly content: ContentPainter;
    private readonly fades: FadePainter;
    private readonly front: Front;

    constructor(
        private readonly context: CanvasRenderingContext2D,
        private readonly scene: Scene,
        private readonly span: Span,
    ) {
        this.content = new ContentPainter(context, scene, span);
        this.fades = new FadePainter(context, scene, span);
        this.front = new Front(span.width);
    }

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
        this.findFront(large);
        for (const box of large) {
            this.paintBox(box, top, height);
        }
        for (const box of large) {
            this.paintHiddenEnds(box, top, height);
            this.paintCrossfade(box, top, height);
            this.paintOutline(box, this.frameOf(box, top, height));
        }
    }

    /** Outlines of where clips were hide nothing. */
    private findFront(large: readonly number[]): void {
        this.front.clear();
        for (const box of large) {
            if (this.scene.picture.boxes.change[box] !== Change.former) {
                const { x, width } = this.frameOf(box, 0, 0);
                this.front.add(box, x, x + width);
            }
        }
    }

    /** Where the texts of a box may be. */
    private clearOf(box: number, frame: Frame): { left: number; right: number } {
        const right = frame.x + frame.width;
        if (this.scene.picture.boxes.change[box] === Change.former) {
            return { left: Math.max(frame.x, 0), right: Math.min(right, this.span.width) };
        }
        return this.front.clearOf(box, frame.x, right);
    }

    private colours(box: number): ClipColours {
        const { picture, theme } = this.scene;
        const row = picture.rows[picture.boxes.row[box]!]!;
        const muted = picture.has(box, BoxFlag.muted) || (row.flags & RowFlag.muted) !== 0;
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
        const clear = this.clearOf(box, frame);
        const left = clear.left + 5;
        const room = clear.right - 5 - left;
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
            this.content.paint(box, inner, colours);
            this.fades.paint(box, inner, colours);
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
            this.content.paint(box, inner, colours);
        }
        this.fades.paint(box, inner, colours);
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
        const clear = this.clearOf(box, frame);
        const left = clear.left + 6;
        let right = clear.right - 4;
        if (right - left < LEAST_NAME) {
            return;
        }
        const name = scene.picture.boxName(box);
        scene.texts.use(context, `500 11.5px ${scene.theme.font}`);
        const wanted = Math.min(scene.texts.width(context, name), NAME_BEFORE_MARKS);
        for (const mark of marksOf(scene.picture, box)) {
            if (right - left < MARK + wanted) {
                break;
            }
            right -= MARK;
            paintMark(context, mark, right + 1, frame.y + height / 2, colours.text);
        }
        const text = scene.texts.fit(context, name, right - left);
        if (text) {
            context.fillStyle = colours.text;
            context.textBaseline = "middle";
            context.fillText(text, left, frame.y + height / 2 + 0.5);
        }
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
            this.fades.stroke(fade, boxes.end[box]!, -1, inner, this.colours(box).text);
        }
        context.globalAlpha = 1;
    }

    /** Dashes where a box begins or ends behind another one, below the names. */
    private paintHiddenEnds(box: number, top: number, height: number): void {
        const { context, scene } = this;
        const { next } = scene.picture.boxes;
        const frame = this.frameOf(box, top, height);
        if (frame.height < LEAST_WITH_BAR) {
            return;
        }
        for (const x of [frame.x, frame.x + frame.width]) {
            const other = this.front.at(x);
            if (other > box && next[box] !== other && next[other] !== box && this.isInside(other, x)) {
                context.strokeStyle = this.colours(box).text;
                context.globalAlpha = HIDDEN_END * this.opacityOf(box);
                context.lineWidth = 1;
                context.setLineDash([4, 3]);
                context.beginPath();
                context.moveTo(x, frame.y + BAR + 1);
                context.lineTo(x, frame.y + frame.height - 1);
                context.stroke();
            }
        }
        context.setLineDash([]);
        context.globalAlpha = 1;
    }

    /** Whether a place is apart from the ends of a box. */
    private isInside(box: number, x: number): boolean {
        const frame = this.frameOf(box, 0, 0);
        return x >= frame.x + APART && x <= frame.x + frame.width - APART;
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
