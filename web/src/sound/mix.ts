/** What of a session is heard: its tracks as strips of a mixer, its clips as voices. */

import type { Indexes } from "../cull";
import { BoxFlag, BoxKind, type Picture, ROW_KINDS, RowFlag } from "../picture";
import { type Json, type JsonObject, listOf, numberOf, objectOf, type SessionText } from "../session";
import { constant, controlLine, fadeLine, gainOf, isAutomated, isConstant, type Line, type Point } from "./lines";

/** Nothing that a session names. */
const NONE = -1;
/** Web Audio has no more. */
const MOST_CHANNELS = 32;
/** How much faster or slower clips are played at most, whatever a session says. */
const FASTEST = 1024;

/** A track of the mixer. */
export interface Strip {
    row: number;
    /** The row that it feeds; -1: the loudspeakers. */
    output: number;
    isMono: boolean;
    isSummedToMono: boolean;
    isSoloSafe: boolean;
    /** Whether it hands on what others feed into it. */
    isBus: boolean;
    /** As factors; negative where the phase is inverted. */
    fader: Line;
    /** From -1 at the left to 1 at the right. */
    pan: Line;
    /** Factors of 0 and 1, where the mute is automated. */
    gate: Line | null;
}

/** A clip as it is heard. */
export interface Voice {
    /** Factors that lie one upon the other. */
    gains: Line[];
    pan: Line | null;
    /** For channels of the clip, the channel of the file that feeds it; negative: none. */
    channels: ReadonlyMap<number, number>;
}

/** Where and how a clip's media starts. */
export interface Start {
    /** Where on the timeline. */
    position: number;
    /** Seconds into the media. */
    offset: number;
    /** Seconds of the media to one of the timeline. */
    speed: number;
}

/** A mute: 1 below one half, else 0. Steps, not ways. */
function gateLine(control: Json | undefined, start: number): Line | null {
    const line = controlLine(control, start, (value) => value);
    if (!line) {
        return null;
    }
    const gate: Point[] = [];
    for (const { position, value } of line) {
        const open = value >= 0.5 ? 0 : 1;
        const before = gate[gate.length - 1]?.value;
        if (before === open) {
            continue;
        }
        if (before !== undefined) {
            gate.push({ position, value: before });
        }
        gate.push({ position, value: open });
    }
    return gate;
}

const clampPan = (value: number): number => Math.min(1, Math.max(-1, value));

export class Mix {
    /** By rows; null for those that are not heard. */
    readonly strips: (Strip | null)[];
    private readonly overlaps: boolean;

    constructor(
        readonly picture: Picture,
        private readonly session: SessionText,
        private readonly indexes: Indexes,
    ) {
        const mixing = session.objectAt("/mixingOptionState");
        this.overlaps = mixing["playOverlappingClips"] === true;
        const places = new Map<number, number>();
        picture.rows.forEach((row, place) => {
            const id = numberOf(this.trackOf(place)["id"], 0);
            if (isMixed(row.kind) && !places.has(id)) {
                places.set(id, place);
            }
        });
        this.strips = picture.rows.map((row, place) => (isMixed(row.kind) ? this.stripOf(place, places) : null));
        this.openCircles();
    }

    trackOf(row: number): JsonObject {
        return this.session.objectAt(this.picture.rows[row]!.path);
    }

    clipOf(box: number): JsonObject {
        return this.session.objectAt(this.picture.boxPath(box));
    }

    private stripOf(place: number, places: ReadonlyMap<number, number>): Strip {
        const track = this.trackOf(place);
        const { channels, kind } = this.picture.rows[place]!;
        const sign = track["phaseInverted"] === true ? -1 : 1;
        return {
            row: place,
            output: places.get(numberOf(track["outputTrackID"], NONE)) ?? NONE,
            isMono: channels === "mono",
            isSummedToMono: track["sumtomono"] === true,
            isSoloSafe: track["soloSafe"] === true,
            isBus: ROW_KINDS[kind] === "bus" || ROW_KINDS[kind] === "master",
            fader: controlLine(track["trackFader"], 0, (value) => sign * gainOf(value)) ?? constant(sign),
            pan: controlLine(track["trackPan"], 0, clampPan) ?? constant(0),
            gate: isAutomated(track["trackMute"]) ? gateLine(track["trackMute"], 0) : null,
        };
    }

    /** A track that feeds itself by way of others feeds the loudspeakers. */
    private openCircles(): void {
        for (const strip of this.strips) {
            const passed = new Set<number>();
            for (let at = strip; at && !passed.has(at.row); at = this.strips[at.output] ?? null) {
                passed.add(at.row);
                if (passed.has(at.output)) {
                    at.output = NONE;
                }
            }
        }
    }

    /** Whether a clip has a sound that the page can play. */
    isPlayed(box: number): boolean {
        const { boxes, media } = this.picture;
        return (
            boxes.kind[box] === BoxKind.audio &&
            this.strips[boxes.row[box]!] !== null &&
            !this.picture.has(box, BoxFlag.offline) &&
            (media[boxes.media[box]!]?.sound ?? "") !== ""
        );
    }

    isLooped(box: number): boolean {
        return this.picture.has(box, BoxFlag.looped);
    }

    voiceOf(box: number): Voice {
        const { picture } = this;
        const clip = this.clipOf(box);
        const { start, end } = picture.boxes;
        const fadeIn = picture.fadesIn.get(box);
        const fadeOut = picture.fadesOut.get(box);
        const lines = [
            fadeIn ? fadeLine(fadeIn, start[box]!, 1) : null,
            fadeOut ? fadeLine(fadeOut, end[box]!, -1) : null,
            controlLine(clip["clipGain"], start[box]!, gainOf),
            gateLine(clip["clipMute"], start[box]!),
            this.overlaps ? null : this.coverLine(box),
        ];
        const pan = controlLine(clip["clipPan"], start[box]!, clampPan);
        return {
            gains: lines.filter((line) => line !== null).filter((line) => !isConstant(line, 1)),
            pan: pan && !isConstant(pan, 0) ? pan : null,
            channels: channelsOf(clip["channelMap"]),
        };
    }

    /** 0 where a clip lies below others into which it does not fade. */
    private coverLine(box: number): Line | null {
        const { start, end, next, row } = this.picture.boxes;
        const index = this.indexes.of(row[box]!);
        const range = index.range(start[box]!, end[box]!);
        const covers: [number, number][] = [];
        for (let i = range.begin; i < range.end; i += 1) {
            const other = index.order[i]!;
            const isFaded = next[box] === other || next[other] === box;
            if (other > box && !isFaded && end[other]! > start[box]! && start[other]! < end[box]!) {
                covers.push([start[other]!, end[other]!]);
            }
        }
        const line: Point[] = [];
        let reached = -Infinity;
        for (const [from, to] of covers) {
            if (from > reached) {
                line.push({ position: from, value: 1 }, { position: from, value: 0 });
            } else {
                line.splice(-2);
            }
            reached = Math.max(reached, to);
            line.push({ position: reached, value: 0 }, { position: reached, value: 1 });
        }
        return line.length > 0 ? line : null;
    }

    /**
     * How a clip starts if it is played from a position on; null if nothing of it is left.
     * @param duration of its media, in seconds
     */
    startOf(box: number, from: number, duration: number): Start | null {
        const { boxes, wire } = this.picture;
        const speed = Math.min(Math.max(boxes.speed[box]!, 1 / FASTEST), FASTEST);
        const start = boxes.start[box]!;
        const isLooped = this.isLooped(box);
        let position = Math.max(start, from);
        let source = boxes.sourceStart[box]! + (position - start) * speed;
        if (source < 0 && !isLooped) {
            position -= source / speed;
            source = 0;
        }
        const offset = source / wire.sampleRate;
        if (position >= boxes.end[box]! || (!isLooped && offset >= duration)) {
            return null;
        }
        const round = isLooped ? Math.floor(offset / duration) * duration : 0;
        return { position, offset: Math.min(Math.max(0, offset - round), duration), speed };
    }

    /**
     * Which rows are heard, as they are muted and solo now. A solo track is heard with all that it
     * feeds, and a solo bus with all that feed it.
     */
    heard(): boolean[] {
        const { rows } = this.picture;
        const has = (row: number, flag: number): boolean => (rows[row]!.flags & flag) !== 0;
        const isAnySolo = this.strips.some((strip) => strip && has(strip.row, RowFlag.solo));
        const leadsToSolo = (strip: Strip): boolean => {
            for (let at: Strip | null = strip; at; at = this.strips[at.output] ?? null) {
                if (has(at.row, RowFlag.solo)) {
                    return true;
                }
            }
            return false;
        };
        return this.strips.map((strip, row) => {
            if (!strip || has(row, RowFlag.muted)) {
                return false;
            }
            return !isAnySolo || strip.isBus || strip.isSoloSafe || leadsToSolo(strip);
        });
    }
}

/** The metronome's clicks are the application's own. */
function isMixed(kind: number): boolean {
    return ROW_KINDS[kind] !== "video" && ROW_KINDS[kind] !== "metronome";
}

function channelsOf(map: Json | undefined): Map<number, number> {
    const channels = new Map<number, number>();
    for (const [key, source] of Object.entries(objectOf(map) ?? {})) {
        const channel = Number(key);
        if (channel < MOST_CHANNELS && channel !== numberOf(source, NONE)) {
            channels.set(channel, numberOf(source, NONE));
        }
    }
    return channels;
}

/** What the session has that is not heard, in words. */
export function unheardOf(mix: Mix, session: SessionText): string[] {
    const { picture } = mix;
    const boxes = Array.from({ length: picture.boxes.count }, (_, box) => box);
    const strips = mix.strips.filter((strip) => strip !== null);
    const audio = boxes.filter((box) => picture.boxes.kind[box] === BoxKind.audio);
    const owners = [...strips.map((strip) => mix.trackOf(strip.row)), ...audio.map((box) => mix.clipOf(box))];
    const tracks = strips.map((strip) => mix.trackOf(strip.row));
    const count = <T>(things: readonly T[], is: (thing: T) => boolean): number => things.filter(is).length;
    const mixing = session.objectAt("/mixingOptionState");
    const power = numberOf(mixing["panPower"], LAW);
    const clips = sum(strips, (strip) => listOf(mix.trackOf(strip.row)["audioClips"]).length);
    const lines: [number, string, string][] = [
        [listOf(session.at("/audioTracks")).length - strips.length, "track that is not shown", "tracks that are not shown"],
        [clips - audio.length, "clip that is not shown", "clips that are not shown"],
        [count(owners, (owner) => hasRack(owner["effectsRack"])), "effects rack", "effects racks"],
        [count(tracks, (track) => isShaped(track["trackEQ"])), "equaliser", "equalisers"],
        [sum(tracks, (track) => listOf(objectOf(track["sendList"])?.["sendSlots"]).filter(objectOf).length), "send", "sends"],
        [count(boxes, (box) => picture.boxes.kind[box] === BoxKind.midi), "MIDI clip", "MIDI clips"],
        [count(audio, (box) => picture.has(box, BoxFlag.offline)), "offline clip", "offline clips"],
        [count(audio, (box) => isMissing(picture, box)), "clip without its media", "clips without their media"],
        [count(tracks, (track) => track["preRendered"] === true), "rendered file in place of a track", "rendered files in place of tracks"],
    ];
    const texts = lines.filter(([number]) => number > 0).map(([number, one, many]) => `${number.toLocaleString("en")} ${number === 1 ? one : many}`);
    if (session.at("/metronome/enabled") === true) {
        texts.push("the metronome");
    }
    const stretched = count(audio, (box) => isPitchKept(mix.clipOf(box)["clipStretch"]));
    if (stretched > 0) {
        texts.push(`the pitch of ${stretched} stretched ${stretched === 1 ? "clip" : "clips"}`);
    }
    if (power !== LAW || mixing["defaultPanModeLogarithmic"] === true) {
        texts.push(mixing["defaultPanModeLogarithmic"] === true ? "the logarithmic pan law" : `the pan law of ${power} dB`);
    }
    if (strips.some((strip) => picture.rows[strip.row]!.channels === "5.1")) {
        texts.push("more than two channels");
    }
    return texts;
}

/** In dB at the middle: that of the Web Audio panner, and the session's default. */
const LAW = -3;

function sum<T>(things: readonly T[], of: (thing: T) => number): number {
    return things.reduce((total, thing) => total + of(thing), 0);
}

function isMissing(picture: Picture, box: number): boolean {
    return !picture.has(box, BoxFlag.offline) && (picture.media[picture.boxes.media[box]!]?.sound ?? "") === "";
}

/** Whether a control or effect has any value but 0, or automation. */
function isShaped(effect: Json | undefined): boolean {
    const it = objectOf(effect);
    return (
        it !== null &&
        it["powered"] !== false &&
        Object.values(objectOf(it["parameters"]) ?? {}).some((json) => {
            const { parameterValue, parameterKeyframes } = objectOf(json) ?? {};
            return numberOf(parameterValue, 0) !== 0 || listOf(objectOf(parameterKeyframes)?.["keyframes"]).length > 0;
        })
    );
}

function hasRack(rack: Json | undefined): boolean {
    const it = objectOf(rack);
    const isAtWork = (slot: Json): boolean => {
        const { component, bypassed } = objectOf(slot) ?? {};
        return Boolean(component) && bypassed !== true;
    };
    return it !== null && (listOf(it["slots"]).some(isAtWork) || isShaped(it["rackInput"]) || isShaped(it["rackOutput"]));
}

/** Whether a clip is stretched in a way that a faster or slower playback is not. */
function isPitchKept(stretch: Json | undefined): boolean {
    const it = objectOf(stretch);
    if (!it || (it["stretchMode"] ?? "off") === "off") {
        return false;
    }
    const speed = numberOf(it["stretchRatio"], 1);
    return numberOf(it["pitchAdjustment"], 0) !== 0 || (it["stretchType"] !== "varispeed" && speed !== 1);
}
