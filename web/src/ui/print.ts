import { lengthText, routeText, rowName } from "../describe";
import { ClipPainter } from "../paint/clip";
import { paintRuler } from "../paint/ruler";
import type { Scene, Span } from "../paint/scene";
import { Surface } from "../paint/surface";
import { paintGrid, paintGround, paintSlot } from "../paint/timeline";
import type { Slot, Stack } from "../stack";
import type { Viewport } from "../viewport";
import { make } from "./dom";

/** Pixels of a strip across the paper, and how sharp they are. */
const WIDTH = 900;
const RULER = 22;
const SHARPEST = 3;
/** What all strips together may take, in dots. */
const MOST_DOTS = 60e6;

/** Lays the part of the timeline that is shown on paper: a table whose head, the ruler, every page repeats. */
export function layOut(paper: HTMLElement, scene: Scene, view: Viewport, stack: Stack): void {
    const span: Span = { left: view.left, scale: (view.width * view.scale) / WIDTH, width: WIDTH };
    const ratio = Math.min(SHARPEST, Math.sqrt(MOST_DOTS / (WIDTH * (stack.height + RULER))));
    const body = make("tbody");
    for (const slot of stack.slots) {
        body.append(rowOf(scene, span, slot, ratio));
    }
    const ruler = new Surface(make("canvas"));
    ruler.resize(WIDTH, RULER, Math.max(1, ratio));
    paintRuler(ruler, scene, span);
    const table = make(
        "table",
        {},
        make("colgroup", {}, make("col", { class: "head" }), make("col")),
        make("thead", {}, make("tr", {}, make("th"), make("td", {}, ruler.canvas))),
        body,
    );
    const { wire } = scene.picture;
    const facts = `${lengthText(scene.time, wire.end)} · ${wire.sampleRate.toLocaleString("en")} Hz`;
    paper.replaceChildren(make("h1", { dir: "auto" }, wire.title), make("p", {}, facts), table);
}

function rowOf(scene: Scene, span: Span, slot: Slot, ratio: number): HTMLElement {
    const row = scene.picture.rows[slot.row]!;
    const strip = new Surface(make("canvas"));
    strip.resize(WIDTH, slot.height, ratio);
    const context = strip.begin(scene.theme.row);
    paintGround(context, scene, WIDTH, slot, 0);
    paintGrid(context, scene, span, 0, slot.height);
    paintSlot(context, scene, span, slot, 0, new ClipPainter(context, scene, span));
    const head = make("th", { dir: "auto" }, rowName(row), make("span", {}, routeText(row)));
    row.lanes.forEach((lane, i) => {
        const name = make("span", { class: "lane" }, lane.name);
        name.style.top = `${(100 * (slot.head + slot.lane * (i + 0.25))) / slot.height}%`;
        head.append(name);
    });
    return make("tr", {}, head, make("td", {}, strip.canvas));
}
