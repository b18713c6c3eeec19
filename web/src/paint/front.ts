/** Which box is in front in each column of pixels of a row. */
export class Front {
    private readonly columns: Int32Array;

    constructor(width: number) {
        this.columns = new Int32Array(Math.max(0, Math.ceil(width))).fill(-1);
    }

    clear(): void {
        this.columns.fill(-1);
    }

    /** Adds a box in front of those before it. */
    add(box: number, left: number, right: number): void {
        this.columns.fill(box, this.column(left), this.column(right));
    }

    /** -1: none. */
    at(x: number): number {
        return this.columns[this.column(x)] ?? -1;
    }

    /** What no other box covers of a box that was added with these ends: the first stretch; empty if all is covered. */
    clearOf(box: number, left: number, right: number): { left: number; right: number } {
        const begin = this.column(left);
        const end = this.column(right);
        let first = begin;
        while (first < end && this.columns[first] !== box) {
            first += 1;
        }
        let last = first;
        while (last < end && this.columns[last] === box) {
            last += 1;
        }
        return {
            left: first === begin ? Math.max(left, 0) : first,
            right: last === end && first < end ? Math.min(right, this.columns.length) : last,
        };
    }

    private column(x: number): number {
        return Math.min(Math.max(0, Math.floor(x)), this.columns.length);
    }
}
