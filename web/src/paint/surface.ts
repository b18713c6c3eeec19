/** A canvas that is as sharp as the screen. */
export class Surface {
    readonly context: CanvasRenderingContext2D;
    width = 0;
    height = 0;
    ratio = 1;

    constructor(
        readonly canvas: HTMLCanvasElement,
        isOpaque = true,
    ) {
        const context = canvas.getContext("2d", { alpha: !isOpaque });
        if (!context) {
            throw new Error("this browser draws no canvas");
        }
        this.context = context;
    }

    /** Takes a size in CSS pixels. */
    resize(width: number, height: number, ratio: number): void {
        this.width = width;
        this.height = height;
        this.ratio = ratio;
        const columns = Math.max(1, Math.round(width * ratio));
        const lines = Math.max(1, Math.round(height * ratio));
        if (this.canvas.width !== columns || this.canvas.height !== lines) {
            this.canvas.width = columns;
            this.canvas.height = lines;
        }
    }

    /** Begins a picture: all coordinates are CSS pixels. */
    begin(colour: string): CanvasRenderingContext2D {
        const { context } = this;
        context.setTransform(this.ratio, 0, 0, this.ratio, 0, 0);
        context.globalAlpha = 1;
        context.fillStyle = colour;
        context.fillRect(0, 0, this.width, this.height);
        return context;
    }
}
