import { Indexes, keyframeAt } from "./cull";
import { boxLabel, countText, lengthText, positionText, rowLabel } from "./describe";
import { Minimap } from "./paint/minimap";
import { paintRuler } from "./paint/ruler";
import type { Scene } from "./paint/scene";
import { Surface } from "./paint/surface";
import { TextFitter } from "./paint/text";
import { paintTimeline } from "./paint/timeline";
import { Waveforms } from "./peaks";
import type { Picture } from "./picture";
import { Ruler } from "./ruler";
import type { SessionText } from "./session";
import { type Slot, Stack } from "./stack";
import { readTheme, ThemeSwitch } from "./theme";
import type { TimeBase } from "./times";
import { ChangeList } from "./ui/changes";
import { Details } from "./ui/details";
import { get, icon, ICONS } from "./ui/dom";
import { listenToDrag, listenToWheel, Pointers } from "./ui/input";
import { type Command, Keys } from "./ui/keys";
import { fromFragment, type Place, toFragment } from "./ui/link";
import { Outline } from "./ui/outline";
import { layOut } from "./ui/print";
import { Finder, SearchBox } from "./ui/search";
import { SidePanel } from "./ui/side";
import { SoundBar } from "./ui/sound";
import { Tip } from "./ui/tip";
import { TrackList } from "./ui/tracks";
import { Viewport } from "./viewport";
import { watch } from "./watch";

const ZOOM_STEP = 1.5;
const SCROLL_STEP = 96;
/** How near the pointer must be to a narrow clip, in pixels. */
const REACH = 3;
/** How near it must be to a keyframe. */
const KEYFRAME_REACH = 6;
const LINK_DELAY = 250;
const NARROW = "(width < 900px)";

/** How far into the view the position is when the view follows it. */
const FOLLOW = 0.05;

/** The page at work: what is shown, chosen and found. */
export class App {
    private readonly view: Viewport;
    private readonly stack: Stack;
    private readonly scene: Scene;
    private readonly themes = new ThemeSwitch(() => this.setTheme());
    private readonly timeline = new Surface(get("timeline", HTMLCanvasElement));
    private readonly rulerSurface = new Surface(get("ruler", HTMLCanvasElement));
    private readonly minimapSurface = new Surface(get("minimap", HTMLCanvasElement));
    private readonly minimap = new Minimap(this.minimapSurface);
    private readonly tracks: TrackList;
    private readonly details: Details;
    private readonly outline: Outline;
    private readonly search = get("search", HTMLInputElement);
    private readonly filter = get("filter", HTMLInputElement);
    private readonly status = get("status", HTMLElement);
    private readonly tip: Tip;
    private readonly side = new SidePanel((tab) => {
        if (tab === "outline") {
            this.outline.update();
        }
    });
    private readonly sound: SoundBar | null;
    private readonly changes: ChangeList | null;
    private chosenRow = -1;
    private frame = 0;
    private followFrame = 0;
    private wasPlaying = false;
    private linkTimer = 0;
    private fragment = "";

    constructor(
        private readonly picture: Picture,
        session: SessionText,
    ) {
        const { wire } = picture;
        const time: TimeBase = { sampleRate: wire.sampleRate, ...wire.time };
        this.view = new Viewport(wire.from, Math.max(wire.to, wire.from + 1));
        this.stack = new Stack(picture);
        this.view.rowsHeight = this.stack.height;
        const indexes = new Indexes(picture);
        this.scene = {
            picture,
            time,
            ruler: new Ruler(time),
            indexes,
            waveforms: new Waveforms(picture),
            theme: readTheme(this.themes.name, picture.wire),
            texts: new TextFitter(),
            chosen: -1,
            hovered: -1,
            found: null,
            range: null,
            playhead: null,
        };
        this.tip = new Tip(picture, time);
        const choose = (row: number, box: number): void => this.choose(row, box, true);
        const reveal = (slot: Slot): void => this.revealSlot(slot);
        this.tracks = new TrackList(get("tracks", HTMLElement), picture, this.stack, (row) => choose(row, -1), reveal);
        this.details = new Details(get("details", HTMLElement), picture, time, session, choose);
        this.outline = new Outline(get("outline", HTMLElement), picture, time, indexes, this.stack, choose);
        new SearchBox(
            this.search,
            get("results", HTMLElement),
            new Finder(picture, time),
            (names) => {
                this.scene.found = names;
                this.changed();
            },
            choose,
            (text) => this.say(text),
        );
        this.changes = wire.compared ? new ChangeList(get("changes", HTMLElement), picture, () => this.scene.theme, choose) : null;
        // Without a rate, no clip has a place in time.
        this.sound = wire.audio && wire.sampleRate > 0 ? this.makeSound(session) : null;
    }

    private makeSound(session: SessionText): SoundBar {
        const { picture, scene } = this;
        const sound = new SoundBar(picture, session, scene.indexes, scene.time, {
            moved: () => this.followSound(),
            switched: (row) => {
                this.tracks.refresh();
                if (row === this.chosenRow && scene.chosen < 0) {
                    this.details.showRow(row);
                }
                this.changed();
            },
            say: (text) => this.say(text),
        });
        this.tracks.switches = sound;
        this.details.switchesOf = (row) => (sound.isMixed(row) ? sound.switchesOf(row) : "");
        return sound;
    }

    /** Shows the position that is heard, as long as it moves. */
    private followSound(): void {
        const { sound, scene } = this;
        if (!sound) {
            return;
        }
        const before = scene.playhead;
        const begins = sound.isPlaying && !this.wasPlaying;
        this.wasPlaying = sound.isPlaying;
        scene.playhead = sound.position;
        sound.showPosition();
        // Who scrolls away from it looks at something else.
        if (sound.isPlaying && !this.isShown(scene.playhead) && (begins || this.isShown(before))) {
            this.showFrom(scene.playhead);
        }
        this.changed();
        if (sound.isPlaying) {
            cancelAnimationFrame(this.followFrame);
            this.followFrame = requestAnimationFrame(() => this.followSound());
        }
    }

    private isShown(position: number | null): boolean {
        return position !== null && position >= this.view.left && position <= this.view.right;
    }

    private showFrom(position: number): void {
        this.view.left = position - FOLLOW * this.view.width * this.view.scale;
        this.view.clamp();
        this.moved();
    }

    start(): void {
        this.writeFacts();
        this.buildButtons(this.buildKeys());
        this.listen();
        this.side.show(!matchMedia(NARROW).matches);
        this.resize();
        this.stack.fitInto(this.view.height);
        this.view.rowsHeight = this.stack.height;
        this.view.showAll();
        this.details.showSession();
        this.showChanges();
        this.goToLink();
        this.followSound();
        this.changed();
        this.watch();
    }

    private showChanges(): void {
        if (this.changes) {
            this.changes.update();
            get("tab-changes", HTMLElement).hidden = false;
            this.side.select("changes");
        }
    }

    /** Follows the session of a page that is served. */
    private watch(): void {
        const { wire } = this.picture;
        if (wire.watch) {
            const reload = (): void => {
                this.writeLink();
                location.reload();
            };
            watch(wire.watch, reload, () => {
                get("facts", HTMLElement).append("  ·  no longer served");
                this.say("This page is no longer served.");
            });
        }
    }

    private writeFacts(): void {
        const { wire, rows, boxes } = this.picture;
        const { time } = this.scene;
        get("title", HTMLElement).textContent = wire.title || "Untitled session";
        get("facts", HTMLElement).textContent = [
            lengthText(time, wire.end),
            `${wire.sampleRate.toLocaleString("en")} Hz`,
            countText(rows.length, "track"),
            countText(boxes.count, "clip"),
            ...(wire.compared ? [countText(wire.notes.length, "change")] : []),
        ].join("  ·  ");
        const nothing = get("nothing", HTMLElement);
        nothing.hidden = rows.length > 0;
        nothing.textContent = "This session has no tracks.";
    }

    // Painting

    /** Asks for a new picture at the browser's next chance. */
    private changed(): void {
        if (this.frame === 0) {
            this.frame = requestAnimationFrame(() => {
                this.frame = 0;
                this.paint();
            });
        }
    }

    private paint(): void {
        const { scene, view, stack } = this;
        paintTimeline(this.timeline, scene, view, stack);
        paintRuler(this.rulerSurface, scene, view);
        this.minimap.paint(scene, view, stack);
        this.tracks.update(view, scene.theme, this.chosenRow);
    }

    private resize(): void {
        const ratio = window.devicePixelRatio || 1;
        for (const surface of [this.timeline, this.rulerSurface, this.minimapSurface]) {
            const { width, height } = surface.canvas.getBoundingClientRect();
            surface.resize(width, height, ratio);
        }
        this.view.resize(this.timeline.width, this.timeline.height);
        this.changed();
    }

    private setTheme(): void {
        this.scene.theme = readTheme(this.themes.name, this.scene.picture.wire);
        this.labelTheme();
        this.changes?.update();
        this.changed();
    }

    // Choosing

    /** Chooses a row, or a box of it, shows it and says it. */
    private choose(row: number, box: number, isRevealed: boolean): void {
        this.chosenRow = row;
        this.scene.chosen = box;
        if (row < 0) {
            this.details.showSession();
        } else {
            if (!this.stack.slotOf(row)) {
                this.filter.value = "";
                this.applyFilter();
            }
            if (box < 0) {
                this.details.showRow(row);
            } else {
                this.details.showBox(box);
            }
            this.say(this.labelOf(row, box));
        }
        if (isRevealed) {
            this.reveal(row, box);
        }
        this.moved();
    }

    private labelOf(row: number, box: number): string {
        return box < 0 ? rowLabel(this.picture, this.picture.rows[row]!) : boxLabel(this.picture, this.scene.time, box);
    }

    private reveal(row: number, box: number): void {
        const slot = this.stack.slotOf(row);
        if (!slot) {
            return;
        }
        const { start, end } = this.picture.boxes;
        const [from, to] = box < 0 ? [this.view.left, this.view.right] : [start[box]!, end[box]!];
        this.view.reveal(from, to, slot.top, slot.top + slot.head);
    }

    private revealSlot(slot: Slot): void {
        this.view.reveal(this.view.left, this.view.right, slot.top, slot.top + slot.head);
        this.paint();
        this.moved();
    }

    /** Chooses a clip of the same row, `step` places later. */
    private stepInRow(step: number): void {
        const row = this.chosenRow >= 0 ? this.chosenRow : (this.stack.slots.find((slot) => this.hasBoxes(slot))?.row ?? -1);
        if (row < 0) {
            return;
        }
        const index = this.scene.indexes.of(row);
        const place = this.scene.chosen < 0 ? (step > 0 ? -1 : index.order.length) : index.placeOf(this.scene.chosen);
        const box = index.order[place + step];
        if (box === undefined) {
            this.say(step > 0 ? "No further clip" : "No clip before this one");
        } else {
            this.choose(row, box, true);
        }
    }

    /** Chooses the nearest clip of the next row, or of the one before, that has any. */
    private stepToRow(step: number): void {
        const { slots } = this.stack;
        const { chosen } = this.scene;
        const position = chosen < 0 ? this.view.position(this.view.width / 2) : this.picture.boxes.start[chosen]!;
        let place = slots.findIndex((slot) => slot.row === this.chosenRow);
        do {
            place += step;
        } while (slots[place] && !this.hasBoxes(slots[place]!));
        const slot = slots[place];
        if (slot) {
            this.choose(slot.row, this.scene.indexes.of(slot.row).nearest(position), true);
        } else {
            this.say("No further track with clips");
        }
    }

    private hasBoxes(slot: Slot): boolean {
        const row = this.picture.rows[slot.row]!;
        return row.begin < row.end;
    }

    // The pointer

    /** The row and the box at a place of the timeline. */
    private at(x: number, y: number): { row: number; box: number } {
        const slot = this.stack.at(y + this.view.top);
        if (!slot) {
            return { row: -1, box: -1 };
        }
        if (y + this.view.top - slot.top > slot.head) {
            return { row: slot.row, box: -1 };
        }
        const index = this.scene.indexes.of(slot.row);
        const position = this.view.position(x);
        const exact = index.top(position, position);
        const reach = REACH * this.view.scale;
        return { row: slot.row, box: exact >= 0 ? exact : index.top(position - reach, position + reach) };
    }

    private hover(x: number, y: number): void {
        const { box } = this.at(x, y);
        get("place", HTMLElement).textContent = positionText(this.scene.time, this.view.position(x));
        if (box !== this.scene.hovered) {
            this.scene.hovered = box;
            this.changed();
            if (box >= 0) {
                this.tip.sayBox(box);
            }
        }
        if (box >= 0 || this.sayKeyframe(x, y)) {
            this.tip.show(x, y, this.view);
        } else {
            this.tip.hide();
        }
    }

    /** @returns whether there is a keyframe at that place */
    private sayKeyframe(x: number, y: number): boolean {
        const slot = this.stack.at(y + this.view.top);
        const place = slot ? Math.floor((y + this.view.top - slot.top - slot.head) / slot.lane) : -1;
        const lane = slot ? this.picture.rows[slot.row]!.lanes[place] : undefined;
        const reach = KEYFRAME_REACH * this.view.scale;
        const keyframe = lane ? keyframeAt(this.picture, lane, this.view.position(x), reach) : -1;
        if (!lane || keyframe < 0) {
            return false;
        }
        this.tip.sayKeyframe(lane, keyframe);
        return true;
    }

    private leave(): void {
        this.tip.hide();
        if (this.scene.hovered >= 0) {
            this.scene.hovered = -1;
            this.changed();
        }
    }

    private moved(): void {
        // What is under the pointer is another thing now.
        this.leave();
        this.changed();
        clearTimeout(this.linkTimer);
        this.linkTimer = window.setTimeout(() => this.writeLink(), LINK_DELAY);
    }

    private listen(): void {
        const canvas = this.timeline.canvas;
        const hand = {
            moved: () => this.moved(),
            hover: (x: number, y: number) => this.hover(x, y),
            leave: () => this.leave(),
            press: (x: number, y: number) => {
                const { row, box } = this.at(x, y);
                this.choose(row, box, false);
                if (row >= 0 && !matchMedia(NARROW).matches) {
                    this.side.select("details");
                }
            },
        };
        new Pointers(canvas, this.view, hand);
        const xIn = (event: WheelEvent): number => event.clientX - canvas.getBoundingClientRect().left;
        listenToWheel(canvas, this.view, hand, xIn);
        listenToWheel(this.rulerSurface.canvas, this.view, hand, xIn);
        listenToWheel(this.minimapSurface.canvas, this.view, hand, () => this.view.width / 2);
        listenToWheel(get("tracks", HTMLElement), this.view, hand, () => 0);
        this.listenToStrips();
        this.filter.addEventListener("input", () => this.applyFilter());
        this.filter.addEventListener("keydown", (event) => {
            if (event.key === "Escape") {
                this.filter.value = "";
                this.applyFilter();
            }
            event.stopPropagation();
        });
        new ResizeObserver(() => this.resize()).observe(get("stage", HTMLElement));
        window.addEventListener("hashchange", () => this.goToLink());
        window.addEventListener("beforeprint", () => this.preparePaper());
        window.addEventListener("afterprint", () => {
            get("paper", HTMLElement).replaceChildren();
            this.setTheme();
        });
    }

    private listenToStrips(): void {
        const { view } = this;
        const center = (x: number): void => {
            view.left = this.minimap.position(x, view) - (view.width * view.scale) / 2;
            view.clamp();
            this.moved();
        };
        listenToDrag(this.minimapSurface.canvas, center, center);
        listenToDrag(
            this.rulerSurface.canvas,
            (x) => {
                this.setRange(null);
                this.sound?.place(view.position(x));
            },
            (x, from) => {
                const ends = [view.position(from), view.position(x)].sort((a, b) => a - b);
                this.setRange(Math.abs(x - from) < 3 ? null : [Math.round(ends[0]!), Math.round(ends[1]!)]);
            },
        );
    }

    private setRange(range: readonly [number, number] | null): void {
        this.scene.range = range;
        if (range) {
            const { time } = this.scene;
            get("place", HTMLElement).textContent = `${lengthText(time, range[1] - range[0])} chosen`;
        }
        this.moved();
    }

    private applyFilter(): void {
        const { stack, view } = this;
        stack.filter(this.filter.value);
        this.stacked();
        this.say(countText(stack.slots.length, "track"));
        const nothing = get("nothing", HTMLElement);
        nothing.hidden = stack.slots.length > 0;
        nothing.textContent = this.picture.rows.length > 0 ? "No track has this name." : "This session has no tracks.";
        view.clamp();
        this.moved();
    }

    /** Follows a change of rows. */
    private stacked(): void {
        this.view.rowsHeight = this.stack.height;
        this.view.clamp();
        if (!get("outline", HTMLElement).hidden) {
            this.outline.update();
        }
        this.moved();
    }

    // Keys

    /** Commands that show another part. */
    private moves(): Command[] {
        const { view } = this;
        const scroll =
            (dx: number, dy: number) =>
            (factor: number): void => {
                view.scrollBy(dx * factor, dy * factor);
                this.moved();
            };
        const closer = (): void => this.zoom(ZOOM_STEP);
        const farther = (): void => this.zoom(1 / ZOOM_STEP);
        const page = (direction: number) => (factor: number): void => scroll(0, direction * view.height * 0.9)(factor);
        return [
            {
                shown: ["←", "→", "↑", "↓"],
                meaning: "scroll; with Shift, further",
                actions: {
                    ArrowLeft: scroll(-SCROLL_STEP, 0),
                    ArrowRight: scroll(SCROLL_STEP, 0),
                    ArrowUp: scroll(0, -SCROLL_STEP / 2),
                    ArrowDown: scroll(0, SCROLL_STEP / 2),
                    PageUp: page(-1),
                    PageDown: page(1),
                    Home: scroll(-Number.MAX_SAFE_INTEGER, 0),
                    End: scroll(Number.MAX_SAFE_INTEGER, 0),
                },
            },
            {
                shown: ["+", "−"],
                meaning: "zoom; also Ctrl and the wheel, or a pinch",
                actions: { "+": closer, "=": closer, "-": farther, "_": farther },
            },
            { shown: ["0"], meaning: "show everything", actions: { "0": () => this.showAll() } },
            { shown: ["Z"], meaning: "zoom to the chosen clip, or to the range", actions: { z: () => this.zoomToChosen() } },
            {
                shown: ["N", "P"],
                meaning: "next and previous clip of the track",
                actions: { n: () => this.stepInRow(1), p: () => this.stepInRow(-1) },
            },
            {
                shown: ["J", "K"],
                meaning: "the nearest clip of the track below or above",
                actions: { j: () => this.stepToRow(1), k: () => this.stepToRow(-1) },
            },
            { shown: ["C"], meaning: "go to the current position", actions: { c: () => this.goToCursor() } },
            {
                shown: ["[", "]"],
                meaning: "lower and higher rows",
                actions: { "[": () => this.resizeRows(-1), "]": () => this.resizeRows(1) },
            },
        ];
    }

    private controls(): Command[] {
        const { changes } = this;
        return [
            { shown: ["/"], meaning: "search", actions: { "/": () => this.search.focus() } },
            { shown: ["F"], meaning: "filter the tracks", actions: { f: () => this.filter.focus() } },
            { shown: ["Enter"], meaning: "details of what is chosen", actions: { Enter: () => this.openDetails() } },
            { shown: ["I"], meaning: "side panel", actions: { i: () => this.side.toggle() } },
            { shown: ["O"], meaning: "outline, as a tree", actions: { o: () => this.openOutline() } },
            { shown: ["T"], meaning: "theme: that of the system, light or dark", actions: { t: () => this.themes.next() } },
            { shown: ["Esc"], meaning: "choose nothing", actions: { Escape: () => this.choose(-1, -1, false) } },
            ...(changes
                ? [
                      {
                          shown: ["D", "Shift D"],
                          meaning: "next and previous change",
                          actions: { d: (factor: number): void => changes.step(factor > 1 ? -1 : 1) },
                      },
                  ]
                : []),
        ];
    }

    private soundCommands(): Command[] {
        const { sound, scene } = this;
        if (!sound) {
            return [];
        }
        const placeAtChosen = (): void => {
            sound.place(scene.chosen >= 0 ? this.picture.boxes.start[scene.chosen]! : (scene.range?.[0] ?? 0));
        };
        return [
            { shown: ["Space"], meaning: "play and pause", actions: { " ": () => sound.toggle() } },
            { shown: ["."], meaning: "stop, and go back to where it began", actions: { ".": () => sound.stop() } },
            {
                shown: ["B"],
                meaning: "place the position at the chosen clip, or at the start of the range",
                actions: { b: placeAtChosen },
            },
            {
                shown: ["M", "S"],
                meaning: "mute the chosen track, and make it solo",
                actions: { m: () => sound.switch(this.chosenRow, "muted"), s: () => sound.switch(this.chosenRow, "solo") },
            },
        ];
    }

    private zoom(factor: number): void {
        const { chosen } = this.scene;
        const middle = this.view.width / 2;
        const x = chosen < 0 ? middle : this.view.x(this.picture.boxes.start[chosen]!);
        this.view.zoom(factor, x >= 0 && x <= this.view.width ? x : middle);
        this.moved();
    }

    private showAll(): void {
        this.view.showAll();
        this.moved();
    }

    private zoomToChosen(): void {
        const { chosen, range } = this.scene;
        const { start, end } = this.picture.boxes;
        if (chosen >= 0) {
            this.view.showRange(start[chosen]!, end[chosen]!);
            this.reveal(this.chosenRow, chosen);
        } else if (range) {
            this.view.showRange(range[0], range[1], 0.02);
        }
        this.moved();
    }

    private goToCursor(): void {
        this.view.left = this.picture.wire.cursor - (this.view.width * this.view.scale) / 2;
        this.view.clamp();
        this.say(`Current position: ${positionText(this.scene.time, this.picture.wire.cursor)}`);
        this.moved();
    }

    private resizeRows(step: number): void {
        const middle = this.stack.at(this.view.top + this.view.height / 2)?.row ?? -1;
        this.stack.resize(this.stack.size + step);
        this.view.rowsHeight = this.stack.height;
        const slot = this.stack.slotOf(middle);
        if (slot) {
            this.view.top = slot.top + slot.height / 2 - this.view.height / 2;
        }
        this.stacked();
    }

    // The side panel

    private openDetails(): void {
        this.side.open("details");
        get("details", HTMLElement).focus();
    }

    private openOutline(): void {
        this.side.open("outline");
        this.outline.focus();
    }

    private buildButtons(keys: Keys): void {
        const buttons: [string, SVGSVGElement | null, () => void][] = [
            ["zoom-in", icon(ICONS.zoomIn), () => this.zoom(ZOOM_STEP)],
            ["zoom-out", icon(ICONS.zoomOut), () => this.zoom(1 / ZOOM_STEP)],
            ["zoom-fit", icon(ICONS.fit), () => this.showAll()],
            ["theme", null, () => this.themes.next()],
            ["print", icon(ICONS.print), () => window.print()],
            ["help", icon(ICONS.help), () => keys.show()],
            ["panel", icon(ICONS.panel), () => this.side.toggle()],
        ];
        for (const [id, image, action] of buttons) {
            const button = get(id, HTMLElement);
            if (image) {
                button.append(image);
            }
            button.addEventListener("click", action);
        }
        document.querySelector(".skip")?.addEventListener("click", (event) => {
            event.preventDefault();
            this.openOutline();
        });
        this.labelTheme();
    }

    private labelTheme(): void {
        const { choice } = this.themes;
        const button = get("theme", HTMLElement);
        const text = `Theme: ${choice === "auto" ? "that of the system" : choice}`;
        button.title = `${text} (T)`;
        button.setAttribute("aria-label", text);
        button.replaceChildren(icon(ICONS[choice]));
    }

    private buildKeys(): Keys {
        const place = this.sound ? "Click the ruler to place the position. " : "";
        const help: Command = { shown: ["?"], meaning: "these keys", actions: { "?": () => keys.show() } };
        const keys = new Keys(
            [...this.moves(), ...this.controls(), ...this.soundCommands(), help],
            `${place}Drag the ruler to choose a range. The address holds the place that you see.`,
        );
        return keys;
    }

    // Link and paper

    private place(): Place {
        const { view, scene } = this;
        const { chosen } = scene;
        return {
            from: view.left,
            to: view.right,
            top: view.top,
            at: chosen >= 0 ? this.picture.boxPath(chosen) : (this.picture.rows[this.chosenRow]?.path ?? ""),
            range: scene.range,
            filter: this.filter.value,
        };
    }

    private writeLink(): void {
        this.fragment = toFragment(this.place());
        history.replaceState(null, "", this.fragment);
    }

    private goToLink(): void {
        if (location.hash === this.fragment || location.hash.length < 2) {
            return;
        }
        const place = fromFragment(location.hash);
        if (place.filter !== undefined) {
            this.filter.value = place.filter;
            this.applyFilter();
        }
        this.scene.range = place.range ?? null;
        const found = place.at ? this.picture.find(place.at) : null;
        if (found) {
            this.choose(found.row, found.box, place.from === undefined);
        }
        if (place.from !== undefined && place.to !== undefined) {
            this.view.showRange(place.from, place.to, 0);
            this.view.top = place.top ?? this.view.top;
            this.view.clamp();
        }
        this.changed();
    }

    /** Paper is light. */
    private preparePaper(): void {
        this.scene.theme = readTheme("light", this.scene.picture.wire);
        const { chosen, hovered, found } = this.scene;
        Object.assign(this.scene, { chosen: -1, hovered: -1, found: null });
        layOut(get("paper", HTMLElement), this.scene, this.view, this.stack);
        Object.assign(this.scene, { chosen, hovered, found });
    }

    private say(text: string): void {
        this.status.textContent = text;
    }
}
