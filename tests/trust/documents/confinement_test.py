#!/usr/bin/env python3
"""confinement_test.py READER SESSION: a read opens the session and nothing else; a save opens the folder, the
existing file and one temporary file; neither creates a socket or starts a program.
"""

import json
import os
import re
import signal
import subprocess
import sys
import tempfile


def run(*arguments):
    return subprocess.run(arguments, capture_output=True, check=False)


def problems_of(reader, session, folder, name):
    ended = run(reader, session, os.path.join(folder, name))
    if ended.returncode != 0:
        yield f"the reader ended with {ended.returncode}"
        return
    report = json.loads(ended.stdout)
    if report["result"] != 0 or report["opened"] != [session]:
        yield f"the read: {report['result']}, opened {report['opened']}"
    saved = report["saved"]
    temporary = re.compile(re.escape(f".{name}.orvo-tmp-") + "[0-9a-f]{12}")
    others = [path for path in saved["opened"] if path not in (folder + "/", ".", name) and not temporary.fullmatch(path)]
    made = [path for path in saved["opened"] if temporary.fullmatch(path)]
    if saved["result"] != 0 or others or len(made) != 1:
        yield f"the save: {saved['result']}, opened {saved['opened']}"
    if os.listdir(folder) != [name]:
        yield f"it leaves {os.listdir(folder)}"


def main():
    reader, session = sys.argv[1:]
    problems = [f"{what} goes unnoticed" for what in ("--socket", "--program")
                if run(reader, what).returncode != -signal.SIGSYS]
    with tempfile.TemporaryDirectory(prefix="orvo-confined-") as folder:
        for what in ("a new file", "an old file"):
            problems += [f"{what}: {problem}" for problem in problems_of(reader, session, folder, "copy.orvo")]
    print("\n".join(problems) or "no problem")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
