/** The session's text in the page, read when somebody first asks for a part of it. */

export type Json = null | boolean | number | string | Json[] | { [key: string]: Json };
export type JsonObject = Record<string, Json>;

export class SessionText {
    private parsed: Json | undefined;

    constructor(private readonly text: () => string) {}

    /** The value at a path; none if the text has no such part. */
    at(path: string): Json | undefined {
        this.parsed ??= JSON.parse(this.text()) as Json;
        let value: Json | undefined = this.parsed;
        for (const key of path.split("/").slice(1)) {
            if (typeof value !== "object" || value === null) {
                return undefined;
            }
            value = Array.isArray(value) ? value[Number(key)] : value[key.replaceAll("~1", "/").replaceAll("~0", "~")];
        }
        return value;
    }

    /** The object at a path; an empty one if there is none. */
    objectAt(path: string): JsonObject {
        return objectOf(this.at(path)) ?? {};
    }
}

export function objectOf(value: Json | undefined): JsonObject | null {
    return typeof value === "object" && value !== null && !Array.isArray(value) ? value : null;
}

export function numberOf(value: Json | undefined, absent: number): number {
    return typeof value === "number" ? value : absent;
}

export function listOf(value: Json | undefined): Json[] {
    return Array.isArray(value) ? value : [];
}
