#!/usr/bin/env python3
"""Checks that the examples are what their scripts make.

    examples_test.py ROOT ORVO
"""

import filecmp
import subprocess
import sys
import tempfile
from pathlib import Path


def stale_media(root):
    committed = root / "examples" / "radio-spot" / "media"
    with tempfile.TemporaryDirectory() as made:
        subprocess.run([sys.executable, root / "examples" / "make_media.py", made], check=True)
        names = sorted({file.name for folder in (Path(made), committed) for file in folder.iterdir()})
        _, differing, missing = filecmp.cmpfiles(made, committed, names, shallow=False)
    return differing + missing


def main():
    root, orvo = Path(sys.argv[1]), sys.argv[2]
    stale = stale_media(root)
    for name in stale:
        print(f"examples/radio-spot/media/{name}: not what examples/make_media.py makes")
    sessions = subprocess.run([sys.executable, root / "examples" / "build_sessions.py", orvo, "--check"], check=False)
    return 1 if stale or sessions.returncode else 0


if __name__ == "__main__":
    sys.exit(main())
