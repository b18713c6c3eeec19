// What the tests of pages share: the tool, the browser, and pages that must give no cause for complaint.
import assert from "node:assert/strict";
import { spawn, spawnSync } from "node:child_process";
import { accessSync, constants, mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import os from "node:os";
import path from "node:path";
import { after, before } from "node:test";
import { fileURLToPath, pathToFileURL } from "node:url";
import { chromium } from "playwright-core";

export const web = path.resolve(path.dirname(fileURLToPath(import.meta.url)), "../..");
const root = path.dirname(web);
const orvo = process.env.ORVO;
assert.ok(orvo, "say in ORVO where the tool is");
const axe = readFileSync(path.join(web, "node_modules/axe-core/axe.min.js"), "utf8");
export const folder = mkdtempSync(path.join(os.tmpdir(), "orvo-pages-"));
const size = { width: 1440, height: 860 };
let browser;

function program(name) {
    const found = process.env.PATH.split(path.delimiter)
        .map((place) => path.join(place, name))
        .find((file) => {
            try {
                accessSync(file, constants.X_OK);
                return true;
            } catch {
                return false;
            }
        });
    assert.ok(found, `there is no ${name}`);
    return found;
}

before(async () => {
    // As root, as in a container, Chromium runs only without its sandbox. The pages are our own.
    const args = process.getuid() === 0 ? ["--no-sandbox"] : [];
    browser = await chromium.launch({ executablePath: program("chromium"), args });
});

after(async () => {
    await browser?.close();
    rmSync(folder, { recursive: true });
});

export function run(...words) {
    const { status, stderr } = spawnSync(orvo, words, { encoding: "utf8" });
    assert.equal(status, 0, stderr);
}

/** The file of a session: one that there is, or one that is made of its JSON. */
export function fileOf(name, session) {
    if (typeof session === "string") {
        return session;
    }
    const file = path.join(folder, `${name}.json`);
    writeFileSync(file, JSON.stringify(session));
    return file;
}

/** Makes a page of a session file, or of a session as JSON. */
export function pageOf(name, session, ...options) {
    const page = path.join(folder, `${name}.html`);
    run("view", fileOf(name, session), "-o", page, ...options);
    return page;
}

/** Makes the page of what changed between two sessions. */
export function pageOfTwo(name, before, after) {
    const page = path.join(folder, `${name}.html`);
    run("view", fileOf(`${name}-before`, before), fileOf(`${name}-after`, after), "-o", page);
    return page;
}

export const exampleOf = (name) => path.join(root, "examples", name, `${name}.orvo`);
export const jsonOf = (name) => JSON.parse(readFileSync(path.join(root, "examples", name, `${name}.json`), "utf8"));

/** Runs in the page before its own script. */
function watchWork() {
    // How long each of its pictures is worked on.
    globalThis.work = [];
    globalThis.plainFrame = globalThis.requestAnimationFrame.bind(globalThis);
    globalThis.requestAnimationFrame = (callback) =>
        globalThis.plainFrame((now) => {
            const begin = performance.now();
            callback(now);
            globalThis.work.push(performance.now() - begin);
        });
    // What it has put off for a short time.
    const short = 500;
    const putOff = new Set();
    globalThis.isAtRest = () => putOff.size === 0;
    const { setTimeout: later, clearTimeout: never } = globalThis;
    globalThis.setTimeout = (callback, delay, ...values) => {
        const timer = later(() => {
            putOff.delete(timer);
            callback(...values);
        }, delay);
        if (delay > 0 && delay < short) {
            putOff.add(timer);
        }
        return timer;
    };
    globalThis.clearTimeout = (timer) => {
        putOff.delete(timer);
        never(timer);
    };
}

/**
 * Opens a page, runs `use`, and checks that the browser complained of nothing.
 * @param file  or the address of one that is served, which the page may ask
 */
export async function open(file, use, { fragment = "", init = null, ...options } = {}) {
    const address = file.startsWith("http:") ? file : pathToFileURL(file).href;
    // Nothing that moves may be seen half-way.
    const context = await browser.newContext({ viewport: size, colorScheme: "dark", reducedMotion: "reduce", ...options });
    const page = await context.newPage();
    const complaints = [];
    page.on("console", (message) => complaints.push(message.text()));
    page.on("pageerror", (error) => complaints.push(error.stack));
    page.on("dialog", (dialog) => {
        complaints.push(`dialog: ${dialog.message()}`);
        void dialog.dismiss();
    });
    page.on("request", (request) => {
        if (!/^(?:file|data):/u.test(request.url()) && !request.url().startsWith(new URL("./", address).href)) {
            complaints.push(`request: ${request.url()}`);
        }
    });
    await page.addInitScript(watchWork);
    if (init) {
        await page.addInitScript(init);
    }
    await page.goto(address + fragment);
    await settled(page);
    const result = await use(page, context);
    await context.close();
    assert.deepEqual(complaints, []);
    return result;
}

/** Waits until what was asked is painted. */
export const settled = (page) =>
    page.evaluate(
        () =>
            new Promise((resolve) => {
                requestAnimationFrame(() => requestAnimationFrame(() => setTimeout(resolve, 0)));
            }),
    );

/** Waits until the address holds the place, and returns it. */
export async function placeOf(page) {
    await settled(page);
    await page.waitForFunction(() => globalThis.isAtRest());
    const values = new URLSearchParams(new URL(page.url()).hash.slice(1));
    return Object.fromEntries(values);
}

export async function audit(page, where) {
    // The page lets no other script run; the debugger may.
    await page.evaluate(axe);
    const { violations } = await page.evaluate(() => globalThis.axe.run());
    const findings = violations.map(({ id, nodes }) => `${id}: ${nodes[0].html.slice(0, 200)}, ${nodes.length} in all`);
    assert.deepEqual(findings, [], where);
}

/** Takes a picture to be looked at, if SHOTS says where to. */
export async function shoot(page, name) {
    if (process.env.SHOTS) {
        await page.screenshot({ path: path.join(process.env.SHOTS, `${name}.png`) });
    }
}

/** Serves a file or folder while `use` runs. */
export async function serve(name, use, ...options) {
    const server = spawn(orvo, ["view", "--serve", name, ...options], { stdio: ["ignore", "pipe", "inherit"] });
    const ended = new Promise((resolve) => {
        server.on("exit", resolve);
    });
    try {
        const address = await new Promise((resolve, reject) => {
            let text = "";
            server.stdout.on("data", (part) => {
                text += part;
                if (text.includes("\n")) {
                    resolve(text.trim());
                }
            });
            server.on("exit", () => reject(new Error("the server has ended")));
        });
        await use(address, server);
    } finally {
        server.kill("SIGINT");
        assert.equal(await ended, 0);
    }
}
