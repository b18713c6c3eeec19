import { boxKindText, boxName, boxStates, capital, fileName, lengthText, numberText, positionText } from "../describe";
import type { Lane, Picture } from "../picture";
import type { TimeBase } from "../times";
import { get, make } from "./dom";

/** Says beside the pointer what is under it. */
export class Tip {
    private readonly element = get("tip", HTMLElement);

    constructor(
        private readonly picture: Picture,
        private readonly time: TimeBase,
    ) {}

    sayBox(box: number): void {
        const { picture, time } = this;
        const { start, end, media, group } = picture.boxes;
        const file = picture.media[media[box]!];
        this.say(
            boxName(picture, box),
            capital(boxKindText(picture, box)),
            `${positionText(time, start[box]!)} to ${positionText(time, end[box]!)}`,
            `${lengthText(time, end[box]! - start[box]!)} long`,
            file ? fileName(file.path) : "",
            boxStates(picture, box).join(", "),
            picture.wire.groups[group[box]!]?.name ?? "",
        );
    }

    sayKeyframe(lane: Lane, keyframe: number): void {
        const { position, value } = this.picture.keyframes;
        this.say(`${lane.name}: ${numberText(value[keyframe]!)}`, positionText(this.time, position[keyframe]!));
    }

    /** Shows it beside a place in an area. */
    show(x: number, y: number, area: { width: number; height: number }): void {
        const { element } = this;
        element.hidden = false;
        const gap = 16;
        const left = x + gap + element.offsetWidth > area.width ? x - gap - element.offsetWidth : x + gap;
        const top = Math.min(y + gap, area.height - element.offsetHeight - 4);
        element.style.transform = `translate(${Math.max(4, left)}px, ${Math.max(4, top)}px)`;
    }

    hide(): void {
        this.element.hidden = true;
    }

    private say(title: string, ...lines: string[]): void {
        this.element.replaceChildren(
            make("strong", { dir: "auto" }, title),
            ...lines.filter(Boolean).map((line) => make("span", { dir: "auto" }, line)),
        );
    }
}
