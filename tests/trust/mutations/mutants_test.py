#!/usr/bin/env python3
"""mutants_test.py: every operator of mutants.py changes lines as expected and still finds places in the current
source; mutation_survivors.py explains only mistakes that can still be made.
"""

import collections
import os
import sys

from mutants import OPERATORS, TARGETS, Source, find_mutants
from mutation_survivors import SURVIVORS

ROOT = os.path.abspath(os.path.join(os.path.dirname(__file__), "../../.."))
NEEDED = 200

# Sample lines, and everything that the operator must make of them.
SAMPLES = {
    "equality": ("if (a == b) {  // a == b", ["if (a != b) {  // a == b"]),
    "limit": ('while (a < b && c >= d && text == " > ") {',
              ['while (a <= b && c >= d && text == " > ") {', 'while (a < b && c > d && text == " > ") {']),
    "condition negated": ("if (found(a)) {\nif (!found(a)) {\nif (a == b) {\nif (a == b && c) {",
                          ["if (!(found(a))) {\nif (!found(a)) {\nif (a == b) {\nif (a == b && c) {",
                           "if (found(a)) {\nif (!found(a)) {\nif (a == b) {\nif (!(a == b && c)) {",
                           "if (found(a)) {\nif (found(a)) {\nif (a == b) {\nif (a == b && c) {"]),
    "and/or": ("return a && b;", ["return a || b;"]),
    "sum": ("return a + b - c;", ["return a - b - c;", "return a + b + c;"]),
    "step": ("++index;", ["--index;"]),
    "constant": ('at(1, u"2", int64{a});', ['at(2, u"2", int64{a});', 'at(0, u"2", int64{a});']),
    "default": ("#pragma once\n    int32 mode = -1;\n    double hue = 1.5;\n    bool shown = true;",
                ["#pragma once\n    int32 mode = 0;\n    double hue = 1.5;\n    bool shown = true;",
                 "#pragma once\n    int32 mode = -1;\n    double hue = 2.5;\n    bool shown = true;",
                 "#pragma once\n    int32 mode = -1;\n    double hue = 1.5;\n    bool shown = false;"]),
    "truth": ("return is_true(false);", ["return is_true(true);"]),
    "text": ("find(u\"gain\", '.');", ["find(u\"gai\", '.');", "find(u\"gain\", '/');"]),
    "return value": ("return a + b;\nreturn {};\nreturn true;", ["return {};\nreturn {};\nreturn true;"]),
    "choice": ("return a ? b::c : d;", ["return a ? d : b::c;"]),
    "statement removed": ("{\n  int a = 0;\n  a = b;\n  track.Set(a,\n            b);\n  return c;\n  break;",
                          ["{\n  int a = 0;\n  ;\n  track.Set(a,\n            b);\n  return c;\n  break;",
                           "{\n  int a = 0;\n  a = b;\n\n  ;\n  return c;\n  break;",
                           "{\n  int a = 0;\n  a = b;\n  track.Set(a,\n            b);\n  return c;\n  ;"]),
    "fields exchanged": ("  {a, {b, c}, d},\n  {a, {e}, f, g},", ["  {a, {e}, d},\n  {a, {b, c}, f, g},",
                                                                   "  {a, {b, c}, f},\n  {a, {e}, d, g},"]),
    "row removed": ("  {a, b},\n  {c, d},", ["\n  {c, d},", "  {a, b},\n"]),
    "row shortened": ("  {a, b},\n  {c, d, e},", ["  {a, b},\n  {c, d},"]),
}


def problems_of_samples():
    for name, operator in OPERATORS.items():
        text, expected = SAMPLES[name]
        source = Source(text)
        made = []
        for changes in operator(source):
            lines = list(source.lines)
            for index, before, after in changes:
                if lines[index] != before:
                    yield f"{name}: {before!r} is not the source"
                lines[index] = after
            made.append("\n".join(lines))
        if made != expected:
            yield f"{name}: {made} instead of {expected}"


def problems_of_source(mutants):
    if len(mutants) < NEEDED:
        yield f"there are only {len(mutants)} mutants"
    for name in OPERATORS:
        if not any(mutant.operator == name for mutant in mutants[:NEEDED]):
            yield f"{name}: not among the first {NEEDED} mutants"
    for target in TARGETS:
        if not any(mutant.target == target for mutant in mutants):
            yield f"{target.path}: no mutants"
        for source in target.sources:
            if not os.path.exists(os.path.join(ROOT, source)):
                yield f"{source}: no such file"
    changes = collections.Counter((mutant.target.path, mutant.changes) for mutant in mutants)
    yield from (f"{change}: occurs {number} times" for change, number in changes.items() if number > 1)
    yield from (f"{mutant}: changes nothing" for mutant in mutants
                if any(before == after for _, before, after in mutant.changes))


def problems_of_survivors(mutants):
    known = collections.Counter(mutant.key for mutant in mutants)
    yield from (f"{key}: explained, but matches {known[key]} mutants" for key in SURVIVORS if known[key] != 1)


def main():
    mutants = find_mutants(ROOT, 1)
    problems = [*problems_of_samples(), *problems_of_source(mutants), *problems_of_survivors(mutants)]
    print(*problems, f"{len(mutants)} mutants, {len(problems)} problems", sep="\n")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
