#!/usr/bin/env python3
"""budget_test.py ORVO ORVO-BENCH: in proportion to the XML library alone, a read and a write take no more instructions
than the budgets below, and no more memory; nor do a picture and a page in proportion to the read. So a change that makes
them slow fails without a clock.

What a change wins or costs for good is written into the budgets: a run prints what it found.
"""

import json
import os
import re
import subprocess
import sys
import tempfile

# Instructions in proportion to the library alone, as callgrind counts them, and blocks of memory for each element.
# Between builds by one compiler they differ by less than the tolerance.
TOLERANCE = 0.02
BUDGETS = {
    ("read", "plugin_null_host"): {"instructions": 1.005, "allocations": 0.278},
    ("read", "plugin_reference_host"): {"instructions": 1.071, "allocations": 1.326},
    ("write", "plugin_null_host"): {"instructions": 0.444, "allocations": 0.122},
    ("write", "plugin_reference_host"): {"instructions": 0.463, "allocations": 1.743},
    ("write", "streamed_null_host"): {"instructions": 0.060, "allocations": 0.094},
    ("write", "streamed_reference_host"): {"instructions": 0.081, "allocations": 1.715},
}

# Instructions of a picture as SVG, and of a page, in proportion to the read of the session.
VIEWS = {"picture": 0.5, "page": 0.42}

# Bytes of memory for each byte of a session that is saved as a stream.
BYTES_PER_BYTE = 1.6


def instructions(bench, verb, contender, session, folder=None):
    """Of the two runs by which `orvo-bench` measures memory."""
    command = ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null",
               "--toggle-collect=bench::MeasureMemory(*",
               bench, verb, session, "--alone", contender]
    if folder:
        command += ["--folder", folder]
    if verb == "read":
        command += ["--cuts", session, session]
    ended = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, check=True)
    return int(re.search(r"Collected : (\d+)", ended.stderr).group(1))


def figures(bench, verb, session, folder):
    """What each contender takes of instructions, as a ratio, and of blocks of memory."""
    report = json.loads(subprocess.run([bench, verb, session, "--folder", folder, "--rounds", "1", "--json"],
                                       stdout=subprocess.PIPE, check=True).stdout)
    floor = instructions(bench, verb, "floor", session, folder)
    for name in (name for budget_verb, name in BUDGETS if budget_verb == verb):
        yield name, {"instructions": instructions(bench, verb, name, session, folder) / floor,
                     "allocations": report["allocations_per_element"][name]}


def bytes_per_byte(orvo, bench, folder):
    """What a streamed save takes of memory. Every name has a character that the versions of XML carry differently, which
    must cost neither a second copy of the document nor much of its own."""
    session = os.path.join(folder, "larger.orvo")
    subprocess.run([orvo, "generate", "--tracks", "32", session], stdout=subprocess.DEVNULL, check=True)
    with open(session, encoding="utf-8-sig") as file:
        text = file.read()
    with open(session, "w", encoding="utf-8-sig") as file:
        file.write(text.replace(' name="', ' name="&#x85;'))
    report = json.loads(subprocess.run([bench, "write", session, "--folder", folder, "--rounds", "1", "--json"],
                                       stdout=subprocess.PIPE, check=True).stdout)
    return report["peak_kib"]["streamed_null_host"] * 1024 / os.path.getsize(session)


def main(orvo, bench):
    problems = 0
    with tempfile.TemporaryDirectory() as folder:
        session = os.path.join(folder, "session.orvo")
        subprocess.run([orvo, "generate", "--tracks", "4", "--seed", "1", session], stdout=subprocess.DEVNULL,
                       check=True)
        for verb in ("read", "write"):
            for name, found in figures(bench, verb, session, folder):
                budget = BUDGETS[verb, name]
                for what, value in found.items():
                    over = value > budget[what] * (1 + TOLERANCE)
                    problems += over
                    print(f"{verb} {name} {what}: {value:.3f}, budget {budget[what]:.3f}{', OVER' if over else ''}")
        read = instructions(bench, "view", "read", session)
        for name, limit in VIEWS.items():
            found = instructions(bench, "view", name, session) / read
            problems += found > limit
            print(f"view {name} instructions: {found:.3f} of the read, limit {limit}")
        memory = bytes_per_byte(orvo, bench, folder)
        problems += memory > BYTES_PER_BYTE
        print(f"write streamed_null_host memory: {memory:.3f} bytes a byte, limit {BYTES_PER_BYTE}")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
