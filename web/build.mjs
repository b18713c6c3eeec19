// Bundles the page into one file, dist/page.html. With --check, only compares it with that file.
import { createHash } from "node:crypto";
import { mkdir, readFile, writeFile } from "node:fs/promises";
import path from "node:path";
import { fileURLToPath } from "node:url";
import { build } from "esbuild";

const root = path.dirname(fileURLToPath(import.meta.url));
const target = path.join(root, "dist/page.html");

async function bundle(entry) {
    const result = await build({
        absWorkingDir: root,
        entryPoints: [entry],
        bundle: true,
        minify: true,
        write: false,
        format: "iife",
        target: ["chrome110", "firefox115", "safari16.4"],
        charset: "utf8",
        legalComments: "none",
    });
    return result.outputFiles[0].text.trim();
}

const hashOf = (text) => `'sha256-${createHash("sha256").update(text).digest("base64")}'`;

const [script, style, page] = await Promise.all([
    bundle("src/main.ts"),
    bundle("src/page.css"),
    readFile(path.join(root, "src/page.html"), "utf8"),
]);
const parts = new Map([
    ["@script@", script],
    ["@style@", style],
    ["@script-hash@", hashOf(script)],
    ["@style-hash@", hashOf(style)],
]);
let html = page;
for (const [mark, text] of parts) {
    if (html.split(mark).length !== 2) {
        throw new Error(`src/page.html has ${mark} not once`);
    }
    html = html.replace(mark, () => text);
}
if (process.argv[2] === "--check") {
    if ((await readFile(target, "utf8")) !== html) {
        throw new Error("dist/page.html is not what the sources make; run npm run build");
    }
} else {
    await mkdir(path.dirname(target), { recursive: true });
    await writeFile(target, html);
}
