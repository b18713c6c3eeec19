import assert from "node:assert/strict";
import test from "node:test";
import { Indexes, keyframeAt } from "../../src/cull";
import { boxStates, rowStates } from "../../src/describe";
import { BoxFlag } from "../../src/picture";
import { Stack } from "../../src/stack";
import { sketch } from "./sketch";

void test("columns become things", () => {
    const picture = sketch();
    assert.deepEqual(
        picture.rows.map((row) => [row.name, row.output, row.begin, row.end]),
        [
            ["Voices", "Master", 0, 4],
            ["Master", "", 4, 4],
        ],
    );
    assert.deepEqual([...picture.boxes.end], [5000, 2100, 1200, 9000]);
    assert.deepEqual([...picture.boxes.next], [2, -1, -1, -1]);
    assert.equal(picture.boxColour(0), 0);
    assert.equal(picture.boxColour(1), 2);
    assert.equal(picture.boxPath(2), "/a/audioClips/2");
    assert.equal(picture.boxPath(3), "/a/midiClips/0");
    assert.ok(picture.has(1, BoxFlag.muted) && !picture.has(0, BoxFlag.muted));
    assert.deepEqual(picture.membersOf(0), [0, 2]);
    assert.equal(picture.fadesIn.get(0)?.length, 500);
    assert.equal(picture.fadesOut.get(0)?.length, 700);
});

void test("lanes of rows stand before those of their boxes", () => {
    const picture = sketch();
    assert.deepEqual(picture.rows[0]!.lanes, [{ name: "Voices", low: 0, high: 1, begin: 0, end: 3 }]);
    const own = picture.boxLanes.get(0)!;
    assert.deepEqual([own[0]!.begin, own[0]!.end], [3, 4]);
    assert.ok(Number.isNaN(own[0]!.low));
    assert.ok(Number.isNaN(picture.keyframes.value[3]));
});

void test("things are found by their paths", () => {
    const picture = sketch();
    assert.deepEqual(picture.find("/a/audioClips/1"), { row: 0, box: 1 });
    assert.deepEqual(picture.find("/b"), { row: 1, box: -1 });
    assert.equal(picture.find("/a/audioClips/9"), null);
});

void test("what only the first session has is told apart", () => {
    const { wire } = sketch();
    const picture = sketch({ rows: { ...wire.rows, change: [0, 2] }, boxes: { ...wire.boxes, change: [0, 3, 5, 2] } });
    assert.deepEqual([0, 1, 2, 3].map((box) => picture.isGone(box)), [false, false, true, true]);
    assert.equal(picture.rows[1]!.path, "/before/b");
    assert.equal(picture.boxPath(1), "/a/audioClips/1");
    assert.equal(picture.boxPath(2), "/a/before/audioClips/2");
    for (let box = 0; box < 4; box += 1) {
        assert.deepEqual(picture.find(picture.boxPath(box)), { row: 0, box });
    }
    assert.deepEqual(picture.find("/before/b"), { row: 1, box: -1 });
    assert.deepEqual(boxStates(picture, 1), ["moved", "muted"]);
    assert.deepEqual(rowStates(picture, picture.rows[1]!), ["removed"]);
    assert.deepEqual(boxStates(sketch(), 0).includes(""), false);
});

void test("an index finds what touches a range, and what lies in front", () => {
    const picture = sketch();
    const index = new Indexes(picture).of(0);
    assert.deepEqual([...index.order], [0, 2, 1, 3]);
    assert.ok(!index.isInOrder);
    const shown = (from: number, to: number): number[] => {
        const { begin, end } = index.range(from, to);
        return [...index.order.slice(begin, end)].filter((box) => picture.boxes.end[box]! >= from);
    };
    assert.deepEqual(shown(4000, 4500), [0]);
    assert.deepEqual(shown(1100, 2050), [0, 2, 1]);
    assert.deepEqual(shown(6000, 8000), []);
    assert.equal(index.top(2050, 2050), 1);
    assert.equal(index.top(1500, 1500), 0);
    assert.equal(index.top(9000, 9000), 3);
    assert.equal(index.nearest(1400), 2);
    assert.equal(index.nearest(8000), 3);
});

void test("an index agrees with a look at every box", () => {
    const count = 400;
    let seed = 1;
    const random = (most: number): number => {
        seed = (seed * 48271) % 2147483647;
        return seed % most;
    };
    const picture = sketch();
    const boxes = { ...picture.boxes, start: new Float64Array(count), end: new Float64Array(count) };
    for (let i = 0; i < count; i += 1) {
        boxes.start[i] = random(10000);
        boxes.end[i] = boxes.start[i]! + random(random(20) === 0 ? 5000 : 100);
    }
    const all = Object.assign(Object.create(picture) as typeof picture, { boxes });
    all.rows[0]!.begin = 0;
    all.rows[0]!.end = count;
    const index = new Indexes(all).of(0);
    for (let i = 0; i < 300; i += 1) {
        const from = random(11000) - 500;
        const to = from + random(800);
        const { begin, end } = index.range(from, to);
        const found = [...index.order.slice(begin, end)].filter((box) => boxes.end[box]! >= from).sort((a, b) => a - b);
        const every = Array.from({ length: count }, (_, box) => box);
        assert.deepEqual(found, every.filter((box) => boxes.start[box]! <= to && boxes.end[box]! >= from));
        assert.equal(index.top(from, to), found[found.length - 1] ?? -1);
    }
});

void test("keyframes are found near a position", () => {
    const picture = sketch();
    const lane = picture.rows[0]!.lanes[0]!;
    assert.equal(keyframeAt(picture, lane, 95, 10), 1);
    assert.equal(keyframeAt(picture, lane, 104, 10), 1);
    assert.equal(keyframeAt(picture, lane, 50, 10), -1);
    assert.equal(keyframeAt(picture, lane, -5, 10), 0);
    assert.equal(keyframeAt(picture, lane, 205, 10), 2);
    assert.equal(keyframeAt(picture, { ...lane, end: lane.begin }, 0, 10), -1);
});

void test("rows are stacked, and filtered by their words", () => {
    const stack = new Stack(sketch());
    assert.deepEqual(
        stack.slots.map((slot) => [slot.row, slot.top, slot.height]),
        [
            [0, 0, 96],
            [1, 96, 44],
        ],
    );
    assert.equal(stack.at(95)?.row, 0);
    assert.equal(stack.at(96)?.row, 1);
    assert.equal(stack.at(140), null);
    assert.equal(stack.at(-1), null);
    stack.fitInto(1000);
    assert.equal(stack.height, 184);
    stack.fitInto(183);
    assert.equal(stack.height, 140);
    stack.filter("  VOIC mas ");
    assert.deepEqual(stack.slots.map((slot) => slot.row), [0]);
    stack.filter("nobody");
    assert.equal(stack.height, 0);
    assert.equal(stack.at(0), null);
});
