import assert from "node:assert/strict";
import test from "node:test";
import { contrast, cssOf, oklch, perceivedHue, shadesOf } from "../../src/colours";

const READABLE = 4.5;
const SEEN = 1.7;

void test("names are readable on every hue, muted or not, in both themes", () => {
    for (const theme of ["dark", "light"] as const) {
        for (let hue = 0; hue < 360; hue += 1) {
            for (const muted of [false, true]) {
                const { bar, body, text } = shadesOf(theme, hue, muted);
                assert.ok(contrast(text, bar) >= READABLE, `${theme} ${hue}: ${contrast(text, bar)}`);
                assert.ok(contrast(text, body) >= READABLE, `${theme} ${hue}: ${contrast(text, body)}`);
            }
        }
    }
});

void test("waveforms stand out from their clips", () => {
    for (const theme of ["dark", "light"] as const) {
        for (let hue = 0; hue < 360; hue += 1) {
            const { wave, body } = shadesOf(theme, hue, false);
            assert.ok(contrast(wave, body) >= SEEN, `${theme} ${hue}: ${contrast(wave, body)}`);
        }
    }
});

void test("hues keep their names", () => {
    assert.equal(Math.round(perceivedHue(0)), 29);
    assert.equal(Math.round(perceivedHue(120)), 142);
    assert.equal(Math.round(perceivedHue(240)), 264);
});

void test("colours are those that a screen can show", () => {
    assert.equal(cssOf(oklch(1, 0, 0)), "#ffffff");
    assert.equal(cssOf(oklch(0, 0, 0)), "#000000");
    assert.ok(oklch(0.9, 0.4, 264).every((value) => value >= 0 && value <= 1));
    assert.equal(contrast([0, 0, 0], [1, 1, 1]), 21);
});
