import { ClipPalette, type ThemeName, type WireColours } from "./colours";

/** The colours of everything but clips, from the style sheet. */
export interface Theme {
    name: ThemeName;
    ground: string;
    row: string;
    rowOther: string;
    panel: string;
    line: string;
    faint: string;
    text: string;
    quiet: string;
    accent: string;
    range: string;
    font: string;
    clips: ClipPalette;
}

export function readTheme(name: ThemeName, colours: WireColours): Theme {
    document.documentElement.dataset["theme"] = name;
    const style = getComputedStyle(document.documentElement);
    const value = (key: string): string => style.getPropertyValue(`--${key}`).trim();
    return {
        name,
        ground: value("ground"),
        row: value("row"),
        rowOther: value("row-other"),
        panel: value("panel"),
        line: value("line"),
        faint: value("faint"),
        text: value("text"),
        quiet: value("quiet"),
        accent: value("accent"),
        range: value("range"),
        font: style.fontFamily,
        clips: new ClipPalette(colours, name),
    };
}

export type ThemeChoice = "auto" | ThemeName;

const CHOICES: readonly ThemeChoice[] = ["auto", "light", "dark"];
const KEY = "orvo-theme";

/** Which theme the reader chose; kept where the browser keeps anything for the page. */
export class ThemeSwitch {
    choice: ThemeChoice = "auto";
    private readonly prefersLight = matchMedia("(prefers-color-scheme: light)");

    constructor(private readonly changed: () => void) {
        try {
            this.choice = CHOICES.find((choice) => choice === localStorage.getItem(KEY)) ?? "auto";
        } catch {
            // A page from the disk may be denied any storage; the choice then lasts as long as it.
        }
        this.prefersLight.addEventListener("change", () => this.changed());
    }

    get name(): ThemeName {
        if (this.choice !== "auto") {
            return this.choice;
        }
        return this.prefersLight.matches ? "light" : "dark";
    }

    next(): void {
        this.choice = CHOICES[(CHOICES.indexOf(this.choice) + 1) % CHOICES.length]!;
        try {
            localStorage.setItem(KEY, this.choice);
        } catch {
            // As above.
        }
        this.changed();
    }
}
