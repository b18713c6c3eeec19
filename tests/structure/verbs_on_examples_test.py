#!/usr/bin/env python3
"""Runs every verb that works on sessions on every example.

    verbs_on_examples_test.py ROOT ORVO
"""

import csv
import io
import json
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

PARTS = ("tracks", "clips", "media", "effects", "sends", "automation")


class Examples:
    def __init__(self, folder, orvo):
        self.folder, self.orvo = folder, orvo
        self.sessions = sorted(folder.glob("examples/*/*.orvo"))
        assert self.sessions, "there are no examples"

    def run(self, *arguments, status=0):
        done = subprocess.run([self.orvo, *arguments], cwd=self.folder, capture_output=True, check=False)
        assert done.returncode == status, (arguments, done.returncode, done.stderr.decode())
        return done.stdout.decode()

    def check_tables(self, session):
        for part in PARTS:
            lines = list(csv.reader(io.StringIO(self.run("info", "--format", "csv", f"--{part}", session), newline="")))
            rows = json.loads(self.run("info", "--format", "json", f"--{part}", session))
            assert len(lines) == len(rows) + 1, part
            assert all(len(line) == len(lines[0]) for line in lines), part
            assert all(list(row) == lines[0] for row in rows), part
            tsv = self.run("info", "--format", "tsv", f"--{part}", session).splitlines()
            assert [len(line.split("\t")) for line in tsv] == [len(lines[0])] * len(lines), part

    def check_copies(self, session):
        redacted = self.folder / "redacted.orvo"
        self.run("redact", session, "-o", redacted)
        before, after = (json.loads(self.run("info", "--json", file))[0] for file in (session, redacted))
        assert [track["id"] for track in before["tracks"]] == [track["id"] for track in after["tracks"]]
        assert not {track["name"] for track in before["tracks"] if track["name"]} & {
            track["name"] for track in after["tracks"]
        }
        redacted.unlink()
        merged = self.folder / "merged.orvo"
        self.run("merge", session, session, session, "-o", merged, "--at", session, "--lossy")
        assert self.run("diff", session, session) == ""
        merged.unlink()

    def check_media(self, session):
        missing = json.loads(self.run("info", "--json", session))[0]["mediaMissing"]
        self.run("relink", session, "--search", session.parent, "--dry-run", status=1 if missing else 0)
        target = self.folder / "collected"
        self.run("collect", *(["--without-missing"] if missing else []), session, target)
        self.run("collect", "--verify", target)
        shutil.rmtree(target)

    def check_pictures(self, session):
        for theme in ("light", "dark", "print"):
            assert self.run("view", session, "-o", "-", "--as", "svg", "--theme", theme).startswith("<svg ")
        picture = self.folder / "picture.png"
        self.run("view", session, "-o", picture)
        assert picture.read_bytes().startswith(b"\x89PNG")


def main():
    root, orvo = Path(sys.argv[1]), sys.argv[2]
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        shutil.copytree(root / "examples", folder / "examples")
        examples = Examples(folder, orvo)
        for session in examples.sessions:
            print(session.name)
            examples.check_tables(session)
            examples.check_copies(session)
            examples.check_media(session)
            examples.check_pictures(session)
        examples.run("view", "--contact-sheet", *examples.sessions, "-o", folder / "sheet.svg")
        examples.run("view", examples.sessions[0], examples.sessions[1], "-o", folder / "changes.svg")
    return 0


if __name__ == "__main__":
    sys.exit(main())
