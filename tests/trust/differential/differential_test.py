#!/usr/bin/env python3
"""differential_test.py READER [--count N] [--seed S] [--jobs J]: compares the plug-in with other readers.

Generates N documents from the seed S and lets the plug-in read them (READER is the program
Differential). Expat in namespace mode and libxml2 must agree with it on which ones are well-formed.
A second reader, built on Python's own parser and the table of differential_elements.py, must agree
on every call to the host, including progress, with its arguments and the returned objects.

For a malformed document the plug-in makes the calls for the content before the fault, or the first
part of them: a parser may find the fault before it has reported all of that content.
"""

import argparse
import base64
import collections
import concurrent.futures
import json
import os
import pathlib
import re
import struct
import subprocess
import sys
import tempfile

import differential_model
from differential_classes import GUARD, NAME, verdict
from differential_documents import document
from differential_elements import ROWS

BATCH = 250
ENOUGH = 2000  # documents that together must contain each element in each of its places
LOGGING = ("GetLogTarget", "LogMessage")
DECLARATION = re.compile(r"^<\?xml .*?\?>")
ROOT = pathlib.Path(__file__).resolve().parents[3]


def templates():
    paths = sorted(ROOT.glob("tests/golden/*.orvo")) + sorted(ROOT.glob("examples/*/*.orvo"))
    return [DECLARATION.sub("", path.read_text(encoding="utf-8-sig")) for path in paths]


class Reply:
    """The results of the plug-in and of the other parsers for one document."""

    def __init__(self, line, calls):
        self.result = line["result"]
        self.expat, self.libxml2 = line["expat"], line["libxml2"]
        self.live_nodes = line["liveNodes"]
        self.goes_on = line["goesOn"]
        self.errors = [text for text in line["messages"] if not text.startswith("XML WARNING")]
        self.calls = [told(call) for call in calls if call["call"] not in LOGGING]


def told(call):
    return (call["object"], call["call"], [argument(value) for value in call["args"]],
            ("null" if call["returns"] is None else call["returns"]) if "returns" in call else None)


def argument(value):
    return base64.b64decode(value["base64"]) if isinstance(value, dict) else value


def single(value):
    return struct.pack("f", value) if isinstance(value, float) else value


def same(told_of, expected):
    """Formats a call like the host does, with 32-bit numbers as their shortest texts."""
    if told_of == expected:
        return True
    if told_of[:2] != expected[:2] or told_of[3] != expected[3]:
        return False
    return (told_of[1] in ("SetParameterValue", "AddKeyframe", "AddTrack")
            and len(told_of[2]) == len(expected[2])
            and all(one == other or single(float(one)) == single(float(other))
                    for one, other in zip(told_of[2], expected[2])))


def first_difference(calls, expected):
    for number, (call, wanted) in enumerate(zip(calls, expected)):
        if not same(call, wanted):
            return f"call {number + 1} is {call}, not {wanted}"
    return None


def problem_of(reply, outcome, well_formed):
    """Returns what is wrong with the plug-in's read of a document, or None."""
    difference = first_difference(reply.calls, outcome.calls)
    if difference:
        return difference
    stopped = outcome.well_formed is None
    if well_formed:
        if reply.errors:
            return f"it is well-formed, but: {reply.errors}"
        if len(reply.calls) != len(outcome.calls):
            return f"{len(reply.calls)} calls, not {len(outcome.calls)}"
        expected = 0 if outcome.read else -4
        return None if reply.result == expected else f"the result is {reply.result}"
    if len(reply.calls) > len(outcome.calls):
        return f"{len(reply.calls)} calls, of which {len(outcome.calls)} are before the fault"
    if reply.result != -4:
        return "it is not well-formed, but was read"
    if len(reply.errors) != 1 and not (stopped and not reply.errors):
        return f"not one message of what is not well-formed: {reply.errors}"
    return None


def refusal_problem(reply, outcome):
    if reply.result != -4 or len(reply.errors) != 1:
        return f"it is refused, but: {reply.result} {reply.errors}"
    return first_difference(reply.calls, outcome.calls)


def replies(reader, folder, documents):
    path = os.path.join(folder, "session.orvo")
    sent = b"".join(struct.pack("<I", len(content)) + content for content in documents)
    run = subprocess.run([reader, path], input=sent, capture_output=True, check=False)
    lines = iter(run.stdout.decode("utf-8", "surrogatepass").split("\n"))
    for _ in documents:
        line = next(lines)
        if not line:
            raise RuntimeError(f"the reader ended with {run.returncode}: {run.stderr[-2000:]}")
        header = json.loads(line)
        calls = ",".join(next(lines) for _ in range(header["calls"]))
        yield Reply(header, json.loads(f"[{calls}]"))


def judge(content, reply, outcome, counts):
    """Counts a document and returns what is wrong with its read, or None."""
    well_formed, known = verdict(content, reply, outcome)
    counts["documents"] += 1
    counts[known] += known is not None
    if reply.live_nodes != 0:
        return f"{reply.live_nodes} host objects are alive"
    if well_formed is None:
        if known is None:
            return f"expat says {reply.expat}, libxml2 {reply.libxml2}, the reader {reply.errors}"
        return refusal_problem(reply, outcome) if known == GUARD else None
    counts["well-formed" if well_formed else "ill-formed"] += 1
    if known == NAME:  # Python's own parser does not read it
        agrees = not reply.errors if well_formed else reply.result == -4
        return None if agrees else f"well-formed: {well_formed}, but: {reply.errors}"
    counts["read"] += reply.result == 0
    counts["calls of the host"] += len(reply.calls)
    return problem_of(reply, outcome, well_formed)


def run_batch(reader, seed, first, count):
    counts = collections.Counter()
    differences = []
    base = "/dev/shm" if os.path.isdir("/dev/shm") else None
    with tempfile.TemporaryDirectory(prefix="orvo-differential-", dir=base) as folder:
        os.mkdir(os.path.join(folder, "media"))
        for name in ("a.wav", "b \u00e9.wav"):
            pathlib.Path(folder, "media", name).touch()
        texts = templates()
        documents = [document(seed, index, texts).replace(b"@FOLDER@", folder.encode())
                     for index in range(first, first + count)]
        skip_depth = 0
        for index, reply in enumerate(replies(reader, folder, documents)):
            content = documents[index]
            outcome = differential_model.read(content, folder + "/session.orvo", skip_depth)
            skip_depth = outcome.skip_depth if reply.goes_on else 0
            difference = judge(content, reply, outcome, counts)
            if difference:
                differences.append((first + index, difference, content))
    met = {key for key, row in ROWS.items() if row.met}
    return counts, met, differences


def summarise(counts, differences):
    first = ("documents", "well-formed", "ill-formed")
    last = ("read", "calls of the host")
    classes = sorted(set(counts) - {*first, *last})
    for name in (*first, *classes, *last):
        print(f"{counts[name]:>12,}  {name}")
    print(f"{differences:>12,}  differences")


def batches(arguments):
    end = arguments.first + arguments.count
    for first in range(arguments.first, end, BATCH):
        yield arguments.reader, arguments.seed, first, min(BATCH, end - first)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("reader")
    parser.add_argument("--count", type=int, default=2000)
    parser.add_argument("--first", type=int, default=0)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=1)
    parser.add_argument("--keep", help="a folder for the documents that differ")
    arguments = parser.parse_args()

    counts = collections.Counter()
    met = set()
    differences = []
    with concurrent.futures.ProcessPoolExecutor(arguments.jobs) as pool:
        for some, elements, found in pool.map(run_batch, *zip(*batches(arguments))):
            counts += some
            met |= elements
            differences += found
    for index, difference, content in differences[:50]:
        print(f"document {index} of seed {arguments.seed}: {difference[:1000]}")
        if arguments.keep:
            pathlib.Path(arguments.keep, f"{index}.orvo").write_bytes(content)
    summarise(counts, len(differences))
    missing = ROWS.keys() - met
    if missing:
        print(f"no document contained these elements in these states: {sorted(missing)}")
    return 1 if differences or (missing and arguments.count >= ENOUGH) else 0


if __name__ == "__main__":
    sys.exit(main())
