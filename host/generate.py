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

from generator.bases import bases
from generator.declarations import Refusal, read_headers
from generator.implementation import implementation
from generator.operations import operations, session_operations
from generator.page import with_slots

FOLDER = Path(__file__).resolve().parent
WITHOUT_INTERFACES = ("Counted.h", "Features.h", "SessionInterface.h", "Text.h", "TrackKind.h")
OUTPUTS = {
    "implementation": implementation,
    "bases": bases,
    "operations": operations,
    "session-operations": session_operations,
}


def parse_arguments():
    parser = argparse.ArgumentParser(description="Writes what restates the host interfaces, from their headers.")
    parser.add_argument("output", choices=[*OUTPUTS, "slots"])
    parser.add_argument("file", type=Path)
    parser.add_argument("--check", action="store_true", help="write nothing; fail if the file is not up to date")
    parser.add_argument("--headers", type=Path, default=FOLDER, help="the folder of the headers")
    return parser.parse_args()


def make(output, written, headers):
    paths = sorted(path for path in headers.glob("*.h") if path.name not in WITHOUT_INTERFACES)
    interfaces = read_headers(paths, headers.parent)
    return with_slots(written, interfaces) if output == "slots" else OUTPUTS[output](interfaces)


def main():
    arguments = parse_arguments()
    file = arguments.file
    written = file.read_text("utf-8") if file.exists() else None
    if arguments.output == "slots" and written is None:
        sys.exit(f"{file}: no such page")
    try:
        text = make(arguments.output, written, arguments.headers.resolve())
    except Refusal as refusal:
        sys.exit(str(refusal))
    if text == written:
        return
    if arguments.check:
        sys.exit(f"{file} is not what the headers say: run host/generate.py {arguments.output} {file}")
    file.parent.mkdir(parents=True, exist_ok=True)
    file.write_text(text, "utf-8")


if __name__ == "__main__":
    main()
