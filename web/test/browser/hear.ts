/** Hears the page's session at once, in place of loudspeakers: a script for the tests. */

import { Indexes } from "../../src/cull";
import { Picture, type Wire } from "../../src/picture";
import { SessionText } from "../../src/session";
import { Mix } from "../../src/sound/mix";
import { playOrder, render } from "../../src/sound/player";
import { Sounds } from "../../src/sound/sounds";

const RATE = 48000;
/** Samples that a level is the mean of. */
const WINDOW = 64;

const textOf = (id: string): string => document.getElementById(id)?.textContent ?? "";

/**
 * The levels of both channels at some times, in seconds.
 * @param flags of rows, in place of those that they have
 */
async function hear(times: number[], flags: Record<number, number> = {}): Promise<[number, number][]> {
    const picture = new Picture(JSON.parse(textOf("picture")) as Wire);
    for (const [row, value] of Object.entries(flags)) {
        picture.rows[Number(row)]!.flags = value;
    }
    const mix = new Mix(picture, new SessionText(() => textOf("session")), new Indexes(picture));
    const sounds = new Sounds(picture.media, (bytes) => new OfflineAudioContext(1, 1, RATE).decodeAudioData(bytes));
    await Promise.all(playOrder(mix, 0).map((box) => sounds.load(picture.boxes.media[box]!)));
    const sound = await render(mix, sounds.get, 0, picture.wire.end, RATE);
    return times.map((time) => {
        const first = Math.round(time * RATE);
        const mean = (channel: number): number => {
            const samples = sound.getChannelData(channel).subarray(first, first + WINDOW);
            return samples.reduce((sum, sample) => sum + sample, 0) / samples.length;
        };
        return [mean(0), mean(1)];
    });
}

Object.assign(globalThis, { hear });
