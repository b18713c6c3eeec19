#!/usr/bin/env python3
"""Writes what restates the host interfaces, from their headers.

    generate.py implementation|bases|operations|session-operations FILE
    generate.py slots PAGE            writes the tables of slots anew, into docs/host-interfaces.md
    generate.py slots --check PAGE    only says whether they are up to date, and fails if not

A file that is up to date is left alone, so that nothing is built for it again.
"""

import argparse
import sys
from pathlib import Path

from generator import cpp, page
from generator.declarations import Refusal, read_headers

FOLDER = Path(__file__).resolve().parent
ENTRY = "SessionInterface.h"  # the exported function, and no interface
OUTPUTS = {
    "implementation": cpp.implementation,
    "bases": cpp.bases,
    "operations": cpp.operations,
    "session-operations": cpp.session_operations,
}


def parse_arguments():
    parser = argparse.ArgumentParser(description="Writes what restates the host interfaces, from their headers.")
    parser.add_argument("output", choices=[*OUTPUTS, "slots"])
    parser.add_argument("file", type=Path)
    parser.add_argument("--check", action="store_true", help="write nothing; fail if the file is not up to date")
    parser.add_argument("--headers", type=Path, default=FOLDER, help="the folder of the headers")
    return parser.parse_args()


def main():
    arguments = parse_arguments()
    paths = sorted(path for path in arguments.headers.glob("*.h") if path.name != ENTRY)
    written = arguments.file.read_text("utf-8") if arguments.file.exists() else None
    try:
        interfaces = read_headers(paths, arguments.headers.resolve().parent)
    except Refusal as refusal:
        sys.exit(str(refusal))
    text = page.with_slots(written, interfaces) if arguments.output == "slots" else OUTPUTS[arguments.output](interfaces)
    if text == written:
        return
    if arguments.check:
        sys.exit(f"{arguments.file} is not what the headers say: run host/generate.py {arguments.output} {arguments.file}")
    arguments.file.parent.mkdir(parents=True, exist_ok=True)
    arguments.file.write_text(text, "utf-8")


if __name__ == "__main__":
    main()
