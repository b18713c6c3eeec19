#!/usr/bin/env python3
"""Checks in a repository what docs/tool.md says of git: sessions shown as text, and compared by the tool.

    git_test.py ROOT ORVO GIT

The settings are those of the page's ```ini blocks.
"""

import os
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

ATTRIBUTES = "*.orvo diff=orvo merge=orvo\n"


def settings(page):
    """The keys and values of the page, as for "git config"."""
    section = ""
    for block in re.findall(r"^```ini\n(.*?)^```$", page, re.MULTILINE | re.DOTALL):
        for line in block.splitlines():
            if head := re.fullmatch(r'\[(\w+) "(\w+)"\]', line.strip()):
                section = ".".join(head.groups())
            elif "=" in line:
                key, _, value = line.partition("=")
                quoted = value.strip()
                yield f"{section}.{key.strip()}", re.sub(r"\\(.)", r"\1", quoted[1:-1]) if quoted[0] == '"' else quoted


class Repository:
    def __init__(self, folder, git, orvo):
        self.folder, self.git = folder, git
        self.environment = os.environ | {
            "PATH": f"{Path(orvo).parent}:{os.environ['PATH']}",
            "GIT_CONFIG_NOSYSTEM": "1",
            "HOME": str(folder),
        }
        self.run("init", "--quiet", "--initial-branch=main")
        self.run("config", "user.name", "A")
        self.run("config", "user.email", "a@example.org")
        (folder / ".gitattributes").write_text(ATTRIBUTES)

    def run(self, *arguments, code=0):
        done = subprocess.run(
            [self.git, *arguments], cwd=self.folder, env=self.environment, capture_output=True, text=True, check=False
        )
        if done.returncode != code:
            sys.exit(f"git {shlex.join(arguments)}: {done.returncode}\n{done.stdout}{done.stderr}")
        return done.stdout

    def commit(self, text, message):
        (self.folder / "song.orvo").write_text(text, "utf-8")
        self.run("add", "-A")
        self.run("commit", "--quiet", "-m", message)


def expect(what, text, *parts):
    for part in parts:
        if part not in text:
            sys.exit(f"{what} does not say {part!r}:\n{text}")


def check_merge(repository, song):
    """Both sides rename a track, first different ones, then the same."""
    repository.run("checkout", "--quiet", "-b", "side")
    repository.commit(song.replace(">Shaker<", ">Bells<"), "Rename on the side")
    repository.run("checkout", "--quiet", "-b", "apart", "HEAD~1")
    repository.commit((repository.folder / "song.orvo").read_text("utf-8").replace(">Drums<", ">Kit<"), "Rename another")
    repository.run("merge", "--quiet", "-m", "Merge", "side")
    merged = (repository.folder / "song.orvo").read_text("utf-8")
    expect("git merge", merged, "Bells", "Kit")
    repository.run("checkout", "--quiet", "main")
    repository.commit(song.replace(">Shaker<", ">Gong<"), "Rename here")
    said = repository.run("merge", "side", code=1)
    expect("git merge", said, "CONFLICT")
    expect("the session after a conflict", (repository.folder / "song.orvo").read_text("utf-8"), "Gong")


def main():
    root, orvo, git = Path(sys.argv[1]), sys.argv[2], sys.argv[3]
    page = (root / "docs/tool.md").read_text("utf-8")
    song = (root / "examples/music/music.orvo").read_text("utf-8")
    old, new = ">Shaker<", ">Tambourine<"
    with tempfile.TemporaryDirectory() as name:
        repository = Repository(Path(name), git, orvo)
        for key, value in settings(page):
            repository.run("config", key, value)
        shutil.copytree(root / "examples/music/media", repository.folder / "media")
        repository.commit(song, "Begin")
        repository.commit(song.replace(old, new), "Rename")
        expect("git show", repository.run("show", "song.orvo"), '-      "name": "Shaker"', '+      "name": "Tambourine"')
        expect(
            "git difftool",
            repository.run("difftool", "--no-prompt", "--tool=orvo", "HEAD~1", "--", "song.orvo"),
            'renamed to "Tambourine"',
        )
        check_merge(repository, song)
    return 0


if __name__ == "__main__":
    sys.exit(main())
