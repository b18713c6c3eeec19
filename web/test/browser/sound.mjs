// Hears pages: what sounds where, with which level. The media hold one value throughout, so that a level is a factor.
import assert from "node:assert/strict";
import { mkdirSync, readFileSync, renameSync, writeFileSync } from "node:fs";
import { createServer } from "node:http";
import path from "node:path";
import { test } from "node:test";
import { build } from "esbuild";
import { audit, exampleOf, folder, open, pageOf, serve, settled, shoot, web } from "./support.mjs";

const RATE = 48000;
const MEDIA = path.join(folder, "media");
/** What the media hold in each channel. */
const LEVEL = [0.5, 0.25];
const MUTED = 1;
const SOLO = 2;
const HALF = 10 ** (-6 / 20);
/** The middle of a mono track is as loud as both sides together. */
const MIDDLE = Math.SQRT1_2;

/** A WAV file of 16 bits whose channels hold their level for some seconds. */
function waveOf(channels, seconds) {
    const frames = Math.round(RATE * seconds);
    const bytes = Buffer.alloc(44 + frames * channels * 2);
    bytes.write("RIFF");
    bytes.writeUInt32LE(bytes.length - 8, 4);
    bytes.write("WAVEfmt ", 8);
    bytes.writeUInt32LE(16, 16);
    bytes.writeUInt16LE(1, 20);
    bytes.writeUInt16LE(channels, 22);
    bytes.writeUInt32LE(RATE, 24);
    bytes.writeUInt32LE(RATE * channels * 2, 28);
    bytes.writeUInt16LE(channels * 2, 32);
    bytes.writeUInt16LE(16, 34);
    bytes.write("data", 36);
    bytes.writeUInt32LE(bytes.length - 44, 40);
    for (let i = 0; i < frames * channels; i += 1) {
        bytes.writeInt16LE(Math.round(LEVEL[i % channels] * 32767), 44 + i * 2);
    }
    return bytes;
}

mkdirSync(MEDIA);
writeFileSync(path.join(MEDIA, "two sides.wav"), waveOf(2, 4));
writeFileSync(path.join(MEDIA, "one.wav"), waveOf(1, 0.5));

const control = (value, keyframes) => ({
    parameters: { 0: { parameterValue: value, ...(keyframes && { parameterKeyframes: { keyframes } }) } },
});
const at = (seconds) => Math.round(seconds * RATE);

/** A session of three seconds and more that plays both files. */
const session = {
    sampleRate: RATE,
    duration: at(6),
    files: [
        { id: 1, path: path.join(MEDIA, "two sides.wav") },
        { id: 2, path: path.join(MEDIA, "one.wav") },
    ],
    audioTracks: [
        {
            id: 1,
            index: 0,
            name: "Two sides",
            audioChannelType: "stereo",
            outputTrackID: 3,
            audioClips: [
                {
                    id: 1,
                    name: "Faded",
                    fileID: 1,
                    startPoint: at(0.5),
                    duration: at(2),
                    clipGain: control(-6),
                    fadeIn: { startPoint: 0, endPoint: at(0.5), type: "cosine" },
                    fadeOut: { startPoint: at(1.5), endPoint: at(2), type: "cosine" },
                },
                { id: 2, name: "Crossed", fileID: 1, startPoint: at(3), duration: at(1), sourceInPoint: at(1), channelMap: { 0: 1, 1: 0 } },
            ],
        },
        {
            id: 2,
            index: 1,
            name: "One",
            audioChannelType: "mono",
            outputTrackID: 3,
            trackFader: control(0, [
                { value: 0, sampleOffset: at(4.5) },
                { value: -12, sampleOffset: at(5.5) },
            ]),
            audioClips: [{ id: 3, name: "Round and round", fileID: 2, startPoint: at(4), duration: at(2), looped: true }],
        },
        { id: 3, index: 2, kind: "master", name: "Master", trackFader: control(-6) },
    ],
};

const script = build({
    entryPoints: [path.join(web, "test/browser/hear.ts")],
    bundle: true,
    write: false,
    format: "iife",
}).then((result) => result.outputFiles[0].text);

/** The levels that a page has at some times. */
async function hear(page, times, flags) {
    await page.evaluate(await script);
    return page.evaluate(([when, how]) => globalThis.hear(when, how), [times, flags ?? {}]);
}

function near(levels, wanted, what) {
    levels.forEach((level, side) => {
        assert.ok(Math.abs(level - wanted[side]) < 0.002, `${what}: ${level} in place of ${wanted[side]}`);
    });
}

const both = (factor) => LEVEL.map((level) => level * factor);

test("clips sound where they lie, with their gains and fades", async () => {
    const page = pageOf("heard", session, "--audio", "embed");
    await open(page, async (tab) => {
        const times = [0.25, 0.75, 1.5, 2.25, 2.75, 3.5, 4.2, 4.75, 5, 5.75, 4.5 + 1 / 32];
        const levels = await hear(tab, times);
        near(levels[0], [0, 0], "before the clip");
        near(levels[1], both(HALF * HALF * 0.5), "in the middle of its fade");
        near(levels[2], both(HALF * HALF), "with its own gain and the master's");
        near(levels[3], both(HALF * HALF * 0.5), "as it fades out");
        near(levels[4], [0, 0], "behind it");
        near(levels[5], [LEVEL[1] * HALF, LEVEL[0] * HALF], "with its channels crossed");
        near(levels[6], [1, 1].map(() => LEVEL[0] * MIDDLE * HALF), "one channel, in the middle");
        near(levels[7], [1, 1].map(() => LEVEL[0] * MIDDLE * HALF * 10 ** (-3 / 20)), "as the fader goes down, and looped");
        near(levels[8], [1, 1].map(() => LEVEL[0] * MIDDLE * HALF * 10 ** (-6 / 20)), "later");
        near(levels[9], [1, 1].map(() => LEVEL[0] * MIDDLE * HALF * 10 ** (-12 / 20)), "at last");
        near(levels[10], [1, 1].map(() => LEVEL[0] * MIDDLE * HALF * 10 ** (-0.375 / 20)), "between the points of a line");
    });
});

/** Two clips that lie one upon the other between one and two seconds, and a pan. */
const overlapped = (isFaded) => ({
    ...session,
    duration: at(3),
    audioTracks: [
        {
            id: 1,
            audioChannelType: "stereo",
            trackPan: control(0, [{ value: 0, sampleOffset: at(2.5) }, { value: -1, sampleOffset: at(2.75) }]),
            audioClips: [
                {
                    id: 1,
                    fileID: 1,
                    duration: at(2),
                    ...(isFaded && { crossFadeTailClipID: 2, fadeOut: { startPoint: at(1), endPoint: at(2), type: "cosine" } }),
                },
                {
                    id: 2,
                    fileID: 1,
                    startPoint: at(1),
                    duration: at(2),
                    ...(isFaded && { crossFadeHeadClipID: 1, fadeIn: { startPoint: 0, endPoint: at(1), type: "cosine" } }),
                },
            ],
        },
    ],
});

test("clips fade into each other, or the one in front is heard", async () => {
    for (const isFaded of [true, false]) {
        await open(pageOf(`overlapped-${isFaded}`, overlapped(isFaded), "--audio", "embed"), async (tab) => {
            const levels = await hear(tab, [0.5, 1.25, 1.5, 1.75, 2.25, 2.9]);
            levels.slice(0, 5).forEach((level, i) => near(level, both(1), `never louder nor softer: ${i}`));
            near(levels[5], [LEVEL[0] + LEVEL[1], 0], "at the left");
        });
    }
    const all = { ...overlapped(false), mixingOptionState: { playOverlappingClips: true } };
    await open(pageOf("overlapped-all", all, "--audio", "embed"), async (tab) => {
        near((await hear(tab, [1.5]))[0], both(2), "both at once");
    });
});

test("mutes and solos silence tracks", async () => {
    await open(pageOf("switched", session, "--audio", "embed"), async (tab) => {
        const times = [1.5, 4.2];
        const of = async (...flags) => (await hear(tab, times, { ...flags })).map(([left]) => left > 0.01);
        assert.deepEqual(await of(0, 0, 0), [true, true]);
        assert.deepEqual(await of(MUTED, 0, 0), [false, true]);
        assert.deepEqual(await of(0, SOLO, 0), [false, true]);
        assert.deepEqual(await of(SOLO, 0, 0), [true, false]);
        assert.deepEqual(await of(0, 0, MUTED), [false, false]);
    });
});

/** Runs in the page before its own script: listens to what goes to the loudspeakers. */
function listen() {
    const plain = AudioNode.prototype.connect;
    AudioNode.prototype.connect = function connect(target, ...rest) {
        if (target instanceof AudioDestinationNode && !globalThis.ear) {
            globalThis.ear = this.context.createAnalyser();
            plain.call(this, globalThis.ear);
        }
        return plain.call(this, target, ...rest);
    };
    globalThis.loudness = () => {
        if (!globalThis.ear) {
            return 0;
        }
        const samples = new Float32Array(globalThis.ear.fftSize);
        globalThis.ear.getFloatTimeDomainData(samples);
        return samples.reduce((most, sample) => Math.max(most, Math.abs(sample)), 0);
    };
}

const isLoud = (page) => page.waitForFunction(() => globalThis.loudness() > 0.02);
const isSilent = (page) => page.waitForFunction(() => globalThis.loudness() < 1e-4);
/** The position that the page shows, in seconds. */
const clockOf = async (page) => {
    const [hours, minutes, seconds] = (await page.locator("#clock").textContent()).split(":").map(Number);
    return hours * 3600 + minutes * 60 + seconds;
};

/** A session whose only clip is as long as a busy machine may need. */
const long = {
    ...session,
    duration: at(120),
    audioTracks: [
        { id: 1, index: 0, name: "Long", audioChannelType: "stereo", audioClips: [{ id: 1, name: "Long", fileID: 1, duration: at(120), looped: true }] },
        { id: 2, index: 1, name: "Other", audioChannelType: "stereo" },
    ],
};

async function playAndStop(page) {
    await page.locator("#timeline").focus();
    await page.keyboard.press("Space");
    await isLoud(page);
    await page.waitForFunction(() => !document.getElementById("clock").textContent.endsWith("0:00:00.000"));
    await page.keyboard.press(".");
    await isSilent(page);
    assert.equal(await clockOf(page), 0, "it goes back to where it began");
}

test("the transport plays, pauses, places and stops, and follows mutes and solos", async () => {
    await open(
        pageOf("transport", long, "--audio", "embed"),
        async (page) => {
            await audit(page, "with a transport");
            await playAndStop(page);
            await page.keyboard.press("Space");
            await isLoud(page);
            await page.click("#play");
            await isSilent(page);
            const paused = await clockOf(page);
            assert.ok(paused > 0);
            await settled(page);
            assert.equal(await clockOf(page), paused);
            const ruler = await page.locator("#ruler").boundingBox();
            await page.mouse.click(ruler.x + ruler.width / 2, ruler.y + 10);
            assert.ok(Math.abs((await clockOf(page)) - 60) < 1, "the ruler places it");
            await page.locator("#timeline").focus();
            await page.keyboard.press("Space");
            await isLoud(page);
            assert.ok((await clockOf(page)) >= 59);
            await page.keyboard.press("n");
            await page.keyboard.press("m");
            await isSilent(page);
            assert.match(await page.locator("#status").textContent(), /^Long is muted/u);
            await page.keyboard.press("m");
            await isLoud(page);
            await page.keyboard.press("b");
            await page.waitForFunction(() => document.getElementById("clock").textContent < "0:00:50");
            await page.locator(".track", { hasText: "Other" }).click();
            await page.click("#switch-solo");
            await isSilent(page);
            assert.equal(await page.locator("#switch-solo").getAttribute("aria-pressed"), "true");
            assert.equal(await page.evaluate(() => document.activeElement.id), "switch-solo");
            await audit(page, "with a track that is solo");
            await shoot(page, "transport");
            await page.locator(".track", { hasText: "Other" }).locator('[data-switch="solo"]').click();
            await isLoud(page);
            await page.locator("#volume").focus();
            await page.keyboard.press("Home");
            await isSilent(page);
            assert.equal(await page.locator("#volume-text").textContent(), "silent");
            await page.keyboard.press("Space");
            assert.equal(await page.locator("#play").getAttribute("aria-label"), "Play", "the space bar pauses also from the slider");
            await page.locator(".track").first().focus();
            await page.keyboard.press("Space");
            await page.waitForSelector('#play[aria-label="Pause"]');
        },
        { init: listen },
    );
});

test("the view follows what is played, and stops at the end", async () => {
    await open(
        pageOf("followed", { ...long, duration: at(120) }, "--audio", "embed"),
        async (page) => {
            await page.keyboard.press("Space");
            const place = () => Number(new URLSearchParams(new URL(page.url()).hash.slice(1)).get("from"));
            await page.waitForFunction((end) => new URLSearchParams(location.hash.slice(1)).get("from") > end, at(4));
            assert.ok(place() < at(60));
            await page.keyboard.press("End");
            await page.waitForFunction((end) => new URLSearchParams(location.hash.slice(1)).get("from") > end, at(100));
            const before = await clockOf(page);
            await page.waitForFunction((time) => document.getElementById("clock").textContent > time, `0:00:${(before + 0.2).toFixed(3).padStart(6, "0")}`);
            assert.ok((await page.evaluate(() => new URLSearchParams(location.hash.slice(1)).get("from"))) > at(100), "who scrolls away stays there");
            await page.keyboard.press(".");
            await isSilent(page);
        },
        { init: listen, fragment: `#from=0&to=${at(5)}` },
    );
});

test("of a part of a session only that is played", async () => {
    const page = pageOf("part", { ...long, ctiPosition: at(2) }, "--audio", "embed", "--from", "0:10", "--to", "0:12");
    await open(
        page,
        async (tab) => {
            assert.equal(await clockOf(tab), 10);
            await tab.keyboard.press("Space");
            await isLoud(tab);
            await tab.waitForSelector('#play[aria-label="Play"]');
            assert.equal(await clockOf(tab), 10, "it has come to the end");
        },
        { init: listen },
    );
});

test("what is not heard is said", async () => {
    await open(pageOf("unheard", exampleOf("music"), "--audio", "embed"), async (page) => {
        const line = await page.locator("#unheard").textContent();
        assert.match(line, /^Not heard: .*effects racks.*sends.*MIDI clips.*metronome/u);
        await audit(page, "with a line of what is not heard");
        await shoot(page, "unheard");
    });
    await open(pageOf("seen", exampleOf("music")), async (page) => {
        assert.ok(await page.locator("#transport").isHidden());
        assert.ok(await page.locator("#unheard").isHidden());
        assert.equal(await page.locator('script[type="application/octet-stream"]').count(), 0);
    });
});

test("linked media are chosen by the reader of a page from the disk", async () => {
    await open(
        pageOf("linked", long, "--audio", "link"),
        async (page) => {
            assert.match(await page.locator("#sound-note").textContent(), /1 media file only if you choose the folder/u);
            await audit(page, "with media to choose");
            await page.setInputFiles("#media-files", MEDIA);
            await page.waitForSelector("#media-choice", { state: "hidden" });
            await playAndStop(page);
        },
        { init: listen },
    );
});

test("a page on a web server gets its media from there", async () => {
    const page = pageOf("on-the-web", long, "--audio", "link");
    const server = createServer((request, response) => {
        const name = path.join(folder, path.normalize(decodeURIComponent(new URL(request.url, "http://a").pathname)));
        response.setHeader("Content-Type", name.endsWith(".html") ? "text/html" : "audio/wav");
        response.end(readFileSync(name));
    });
    await new Promise((resolve) => {
        server.listen(0, "127.0.0.1", resolve);
    });
    try {
        const { port } = server.address();
        await open(`http://127.0.0.1:${port}/${path.basename(page)}`, playAndStop, { init: listen });
    } finally {
        server.closeAllConnections();
        server.close();
    }
});

test("a served page gets its media from the server", async () => {
    const file = path.join(folder, "served-sound.json");
    writeFileSync(`${file}.new`, JSON.stringify(long));
    renameSync(`${file}.new`, file);
    await serve(
        file,
        async (address) => {
            await open(address, playAndStop, { init: listen });
        },
        "--audio",
        "link",
    );
});

test("strange numbers of a session do no harm", async () => {
    const strange = structuredClone(long);
    const [track] = strange.audioTracks;
    const [clip] = track.audioClips;
    Object.assign(track, { trackFader: control(3e38), trackPan: control(-3e38) });
    track.audioClips = [
        { ...clip, clipGain: control(-3e38), clipStretch: { stretchMode: "realtime", stretchRatio: 1e-300 }, channelMap: { 4000000000: 3 } },
        { ...clip, id: 2, sourceInPoint: -(2 ** 60), duration: 2 ** 61, zOrder: -1 },
        { ...clip, id: 3, startPoint: -(2 ** 62), duration: 2 ** 62 + 1, fadeIn: { startPoint: 0, endPoint: 2 ** 61 }, zOrder: 1 },
    ];
    await open(pageOf("strange", strange, "--audio", "embed"), async (page) => {
        await page.keyboard.press("Space");
        await page.waitForSelector('#play[aria-label="Pause"]');
        await page.waitForFunction((before) => document.getElementById("clock").textContent !== before, await page.locator("#clock").textContent());
    });
    await open(pageOf("no-rate", { sampleRate: 0 }, "--audio", "embed"), async (page) => {
        assert.ok(await page.locator("#transport").isHidden());
    });
});

test("media that a browser cannot read are named", async () => {
    const broken = path.join(MEDIA, "broken.wav");
    writeFileSync(broken, "no sound");
    const it = structuredClone(long);
    it.files[0].path = broken;
    await open(
        pageOf("broken", it, "--audio", "embed"),
        async (page) => {
            await page.keyboard.press("Space");
            await page.waitForFunction(() => document.getElementById("unheard").textContent.includes("cannot read: broken.wav"));
            await page.keyboard.press(".");
            assert.match(await page.locator("#unheard").textContent(), /^Not heard: what this browser cannot read: broken\.wav\.$/u);
        },
        { init: listen },
    );
});

test("a browser that makes no sound says so, and plays once it does", async () => {
    const withhold = () => {
        const { resume } = AudioContext.prototype;
        AudioContext.prototype.resume = function answerLater() {
            return window.hasDevice ? resume.call(this) : new Promise(() => {});
        };
    };
    await open(
        pageOf("no-device", long, "--audio", "embed"),
        async (page) => {
            await page.keyboard.press("Space");
            await page.waitForFunction(() => document.getElementById("sound-note").textContent.startsWith("This browser makes no sound."));
            assert.equal(await page.locator("#play").getAttribute("aria-label"), "Play");
            await page.evaluate(() => (window.hasDevice = true));
            await page.keyboard.press("Space");
            await isLoud(page);
            assert.equal(await page.locator("#sound-note").textContent(), "");
        },
        { init: `(${listen})();(${withhold})();` },
    );
});
