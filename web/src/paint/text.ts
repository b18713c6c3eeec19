/** Texts that are cut to the room that they have. */
export class TextFitter {
    private font = "";
    private readonly widths = new Map<string, number>();
    private readonly cuts = new Map<string, { room: number; text: string }>();

    /** Sets the font of a context; widths are those of this font. */
    use(context: CanvasRenderingContext2D, font: string): void {
        if (this.font !== font) {
            this.font = font;
            this.widths.clear();
            this.cuts.clear();
        }
        context.font = font;
    }

    width(context: CanvasRenderingContext2D, text: string): number {
        let width = this.widths.get(text);
        if (width === undefined) {
            width = context.measureText(text).width;
            this.widths.set(text, width);
        }
        return width;
    }

    /** The text, or as much of it as has room, ended by an ellipsis. */
    fit(context: CanvasRenderingContext2D, text: string, room: number): string {
        if (this.width(context, text) <= room) {
            return text;
        }
        const whole = Math.floor(room);
        const cut = this.cuts.get(text);
        if (cut?.room === whole) {
            return cut.text;
        }
        const shown = this.cut(context, text, whole);
        this.cuts.set(text, { room: whole, text: shown });
        return shown;
    }

    private cut(context: CanvasRenderingContext2D, text: string, room: number): string {
        // Never within a pair of surrogates.
        const characters = Array.from(text.slice(0, 400));
        let low = 0;
        let high = characters.length;
        while (low < high) {
            const middle = (low + high + 1) >> 1;
            if (context.measureText(`${characters.slice(0, middle).join("").trimEnd()}…`).width <= room) {
                low = middle;
            } else {
                high = middle - 1;
            }
        }
        return low === 0 ? "" : `${characters.slice(0, low).join("").trimEnd()}…`;
    }
}
