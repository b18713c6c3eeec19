/** Elements are made of their parts; a session's text goes in as text. */

export type Child = Node | string;

export function make<Tag extends keyof HTMLElementTagNameMap>(
    tag: Tag,
    attributes: Record<string, string> = {},
    ...children: Child[]
): HTMLElementTagNameMap[Tag] {
    const element = document.createElement(tag);
    for (const [name, value] of Object.entries(attributes)) {
        element.setAttribute(name, value);
    }
    element.append(...children);
    return element;
}

/** The element of the page with that id. */
export function get<Type extends HTMLElement>(id: string, type: new () => Type): Type {
    const element = document.getElementById(id);
    if (!(element instanceof type)) {
        throw new Error(`the page has no ${id}`);
    }
    return element;
}

const SVG = "http://www.w3.org/2000/svg";

export function icon(path: string): SVGSVGElement {
    const svg = document.createElementNS(SVG, "svg");
    svg.setAttribute("viewBox", "0 0 20 20");
    svg.setAttribute("aria-hidden", "true");
    const shape = document.createElementNS(SVG, "path");
    shape.setAttribute("d", path);
    svg.append(shape);
    return svg;
}

/** In a square of 20 units, as lines. */
export const ICONS = {
    zoomIn: "M10 4.5v11M4.5 10h11",
    zoomOut: "M4.5 10h11",
    fit: "M3 5v10M17 5v10M6 10h8M8 7.5 5.5 10 8 12.5M12 7.5 14.5 10 12 12.5",
    auto: "M10 3a7 7 0 1 0 0 14zM10 3a7 7 0 0 1 0 14",
    light: "M10 6.5a3.5 3.5 0 1 0 0 7 3.5 3.5 0 0 0 0-7zM10 2v1.5M10 16.5V18M2 10h1.5M16.5 10H18M4.3 4.3l1.1 1.1M14.6 14.6l1.1 1.1M4.3 15.7l1.1-1.1M14.6 5.4l1.1-1.1",
    dark: "M16.5 11.8A7 7 0 0 1 8.2 3.5a7 7 0 1 0 8.3 8.3z",
    print: "M6 8V3h8v5M6 14H3.5V8h13v6H14M6 12h8v5H6z",
    help: "M7.5 7.5a2.5 2.5 0 1 1 3.6 2.2c-.8.4-1.1.9-1.1 1.8M10 14.5v.1",
    panel: "M3 4h14v12H3zM12.5 4v12",
    play: "M6.5 4.5v11l9-5.5z",
    pause: "M6.5 5h1.5v10H6.5zM12 5h1.5v10H12z",
    stop: "M5.5 5.5h9v9h-9z",
};
