#!/usr/bin/env python3
"""Reads OpenTimelineIO by itself and compares where each clip is with the JSON of its session.

    otio_placement_test.py ROOT ORVO

Knows nothing of metadata: what it computes is what any program finds. The examples and generated sessions.
"""

import json
import subprocess
import sys
import tempfile
from fractions import Fraction
from pathlib import Path
from urllib.parse import unquote

SEEDS = 20


def time(value):
    """A time in seconds."""
    assert value["OTIO_SCHEMA"] == "RationalTime.1", value
    return Fraction(value["value"]) / Fraction(value["rate"])


def duration(item):
    return time(item["source_range"]["duration"])


def is_gap(item):
    return item is None or item["OTIO_SCHEMA"] == "Gap.1"


def reach(transition, key):
    return time(transition[key]) if transition else Fraction(0)


def placements(timeline):
    """Yields name, start, end, place in the media and URL of each clip, all in seconds."""
    for track in timeline["tracks"]["children"]:
        assert track["OTIO_SCHEMA"] == "Track.1" and track["source_range"] is None
        children, at = track["children"], Fraction(0)
        for i, item in enumerate(children):
            kind = item["OTIO_SCHEMA"]
            if kind == "Transition.1":
                check_transition(children, i)
                continue
            if kind == "Clip.2":
                yield placement(children, i, at)
            at += duration(item)


def neighbour(children, i, kind_is_transition):
    item = children[i] if 0 <= i < len(children) else None
    is_transition = item is not None and item["OTIO_SCHEMA"] == "Transition.1"
    return item if is_transition == kind_is_transition else None


def placement(children, i, at):
    clip = children[i]
    before, behind = neighbour(children, i - 1, True), neighbour(children, i + 1, True)
    early, late = reach(before, "in_offset"), reach(behind, "out_offset")
    speed = Fraction(clip["effects"][0]["time_scalar"]) if clip["effects"] else Fraction(1)
    media = clip["media_references"][clip["active_media_reference_key"]]
    source = time(clip["source_range"]["start_time"]) - early * speed
    if media["OTIO_SCHEMA"] == "ExternalReference.1":
        source -= time(media["available_range"]["start_time"])
    # What both ends take of the clip fits into it.
    used = reach(before, "out_offset") + reach(behind, "in_offset")
    assert used <= duration(clip), clip["name"]
    return clip["name"], at - early, at + duration(clip) + late, source, media.get("target_url", "")


def check_transition(children, i):
    """Never two in a row, and beside a gap it does not reach into it."""
    before, behind = neighbour(children, i - 1, False), neighbour(children, i + 1, False)
    assert before is not None or i == 0, "two transitions in a row"
    assert behind is not None, "a transition at the end of a track"
    if is_gap(before):
        assert time(children[i]["in_offset"]) == 0
    if is_gap(behind):
        assert time(children[i]["out_offset"]) == 0


def expected(session):
    """The same of a session's JSON, in samples."""
    files = {file["id"]: file["path"] for file in session["files"]}
    for track in session["videoTracks"] + session["audioTracks"]:
        for key in ("videoClips", "audioClips", "midiClips"):
            for clip in track.get(key, ()):
                start = clip["startPoint"]
                yield (clip["name"], start, start + clip["duration"], clip["sourceInPoint"],
                       files.get(clip.get("fileID"), ""))


def in_samples(found, rate):
    for name, start, end, source, url in found:
        start, end, source = start * rate, end * rate, source * rate
        assert start.denominator == end.denominator == 1, name
        # Where a stretched clip is cut, its place in the media is rounded to a sample.
        path = unquote(url.removeprefix("file://"))
        yield name, int(start), int(end), round(source), path


def tolerant(placements_of):
    """Sorted, without the place in the media."""
    return sorted((name, start, end, path) for name, start, end, _, path in placements_of)


def convert(orvo, source, target):
    command = [orvo, "convert", source, target] + (["--full", "--lossy"] if target.suffix == ".json" else [])
    run = subprocess.run(command, capture_output=True, text=True, check=False)
    assert run.returncode == 0, run.stderr


def check(orvo, source, folder):
    convert(orvo, source, folder / "a.otio")
    convert(orvo, source, folder / "a.json")
    timeline = json.loads((folder / "a.otio").read_text(encoding="utf-8"))
    session = json.loads((folder / "a.json").read_text(encoding="utf-8"))
    rate = session["sampleRate"]
    found = list(in_samples(placements(timeline), rate))
    wanted = list(expected(session))
    assert tolerant(found) == tolerant(wanted), source
    sources = {(name, start): source_in for name, start, _, source_in, _ in wanted}
    for name, start, _, source_in, _ in found:
        assert abs(sources[name, start] - source_in) <= 1, name
    return len(found)


def main():
    root, orvo = Path(sys.argv[1]), sys.argv[2]
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        sessions = sorted(root.glob("examples/*/*.orvo"))
        assert sessions, "no examples"
        for seed in range(SEEDS):
            path = folder / f"{seed}.orvo"
            subprocess.run([orvo, "generate", "--tracks", "9", "--clips", "9", "--seed", str(seed), path], check=True)
            sessions.append(path)
        clips = sum(check(orvo, session, folder) for session in sessions)
    assert clips > 500, clips
    print(f"{clips} clips of {len(sessions)} sessions are where they belong")


if __name__ == "__main__":
    main()
