import assert from "node:assert/strict";
import test from "node:test";
import { Indexes } from "../../src/cull";
import type { Picture } from "../../src/picture";
import { RowFlag } from "../../src/picture";
import { type Json, SessionText } from "../../src/session";
import { controlLine, fadeLine, gainOf, type Line, laneLine, valueAt } from "../../src/sound/lines";
import { Mix, unheardOf } from "../../src/sound/mix";
import { playOrder } from "../../src/sound/player";
import { matchFiles } from "../../src/sound/sounds";
import { sketch } from "./sketch";

const control = (value: number, keyframes?: Json[]): Json => ({
    parameters: { 0: { parameterValue: value, ...(keyframes ? { parameterKeyframes: { keyframes } } : {}) } },
});

const values = (line: Line | null): (readonly [number, number])[] =>
    (line ?? []).map(({ position, value }) => [position, value] as const);

/** The session that a sketch shows, with parts of its tracks and clips. */
function mixOf(tracks: Record<string, Json>[], clips: Record<string, Json>[] = [], rest: Record<string, Json> = {}, picture = heard()): Mix {
    const session = sessionOf(tracks, clips, rest);
    return new Mix(picture, session, new Indexes(picture));
}

function sessionOf(tracks: Record<string, Json>[], clips: Record<string, Json>[], rest: Record<string, Json>): SessionText {
    const [first, ...others] = tracks;
    const it = { tracks: [{ audioClips: clips, ...first }, ...others], ...rest };
    return new SessionText(() => JSON.stringify(it));
}

/** A sketch of three tracks with sounds; the paths are those of `sessionOf`. */
function heard(flags: number | number[] = 0): Picture {
    const base = sketch().wire;
    return sketch({
        strings: ["", "Voices", "Rain", "/tracks/0", "Bus", "Master", "/tracks/1", "/tracks/2", "mono"],
        rows: {
            ...base.rows,
            count: 3,
            kind: [1, 2, 3],
            name: [1, 4, 5],
            channels: [8, 0, 0],
            output: 0,
            colour: -1,
            flags,
            boxes: [4, 0, 0],
            lanes: 0,
            path: [3, 6, 7],
        },
        boxes: { ...base.boxes, lanes: 0, kind: [1, 1, 1, 1], length: [5000, 100, 200, 500], flags: [0, 0, 0, 1], index: [0, 1, 2, 3], media: [0, 0, 1, 0], speed: [1, 1, 2, 1] },
        lanes: { ...base.lanes, count: 0 },
        media: [
            { path: "/media/rain.wav", found: true, sound: "#sound-0" },
            { path: "/media/wind.wav", found: true, sound: "wind.wav" },
        ],
    });
}

const routed = [{ id: 1, outputTrackID: 2 }, { id: 2, outputTrackID: 3 }, { id: 3 }];

void test("a line is straight between its points and still beside them", () => {
    const line = [
        { position: 10, value: 1 },
        { position: 20, value: 3 },
        { position: 20, value: 0 },
    ];
    assert.deepEqual(
        [0, 10, 15, 19, 20, 90].map((position) => valueAt(line, position)),
        [1, 1, 2, 2.8, 0, 0],
    );
});

void test("a fade runs from its end of the clip, as its curve says", () => {
    const fade = { length: 100, curve: [0, 0.8, 1] };
    assert.deepEqual(values(fadeLine(fade, 1000, 1)), [[1000, 0], [1050, 0.8], [1100, 1]]);
    assert.deepEqual(values(fadeLine(fade, 2000, -1)), [[1900, 1], [1950, 0.8], [2000, 0]]);
});

void test("levels are in dB, also between keyframes", () => {
    assert.equal(gainOf(0), 1);
    assert.ok(Math.abs(gainOf(-6) - 0.5012) < 0.0001);
    assert.equal(gainOf(-1e300), 0);
    assert.equal(gainOf(1e300), 1000, "no louder than that");
    assert.deepEqual(values(controlLine(control(20), 0, gainOf)), [[0, 10]]);
    const line = controlLine(control(0, [{ value: -40, sampleOffset: 100 }, { value: 0, sampleOffset: 0 }]), 1000, gainOf)!;
    assert.equal(valueAt(line, 0), 1);
    assert.ok(Math.abs(valueAt(line, 1050) - gainOf(-20)) < 0.002);
    assert.ok(Math.abs(valueAt(line, 2000) - 0.01) < 1e-9);
    assert.equal(controlLine({ parameters: {} }, 0, gainOf), null);
});

void test("keyframes hold, and splines stay between their neighbours", () => {
    const same = (value: number): number => value;
    const held = laneLine({ keyframes: [{ type: "hold", value: 2 }, { value: 5, sampleOffset: 10 }] }, 0, same)!;
    assert.deepEqual([9, 10].map((position) => valueAt(held, position)), [2, 5]);
    const keyframes = [{ value: 0 }, { value: 1, sampleOffset: 100 }, { value: 3, sampleOffset: 200 }];
    const curve = laneLine({ enableSplines: true, keyframes }, 0, same)!;
    assert.ok(valueAt(curve, 25) < 0.25, "flat at its end");
    assert.ok(curve.every((point) => point.value >= 0 && point.value <= 3));
    const last = laneLine({ keyframes: [{ value: 1 }, { value: 7 }] }, 0, same)!;
    assert.deepEqual(values(last), [[0, 7]]);
});

void test("a clip starts where it lies, and in the middle if it is begun late", () => {
    const mix = mixOf(routed);
    assert.deepEqual(mix.startOf(0, -500, 60), { position: 0, offset: 0, speed: 1 });
    assert.deepEqual(mix.startOf(0, 1500, 60), { position: 1500, offset: 1.5, speed: 1 });
    assert.equal(mix.startOf(0, 5000, 60), null, "it has ended");
    assert.equal(mix.startOf(0, 2000, 1), null, "its media have ended");
    assert.deepEqual(mix.startOf(2, 1100, 60), { position: 1100, offset: 0.2, speed: 2 });
    assert.deepEqual(mix.startOf(3, 9400, 0.3), { position: 9400, offset: 0.4 - 0.3, speed: 1 }, "it is looped");
});

void test("a clip whose media begin later starts later", () => {
    const picture = heard();
    picture.boxes.sourceStart[0] = -250;
    assert.deepEqual(mixOf(routed, [], {}, picture).startOf(0, 0, 60), { position: 250, offset: 0, speed: 1 });
});

void test("strange numbers give a start that Web Audio takes", () => {
    const picture = heard();
    for (const [source, speed] of [[1e300, 1], [-1e300, 1e300], [-1e300, 1e-300], [9e15, 1e-300], [0, 1e300]] as const) {
        for (const box of [0, 3]) {
            picture.boxes.sourceStart[box] = source;
            picture.boxes.speed[box] = speed;
            const start = mixOf(routed, [], {}, picture).startOf(box, 0, 0.3);
            assert.ok(start === null || (start.offset >= 0 && start.offset <= 0.3 && Math.fround(start.speed) > 0 && Number.isFinite(start.position)), `${source}, ${speed}`);
        }
    }
});

void test("clips are played in the order of their starts, those that have ended never", () => {
    const picture = heard();
    picture.boxes.flags[1] = 8;
    const mix = mixOf(routed, [], {}, picture);
    assert.deepEqual(playOrder(mix, 0), [0, 2, 3], "one is offline");
    assert.deepEqual(playOrder(mix, 1200), [0, 3]);
});

void test("a clip has its fades, its gain, its mute and its pan", () => {
    const clip = { clipGain: control(-6), clipMute: control(0), clipPan: control(-3), channelMap: { 0: 1, 1: 1, 2: -1, 9999: 0 } };
    const voice = mixOf(routed, [clip], { mixingOptionState: { playOverlappingClips: true } }).voiceOf(0);
    assert.equal(voice.gains.length, 3, "the mute does nothing");
    assert.deepEqual(values(voice.gains[0]!), [[0, 0], [250, 0.5], [500, 1]]);
    assert.deepEqual(values(voice.gains[1]!).map(([position]) => position), [4300, 4650, 5000]);
    assert.ok(Math.abs(voice.gains[2]![0]!.value - 0.5012) < 0.0001);
    assert.deepEqual(values(voice.pan), [[0, -1]], "as far as a pan goes");
    assert.deepEqual([...voice.channels], [[0, 1], [2, -1]]);
    const muted = mixOf(routed, [{ clipMute: control(1) }], { mixingOptionState: { playOverlappingClips: true } }).voiceOf(0);
    assert.deepEqual(values(muted.gains[2]!), [[0, 0]]);
});

void test("automated mutes are steps", () => {
    const clip = { clipMute: control(0, [{ value: 0 }, { value: 1, sampleOffset: 1000 }]) };
    const { gains } = mixOf(routed, [clip], { mixingOptionState: { playOverlappingClips: true } }).voiceOf(0);
    assert.deepEqual(values(gains[2]!), [[0, 1], [500, 1], [500, 0]]);
});

void test("what lies below another clip is silent, unless they fade or the session plays both", () => {
    // The first clip fades into the third, and the second lies upon it.
    const { gains } = mixOf(routed).voiceOf(0);
    assert.deepEqual(values(gains[2]!), [[2000, 1], [2000, 0], [2100, 0], [2100, 1]]);
    assert.deepEqual(mixOf(routed).voiceOf(1).gains, []);
    assert.equal(mixOf(routed, [], { mixingOptionState: { playOverlappingClips: true } }).voiceOf(0).gains.length, 2);
});

void test("tracks feed each other, and nobody himself", () => {
    const outputs = (tracks: Record<string, Json>[]): number[] => mixOf(tracks).strips.map((strip) => strip!.output);
    assert.deepEqual(outputs(routed), [1, 2, -1]);
    assert.deepEqual(outputs([{ id: 1, outputTrackID: 2 }, { id: 2, outputTrackID: 1 }, { id: 3, outputTrackID: 3 }]), [1, -1, -1]);
    assert.deepEqual(outputs([{ id: 1, outputTrackID: 77 }, { id: 2 }, { id: 3 }]), [-1, -1, -1]);
    const [strip] = mixOf([{ id: 1, trackFader: control(-6), phaseInverted: true, trackPan: control(0.5), sumtomono: true }]).strips;
    assert.ok(strip!.isMono && strip!.isSummedToMono && !strip!.isBus);
    assert.ok(Math.abs(strip!.fader[0]!.value + 0.5012) < 0.0001, "the phase is inverted");
    assert.deepEqual(values(strip!.pan), [[0, 0.5]]);
});

void test("mutes and solos decide what is heard", () => {
    const { muted, solo } = RowFlag;
    const of = (...flags: number[]): boolean[] => mixOf(routed, [], {}, heard(flags)).heard();
    assert.deepEqual(of(0, 0, 0), [true, true, true]);
    assert.deepEqual(of(muted, 0, 0), [false, true, true]);
    assert.deepEqual(of(solo, 0, 0), [true, true, true], "with what it feeds");
    assert.deepEqual(of(0, solo, 0), [true, true, true], "with what feeds it");
    assert.deepEqual(of(solo | muted, 0, 0), [false, true, true]);
    const apart = [{ id: 1, outputTrackID: 3 }, { id: 2, outputTrackID: 3 }, { id: 3 }];
    const soloBus = (first: Record<string, Json>): boolean | undefined => mixOf([{ ...apart[0]!, ...first }, ...apart.slice(1)], [], {}, heard([0, solo, 0])).heard()[0];
    assert.equal(soloBus({}), false);
    assert.equal(soloBus({ soloSafe: true }), true);
});

void test("what is not heard is said, and no more", () => {
    const said = (tracks: Record<string, Json>[], clips: Record<string, Json>[] = [], rest: Record<string, Json> = {}, picture = heard()): string[] =>
        unheardOf(mixOf(tracks, clips, rest, picture), sessionOf(tracks, clips, rest));
    assert.deepEqual(said(routed), []);
    const rack = { slots: [{ slotIndex: 0, component: { name: "Reverb" } }] };
    assert.deepEqual(said([{ ...routed[0]!, effectsRack: rack, trackEQ: { parameters: { 1: { parameterValue: 2 } } } }, ...routed.slice(1)]), ["1 effects rack", "1 equaliser"]);
    assert.deepEqual(said([{ effectsRack: { slots: [{ bypassed: true, component: {} }] }, trackEQ: { powered: false, parameters: { 1: { parameterValue: 2 } } } }]), []);
    assert.deepEqual(said([{ sendList: { sendSlots: [{ slotIndex: 0 }, null, { slotIndex: 2 }] } }]), ["2 sends"]);
    assert.deepEqual(said(routed, [{ clipStretch: { stretchMode: "realtime", stretchRatio: 2 } }]), ["the pitch of 1 stretched clip"]);
    assert.deepEqual(said(routed, [{ clipStretch: { stretchMode: "realtime", stretchType: "varispeed", stretchRatio: 2 } }]), []);
    assert.deepEqual(said(routed, [], { metronome: { enabled: true }, mixingOptionState: { panPower: -6 } }), ["the metronome", "the pan law of -6 dB"]);
    assert.deepEqual(said([{ ...routed[0]!, audioClips: [{}, {}, {}, {}, {}] }, ...routed.slice(1)], [], { audioTracks: [{}, {}, {}, {}, {}] }), [
        "2 tracks that are not shown",
        "1 clip that is not shown",
    ]);
    const gone = heard();
    gone.media[0]!.sound = "";
    gone.boxes.kind[1] = 2;
    assert.deepEqual(said(routed, [], {}, gone), ["1 MIDI clip", "2 clips without their media"]);
});

void test("files that a reader chooses are found by the ends of their paths", () => {
    const files = ["show/a/rain.wav", "show/b/rain.wav", "show/wind.wav"];
    assert.deepEqual(matchFiles(["/x/b/rain.wav", "C:\\x\\a\\rain.wav", "/wind.wav", "/none.wav"], files), [1, 0, 2, -1]);
});
