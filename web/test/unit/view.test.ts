import assert from "node:assert/strict";
import test from "node:test";
import { slopeAt } from "../../src/curve";
import { capital, fileName, lengthText, rowLabel } from "../../src/describe";
import { extremes, waveformOf } from "../../src/peaks";
import { fold } from "../../src/stack";
import { Front } from "../../src/paint/front";
import { keyText } from "../../src/ui/details";
import { fromFragment, toFragment } from "../../src/ui/link";
import { Finder } from "../../src/ui/search";
import { Viewport } from "../../src/viewport";
import { sketch } from "./sketch";

function viewport(): Viewport {
    const view = new Viewport(0, 10000);
    view.rowsHeight = 1000;
    view.resize(500, 300);
    view.showAll();
    return view;
}

void test("zooming keeps the position under the pointer", () => {
    const view = viewport();
    const before = view.position(200);
    view.zoom(4, 200);
    assert.ok(Math.abs(view.position(200) - before) < 1e-6);
    view.zoom(1e12, 200);
    assert.ok(Math.abs(view.position(200) - before) < 1e-3);
    assert.equal(view.scale, 1 / 32);
    view.zoom(1e-12, 0);
    assert.ok(view.isWhole);
    assert.ok(view.x(0) > 0 && view.x(10000) < 500);
});

void test("scrolling ends where the session ends", () => {
    const view = viewport();
    view.zoom(10, 0);
    view.scrollBy(1e9, 1e9);
    assert.ok(view.left < 10000 && view.right > 10000);
    assert.equal(view.top, 700);
    view.scrollBy(-1e9, -1e9);
    assert.ok(view.left < 0 && view.right > 0);
    assert.equal(view.top, 0);
});

void test("a whole session stays whole in a new size", () => {
    const view = viewport();
    view.resize(1000, 300);
    assert.ok(view.isWhole);
    view.zoom(2, 0);
    view.resize(500, 300);
    assert.ok(!view.isWhole);
});

void test("what is revealed is in view, with as little scrolling as that takes", () => {
    const view = viewport();
    view.zoom(10, 250);
    const { left } = view;
    view.reveal(view.left + 10, view.left + 20, 0, 50);
    assert.equal(view.left, left);
    view.reveal(9000, 9100, 500, 560);
    assert.ok(view.left <= 9000 && view.right >= 9100);
    assert.ok(view.top <= 500 && view.top + view.height >= 560);
});

void test("links hold a place", () => {
    const place = { from: -100, to: 2000, top: 40, at: "/audioTracks/0/clips/3", range: [5, 17], filter: "voice & co" } as const;
    const fragment = toFragment(place);
    assert.equal(fragment, "#from=-100&to=2000&top=40&at=/audioTracks/0/clips/3&range=5..17&filter=voice+%26+co");
    assert.deepEqual(fromFragment(fragment), place);
    assert.deepEqual(fromFragment("#from=9&to=3&range=4..x&top=y"), {});
    assert.deepEqual(fromFragment("#from=1e9&to=2e9"), {});
    assert.deepEqual(fromFragment(""), {});
});

void test("waveforms keep their extremes at every size", () => {
    const lowest = Int8Array.from({ length: 37 }, (_, i) => -(i % 50));
    const highest = Int8Array.from({ length: 37 }, (_, i) => (i * 7) % 120);
    const encoded = (levels: Int8Array): string => Buffer.from(levels.buffer).toString("base64");
    const waveform = waveformOf({
        path: "",
        found: true,
        sound: "",
        waveform: { sampleRate: 1000, frames: 370, framesPerPeak: 10, lowest: encoded(lowest), highest: encoded(highest) },
    })!;
    assert.deepEqual(waveform.levels.map((level) => level.lowest.length), [37, 19, 10, 5, 3, 2, 1]);
    const out = { low: 0, high: 0 };
    extremes(waveform, 0, 370, out);
    assert.deepEqual(out, { low: Math.min(...lowest) / 127, high: Math.max(...highest) / 127 });
    extremes(waveform, 20, 25, out);
    assert.deepEqual(out, { low: -2 / 127, high: 14 / 127 });
    assert.equal(waveformOf({ path: "", found: true, sound: "", waveform: null }), null);
});

void test("curves level at peaks and never leave their neighbours", () => {
    assert.equal(slopeAt(1, -1), 0);
    assert.equal(slopeAt(0, 5), 0);
    assert.equal(slopeAt(2, 2), 2);
    assert.ok(slopeAt(1, 3) < 2);
});

void test("names are found without case, accents and order of words", () => {
    const picture = sketch();
    const finder = new Finder(picture, { sampleRate: 1000, ...picture.wire.time });
    assert.deepEqual(finder.find("oDLAND").things.map((thing) => thing.box), [1]);
    assert.deepEqual(finder.find("rain").things.map((thing) => thing.what), ["media", "clip", "clip"]);
    assert.deepEqual(finder.find("weather").things.map((thing) => [thing.what, thing.box]), [["group", 0]]);
    assert.deepEqual(finder.find("wind").things.map((thing) => thing.box), [2]);
    assert.equal(finder.find("nothing").count, 0);
    assert.equal(fold("Ångström ﬁ"), "angstrom fi");
});

void test("things are said in words", () => {
    const picture = sketch();
    assert.equal(
        rowLabel(picture, picture.rows[0]!),
        "Voices, audio track, to Master, 4 clips, automation of Voices",
    );
    const time = { sampleRate: 1000, ...picture.wire.time };
    assert.equal(lengthText(time, 61500), "1:01.500");
    assert.equal(lengthText(time, 3661500), "1:01:01.500");
    assert.equal(lengthText({ ...time, sampleRate: 0 }, 12), "12 samples");
    assert.equal(fileName("C:\\media\\wind.wav"), "wind.wav");
    assert.equal(keyText("outputTrackID"), "Output track ID");
    assert.equal(keyText("id"), "Id");
    assert.equal(capital("äther"), "Äther");
});

void test("the box in front leaves clear what it does not cover", () => {
    const front = new Front(100);
    front.add(1, -20, 60.5);
    front.add(2, 30.2, 50);
    front.add(3, 80, 140);
    assert.deepEqual(front.clearOf(1, -20, 60.5), { left: 0, right: 30 });
    assert.deepEqual(front.clearOf(2, 30.2, 50), { left: 30.2, right: 50 });
    assert.deepEqual(front.clearOf(3, 80, 140), { left: 80, right: 100 });
    assert.deepEqual([front.at(40), front.at(55), front.at(70), front.at(500)], [2, 1, -1, -1]);
    front.add(4, 25, 70);
    assert.deepEqual(front.clearOf(2, 30.2, 50), { left: 50, right: 50 });
    front.clear();
    assert.equal(front.at(40), -1);
});
