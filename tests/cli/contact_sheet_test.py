#!/usr/bin/env python3
"""Checks that the memory of a contact sheet does not grow with the number of sessions on it.

    contact_sheet_test.py ORVO

Automation is not on a contact sheet, so sessions that are mostly automation are large files and small pictures.
"""

import os
import sys
import tempfile
from pathlib import Path

ORVO = sys.argv[1]
MANY = 8
# What many sessions may take for each byte that one takes. Were two kept at a time, it would be more.
MOST = 1.1


def run(*words):
    """The greatest memory of a run, in KiB."""
    process = os.posix_spawn(ORVO, [ORVO, *map(str, words)], os.environ)
    _, status, usage = os.wait4(process, 0)
    assert status == 0, words
    return usage.ru_maxrss


def main():
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        sessions = [folder / f"{seed}.orvo" for seed in range(MANY)]
        for seed, session in enumerate(sessions):
            run("generate", "--tracks", 6, "--clips", 4, "--slots", 4, "--keyframes", 6000, "--seed", seed, session)
        problems = 0
        for form in ("svg", "png"):
            # The pixels of a small PNG weigh nothing.
            draw = ("view", "--contact-sheet", "--scale", "0.5", "-o", folder / f"sheet.{form}")
            one = run(*draw, sessions[0])
            many = run(*draw, *sessions)
            print(f"{form}: one session: {one} KiB; {MANY}: {many} KiB")
            problems += many > one * MOST
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
