#!/usr/bin/env python3
"""Checks which folders include which, and that neither files nor folders include each other in a circle.

    include_rules_test.py ROOT GENERATED

GENERATED is the folder of the files that the build makes; they are included by their paths from there.
"""

import re
import sys
from itertools import takewhile
from pathlib import Path

FOLDERS = ("include", "host", "platform", "format", "plugin", "session", "reference_host", "toolkit", "cli", "tests", "fuzz", "bench", "examples")

# The project headers that a file, or the files of a folder, may include, as patterns of the included path. The
# first row that matches applies. Every folder may include itself.
PROJECT_RULES = (
    ("include", ()),
    ("host", (r"platform/kelcore/Types\.h",)),
    ("platform", ()),
    ("format", (r"platform/kelcore/.*", r"platform/kelmediatypes/.*", r"platform/tbcore/.*")),
    ("plugin/xml", (r"format/.*", r"platform/.*")),
    ("plugin/serializer", (r"format/.*", r"plugin/xml/.*", r"host/.*", r"platform/.*", r"plugin/elements/\w+/ReadState\.h")),
    ("plugin/elements", (r"format/.*", r"plugin/serializer/.*", r"plugin/xml/.*", r"host/.*", r"platform/.*")),
    ("plugin/entry", (r"plugin/serializer/.*", r"host/.*", r"platform/.*")),
    ("session", (r"include/orvo/.*", r"format/.*", r"reference_host/.*", r"platform/.*")),
    ("reference_host", (r"include/orvo/.*", r"host/.*", r"platform/.*")),
    ("toolkit/diff", (r"include/orvo/.*", r"session/.*")),
    ("toolkit/edit", (r"format/.*", r"include/orvo/.*", r"toolkit/.*", r"session/PluginTurn\.h", r"platform/.*")),
    ("toolkit/tables", (r"include/orvo/.*", r"toolkit/.*", r"session/MemberKey\.h", r"platform/.*")),
    ("toolkit/view", (r"include/orvo/.*", r"toolkit/.*", r"session/(MemberKey|json/SessionJson)\.h", r"platform/.*")),
    ("toolkit/interchange", (r"include/orvo/.*", r"toolkit/.*", r"session/(MemberKey|Schema|json/\w+|times/Arithmetic)\.h", r"platform/.*")),
    ("toolkit/ModelPath.h", (r"session/MemberKey\.h",)),
    ("toolkit/redact", (r"format/.*", r"include/orvo/.*", r"toolkit/.*", r"platform/.*")),
    ("toolkit/check", (r"format/.*", r"include/orvo/.*", r"toolkit/.*", r"session/(PluginTurn|MemberKey)\.h", r"platform/.*")),
    ("toolkit/media", (r"include/orvo/.*", r"toolkit/.*", r"platform/.*")),
    ("toolkit/collect", (r"include/orvo/.*", r"toolkit/.*", r"platform/.*")),
    ("toolkit/relink", (r"format/.*", r"include/orvo/.*", r"toolkit/.*", r"platform/.*")),
    ("toolkit", (r"format/.*", r"include/orvo/.*", r"platform/.*")),
    ("cli/verbs/Trace.cpp", (r"include/orvo/.*", r"cli/.*", r"reference_host/.*", r"platform/.*")),
    ("cli", (r"format/.*", r"include/orvo/.*", r"toolkit/.*", r"platform/.*")),
    ("examples", (r"host/.*", r"platform/.*")),
    ("tests", (r".*",)),
    ("fuzz", (r".*",)),
    ("bench", (r"include/orvo/.*", r"toolkit/.*", r"reference_host/.*", r"host/.*", r"platform/.*")),
)

# The files that may include a library's headers, as patterns of the including path. Any file may include
# other libraries.
LIBRARY_RULES = (
    (r"xercesc/", (r"platform/kelcore/BinaryText\.cpp", r"plugin/xml/.*", r"toolkit/scan/.*", r"tests/.*", r"bench/.*")),
    (r"boost/", (r"format/(Inline|Value)Text\.h", r"platform/kelcore/Paths\.cpp", r"plugin/.*", r"reference_host/.*", r"session/times/Arithmetic\.h", r"toolkit/check/RoutingLoops\.cpp", r"tests/.*")),
    (r"nlohmann/", (r"format/PrintFormat\.cpp", r"session/.*", r"reference_host/.*", r"toolkit/.*", r"cli/.*", r"tests/.*", r"bench/.*")),
    (r"sndfile", (r"toolkit/(media|view)/.*", r"tests/.*")),
    (r"openssl/", (r"toolkit/media/.*", r"tests/.*")),
    (r"utf8proc", (r"toolkit/(collect|media|view)/.*", r"cli/terminal/.*")),
    (r"httplib", (r"cli/serve/PageServer\.cpp",)),
    (r"pango", (r"cli/files/PngCanvas\.cpp",)),
    (r"CLI/", (r"cli/.*", r"bench/.*")),
    (r"(gtest|gmock|rapidcheck)", (r"tests/.*",)),
    (r"(zip|zlib)\.h", (r"toolkit/interchange/ZipArchive\.cpp", r"tests/.*")),
    (r"pugixml", (r"toolkit/interchange/.*", r"tests/.*", r"bench/.*")),
    (r"(expat|libxml)", (r"tests/.*", r"bench/.*")),
)

# The arrow between two folders that may close a circle: the receiver of events declares the handlers of all
# elements.
CIRCULAR = ("plugin/serializer", "plugin/elements")

# Public headers include the standard library and each other.
STANDARD_HEADERS = (r"[a-z_]+",)

# Where public headers stand in the project, as everybody includes them: <orvo/Session.h>.
PUBLIC = "orvo/"

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)


def fits(path, patterns):
    return any(re.fullmatch(pattern, path) for pattern in patterns)


def begins(path, pattern):
    return re.match(pattern, path) is not None


def folder_rule(path):
    for folder, allowed in PROJECT_RULES:
        if path == folder or path.startswith(folder + "/"):
            return folder, allowed
    return None, ()


def check_file(path, includes, known):
    folder, allowed = folder_rule(path)
    if folder is None:
        yield f"{path}: its folder has no include rule"
        return
    seen = set()
    for kind, included in includes:
        if kind == "<" and folder == "include" and not fits(included, STANDARD_HEADERS):
            yield f"{path}: may include the standard library only, not <{included}>"
        # A list of rows (.def) may be expanded more than once.
        if included in seen and not included.endswith(".def"):
            yield f"{path}: includes {included} twice"
        seen.add(included)
        if kind == "<":
            for library, users in LIBRARY_RULES:
                if begins(included, library) and not fits(path, users):
                    yield f"{path}: may not include <{included}>"
        elif included not in known:
            yield f"{path}: includes \"{included}\", which is not a path from the top of the project"
        elif not included.startswith(folder + "/") and not fits(included, allowed):
            yield f"{path}: may not include \"{included}\""


def folder_arrow(path, included):
    """The two folders side by side that the include leads from and to; None if one file's folder holds the other's."""
    own, other = Path(path).parent.parts, Path(included).parent.parts
    shared = sum(1 for _ in takewhile(lambda pair: pair[0] == pair[1], zip(own, other)))
    if shared == min(len(own), len(other)):
        return None
    return "/".join(own[:shared + 1]), "/".join(other[:shared + 1])


def folder_graph(graph):
    arrows = {folder_arrow(path, included) for path, targets in graph.items() for included in targets}
    folders = {}
    for start, end in sorted(arrows - {None, CIRCULAR}):
        folders.setdefault(start, []).append(end)
    return folders


def circles(graph):
    """Yields circles of includes; at least one if there are any."""
    state = {}

    def visit(node, trail):
        state[node] = "open"
        for target in graph.get(node, ()):
            if state.get(target) == "open":
                yield trail[trail.index(target):] + [target]
            elif target not in state:
                yield from visit(target, trail + [target])
        state[node] = "done"

    for node in sorted(graph):
        if node not in state:
            yield from visit(node, [node])


def main():
    root = Path(sys.argv[1])
    files = sorted(
        file.relative_to(root).as_posix()
        for folder in FOLDERS
        for file in (root / folder).rglob("*")
        if file.suffix in (".h", ".cpp", ".def")
    )
    generated = Path(sys.argv[2])
    known = set(files) | {file.relative_to(generated).as_posix() for file in generated.rglob("*")}
    findings, graph = [], {}
    for path in files:
        text = (root / path).read_text(encoding="utf-8")
        includes = [
            ('"', "include/" + match[2]) if match[1] == "<" and match[2].startswith(PUBLIC) else (match[1], match[2])
            for match in INCLUDE.finditer(text)
        ]
        findings += check_file(path, includes, known)
        if path.endswith(".h") and len(re.findall(r"^#pragma once$", text, re.MULTILINE)) != 1:
            findings.append(f"{path}: a header needs exactly one \"#pragma once\"")
        graph[path] = [included for kind, included in includes if kind == '"']
    for arrows in (graph, folder_graph(graph)):
        findings += ["a circle: " + " -> ".join(circle) for circle in circles(arrows)]

    if not files:
        findings.append(f"no sources under {root}")
    print("\n".join(findings) if findings else f"{len(files)} files follow the include rules")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
