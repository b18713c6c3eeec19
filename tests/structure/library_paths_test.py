#!/usr/bin/env python3
"""Checks that programs and libraries look for libraries beside themselves and in whole paths only.

    library_paths_test.py FILE...

An empty or relative entry would load whatever lies in the working directory under a library's name.
"""

import re
import subprocess
import sys


def search_paths(file):
    dynamic = subprocess.run(
        ["readelf", "-d", file], check=True, capture_output=True, text=True
    ).stdout
    for paths in re.findall(r"\((?:RUNPATH|RPATH)\).*\[(.*)\]", dynamic):
        yield from paths.split(":")


def main():
    astray = [
        (file, path)
        for file in sys.argv[1:]
        for path in search_paths(file)
        if not path.startswith(("$ORIGIN", "/"))
    ]
    for file, path in astray:
        print(f'{file}: looks for libraries in "{path}"')
    return 1 if astray else 0


if __name__ == "__main__":
    sys.exit(main())
