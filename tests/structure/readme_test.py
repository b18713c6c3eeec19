#!/usr/bin/env python3
"""Checks that README.md tells the truth: its commands give the output that it shows, and its program is
compiled and run.

    readme_test.py ROOT BUILD ORVO CMAKE COMPILER -fsanitize=SANITIZERS

In a ```console block, a line that begins with "$ " is a command, run in ROOT with the built tool in place of
build/release/bin/orvo; the lines up to the next command are its output. The ```cpp block with a main is a
host of at most 60 lines that takes the plug-in and a session. It is compiled with nothing but what BUILD installs.
Every other one stands as it is in a file of examples/host/.
"""

import json
import re
import subprocess
import sys
import tempfile
from pathlib import Path

TOOL = "build/release/bin/orvo"
SESSIONS = ("examples/*/*.orvo", "tests/golden/*.orvo")
MALFORMED = "<orvo>\n<session></orvo>"
MOST_LINES = 60


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


def compile_host(folder, build, cmake, compiler, sanitizers, program):
    """The program, compiled against an installed tree; and the plug-in that is installed there."""
    source, host, installed = folder / "host.cpp", folder / "host", folder / "installed"
    subprocess.run([cmake, "--install", build, "--prefix", installed], check=True, capture_output=True)
    source.write_text(program, "utf-8")
    flags = ["-std=c++20", "-Wall", "-Wextra", "-Werror", "-I", installed / "include/orvo-host"]
    if sanitizers != "-fsanitize=":
        flags.append(sanitizers)
    links = [installed / "lib/libkelplatform.so", f"-Wl,-rpath,{installed}/lib"]
    subprocess.run([compiler, *flags, source, *links, "-o", host], check=True)
    return host, installed / "lib/OrvoNative.so"


def clips(orvo, session):
    """What the program has to print: the names of the session's audio clips, in the order of the file."""
    listing = subprocess.run(
        [orvo, "convert", session, "-", "--to", "json", "--lossy"], check=True, capture_output=True
    ).stdout
    tracks = json.loads(listing)["audioTracks"]
    return "".join(f"clip: {clip['name']}\n" for track in tracks for clip in track["clips"])


def check_program(root, build, orvo, tools, program):
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        host, plugin = compile_host(folder, build, *tools, program)

        def read(session):
            return subprocess.run([host, plugin, session], capture_output=True, text=True, check=False)

        sessions = [session for pattern in SESSIONS for session in sorted(root.glob(pattern))]
        expected = [clips(orvo, session) for session in sessions]
        good = [read(session) for session in sessions]
        malformed = folder / "bad.orvo"
        malformed.write_text(MALFORMED, "utf-8")
        missing, broken = read(folder / "missing.orvo"), read(malformed)
    print(*good, missing, broken, sep="\n")
    return (
        len(program.splitlines()) <= MOST_LINES
        and any(expected)
        and [(run.returncode, run.stdout, run.stderr) for run in good] == [(0, names, "") for names in expected]
        and (missing.returncode, missing.stdout) == (1, "")
        and missing.stderr.endswith(f"app::XMLReader: {folder}/missing.orvo: no such file: check the path\n")
        and (broken.returncode, broken.stdout) == (1, "")
        and f"XML FATAL ERROR: (line: 2, col: 12) [ {malformed}] " in broken.stderr
    )


def check_excerpt(root, excerpt):
    if any(excerpt in source.read_text("utf-8") for source in root.glob("examples/host/*.cpp")):
        return True
    print(f"stands in no file of examples/host/:\n{excerpt}")
    return False


def main():
    root, build, orvo, *tools = Path(sys.argv[1]), *sys.argv[2:7]
    readme = (root / "README.md").read_text("utf-8")
    checked = [
        check_command(root, orvo, command, shown)
        for block in blocks(readme, "console")
        for command, shown in commands(block)
    ]
    code = blocks(readme, "cpp")
    programs = [block for block in code if "int main" in block]
    checked += [check_program(root, build, orvo, tools, program) for program in programs]
    checked += [check_excerpt(root, block) for block in code if block not in programs]
    complete = len(programs) == 1 and len(code) == 2 and len(checked) > len(code)
    return 0 if complete and all(checked) else 1


if __name__ == "__main__":
    sys.exit(main())
