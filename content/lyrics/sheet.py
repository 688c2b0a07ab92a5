"""One lyric line on its sheet: rows of words, the dark surround that keeps them readable over
anything, and the trimmings.
"""

import numpy as np

import ink
from letters import Trio
from styles import STYLES

MARGIN = 46  # room for surround and glow on every side
LEADING = 9  # pixels between the lowest ink of one row and the highest of the next
WORD_SPACE = {"p": 0.36, "f": 0.5}  # ems; 0.27 for all other marks


class Sheet:
    """Collects what the words want painted; `finish` paints it: surround first, then everything put
    off, in order.
    """

    def __init__(self, width, height):
        self.shape = (height, width)
        self.shade = np.zeros(self.shape, np.float32)
        self.steps = []

    def shade_with(self, mask):
        np.maximum(self.shade, mask, out=self.shade)

    def later(self, step):
        self.steps.append(step)

    def finish(self):
        height, width = self.shape
        picture = ink.canvas(width, height)
        around = ink.grown(self.shade, 4)
        ink.paint(
            picture, ink.blur(ink.grown(self.shade, 8), 7), ink.NIGHT, 0.62
        )  # soft: the picture below shows through
        ink.paint(
            picture, ink.shifted(ink.blur(around, 2.5), 1, 4), "#020709", 0.6
        )  # the shadow of a lamp from above
        ink.paint(
            picture, ink.blur(around, 1.1), ink.NIGHT, 0.93
        )  # a firm rim, for contrast over white
        for step in self.steps:
            step(picture)
        return picture


class Row:
    """Words in a row with their pens, `shift` pixels in from the sheet's left edge."""

    def __init__(self, size, shift, marks, words):
        self.parts, self.pens = [], []
        pen = shift
        for mark in marks:
            part = (
                Trio(size)
                if mark == "o"
                else STYLES[mark[0]](" ".join(next(words) for _ in mark), size)
            )
            self.parts.append(part)
            self.pens.append(pen)
            pen += part.width + size * WORD_SPACE.get(mark[0], 0.27)
        self.right = self.pens[-1] + self.parts[-1].width
        self.up, self.down = max(p.up for p in self.parts), max(p.down for p in self.parts)

    def paint(self, sheet, baseline):
        for part, pen in zip(self.parts, self.pens):
            part.paint(sheet, MARGIN + pen, baseline)


def _tally(sheet, rows, baselines):
    """Four strokes and one across, after the last row: somebody counts."""
    height, width = sheet.shape
    x, y = MARGIN + rows[0].right + 36, baselines[0]
    marks = [
        ink.stroke(width, height, (x + 15 * i, y - 48), (x + 15 * i - 3, y), 6) for i in range(4)
    ]
    marks.append(ink.stroke(width, height, (x - 13, y - 10), (x + 56, y - 40), 6))
    for mark in marks:
        sheet.shade_with(mark)
        sheet.later(lambda picture, m=mark: ink.paint(picture, m, ink.AMBER))


def _rule(sheet, rows, baselines):
    """A row of chairs under the words, side view, all alike, each with its cushion."""
    height, width = sheet.shape
    y = baselines[-1] + 26
    for x in np.arange(MARGIN + 6, MARGIN + rows[-1].right - 30, 46.0):
        legs = ((x + 3, y + 14, x + 1, y + 30), (x + 25, y + 14, x + 27, y + 30))
        lines = [(x - 1, y - 10, x + 3, y + 14), (x + 3, y + 14, x + 25, y + 14), *legs]
        chair = np.maximum.reduce([ink.stroke(width, height, l[:2], l[2:], 4) for l in lines])
        sheet.shade_with(chair)
        cushion = ink.rounded(width, height, (x + 5, y + 6, x + 26, y + 12), 3)
        sheet.shade_with(cushion)
        sheet.later(lambda picture, c=chair: ink.paint(picture, c, ink.CREAM))
        sheet.later(lambda picture, c=cushion: ink.paint(picture, c, "#E8735A"))


def _rain(sheet, rows, baselines):
    """Thin slanted streaks between and over the letters."""
    height, width = sheet.shape
    chance = np.random.default_rng(len(baselines) + int(rows[0].right))
    fall = np.zeros(sheet.shape, np.float32)
    for _ in range(46):
        x, y, long = (
            chance.uniform(34, width - 34),
            chance.uniform(24, height - 62),
            chance.uniform(14, 34),
        )
        drop = ink.stroke(
            width, height, (x, y), (x - long * 0.16, y + long), chance.uniform(1.6, 2.6), 0.8
        )
        np.maximum(fall, drop * chance.uniform(0.35, 0.95), out=fall)
    sheet.later(lambda picture: ink.paint(picture, ink.blur(fall, 1.6), ink.NIGHT, 0.5))
    sheet.later(lambda picture: ink.paint(picture, fall, "#BFEBDD", 0.8))


TRIMMINGS = {"+tally": _tally, "+rule": _rule, "+rain": _rain}
ROOM_BELOW = {"+rule": 62}  # pixels a trimming needs under the last row


def set_line(text, layout):
    """The picture of one lyric line: `layout` is the part of its layout.txt line after the number."""
    words = iter(text.split())
    rows, trimmings = [], []
    for row in layout.split("|"):
        head, *marks = row.split()
        trimmings += [mark for mark in marks if mark in TRIMMINGS]
        size, _, shift = head.partition(">")
        rows.append(
            Row(float(size), float(shift or 0), [m for m in marks if m not in TRIMMINGS], words)
        )
    if next(words, None) is not None:
        raise ValueError(f"the layout has too few marks for: {text}")
    return _painted(rows, trimmings)


def _painted(rows, trimmings):
    baselines, y = [], MARGIN
    for row in rows:
        baselines.append(y + row.up)
        y += row.up + row.down + LEADING
    width = int(max(row.right for row in rows)) + 2 * MARGIN
    height = int(y - LEADING + MARGIN) + max([ROOM_BELOW.get(t, 0) for t in trimmings], default=0)
    sheet = Sheet(width, height)
    for row, baseline in zip(rows, baselines):
        row.paint(sheet, baseline)
    for trimming in trimmings:
        TRIMMINGS[trimming](sheet, rows, baselines)
    return sheet.finish()
