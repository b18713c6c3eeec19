#!/usr/bin/env python3
"""Checks that README.md tells the truth: its commands give the output that it shows, and its program is
compiled and run.

    readme_test.py ROOT ORVO PLUGIN COMPILER -fsanitize=SANITIZERS

In a ```console block, a line that begins with "$ " is a command, run in ROOT with the built tool in place of
build/release/bin/orvo; the lines up to the next command are its output. The ```cpp block is a host that
takes the plug-in and a session.
"""

import re
import subprocess
import sys
import tempfile
from pathlib import Path

TOOL = "build/release/bin/orvo"
SESSION = "examples/sound-library/sound-library.orvo"
FIRST_MEDIA = "examples/radio-spot/media/door-bell.wav"


def blocks(text, language):
    return re.findall(rf"^```{language}\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)


def commands(block):
    """The commands of a console block with the output that is shown for each."""
    for part in re.split(r"^\$ ", block, flags=re.MULTILINE)[1:]:
        command, _, output = part.partition("\n")
        yield command, output


def check_command(root, orvo, command, shown):
    true = subprocess.run(
        ["bash", "-c", command.replace(TOOL, orvo)], cwd=root, capture_output=True, text=True, check=False
    )
    if true.stdout + true.stderr == shown:
        return True
    print(f"$ {command}\n--- shown\n{shown}--- true\n{true.stdout}{true.stderr}")
    return False


def check_program(root, plugin, compiler, sanitizers, program):
    with tempfile.TemporaryDirectory() as folder:
        source, host = Path(folder, "host.cpp"), Path(folder, "host")
        source.write_text(program, "utf-8")
        flags = ["-std=c++20", "-Wall", "-Wextra", "-Werror", "-I", root]
        if sanitizers != "-fsanitize=":
            flags.append(sanitizers)
        subprocess.run([compiler, *flags, source, "-o", host], check=True)
        run = subprocess.run([host, plugin, root / SESSION], capture_output=True, text=True, check=False)
    print(run.stdout, run.stderr, sep="")
    return (
        run.returncode == 0
        and "sample rate: 22050\n" in run.stdout
        and f"media: {root / FIRST_MEDIA}\n" in run.stdout
        and "references left: 0\n" in run.stdout
    )


def main():
    root, orvo, plugin, compiler, sanitizers = Path(sys.argv[1]), *sys.argv[2:6]
    readme = (root / "README.md").read_text("utf-8")
    checked = [
        check_command(root, orvo, command, shown)
        for block in blocks(readme, "console")
        for command, shown in commands(block)
    ]
    programs = blocks(readme, "cpp")
    checked += [check_program(root, plugin, compiler, sanitizers, program) for program in programs]
    complete = len(programs) == 1 and len(checked) > len(programs)
    return 0 if complete and all(checked) else 1


if __name__ == "__main__":
    sys.exit(main())
