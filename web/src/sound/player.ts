import { isConstant, type Line, valueAt } from "./lines";
import type { Mix, Start, Strip, Voice } from "./mix";

/** Seconds in which a mute or solo of the reader takes effect, without a click. */
const SWITCH = 0.005;

/** Gives the decoded sound of media, or null while there is none. */
export type SoundOf = (media: number) => AudioBuffer | null;

/** Hands the points of a line to a parameter, in time and not long before. */
class LinePlayer {
    private next = 0;
    private handed: number;

    constructor(
        private readonly parameter: AudioParam,
        private readonly line: Line,
        private readonly timeOf: (position: number) => number,
        from: number,
    ) {
        this.handed = from;
        const after = line.findIndex((point) => point.position > from);
        this.next = after < 0 ? line.length : after;
        parameter.setValueAtTime(valueAt(line, from), timeOf(from));
    }

    /** Hands on what lies before a position, and the first point behind it. */
    advance(until: number): void {
        for (let point = this.line[this.next]; point && this.handed < until; point = this.line[this.next]) {
            const time = this.timeOf(point.position);
            if (point.position > this.handed) {
                this.parameter.linearRampToValueAtTime(point.value, time);
            } else {
                this.parameter.setValueAtTime(point.value, time);
            }
            this.handed = point.position;
            this.next += 1;
        }
    }

    get isDone(): boolean {
        return this.next >= this.line.length;
    }
}

interface StripNodes {
    input: AudioNode;
    switch: GainNode;
}

/** The clips that are heard from a position on, by their starts. */
export function playOrder(mix: Mix, from: number): number[] {
    const { start, end, count } = mix.picture.boxes;
    return Array.from({ length: count }, (_, box) => box)
        .filter((box) => mix.isPlayed(box) && end[box]! > from)
        .sort((a, b) => start[a]! - start[b]!);
}

/** Plays a mix from a position on, on any kind of audio context. */
export class Player {
    private readonly strips = new Map<number, StripNodes>();
    private readonly sources = new Set<AudioBufferSourceNode>();
    private lines: LinePlayer[] = [];
    private readonly order: number[];
    /** Those before it in `order` have had their chance. */
    private next = 0;
    /** Boxes whose sound is not there yet. */
    private late: number[] = [];

    /**
     * @param from  the first sample of the timeline
     * @param time  of the context, when it is heard
     */
    constructor(
        private readonly context: BaseAudioContext,
        output: AudioNode,
        private readonly mix: Mix,
        private readonly soundOf: SoundOf,
        readonly from: number,
        readonly time: number,
    ) {
        this.order = playOrder(mix, from);
        for (const strip of mix.strips) {
            if (strip) {
                this.strips.set(strip.row, this.build(strip));
            }
        }
        for (const strip of mix.strips) {
            if (strip) {
                this.strips.get(strip.row)!.switch.connect(this.strips.get(strip.output)?.input ?? output);
            }
        }
        this.setHeard(0);
    }

    timeOf = (position: number): number => this.time + (position - this.from) / this.mix.picture.wire.sampleRate;

    positionAt(time: number): number {
        return this.from + Math.max(0, time - this.time) * this.mix.picture.wire.sampleRate;
    }

    /** Media of clips that begin before a position and have not begun to sound. */
    wanted(until: number): Set<number> {
        const { start, media } = this.mix.picture.boxes;
        const wanted = new Set(this.late.map((box) => media[box]!));
        for (let i = this.next; i < this.order.length && start[this.order[i]!]! < until; i += 1) {
            wanted.add(media[this.order[i]!]!);
        }
        return wanted;
    }

    /**
     * Prepares what is heard before a position.
     * @param now  the position that is heard; clips whose sound comes late begin there
     */
    advance(now: number, until: number): void {
        const { start, end } = this.mix.picture.boxes;
        const due = this.late.filter((box) => end[box]! > now);
        this.late = [];
        for (let box = this.order[this.next]; box !== undefined && start[box]! < until; box = this.order[this.next]) {
            due.push(box);
            this.next += 1;
        }
        for (const box of due) {
            this.begin(box, now);
        }
        for (const line of this.lines) {
            line.advance(until);
        }
        this.lines = this.lines.filter((line) => !line.isDone);
    }

    /** Follows mutes and solos. */
    setHeard(glide = SWITCH): void {
        this.mix.heard().forEach((isHeard, row) => {
            const gain = this.strips.get(row)?.switch.gain;
            if (glide > 0) {
                gain?.setTargetAtTime(isHeard ? 1 : 0, this.context.currentTime, glide);
            } else {
                gain?.setValueAtTime(isHeard ? 1 : 0, 0);
            }
        });
    }

    end(): void {
        for (const source of this.sources) {
            source.stop();
            source.disconnect();
        }
        for (const strip of this.strips.values()) {
            strip.switch.disconnect();
        }
    }

    private build(strip: Strip): StripNodes {
        const input = this.mixer(strip.isMono ? 1 : 2);
        let last: AudioNode = input;
        if (strip.isMono || !isConstant(strip.pan, 0)) {
            last = last.connect(this.panner(strip.pan, this.from));
        }
        last = last.connect(this.gain(strip.fader, this.from));
        if (strip.isSummedToMono) {
            last = last.connect(this.mixer(1));
        }
        if (strip.gate) {
            last = last.connect(this.gain(strip.gate, this.from));
        }
        const node = this.context.createGain();
        last.connect(node);
        return { input, switch: node };
    }

    /** Mixes whatever comes to a number of channels. */
    private mixer(channels: number): GainNode {
        const node = this.context.createGain();
        node.channelCount = channels;
        node.channelCountMode = "explicit";
        return node;
    }

    private gain(line: Line, from: number): GainNode {
        const node = this.context.createGain();
        this.lines.push(new LinePlayer(node.gain, line, this.timeOf, from));
        return node;
    }

    private panner(line: Line, from: number): StereoPannerNode {
        const node = this.context.createStereoPanner();
        this.lines.push(new LinePlayer(node.pan, line, this.timeOf, from));
        return node;
    }

    private begin(box: number, now: number): void {
        const { boxes } = this.mix.picture;
        const sound = this.soundOf(boxes.media[box]!);
        if (!sound) {
            this.late.push(box);
            return;
        }
        const start = this.mix.startOf(box, Math.max(now, this.from), sound.duration);
        const strip = this.strips.get(boxes.row[box]!);
        if (start && strip) {
            const source = this.source(sound, box, start);
            this.lead(source, this.mix.voiceOf(box), start.position, sound.numberOfChannels).connect(strip.input);
        }
    }

    private source(sound: AudioBuffer, box: number, start: Start): AudioBufferSourceNode {
        const source = this.context.createBufferSource();
        source.buffer = sound;
        source.loop = this.mix.isLooped(box);
        source.playbackRate.value = start.speed;
        source.start(this.timeOf(start.position), start.offset);
        source.stop(this.timeOf(this.mix.picture.boxes.end[box]!));
        this.sources.add(source);
        source.onended = () => {
            source.disconnect();
            this.sources.delete(source);
        };
        return source;
    }

    /** Leads a clip's sound through its own controls. */
    private lead(source: AudioNode, voice: Voice, from: number, channels: number): AudioNode {
        let last = source;
        if (voice.channels.size > 0) {
            last = this.route(last, voice.channels, channels);
        }
        for (const line of voice.gains) {
            last = last.connect(this.gain(line, from));
        }
        if (voice.pan) {
            // In two channels the middle is as loud as without a pan.
            last = last.connect(this.mixer(2)).connect(this.panner(voice.pan, from));
        }
        return last;
    }

    private route(source: AudioNode, map: ReadonlyMap<number, number>, channels: number): AudioNode {
        const count = Math.max(channels, ...[...map.keys()].map((channel) => channel + 1));
        const splitter = this.context.createChannelSplitter(channels);
        const merger = this.context.createChannelMerger(count);
        source.connect(splitter);
        for (let channel = 0; channel < count; channel += 1) {
            const from = map.get(channel) ?? channel;
            if (from >= 0 && from < channels) {
                splitter.connect(merger, from, channel);
            }
        }
        return merger;
    }
}

/** Hears a stretch of a mix at once, without loudspeakers. */
export async function render(mix: Mix, soundOf: SoundOf, from: number, to: number, rate: number): Promise<AudioBuffer> {
    const seconds = (to - from) / mix.picture.wire.sampleRate;
    const context = new OfflineAudioContext(2, Math.ceil(seconds * rate), rate);
    new Player(context, context.destination, mix, soundOf, from, 0).advance(from, to);
    return context.startRendering();
}
