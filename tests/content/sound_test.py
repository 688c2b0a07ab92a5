"""The finished music: nothing whistles where hats and ride play, and a drop is louder than what leads to it."""

import array
import math
import re
import subprocess
import unittest
from pathlib import Path

MUSIC = Path(__file__).resolve().parent.parent.parent / "data/waiting.mp3"
RATE, WINDOW = 44100, 4096
BAR = 240 / 132


def decoded(start, seconds):
    """Mono samples of a stretch of the music."""
    command = ["ffmpeg", "-v", "error", "-ss", str(start), "-t", str(seconds), "-i", MUSIC, "-ac", "1",
               "-ar", str(RATE), "-f", "f32le", "-"]
    return array.array("f", subprocess.run(command, capture_output=True, check=True).stdout)


def level(samples, hz):
    """Mean power at a frequency in dB, over windows of the samples (Goertzel)."""
    turn, total, count = 2 * math.cos(2 * math.pi * hz / RATE), 0.0, 0
    for start in range(0, len(samples) - WINDOW, WINDOW):
        a = b = 0.0
        for sample in samples[start:start + WINDOW]:
            a, b = sample + turn * a - b, a
        total, count = total + a * a + b * b - turn * a * b, count + 1
    return 10 * math.log10(total / count + 1e-12)


def momentary(first, last):
    """The loudest 400 ms of these bars, in LUFS."""
    command = ["ffmpeg", "-v", "error", "-ss", str(first * BAR), "-t", str((last - first) * BAR), "-i", MUSIC, "-af",
               "ebur128=metadata=1,ametadata=print:key=lavfi.r128.M:file=-", "-f", "null", "-"]
    said = subprocess.run(command, capture_output=True, text=True, check=True).stdout
    return max(map(float, re.findall(r"r128\.M=(\S+)", said)))


class Sound(unittest.TestCase):
    def test_no_tone_stands_out_where_struck_metal_plays(self):
        for bar in 33, 79, 103:
            samples = decoded(bar * BAR, 2)
            for tone in 9399, 12637:
                highest = max(level(samples, tone + off) for off in (-10, 0, 10))
                around = sorted(level(samples, tone + off) for off in (-700, -500, -300, 300, 500, 700))
                self.assertLess(highest - (around[2] + around[3]) / 2, 6, f"{tone} Hz at bar {bar}")

    def test_the_second_chorus_is_louder_than_the_build_before_it(self):
        self.assertGreaterEqual(momentary(70, 74) - momentary(62, 69.75), 1.9)


unittest.main()
