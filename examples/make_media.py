#!/usr/bin/env python3
"""Makes the sounds that the example sessions use.

    examples/make_media.py [FOLDER]

writes them to FOLDER (examples/radio-spot/media unless named): mono, 16 bits, 22050 samples a second.
Everything comes from sine waves and a seeded generator of noise, so the same files come out everywhere.
"""

import math
import random
import struct
import sys
import wave
from pathlib import Path

RATE = 22050
SEED = 1905


def seconds(length):
    """The times of the samples of a sound of `length` seconds."""
    return [index / RATE for index in range(round(length * RATE))]


def tone(frequency, time):
    return math.sin(2 * math.pi * frequency * time)


def decay(time, half_life):
    return 0.5 ** (time / half_life) if time >= 0 else 0.0


def noise(count):
    generator = random.Random(SEED)
    return [generator.uniform(-1, 1) for _ in range(count)]


def low_pass(samples, cutoff):
    """One pole: what lies above `cutoff` Hz falls by 6 dB an octave."""
    keep = math.exp(-2 * math.pi * cutoff / RATE)
    level, result = 0.0, []
    for sample in samples:
        level = keep * level + (1 - keep) * sample
        result.append(level)
    return result


def high_pass(samples, cutoff):
    return [sample - low for sample, low in zip(samples, low_pass(samples, cutoff))]


def bell(time, frequency):
    """A struck bar: its fundamental, and two partials that die sooner."""
    return (
        tone(frequency, time) * decay(time, 0.25)
        + 0.5 * tone(2.76 * frequency, time) * decay(time, 0.10)
        + 0.25 * tone(5.40 * frequency, time) * decay(time, 0.04)
    )


def door_bell():
    """Ding, and dong a major third lower."""
    dong = 0.55
    return [
        bell(time, 659.26) + (bell(time - dong, 523.25) if time >= dong else 0)
        for time in seconds(1.8)
    ]


def telephone_ring():
    """Two bells beaten twenty times a second, in two bursts."""

    def sample(time):
        burst = time % 0.8
        if burst > 0.6:
            return 0.0
        stroke = decay(burst % 0.05, 0.03)
        return stroke * (tone(1210, time) + 0.8 * tone(1480, time) + 0.3 * tone(3650, time))

    return [sample(time) for time in seconds(1.6)]


def rain():
    """A bright hiss, and drops that fall on it."""
    times = seconds(2.0)
    hiss = high_pass(low_pass(noise(len(times)), 6000), 800)
    generator = random.Random(SEED + 1)
    drops = [0.0] * len(times)
    for _ in range(60):
        start = generator.randrange(len(times) - 1000)
        frequency, loudness = generator.uniform(1500, 4500), generator.uniform(0.1, 0.6)
        for index in range(1000):
            time = index / RATE
            drops[start + index] += loudness * tone(frequency, time) * decay(time, 0.004)
    return [low + drop for low, drop in zip(hiss, drops)]


def sea_waves():
    """Noise that swells, breaks and runs out, brightest where the wave breaks."""
    times = seconds(2.0)
    source = noise(len(times))
    dark, bright = low_pass(source, 300), high_pass(low_pass(source, 3000), 500)

    def swell(time):
        return math.sin(math.pi * time / 2.0) ** 2

    return [
        swell(time) * (3 * low + swell(time) ** 2 * high)
        for time, low, high in zip(times, dark, bright)
    ]


def clock_tick():
    """Tick, tock: two clicks half a second apart, the second one darker."""

    def click(time, frequency):
        if not 0 <= time < 0.05:
            return 0.0
        return decay(time, 0.004) * (tone(frequency, time) + 0.6 * tone(2.3 * frequency, time))

    return [click(time, 2400) + click(time - 0.5, 1800) for time in seconds(1.0)]


def kick_drum():
    """A sine that drops from 150 to 45 Hz, with the beater's click in front."""
    phase, samples = 0.0, []
    for time in seconds(0.4):
        frequency = 45 + 105 * decay(time, 0.025)
        phase += 2 * math.pi * frequency / RATE
        samples.append(math.sin(phase) * decay(time, 0.09) + 0.3 * tone(1800, time) * decay(time, 0.002))
    return samples


SOUNDS = {
    "door-bell.wav": door_bell,
    "telephone-ring.wav": telephone_ring,
    "rain.wav": rain,
    "sea-waves.wav": sea_waves,
    "clock-tick.wav": clock_tick,
    "kick-drum.wav": kick_drum,
}


def without_clicks(samples):
    """Fades the last 10 ms to silence."""
    fade = RATE // 100
    tail = len(samples) - fade
    return [
        sample * (len(samples) - index) / fade if index > tail else sample
        for index, sample in enumerate(samples)
    ]


def write(path, samples):
    peak = max(abs(sample) for sample in samples)
    values = [round(sample / peak * 0.8 * 32767) for sample in without_clicks(samples)]
    with wave.open(str(path), "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(struct.pack(f"<{len(values)}h", *values))


def main():
    default = Path(__file__).resolve().parent / "radio-spot" / "media"
    folder = Path(sys.argv[1]) if len(sys.argv) > 1 else default
    folder.mkdir(parents=True, exist_ok=True)
    for name, make in SOUNDS.items():
        write(folder / name, make())


if __name__ == "__main__":
    main()
