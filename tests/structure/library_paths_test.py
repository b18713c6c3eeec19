#!/usr/bin/env python3
"""Checks that programs and libraries look for libraries beside themselves and in whole paths only.

    library_paths_test.py PLUGIN PLATFORM FILE...

An empty or relative entry would load whatever lies in the working directory under a library's name. The
first one is the plug-in, which needs the second one, the platform, and finds it beside itself: that is what
a host ships.
"""

import re
import subprocess
import sys
from pathlib import Path


# What comes with the system or the compiler, the sanitizers' libraries among it.
OF_THE_SYSTEM = ("libxerces-c", "libstdc++", "libgcc_s", "libc.", "libm.", "ld-linux", "libasan", "libubsan")


def dynamic_section(file):
    return subprocess.run(["readelf", "-d", file], check=True, capture_output=True, text=True).stdout


def search_paths(file):
    for paths in re.findall(r"\((?:RUNPATH|RPATH)\).*\[(.*)\]", dynamic_section(file)):
        yield from paths.split(":")


def needed_of_the_project(file):
    names = re.findall(r"\(NEEDED\).*\[(.*)\]", dynamic_section(file))
    # What the optimiser takes out of a release stays in a build for the sanitizers, which nobody ships.
    for_the_sanitizers = any(name.startswith("libasan") for name in names)
    passed_over = OF_THE_SYSTEM + (("libboost_",) if for_the_sanitizers else ())
    return [name for name in names if not name.startswith(passed_over)]


def main():
    astray = [
        (file, path)
        for file in sys.argv[1:]
        for path in search_paths(file)
        if not path.startswith(("$ORIGIN", "/"))
    ]
    for file, path in astray:
        print(f'{file}: looks for libraries in "{path}"')
    plugin, platform = sys.argv[1:3]
    shipped = needed_of_the_project(plugin) == [Path(platform).name] and "$ORIGIN" in search_paths(plugin)
    if not shipped:
        print(f"{plugin}: needs {needed_of_the_project(plugin)}, and not only the platform beside it")
    return 1 if astray or not shipped else 0


if __name__ == "__main__":
    sys.exit(main())
