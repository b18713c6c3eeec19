import { App } from "./app";
import { Picture, type Wire } from "./picture";
import { SessionText } from "./session";

/** The text of a block of data. */
function dataOf(id: string): string {
    return document.getElementById(id)?.textContent ?? "";
}

const picture = new Picture(JSON.parse(dataOf("picture")) as Wire);
new App(picture, new SessionText(() => dataOf("session"))).start();
