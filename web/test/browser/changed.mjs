// Uses the page of two sessions: what it marks, says and leads to.
import assert from "node:assert/strict";
import { test } from "node:test";
import { audit, exampleOf, jsonOf, open, pageOfTwo, placeOf, shoot } from "./support.mjs";

/** An example, and what somebody made of it. Its media lie where the example's do. */
export const changed = (() => {
    const before = jsonOf("radio-spot");
    for (const file of before.files) {
        file.path = `${exampleOf("radio-spot").replace(/[^/]*$/u, "media/")}${file.path.split("/").pop()}`;
    }
    const after = structuredClone(before);
    const [calls, weather, clock] = after.audioTracks;
    calls.audioClips[1].startPoint += 11025;
    calls.audioClips.splice(2, 1);
    calls.audioClips.push({ id: 99, fileID: 1, startPoint: 180000, duration: 39690, hue: 30, name: "Door bell later" });
    weather.name = "Rain and sea";
    clock.audioClips[0].name = "Tock";
    after.audioTracks.splice(3, 1);
    after.audioTracks.push({
        id: 77,
        index: 9,
        kind: "audio",
        name: "Voice",
        audioChannelType: "mono",
        outputTrackID: 5,
        audioClips: [{ id: 5, fileID: 2, startPoint: 40000, duration: 35280, name: "Hello" }],
    });
    return [before, after];
})();

const sentence = (page, words) => page.locator("#changes button", { hasText: words });

test("what changed is listed, and the list leads to it", async () => {
    await open(pageOfTwo("changed", ...changed), async (page) => {
        await audit(page, "with changes");
        await shoot(page, "changed");
        assert.equal(await page.title(), "changed-before.json → changed-after.json");
        assert.equal(await page.locator("#changes h2").textContent(), "7 changes");
        assert.equal(await page.locator("#changes li").count(), 7);
        const status = () => page.locator("#status").textContent();
        await sentence(page, /Telephone" .* moved by/u).click();
        assert.match(await status(), /^Telephone, audio clip on Door and telephone, at 0:00:03\.500,.* moved/u);
        assert.equal((await placeOf(page)).at, "/audioTracks/0/audioClips/1");
        await sentence(page, "Telephone again").click();
        assert.match(await status(), /^Telephone again, .* removed, locked$/u);
        await sentence(page, '"Jingle" removed').click();
        assert.match(await status(), /^Jingle, instrument track, .*removed/u);
        assert.match((await placeOf(page)).at, /^\/before\/audioTracks/u);
        assert.equal(await page.locator("#changes li[aria-current]").textContent(), 'Instrument track "Jingle" removed with 1 clip');
        await page.locator("#timeline").focus();
        await page.keyboard.press("d");
        assert.match(await status(), /^Voice, audio track, .*added/u);
        await page.keyboard.press("Shift+D");
        assert.match(await status(), /^Jingle/u);
        await page.keyboard.press("t");
        await audit(page, "with changes in light");
    });
});

test("details say what became of a thing, and links lead to what is gone", async () => {
    const page = pageOfTwo("changed-details", ...changed);
    const fragment = "#at=/audioTracks/0/before/audioClips/2";
    await open(
        page,
        async (tab) => {
            await tab.click("#tab-details");
            assert.equal(await tab.locator("#details h2").textContent(), "Telephone again");
            assert.match(await tab.locator("#details").textContent(), /Stateremoved, lockedChangeClip "Telephone again" on track .* removed at/u);
            assert.match(await tab.locator("#details").textContent(), /Only the first session has it\./u);
            await tab.locator(".track", { hasText: "Rain and sea" }).click();
            assert.match(await tab.locator("#details").textContent(), /ChangeTrack "Weather" renamed to "Rain and sea"/u);
            assert.match(await tab.locator("#details").textContent(), /NameRain and sea/u);
        },
        { fragment },
    );
});

test("of a session and itself nothing changed", async () => {
    await open(pageOfTwo("same", changed[0], changed[0]), async (page) => {
        assert.equal(await page.locator("#changes h2").textContent(), "Nothing changed but ids");
        await page.keyboard.press("d");
        await audit(page, "without changes");
    });
});

/** The colours of the timeline at some places: seconds, and names of rows. */
const coloursAt = (page, places) =>
    page.evaluate((wanted) => {
        const canvas = document.getElementById("timeline");
        const frame = canvas.getBoundingClientRect();
        const ratio = canvas.width / frame.width;
        const values = new URLSearchParams(location.hash.slice(1));
        const [from, to] = ["from", "to"].map((key) => Number(values.get(key)));
        const { data } = canvas.getContext("2d").getImageData(0, 0, canvas.width, canvas.height);
        return wanted.map(([seconds, name]) => {
            const track = [...document.querySelectorAll(".track")].find((it) => it.querySelector(".name").textContent === name);
            const y = Math.round((track.getBoundingClientRect().top - frame.top + 60) * ratio);
            // Within the frame at the left edge.
            const x = Math.round(((seconds * 22050 - from) / (to - from)) * canvas.width + ratio);
            return [...data.slice((y * canvas.width + x) * 4).slice(0, 3)];
        });
    }, places);

test("what changed is framed in its colour", async () => {
    await open(pageOfTwo("framed", ...changed), async (page) => {
        await page.locator("#timeline").focus();
        await page.keyboard.press("+");
        await page.keyboard.press("0");
        await placeOf(page);
        const colours = await coloursAt(page, [
            [180000 / 22050, "Door and telephone"],
            [(66150 + 11025) / 22050, "Door and telephone"],
            [40000 / 22050, "Voice"],
        ]);
        const strongest = colours.map((colour) => ["red", "green", "blue"][colour.indexOf(Math.max(...colour))]);
        assert.deepEqual(strongest, ["green", "blue", "green"], "what came, what moved, and a clip of a track that came");
    });
});
