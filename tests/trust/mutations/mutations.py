#!/usr/bin/env python3
"""mutations.py: makes some 200 small mistakes in the dispatch, the value encodings, audio clips and tracks, one at a
time, and runs the tests until one of them notices. The tests must notice 90 in a hundred, and mutation_survivors.py
must explain every mistake that they do not notice.

It needs an up-to-date release build and does not change it: it compiles and links in a folder of its own. Mistakes
that do not compile or do not change the machine code do not count.
"""

import argparse
import collections
import concurrent.futures
import dataclasses
import functools
import json
import os
import queue
import re
import shlex
import shutil
import signal
import subprocess
import sys
import tempfile
import time

from mutants import OPERATORS, TARGETS, find_mutants, read_source
from mutation_survivors import SURVIVORS

ROOT = os.path.abspath(os.path.join(os.path.dirname(__file__), "../../.."))
NEEDED_SHARE = 0.9
SLOW_TEST_SECONDS = 0.05
MEMORY_BYTES = 4 << 30
# In this order, except that the slow tests of the first program come last.
PROGRAMS = ("plugin_tests", "plugin_entry_tests", "reference_host_tests", "recorder_tests", "toolkit_tests",
            "platform_tests", "docs_tests", "plugin_character_tests")


@dataclasses.dataclass(frozen=True)
class Outcome:
    mutant: object
    kind: str  # "caught", "survived", "does not compile" or "same code"
    by: str = ""
    test: str = ""


@dataclasses.dataclass(frozen=True)
class Stage:
    """A program, or a part of its tests, that passes within `seconds` without a mistake."""
    program: str
    seconds: float
    filter: str = "*"


def run(command, **options):
    return subprocess.run(command, capture_output=True, text=True, errors="replace", check=False, **options)


class Build:
    """The commands with which the build makes objects, libraries and programs."""

    def __init__(self, folder):
        self.folder = folder
        with open(os.path.join(folder, "compile_commands.json"), encoding="utf-8") as file:
            self.compiles = {os.path.relpath(entry["file"], ROOT): shlex.split(entry["command"])
                             for entry in json.load(file)}

    @functools.cache
    def link_of(self, name):
        """The command that links a program or a library, and its output."""
        commands = run(["ninja", "-C", self.folder, "-t", "commands", name]).stdout.splitlines()
        command = next(part for part in commands[-1].split(" && ") if " -o " in part)
        return command, re.search(r" -o (\S+)", command)[1]

    def links_plugin(self, program):
        return "liborvo_plugin.a" in self.link_of(program)[0]

    def object_of(self, source):
        command = self.compiles[source]
        return command[command.index("-o") + 1]

    def compile(self, source, overlay, made):
        """Compiles a source, or the changed copy of it in `overlay`, with the headers of `overlay` first."""
        command = list(self.compiles[source])
        command[command.index("-o") + 1] = made
        changed = os.path.join(overlay, source)
        if os.path.exists(changed):
            command[-1] = changed
        return run([command[0], "-I", overlay, *command[1:], "-w"], cwd=self.folder).returncode == 0

    def link(self, name, objects, folder):
        """Links with the given objects (by source) instead of the build's own."""
        command, output = self.link_of(name)
        made = os.path.join(folder, output)
        os.remove(made)  # a hard link to a file of the build
        extra = []
        for source, compiled in objects.items():
            replaced = command.replace(f" {self.object_of(source)} ", f" {compiled} ")
            # An object before an archive keeps the archive's own copy out.
            extra += [compiled] if replaced == command else []
            command = replaced
        command = command.replace(f" -o {output}", f" {' '.join(extra)} -fuse-ld=gold -o {shlex.quote(made)}")
        linked = run(command, cwd=self.folder, shell=True)
        if linked.returncode != 0:
            raise RuntimeError(f"{name} does not link:\n{linked.stderr}")


class Trial:
    """A private folder for trying one mistake after the other."""

    def __init__(self, build, folder, pristine):
        self.build = build
        self.folder = folder
        self.pristine = pristine

    def renew(self):
        shutil.rmtree(self.folder, ignore_errors=True)
        for part in ("bin", "lib"):
            shutil.copytree(os.path.join(self.pristine, part), os.path.join(self.folder, part), copy_function=os.link)
        for part in ("objects", "overlay", "temporary"):
            os.makedirs(os.path.join(self.folder, part))

    def execute(self, stage, seconds, *options):
        """Runs a stage's tests until one fails, and returns that test, or None if all pass. A test that hangs dies
        with this program, however that ends."""
        command = ["setpriv", "--pdeathsig=KILL", "prlimit", f"--as={MEMORY_BYTES}", "--core=0",
                   f"bin/{stage.program}", "--gtest_brief=1", f"--gtest_filter={stage.filter}", *options]
        environment = {**os.environ, "RC_PARAMS": "seed=1", "TMPDIR": os.path.join(self.folder, "temporary")}
        with subprocess.Popen(command, cwd=self.folder, env=environment, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, start_new_session=True) as process:
            try:
                output = process.communicate(timeout=seconds)[0].decode(errors="replace")
            except subprocess.TimeoutExpired:
                os.killpg(process.pid, signal.SIGKILL)
                process.communicate()
                return "no end"
        if process.returncode == 0:
            return None
        failed = re.search(r"\[  FAILED  \] ([\w./]+)", output)
        return failed[1] if failed else f"ended with {process.returncode}"

    def attempt(self, mutant, stages, unchanged):
        self.renew()
        overlay = os.path.join(self.folder, "overlay")
        changed = os.path.join(overlay, mutant.target.path)
        os.makedirs(os.path.dirname(changed))
        with open(changed, "w", encoding="utf-8") as file:
            file.write("\n".join(mutant.apply(read_source(ROOT, mutant.target.path).lines)))
        objects = {}
        for source in mutant.target.sources or (mutant.target.path,):
            made = os.path.join(self.folder, "objects", source.replace("/", "-") + ".o")
            if not self.build.compile(source, overlay, made):
                return Outcome(mutant, "does not compile")
            if not same_bytes(made, unchanged[source]):
                objects[source] = made
        if not objects:
            return Outcome(mutant, "same code")
        return self.judge(mutant, objects, stages)

    def judge(self, mutant, objects, stages):
        in_platform = mutant.target.path.startswith("platform/")
        to_link = {"kelplatform"} if in_platform else {"OrvoNative"} | {
            stage.program for stage in stages if self.build.links_plugin(stage.program)}
        for stage in stages:
            needed = {stage.program, "kelplatform", "OrvoNative"} if stage.program != stages[0].program else {
                stage.program, "kelplatform"}
            for name in sorted(to_link & needed):
                self.build.link(name, objects, self.folder)
            to_link -= needed
            test = self.execute(stage, max(30, 10 * stage.seconds), "--gtest_fail_fast")
            if test is not None:
                return Outcome(mutant, "caught", stage.program, test)
        return Outcome(mutant, "survived")


def same_bytes(one, other):
    with open(one, "rb") as first, open(other, "rb") as second:
        return first.read() == second.read()


class Proof:
    def __init__(self, build, folder, jobs):
        self.build = build
        self.pristine = os.path.join(folder, "pristine")
        shutil.copytree(os.path.join(build.folder, "lib"), os.path.join(self.pristine, "lib"),
                        ignore=shutil.ignore_patterns("*.a"))
        os.makedirs(os.path.join(self.pristine, "bin"))
        for program in PROGRAMS:
            shutil.copy2(os.path.join(build.folder, "bin", program), os.path.join(self.pristine, "bin"))
        self.trials = queue.SimpleQueue()
        for number in range(jobs):
            self.trials.put(Trial(build, os.path.join(folder, f"trial-{number}"), self.pristine))
        self.pool = concurrent.futures.ThreadPoolExecutor(jobs)
        self.unchanged = self.compile_unchanged(os.path.join(folder, "unchanged"))
        self.stages = [stage for program in PROGRAMS for stage in self.measure(program)]
        self.stages.append(self.stages.pop(1))  # the slow tests of the first program

    def compile_unchanged(self, folder):
        os.makedirs(folder)
        compiled = {}
        for source in sorted({source for target in TARGETS for source in target.sources or (target.path,)}):
            compiled[source] = os.path.join(folder, source.replace("/", "-") + ".o")
            if not self.build.compile(source, folder, compiled[source]):
                raise RuntimeError(f"{source} does not compile as it is")
        return compiled

    def measure(self, program):
        """The program as one stage, or the first program as a quick and a slow one. All must pass without a mistake."""
        trial = self.trials.get()
        trial.renew()
        report = os.path.join(trial.folder, "times.json")
        started = time.monotonic()
        failed = trial.execute(Stage(program, 0), 600, f"--gtest_output=json:{report}")
        seconds = time.monotonic() - started
        if failed is not None:
            raise RuntimeError(f"{program} fails without a mistake: {failed}")
        with open(report, encoding="utf-8") as file:
            suites = json.load(file)["testsuites"]
        self.trials.put(trial)
        if program != PROGRAMS[0]:
            return [Stage(program, seconds)]
        times = {f"{suite['name']}.{test['name']}": float(test["time"].rstrip("s"))
                 for suite in suites for test in suite["testsuite"]}
        slow = ":".join(name for name, taken in times.items() if taken > SLOW_TEST_SECONDS)
        quick_seconds = sum(taken for taken in times.values() if taken <= SLOW_TEST_SECONDS)
        return [Stage(program, quick_seconds, f"-{slow}"), Stage(program, seconds, slow)]

    def attempt(self, mutant):
        trial = self.trials.get()
        try:
            return trial.attempt(mutant, self.stages, self.unchanged)
        finally:
            self.trials.put(trial)

    def outcomes(self, mutants, count):
        """Yields the outcomes of mutants until enough of them are mistakes that a test could notice."""
        rest = iter(mutants)
        while count > 0:
            batch = [mutant for mutant, _ in zip(rest, range(count))]
            if not batch:
                return
            for outcome in self.pool.map(self.attempt, batch):
                count -= outcome.kind in ("caught", "survived")
                yield outcome


def share(outcomes):
    caught = sum(outcome.kind == "caught" for outcome in outcomes)
    return f"{caught} of {len(outcomes)}"


def summarize(outcomes):
    """Prints which mistakes were caught, and by what, and returns the number of problems."""
    tried = [outcome for outcome in outcomes if outcome.kind in ("caught", "survived")]
    passed_over = collections.Counter(outcome.kind for outcome in outcomes if outcome not in tried)
    sections = (("Group", lambda mutant: mutant.target.group, dict.fromkeys(target.group for target in TARGETS)),
                ("File", lambda mutant: mutant.target.path, [target.path for target in TARGETS]),
                ("Operator", lambda mutant: mutant.operator, OPERATORS))
    for title, key, names in sections:
        print(f"\n{title}: caught")
        for name in names:
            of_name = [outcome for outcome in tried if key(outcome.mutant) == name]
            if of_name:
                print(f"  {name:50} {share(of_name)}")
    print("\nCaught by")
    for program, number in collections.Counter(outcome.by for outcome in tried if outcome.by).most_common():
        print(f"  {program:50} {number}")
    print("\nNot counted")
    for kind, number in passed_over.items():
        print(f"  {kind:50} {number}")

    survived = [outcome.mutant for outcome in tried if outcome.kind == "survived"]
    unexplained = 0
    print("\nSurvived")
    for mutant in survived:
        reason = SURVIVORS.get(mutant.key)
        unexplained += reason is None
        print(f"  {mutant}\n      {reason or 'PROBLEM: unexplained'}")
    caught = len(tried) - len(survived)
    print(f"\n{len(tried)} mutants, {caught} caught ({100 * caught / max(len(tried), 1):.1f} %), "
          f"{len(survived)} survived, {unexplained} of them unexplained")
    return unexplained + (caught < NEEDED_SHARE * len(tried))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--count", type=int, default=200, help="how many mistakes to make (200)")
    parser.add_argument("--seed", type=int, default=1, help="which ones (1)")
    parser.add_argument("--only", action="append", default=[], help="only those whose line in the list has this text")
    parser.add_argument("--jobs", type=int, default=1, help="how many at once (1)")
    parser.add_argument("--list", action="store_true", help="only list what could be made, in its order")
    parser.add_argument("--build", default=os.path.join(ROOT, "build/release"), help="the folder of the build")
    arguments = parser.parse_args()

    mutants = [mutant for mutant in find_mutants(ROOT, arguments.seed)
               if not arguments.only or any(text in str(mutant) for text in arguments.only)]
    if arguments.list:
        print(*mutants, sep="\n")
        return 0
    outcomes = []
    with tempfile.TemporaryDirectory(prefix="orvo-mutations-") as folder:
        os.chmod(folder, 0o755)  # some tests run as another user
        proof = Proof(Build(os.path.abspath(arguments.build)), folder, arguments.jobs)
        for outcome in proof.outcomes(mutants, arguments.count):
            print(f"{outcome.kind:16} {outcome.mutant} {outcome.by} {outcome.test}".rstrip(), flush=True)
            outcomes.append(outcome)
    return 1 if summarize(outcomes) or not outcomes else 0


if __name__ == "__main__":
    sys.exit(main())
