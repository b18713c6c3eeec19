"""A narrator who says vowels only, and the room: mono, 16 bits, 16000 samples a second.

Speech is made as a throat makes it: a buzz at the pitch of the voice, or noise for consonants, rings in the
resonances of the mouth, whose frequencies make the vowel.
"""

import random

from sounds.synthesis import SEED, low_pass, noise, resonance, seconds, tone, wave_file

RATE = 16000

# The three lowest resonances of each vowel in Hz.
VOWELS = {
    "a": (730, 1090, 2440),
    "e": (530, 1840, 2480),
    "i": (270, 2290, 3010),
    "o": (570, 840, 2410),
    "u": (300, 870, 2240),
}


def voice(length, pitch, seed):
    """The buzz of a voice that falls a little, as at the end of a phrase, and never holds quite still."""
    generator = random.Random(seed)
    phase, samples = 0.0, []
    wobble = generator.uniform(4, 6)
    for time in seconds(length, RATE):
        phase += pitch * (1.06 - 0.12 * time / length + 0.01 * tone(wobble, time)) / RATE
        samples.append(1 - 2 * (phase % 1))
    return samples


def syllable(vowel, length, pitch, seed):
    """A hiss of 40 ms, then the vowel, which swells and dies away."""
    source = voice(length, pitch, seed)
    result = [0.0] * len(source)
    for frequency, loudness in zip(VOWELS[vowel], (1.0, 0.6, 0.3)):
        ringing = resonance(source, frequency, 80, RATE)
        result = [sum_ + loudness * sample for sum_, sample in zip(result, ringing)]
    hiss = noise(len(source), seed)
    attack, release, consonant = round(0.03 * RATE), round(0.06 * RATE), round(0.04 * RATE)
    return [
        sample * min(1, index / attack, (len(source) - index) / release)
        + (0.05 * hiss[index] * (1 - index / consonant) if index < consonant else 0)
        for index, sample in enumerate(result)
    ]


def phrase(vowels, length, pitch, seed):
    """The vowels one after the other in `length` seconds, each a tone lower than the one before it."""
    count = round(length * RATE)
    each = count // len(vowels)
    samples = []
    for index, vowel in enumerate(vowels):
        samples += syllable(vowel, each / RATE, pitch * 0.94**index, seed + index)
    return samples + [0.0] * (count - len(samples))


def introduction():
    """Two phrases of half a second, and a breath between them."""
    breath = [0.02 * sample for sample in low_pass(noise(round(0.2 * RATE), SEED), 1500, RATE)]
    return phrase("aoi", 0.5, 128, SEED) + breath + phrase("eua", 0.5, 120, SEED + 10)


def sentence_takes():
    """One phrase three times, each half a second and a little different."""
    return (
        phrase("oei", 0.5, 124, SEED + 20)
        + phrase("oei", 0.5, 131, SEED + 30)
        + phrase("oei", 0.5, 118, SEED + 40)
    )


def room_tone():
    """What is left of the booth when nobody speaks: air, and the hum of the lamp."""
    air = low_pass(noise(round(0.5 * RATE), SEED + 50), 400, RATE)
    return [sample + 0.02 * tone(100, time) for sample, time in zip(air, seconds(0.5, RATE))]


SOUNDS = {
    "introduction.wav": introduction,
    "sentence-takes.wav": sentence_takes,
    "room-tone.wav": room_tone,
}


def media():
    return {name: wave_file([make()], RATE) for name, make in SOUNDS.items()}
