#!/usr/bin/python3
"""Mixes the stems to stereo: master.py STEMS OUT brings the sum to the target loudness and holds its true peak.

Two steps: a curve that clears the bottom and opens the top a little, then a limiter that looks ahead. Gain and limiter
are run until the loudness is right, because the limiter takes a little of it away.
"""
import sys

import numpy

from sound import RATE, block_power, filtered, integrated, read_floats, true_peaks, write_24_bit

STEMS = 5                   # stereo pairs that are heard; what follows them is for measuring
TARGET = -14.0              # LUFS
CEILING_DB = -2.2           # true peak before encoding; the encoder adds up to about 0.8 dB
BLOCK = 32                  # samples for each step of the limiter's gain
LOOK_AHEAD = 6              # blocks: 4.4 ms
RELEASE_SECONDS = 0.11


def curve(hz):
    """Nothing under 28 Hz, a little less mud at 300 Hz, a little more air from 9 kHz."""
    low = 1 / (1 + (28 / numpy.maximum(hz, 0.1)) ** 6)
    mud = 10 ** (-1.2 / 20 * numpy.exp(-numpy.log2(numpy.maximum(hz, 1) / 300) ** 2))
    air = 10 ** (1.2 / 20 / (1 + (9000 / numpy.maximum(hz, 1)) ** 3))
    return numpy.where(hz > 0, low * mud * air, 0)


def mixed(stems):
    stereo = numpy.zeros((len(stems), 2))
    for pair in range(STEMS):
        stereo += stems[:, 2 * pair:2 * pair + 2]
    return numpy.stack([filtered(stereo[:, side], curve) for side in (0, 1)], axis=1)


def peaks_by_block(stereo):
    peaks = numpy.maximum(true_peaks(stereo[:, 0]), true_peaks(stereo[:, 1]))
    peaks = numpy.concatenate([peaks, numpy.zeros(-len(peaks) % BLOCK)])
    return peaks.reshape(-1, BLOCK).max(axis=1)


def limiter_gain(peaks, gain):
    """The limiter's gain for each block: at once down (a little before the peak), slowly up."""
    ceiling = 10 ** (CEILING_DB / 20)
    needed = numpy.minimum(1.0, ceiling / numpy.maximum(peaks * gain, 1e-9))
    padded = numpy.concatenate([needed[:1], needed, numpy.ones(LOOK_AHEAD)])
    lowest = numpy.min([padded[i:i + len(needed)] for i in range(LOOK_AHEAD + 2)], axis=0)
    step = 1 - numpy.exp(-BLOCK / RATE / RELEASE_SECONDS)
    released, current = numpy.empty(len(lowest)), 1.0
    for index, value in enumerate(lowest):
        current = min(value, current + (1 - current) * step)
        released[index] = current
    padded = numpy.concatenate([numpy.full(LOOK_AHEAD - 1, released[0]), released])
    return numpy.convolve(padded, numpy.full(LOOK_AHEAD, 1 / LOOK_AHEAD), "valid")


def limited(stereo, peaks, gain):
    blocks = limiter_gain(peaks, gain)
    centres = (numpy.arange(len(blocks)) + 0.5) * BLOCK
    curve_of_gain = numpy.interp(numpy.arange(len(stereo)), centres, blocks)
    return stereo * (gain * curve_of_gain)[:, None], blocks


def main(stems_path, out_path):
    stereo = mixed(read_floats(stems_path))
    peaks = peaks_by_block(stereo)
    gain = 10 ** ((TARGET - integrated(block_power(stereo))) / 20)
    for _ in range(4):
        result, blocks = limited(stereo, peaks, gain)
        loudness = integrated(block_power(result))
        if abs(loudness - TARGET) < 0.02:
            break
        gain *= 10 ** ((TARGET - loudness) / 20)
    write_24_bit(out_path, result)
    hardest = 20 * numpy.log10(blocks.min())
    print(f"mastered to {loudness:.2f} LUFS, limiter takes {hardest:.1f} dB at most, over 3 dB in "
          f"{100 * numpy.mean(blocks < 0.707):.2f} % of the time")


if __name__ == "__main__":
    main(*sys.argv[1:])
