#!/usr/bin/env python3
"""Writes the two click sounds, 16-bit mono at 44.1 kHz, into the folder given as argument."""

import array
import math
import pathlib
import sys
import wave

RATE = 44100
PEAK = 0.35  # of full scale: soft, and far from clipping
ATTACK = 0.003  # seconds of fade-in
RELEASE = 0.020  # seconds of fade-out

# Pitch as a ratio to the ground tone, loudness, and time constant of the decay in seconds.
# The uneven ratios are those of a struck wooden bar, which sounds like a tap and not like a beep.
PARTIALS = ((1.0, 1.0, 0.022), (2.76, 0.30, 0.009), (5.40, 0.10, 0.004))


def fade(time, length):
    """Raised-cosine gain that starts and ends the sound at exactly zero."""
    gain = 1.0
    if time < ATTACK:
        gain *= 0.5 - 0.5 * math.cos(math.pi * time / ATTACK)
    if time > length - RELEASE:
        gain *= 0.5 - 0.5 * math.cos(math.pi * (length - time) / RELEASE)
    return gain


def tap(pitch, length):
    """Samples between -PEAK and PEAK of one tap of `pitch` hertz lasting `length` seconds."""
    count = round(length * RATE)
    samples = []
    for index in range(count):
        time = index / RATE
        value = sum(
            loudness * math.exp(-time / decay) * math.sin(2 * math.pi * pitch * ratio * time)
            for ratio, loudness, decay in PARTIALS
        )
        samples.append(value * fade(time, (count - 1) / RATE))
    loudest = max(abs(value) for value in samples)
    return [value * PEAK / loudest for value in samples]


def write(path, samples):
    frames = array.array("h", (round(value * 32767) for value in samples))
    if sys.byteorder == "big":
        frames.byteswap()
    with wave.open(str(path), "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(frames.tobytes())


def main():
    folder = pathlib.Path(sys.argv[1])
    write(folder / "1b1.wav", tap(392.0, 0.110))
    write(folder / "1b2.wav", tap(587.3, 0.110))


if __name__ == "__main__":
    main()
