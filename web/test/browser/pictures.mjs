// Compares pages with pictures that somebody looked at and approved. With APPROVE they are taken anew.
import assert from "node:assert/strict";
import { readFileSync, writeFileSync } from "node:fs";
import path from "node:path";
import { test } from "node:test";
import { changed } from "./changed.mjs";
import { exampleOf, open, pageOf, pageOfTwo, settled, shoot, web } from "./support.mjs";

const APPROVED = path.join(web, "test/approved");
/** How much a colour may differ, in 255ths, and how many pixels may differ more, as a share. */
const NEAR = 24;
const MOST = 0.0005;
const MOST_BYTES = 150_000;

const pictures = [
    { name: "dark", make: () => pageOf("approved", exampleOf("radio-spot")) },
    { name: "light", make: () => pageOf("approved", exampleOf("radio-spot")), colorScheme: "light" },
    { name: "heard", make: () => pageOf("approved-sound", exampleOf("music"), "--audio", "embed") },
    { name: "changed-dark", make: () => pageOfTwo("approved-changes", ...changed) },
    { name: "changed-light", make: () => pageOfTwo("approved-changes", ...changed), colorScheme: "light" },
    { name: "small", make: () => pageOf("approved", exampleOf("spoken-word")), viewport: { width: 390, height: 780 } },
];

/** Which share of two pictures differs. Runs in the page. */
async function difference([one, other, near]) {
    const pixelsOf = async (base64) => {
        const bytes = Uint8Array.from(atob(base64), (character) => character.charCodeAt(0));
        const image = await createImageBitmap(new Blob([bytes], { type: "image/png" }));
        const context = new OffscreenCanvas(image.width, image.height).getContext("2d");
        context.drawImage(image, 0, 0);
        return context.getImageData(0, 0, image.width, image.height);
    };
    const [a, b] = await Promise.all([pixelsOf(one), pixelsOf(other)]);
    if (a.width !== b.width || a.height !== b.height) {
        return 1;
    }
    let count = 0;
    for (let i = 0; i < a.data.length; i += 4) {
        const isNear = [0, 1, 2].every((channel) => Math.abs(a.data[i + channel] - b.data[i + channel]) <= near);
        count += isNear ? 0 : 1;
    }
    return count / (a.width * a.height);
}

for (const { name, make, ...options } of pictures) {
    test(`the page "${name}" looks as approved`, async () => {
        await open(
            make(),
            async (page) => {
                await settled(page);
                const taken = await page.screenshot();
                const file = path.join(APPROVED, `${name}.png`);
                assert.ok(taken.length < MOST_BYTES, `${taken.length} bytes`);
                if (process.env.APPROVE) {
                    writeFileSync(file, taken);
                }
                await shoot(page, `approved-${name}`);
                const texts = [taken, readFileSync(file)].map((bytes) => bytes.toString("base64"));
                const share = await page.evaluate(difference, [...texts, NEAR]);
                assert.ok(share <= MOST, `${(share * 100).toFixed(3)} % differ from ${file}; look at it, and run npm run approve if it is right`);
            },
            { viewport: { width: 1200, height: 720 }, ...options },
        );
    });
}
