#!/usr/bin/env python3
"""Reads DAWproject files without the project's own code, and compares where their clips lie with the sessions.

    dawproject_test.py ROOT ORVO [--schema XSD] [--sessions N]

Converts the examples and N generated sessions. Checks that each reference leads to an element of the right kind, and,
given the schema of the format, that xmllint takes the document.
"""

import argparse
import json
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
import zipfile
from fractions import Fraction
from pathlib import Path

# What an attribute that refers to an element may lead to.
REFERENCES = {
    "destination": {"Channel"},
    "track": {"Track"},
    "parameter": {"Volume", "Pan", "Mute", "Enabled", "Enable", "RealParameter", "BoolParameter", "Tempo"},
    "reference": {"Lanes", "Clips", "Warps", "Audio", "Video", "Notes"},
}


def samples(seconds, rate):
    return round(seconds * rate)


class Document:
    def __init__(self, path):
        with zipfile.ZipFile(path) as archive:
            if archive.testzip() is not None:
                raise ValueError("an entry is damaged")
            self.names = set(archive.namelist())
            self.text = archive.read("project.xml")
        self.root = ElementTree.fromstring(self.text)
        self.by_id = {}
        for element in self.root.iter():
            if "id" in element.attrib:
                if element.attrib["id"] in self.by_id:
                    raise ValueError(f"two elements have the id {element.attrib['id']}")
                self.by_id[element.attrib["id"]] = element

    def wrong_references(self):
        for element in self.root.iter():
            for attribute, kinds in REFERENCES.items():
                if attribute in element.attrib:
                    target = self.by_id.get(element.attrib[attribute])
                    if target is None or target.tag not in kinds:
                        yield f"{element.tag}@{attribute}={element.attrib[attribute]}"
        for state in self.root.iter("State"):
            if state.attrib["path"] not in self.names:
                yield f"State@path={state.attrib['path']}"

    def clips(self, rate):
        """Each clip as its track, kind, name, start, duration and source, in samples, and its media."""
        for lanes in self.root.find("Arrangement/Lanes").findall("Lanes"):
            track = self.by_id[lanes.attrib["track"]].attrib.get("name", "")
            for clip in lanes.findall("Clips/Clip"):
                content = clip[0]
                if content.tag == "Lanes":
                    content = content[0]
                stretch = 1.0
                if content.tag == "Warps":
                    first, last = content.findall("Warp")
                    stretch = (float(last.attrib["time"]) - float(first.attrib["time"])) / (
                        float(last.attrib["contentTime"]) - float(first.attrib["contentTime"])
                    )
                    content = content[0]
                time, duration = float(clip.attrib["time"]), float(clip.attrib["duration"])
                file = content.find("File")
                yield (
                    track,
                    content.tag,
                    clip.attrib.get("name", ""),
                    samples(time, rate),
                    samples(time + duration, rate) - samples(time, rate),
                    samples(float(clip.attrib["playStart"]) / stretch, rate),
                    file.attrib["path"] if file is not None else "",
                )


def clips_of_session(session):
    paths = {file["id"]: file["path"] for file in session["files"]}
    kinds = (("videoTracks", "videoClips", "Video"), ("audioTracks", "audioClips", "Audio"), ("audioTracks", "midiClips", "Notes"))
    for tracks, clips, tag in kinds:
        for track in session[tracks]:
            for clip in track.get(clips, []):
                yield (
                    track["name"],
                    tag,
                    clip["name"],
                    clip["startPoint"],
                    clip["duration"],
                    clip["sourceInPoint"],
                    paths.get(clip.get("fileID"), ""),
                )


def run(*arguments):
    result = subprocess.run([str(argument) for argument in arguments], capture_output=True, text=True, check=False)
    if result.returncode != 0:
        raise RuntimeError(f"{' '.join(map(str, arguments))}: {result.stdout}{result.stderr}")
    return result.stdout


def errors_of(orvo, source, folder, schema):
    project, full, back = folder / "a.dawproject", folder / "a.json", folder / "back.json"
    for file in (project, full, back):
        file.unlink(missing_ok=True)
    run(orvo, "convert", source, project)
    run(orvo, "convert", source, full, "--full", "--lossy")
    session = json.loads(full.read_text(encoding="utf-8"))
    document = Document(project)
    yield from document.wrong_references()
    rate = Fraction(session["sampleRate"])
    found, expected = sorted(document.clips(rate)), sorted(clips_of_session(session))
    for one, other in zip(found, expected):
        if one != other:
            yield f"the document has {one}, the session {other}"
    if len(found) != len(expected):
        yield f"the document has {len(found)} clips, the session {len(expected)}"
    run(orvo, "convert", project, back, "--full", "--lossy")
    if back.read_bytes() != full.read_bytes():
        yield "the session does not come back whole"
    if schema:
        text = folder / "project.xml"
        text.write_bytes(document.text)
        run("xmllint", "--nonet", "--noout", "--schema", schema, text)


def sources_of(options, folder):
    yield from sorted(options.root.glob("examples/*/*.orvo"))
    for seed in range(options.sessions):
        file = folder / "generated.orvo"
        file.unlink(missing_ok=True)
        run(options.orvo, "generate", "--seed", seed, "--tracks", 2 + seed % 20, "--clips", seed % 7, "--keyframes", seed % 5, file)
        yield file


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("root", type=Path)
    parser.add_argument("orvo", type=Path)
    parser.add_argument("--schema", type=Path)
    parser.add_argument("--sessions", type=int, default=20)
    options = parser.parse_args()
    failed = False
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        for source in sources_of(options, folder):
            for error in errors_of(options.orvo, source, folder, options.schema):
                print(f"{source}: {error}")
                failed = True
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
