"""Turns the text score into events for Csound: who plays what, when, how loud. All chance is seeded: same score, same piece.

An event is (instrument, seconds, duration, parameters). The first parameter is always the loudness, 0 to 1.
"""
import random

from notes import approach, voicing
from score import SIXTEENTHS

LOUDNESS = {"X": 1.0, "x": 0.78, "o": 0.52, "g": 0.28}
DRUMS = {"kick": "Kick", "snare": "Snare", "clap": "Clap", "hat": "Hat", "open": "OpenHat", "tick": "Clock", "rim": "Rim",
         "tom": "Tom", "crash": "Crash", "shaker": "Shaker", "ride": "Ride", "cowbell": "Cowbell"}
LOOSE = {"shaker": 0.004, "rim": 0.002}     # seconds that a hand comes late; the rest of the drums are machines
EFFECTS = {"impact": "Impact", "reverse": "Reverse", "riser": "Riser", "sweep": "Sweep", "down": "Downlifter",
           "rain": "Rain", "thunder": "Thunder", "bus": "Bus"}
UNSTOPPED = {"Clock", "Reverse", "Riser", "Sweep", "Rain"}
TOM_NOTES = (55, 52, 48, 45, 43)            # a fill walks down over the bar
PIANO_HITS = ((0, 1.0, 6, (0, 1, 2, 3)), (6, 0.55, 4, (1, 3)), (10, 0.7, 6, (2, 1)), (14, 0.4, 2, (3,)))


class Arranger:
    def __init__(self, score):
        self.score, self.events, self.chance = score, [], random.Random(17)
        self.spans = chord_spans(score)     # (first, last, chord), sixteenths, over the whole piece
        self.pad_notes = []

    def arrange(self):
        for section in self.score.sections:
            self._level(section)
            self._drums(section)
            self._bass(section)
            self._arpeggio(section)
            self._pads(section)
            self._tunes(section)
            self._effects(section)
        self.events = [event for event in map(self._stopped, self.events) if event]
        return sorted(self.events, key=lambda event: event[1])

    def chord_at(self, sixteenth):
        return next((c for first, last, c in self.spans if first <= sixteenth < last), self.spans[-1][2])

    def _stopped(self, event):
        """The event as the stops leave it: cut off where one begins, gone when it would begin inside."""
        name, start, duration, values = event
        for first, last in self.score.stops:
            silence, resume = self.score.seconds(first * SIXTEENTHS), self.score.seconds(last * SIXTEENTHS)
            if name in UNSTOPPED or start > resume - 1e-6 or start + duration <= silence:
                continue
            if start > silence - 1e-6:
                return None
            duration = silence - start
        return (name, start, duration, values)

    def _add(self, name, sixteenth, length, loudness, *values, late=0.0):
        if loudness > 0:
            self.events.append((name, self.score.seconds(sixteenth) + late, self.score.seconds(length), (loudness, *values)))

    def _human(self, loudness, spread=0.07):
        return loudness * (1 + self.chance.uniform(-spread, spread))

    def _cells(self, section, bars):
        """(sixteenth, cell, the cells after it) for every cell of a list of bars that lies in the section."""
        cells = "".join(bars)[:int((section.last - section.first) * SIXTEENTHS)]
        for index, cell in enumerate(cells):
            yield section.first * SIXTEENTHS + index, cell, cells[index + 1:]

    def _level(self, section):
        first, last = section.first * SIXTEENTHS, section.last * SIXTEENTHS
        values = (section.setting("mix.level", place, 1.0) for place in (first, last))
        self._add("Level", first, last - first, *values)

    def _drums(self, section):
        for drum, bars in section.drums.items():
            for sixteenth, cell, _ in self._cells(section, bars):
                if cell in LOUDNESS:
                    self._hit(section, drum, sixteenth, cell)

    def _hit(self, section, drum, sixteenth, cell):
        level = section.setting(drum + ".level", sixteenth, 1.0)
        loudness = level * self._human(LOUDNESS[cell], 0.0 if drum == "kick" else 0.07)
        late = self.chance.uniform(0, LOOSE.get(drum, 0.0))
        step = int(sixteenth) % SIXTEENTHS
        value = {"tom": TOM_NOTES[step * len(TOM_NOTES) // SIXTEENTHS], "tick": int(cell in "og")}.get(drum, 0)
        self._add(DRUMS[drum], sixteenth, 4, loudness, value, late=late)
        if drum == "kick":
            self._add("Duck", sixteenth, 3.9, loudness)

    def _bass(self, section):
        for sixteenth, cell, after in self._cells(section, section.bass):
            if cell in ".-":
                continue
            length = 1 + len(after) - len(after.lstrip("-"))
            bright = section.setting("bass.bright", sixteenth, 0.5)
            level = section.setting("bass.level", sixteenth, 1.0) * self._human(1.0 if sixteenth % 4 == 0 else 0.84)
            note = self._bass_note(section, sixteenth, cell)
            self._add("Bass", sixteenth, length * 0.92 if length > 1 else 0.85, level, note, bright)

    def _bass_note(self, section, sixteenth, cell):
        chord = self.chord_at(sixteenth)
        root = chord.bass_note()
        if cell == "<":
            next_bar = (sixteenth // SIXTEENTHS + 1) * SIXTEENTHS
            return approach(root, self.chord_at(next_bar).bass_note(), section.shift)
        return {"1": root, "8": root + 12, "5": chord.tone_near(root + 7), "3": chord.tone_near(root + 4)}[cell]

    def _arpeggio(self, section):
        for sixteenth, cell, _ in self._cells(section, section.arp):
            if cell == ".":
                continue
            bright = section.setting("arp.bright", sixteenth, 0.5) + self.chance.uniform(-0.04, 0.04)
            level = section.setting("arp.level", sixteenth, 1.0) * self._human(1.0 if sixteenth % 4 == 0 else 0.75, 0.12)
            pan = section.setting("arp.width", sixteenth, 0.6) * (1 if int(sixteenth) % 2 else -1) * self.chance.uniform(0.5, 1.0)
            self._add("Arp", sixteenth, 1.0, level, self.chord_at(sixteenth).ladder(int(cell)), bright, pan)

    def _pads(self, section):
        end = section.last * SIXTEENTHS
        for first, last, chord in self.spans:
            if not section.first * SIXTEENTHS <= first < end:
                continue
            self.pad_notes = voicing(chord, self.pad_notes)
            for index, note in enumerate(self.pad_notes):
                self._pad_note(section, first, last - first, note, index)
            if "piano" in section.layers:
                self._piano(section, first, last)

    def _pad_note(self, section, first, length, note, index):
        pan = (-0.7, 0.7, -0.3, 0.3)[index % 4]
        level, bright = (section.setting("pad." + what, first, 0.5) for what in ("level", "bright"))
        self._add("Pad", first, length, level, note, bright, pan)
        if "strings" in section.layers:
            self._add("Strings", first, length, section.setting("strings.level", first, 0.7), note + 12, -pan)

    def _piano(self, section, first, last):
        for bar in range(int(first), int(last), SIXTEENTHS):
            for step, loudness, length, voices in PIANO_HITS:
                if bar + step < last and (step == 0 or last - first >= SIXTEENTHS):
                    for voice in voices:
                        self._piano_note(bar + step, length, self._human(loudness, 0.15), voice)

    def _piano_note(self, sixteenth, length, loudness, voice):
        note = self.pad_notes[voice % len(self.pad_notes)]
        late = self.chance.uniform(0.0, 0.012)
        self._add("Piano", sixteenth, length * 1.6, loudness * 0.8, note, 0.25 - 0.17 * voice, late=late)

    def _tunes(self, section):
        instruments = {"lead": "Lead", "low": "Low", "bell": "Bell"}
        for tune in section.tunes:
            for start, length, note in tune.notes:
                level = section.setting(tune.track + ".level", start, 1.0)
                loudness = level * self._human(0.92, 0.06)
                self._add(instruments[tune.track], start, length * 0.95, loudness, note + section.shift)

    def _effects(self, section):
        for effect in section.effects:
            self._add(EFFECTS[effect.name], effect.bar * SIXTEENTHS, effect.length * SIXTEENTHS, effect.amount)


def chord_spans(score):
    """Every chord of the piece as (first, last, chord) in sixteenths; equal neighbours in a section are one span."""
    spans = []
    for section in score.sections:
        opening = len(spans)
        for index, bar in enumerate(section.chords):
            start = (section.first + index) * SIXTEENTHS
            end = min(start + SIXTEENTHS, section.last * SIXTEENTHS)
            for place, chord in enumerate(bar):
                first = start + place * SIXTEENTHS / len(bar)
                last = min(start + (place + 1) * SIXTEENTHS / len(bar), end)
                if len(spans) > opening and spans[-1][2].symbol == chord.symbol:
                    spans[-1] = (spans[-1][0], last, chord)
                else:
                    spans.append((first, last, chord))
    return spans
