#!/usr/bin/env python3
"""Checks that the scripts still generate exactly the committed examples.

    examples_test.py ROOT ORVO
"""

import subprocess
import sys
import tempfile
from pathlib import Path


def media(examples):
    """The bytes of all files in the media folders, by path below the examples."""
    return {file.relative_to(examples): file.read_bytes() for file in examples.glob("*/media/*")}


def stale_media(root):
    committed = media(root / "examples")
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([sys.executable, root / "examples" / "make_media.py", folder], check=True)
        made = media(Path(folder))
    return sorted(path for path in made.keys() | committed.keys() if made.get(path) != committed.get(path))


def main():
    root, orvo = Path(sys.argv[1]), sys.argv[2]
    stale = stale_media(root)
    for path in stale:
        print(f"examples/{path}: differs from the output of examples/make_media.py")
    sessions = subprocess.run([sys.executable, root / "examples" / "build_sessions.py", orvo, "--check"], check=False)
    return 1 if stale or sessions.returncode else 0


if __name__ == "__main__":
    sys.exit(main())
