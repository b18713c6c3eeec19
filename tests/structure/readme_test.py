#!/usr/bin/env python3
"""Checks README.md and the guides to the library and for hosts: the commands print the output that is shown, and the
programs compile and run.

    readme_test.py ROOT BUILD ORVO CMAKE COMPILER

In a ```console block, a line that starts with "$ " is a command, which runs in ROOT with the built tool instead
of build/release/bin/orvo; the lines up to the next command are its output. A ```cpp block with a main is compiled
with nothing but what BUILD installs, once by the page's ```cmake block and once by its ```sh block. README.md has one,
which uses the library and gives every clip of an example a fade; docs/host-interfaces.md has one, a host of at most 60
lines that takes the plug-in and a session. Every other block is an excerpt of a file in examples/host/. Those of
docs/library.md are compiled by the ```sh block of README.md, run in a folder of their own with a copy of examples/, and
print the ```text block that follows.
"""

import json
import re
import shutil
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


class Installed:
    """What the build installs, moved to another folder, and programs that are built with nothing else."""

    def __init__(self, folder, build, cmake, compiler):
        self.folder, self.prefix, self.cmake, self.compiler = folder, folder / "orvo-sdk", cmake, compiler
        self.flags = "-Wall -Wextra -Werror"
        subprocess.run([cmake, "--install", build, "--prefix", folder / "first"], check=True, capture_output=True)
        (folder / "first").rename(self.prefix)

    def links(self):
        """The links of the installed pages to files, and whether these are installed."""
        for page in (self.prefix / "share/doc").rglob("*.md"):
            prose = re.sub(r"^(?:```.*?^```|    .*?)$", "", page.read_text("utf-8"), flags=re.MULTILINE | re.DOTALL)
            for link in re.findall(r"\]\((?!https?:)([^)#]+)[^)]*\)", prose):
                yield f"{page.relative_to(self.prefix)}: {link}", (page.parent / link).exists()

    def built_by_cmake(self, lists, program):
        """The program that a CMakeLists.txt builds of one source file."""
        name = re.search(r"^add_executable\((\w+) \1\.cpp\)$", lists, re.MULTILINE)[1]
        source, build = self.folder / f"{name}-cmake", self.folder / f"{name}-cmake-build"
        source.mkdir()
        (source / "CMakeLists.txt").write_text(lists, "utf-8")
        (source / f"{name}.cpp").write_text(program, "utf-8")
        subprocess.run(
            [self.cmake, "-G", "Ninja", "-S", source, "-B", build, f"-DCMAKE_PREFIX_PATH={self.prefix}",
             f"-DCMAKE_CXX_COMPILER={self.compiler}", f"-DCMAKE_CXX_FLAGS={self.flags}"], check=True)
        subprocess.run([self.cmake, "--build", build], check=True)
        return build / name

    def built_by_commands(self, commands, program):
        """The program that shell commands build of one source file."""
        name = re.search(r"-o (\w+)$", commands, re.MULTILINE)[1]
        (self.folder / f"{name}.cpp").write_text(program, "utf-8")
        commands = commands.replace("g++ ", f"{self.compiler} {self.flags} ")
        subprocess.run(["bash", "-euc", commands], cwd=self.folder, check=True)
        return self.folder / name


def as_json(orvo, session):
    return json.loads(subprocess.run(
        [orvo, "convert", session, "-", "--to", "json", "--lossy", "--full"], check=True, capture_output=True
    ).stdout)


def audio_clips(session):
    return [clip for track in session["audioTracks"] for clip in track["audioClips"]]


def check_library_program(root, installed, orvo, page, program):
    """The program runs in another folder, so that it leaves nothing in this one."""
    source = re.search(r'ReadSession\("([^"]*)"\)', program)[1]
    program = program.replace(source, str(root / source))
    [lists], [commands] = blocks(page, "cmake"), blocks(page, "sh")
    before = audio_clips(as_json(orvo, root / source))
    for clip in before:
        clip["fadeIn"] = {"startPoint": 0, "endPoint": 480, "type": "log", "shape": 0,
                          "crossFadeLinkType": "linkedSymmetric"}

    def fades(made):
        run = subprocess.run([made], cwd=installed.folder, capture_output=True, text=True, check=False)
        print(run)
        faded = installed.folder / "faded.orvo"
        after = audio_clips(as_json(orvo, faded))
        faded.unlink()
        return run.returncode == 0 and len(before) > 0 and after == before

    return fades(installed.built_by_cmake(lists, program)) and fades(installed.built_by_commands(commands, program))


def check_shown_program(root, installed, readme, program, shown):
    [commands] = blocks(readme, "sh")
    made = installed.built_by_commands(commands, program)
    with tempfile.TemporaryDirectory() as name:
        shutil.copytree(root / "examples", Path(name) / "examples")
        run = subprocess.run([made], cwd=name, capture_output=True, text=True, check=False)
    if (run.returncode, run.stdout, run.stderr) == (0, shown, ""):
        return True
    print(f"{program}--- shown\n{shown}--- true\n{run}")
    return False


def check_host(root, installed, orvo, page, program):
    [lists], [commands] = blocks(page, "cmake"), blocks(page, "sh")
    plugin = installed.prefix / "lib/OrvoNative.so"
    return all(
        runs_as_host(root, installed.folder, orvo, host, plugin)
        for host in (installed.built_by_cmake(lists, program), installed.built_by_commands(commands, program))
    ) and len(program.splitlines()) <= MOST_LINES


def runs_as_host(root, folder, orvo, host, plugin):

    def read(session):
        return subprocess.run([host, plugin, session], capture_output=True, text=True, check=False)

    sessions = [session for pattern in SESSIONS for session in sorted(root.glob(pattern))]
    expected = ["".join(f"clip: {clip['name']}\n" for clip in audio_clips(as_json(orvo, session)))
                for session in sessions]
    good = [read(session) for session in sessions]
    malformed, absent = folder / "bad.orvo", folder / "missing.orvo"
    malformed.write_text(MALFORMED, "utf-8")
    missing, broken = read(absent), read(malformed)
    print(*good, missing, broken, sep="\n")
    return (
        any(expected)
        and [(run.returncode, run.stdout, run.stderr) for run in good] == [(0, names, "") for names in expected]
        and (missing.returncode, missing.stdout) == (1, "")
        and missing.stderr.endswith(f"app::XMLReader: {absent}: no such file: check the path\n")
        and (broken.returncode, broken.stdout) == (1, "")
        and f"XML FATAL ERROR: (line: 2, col: 12) [ {malformed}] " in broken.stderr
    )


def check_excerpt(root, excerpt):
    if any(excerpt in source.read_text("utf-8") for source in root.glob("examples/host/*.cpp")):
        return True
    print(f"stands in no file of examples/host/:\n{excerpt}")
    return False


def check_links(installed):
    links = list(installed.links())
    for link, leads_somewhere in links:
        if not leads_somewhere:
            print(f"{link} is not installed")
    return bool(links) and all(leads_somewhere for _, leads_somewhere in links)


def split_code(page):
    """The programs of a page, and its other blocks of C++."""
    code = blocks(page, "cpp")
    return [block for block in code if "int main" in block], [block for block in code if "int main" not in block]


def main():
    root, build, orvo, *tools = Path(sys.argv[1]), *sys.argv[2:7]
    readme = (root / "README.md").read_text("utf-8")
    guide = (root / "docs/host-interfaces.md").read_text("utf-8")
    library = (root / "docs/library.md").read_text("utf-8")
    library_programs = list(zip(blocks(library, "cpp"), blocks(library, "text"), strict=True))
    shown = [command for block in blocks(readme, "console") for command in commands(block)]
    [library_program], nothing = split_code(readme)
    [host_program], excerpts = split_code(guide)
    with tempfile.TemporaryDirectory() as name:
        installed = Installed(Path(name), build, *tools)
        checked = [
            *(check_command(root, orvo, command, output) for command, output in shown),
            check_library_program(root, installed, orvo, readme, library_program),
            *(check_shown_program(root, installed, readme, *program) for program in library_programs),
            check_host(root, installed, orvo, guide, host_program),
            *(check_excerpt(root, excerpt) for excerpt in excerpts),
            check_links(installed),
        ]
    return 0 if shown and library_programs and not nothing and excerpts and all(checked) else 1


if __name__ == "__main__":
    sys.exit(main())
