#!/usr/bin/env python3
"""Checks that README.md tells the truth: its commands give the output that it shows, and its program is
compiled and run.

    readme_test.py ROOT ORVO PLUGIN PLATFORM COMPILER -fsanitize=SANITIZERS

In a ```console block, a line that begins with "$ " is a command, run in ROOT with the built tool in place of
build/release/bin/orvo; the lines up to the next command are its output. The ```cpp block with a main is a
host that takes the plug-in and a session; every other one stands as it is in a file of examples/host/.
"""

import re
import subprocess
import sys
import tempfile
from pathlib import Path

TOOL = "build/release/bin/orvo"
SESSION = "examples/sound-library/sound-library.orvo"
MALFORMED = "<orvo>\n<session></orvo>"
INSTRUMENT = "<orvo><session><tracks><instrumentTrack id='1'/></tracks></session></orvo>"
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


def check_program(root, plugin, platform, compiler, sanitizers, program):
    with tempfile.TemporaryDirectory() as folder:
        source, host = Path(folder, "host.cpp"), Path(folder, "host")
        source.write_text(program, "utf-8")
        flags = ["-std=c++20", "-Wall", "-Wextra", "-Werror", "-I", root]
        if sanitizers != "-fsanitize=":
            flags.append(sanitizers)
        links = [platform, f"-Wl,-rpath,{Path(platform).parent}"]
        subprocess.run([compiler, *flags, source, *links, "-o", host], check=True)
        missing, malformed, instrument = (Path(folder, name) for name in ("missing.orvo", "bad.orvo", "track.orvo"))
        malformed.write_text(MALFORMED, "utf-8")
        instrument.write_text(INSTRUMENT, "utf-8")
        good, bad, broken, track = (
            subprocess.run([host, plugin, session], capture_output=True, text=True, check=False)
            for session in (root / SESSION, missing, malformed, instrument)
        )
    print(good, bad, broken, track, sep="\n")
    return (
        good.returncode == 0
        and "sample rate: 22050\n" in good.stdout
        and f"media: {root / FIRST_MEDIA}\n" in good.stdout
        and "references left: 0\n" in good.stdout
        and f"why: {missing}: no such file: check the path\nlog: " in bad.stdout
        and f"[ {missing}] no such file: check the path\nresult: -4, references left: 0\n" in bad.stdout
        and f"log: XML FATAL ERROR: (line: 2, col: 12) [ {malformed}] " in broken.stdout
        and "result: -4, references left: 0\n" in broken.stdout
        # It has no track to give; with the feature off it would take the session for one without tracks.
        and "why: Invalid Track Id\nresult: -4," in track.stdout
        and good.stderr + bad.stderr + broken.stderr + track.stderr == ""
    )


def check_excerpt(root, excerpt):
    if any(excerpt in source.read_text("utf-8") for source in root.glob("examples/host/*.cpp")):
        return True
    print(f"stands in no file of examples/host/:\n{excerpt}")
    return False


def main():
    root, orvo, *tools = Path(sys.argv[1]), *sys.argv[2:7]
    readme = (root / "README.md").read_text("utf-8")
    checked = [
        check_command(root, orvo, command, shown)
        for block in blocks(readme, "console")
        for command, shown in commands(block)
    ]
    code = blocks(readme, "cpp")
    programs = [block for block in code if "int main" in block]
    checked += [check_program(root, *tools, program) for program in programs]
    checked += [check_excerpt(root, block) for block in code if block not in programs]
    complete = len(programs) == 1 and len(code) == 2 and len(checked) > len(code)
    return 0 if complete and all(checked) else 1


if __name__ == "__main__":
    sys.exit(main())
