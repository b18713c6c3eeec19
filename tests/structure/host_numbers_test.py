#!/usr/bin/env python3
"""Checks that no header and no page claims a unit or a meaning for numbers that only the host can interpret, such as
hues, the order of clips and levels. The headers of pictures are exempt: who draws such a number must choose a meaning.

    host_numbers_test.py ROOT
"""

import re
import sys
from pathlib import Path

PLACES = ("host/*.h", "examples/host/*.h", "include/orvo/*.h", "docs/format.md", "docs/host-interfaces.md", "docs/json.md")

CHOICES = ("include/orvo/Canvas.h", "include/orvo/Draw.h", "include/orvo/Layout.h")

CLAIMS = re.compile(
    r"\b(degrees?|dB|decibels?|semitones?|cents?|percent|pixels|equal power|(lies?|lying) (on top|under))\b")

# The exception: the size of a video frame is known to be in pixels.
KNOWN = re.compile(r"\bframe\b.*\bpixels\b")


def claims_in(path):
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if CLAIMS.search(line) and not KNOWN.search(line):
            yield f"{path}:{number}: {line.strip()}"


def main():
    root = Path(sys.argv[1])
    problems = []
    for place in PLACES:
        paths = sorted(root.glob(place))
        if not paths:
            problems.append(f"{place} matches no file")
        for path in set(paths) - {root / choice for choice in CHOICES}:
            problems += claims_in(path)
    print("\n".join(problems))
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
