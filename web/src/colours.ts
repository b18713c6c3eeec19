/** Colours of clips, by hue, in OKLCH: equally light and equally strong for every hue. */

type Rgb = readonly [number, number, number];

function toLinear(value: number): number {
    return value <= 0.04045 ? value / 12.92 : ((value + 0.055) / 1.055) ** 2.4;
}

function fromLinear(value: number): number {
    return value <= 0.0031308 ? value * 12.92 : 1.055 * value ** (1 / 2.4) - 0.055;
}

function oklchToLinear(lightness: number, chroma: number, hue: number): Rgb {
    const angle = (hue * Math.PI) / 180;
    const a = chroma * Math.cos(angle);
    const b = chroma * Math.sin(angle);
    const l = (lightness + 0.3963377774 * a + 0.2158037573 * b) ** 3;
    const m = (lightness - 0.1055613458 * a - 0.0638541728 * b) ** 3;
    const s = (lightness - 0.0894841775 * a - 1.291485548 * b) ** 3;
    return [
        4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s,
        -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
        -0.0041960863 * l - 0.7034186147 * m + 1.707614701 * s,
    ];
}

/** The colour, or the strongest one of its lightness and hue that a screen can show. */
export function oklch(lightness: number, chroma: number, hue: number): Rgb {
    const isShown = (rgb: Rgb): boolean => rgb.every((value) => value >= -0.0005 && value <= 1.0005);
    let weak = 0;
    let strong = chroma;
    if (!isShown(oklchToLinear(lightness, chroma, hue))) {
        for (let i = 0; i < 16; i += 1) {
            const middle = (weak + strong) / 2;
            if (isShown(oklchToLinear(lightness, middle, hue))) {
                weak = middle;
            } else {
                strong = middle;
            }
        }
        strong = weak;
    }
    const [r, g, b] = oklchToLinear(lightness, strong, hue).map((value) => fromLinear(Math.min(1, Math.max(0, value))));
    return [r!, g!, b!];
}

export function cssOf(rgb: Rgb): string {
    const channels = rgb.map((value) =>
        Math.round(value * 255)
            .toString(16)
            .padStart(2, "0"),
    );
    return `#${channels.join("")}`;
}

/** The contrast of two colours as WCAG counts it, from 1 to 21. */
export function contrast(one: Rgb, other: Rgb): number {
    const luminance = ([r, g, b]: Rgb): number =>
        0.2126 * toLinear(r) + 0.7152 * toLinear(g) + 0.0722 * toLinear(b);
    const [dark, bright] = [luminance(one), luminance(other)].sort((a, b) => a - b);
    return (bright! + 0.05) / (dark! + 0.05);
}

/** The OKLCH hue of the full colour that a colour wheel of red, green and blue has at an angle. */
export function perceivedHue(degrees: number): number {
    const channel = (offset: number): number => {
        const k = (offset + degrees / 60) % 6;
        return toLinear(1 - Math.max(0, Math.min(k, 4 - k, 1)));
    };
    const [r, g, b] = [channel(5), channel(3), channel(1)];
    const l = Math.cbrt(0.4122214708 * r + 0.5363325363 * g + 0.0514459929 * b);
    const m = Math.cbrt(0.2119034982 * r + 0.6806995451 * g + 0.1073969566 * b);
    const s = Math.cbrt(0.0883024619 * r + 0.2817188376 * g + 0.6299787005 * b);
    const a = 1.9779984951 * l - 2.428592205 * m + 0.4505937099 * s;
    const y = 0.0259040371 * l + 0.7827717662 * m - 0.808675766 * s;
    return ((Math.atan2(y, a) * 180) / Math.PI + 360) % 360;
}

export type ThemeName = "dark" | "light";

/** The colours of one clip. */
export interface ClipColours<Colour = string> {
    body: Colour;
    bar: Colour;
    edge: Colour;
    wave: Colour;
    text: Colour;
}

/** Lightness and chroma. */
type Shade = readonly [number, number];

const SHADES: Record<ThemeName, ClipColours<Shade>> = {
    dark: { body: [0.36, 0.07], bar: [0.45, 0.09], edge: [0.56, 0.1], wave: [0.74, 0.12], text: [0.975, 0.012] },
    light: { body: [0.92, 0.045], bar: [0.84, 0.085], edge: [0.66, 0.11], wave: [0.56, 0.12], text: [0.25, 0.05] },
};

/** What is left of the chroma of a muted clip. */
const MUTED_CHROMA = 0.12;

export function shadesOf(theme: ThemeName, hue: number, muted: boolean): ClipColours<Rgb> {
    const angle = perceivedHue(hue);
    const strength = muted ? MUTED_CHROMA : 1;
    const shade = ([lightness, chroma]: Shade): Rgb => oklch(lightness, chroma * strength, angle);
    const { body, bar, edge, wave, text } = SHADES[theme];
    return { body: shade(body), bar: shade(bar), edge: shade(edge), wave: shade(wave), text: shade(text) };
}

/** Colours of clips as canvases take them, each made once. */
export class ClipPalette {
    private readonly made = new Map<number, ClipColours>();

    constructor(readonly theme: ThemeName) {}

    of(hue: number, muted: boolean): ClipColours {
        const degrees = Math.round(hue) % 360;
        const key = degrees * 2 + (muted ? 1 : 0);
        let colours = this.made.get(key);
        if (!colours) {
            const shades = shadesOf(this.theme, degrees, muted);
            colours = {
                body: cssOf(shades.body),
                bar: cssOf(shades.bar),
                edge: cssOf(shades.edge),
                wave: cssOf(shades.wave),
                text: cssOf(shades.text),
            };
            this.made.set(key, colours);
        }
        return colours;
    }
}
