import { bytesOf } from "../base64";
import type { Media } from "../picture";

/** Decoded sound that is kept, in bytes; what was not played for the longest time goes first. */
const MOST_KEPT = 512 * 1024 * 1024;
const BYTES_OF_SAMPLE = 4;

/** The end of a path that two of them share, in names. */
function sharedEnd(one: readonly string[], other: readonly string[]): number {
    let shared = 0;
    while (shared < one.length && shared < other.length && one[one.length - 1 - shared] === other[other.length - 1 - shared]) {
        shared += 1;
    }
    return shared;
}

const namesOf = (path: string): string[] => path.split(/[/\\]/u).filter(Boolean);

/**
 * Which of some files each path means: that of the same name which shares the longest end of the
 * path.
 * @returns for each path the place of its file, or -1
 */
export function matchFiles(paths: readonly string[], files: readonly string[]): number[] {
    const names = files.map(namesOf);
    return paths.map((path) => {
        const wanted = namesOf(path);
        let best = -1;
        let most = 0;
        names.forEach((candidate, place) => {
            const shared = sharedEnd(wanted, candidate);
            if (shared > most) {
                most = shared;
                best = place;
            }
        });
        return best;
    });
}

/** The sounds of media, each read and decoded when it is first wanted. */
export class Sounds {
    private readonly decoded = new Map<number, AudioBuffer>();
    private readonly loading = new Map<number, Promise<void>>();
    private readonly files = new Map<number, File>();
    /** Media that cannot be heard. */
    readonly failed = new Set<number>();

    constructor(
        private readonly media: readonly Media[],
        private readonly decode: (bytes: ArrayBuffer) => Promise<AudioBuffer>,
    ) {}

    /** Null while it is not there; such media are to be loaded. */
    get = (media: number): AudioBuffer | null => {
        const sound = this.decoded.get(media);
        if (!sound) {
            return null;
        }
        this.decoded.delete(media);
        this.decoded.set(media, sound);
        return sound;
    };

    isSettled(media: number): boolean {
        return this.decoded.has(media) || this.failed.has(media);
    }

    load(media: number): Promise<void> {
        let loading = this.isSettled(media) ? Promise.resolve() : this.loading.get(media);
        if (!loading) {
            loading = this.read(media)
                .then((bytes) => this.decode(bytes))
                .then((sound) => this.keep(media, sound))
                .catch(() => void this.failed.add(media))
                .finally(() => this.loading.delete(media));
            this.loading.set(media, loading);
        }
        return loading;
    }

    /** Takes files that the reader chose. */
    take(files: readonly File[]): void {
        const places = matchFiles(
            this.media.map((file) => file.path),
            files.map((file) => file.webkitRelativePath || file.name),
        );
        places.forEach((place, media) => {
            const file = files[place];
            if (file) {
                this.files.set(media, file);
                this.failed.delete(media);
            }
        });
    }

    /** Whether the reader must choose a file before media can be heard. */
    needsFile(media: number): boolean {
        const { sound } = this.media[media]!;
        return location.protocol === "file:" && sound !== "" && !sound.startsWith("#") && !this.files.has(media);
    }

    private async read(media: number): Promise<ArrayBuffer> {
        const { sound } = this.media[media]!;
        const file = this.files.get(media);
        if (file) {
            return file.arrayBuffer();
        }
        if (sound.startsWith("#")) {
            return bytesOf(document.getElementById(sound.slice(1))?.textContent ?? "").buffer;
        }
        if (this.needsFile(media)) {
            throw new Error("browsers do not let a page from the disk read other files");
        }
        const answer = await fetch(sound);
        if (!answer.ok) {
            throw new Error(`the media are not there: ${answer.status}`);
        }
        return answer.arrayBuffer();
    }

    private keep(media: number, sound: AudioBuffer): void {
        this.decoded.set(media, sound);
        const sizeOf = (it: AudioBuffer): number => it.length * it.numberOfChannels * BYTES_OF_SAMPLE;
        let kept = [...this.decoded.values()].reduce((sum, it) => sum + sizeOf(it), 0);
        for (const [other, it] of this.decoded) {
            if (kept <= MOST_KEPT || other === media) {
                break;
            }
            this.decoded.delete(other);
            kept -= sizeOf(it);
        }
    }
}
