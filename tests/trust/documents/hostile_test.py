#!/usr/bin/env python3
"""hostile_test.py READER [--factor F]: reads every hostile document in its own process.

The plug-in must read a document or refuse it with one located message, within a second and 256 MiB,
and open nothing but the document. F relaxes the limits for a slower, larger build.
"""

import argparse
import json
import os
import re
import subprocess
import sys
import tempfile

from hostile_documents import SILENT, documents

SECONDS = 1.0
KIBIBYTES = 256 * 1024
# The parser reports no place for a first line that it cannot decode.
LOCATED = re.compile(
    r"XML FATAL ERROR: \((line: [1-9]\d*, col: [1-9]\d*\) .*/[^/]+\.orvo\b"
    r"|line: 0, col: 0\) unable to decode first line in entity '.*/[^/]+\.orvo')"
)


def problems_of(document, path, reader, factor):
    try:
        run = subprocess.run([reader, path], capture_output=True, timeout=60 * factor, check=False)
    except subprocess.TimeoutExpired:
        return ["it did not end"]
    if run.returncode != 0:
        return [f"the reader ended with {run.returncode}: {run.stderr[-2000:].decode(errors='replace')}"]
    report = json.loads(run.stdout)
    return list(judge(document, path, report, factor))


def judge(document, path, report, factor):
    messages = [text for text in report["messages"] if not text.startswith("XML WARNING")]
    if document.refused is None:
        if report["result"] != 0 or messages:
            yield f"it was not read: {report['result']} {messages}"
    elif report["result"] != -4:
        yield f"it was read: {report['result']}"
    elif document.refused is SILENT:
        if messages:
            yield f"an unexpected message: {messages}"
    elif len(messages) != 1 or not LOCATED.match(messages[0]):
        yield f"not one located message: {messages}"
    elif document.refused not in messages[0]:
        yield f"not refused for {document.refused!r}: {messages}"
    if report["opened"] != [path]:
        yield f"it opened {report['opened']}"
    if report["liveNodes"] != 0:
        yield f"{report['liveNodes']} host objects leaked"
    if report["seconds"] > SECONDS * factor:
        yield f"it took {report['seconds']:.2f} s"
    if report["peakKiB"] > KIBIBYTES * factor:
        yield f"it took {report['peakKiB'] // 1024} MiB"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("reader")
    parser.add_argument("--factor", type=float, default=1.0)
    arguments = parser.parse_args()

    count = failures = 0
    names = set()
    with tempfile.TemporaryDirectory(prefix="orvo-hostile-") as folder:
        for document in documents():
            assert document.name not in names, document.name
            names.add(document.name)
            path = os.path.join(folder, document.name + ".orvo")
            with open(path, "wb") as file:
                file.write(document.content)
            found = problems_of(document, path, arguments.reader, arguments.factor)
            os.remove(path)
            count += 1
            failures += bool(found)
            for problem in found:
                print(f"{document.name}: {problem}")
    print(f"{count} hostile documents, {failures} problems")
    return 1 if failures or count < 140 else 0


if __name__ == "__main__":
    sys.exit(main())
