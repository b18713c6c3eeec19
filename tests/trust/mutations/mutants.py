"""Mutants: the source with one small mistake, made by an operator, such as an off-by-one comparison or a table row
with its neighbour's handler. The source and a seed determine the mutants and their order.
"""

import dataclasses
import os
import random
import re


@dataclasses.dataclass(frozen=True)
class Target:
    """A file to make mistakes in. A header lists the sources that use it, which are compiled instead."""
    group: str
    path: str
    sources: tuple = ()


CLIP_SOURCES = tuple(f"plugin/elements/clips/{name}.cpp" for name in ("AudioClips", "MidiClips", "VideoClips"))
TARGETS = (
    Target("dispatch", "plugin/serializer/ElementTable.cpp"),
    Target("dispatch", "plugin/serializer/SerializerImpl.cpp"),
    Target("dispatch", "format/States.h",
           ("plugin/serializer/ElementTable.cpp", "plugin/serializer/SerializerImpl.cpp",
            "plugin/elements/tracks/Tracks.cpp", "plugin/elements/clips/Fades.cpp")),
    Target("dispatch", "plugin/xml/SessionXMLDefaultHandler.cpp"),
    Target("dispatch", "plugin/xml/TagAttributes.h",
           ("plugin/xml/SessionXMLDefaultHandler.cpp", "plugin/elements/clips/CommonClipAttributes.cpp",
            "plugin/elements/clips/AudioClips.cpp", "plugin/elements/tracks/Tracks.cpp")),
    Target("values", "format/ValueEncoding.cpp"),
    Target("values", "format/Encodings.h", (*CLIP_SOURCES, "plugin/elements/tracks/Tracks.cpp")),
    Target("values", "format/Rows.h", (*CLIP_SOURCES, "plugin/elements/tracks/Tracks.cpp")),
    Target("values", "plugin/serializer/RecordAttributes.h", (*CLIP_SOURCES, "plugin/elements/tracks/Tracks.cpp")),
    Target("values", "platform/kelcore/Numbers.cpp"),
    Target("values", "platform/kelcore/BinaryText.cpp"),
    Target("audio clip", "plugin/elements/clips/AudioClips.cpp"),
    Target("audio clip", "format/clips/Clip.h", ("plugin/serializer/SerializerImpl.cpp", *CLIP_SOURCES)),
    Target("audio clip", "plugin/elements/clips/CommonClipAttributes.cpp"),
    Target("audio clip", "plugin/elements/clips/CommonClipAttributes.h", CLIP_SOURCES),
    Target("audio clip", "plugin/elements/clips/ReadState.h", ("plugin/serializer/SerializerImpl.cpp", *CLIP_SOURCES)),
    Target("track", "format/tracks/Track.h",
           ("plugin/serializer/SerializerImpl.cpp", "plugin/elements/tracks/Tracks.cpp",
            "plugin/elements/tracks/VideoTracks.cpp", "plugin/elements/tracks/TrackParameters.cpp")),
    Target("track", "plugin/elements/tracks/Tracks.cpp"),
    Target("track", "plugin/elements/tracks/TrackParameters.cpp"),
    Target("track", "plugin/elements/tracks/ReadState.h",
           ("plugin/serializer/SerializerImpl.cpp", "plugin/elements/tracks/Tracks.cpp",
            "plugin/elements/tracks/VideoTracks.cpp", "plugin/elements/tracks/TrackAudioParameters.cpp")),
)


@dataclasses.dataclass(frozen=True)
class Mutant:
    target: Target
    operator: str
    changes: tuple  # of (line index, line before, line after)
    within: str  # the enclosing function or type

    @property
    def key(self):
        """Identifies the mutant even if its line moves."""
        return self.target.path, self.within, self.what

    @property
    def what(self):
        return "; ".join(f"{before.strip()} -> {after.strip() or '(nothing)'}" for _, before, after in self.changes)

    def __str__(self):
        return f"{self.target.path}:{self.changes[0][0] + 1} [{self.operator}] {self.what}"

    def apply(self, lines):
        changed = list(lines)
        for index, before, after in self.changes:
            assert changed[index] == before
            changed[index] = after
        return changed


def mask(line):
    """The line with comments and the content of literals blanked, at the same length."""
    blank = re.sub(r'"(?:[^"\\]|\\.)*"|\'(?:[^\'\\]|\\.)+\'',
                   lambda literal: literal[0][0] + "\x00" * (len(literal[0]) - 2) + literal[0][-1], line)
    comment = blank.find("//")
    return blank if comment < 0 else blank[:comment] + " " * (len(blank) - comment)


class Source:
    """A file's lines, original and masked. Excludes lines of the preprocessor and of namespaces."""

    def __init__(self, text):
        self.lines = text.split("\n")
        self.masked = ["" if line.startswith(("#", "namespace", "using")) else mask(line) for line in self.lines]

    def substitutions(self, pattern, replacement):
        """Yields a mutant for each match, replaced by a text or by the result of a function."""
        for index, masked in enumerate(self.masked):
            for match in re.finditer(pattern, masked):
                line = self.lines[index]
                made = replacement(match, line) if callable(replacement) else match.expand(replacement)
                yield ((index, line, line[:match.start()] + made + line[match.end():]),)

    def statements(self):
        """Yields the first and the last line of each statement that occupies whole lines."""
        start = None
        for index, masked in enumerate(self.masked):
            text = masked.strip()
            if text and start is None:
                start = index
            if text.endswith(("{", "}", ":", "},")):
                start = None
            elif text.endswith(";"):
                yield start, index
                start = None

    def around(self, index):
        """The name of the function, type or value that contains a line, taken from the nearest line at the margin."""
        begin = next((self.masked[place] for place in range(index, -1, -1)
                      if re.match(r"(?!public:|private:|protected:)[\w:]", self.masked[place])), "")
        name = re.search(r"([\w:~]+)\(", begin) or re.search(r"(\w+)(?: final.*)?(?:\[.*| = .*| \{|$)", begin)
        return name[1] if name else ""

    def tables(self):
        """Yields the rows of each table, which are separate lines in braces, with their fields."""
        rows = []
        for index, masked in enumerate([*self.masked, "end"]):
            fields = row_fields(masked)
            if fields:
                rows.append((index, [self.lines[index][begin:end] for begin, end in fields], fields))
            elif rows and masked.strip():
                yield rows
                rows = []

    def with_fields(self, row, fields):
        index, _, spans = row
        line = self.lines[index]
        return index, line, line[:spans[0][0]] + ", ".join(fields) + line[spans[-1][1]:]


def row_fields(masked):
    """The positions of the fields of a table row; None if the line is not one."""
    if not re.fullmatch(r"\s+\{.*\},?", masked):
        return []
    first = masked.index("{") + 1
    last = masked.rindex("}")
    depth = 0
    spans = []
    for place in range(first, last):
        depth += (masked[place] in "{(<") - (masked[place] in "})>")
        if depth == 0 and masked[place] == ",":
            spans.append((first, place))
            first = place + 2
    return [*spans, (first, last)] if spans and depth == 0 else []


def swapped(words, around=r"{}"):
    """An operator that exchanges two words."""
    def operator(source):
        for word, other in (words, words[::-1]):
            yield from source.substitutions(around.format(re.escape(word)), other.replace("\\", "\\\\"))
    return operator


def limits(source):
    for word, other in ((" < ", " <= "), (" <= ", " < "), (" > ", " >= "), (" >= ", " > ")):
        yield from source.substitutions(word, other)


def conditions(source):
    # Leaves conditions that are a single comparison to the operator for equality.
    yield from source.substitutions(r"\b(if|while) \((?!!)((?:[^;=<>&|{}]|->)+|[^;{}]*(?:&&|\|\||[<>])[^;{}]*)\) \{$",
                                    lambda match, line: f"{match[1]} (!({line[match.start(2):match.end(2)]})) {{")
    yield from source.substitutions(r"(?<![\w)=])!(?=[\w(])", "")


def constants(source):
    if "#pragma once" in source.lines:
        return
    for step in (1, -1):
        yield from source.substitutions(r"(?<![\w.\x00])\d+(?![\w.])", lambda match, _: str(int(match[0]) + step))


def defaults(source):
    if "#pragma once" not in source.lines:
        return
    yield from source.substitutions(r"(?<= = )-?\d+(\.\d+)?(?=;)",
                                    lambda match, _: str((float if match[1] else int)(match[0]) + 1))
    yield from source.substitutions(r"(?<= = )(true|false)(?=;)", lambda match, _: flipped(match[0]))


def flipped(word):
    return "false" if word == "true" else "true"


def truths(source):
    if "#pragma once" not in source.lines:
        yield from source.substitutions(r"\b(true|false)\b", lambda match, _: flipped(match[0]))


def texts(source):
    yield from source.substitutions(r'(?<=")\x00+(?=")', lambda match, line: line[match.start():match.end() - 1])
    yield from source.substitutions(r"(?<=')\x00(?=')", lambda match, line: chr(ord(line[match.start()]) + 1))


def returns(source):
    yield from source.substitutions(r"\breturn (?!\{\};|true;|false;)[^;]+;", "return {};")


def choices(source):
    yield from source.substitutions(r" \? (.+) : ([^;]+)(?=;)",
                                    lambda match, line: f" ? {line[match.start(2):match.end(2)]}"
                                                        f" : {line[match.start(1):match.end(1)]}")


# A jump, a call or an update of a variable, but no declaration.
REMOVABLE = re.compile(r"(throw\b.*|break|continue|return);|[\w:.*()>-]+(\(| [+-]?= )[^{}]*;|(\+\+|--)[\w.]+;")


def removals(source):
    for first, last in source.statements():
        text = " ".join(line.strip() for line in source.masked[first:last + 1])
        if REMOVABLE.fullmatch(text):
            indent = re.match(r"\s*", source.lines[first])[0]
            yield tuple((index, source.lines[index], indent + ";" if index == last else "")
                        for index in range(first, last + 1))


def exchanged_fields(source):
    for rows in source.tables():
        for row, after in zip(rows, rows[1:]):
            for field in range(min(len(row[1]), len(after[1]))):
                mine, other = list(row[1]), list(after[1])
                mine[field], other[field] = other[field], mine[field]
                if mine != row[1]:
                    yield source.with_fields(row, mine), source.with_fields(after, other)


def removed_rows(source):
    for rows in source.tables():
        for index, _, _ in rows:
            yield ((index, source.lines[index], ""),)


def shortened_rows(source):
    for rows in source.tables():
        fewest = min(len(row[1]) for row in rows)
        for row in rows:
            if len(row[1]) > fewest:
                yield (source.with_fields(row, row[1][:-1]),)


OPERATORS = {
    "equality": swapped((" == ", " != ")),
    "limit": limits,
    "condition negated": conditions,
    "and/or": swapped((" && ", " || ")),
    "sum": swapped((" + ", " - ")),
    "step": swapped(("++", "--"), r"{}(?=\w)"),
    "constant": constants,
    "default": defaults,
    "truth": truths,
    "text": texts,
    "return value": returns,
    "choice": choices,
    "statement removed": removals,
    "fields exchanged": exchanged_fields,
    "row removed": removed_rows,
    "row shortened": shortened_rows,
}


def read_source(root, path):
    with open(os.path.join(root, path), encoding="utf-8") as file:
        return Source(file.read())


def take_turns(lists):
    """Takes an item from each list in turn until all are empty."""
    turn = [list(reversed(one)) for one in lists]
    while any(turn):
        for one in turn:
            if one:
                yield one.pop()


def find_mutants(root, seed):
    """All mutants. Any prefix contains equal shares of the groups and, within a group, of the operators in each file;
    otherwise the table of elements would provide half of them."""
    groups = {}
    for target in TARGETS:
        source = read_source(root, target.path)
        known = set()
        for name, operator in OPERATORS.items():
            found = [Mutant(target, name, changes, source.around(changes[0][0])) for changes in operator(source)]
            found = [mutant for mutant in found if mutant.changes not in known]
            known.update(mutant.changes for mutant in found)
            random.Random(f"{seed} {target.path} {name}").shuffle(found)
            groups.setdefault(target.group, []).append(found)
    return list(take_turns([list(take_turns(files)) for files in groups.values()]))
