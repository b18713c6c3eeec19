#!/usr/bin/env python3
"""Makes the sounds and pictures that the example sessions use.

    examples/make_media.py [FOLDER]

writes them to FOLDER (examples unless named), each session's to its own NAME/media. Everything comes from sine
waves and seeded generators of noise, so the same files come out everywhere.
"""

import sys
from pathlib import Path

from sounds import music, picture, radio_spot, spoken_word

SESSIONS = {
    "radio-spot": radio_spot,
    "spoken-word": spoken_word,
    "music": music,
    "picture": picture,
}


def main():
    top = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).resolve().parent
    for session, sounds in SESSIONS.items():
        folder = top / session / "media"
        folder.mkdir(parents=True, exist_ok=True)
        for name, content in sounds.media().items():
            (folder / name).write_bytes(content)


if __name__ == "__main__":
    main()
