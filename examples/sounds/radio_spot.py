"""What is heard in the radio spot, each sound on its own: mono, 16 bits, 22050 samples a second."""

import math
import random

from sounds import synthesis
from sounds.synthesis import SEED, decay, tone

RATE = 22050


def seconds(length):
    return synthesis.seconds(length, RATE)


def noise(count):
    return synthesis.noise(count, SEED)


def low_pass(samples, cutoff):
    return synthesis.low_pass(samples, cutoff, RATE)


def high_pass(samples, cutoff):
    return synthesis.high_pass(samples, cutoff, RATE)


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


def media():
    return {name: synthesis.wave_file([make()], RATE) for name, make in SOUNDS.items()}
