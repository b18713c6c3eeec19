#!/usr/bin/env python3
"""Checks the JSON Schema of sessions that is installed: it is one, it takes what the tool writes, it refuses what the tool
refuses, and its keys are the session format's terms.

    json_schema_test.py ROOT ORVO BUILD CMAKE PRINT_FORMAT
"""

import copy
import json
import random
import subprocess
import sys
import tempfile
from pathlib import Path

from jsonschema import Draft202012Validator

WRITTEN = ("examples/*/*.orvo", "tests/golden/*.orvo")
SOURCES = "examples/*/*.json"
SCHEMA = "installed/share/orvo/orvo-session.schema.json"

# The keys that are no terms of the format, because the model means something else by them or has no term for it.
OWN_TERMS = {
    "formatVersion", "major", "minor", "formatDescription", "versionDependentValue", "musicalTime", "kind", "instrument",
    "outputTrackID", "hardwareOutputID", "clipsOnly", "bypassed", "inputChannels", "outputChannels", "editorRect",
    "keyframes", "path",
}

# Sessions that are right: each is a place in JSON and what stands there.
RIGHT = (
    ("/audioTracks/0/kind", 7), ("/audioTracks/0/kind", "bus"), ("/audioTracks/0/kind", 2),
    ("/audioTracks/0/trackHue", "NaN"), ("/audioTracks/0/trackHue", -1.5e300), ("/audioTracks/0/trackPan", None),
    ("/audioTracks/0/effectsRack/slots", [None, {}]), ("/metronome/pattern", ["none", "upBeat", 9]),
    ("/metronome/globalTrackInfo/tempoEvents", "AAECAw=="), ("/metronome/globalTrackInfo/tempoEvents", ""),
    ("/audioTracks/0/trackFader/parameters/4294967295", {}), ("/audioTracks/0/trackFader/parameters/0/name", "\ud800"),
    ("/metronome/metronomeTrack/id", 4294967295), ("/duration", -(2**63)), ("/sampleRate", 2**32 - 1),
    ("/audioTracks/0/trackFader/parameters/0/parameterValue", 3.4028235e38),
)

# Sessions that are wrong.
WRONG = (
    ("/tempo", 120), ("/files/0/Path", "a"), ("/audioTracks/0/fadeIn", {}), ("/metronome/pattern/0/x", 1),
    ("/sampleRate", "48000"), ("/sampleRate", 48000.5), ("/sampleRate", -1), ("/sampleRate", 2**32), ("/sampleRate", None),
    ("/sampleRate", True), ("/duration", 2**63), ("/duration", -(2**63) - 1), ("/formatVersion/major", 2**31),
    ("/formatVersion/minor", -(2**31) - 1), ("/formatVersion", None), ("/formatDescription", 1), ("/formatDescription", None),
    ("/files", {}), ("/files/0", []), ("/files/0", None), ("/files/0/id", 2**32 - 1), ("/audioTracks/0/id", 2**32 - 1),
    ("/videoTracks/0/id", 2**32 - 1), ("/audioTracks", None), ("/audioTracks/0/kind", "Bus"), ("/audioTracks/0/kind", ""),
    ("/audioTracks/0/kind", 2**32), ("/audioTracks/0/kind", 1.5), ("/audioTracks/0/kind", None), ("/audioTracks/0/select", 1),
    ("/audioTracks/0/trackHue", "nan"), ("/audioTracks/0/trackHue", None), ("/audioTracks/0/trackFader", []),
    ("/audioTracks/0/trackFader/parameters", []), ("/audioTracks/0/trackFader/parameters/07", {}),
    ("/audioTracks/0/trackFader/parameters/4294967296", {}), ("/audioTracks/0/trackFader/parameters/x", {}),
    ("/audioTracks/0/trackFader/parameters/0", None), ("/audioTracks/0/trackFader/parameters/0/parameterValue", 3.5e38),
    ("/audioTracks/0/trackFader/parameters/0/parameterKeyframes/keyframes/0/type", "spline"),
    ("/audioTracks/0/trackFader/parameters/0/parameterKeyframes/keyframes/0/type", 1),
    ("/audioTracks/0/audioClips/0/fadeIn/type", "linear"), ("/audioTracks/0/audioClips/0/takes/0", "1"),
    ("/audioTracks/0/audioClips/0/channelMap/0", None), ("/audioTracks/0/audioClips/0/properties", 0),
    ("/metronome", None), ("/metronome/soundSet", "bells"), ("/metronome/pattern", "upBeat"), ("/metronome/pattern/0", True),
    ("/metronome/globalTrackInfo/tempoEvents", "A"), ("/metronome/globalTrackInfo/tempoEvents", "AB=="),
    ("/metronome/globalTrackInfo/tempoEvents", "!AAA"), ("/metronome/globalTrackInfo/tempoEvents", [1]),
    ("/timeFormatState/timeFormat", "decimal"), ("/audioDevice/inputPorts/0/id", 2**31), ("", []), ("", None),
)

MUTATIONS = 60
MUTANTS = (None, True, -1, 7, 2**40, 1.5, -1e300, "", "NaN", "cosine", "bus", "AAAA", [], [None], {}, {"0": {}}, {"id": 1000})

# For each kind of schema, values that it must not take.
MISFITS = {
    "boolean": (0, "true", None, []), "string": (1, True, None, {}), "array": ({}, None, "a", 1), "object": ([], None, "a", 1),
    "i32": (2**31, -(2**31) - 1, 0.5, "0", None), "u32": (2**32, -1, 0.5, "0", None), "i64": (2**63, 0.5, "0", None),
    "real": ("1", None, True, []), "real32": ("1", 1e39, None, True), "bytes": ("=", 1, None, []),
    "enum": ("no such word", True, None, 0.5), "struct": ([], 1, "a", None),
}


class Checks:
    def __init__(self, root, orvo, schema, print_format, folder):
        self.root, self.orvo, self.schema, self.print_format, self.folder = root, orvo, schema, print_format, folder
        self.validator = Draft202012Validator(schema)
        self.failures = 0

    def expect(self, held, what):
        if not held:
            self.failures += 1
            print(what)

    def convert(self, source, target, *options):
        return subprocess.run([self.orvo, "convert", source, target, "--lossy", *options], capture_output=True, text=True,
                              check=False)

    def tool_refuses(self, session):
        """Whether the tool takes a session for wrong. A write of JSON loses nothing, so that is all that it refuses."""
        source = self.folder / "in.json"
        source.write_text(json.dumps(session), "utf-8")
        run = self.convert(source, self.folder / "out.json")
        return run.returncode != 0, run.stderr

    def is_a_schema(self):
        Draft202012Validator.check_schema(self.schema)

    def takes_what_the_tool_writes(self):
        sources = [source for pattern in WRITTEN for source in sorted(self.root.glob(pattern))]
        self.expect(len(sources) >= 7, f"too few sessions: {sources}")
        for source in sources:
            sizes = []
            for options in ([], ["--full"]):
                target = self.folder / "written.json"
                run = self.convert(source, target, *options)
                self.expect(run.returncode == 0, run)
                self.expect_valid(source, json.loads(target.read_text("utf-8")))
                sizes.append(target.stat().st_size)
            self.expect(sizes[0] < sizes[1], f"{source}: the short form is not shorter: {sizes}")

    def takes_the_sources_of_the_examples(self):
        sources = sorted(self.root.glob(SOURCES))
        self.expect(len(sources) >= 5, f"too few sources: {sources}")
        for source in sources:
            self.expect_valid(source, json.loads(source.read_text("utf-8")))

    def expect_valid(self, name, session):
        for error in self.validator.iter_errors(session):
            self.expect(False, f"{name}: {error.json_path}: {error.message}")

    def takes_and_refuses_what_the_tool_does(self):
        for is_wrong, changes in ((False, RIGHT), (True, WRONG)):
            for place, value in changes:
                session = session_with(place, value)
                refused, message = self.tool_refuses(session)
                self.expect(refused == is_wrong, f"the tool at {place} = {value!r}: {message}")
                self.expect(self.validator.is_valid(session) != is_wrong, f"the schema at {place} = {value!r}")

    def agrees_with_the_tool_on_mutations(self):
        dice = random.Random(1)
        refusals = 0
        for source in sorted(self.root.glob(SOURCES)):
            session = json.loads(source.read_text("utf-8"))
            for _ in range(MUTATIONS):
                mutation = mutated(session, dice)
                refused, message = self.tool_refuses(mutation)
                refusals += refused
                errors = [f"{error.json_path}: {error.message}" for error in self.validator.iter_errors(mutation)]
                self.expect(refused == bool(errors), f"{source}: the tool: {message}, the schema: {errors}")
        self.expect(refusals > MUTATIONS, f"only {refusals} mutations were refused")

    def refuses_misfits_everywhere(self):
        """In every member of every object: a key in its place that is unknown, and values of other kinds."""
        definitions = self.schema["$defs"]
        count = 0
        for name, definition in definitions.items():
            validator = Draft202012Validator({"$ref": f"#/$defs/{name}", "$defs": definitions})
            for key, member in definition.get("properties", {}).items():
                self.expect(not validator.is_valid({key + "_": None}), f"{name} takes {key}_")
                self.expect("default" not in member or validator.is_valid({key: member["default"]}),
                            f"{name} does not take the default of {key}")
                nullable = {"type": "null"} in member.get("anyOf", [])
                for misfit in MISFITS[kind_of(member, definitions)]:
                    count += 1
                    taken = validator.is_valid({key: misfit})
                    self.expect(taken == (nullable and misfit is None), f"{name}.{key} takes {misfit!r}")
        self.expect(count > 500, f"only {count} misfits")

    def has_the_terms_of_the_format(self):
        elements = json.loads(subprocess.run([self.print_format], capture_output=True, check=True).stdout)
        terms = {element["name"] for element in elements}
        for element in elements:
            for attribute in element["attributes"]:
                terms.add(attribute["name"])
                terms.update(attribute["words"] if attribute["name"] == "id" else [])
        terms |= {plural(term) for term in terms}
        keys = {key for definition in self.schema["$defs"].values() for key in definition.get("properties", {})}
        self.expect(keys - terms == OWN_TERMS, f"no terms of the format: {sorted(keys - terms)}")

    def run(self):
        self.is_a_schema()
        self.takes_what_the_tool_writes()
        self.takes_the_sources_of_the_examples()
        self.takes_and_refuses_what_the_tool_does()
        self.agrees_with_the_tool_on_mutations()
        self.refuses_misfits_everywhere()
        self.has_the_terms_of_the_format()
        return self.failures


def places(value):
    """Every place in a JSON value, as the object or list that it is in and its key."""
    for key, held in value.items() if isinstance(value, dict) else enumerate(value) if isinstance(value, list) else ():
        yield value, key
        yield from places(held)


def mutated(session, dice):
    """A session with another value in one place, or another key."""
    session = copy.deepcopy(session)
    holder, key = dice.choice(list(places(session)))
    if isinstance(holder, dict) and dice.random() < 0.2:
        holder[key + "x"] = holder.pop(key)
    else:
        holder[key] = dice.choice(MUTANTS)
    return session


def plural(term):
    return term[:-1] + "ies" if term.endswith("y") else term + "s"


def kind_of(member, definitions):
    if "anyOf" in member and "$ref" not in member["anyOf"][0] and "enum" not in member["anyOf"][0]:
        return member["anyOf"][0]["type"]
    first = member["anyOf"][0] if "anyOf" in member else member
    if "enum" in first:
        return "enum"
    if "$ref" in first:
        name = first["$ref"].rpartition("/")[2]
        return "struct" if "properties" in definitions[name] else name
    return first["type"]


def session_with(place, value):
    """A session with a value at a JSON pointer, and with no more than leads there."""
    if not place:
        return value
    steps = place[1:].split("/")
    result = thing = {}
    for step, following in zip(steps, [*steps[1:], None]):
        made = value if following is None else [] if following == "0" and is_list(step) else {}
        if isinstance(thing, list):
            thing.append(made)
        else:
            thing[step] = made
        thing = made
    return result


def is_list(key):
    return key not in ("parameters", "channelMap")


def main():
    root, orvo, build, cmake, print_format = Path(sys.argv[1]), *sys.argv[2:]
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        subprocess.run([cmake, "--install", build, "--prefix", folder / "installed"], check=True, capture_output=True)
        schema = json.loads((folder / SCHEMA).read_text("utf-8"))
        return 1 if Checks(root, orvo, schema, print_format, folder).run() else 0


if __name__ == "__main__":
    sys.exit(main())
