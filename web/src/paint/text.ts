/** Texts that are cut to the room that they have. */

const ELLIPSIS = "…";
/** A text without ligatures and accents of its own, whose width is that of its characters. */
const SIMPLE = /^[\x20-\x7e]*$/u;
/** Rooms of other texts are taken as multiples of this, so that few of them are measured. */
const STEP = 8;
/** Longer texts are never shown whole. */
const LONGEST = 400;

export class TextFitter {
    private font = "";
    /** Of characters and of texts that are not simple. */
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

    /** At most about the width of `LONGEST` characters. */
    width(context: CanvasRenderingContext2D, text: string): number {
        const begin = text.slice(0, LONGEST);
        if (!SIMPLE.test(begin)) {
            return this.measured(context, begin);
        }
        let width = 0;
        for (const character of begin) {
            width += this.measured(context, character);
        }
        return width;
    }

    /** The text, or as much of it as has room, ended by an ellipsis. */
    fit(context: CanvasRenderingContext2D, text: string, room: number): string {
        if (text.length <= LONGEST && this.width(context, text) <= room) {
            return text;
        }
        return SIMPLE.test(text) ? this.cutSimple(context, text, room) : this.cutOnce(context, text, room);
    }

    private measured(context: CanvasRenderingContext2D, text: string): number {
        let width = this.widths.get(text);
        if (width === undefined) {
            width = context.measureText(text).width;
            this.widths.set(text, width);
        }
        return width;
    }

    private cutSimple(context: CanvasRenderingContext2D, text: string, room: number): string {
        let width = this.measured(context, ELLIPSIS);
        let length = 0;
        for (; length < text.length; length += 1) {
            width += this.measured(context, text[length]!);
            if (width > room) {
                break;
            }
        }
        return ended(text.slice(0, length));
    }

    private cutOnce(context: CanvasRenderingContext2D, text: string, room: number): string {
        const step = Math.floor(room / STEP) * STEP;
        const cut = this.cuts.get(text);
        if (cut?.room === step) {
            return cut.text;
        }
        const shown = this.cut(context, text, step);
        this.cuts.set(text, { room: step, text: shown });
        return shown;
    }

    private cut(context: CanvasRenderingContext2D, text: string, room: number): string {
        // Never within a pair of surrogates.
        const characters = Array.from(text.slice(0, LONGEST));
        let low = 0;
        let high = characters.length;
        while (low < high) {
            const middle = (low + high + 1) >> 1;
            if (context.measureText(ended(characters.slice(0, middle).join(""))).width <= room) {
                low = middle;
            } else {
                high = middle - 1;
            }
        }
        return ended(characters.slice(0, low).join(""));
    }
}

function ended(text: string): string {
    const trimmed = text.trimEnd();
    return trimmed ? trimmed + ELLIPSIS : "";
}
