#!/usr/bin/env python3
"""Renders sessions with Ardour and compares the sound with a mix of our own.

    render_test.py ORVO

Ardour 7 (ardour7-export) and numpy must be installed. Each case is a session that this program writes as JSON, with its
media. The tool converts it, Ardour renders it without a display, and a mixer in numpy renders it too. Single samples may
differ by 1e-4. Across a region, Ardour reads the envelope of its gain up to a sample ahead, so that steep ones would
differ by more. Ardour sometimes dies or never ends, and sometimes writes samples at a wrong place: it is run until two
renderings are the same.
"""

import json
import os
import struct
import subprocess
import sys
import tempfile
from pathlib import Path

import numpy as np

TOLERANCE = 1e-4
ATTEMPTS = 12
SECONDS = 60  # an attempt takes two, but some never end
LATER = 4096  # samples until automation of levels has settled
RATES = (48000, 44100)  # the first one unless a case says otherwise


def write_wav(path, samples, rate):
    """Samples of 32-bit floats, a column a channel."""
    data = samples.astype("<f4").tobytes()
    channels = samples.shape[1]
    form = struct.pack("<HHIIHH", 3, channels, rate, rate * channels * 4, channels * 4, 32)
    body = b"WAVE" + b"fmt " + struct.pack("<I", len(form)) + form + b"data" + struct.pack("<I", len(data)) + data
    path.write_bytes(b"RIFF" + struct.pack("<I", len(body)) + body)


def read_wav(path):
    content = path.read_bytes()
    position, channels = 12, 0
    while position < len(content):
        name, size = content[position : position + 4], struct.unpack_from("<I", content, position + 4)[0]
        if name == b"fmt ":
            channels = struct.unpack_from("<H", content, position + 10)[0]
        elif name == b"data":
            return np.frombuffer(content[position + 8 : position + 8 + size], "<f4").reshape(-1, channels).astype(float)
        position += 8 + size + size % 2
    raise ValueError("no sound")


# Sessions


def level(value, points=None, name="Level"):
    parameter = {"parameterValue": value, "name": name}
    if points:
        keyframes = [{"value": p[1], "sampleOffset": p[0], "type": p[2] if len(p) > 2 else "linear"} for p in points]
        parameter["parameterKeyframes"] = {"keyframes": keyframes}
    return {"componentID": "kel.level", "name": name, "parameters": {"0": parameter}}


def clip(number, start, duration, file=1, source=0, **more):
    return {"id": number, "fileID": file, "startPoint": start, "duration": duration, "sourceInPoint": source, **more}


def track(number, kind="audio", channels="stereo", clips=(), **more):
    result = {"id": number, "index": number, "kind": kind, "name": f"Track {number}", "audioChannelType": channels, **more}
    if clips:
        result["audioClips"] = list(clips)
    return result


MASTER = track(9, "master")


def fades(duration, into, out, kind="log"):
    return {
        "fadeIn": {"startPoint": 0, "endPoint": into, "type": kind},
        "fadeOut": {"startPoint": duration - out, "endPoint": duration, "type": kind},
    }


def cases():
    """Name, tracks, what else the session has, and the samples to leave out of the comparison."""
    yield "offsets", [track(1, clips=[clip(1, 1001, 7001, source=333), clip(2, 30007, 5003, source=12345)])], {}, []
    yield "linear-fades", [track(1, clips=[clip(1, 1000, 20000, **fades(20000, 4801, 777))])], {}, []
    yield "cosine-fades", [track(1, clips=[clip(1, 1000, 20000, **fades(20000, 6400, 3200, "cosine"))])], {}, []
    yield "crossfade", [
        track(
            1,
            clips=[
                clip(1, 0, 20000, crossFadeTailClipID=2, **fades(20000, 0, 5000)),
                clip(2, 15000, 20000, file=2, crossFadeHeadClipID=1, zOrder=1, **fades(20000, 5000, 0)),
            ],
        )
    ], {}, []
    yield "clip-gains", [
        track(1, clips=[clip(1, 100, 9000, clipGain=level(-6)), clip(2, 12000, 9000, clipGain=level(9.5))])
    ], {}, []
    yield "clip-envelope", [
        track(1, clips=[clip(1, 100, 30000, source=50, clipGain=level(0, [(0, -20), (10000, 0), (25000, -12)]))])
    ], {}, []
    yield "clip-envelope-with-holds", [
        track(1, clips=[clip(1, 100, 30000, clipGain=level(0, [(0, -20, "hold"), (10000, -3, "hold"), (25000, 9)]))])
    ], {}, [(10099, 10100), (25099, 25100)]  # a jump takes a sample
    yield "covered", [
        track(
            1,
            clips=[
                clip(1, 0, 30000, clipAutoCrossfade=False),
                clip(2, 10000, 5000, file=2, zOrder=1, clipAutoCrossfade=False),
            ],
        )
    ], {}, []
    yield "overlapping", [
        track(1, clips=[clip(1, 0, 30000, clipAutoCrossfade=False), clip(2, 10000, 5000, file=2, clipAutoCrossfade=False)])
    ], {"mixingOptionState": {"playOverlappingClips": True}}, []
    yield "loop", [track(1, clips=[clip(1, 500, 110000, source=40000, looped=True, **fades(110000, 3000, 5000))])], {}, []
    yield "levels-and-pans", [
        track(1, clips=[clip(1, 0, 30000)], trackFader=level(-4.5), trackPan=level(0.5)),
        track(2, clips=[clip(2, 5000, 30000, file=2)], trackFader=level(7), trackPan=level(-0.25)),
    ], {}, []
    yield "mono", [
        track(1, channels="mono", clips=[clip(1, 0, 30000, file=3)], trackPan=level(-0.6)),
        track(2, channels="mono", clips=[clip(2, 7000, 30000, channelMap={"0": 1})], trackPan=level(0)),
    ], {}, []
    yield "mute-and-phase", [
        track(1, clips=[clip(1, 0, 30000)], phaseInverted=True),
        track(2, clips=[clip(2, 0, 30000, file=2)], trackMute=level(1)),
        track(3, clips=[clip(3, 3000, 3000, file=2, clipMute=level(1)), clip(4, 9000, 3000, file=2)]),
    ], {}, []
    yield "solo", [
        track(1, clips=[clip(1, 0, 30000)], solo=True),
        track(2, clips=[clip(2, 0, 30000, file=2)]),
    ], {}, []
    yield "busses", [
        track(1, clips=[clip(1, 0, 30000)], outputTrackID=5, trackFader=level(-3)),
        track(2, clips=[clip(2, 0, 20000, file=2)], trackPan=level(1)),
        track(5, "bus", trackFader=level(-2), trackPan=level(-0.5)),
    ], {}, []
    yield "sends", [
        track(
            1,
            clips=[clip(1, 0, 30000)],
            trackFader=level(-8),
            sendList={"sendSlots": [
                {"slotIndex": 0, "sendOutputID": 5, "preFader": True, "sendComponent": level(-5), "sendPan": level(0.5)},
                {"slotIndex": 1, "sendOutputID": 6, "preFader": False, "sendComponent": level(-1), "sendPan": level(0)},
            ]},
        ),
        track(5, "bus", trackFader=level(-2)),
        track(6, "bus", trackPan=level(-0.75)),
    ], {}, []
    yield "pan-automation", [
        track(1, clips=[clip(1, 0, 40000)], trackPan=level(0, [(0, -1), (40000, 1)])),
    ], {}, []
    points = [(0, -10, "hold"), (20000, -3, "hold")]
    yield "level-automation", [
        track(1, clips=[clip(1, 0, 40000)], trackFader=level(0, points)),
    ], {}, [(0, LATER), (20000 - 64, 20000 + LATER)]
    yield "channels", [track(1, clips=[clip(1, 0, 30000, channelMap={"0": 1, "1": 0})])], {}, []
    yield "another-rate", [
        track(1, clips=[clip(1, 1001, 20003, source=333, **fades(20003, 4801, 777))], trackFader=level(-3)),
        track(2, clips=[clip(2, 30007, 5003, source=12345, clipGain=level(-6, [(0, -5), (5000, 0)]))]),
    ], {"sampleRate": 44100}, []
    yield "end-of-media", [track(1, clips=[clip(1, 0, 60000, source=20000), clip(2, 70000, 10, source=0)])], {}, []


def media():
    rng = np.random.default_rng(7)
    return {
        1: rng.uniform(-0.4, 0.4, (48000, 2)),
        2: rng.uniform(-0.4, 0.4, (40000, 2)),
        3: rng.uniform(-0.4, 0.4, (36000, 1)),
    }


# Our mixer


def amplitude(value):
    return 10 ** (value / 20) if value > -144 else 0.0


def parameter(owner, key):
    return (owner.get(key) or {"parameters": {"0": {"parameterValue": 0}}})["parameters"]["0"]


def curve(one, length, convert):
    """The values of a parameter at each sample."""
    points = one.get("parameterKeyframes", {}).get("keyframes")
    if not points:
        return np.full(length, convert(one["parameterValue"]))
    values = np.empty(length)
    at = np.arange(length)
    values[:] = points[0]["value"]
    for i, point in enumerate(points):
        after = at >= point["sampleOffset"]
        values[after] = point["value"]
        if i + 1 < len(points) and point["type"] == "linear":
            end = points[i + 1]
            share = (at[after] - point["sampleOffset"]) / (end["sampleOffset"] - point["sampleOffset"])
            values[after] += share * (end["value"] - point["value"])
    return np.vectorize(convert)(values)


def ramp(length, kind):
    line = np.arange(length) / max(length - 1, 1)
    return 0.5 - 0.5 * np.cos(np.pi * line) if kind == "cosine" else line


def sound_of(one, files, channels):
    source = files[one["fileID"]]
    at = one["sourceInPoint"] + np.arange(one["duration"])
    if one.get("looped"):
        at = at % len(source)
    inside = at < len(source)
    duration = int(inside.sum())
    routes = [int(one.get("channelMap", {}).get(str(c), c)) for c in range(channels)]
    sound = source[at[inside]][:, routes] * curve(parameter(one, "clipGain"), one["duration"], amplitude)[:duration, None]
    if parameter(one, "clipMute")["parameterValue"] >= 0.5:
        sound = sound * 0
    for key, is_in in (("fadeIn", True), ("fadeOut", False)):
        fade = one.get(key)
        length = fade["endPoint"] - fade["startPoint"] if fade else 0
        if length:
            shape = ramp(length, fade["type"])
            if is_in:
                sound[:length] *= shape[:, None]
            else:
                sound[len(sound) - length :] *= shape[::-1][:, None]
    return sound


def play(one, files, length, mixes_all):
    channels = 1 if one["audioChannelType"] == "mono" else 2
    total = np.zeros((length, channels))
    for item in sorted(one.get("audioClips", []), key=lambda c: (c.get("zOrder", 0), c["startPoint"])):
        sound = sound_of(item, files, channels)
        begin, end = item["startPoint"], item["startPoint"] + len(sound)
        covers = not mixes_all and "crossFadeHeadClipID" not in item
        total[begin:end] = sound if covers else total[begin:end] + sound
    return total


def panned(sound, values, is_mono):
    """A balance for stereo; for mono, the sides are 3 dB softer at the centre."""
    right = (values + 1) / 2
    if is_mono:
        scale = 2 - 4 * 10 ** (-3 / 20)
        left = 1 - right
        gains = (left * (scale * left + 1 - scale), right * (scale * right + 1 - scale))
        return np.stack([sound[:, 0] * gain for gain in gains], axis=1)
    return sound * np.stack([np.minimum(1, 2 - 2 * right), np.minimum(1, 2 * right)], axis=1)


def mix(session, files, length):
    tracks = [t for t in session["audioTracks"] if t["kind"] != "master"]
    inputs = {t["id"]: np.zeros((length, 2)) for t in tracks}
    master = np.zeros((length, 2))
    mixes_all = session.get("mixingOptionState", {}).get("playOverlappingClips", False)
    has_solo = any(t.get("solo") for t in tracks)
    for one in sorted(tracks, key=lambda t: t["kind"] == "bus"):
        sound = inputs[one["id"]] if one["kind"] == "bus" else play(one, files, length, mixes_all)
        if parameter(one, "trackMute")["parameterValue"] >= 0.5 or (has_solo and not one.get("solo")):
            sound = sound * 0
        if one.get("phaseInverted"):
            sound = -sound
        after = sound * curve(parameter(one, "trackFader"), length, amplitude)[:, None]
        is_mono = sound.shape[1] == 1
        for send in one.get("sendList", {}).get("sendSlots", []):
            fed = sound if send["preFader"] else after
            pan = np.full(length, parameter(send, "sendPan")["parameterValue"])
            gain = amplitude(parameter(send, "sendComponent")["parameterValue"])
            inputs[send["sendOutputID"]] += panned(fed, pan, is_mono) * gain
        target = inputs.get(one.get("outputTrackID"), master)
        target += panned(after, curve(parameter(one, "trackPan"), length, lambda v: v), is_mono)
    return master


# The test


def succeeds(command, environment):
    try:
        done = subprocess.run(
            command, env=environment, stdin=subprocess.DEVNULL, capture_output=True, check=False, timeout=SECONDS
        )
    except subprocess.TimeoutExpired:
        return False
    return done.returncode == 0


def render(folder, name, home):
    out = folder / f"{name}.wav"
    environment = {**os.environ, "HOME": str(home), "XDG_CONFIG_HOME": str(home), "XDG_CACHE_HOME": str(home)}
    last = None
    for _ in range(ATTEMPTS):
        out.unlink(missing_ok=True)
        if succeeds(["nice", "ardour7-export", "-b", "float", "-o", out, folder / f"{name}.ardour", name], environment):
            rendered = read_wav(out)
            if last is not None and np.array_equal(last, rendered):
                return rendered
            last = rendered
    raise AssertionError(f"{name}: Ardour did not render the same twice")


def compare(name, rendered, expected, left_out):
    length = min(len(rendered), len(expected))
    assert np.abs(expected[length:]).max(initial=0) == 0, f"{name}: the rendering ends too early"
    keep = np.ones(length, bool)
    for begin, end in left_out:
        keep[begin:end] = False
    error = np.abs(rendered[:length] - expected[:length]) * keep[:, None]
    loudest = np.abs(rendered).max()
    assert loudest > 0.05, f"{name}: silence"
    at = int(error.max(axis=1).argmax())
    print(f"{name}: {length} samples, largest difference {error.max():.2e} at {at}, loudest {loudest:.3f}")
    return error.max()


def main():
    orvo = Path(sys.argv[1]).resolve()
    chosen = sys.argv[2:]
    failures = []
    with tempfile.TemporaryDirectory() as temporary:
        folder = Path(temporary)
        files = media()
        for rate in RATES:
            for number, samples in files.items():
                write_wav(folder / f"{rate}-{number}.wav", samples, rate)
        files = {n: s.astype("<f4").astype(float) for n, s in files.items()}
        for name, tracks, more, left_out in cases():
            if chosen and name not in chosen:
                continue
            length = max(c["startPoint"] + c["duration"] for t in tracks for c in t.get("audioClips", []))
            rate = more.get("sampleRate", RATES[0])
            session = {
                "sampleRate": rate,
                "duration": length,
                "audioTracks": [*tracks, MASTER],
                "files": [{"id": n, "path": str(folder / f"{rate}-{n}.wav")} for n in files],
                **more,
            }
            (folder / f"{name}.json").write_text(json.dumps(session))
            subprocess.run(
                [orvo, "convert", folder / f"{name}.json", folder / f"{name}.ardour", "--to", "ardour", "--report", folder / "report.txt"],
                check=True,
            )
            difference = compare(name, render(folder, name, folder), mix(session, files, length), left_out)
            if difference > TOLERANCE:
                failures.append(name)
    if failures:
        sys.exit("different: " + ", ".join(failures))


main()
