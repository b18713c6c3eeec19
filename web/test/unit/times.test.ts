import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import path from "node:path";
import test from "node:test";
import { Ruler } from "../../src/ruler";
import { formatPosition, type TimeBase, toWhole } from "../../src/times";

declare const FIXTURES: string;

/** What the library writes for positions; tests/toolkit/view/PageTimes_test.cpp makes the file. */
interface Fixture {
    time: TimeBase;
    positions: [string, string][];
}

const fixtures = JSON.parse(readFileSync(path.join(FIXTURES, "times.json"), "utf8")) as Fixture[];

void test("positions are written as the library writes them", () => {
    assert.ok(fixtures.length >= 10);
    for (const { time, positions } of fixtures) {
        for (const [position, text] of positions) {
            assert.equal(formatPosition(time, BigInt(position)), text, JSON.stringify(time));
        }
    }
});

void test("rulers rise, keep their distance, and say the truth at every zoom", () => {
    for (const { time } of fixtures) {
        const ruler = new Ruler(time);
        for (let room = 1; room < 1e9; room *= 7.3) {
            const from = -3.5 * room;
            const ticks = ruler.ticks(from, 12 * room, room, room / 12);
            const labels = ticks.filter((tick) => tick.label);
            ticks.slice(1).forEach((tick, i) => assert.ok(tick.position > ticks[i]!.position));
            labels.slice(1).forEach((tick, i) => {
                assert.notEqual(tick.label, labels[i]!.label);
                // Frames and subdivisions begin at whole samples, and drop frame skips numbers.
                assert.ok(tick.position - labels[i]!.position > room * 0.9 - 4);
            });
            if (room >= time.sampleRate) {
                for (const { position, label } of labels) {
                    assert.ok(formatPosition(time, toWhole(position)).startsWith(label), label);
                }
            }
        }
    }
});

void test("a ruler has labels wherever the view is a few labels wide", () => {
    for (const { time } of fixtures) {
        const labels = new Ruler(time).ticks(0, 480000, 24000, 2400).filter((tick) => tick.label);
        assert.ok(labels.length >= 2, JSON.stringify(time));
        assert.equal(labels[0]!.position, 0);
    }
});
