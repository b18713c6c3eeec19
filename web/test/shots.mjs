// Takes pictures of pages, to be looked at: node test/shots.mjs FOLDER PAGE...
import path from "node:path";
import { pathToFileURL } from "node:url";
import { chromium } from "playwright-core";

const [folder, ...pages] = process.argv.slice(2);
const browser = await chromium.launch({ executablePath: "/usr/bin/chromium", args: ["--no-sandbox"] });
for (const colorScheme of ["dark", "light"]) {
    const context = await browser.newContext({ viewport: { width: 1440, height: 860 }, colorScheme, deviceScaleFactor: 1 });
    for (const page of pages) {
        const tab = await context.newPage();
        tab.on("console", (message) => console.error(page, message.text()));
        tab.on("pageerror", (error) => console.error(page, error.stack));
        await tab.goto(pathToFileURL(path.resolve(page)).href);
        await tab.waitForTimeout(300);
        await tab.screenshot({ path: path.join(folder, `${path.basename(page, ".html")}-${colorScheme}.png`) });
        await tab.close();
    }
    await context.close();
}
await browser.close();
