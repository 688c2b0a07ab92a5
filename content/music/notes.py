"""Pitches and chords as numbers: MIDI notes (C4 = 60) and pitch classes (C = 0)."""
import re

STEPS = {"C": 0, "D": 2, "E": 4, "F": 5, "G": 7, "A": 9, "B": 11}
QUALITIES = {"": (0, 4, 7), "m": (0, 3, 7), "7": (0, 4, 7, 10), "maj7": (0, 4, 7, 11), "m7": (0, 3, 7, 10),
             "sus4": (0, 5, 7), "add9": (0, 2, 4, 7), "m6": (0, 3, 7, 9)}
SCALE = {5, 7, 9, 10, 0, 2, 4}      # F major, which is D minor
LOWEST_BASS = 31                    # G1: lower roots vanish on small speakers
LOWEST_ARPEGGIO = 60


def pitch_class(name):
    return (STEPS[name[0]] + {"#": 1, "b": -1}.get(name[1:2], 0)) % 12


def midi(name):
    """`Bb3` as a MIDI note; ValueError for anything else."""
    if not re.fullmatch(r"[A-G][#b]?\d", name):
        raise ValueError(f"no pitch: {name}")
    return pitch_class(name[:-1]) + 12 * (int(name[-1]) + 1)


class Chord:
    """A chord symbol such as `Gm7` or `C/E`. `classes` are its pitch classes from the root up, `bass` is the lowest."""

    def __init__(self, symbol, shift=0):
        upper, _, bass = symbol.partition("/")
        match = re.fullmatch(r"([A-G][#b]?)(.*)", upper)
        if not match or match[2] not in QUALITIES:
            raise ValueError(f"no chord: {symbol}")
        root = pitch_class(match[1]) + shift
        self.symbol = symbol
        self.classes = [(root + step) % 12 for step in QUALITIES[match[2]]]
        self.bass = (pitch_class(bass) + shift) % 12 if bass else self.classes[0]

    def bass_note(self):
        return LOWEST_BASS + (self.bass - LOWEST_BASS) % 12

    def tone_near(self, note):
        """The chord's tone nearest to a MIDI note, the lower one of two."""
        return min(range(note - 6, note + 7), key=lambda n: (n % 12 not in self.classes, abs(n - note)))

    def ladder(self, step):
        """Chord tone number `step`, 1 the lowest at or above LOWEST_ARPEGGIO."""
        tones = sorted(LOWEST_ARPEGGIO + (c - LOWEST_ARPEGGIO) % 12 for c in self.classes)
        octave, index = divmod(step - 1, len(tones))
        return tones[index] + 12 * octave

    def below(self, note, count):
        """`count` chord tones under a sung note, close by but never a second away from it."""
        tones = [n for n in range(note - 3, note - 24, -1) if n % 12 in self.classes]
        return tones[:count]


def voicing(chord, previous, lowest=53, highest=70):
    """The chord's tones in the octave that moves least from the previous voicing (a list of MIDI notes)."""
    options = []
    for start in range(lowest, lowest + 12):
        notes = sorted(start + (c - start) % 12 for c in chord.classes)
        if notes[0] == start and notes[-1] <= highest:
            options.append(notes)
    centre = (lowest + highest) / 2
    if not previous:
        return min(options, key=lambda notes: abs(sum(notes) / len(notes) - centre))
    return min(options, key=lambda notes: movement(notes, previous) + 0.1 * abs(notes[0] - lowest - 3))


def movement(notes, previous):
    return sum(min(abs(n - p) for p in previous) for n in notes)


def approach(current, target, shift):
    """The scale's neighbour of `target` on the side that `current` comes from."""
    direction = 1 if current > target else -1
    return next(n for n in (target + direction, target + 2 * direction) if (n - shift) % 12 in SCALE)
