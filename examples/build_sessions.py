#!/usr/bin/env python3
"""Makes the example sessions: FOLDER/NAME.orvo from FOLDER/NAME.json.

    examples/build_sessions.py ORVO            writes them
    examples/build_sessions.py ORVO --check    only says which are not what they would become, and fails

ORVO is the built tool. The media in the sessions have full paths below /media/sessions, which exist on no
machine in particular: they are found by their paths relative to the session. A session is therefore built in
a temporary folder, and that folder's name is then replaced.
"""

import subprocess
import sys
import tempfile
from pathlib import Path

EXAMPLES = Path(__file__).resolve().parent
STATED_FOLDER = "/media/sessions"


def build(orvo, source):
    """The bytes of the session file that the JSON file gives."""
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name).resolve()
        (folder / source.parent.name).mkdir()
        json = folder / source.parent.name / source.name
        json.write_text(source.read_text("utf-8").replace(STATED_FOLDER, str(folder)), "utf-8")
        session = json.with_suffix(".orvo")
        subprocess.run([orvo, "convert", json, session], check=True)
        return session.read_bytes().replace(str(folder).encode(), STATED_FOLDER.encode())


def main():
    check = sys.argv[2:] == ["--check"]
    sources = sorted(EXAMPLES.glob("*/*.json"))
    stale = 0 if sources else 1
    for source in sources:
        session = source.with_suffix(".orvo")
        content = build(sys.argv[1], source)
        if not check:
            session.write_bytes(content)
        elif not session.exists() or session.read_bytes() != content:
            print(f"{session}: not what examples/build_sessions.py makes of {source.name}")
            stale += 1
    return 1 if stale else 0


if __name__ == "__main__":
    sys.exit(main())
