const INTERVAL = 1000;

/** Calls `changed` once the text at an address is another, and `lost` when nobody answers any more. */
export function watch(address: string, changed: () => void, lost: () => void): void {
    let before: string | null = null;
    const ask = async (): Promise<void> => {
        try {
            const answer = await fetch(address, { cache: "no-store" });
            const text = await answer.text();
            // While a session is being saved there may be none.
            if (answer.ok && before !== null && text !== before) {
                changed();
                return;
            }
            before = answer.ok ? text : before;
        } catch {
            lost();
            return;
        }
        setTimeout(() => void ask(), INTERVAL);
    };
    void ask();
}
