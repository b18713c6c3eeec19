#!/usr/bin/env python3
"""Checks the program in examples/host/: it renames a clip, keeps what it promises to keep, and survives any session.

    host_example_test.py ROOT ORVO PROGRAM PLUGIN
"""

import json
import subprocess
import sys
import tempfile
from pathlib import Path

RADIO_SPOT = "examples/radio-spot/radio-spot.orvo"
DOOR_BELL = 11
KEPT_OF_SESSION = ("sampleRate", "audioChannelType", "duration", "bitDepth", "files")
KEPT_OF_TRACK = ("id", "index", "kind", "name", "trackHeight", "outputTrackID", "visible")
KEPT_OF_CLIP = ("id", "fileID", "sourceInPoint", "duration", "startPoint", "name", "looped", "zOrder")

# Documents that a host must survive, each with the id of a clip in it.
ODD_DOCUMENTS = (
    ("<orvo/>", None),
    ("<orvo><session><tracks><audioTrack/><audioTrack/><busTrack id='-1'/></tracks></session></orvo>", None),
    ("<orvo><session><tracks><audioTrack id='1'><clip/><clip id='1'/><clip id='1'><fadeIn/></clip>"
    "<effectsRack><slot/></effectsRack></audioTrack><videoTrack id='1'><videoClip/></videoTrack></tracks>"
    "<metronome><metronomeTrack id='1'><sendList/></metronomeTrack></metronome></session></orvo>", 1),
)


class Checks:
    def __init__(self, root, orvo, program, plugin, folder):
        self.root, self.orvo, self.program, self.plugin, self.folder = root, orvo, program, plugin, folder
        self.failures = 0

    def expect(self, held, what):
        if not held:
            self.failures += 1
            print(what)

    def run(self, source, target, clip=DOOR_BELL, name="Gong \u00e9", plugin=None):
        return subprocess.run(
            [self.program, plugin or self.plugin, source, target, str(clip), name], capture_output=True, text=True, check=False
        )

    def session(self, path):
        output = subprocess.run(
            [self.orvo, "convert", path, "-", "--to", "json", "--lossy", "--full"], capture_output=True, check=True
        ).stdout
        return json.loads(output)

    def renames_a_clip_and_keeps_the_rest(self):
        source, target = self.root / RADIO_SPOT, self.folder / "renamed.orvo"
        before = source.read_bytes()
        run = self.run(source, target)
        self.expect((run.returncode, run.stdout, run.stderr) == (0, "", ""), run)
        self.expect(source.read_bytes() == before, "the source was changed")
        old, new = self.session(source), self.session(target)
        self.expect(kept(new, DOOR_BELL, "?") == kept(old, DOOR_BELL, "?"), "it lost more than it admits")
        self.expect(clip_name(new, DOOR_BELL) == "Gong \u00e9", "the clip does not have the new name")
        kinds = [track["kind"] for track in new["audioTracks"] if track["name"] == "Jingle"]
        self.expect(kinds == ["instrument"], "the instrument track is lost")

    def takes_every_session(self):
        known = [*self.root.glob("examples/*/*.orvo"), *self.root.glob("tests/golden/*.orvo")]
        sources = [(source, self.a_clip_of(source)) for source in known]
        for number, (document, clip) in enumerate(ODD_DOCUMENTS):
            sources.append((self.folder / f"odd-{number}.orvo", clip))
            sources[-1][0].write_text(document, "utf-8")
        for source, clip in sources:
            run = self.run(source, self.folder / "any.orvo", clip=clip)
            self.expect((run.returncode, run.stdout) == (1 if clip is None else 0, ""), f"{source}: {run}")
        self.expect(len(known) >= 7, "too few sessions")

    def a_clip_of(self, source):
        clips = [clip["id"] for track in self.session(source)["audioTracks"] for clip in track["audioClips"]]
        return clips[-1] if clips else None

    def says_why(self):
        source = self.root / RADIO_SPOT
        missing, nowhere = self.folder / "missing.orvo", self.folder / "none" / "a.orvo"
        run = self.run(missing, self.folder / "b.orvo")
        reason = "no such file: check the path\n"
        logged = f"XML FATAL ERROR: (line: 0, col: 0) [ {missing}] {reason}"
        self.expect((run.returncode, run.stderr) == (1, f"{missing}: {reason}{logged}"), run)
        malformed = self.folder / "malformed.orvo"
        malformed.write_text("<orvo>\n<session></orvo>", "utf-8")
        run = self.run(malformed, self.folder / "b.orvo")
        place = f"XML FATAL ERROR: (line: 2, col: 12) [ {malformed}] "
        self.expect((run.returncode, run.stdout) == (1, ""), run)
        self.expect(run.stderr.startswith(place), run)
        run = self.run(source, self.folder / "d.orvo", plugin="none.so")
        self.expect(run.returncode == 2 and "none.so" in run.stderr, run)
        run = self.run(source, nowhere)
        self.expect(run.returncode == 1 and run.stderr.startswith(f'cannot write "{nowhere}": '), run)
        run = self.run(source, self.folder / "c.orvo", clip=999)
        self.expect((run.returncode, run.stderr) == (1, f"{source}: no clip has the id 999\n"), run)
        self.expect(not (self.folder / "c.orvo").exists(), "it saved an unchanged session")

    def spares_what_it_would_thin_out(self):
        target = self.folder / "same.orvo"
        content = (self.root / RADIO_SPOT).read_bytes()
        target.write_bytes(content)
        run = self.run(target, self.folder / "." / "same.orvo")
        self.expect(run.returncode == 2 and target.read_bytes() == content, f"it saved over its source: {run}")


def kept(session, clip_id, name):
    """The part of a session that the program keeps, with the given name for the clip."""
    tracks = []
    for track in session["audioTracks"]:
        clips = [{key: clip[key] for key in KEPT_OF_CLIP} for clip in track["audioClips"]]
        for clip in clips:
            clip["name"] = name if clip["id"] == clip_id else clip["name"]
        tracks.append(({key: track[key] for key in KEPT_OF_TRACK}, clips))
    return {key: session[key] for key in KEPT_OF_SESSION}, tracks


def clip_name(session, clip_id):
    return next(clip["name"] for track in session["audioTracks"] for clip in track["audioClips"] if clip["id"] == clip_id)


def main():
    with tempfile.TemporaryDirectory() as folder:
        checks = Checks(Path(sys.argv[1]), *sys.argv[2:5], Path(folder).resolve())
        checks.renames_a_clip_and_keeps_the_rest()
        checks.takes_every_session()
        checks.says_why()
        checks.spares_what_it_would_thin_out()
        return 1 if checks.failures else 0


if __name__ == "__main__":
    sys.exit(main())
