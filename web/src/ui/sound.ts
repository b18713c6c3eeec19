import type { Indexes } from "../cull";
import { countText, fileName, positionText, rowName } from "../describe";
import { type Picture, RowFlag } from "../picture";
import type { SessionText } from "../session";
import { gainOf } from "../sound/lines";
import { Mix, unheardOf } from "../sound/mix";
import { Transport } from "../sound/transport";
import type { TimeBase } from "../times";
import { get, icon, ICONS, make } from "./dom";

/** What the page around it does. */
export interface Listener {
    /** The position is another one, or it plays or no longer does. */
    moved(): void;
    /** A row was muted, made solo, or no longer is. */
    switched(row: number): void;
    say(text: string): void;
}

type Switch = "muted" | "solo";

/** The least level of the volume is silence. */
const SILENT = -48;

/** The bar that plays the session. */
export class SoundBar {
    private readonly mix: Mix;
    private readonly transport: Transport;
    private readonly play = get("play", HTMLButtonElement);
    private readonly note = get("sound-note", HTMLElement);
    private readonly unheard: string[];
    private label = "";

    constructor(
        private readonly picture: Picture,
        session: SessionText,
        indexes: Indexes,
        private readonly time: TimeBase,
        private readonly listener: Listener,
    ) {
        this.mix = new Mix(picture, session, indexes);
        this.unheard = unheardOf(this.mix, session);
        this.transport = new Transport(this.mix, () => this.update());
        get("stop", HTMLElement).append(icon(ICONS.stop));
        get("stop", HTMLElement).addEventListener("click", () => this.transport.stop());
        this.play.addEventListener("click", () => this.transport.toggle());
        this.listenToVolume();
        this.listenToFiles();
        get("transport", HTMLElement).hidden = false;
        this.update();
    }

    get position(): number {
        return this.transport.position;
    }

    get isPlaying(): boolean {
        return this.transport.state === "playing";
    }

    toggle(): void {
        this.transport.toggle();
    }

    stop(): void {
        this.transport.stop();
    }

    place(position: number): void {
        this.transport.place(Math.round(position));
    }

    /** Shows where it is. */
    showPosition(): void {
        const text = positionText(this.time, this.position);
        const clock = get("clock", HTMLElement);
        if (clock.textContent !== text) {
            clock.textContent = text;
        }
    }

    /** Whether a row can be muted here. */
    isMixed(row: number): boolean {
        return Boolean(this.mix.strips[row]);
    }

    switch(row: number, name: Switch): void {
        const it = this.picture.rows[row];
        if (!it || !this.isMixed(row)) {
            this.listener.say("Choose a track that is heard");
            return;
        }
        it.flags ^= RowFlag[name];
        this.transport.setHeard();
        this.listener.say(`${rowName(it)} is ${it.flags & RowFlag[name] ? "" : "not "}${name}`);
        this.listener.switched(row);
    }

    /** Buttons that mute a row and make it solo. */
    switchesOf(row: number): HTMLElement {
        const span = make("span", { class: "switches" });
        for (const [name, text] of [
            ["muted", "Mute"],
            ["solo", "Solo"],
        ] as const) {
            const isOn = (this.picture.rows[row]!.flags & RowFlag[name]) !== 0;
            const button = make("button", { type: "button", id: `switch-${name}`, "aria-pressed": String(isOn) }, text);
            button.addEventListener("click", () => {
                this.switch(row, name);
                document.getElementById(`switch-${name}`)?.focus();
            });
            span.append(button);
        }
        return span;
    }

    private listenToVolume(): void {
        const volume = get("volume", HTMLInputElement);
        const follow = (): void => {
            const level = Number(volume.value);
            const text = level <= SILENT ? "silent" : `${level} dB`;
            get("volume-text", HTMLElement).textContent = text;
            volume.setAttribute("aria-valuetext", text);
            this.transport.setVolume(level <= SILENT ? 0 : gainOf(level));
        };
        volume.addEventListener("input", follow);
        follow();
    }

    private listenToFiles(): void {
        const input = get("media-files", HTMLInputElement);
        get("media-choice", HTMLElement).addEventListener("click", () => input.click());
        input.addEventListener("change", () => this.transport.take([...(input.files ?? [])]));
    }

    private update(): void {
        const { state } = this.transport;
        const label = state === "stopped" ? "Play" : "Pause";
        if (label !== this.label) {
            this.label = label;
            this.play.replaceChildren(icon(ICONS[state === "stopped" ? "play" : "pause"]));
            this.play.title = `${label} (Space)`;
            this.play.setAttribute("aria-label", label);
        }
        const needed = this.picture.media.filter((_, media) => this.transport.needsFile(media)).length;
        get("media-choice", HTMLElement).hidden = needed === 0;
        this.note.textContent = this.noteOf(needed);
        this.sayUnheard();
        this.showPosition();
        this.listener.moved();
    }

    /** @param needed  how many media files the reader has to choose */
    private noteOf(needed: number): string {
        if (this.transport.state === "loading") {
            return "Reading the media …";
        }
        if (!this.transport.hasSound) {
            return "This browser makes no sound. Check the sound device, then play again.";
        }
        return needed > 0 ? `A browser lets a page from the disk read ${countText(needed, "media file")} only if you choose the folder.` : "";
    }

    private sayUnheard(): void {
        const names = [...this.transport.failed]
            .filter((media) => !this.transport.needsFile(media))
            .map((media) => fileName(this.picture.media[media]!.path));
        const texts = [...this.unheard, ...(names.length > 0 ? [`what this browser cannot read: ${names.join(", ")}`] : [])];
        const line = get("unheard", HTMLElement);
        line.hidden = texts.length === 0;
        line.textContent = `Not heard: ${texts.join("; ")}.`;
    }
}
