const hatches = new Map<string, CanvasPattern | null>();

/** Slanted lines, made once for each colour. */
export function hatchOf(context: CanvasRenderingContext2D, colour: string): CanvasPattern | null {
    let hatch = hatches.get(colour);
    if (hatch === undefined) {
        hatch = makeHatch(context, colour);
        hatches.set(colour, hatch);
    }
    return hatch;
}

function makeHatch(context: CanvasRenderingContext2D, colour: string): CanvasPattern | null {
    const size = 8;
    const tile = document.createElement("canvas");
    tile.width = size;
    tile.height = size;
    const pen = tile.getContext("2d");
    if (!pen) {
        return null;
    }
    pen.strokeStyle = colour;
    pen.globalAlpha = 0.7;
    pen.lineWidth = 1.5;
    pen.beginPath();
    for (const x of [-size, 0, size]) {
        pen.moveTo(x, size);
        pen.lineTo(x + size, 0);
    }
    pen.stroke();
    return context.createPattern(tile, "repeat");
}
