#!/usr/bin/python3
"""Writes the Csound score and the spoken lines: waiting.py SCORE FOLDER makes FOLDER/waiting.sco and FOLDER/voice.wav."""
import sys
import wave

import numpy

from arrange import Arranger
from score import Score, ScoreError, SIXTEENTHS
from singing import SingingError, carriers, syllables, time_map
from speech import RATE, Speaker

MAP_POINTS = 8192           # of a line's time map: about half a millisecond each
FIRST_MAP = 100             # table number of the first time map
SPOKEN_LOUDNESS = 0.1       # RMS that every line is brought to
HIGHEST_SPOKEN = 53         # MIDI: above it a spoken voice would be a cartoon's
TAIL = 1.7                  # seconds after the last bar


class Voice:
    """Collects the spoken lines in one sound file and the events that play them."""

    def __init__(self, score, arranger):
        self.score, self.arranger = score, arranger
        self.speaker = Speaker(*score.voice)
        self.sound, self.tables, self.events = [numpy.zeros(RATE // 10)], [], []

    def line(self, section, line):
        text = " ".join(self.score.pronounce.get(word, word) for word in line.text.split())
        sound, phonemes = self.speaker.say(text)
        parts = syllables(line, phonemes, self.score, section.shift)
        points = time_map(parts, len(sound) / RATE)
        offset = sum(map(len, self.sound)) / RATE
        self.sound += [sound * (SPOKEN_LOUDNESS / numpy.sqrt(numpy.mean(sound ** 2))), numpy.zeros(RATE // 10)]
        start, end = points[0][0], points[-1][0]
        table = FIRST_MAP + len(self.tables)
        self.tables.append(map_table(table, [(p - start, offset + s) for p, s in points], end - start))
        pitch = spoken_pitch(sound)
        ratio = frequency(min(HIGHEST_SPOKEN, *(part.note for part in parts))) / pitch
        level = section.setting("voice.level", line.notes[0][0], 1.0)
        self.events.append(("Speech", start, end - start, (level, table, int(line.spoken), ratio)))
        for part, first, length in carriers(parts):
            self._carrier(part, first, length, line.spoken)
            if not line.spoken:
                self.events.append(("Tune", first, length, (frequency(part.note - 12) / pitch,)))

    def _carrier(self, part, first, length, spoken):
        note, chord = part.note, self.arranger.chord_at(round(part.start * self.score.tempo / 15.0))
        self.events.append(("Carrier", first, length, (1.0, note, 0)))
        self.events.append(("Carrier", first, length, (0.6, note - 12, 0)))
        if not spoken:
            for side, lower in zip((-1, 1), chord.below(note, 2)):
                self.events.append(("Carrier", first, length, (0.55, lower, side)))


def frequency(note):
    return 440.0 * 2 ** ((note - 69) / 12)


def spoken_pitch(sound):
    """The one pitch of a spoken line in Hz, from its strongest repetition."""
    repeats = numpy.fft.irfft(numpy.abs(numpy.fft.rfft(sound, 2 * len(sound))) ** 2)
    shortest, longest = RATE // 300, RATE // 60
    return RATE / (shortest + int(numpy.argmax(repeats[shortest:longest])))


def map_table(number, points, duration):
    """A Csound table over the duration of a line that holds the spoken second for each moment."""
    cells = [(min(MAP_POINTS, round(time / duration * MAP_POINTS)), value) for time, value in points]
    distinct = [cell for cell, following in zip(cells, cells[1:] + [(None, 0)]) if cell[0] != following[0]]
    return f"f {number} 0 {MAP_POINTS + 1} -27 " + " ".join(f"{x} {y:.5f}" for x, y in distinct)


def write_wave(path, samples):
    with wave.open(path, "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes((numpy.clip(samples, -1, 1) * 32767).astype("<i2").tobytes())


def event_line(event):
    name, start, duration, values = event
    return f'i "{name}" {max(0.0, start):.5f} {duration:.5f} ' + " ".join(f"{v:.4g}" for v in values)


def write_score(path, score, tables, events):
    """The Csound score; the instruments that are always on end TAIL after the last bar."""
    end = score.seconds(score.bars * SIXTEENTHS) + TAIL
    with open(path, "w", encoding="utf-8") as file:
        file.write("\n".join(tables) + "\n")
        for name in ("Vocoder", "Space", "Mixer"):
            file.write(f'i "{name}" 0 {end:.5f}\n')
        file.write("\n".join(map(event_line, events)) + "\ne\n")


def main(score_path, folder):
    score = Score(score_path)
    arranger = Arranger(score)
    events = arranger.arrange()
    voice = Voice(score, arranger)
    for section in score.sections:
        for line in section.lines:
            voice.line(section, line)
    write_wave(f"{folder}/voice.wav", numpy.concatenate(voice.sound))
    write_score(f"{folder}/waiting.sco", score, voice.tables, events + voice.events)
    print(f"{len(events) + len(voice.events)} events, {len(voice.tables)} lines")


if __name__ == "__main__":
    try:
        main(*sys.argv[1:])
    except (ScoreError, SingingError, OSError, RuntimeError) as error:
        sys.exit(f"waiting.py: {error}")
