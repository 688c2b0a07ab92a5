"""How well the words come through: the plain speech against the whole mix.

After the short-time objective intelligibility measure (Taal and others, 2011): one-third octave bands, pieces of
0.38 s, and the correlation of each band's envelope with that of the plain speech. 1 is speech alone. A vocoder puts
tones of its own into those bands, so the voice alone stands near 0.6, and lower on long held vowels, where there is
hardly an envelope to follow. The figures serve to compare one mix with another.
"""
import numpy

from score import SIXTEENTHS
from sound import RATE, lufs

FRAME, HOP, PIECE = 1024, 512, 32
BANDS = 150 * 2 ** (numpy.arange(15) / 3)


def envelopes(sound):
    """Third-octave band amplitudes, (bands, frames)."""
    frames = numpy.lib.stride_tricks.sliding_window_view(sound, FRAME)[::HOP] * numpy.hanning(FRAME)
    power = numpy.abs(numpy.fft.rfft(frames)) ** 2
    hz = numpy.fft.rfftfreq(FRAME, 1 / RATE)
    masks = [(hz >= c / 2 ** (1 / 6)) & (hz < c * 2 ** (1 / 6)) for c in BANDS]
    return numpy.sqrt(numpy.array([power[:, mask].sum(axis=1) for mask in masks]))


def similarity(clean, mix):
    """The mean correlation over all bands and pieces, the loud noise of the mix clipped as the ear would."""
    a, b = envelopes(clean), envelopes(mix)
    scores = []
    for start in range(0, a.shape[1] - PIECE, PIECE // 2):
        x, y = a[:, start:start + PIECE], b[:, start:start + PIECE]
        if x.sum() < 1e-3 * a.sum() / max(1, a.shape[1] / PIECE):
            continue
        scale = numpy.linalg.norm(x, axis=1, keepdims=True) / (numpy.linalg.norm(y, axis=1, keepdims=True) + 1e-9)
        y = numpy.minimum(y * scale, x * (1 + 10 ** 0.75))
        x, y = (v - v.mean(axis=1, keepdims=True) for v in (x, y))
        norms = numpy.linalg.norm(x, axis=1) * numpy.linalg.norm(y, axis=1) + 1e-9
        scores.append(numpy.mean((x * y).sum(axis=1) / norms))
    return float(numpy.mean(scores))


def speech_band_power(sound):
    spectrum = numpy.abs(numpy.fft.rfft(sound)) ** 2
    hz = numpy.fft.rfftfreq(len(sound), 1 / RATE)
    return spectrum[(hz > 300) & (hz < 4000)].sum() / len(sound) ** 2


LEAST = {"chorus1": 0.5, "chorus2": 0.47, "final": 0.45}    # in the mix, the mean of a chorus's lines


def report_lines(stems, score, report):
    """One figure for each line: similarity to the plain speech of the voice alone and of the mix, and its level in it;
    and the mean of each chorus.
    """
    for section in score.sections:
        heard = []
        for line in section.lines:
            first = int(score.seconds(line.notes[0][0]) * RATE) - RATE // 10
            last = int(score.seconds(line.notes[-1][0] + line.notes[-1][1]) * RATE) + RATE // 10
            part = numpy.array(stems[max(0, first):last], float)
            voice, clean = part[:, 6:8].mean(axis=1), part[:, 10]
            mix = sum(part[:, 2 * i:2 * i + 2] for i in range(5)).mean(axis=1)
            level = 10 * numpy.log10(speech_band_power(voice) / speech_band_power(mix - voice))
            heard.append(similarity(clean, mix))
            report(f"  {line.number:2d} {line.text[:22]}", f"voice alone {similarity(clean, voice):.2f}, in the mix "
                   f"{heard[-1]:.2f}, {level:+5.1f} dB against the band")
        if section.name in LEAST:
            mean = sum(heard) / len(heard)
            report(f"words, {section.name}", f"{mean:.3f} in the mix", mean, low=LEAST[section.name])
