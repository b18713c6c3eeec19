#!/usr/bin/env python3
"""Reads what the tool writes for other programs, and compares where each clip is.

    placement_test.py ROOT ORVO

The readers here share no code with the tool. All examples and some generated sessions are converted to each kind, and
the absolute places of all clips compared with those in the session's JSON.
"""

import csv
import json
import re
import subprocess
import sys
import tempfile
import wave
import xml.etree.ElementTree as ElementTree
from collections import Counter
from fractions import Fraction
from pathlib import Path

TICKS = 282_240_000
SIZES = (
    ("--tracks", "3", "--clips", "12", "--seed", "1"),
    ("--tracks", "8", "--clips", "40", "--seed", "2"),
    ("--tracks", "3", "--clips", "1200", "--seed", "3"),
)


def rounded(value):
    """The nearest whole number, halves away from 0."""
    return -int(-value + Fraction(1, 2)) if value < 0 else int(value + Fraction(1, 2))


class Clip:
    def __init__(self, clip, files):
        self.name, self.start = clip["name"], clip["startPoint"]
        self.end, self.source = self.start + clip["duration"], clip["sourceInPoint"]
        self.path = files.get(clip.get("fileID"), "")
        self.looped = clip.get("looped", False)
        stretch = clip.get("clipStretch") or {"stretchMode": "off", "stretchRatio": 1}
        self.ratio = stretch["stretchRatio"] if stretch["stretchMode"] != "off" else 1


class Session:
    """What the JSON says."""

    def __init__(self, text):
        content = json.loads(text)
        self.rate = content["sampleRate"]
        files = {file["id"]: file["path"] for file in content["files"]}
        tracks = lambda key: sorted(content.get(key, []), key=lambda track: track["index"])
        self.video = [[Clip(c, files) for c in t.get("videoClips", [])] for t in tracks("videoTracks")]
        self.kinds = [t["kind"] for t in tracks("audioTracks")]
        self.audio = [[Clip(c, files) for c in t.get("audioClips", [])] for t in tracks("audioTracks")]
        self.midi = [[Clip(c, {}) for c in t.get("midiClips", [])] for t in tracks("audioTracks")]


# CSV


def check_csv(path, session):
    with path.open(newline="", encoding="utf-8") as file:
        rows = list(csv.DictReader(file))
    for kind, tracks in (("audio", session.audio), ("video", session.video), ("midi", session.midi)):
        found = Counter(
            (int(row["start"]), int(row["end"]), int(row["sourceIn"]), row["name"].removeprefix("'"))
            for row in rows
            if row["type"] == kind
        )
        assert found == Counter((c.start, c.end, c.source, c.name) for t in tracks for c in t), kind
    assert [int(row["start"]) for row in rows] == sorted(int(row["start"]) for row in rows)


# RPP


def read_rpp(text):
    """Nested lists of lines and blocks, each a list of its words."""
    stack = [[]]
    for line in text.splitlines():
        line = line.strip()
        if line == ">":
            block = stack.pop()
            stack[-1].append(block)
            continue
        words = [a or b or c or d for a, b, c, d in re.findall(r'"([^"]*)"|\'([^\']*)\'|`([^`]*)`|([^\s"\'`]\S*)', line.removeprefix("<"))]
        if line.startswith("<"):
            stack.append([words])
        else:
            stack[-1].append(words)
    assert len(stack) == 1 and len(stack[0]) == 1, "blocks do not end"
    return stack[0][0]


def blocks(block, name):
    return [part for part in block[1:] if isinstance(part[0], list) and part[0][0] == name]


def value(block, name):
    return next((part[1:] for part in block[1:] if part[0] == name), None)


def check_rpp(path, session):
    project = read_rpp(path.read_text(encoding="utf-8"))
    assert project[0] == ["REAPER_PROJECT", "0.1", "7.0", "0"]
    assert value(project, "SAMPLERATE") == [str(session.rate), "1", "0"]
    expected = [
        [(c, True) for c in clips] + [(c, False) for c in midi]
        for clips, midi, kind in zip(session.audio, session.midi, session.kinds)
        if kind not in ("master", "metronome")
    ]
    expected += [[(c, True) for c in clips] for clips in session.video]
    tracks = blocks(project, "TRACK")
    assert len(tracks) == len(expected)
    for track, clips in zip(tracks, expected):
        for receive in (part for part in track if part[0] == "AUXRECV"):
            assert int(receive[1]) < len(tracks) and tracks[int(receive[1])] is not track
        items = blocks(track, "ITEM")
        assert len(items) == len(clips)
        for item, (clip, has_media) in zip(items, clips):
            position, length = (float(value(item, key)[0]) for key in ("POSITION", "LENGTH"))
            assert round(position * session.rate) == clip.start
            assert round((position + length) * session.rate) == clip.end
            if not has_media:
                assert not blocks(item, "SOURCE")
                continue
            assert round(float(value(item, "SOFFS")[0]) * session.rate) == clip.source
            if value(item, "PLAYRATE"):
                assert abs(float(value(item, "PLAYRATE")[0]) * clip.ratio - 1) < 2e-5
            files = [value(source, "FILE")[0] for source in blocks(item, "SOURCE")]
            assert files == ([clip.path] if clip.path else []), (files, clip.path)


# EDL


def frames(text, rate, drop):
    hours, minutes, seconds, frame = (int(part) for part in re.split("[:;]", text))
    assert (";" in text) == drop
    total_minutes = 60 * hours + minutes
    count = (60 * total_minutes + seconds) * rate + frame
    return count - rate // 15 * (total_minutes - total_minutes // 10) if drop else count


EVENT = re.compile(r"^(\d{3})  (\S{1,8}) +(V|A|A2|AA) +(C|D +\d{3}) +(\S+) (\S+) (\S+) (\S+)$")


def read_edl(path, rate, drop):
    """A list of [record in, record out, source in, name]."""
    lines = path.read_text(encoding="utf-8").splitlines()
    assert lines[0].startswith("TITLE: ") and lines[1] == ("FCM: DROP FRAME" if drop else "FCM: NON-DROP FRAME")
    events = {}
    for line in lines[2:]:
        if line[0].isdigit():
            number, reel, _, kind, *times = EVENT.match(line).groups()
            event = events.setdefault(int(number), {"lines": [], "names": {}})
            event["lines"].append((reel, int(kind.split()[1]) if kind != "C" else 0, *(frames(t, rate, drop) for t in times)))
        elif match := re.match(r"\* (FROM|TO) CLIP NAME:  (.*)", line):
            event["names"][match[1]] = match[2]
    assert list(events) == list(range(1, len(events) + 1)) and len(events) <= 999
    clips = []
    for event in events.values():
        *before, (reel, length, source_in, _, record_in, record_out) = event["lines"]
        name = event["names"].get("TO" if before else "FROM", "")
        assert bool(before) == bool(length) and record_in < record_out
        if before:
            assert before[0][1] == 0 and before[0][4] == before[0][5] == record_in
            if before[0][0] != "BL":
                assert clips[-1][1] == record_in
                clips[-1][1] = record_in + length
        if reel != "BL":
            clips.append([record_in, record_out, source_in, name])
        else:
            assert length == record_out - record_in
    return clips


def joined(clips, looped):
    """The rounds of a loop as one clip."""
    result = []
    for clip in sorted(clips):
        if result and clip[3] in looped and result[-1][3] == clip[3] and result[-1][1] == clip[0]:
            result[-1][1] = clip[1]
        else:
            result.append(list(clip))
    return result


def check_edl(paths, session, rate, drop):
    per_sample = Fraction(rate * 1000, 1001 * session.rate) if drop else Fraction(rate, session.rate)
    all_clips = [c for t in session.audio + session.video for c in t]
    looped = {c.name for c in all_clips if c.looped}
    expected = []
    for clip in all_clips:
        begin, end, source = (rounded(n * per_sample) for n in (clip.start, clip.end, clip.source))
        if clip.start >= 0 and end > begin:
            expected.append([begin, end, source, clip.name])
    found = [clip for path in paths for clip in read_edl(path, rate, drop)]
    as_set = lambda clips: Counter(tuple(c) for c in joined(clips, looped) if c[3] not in looped)
    assert as_set(found) == as_set(expected), (as_set(found) - as_set(expected), as_set(expected) - as_set(found))
    ends = lambda clips: ({(c[0], c[2]) for c in clips if c[3] in looped}, {c[1] for c in clips if c[3] in looped})
    assert all(theirs <= ours for theirs, ours in zip(ends(expected), ends(found)))


# Ardour


def samples(text, rate):
    return int(text.removeprefix("a")) * rate // TICKS


def check_structure(root):
    ids = [int(e.get("id")) for e in root.iter() if e.get("id") is not None]
    assert len(ids) == len(set(ids)) and max(ids) < int(root.get("id-counter"))
    names = [route.get("name") for route in root.iter("Route")]
    assert len(names) == len(set(names)) and names[0] == "Master"
    ports = {port.get("name") for port in root.iter("Port")}
    for connection in root.iter("Connection"):
        assert connection.get("other") in ports or connection.get("other").startswith("system:playback_")
    routes = {route.get("id"): route for route in root.iter("Route")}
    for processor in root.iter("Processor"):
        if processor.get("type") == "intsend":
            assert routes[processor.get("target")].find("Processor").get("type") == "intreturn"
    assert root.find("Config/Option[@name='native-file-data-format']").get("value") == "FormatFloat"
    assert [e.get("flags") for e in root.iter("Location")].count("IsSessionRange") == 1


def media_length(path):
    try:
        with wave.open(path) as file:
            return file.getnframes()
    except (OSError, wave.Error, EOFError):
        return None


def check_ardour(path, session):
    root = ElementTree.parse(path).getroot()
    check_structure(root)
    assert int(root.get("sample-rate")) == session.rate
    sources = {source.get("id"): source for source in root.iter("Source")}
    playlists = {p.get("id"): p for p in root.iter("Playlist")}
    routes = [r for r in root.iter("Route") if r.get("name") != "Master"]
    expected = [clips for clips, kind in zip(session.audio, session.kinds) if kind not in ("master", "metronome")]
    assert len(routes) == len(expected)
    for route, clips in zip(routes, expected):
        if route.get("audio-playlist") is None:
            continue
        found, ends = Counter(), set()
        for region in playlists[route.get("audio-playlist")]:
            length, position = (samples(t, session.rate) for t in region.get("length").split("@"))
            file = sources[region.get("source-0")].get("name")
            assert all(region.get(f"source-{i}") in sources for i in range(int(region.get("channels"))))
            found[position, samples(region.get("start"), session.rate), file] += 1
            ends.add((position, position + length))
        for clip in clips:
            left = media_length(clip.path)
            source = clip.source % left if clip.looped and left else clip.source
            if clip.path and clip.start >= 0 and (left is None or source < left):
                assert found[clip.start, source, clip.path] > 0, clip.name
                if not clip.looped and clip.ratio == 1 and left is not None:
                    assert (clip.start, min(clip.end, clip.start + left - source)) in ends, clip.name
        if not any(clip.looped for clip in clips):
            assert found.total() <= len(clips)


def main():
    root, orvo = Path(sys.argv[1]), sys.argv[2]
    run = lambda *arguments: subprocess.run([orvo, *arguments], check=True, capture_output=True, text=True).stdout
    with tempfile.TemporaryDirectory() as temporary:
        folder = Path(temporary)
        inputs = sorted(root.glob("examples/*/*.orvo"))
        assert inputs
        for number, size in enumerate(SIZES):
            inputs.append(folder / f"generated-{number}.orvo")
            run("generate", *size, inputs[-1])
        for file in inputs:
            session = Session(run("convert", file, "-", "--to", "json", "--full", "--lossy"))
            out = folder / file.stem
            run("convert", file, f"{out}.csv")
            check_csv(Path(f"{out}.csv"), session)
            run("convert", file, f"{out}.rpp")
            check_rpp(Path(f"{out}.rpp"), session)
            run("convert", file, f"{out}.ardour")
            check_ardour(Path(f"{out}.ardour") / f"{file.stem}.ardour", session)
            for rate, drop in ((25, False), (24, False), (30, True), (60, True)):
                lists = folder / f"{file.stem}-{rate}"
                lists.mkdir()
                names = {30: "29.97", 60: "59.94"}
                drop_option = ["--drop-frame"] if drop else []
                run("convert", file, lists / "a.edl", "--frame-rate", names.get(rate, str(rate)), *drop_option)
                check_edl(sorted(lists.iterdir()), session, rate, drop)
            clips = sum(len(t) for t in session.audio + session.video + session.midi)
            print(f"{file.name}: {clips} clips are where they belong")


main()
