/** Where rows lie, from top to bottom, and which are shown. */

import type { Picture } from "./picture";

/** A row that is shown. */
export interface Slot {
    row: number;
    top: number;
    /** Without lanes. */
    head: number;
    /** Of each lane below it. */
    lane: number;
    height: number;
}

export const ROW_SIZES = [32, 60, 104] as const;
const EMPTY_ROW = 44;
const LANE = 36;

export class Stack {
    slots: Slot[] = [];
    height = 0;
    size = 1;
    private wanted = "";

    constructor(private readonly picture: Picture) {
        this.arrange();
    }

    /** Shows only the rows whose name has these words. */
    filter(words: string): void {
        this.wanted = fold(words.trim());
        this.arrange();
    }

    resize(size: number): void {
        this.size = Math.min(Math.max(0, size), ROW_SIZES.length - 1);
        this.arrange();
    }

    /** Takes the largest rows, of the two larger sizes, that fit into a height. */
    fitInto(height: number): void {
        this.resize(ROW_SIZES.length - 1);
        if (this.height > height) {
            this.resize(1);
        }
    }

    /** The slot at a height, counted from the first row. */
    at(y: number): Slot | null {
        let low = 0;
        let high = this.slots.length;
        while (low < high) {
            const middle = (low + high) >> 1;
            const slot = this.slots[middle]!;
            if (slot.top + slot.height <= y) {
                low = middle + 1;
            } else {
                high = middle;
            }
        }
        const slot = this.slots[low];
        return slot && y >= slot.top ? slot : null;
    }

    slotOf(row: number): Slot | null {
        return this.slots.find((slot) => slot.row === row) ?? null;
    }

    /** The slots that touch a stretch. */
    between(top: number, bottom: number): Slot[] {
        return this.slots.filter((slot) => slot.top < bottom && slot.top + slot.height > top);
    }

    private arrange(): void {
        this.slots = [];
        this.height = 0;
        this.picture.rows.forEach((row, index) => {
            const text = fold(`${row.name} ${row.output} ${row.channels}`);
            if (!this.wanted.split(/\s+/u).every((word) => text.includes(word))) {
                return;
            }
            const slot = { row: index, top: this.height, head: this.headOf(index), lane: LANE, height: 0 };
            slot.height = slot.head + LANE * row.lanes.length;
            this.slots.push(slot);
            this.height += slot.height;
        });
    }

    private headOf(index: number): number {
        const row = this.picture.rows[index]!;
        const size = ROW_SIZES[this.size]!;
        return row.begin === row.end ? Math.min(size, EMPTY_ROW) : size;
    }
}

/** A text as it is searched: without case and without accents. */
export function fold(text: string): string {
    return text.normalize("NFKD").replace(/\p{M}+/gu, "").toLowerCase();
}
