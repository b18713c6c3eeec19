#!/usr/bin/env python3
"""Checks that a project can contain this one, by FetchContent and by add_subdirectory, and stays as it is.

    subproject_test.py ROOT CMAKE COMPILER [--build]

The outer project has a program of its own that uses the library. It must get the library's headers and nothing else:
no options of this project, none of its other folders, no tests, no tool, and, unless it sets ORVO_INSTALL, nothing to
install and no JSON Schema. --build also builds the program and runs it, which takes minutes.
"""

import json
import re
import shlex
import subprocess
import sys
import tempfile
from pathlib import Path

LISTS = """cmake_minimum_required(VERSION 3.25)
project(outer LANGUAGES CXX)
{contain}
add_executable(rate rate.cpp)
target_link_libraries(rate PRIVATE orvo::orvo)
"""
WAYS = (
    'add_subdirectory("{root}" orvo)',
    'include(FetchContent)\nFetchContent_Declare(orvo SOURCE_DIR "{root}")\nFetchContent_MakeAvailable(orvo)',
)
PROGRAM = """#include <cstdio>
#include <orvo/Session.h>

int main(int, char** argv) {
    const orvo::ReadResult read = orvo::ReadSession(argv[1]);
    std::printf("%u\\n", static_cast<unsigned>(read.session.sampleRate));
    return read ? 0 : 1;
}
"""
SESSION = "examples/radio-spot/radio-spot.orvo"
RATE = 22050
# A source that only the tool needs.
PART_OF_TOOL = "toolkit/SessionFolder.cpp"
PRINTER = "orvo-print-json-schema"


class Outer:
    def __init__(self, folder, root, cmake, compiler, way, *options):
        self.source, self.build, self.root, self.cmake = folder / "source", folder / "build", root, cmake
        self.source.mkdir(parents=True)
        (self.source / "CMakeLists.txt").write_text(LISTS.format(contain=way.format(root=root)), "utf-8")
        (self.source / "rate.cpp").write_text(PROGRAM, "utf-8")
        subprocess.run(
            [cmake, "-G", "Ninja", "-S", self.source, "-B", self.build, f"-DCMAKE_CXX_COMPILER={compiler}",
             "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON", "-DCMAKE_BUILD_TYPE=Release", *options],
            check=True, capture_output=True)
        self.commands = json.loads((self.build / "compile_commands.json").read_text("utf-8"))

    def options(self, source):
        [command] = [command["command"] for command in self.commands if command["file"] == str(source)]
        return shlex.split(command)

    def compiled(self):
        return {Path(command["file"]) for command in self.commands}

    def is_left_alone(self):
        options = self.options(self.source / "rate.cpp")
        folders = re.findall(r"(?:-I|-isystem )(\S+)", " ".join(options))
        print(options)
        return folders == [str(self.root / "include")] and not any(option.startswith("-W") for option in options)

    def leaves_out_what_it_does_not_need(self):
        parts = {path.relative_to(self.root).parts[0] for path in self.compiled() if path.is_relative_to(self.root)}
        print(parts)
        return ("session" in parts and not parts & {"tests", "fuzz", "bench", "cli"}
                and self.root / PART_OF_TOOL not in self.compiled())

    def tolerates_warnings(self):
        return "-Werror" not in self.options(self.root / "session/Json.cpp")

    def installs_something(self):
        scripts = list(self.build.rglob("cmake_install.cmake"))
        print(scripts)
        return any("file(INSTALL " in script.read_text("utf-8") for script in scripts)

    def builds_the_schema(self):
        inputs = subprocess.run(
            [self.cmake, "--build", self.build, "--", "-t", "inputs", "all"], check=True, capture_output=True, text=True
        ).stdout
        return PRINTER in inputs

    def program_reads_a_session(self):
        subprocess.run([self.cmake, "--build", self.build, "--target", "rate"], check=True)
        run = subprocess.run([self.build / "rate", self.root / SESSION], capture_output=True, text=True, check=False)
        print(run)
        return (run.returncode, run.stdout) == (0, f"{RATE}\n")


def main():
    root, cmake, compiler = Path(sys.argv[1]), *sys.argv[2:4]
    held = []
    with tempfile.TemporaryDirectory() as name:
        outers = [Outer(Path(name) / str(number), root, cmake, compiler, way) for number, way in enumerate(WAYS)]
        for outer in outers:
            held += [outer.is_left_alone(), outer.leaves_out_what_it_does_not_need(), outer.tolerates_warnings()]
            held += [not outer.installs_something(), not outer.builds_the_schema()]
        installing = Outer(Path(name) / "installing", root, cmake, compiler, WAYS[0], "-DORVO_INSTALL=ON")
        held += [installing.installs_something(), installing.builds_the_schema()]
        if "--build" in sys.argv:
            held.append(outers[0].program_reads_a_session())
    return 0 if all(held) else 1


if __name__ == "__main__":
    sys.exit(main())
