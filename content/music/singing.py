"""Lays speech on the beat: which moment of a spoken line sounds when, and which notes carry it.

Every vowel begins on its note. Consonants keep their natural pace before it; the vowel is stretched to fill what is
left of the note, most of it in its first part, so that a diphthong turns only at the end.
"""
from dataclasses import dataclass

from speech import is_vowel

HELD_PART = 0.35        # of a vowel that is stretched most ...
HELD_SHARE = 0.75       # ... and the share of the note that it fills
MOST_CONSONANT = 0.55   # of the time between two notes
REST = 0.12             # seconds between notes above which the voice stops


class SingingError(Exception):
    pass


@dataclass
class Syllable:
    onset: float    # seconds in the spoken line where its vowel begins
    end: float      # where its vowel ends
    start: float    # seconds in the piece where its note begins
    stop: float     # where its note ends
    note: int       # MIDI


def syllables(line, phonemes, score, shift):
    """Pairs vowels with notes; SingingError when their numbers differ."""
    vowels = [(time, phonemes[i + 1][0]) for i, (time, ipa) in enumerate(phonemes[:-1]) if is_vowel(ipa)]
    if len(vowels) != len(line.notes):
        said = " ".join(ipa for _, ipa in phonemes)
        raise SingingError(f'"{line.text}" has {len(vowels)} vowels ({said}) for {len(line.notes)} notes')
    return [Syllable(onset, end, score.seconds(start), score.seconds(start + length), note + shift)
            for (onset, end), (start, length, note) in zip(vowels, line.notes)]


def time_map(parts, spoken_seconds):
    """Breakpoints (seconds of the piece, seconds of the spoken line), rising in both, from first sound to last."""
    first, last = parts[0], parts[-1]
    points = [(first.start - first.onset, 0.0)]
    for part, following in zip(parts, parts[1:] + [None]):
        points.append((part.start, part.onset))
        if following:
            end = vowel_end(part, following)
            after = following.onset
        else:
            end, after = part.stop, spoken_seconds
        held = part.onset + HELD_PART * (part.end - part.onset)
        points.append((part.start + HELD_SHARE * (end - part.start), held))
        points.append((end, part.end))
        if not following:
            points.append((end + after - part.end, after))
    return points


def vowel_end(part, following):
    """When a vowel gives way to the consonants of the next one."""
    gap = following.start - part.start
    consonants = min(following.onset - part.end, MOST_CONSONANT * gap)
    return following.start - consonants


def carriers(parts):
    """(syllable, start, length) of the tones that carry the syllables: each lasts until the next, over short rests only."""
    tones = []
    for part, following in zip(parts, parts[1:] + [None]):
        stop = part.stop + 0.15
        if following and following.start - part.stop < REST:
            stop = following.start
        lead_in = 0.12 if not tones else 0.0     # the first consonants need something to sound on
        tones.append((part, part.start - lead_in, stop - part.start + lead_in))
    return tones
