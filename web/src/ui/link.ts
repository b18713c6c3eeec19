/** A place in a session as the fragment of an address. */
export interface Place {
    from: number;
    to: number;
    top: number;
    /** The path of what is chosen; empty: nothing. */
    at: string;
    range: readonly [number, number] | null;
    filter: string;
}

export function toFragment(place: Place): string {
    const values = new URLSearchParams({
        from: Math.round(place.from).toString(),
        to: Math.round(place.to).toString(),
    });
    if (place.top > 0) {
        values.set("top", Math.round(place.top).toString());
    }
    if (place.at) {
        values.set("at", place.at);
    }
    if (place.range) {
        values.set("range", place.range.map((position) => Math.round(position).toString()).join(".."));
    }
    if (place.filter) {
        values.set("filter", place.filter);
    }
    return `#${values.toString().replaceAll("%2F", "/")}`;
}

function wholeNumber(text: string | null | undefined): number | null {
    return text && /^-?\d{1,19}$/u.test(text) ? Number(text) : null;
}

/** What a fragment says; no value for each part that it does not say or says wrongly. */
export function fromFragment(fragment: string): Partial<Place> {
    const values = new URLSearchParams(fragment.replace(/^#/u, ""));
    const place: Partial<Place> = {};
    const from = wholeNumber(values.get("from"));
    const to = wholeNumber(values.get("to"));
    if (from !== null && to !== null && to > from) {
        place.from = from;
        place.to = to;
    }
    const top = wholeNumber(values.get("top"));
    if (top !== null) {
        place.top = top;
    }
    const at = values.get("at");
    if (at) {
        place.at = at;
    }
    const ends = values.get("range")?.split("..").map(wholeNumber) ?? [];
    const [begin, end] = ends;
    if (ends.length === 2 && typeof begin === "number" && typeof end === "number" && begin < end) {
        place.range = [begin, end];
    }
    const filter = values.get("filter");
    if (filter) {
        place.filter = filter;
    }
    return place;
}
