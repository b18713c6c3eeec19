import { BoxFlag, type Picture } from "../picture";

/** In a square of 12 pixels. */
const MARKS = {
    locked: "M3.5 5.5h5v4h-5zM4.5 5.5V4a1.5 1.5 0 0 1 3 0v1.5",
    looped: "M9.5 6a3.5 3.5 0 1 1-1.2-2.6M8.6 1.4v2.2H6.4",
    stretched: "M1.5 6h9M3.5 4l-2 2 2 2M8.5 4l2 2-2 2",
    muted: "M2 5v2.5h1.5L6 9.5V3L3.5 5zM8 4.8l2.6 2.6M10.6 4.8 8 7.4",
    offline: "M6 2 10.7 10H1.3zM6 5v2.2M6 8.6v.1",
    takes: "M2 3.5h8M2 6h8M2 8.5h5",
    group: "M2 3h3.5v2.5H2zM6.5 6.5H10V9H6.5zM5.5 4.5h2.5v2",
};

export type Mark = keyof typeof MARKS;

const paths = new Map<string, Path2D>();

function pathOf(mark: Mark): Path2D {
    let path = paths.get(mark);
    if (!path) {
        path = new Path2D(MARKS[mark]);
        paths.set(mark, path);
    }
    return path;
}

/** What a box is besides its name. */
export function marksOf(picture: Picture, box: number): Mark[] {
    const marks: Mark[] = [];
    const flags = ["locked", "looped", "stretched", "muted", "offline"] as const;
    for (const flag of flags) {
        if (picture.has(box, BoxFlag[flag])) {
            marks.push(flag);
        }
    }
    if (picture.has(box, BoxFlag.missing) && !picture.has(box, BoxFlag.offline)) {
        marks.push("offline");
    }
    if (picture.boxes.takes[box]! > 0) {
        marks.push("takes");
    }
    if (picture.boxes.group[box]! >= 0) {
        marks.push("group");
    }
    return marks;
}

/** Paints a mark, from its left end and its middle. */
export function paintMark(context: CanvasRenderingContext2D, mark: Mark, x: number, y: number, colour: string): void {
    context.save();
    context.translate(x, y - 6);
    context.strokeStyle = colour;
    context.lineWidth = 1.3;
    context.lineCap = "round";
    context.lineJoin = "round";
    context.stroke(pathOf(mark));
    context.restore();
}
