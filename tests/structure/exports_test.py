#!/usr/bin/env python3
"""Checks that a library defines exactly one dynamic symbol, the function that hosts call.

    exports_test.py LIBRARY
"""

import subprocess
import sys


def main():
    listing = subprocess.run(
        ["nm", "-D", "--defined-only", sys.argv[1]], check=True, capture_output=True, text=True
    ).stdout
    symbols = [line.split()[-2:] for line in listing.splitlines()]
    print(listing, end="")
    return 0 if symbols == [["T", "SessionInterface"]] else 1


if __name__ == "__main__":
    sys.exit(main())
