/** The colours in which clips are drawn, as the data of the page have them. */

export type ThemeName = "dark" | "light";

/** The colours of one clip, as canvases take them. */
export interface ClipColours {
    body: string;
    bar: string;
    edge: string;
    wave: string;
    text: string;
}

/** Of each theme, by their numbers in the columns. */
export type WireColours = Record<ThemeName | `${ThemeName}Muted`, ClipColours[]>;

export class ClipPalette {
    private readonly plain: readonly ClipColours[];
    private readonly muted: readonly ClipColours[];

    constructor(wire: WireColours, theme: ThemeName) {
        this.plain = wire[theme];
        this.muted = wire[`${theme}Muted`];
    }

    of(colour: number, muted: boolean): ClipColours {
        return (muted ? this.muted : this.plain)[colour]!;
    }
}
