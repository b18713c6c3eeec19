#!/usr/bin/env python3
"""Checks that the commands in the pages about the tool print the output that is shown.

    tool_pages_test.py ROOT ORVO [--update]

The commands of a page's ```console blocks run one after the other in a folder that contains a copy of examples/.
--update writes what they print into the pages.
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

PAGES = ("docs/tool.md", "docs/check.md")
BLOCK = re.compile(r"^```console\n(.*?)^```$", re.MULTILINE | re.DOTALL)


def run(block, folder, environment):
    """The block with what its commands print."""
    made = ""
    for command in re.findall(r"^\$ (.*)$", block, re.MULTILINE):
        outcome = subprocess.run(
            ["bash", "-c", command], cwd=folder, env=environment, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
            text=True, check=False
        )
        made += f"$ {command}\n{outcome.stdout}"
    return made


def check(page, root, orvo, update):
    text = page.read_text("utf-8")
    with tempfile.TemporaryDirectory() as name:
        shutil.copytree(root / "examples", Path(name) / "examples")
        environment = {**os.environ, "PATH": f"{orvo.parent}:{os.environ['PATH']}", "LC_ALL": "C.UTF-8"}
        made = BLOCK.sub(lambda match: f"```console\n{run(match[1], name, environment)}```", text)
    if update:
        page.write_text(made, "utf-8")
    for shown, true in zip(BLOCK.findall(text), BLOCK.findall(made), strict=True):
        if shown != true:
            print(f"--- shown\n{shown}--- true\n{true}")
    return made == text and BLOCK.search(text) is not None


def main():
    root, orvo = Path(sys.argv[1]), Path(sys.argv[2]).resolve()
    checked = [check(root / page, root, orvo, "--update" in sys.argv) for page in PAGES]
    return 0 if all(checked) else 1


if __name__ == "__main__":
    sys.exit(main())
