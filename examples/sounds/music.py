"""Half a bar of drums and a strummed chord at 120 beats a minute: 16 bits, 22050 samples a second."""

import math

from sounds.synthesis import SEED, decay, high_pass, low_pass, noise, seconds, tone, wave_file

RATE = 22050

# C minor, low to high, in Hz.
CHORD = (130.81, 196.00, 261.63, 311.13, 392.00)


def kick(time):
    return math.sin(2 * math.pi * (48 * time + 2.6 * (1 - decay(time, 0.02)))) * decay(time, 0.07)


def drum_loop():
    """Kick and snare on the beats, a hi-hat on every eighth, the off-beats softer."""
    eighth = RATE // 4
    rattle = high_pass(noise(eighth, SEED + 60), 1200, RATE)
    sizzle = high_pass(noise(eighth, SEED + 61), 6000, RATE)

    def stroke(index, beat):
        time = index / RATE
        hat = (0.35 if beat % 2 == 0 else 0.2) * sizzle[index] * decay(time, 0.012)
        if beat == 0:
            return hat + kick(time)
        if beat == 2:
            return hat + 0.6 * rattle[index] * decay(time, 0.03) + 0.5 * tone(185, time) * decay(time, 0.04)
        return hat

    samples = [stroke(index, beat) for beat in range(4) for index in range(eighth)]
    # An eighth is 5512.5 samples: what four of them lack comes at the end, so that the loop keeps time.
    return [samples + [0.0] * (RATE - len(samples))]


def plucked(frequency, count, seed):
    """A string: a burst of noise that runs around, and loses its brightness on each turn."""
    ring = low_pass(noise(round(RATE / frequency), seed), 4000, RATE)
    samples = []
    for index in range(count):
        place, following = index % len(ring), (index + 1) % len(ring)
        samples.append(ring[place])
        ring[place] = 0.498 * (ring[place] + ring[following])
    return samples


def strummed_chord():
    """The strings from low to high, 12 ms apart, the low ones left and the high ones right."""
    count = RATE // 2
    left, right = [0.0] * count, [0.0] * count
    for string, frequency in enumerate(CHORD):
        start = round(0.012 * string * RATE)
        position = string / (len(CHORD) - 1)
        for index, sample in enumerate(plucked(frequency, count - start, SEED + 70 + string)):
            left[start + index] += (1 - 0.8 * position) * sample
            right[start + index] += (0.2 + 0.8 * position) * sample
    return [left, right]


def shaker():
    """One stroke, an eighth long."""
    grains = high_pass(noise(round(0.25 * RATE), SEED + 80), 4000, RATE)
    return [[grain * tone(2, time) ** 2 for grain, time in zip(grains, seconds(0.25, RATE))]]


SOUNDS = {
    "drum-loop.wav": drum_loop,
    "strummed-chord.wav": strummed_chord,
    "shaker.wav": shaker,
}


def media():
    return {name: wave_file(make(), RATE) for name, make in SOUNDS.items()}
