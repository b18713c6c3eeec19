#!/usr/bin/env python3
"""Checks that programs and libraries search for libraries only next to themselves and in absolute paths.

    library_paths_test.py PLUGIN PLATFORM FILE...

An empty or relative entry would load any library with the right name from the working directory. The plug-in
must need only the platform library and find it next to itself, because that is what hosts ship.
"""

import re
import subprocess
import sys
from pathlib import Path


# Libraries of the system and the compiler.
OF_THE_SYSTEM = ("libxerces-c", "libstdc++", "libgcc_s", "libc.", "libm.", "ld-linux")


def dynamic_section(file):
    return subprocess.run(["readelf", "-d", file], check=True, capture_output=True, text=True).stdout


def search_paths(file):
    for paths in re.findall(r"\((?:RUNPATH|RPATH)\).*\[(.*)\]", dynamic_section(file)):
        yield from paths.split(":")


def needed_of_the_project(file):
    names = re.findall(r"\(NEEDED\).*\[(.*)\]", dynamic_section(file))
    return [name for name in names if not name.startswith(OF_THE_SYSTEM)]


def main():
    astray = [
        (file, path)
        for file in sys.argv[1:]
        for path in search_paths(file)
        if not path.startswith(("$ORIGIN", "/"))
    ]
    for file, path in astray:
        print(f'{file}: searches for libraries in "{path}"')
    plugin, platform = sys.argv[1:3]
    shipped = needed_of_the_project(plugin) == [Path(platform).name] and "$ORIGIN" in search_paths(plugin)
    if not shipped:
        print(f"{plugin}: needs {needed_of_the_project(plugin)}, not just the platform library next to it")
    return 1 if astray or not shipped else 0


if __name__ == "__main__":
    sys.exit(main())
