"""Sounds for a harbour at night, mono, 8 bits, 48000 samples a second, and a small moving picture of it.

The picture is uncompressed and grey, 32 by 18 pixels, 25 frames a second: a boat's lamp that crosses the water,
with a white frame at the start of each second, where a clapper would stand.
"""

from sounds.synthesis import SEED, decay, high_pass, low_pass, noise, seconds, tone, wave_file

RATE = 48000
WIDTH, HEIGHT, FRAMES_PER_SECOND = 32, 18, 25
FRAMES = 75
HORIZON = 11


def harbour():
    """Water that laps twice, dull, with a rope that creaks between."""
    times = seconds(0.6, RATE)
    water = low_pass(noise(len(times), SEED + 90), 700, RATE)
    return [
        sample * (0.4 + 0.6 * tone(5 / 3, time) ** 2) + 0.02 * tone(310, time) * tone(27, time)
        for sample, time in zip(water, times)
    ]


def footstep():
    """A heel on planks, and the sole a tenth of a second later."""

    def thud(time, frequency):
        return tone(frequency, time) * decay(time, 0.02) if time >= 0 else 0.0

    times = seconds(0.24, RATE)
    scrape = high_pass(noise(len(times), SEED + 91), 2000, RATE)
    return [
        thud(time, 95) + 0.6 * thud(time - 0.1, 140) + 0.15 * sample * decay(time, 0.01)
        for time, sample in zip(times, scrape)
    ]


def pixel(frame, column, row):
    """Dark sky, darker water, and the lamp with its reflection, as a level of grey from 16 to 235."""
    if frame % FRAMES_PER_SECOND == 0:
        return 235
    lamp = frame * (WIDTH - 1) // (FRAMES - 1)
    distance = abs(column - lamp)
    if row < HORIZON:
        return 220 if distance == 0 and row == HORIZON - 1 else 40
    return max(24, 120 - 40 * distance - 8 * (row - HORIZON))


def lamp_on_the_water():
    """In the plainest form that players know: a line of text, then each frame's pixels after the word FRAME."""
    header = f"YUV4MPEG2 W{WIDTH} H{HEIGHT} F{FRAMES_PER_SECOND}:1 Ip A1:1 Cmono\n".encode()
    return header + b"".join(
        b"FRAME\n" + bytes(pixel(frame, column, row) for row in range(HEIGHT) for column in range(WIDTH))
        for frame in range(FRAMES)
    )


def media():
    return {
        "harbour.wav": wave_file([harbour()], RATE, 8),
        "footstep.wav": wave_file([footstep()], RATE, 8),
        "lamp-on-the-water.y4m": lamp_on_the_water(),
    }
