#!/usr/bin/env python3
"""Draws the pictures of the pages.

    make_pictures.py ORVO [--check]

--check only tells whether they are as they would be drawn.
"""

import subprocess
import sys
from pathlib import Path

DOCS = Path(__file__).resolve().parent
PICTURES = {
    "radio-spot.svg": ("radio-spot", "--width", "1200"),
    "radio-spot-dark.svg": ("radio-spot", "--width", "1200", "--theme", "dark"),
    "music.svg": ("music", "--width", "1200", "--title", "Waltz"),
}


def drawn(orvo, example, *options):
    session = DOCS.parent / "examples" / example / f"{example}.orvo"
    return subprocess.run(
        [orvo, "view", session, "--output", "-", "--as", "svg", *options], check=True, capture_output=True
    ).stdout


def main():
    right = True
    for name, arguments in PICTURES.items():
        picture = DOCS / "pictures" / name
        made = drawn(sys.argv[1], *arguments)
        if "--check" not in sys.argv:
            picture.parent.mkdir(exist_ok=True)
            picture.write_bytes(made)
        elif not picture.exists() or picture.read_bytes() != made:
            print(f"docs/pictures/{name} is not as it would be drawn; run docs/make_pictures.py")
            right = False
    return 0 if right else 1


if __name__ == "__main__":
    sys.exit(main())
