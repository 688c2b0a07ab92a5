"""Reads the text score. A wrong line raises ScoreError with its number; README.md describes the form."""
import re
from dataclasses import dataclass, field

from notes import Chord, midi

SIXTEENTHS = 16     # in a bar


class ScoreError(Exception):
    pass


@dataclass
class Tune:
    """Notes from `bar` on. Each is (start, length, MIDI note), both in sixteenths of the piece, before the shift."""
    track: str
    notes: list


@dataclass
class Line:
    """One line of the words: `number` in the show, said (`spoken`) or sung, a note for each vowel."""
    number: int
    text: str
    spoken: bool
    notes: list


@dataclass
class Effect:
    name: str
    bar: float
    length: float       # bars
    amount: float


@dataclass
class Section:
    name: str
    first: float        # bar
    last: float         # bar after the last
    shift: int = 0
    chords: list = field(default_factory=list)      # a list of chords for each bar
    drums: dict = field(default_factory=dict)       # instrument: a pattern for each bar
    bass: list = field(default_factory=list)
    arp: list = field(default_factory=list)
    tunes: list = field(default_factory=list)
    lines: list = field(default_factory=list)
    effects: list = field(default_factory=list)
    settings: dict = field(default_factory=dict)    # "track.what": (at the start, at the end)
    layers: set = field(default_factory=set)        # strings, piano

    @property
    def bars(self):
        return -int(-(self.last - self.first) // 1)

    def setting(self, name, sixteenth, default):
        start, end = self.settings.get(name, (default, default))
        span = (self.last - self.first) * SIXTEENTHS
        return start + (end - start) * min(1.0, (sixteenth - self.first * SIXTEENTHS) / span)


class Score:
    """The whole piece: `tempo`, `bars`, `voice` (name, speed, pitch), `sections`, `stops` ((first, last) in bars)."""

    def __init__(self, path):
        self.tempo, self.bars, self.voice = 0.0, 0.0, None
        self.pronounce, self.patterns, self.sections, self.stops = {}, {}, [], []
        with open(path, encoding="utf-8") as file:
            for number, text in enumerate(file, 1):
                self._read(path, number, text.split(" #")[0].strip())

    def seconds(self, sixteenth):
        return sixteenth * 15.0 / self.tempo

    def _read(self, path, number, text):
        if not text or text.startswith("#"):
            return
        word, _, rest = text.partition(" ")
        reader = getattr(self, "_read_" + word, None)
        if not reader:
            raise ScoreError(f"{path}:{number}: no such line: {word}")
        try:
            reader(rest.strip())
        except (ValueError, KeyError, IndexError) as error:
            raise ScoreError(f"{path}:{number}: {error}") from error

    def _read_tempo(self, rest):
        self.tempo = float(rest)

    def _read_bars(self, rest):
        self.bars = float(rest)

    def _read_voice(self, rest):
        name, speed, pitch = rest.split()
        self.voice = (name, int(speed), int(pitch))

    def _read_pronounce(self, rest):
        word, phonemes = rest.split()
        self.pronounce[word] = phonemes

    def _pattern(self, kind, rest):
        name, cells = rest.split()
        if len(cells) != SIXTEENTHS:
            raise ValueError(f"{name} has {len(cells)} sixteenths")
        self.patterns[kind, name] = cells

    def _read_beat(self, rest):
        self._pattern("beat", rest)

    def _read_bassline(self, rest):
        self._pattern("bassline", rest)

    def _read_figure(self, rest):
        self._pattern("figure", rest)

    def _read_stop(self, rest):
        first, last = map(float, rest.split())
        self.stops.append((first, last))

    def _read_section(self, rest):
        name, first, last = rest.split()
        self.sections.append(Section(name, float(first), float(last)))

    def _read_shift(self, rest):
        self.sections[-1].shift = int(rest)

    def _read_chords(self, rest):
        section = self.sections[-1]
        section.chords = [[Chord(c, section.shift) for c in bar.split(",")] for bar in rest.split()]
        if len(section.chords) != section.bars:
            raise ValueError(f"{len(section.chords)} bars of chords for {section.bars} bars")

    def _bars(self, kind, names):
        """`tock*7 tockss` as one pattern for each bar; a shorter list is repeated when it fits evenly."""
        bars = []
        for name in names.split():
            name, _, times = name.partition("*")
            bars += [self.patterns[kind, name]] * int(times or 1)
        count = self.sections[-1].bars
        if count % len(bars):
            raise ValueError(f"{len(bars)} bars for {count} bars")
        return bars * (count // len(bars))

    def _read_drum(self, rest):
        name, _, bars = rest.partition(" ")
        self.sections[-1].drums[name] = self._bars("beat", bars)

    def _read_bass(self, rest):
        self.sections[-1].bass = self._bars("bassline", rest)

    def _read_arp(self, rest):
        self.sections[-1].arp = self._bars("figure", rest)

    def _read_set(self, rest):
        name, *values = rest.split()
        self.sections[-1].settings[name] = (float(values[0]), float(values[-1]))

    def _read_strings(self, _):
        self.sections[-1].layers.add("strings")

    def _read_piano(self, _):
        self.sections[-1].layers.add("piano")

    def _tune(self, track, rest):
        bar, _, notes = rest.partition(" ")
        self.sections[-1].tunes.append(Tune(track, melody(float(bar), notes)))

    def _read_lead(self, rest):
        self._tune("lead", rest)

    def _read_low(self, rest):
        self._tune("low", rest)

    def _read_bell(self, rest):
        self._tune("bell", rest)

    def _line(self, spoken, rest):
        match = re.fullmatch(r'(\S+)\s+(\d+)\s+"([^"]+)"\s+(.+)', rest)
        if not match:
            raise ValueError('a line is: bar number "words" notes')
        notes = melody(float(match[1]), match[4])
        self.sections[-1].lines.append(Line(int(match[2]), match[3], spoken, notes))

    def _read_say(self, rest):
        self._line(True, rest)

    def _read_sing(self, rest):
        self._line(False, rest)

    def _read_fx(self, rest):
        name, bar, length, *amount = rest.split()
        self.sections[-1].effects.append(Effect(name, float(bar), float(length), float(amount[0]) if amount else 1.0))


def melody(bar, text):
    """`D5:3 -:2 | F5:4` from a bar on: (start, length, MIDI note) in sixteenths; `|` goes on at the next bar line."""
    position, notes = bar * SIXTEENTHS, []
    line = (position // SIXTEENTHS + 1) * SIXTEENTHS
    for token in text.split():
        if token == "|":
            position, line = line, line + SIXTEENTHS
            continue
        name, _, length = token.partition(":")
        if name != "-":
            notes.append((position, int(length), midi(name)))
        position += int(length)
        if position > line:
            raise ValueError(f"{token} runs over the bar line")
    return notes
