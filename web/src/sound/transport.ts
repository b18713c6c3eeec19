import type { Mix } from "./mix";
import { Player, playOrder } from "./player";
import { Sounds } from "./sounds";

/** Seconds that are prepared ahead of what is heard. */
const AHEAD = 1.5;
/** Seconds ahead of a clip in which its media are loaded. */
const LOAD_AHEAD = 10;
const TICK = 250;
/** Seconds from the press of a key until the sound begins. */
const LEAD = 0.05;
/** Seconds that the browser has to begin to make sound. */
const PATIENCE = 3;

/** Whether the browser makes sound. One without a device may never say that it does not. */
function beginsSound(context: AudioContext): Promise<boolean> {
    const begins = context.resume().then(
        () => true,
        () => false,
    );
    const gaveUp = new Promise<boolean>((settle) => setTimeout(() => settle(false), PATIENCE * 1000));
    return Promise.race([begins, gaveUp]);
}

/** Plays, pauses and stops, and knows the position. */
export class Transport {
    state: "stopped" | "loading" | "playing" = "stopped";
    /** Whether the browser makes sound, as far as it was asked to. */
    hasSound = true;
    private context: AudioContext | null = null;
    private output: GainNode | null = null;
    private player: Player | null = null;
    private readonly sounds: Sounds;
    private timer = 0;
    private at: number;
    private begin: number;
    /** Counts plays, so that one which still loads knows that another came. */
    private plays = 0;
    private gain = 1;

    /** @param changed  called when it begins or ends to play, and when media turn out not to be heard */
    constructor(
        private readonly mix: Mix,
        private readonly changed: () => void,
    ) {
        this.at = this.inRange(mix.picture.wire.cursor);
        this.begin = this.at;
        this.sounds = new Sounds(mix.picture.media, (bytes) => this.reach().context.decodeAudioData(bytes));
    }

    /** In samples of the timeline. */
    get position(): number {
        if (this.player && this.context) {
            return this.player.positionAt(this.context.currentTime - (this.context.outputLatency || 0));
        }
        return this.at;
    }

    /** Places the position, also while it plays. */
    place(position: number): void {
        this.at = this.inRange(position);
        this.begin = this.at;
        if (this.state !== "stopped") {
            this.silence();
            void this.play();
        }
        this.changed();
    }

    toggle(): void {
        if (this.state === "stopped") {
            void this.play();
        } else {
            this.pause();
        }
    }

    pause(): void {
        this.at = this.position;
        this.silence();
        this.changed();
    }

    /** Goes back to where it began. */
    stop(): void {
        this.silence();
        this.at = this.begin;
        this.changed();
    }

    setVolume(gain: number): void {
        this.gain = gain;
        this.output?.gain.setTargetAtTime(gain, this.context!.currentTime, 0.01);
    }

    /** Follows mutes and solos. */
    setHeard(): void {
        this.player?.setHeard();
    }

    /** Media that were wanted and cannot be heard. */
    get failed(): ReadonlySet<number> {
        return this.sounds.failed;
    }

    needsFile(media: number): boolean {
        return this.sounds.needsFile(media);
    }

    /** Takes media files that the reader chose. */
    take(files: readonly File[]): void {
        this.sounds.take(files);
        this.changed();
    }

    /** Browsers make sound only after the reader asked for it, so the context is made late. */
    private reach(): { context: AudioContext; output: GainNode } {
        this.context ??= new AudioContext();
        if (!this.output) {
            this.output = this.context.createGain();
            this.output.gain.value = this.gain;
            this.output.connect(this.context.destination);
        }
        return { context: this.context, output: this.output };
    }

    private async play(): Promise<void> {
        const { context, output } = this.reach();
        const { sounds } = this;
        const play = (this.plays += 1);
        const { from: first, to } = this.mix.picture.wire;
        if (this.at >= to) {
            this.at = this.begin = first;
        } else if (this.state === "stopped") {
            this.begin = this.at;
        }
        this.state = "loading";
        this.changed();
        const from = this.at;
        const [hasSound] = await Promise.all([beginsSound(context), ...this.firstMedia(from).map((media) => sounds.load(media))]);
        if (play !== this.plays) {
            return;
        }
        this.hasSound = hasSound;
        if (!hasSound) {
            this.pause();
            return;
        }
        this.player = new Player(context, output, this.mix, sounds.get, from, context.currentTime + LEAD);
        this.player.advance(from, from + this.samples(AHEAD));
        this.state = "playing";
        this.timer = window.setInterval(() => this.advance(), TICK);
        this.changed();
    }

    /** Media that are heard soon after a position. */
    private firstMedia(from: number): number[] {
        const { start, media } = this.mix.picture.boxes;
        const soon = playOrder(this.mix, from).filter((box) => start[box]! < from + this.samples(AHEAD));
        return [...new Set(soon.map((box) => media[box]!))];
    }

    /** Only what the page shows is played. */
    private inRange(position: number): number {
        const { from, to } = this.mix.picture.wire;
        return Math.min(Math.max(position, from), to);
    }

    private samples(seconds: number): number {
        return seconds * this.mix.picture.wire.sampleRate;
    }

    private advance(): void {
        const { player, context, sounds } = this;
        if (!player || !context) {
            return;
        }
        const now = player.positionAt(context.currentTime);
        if (now >= this.mix.picture.wire.to) {
            this.stop();
            return;
        }
        const failed = sounds.failed.size;
        for (const media of player.wanted(now + this.samples(LOAD_AHEAD))) {
            if (!sounds.isSettled(media)) {
                void sounds.load(media).then(() => sounds.failed.size > failed && this.changed());
            }
        }
        player.advance(now + this.samples(LEAD), now + this.samples(AHEAD));
    }

    private silence(): void {
        this.plays += 1;
        clearInterval(this.timer);
        this.player?.end();
        this.player = null;
        this.state = "stopped";
    }
}
