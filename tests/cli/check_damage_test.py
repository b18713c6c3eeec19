#!/usr/bin/env python3
"""Damages the example sessions, one defect each, and checks that `orvo check` names it at its place, and nothing else.

    check_damage_test.py ORVO EXAMPLES

Each damage is a replacement in the text of every example that contains what it replaces. In the new text, "¦" marks
the place that is expected; without one, the place is where "place" is found in the example. Examples as they are, and
generated sessions whose media are there, have no findings but the media that an example misses on purpose.
"""

import json
import re
import shutil
import struct
import subprocess
import sys
import tempfile
from pathlib import Path

# Code, the pattern, its replacement.
DAMAGES = [
    ("unknown-element", r"( *<tracks)", r"  ¦<markers><marker at='5'/></markers>\n\1"),
    ("unknown-element", r"( *</files>)", r"    ¦<folder/>\n\1"),
    ("unknown-element", r"(<fadeIn )", r"¦<fadeMiddle/>\1"),
    ("misplaced-element", r"( *<sessionState)", r"    ¦<audioClip id='9000'/>\n\1"),
    ("misplaced-element", r"( *<inputPort)", r"    ¦<file id='9000'/>\n\1"),
    ("repeated-element", r"(<viewState [^>]*/>)", r"\1¦\1"),
    ("repeated-element", r"(<fadeOut [^>]*/>)", r"\1\n          ¦\1"),
    ("repeated-element", r"(<trackOutput [^>]*/>)", r"\1 ¦\1"),
    ("ignored-element", r"(<trackInput )", r"¦<trackPanner panLeftRight='-0.5'/>\1"),
    ("stray-text", r"<clipGroups>", r"¦<clipGroups>stray"),
    ("stray-text", r"<effectsRack preFader=\"true\">", r"¦\g<0>stray"),
    ("unknown-attribute", r"<session ", r"<session ¦mood='calm' "),
    ("unknown-attribute", r"<take ", r"<take ¦mood='calm' "),
    ("unknown-attribute", r"<parameterKeyframe ", r"<parameterKeyframe\n ¦mood='calm' "),
    ("misplaced-attribute", r"<trackInput ", r"<trackInput ¦zOrder='1' "),
    ("misplaced-attribute", r"<viewState ", r"<viewState ¦sampleRate='48000' "),
    ("repeated-attribute", r"<clipGroup (.*)hue=", r"<clipGroup xmlns:x='urn:x' ¦x:hue='7' \1hue="),
    ("ignored-attribute", r"<trackAudioParameters ", r"<trackAudioParameters ¦volume='0.5' "),
    ("wrong-value", r"bitDepth=\"\d+\"", r"¦bitDepth='sixteen'"),
    ("wrong-value", r"customFrameRate=\"0\"", r"¦customFrameRate='0.5'"),
    ("wrong-value", r"preFader=\"(true|false)\"", r"¦preFader='maybe'"),
    ("wrong-value", r"type=\"cosine\"", r"¦type='cosinus'"),
    ("wrong-value", r"panPower=\"-3\"", r"¦panPower='loud'"),
    ("wrong-value", r"looped=\"false\"", r"¦looped='no'"),
    ("wrong-value", r"parameterValue=\"-12\"", r"¦parameterValue='minus twelve'"),
    ("bad-base64", r"<presetChunkData><!\[CDATA\[", r"¦<presetChunkData><![CDATA[*"),
    ("bad-base64", r"<midiEvents>(<!\[CDATA\[)?", r"¦<midiEvents>\1*"),
    ("missing-id", r"( *</files>)", r"    ¦<file absolutePath='/media/drums.wav'/>\n\1"),
    ("missing-id", r"<sendSlot ([^>]*) slotIndex=\"0\"", r"¦<sendSlot \1"),
    ("duplicate-id", r"(<clipGroup [^>]*)id=\"2\"", r"\1¦id='1'"),
    ("duplicate-id", r"(<audioClip [^>]*id=\"(\d+)\".*?)( *</audioTrack>)",
     r"\1<audioClip fileID='3' ¦id='\2'/>\n\3"),
    ("duplicate-id", r"(<parameter )index=\"3\"", r"\1¦index='0'"),
    ("sample-rate", r"sampleRate=\"\d+\"", r"¦sampleRate='0'"),
    ("negative-length", r"selectionDuration=\"\d+\"", r"¦selectionDuration='-5'"),
    ("negative-length", r"horizontalViewDuration=\"\d+\"", r"¦horizontalViewDuration='-1'"),
    ("unknown-file", r"(<audioClip [^>]*)fileID=\"2\"", r"\1¦fileID='99'"),
    ("unknown-file", r"(<videoClip [^>]*) fileID=\"\d+\"", r"¦\1"),
    ("missing-media", r"absolutePath(=[^>]*) relativePath=\"(media/|[^\"]*/)[a-z-]*\.wav\"",
     r"¦absolutePath\1 relativePath='lost.wav'"),
    ("crossfade-absent", r"crossFadeTailClipID=\"-1\"", r"¦crossFadeTailClipID='4000'"),
    ("crossfade-apart", r"(<audioClip [^>]*)crossFadeHeadClipID=\"-1\"([^>]* id=\"13\")",
     r"\1¦crossFadeHeadClipID='11'\2"),
    ("group-member-absent", r"(<item )clipID=\"\d+\"", r"\1¦clipID='4000'"),
    ("group-member-absent", r"(<item [^>]*)trackID=\"\d+\"", r"\1¦trackID='4000'"),
    ("output-absent", r"<trackOutput outputID=\"\d+\" type=\"trackID\"",
     r"<trackOutput ¦outputID='4000' type='trackID'"),
    ("send-absent", r"(<sendSlot preFader=\"[a-z]*\" )sendOutputID=\"\d+\"", r"\1¦sendOutputID='4000'"),
    ("side-chain-absent", r"(<sendSlot destCompIndex=\"1\" preFader=\"[a-z]*\" )sendOutputID=\"\d+\"",
     r"\1¦sendOutputID='4000'"),
    ("routing-loop", r"(<audioTrack .*?<masterTrack .*?<trackOutput) outputID=\"1\" type=\"hardwareOutput\"",
     r"¦\1 outputID='1' type='trackID'"),
    ("not-saved", r"(<videoFormat [^>]*)pixelType=\"\d+\"", r"¦\1pixelType='0'"),
    ("clip-past-end", r"(<audioClip [^>]*looped=\"true\"[^>]* )sourceOutPoint=\"\d+\"",
     r"\1¦sourceOutPoint='9000000'"),
    ("keyframe-order", r"(<parameterKeyframe )sampleOffset=\"0\"([^<]*)(<parameterKeyframe )(sampleOffset)",
     r"\1sampleOffset='9000000'\2\3¦\4"),
    ("not-well-formed", r"\n</orvo>", r"\n</orvo¦o>"),
    ("not-well-formed", r"<clipGroups>", r"<clipGroups ¦<"),
    ("not-a-session", r"<orvo version=\"1.5\">(.*)</orvo>", r"¦<project>\1</project>"),
    ("not-a-session", r"\n<orvo", r"\n¦<!DOCTYPE orvo>\n<orvo"),
]

FLAGS = re.DOTALL
MOST_OF_A_KIND = 2  # of one damage, in one example


def place_of(text, offset):
    """Line and column, both from 1. A byte order mark has no column."""
    before = text[:offset].removeprefix("\ufeff")
    return before.count("\n") + 1, len(before) - (before.rfind("\n") + 1) + 1


def damaged(text, pattern, replacement):
    """Each way to make one replacement, with the place that it marks."""
    for match in list(re.finditer(pattern, text, FLAGS))[:MOST_OF_A_KIND]:
        new = text[:match.start()] + match.expand(replacement) + text[match.end():]
        mark = new.index("¦")
        new = new.replace("¦", "")
        yield new, place_of(new, mark)


def check(orvo, folder, files, *options):
    """The findings in each file."""
    run = subprocess.run([orvo, "check", "--ndjson", "--jobs", "2", *options, *files], cwd=folder,
                         capture_output=True, text=True, check=False)
    assert not run.stderr, run.stderr
    reports = [json.loads(line) for line in run.stdout.splitlines()]
    assert [report["file"] for report in reports] == [str(file) for file in files]
    return [[(f["code"], (f["line"], f["column"])) for f in report["findings"]] for report in reports]


def make_media(path, rate, channels, frames):
    """Silence, which takes no room on the disk."""
    path.parent.mkdir(parents=True, exist_ok=True)
    width = 2
    size = frames * channels * width
    with path.open("wb") as file:
        file.write(struct.pack("<4sI4s4sIHHIIHH4sI", b"RIFF", 36 + size, b"WAVE", b"fmt ", 16, 1, channels, rate,
                               rate * channels * width, channels * width, 8 * width, b"data", size))
        file.truncate(44 + size)


class Test:
    def __init__(self, orvo, folder):
        self.orvo, self.folder, self.failures, self.count = orvo, folder, 0, 0

    def expect(self, what, found, expected):
        self.count += 1
        if found != expected:
            self.failures += 1
            print(f"{what}\n  expected {expected}\n  found    {found}")

    def damage_documents(self):
        """In every example; returns the codes that were seen."""
        cases = []
        for example in sorted(self.folder.glob("*/*.orvo")):
            text = example.read_text("utf-8")
            for number, (code, pattern, replacement) in enumerate(DAMAGES):
                for turn, (new, place) in enumerate(damaged(text, pattern, replacement)):
                    file = example.with_name(f"{example.stem}-{number}-{turn}.orvo")
                    file.write_text(new, "utf-8")
                    cases.append((file.relative_to(self.folder), code, place, example))
        usual = {example: set(check(self.orvo, self.folder, [example.relative_to(self.folder)])[0])
                 for example in {case[3] for case in cases}}
        found = check(self.orvo, self.folder, [case[0] for case in cases])
        for (file, code, place, example), findings in zip(cases, found):
            media = [code for code, _ in findings if code == "missing-media"]
            others = [f for f in findings if f[0] != "missing-media"]
            if code == "missing-media":
                new = [f for f in findings if f[1] == place]
                self.expect(f"{file}: {code}", (new, len(media)), ([(code, place)], len(usual[example]) + 1))
            else:
                self.expect(f"{file}: {code}", others, [(code, place)])
        return {case[1] for case in cases}

    def damage_media(self):
        """Of one example, in a copy for each."""
        def damage(code, change, marker):
            copy = self.folder / f"radio-spot-{code}"
            shutil.copytree(self.folder / "radio-spot", copy)
            change(copy / "media/telephone-ring.wav")
            session = copy / "radio-spot.orvo"
            text = session.read_text("utf-8")
            places = [place_of(text, match.start(1)) for match in re.finditer(marker, text)]
            found = check(self.orvo, self.folder, [session.relative_to(self.folder)])
            self.expect(f"radio-spot: {code}", found[0], [(code, place) for place in places])
            return code

        path = r"<file (absolutePath)=[^>]* id=\"2\""
        length = r"<audioClip [^>]*fileID=\"2\"[^>]* (sourceOutPoint)"
        yield damage("short-media", lambda file: make_media(file, 22050, 1, 35279), length)
        yield damage("media-rate", lambda file: make_media(file, 44100, 1, 70560), path)
        yield damage("unreadable-media", lambda file: file.write_bytes(b"nothing"), path)
        yield damage("missing-media", lambda file: file.unlink(), path)

    def damage_channels(self):
        copy = self.folder / "music-channels"
        shutil.copytree(self.folder / "music", copy)
        session = copy / "music.orvo"
        text = session.read_text("utf-8")
        new, place = next(damaged(text, r"(<channelMap>\s*)(<channel [^>]*)sourceIndex=\"0\"",
                                  r"\1¦\2sourceIndex='5'"))
        session.write_text(new, "utf-8")
        found = check(self.orvo, self.folder, [session.relative_to(self.folder)])
        self.expect("music: media-channels", found[0], [("media-channels", place)])
        yield "media-channels"

    def damage_json(self):
        """A path is the place."""
        def damage(code, path, change):
            session = json.loads((self.folder / "music/music.json").read_text("utf-8"))
            change(session)
            (self.folder / "music/damaged.json").write_text(json.dumps(session), "utf-8")
            run = subprocess.run([self.orvo, "check", "--json", "--no-media", "music/damaged.json"], cwd=self.folder,
                                 capture_output=True, text=True, check=False)
            found = [(f["code"], f["path"], f["line"]) for f in json.loads(run.stdout)[0]["findings"]]
            self.expect(f"music.json: {path}", found, [(code, path, 0)])
            return code

        clip = "/audioTracks/0/audioClips/0"
        yield damage("wrong-json", "/sampleRate", lambda s: s.update(sampleRate="fast"))
        yield damage("wrong-json", "/files/1/colour", lambda s: s["files"][1].update(colour="red"))
        yield damage("sample-rate", "/sampleRate", lambda s: s.update(sampleRate=0))
        yield damage("unknown-file", f"{clip}/fileID", lambda s: s["audioTracks"][0]["audioClips"][0].update(fileID=99))
        yield damage("output-absent", "/audioTracks/1/outputTrackID",
                     lambda s: s["audioTracks"][1].update(outputTrackID=4000))
        yield damage("crossfade-absent", f"{clip}/crossFadeHeadClipID",
                     lambda s: s["audioTracks"][0]["audioClips"][0].update(crossFadeHeadClipID=4000))

    def damage_names(self):
        for name in ("nothing.orvo", "music"):
            self.expect(name, check(self.orvo, self.folder, [Path(name)])[0], [("unreadable", (0, 0))])
        yield "unreadable"

    def undamaged(self, missing):
        examples = sorted(file.relative_to(self.folder) for file in self.folder.glob("*/*.orvo"))
        for example, found in zip(examples, check(self.orvo, self.folder, examples)):
            self.expect(f"{example} as it is", [code for code, _ in found],
                        ["missing-media"] * missing.get(example.stem, 0))

    def generated(self):
        folder = self.folder / "generated"
        folder.mkdir()
        for seed in range(12):
            name = f"{seed}.orvo"
            subprocess.run([self.orvo, "generate", "--tracks", str(2 + 3 * seed), "--clips", "6", "--keyframes", "5",
                            "--seed", str(seed), name], cwd=folder, check=True)
            subprocess.run([self.orvo, "convert", name, f"{seed}.json"], cwd=folder, check=True)
            session = json.loads((folder / f"{seed}.json").read_text("utf-8"))
            clips = [clip for track in session["audioTracks"] for clip in track.get("audioClips", [])]
            text = (folder / name).read_text("utf-8")
            for file in session.get("files", []):
                ends = [clip.get("sourceInPoint", 0) + clip.get("duration", 0)
                        for clip in clips if clip["fileID"] == file["id"]]
                path = folder / "media" / f"{seed}-{file['id']}.wav"
                make_media(path, session.get("sampleRate", 48000), 8, max(ends, default=1))
                text = text.replace(f'"{file["path"]}"', f'"{path}"')
            (folder / name).write_text(text, "utf-8")
        names = [Path("generated") / f"{seed}.orvo" for seed in range(12)]
        for name, found in zip(names, check(self.orvo, self.folder, names)):
            self.expect(name, found, [])


def main():
    orvo, examples = sys.argv[1:]
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        for example in Path(examples).glob("*/*.orvo"):
            shutil.copytree(example.parent, folder / example.parent.name)
        test = Test(orvo, folder)
        test.undamaged({"picture": 2})
        seen = test.damage_documents()
        seen |= {*test.damage_media(), *test.damage_channels(), *test.damage_json(), *test.damage_names()}
        test.generated()
        codes = subprocess.run([orvo, "check", "--explain", "all"], capture_output=True, text=True, check=True).stdout
        test.expect("every code is shown by a damage", seen, set(re.findall(r"^([a-z0-9-]+) ", codes, re.M)))
        print(f"{test.count} checks, {test.failures} failures")
        return 1 if test.failures else 0


if __name__ == "__main__":
    sys.exit(main())
