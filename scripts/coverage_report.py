#!/usr/bin/env python3
"""Prints how much of the project's own code a profile has reached, and every branch that it has not.

    coverage_report.py ROOT PROFILE BINARY...

Every condition (of an if, a loop, a ternary operator, each side of && and ||) and every case has two
branches: taken and not taken. A condition in a template or an inline function counts once, and any copy of
it may reach it. Conditions that the compiler evaluates do not count, nor do defaulted comparisons: the
compiler reports them without counters.
"""

import os
import re
import subprocess
import sys
from collections import defaultdict
from pathlib import Path

FOLDERS = ("host", "platform", "plugin", "reference_host", "toolkit", "cli")

LINE = re.compile(r" +(\d+)\| *([\d.]+[kMGTPEZY]?)\|")
BRANCH = re.compile(r"[ |]*\|  Branch \((\d+):(\d+)\): \[True: ([^,]+), False: ([^\]]+)\]")


class File:
    def __init__(self):
        self.lines = {}
        self.branches = defaultdict(lambda: [False, False])
        self.is_generated = False  # whether the current line ends with "= default;"

    def add(self, text):
        if match := LINE.match(text):
            number, count = match.groups()
            self.lines[int(number)] = count != "0"
            self.is_generated = text.rstrip().endswith("= default;")
        elif (match := BRANCH.match(text)) and not self.is_generated:
            line, column, taken, not_taken = match.groups()
            place = self.branches[int(line), int(column)]
            place[0] |= taken != "0"
            place[1] |= not_taken != "0"


def shown(root, profile, binaries):
    first, *more = binaries
    command = ["llvm-cov", "show", first, *(f"-object={other}" for other in more)]
    command += [f"-instr-profile={profile}", "-show-branches=count", "-show-instantiations=false"]
    # Excludes instead of including: the compiler may name a file by a path through the build folder.
    others = rf"^/usr/(include|lib)/|^{re.escape(str(root))}/(build/[a-z]+/\.\./\.\./)?(tests|fuzz|bench)/"
    command += [f"-ignore-filename-regex={others}"]
    run = subprocess.run(command, capture_output=True, check=False, text=True)
    if run.returncode != 0:
        sys.exit(f"coverage: llvm-cov failed: {run.stderr}")
    return run.stdout


def files_of(root, output):
    files = {}
    file = File()
    for text in output.splitlines():
        if text.startswith(str(root)) and text.endswith(":"):
            path = Path(os.path.normpath(text[:-1])).relative_to(root)
            file = files.setdefault(path, File()) if path.parts[0] in FOLDERS else File()
        else:
            file.add(text)
    return files


# The minimum share of branches; docs/reliability.md explains what remains.
LEAST_SHARE = 0.95


def share(reached, count):
    return f"{reached:6} of {count:6} {100 * reached / count if count else 100:7.2f} %"


def figures(files):
    lines = [reached for file in files for reached in file.lines.values()]
    branches = [taken for file in files for place in file.branches.values() for taken in place]
    return f"{share(sum(lines), len(lines))}   {share(sum(branches), len(branches))}"


def main():
    root = Path(sys.argv[1])
    files = files_of(root, shown(root, sys.argv[2], sys.argv[3:]))
    print("Branches that no test took:")
    for path, file in sorted(files.items()):
        for (line, column), taken in sorted(file.branches.items()):
            if not all(taken):
                missing = "never reached" if not any(taken) else "never false" if taken[0] else "never true"
                print(f"  {path}:{line}:{column}: {missing}")
    print(f"{'':16}{'lines':>26}{'branches':>29}")
    for folder in FOLDERS:
        if own := [file for path, file in files.items() if path.parts[0] == folder]:
            print(f"{folder:16}{figures(own)}")
    print(f"{'all':16}{figures(files.values())}")
    branches = [taken for file in files.values() for place in file.branches.values() for taken in place]
    if sum(branches) < LEAST_SHARE * len(branches):
        sys.exit(f"less than {100 * LEAST_SHARE:.0f} % of the branches were taken")


if __name__ == "__main__":
    main()
