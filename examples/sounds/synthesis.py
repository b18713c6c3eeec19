"""Sine waves, seeded noise, simple filters, and the bytes of a wave file: what all examples' sounds are made of."""

import io
import math
import random
import struct
import wave

SEED = 1905


def seconds(length, rate):
    """The times of the samples of a sound of `length` seconds."""
    return [index / rate for index in range(round(length * rate))]


def tone(frequency, time):
    return math.sin(2 * math.pi * frequency * time)


def decay(time, half_life):
    return 0.5 ** (time / half_life) if time >= 0 else 0.0


def noise(count, seed):
    generator = random.Random(seed)
    return [generator.uniform(-1, 1) for _ in range(count)]


def low_pass(samples, cutoff, rate):
    """One pole: what lies above `cutoff` Hz falls by 6 dB an octave."""
    keep = math.exp(-2 * math.pi * cutoff / rate)
    level, result = 0.0, []
    for sample in samples:
        level = keep * level + (1 - keep) * sample
        result.append(level)
    return result


def high_pass(samples, cutoff, rate):
    return [sample - low for sample, low in zip(samples, low_pass(samples, cutoff, rate))]


def resonance(samples, frequency, bandwidth, rate):
    """Two poles: rings at `frequency` Hz, the longer the narrower its bandwidth."""
    radius = math.exp(-math.pi * bandwidth / rate)
    first, second = 2 * radius * math.cos(2 * math.pi * frequency / rate), -radius * radius
    last, before, result = 0.0, 0.0, []
    for sample in samples:
        last, before = (1 - radius) * sample + first * last + second * before, last
        result.append(last)
    return result


def without_clicks(samples, rate):
    """Fades the last 10 ms to silence."""
    fade = rate // 100
    tail = len(samples) - fade
    return [
        sample * (len(samples) - index) / fade if index > tail else sample
        for index, sample in enumerate(samples)
    ]


def wave_file(channels, rate, bits=16):
    """The bytes of a wave file of channels of one length, 8 or 16 bits, at 80 % of full scale."""
    channels = [without_clicks(samples, rate) for samples in channels]
    peak = max(abs(sample) for samples in channels for sample in samples)
    largest = 2 ** (bits - 1) - 1
    values = [round(sample / peak * 0.8 * largest) for frame in zip(*channels) for sample in frame]
    content = io.BytesIO()
    with wave.open(content, "wb") as file:
        file.setnchannels(len(channels))
        file.setsampwidth(bits // 8)
        file.setframerate(rate)
        # Eight bits are stored without a sign, sixteen with one.
        file.writeframes(
            bytes(value + 128 for value in values) if bits == 8 else struct.pack(f"<{len(values)}h", *values)
        )
    return content.getvalue()
