#!/usr/bin/env python3
"""Checks that a library exports what its description says, no more and no less.

    abi_test.py LIBRARY DESCRIPTION [--update]

The description is made by abidw. A change that is meant is one of the library's interface: it belongs into
CHANGELOG.md, and one that breaks programs needs another SOVERSION.
"""

import subprocess
import sys

DESCRIBE = ["abidw", "--no-comp-dir-path", "--no-corpus-path", "--no-show-locs", "--no-architecture"]


def main():
    library, description = sys.argv[1:3]
    if sys.argv[3:] == ["--update"]:
        subprocess.run([*DESCRIBE, "--out-file", description, library], check=True)
        return 0
    comparison = subprocess.run(["abidiff", "--no-architecture", description, library], capture_output=True, text=True)
    print(comparison.stdout, comparison.stderr, sep="", end="")
    if comparison.returncode != 0:
        print(f"The exported functions are not those of {description}; abi_test.py --update describes them anew")
    return 1 if comparison.returncode != 0 else 0


if __name__ == "__main__":
    sys.exit(main())
