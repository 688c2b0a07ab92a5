"""Styles that bring their own ground: enamel sign, split flaps, paper ticket, lamp display."""

import numpy as np

import ink
import setting
from letters import fall


class Box:
    """A word on a board of its own, `ahead` pixels in from the board's ends; the base of styles that
    bring their own ground.
    """

    def __init__(self, text, size, ahead, above=0.24, below=0.24, face="sign", tracking=0.0):
        self.text, self.size, self.ahead, self.face, self.tracking = (
            text,
            size,
            ahead,
            face,
            tracking,
        )
        self.letters = setting.places(text, face, size, tracking)[1]
        self.width = self.letters + 2 * ahead
        self.up, self.down = size * (setting.CAP_HEIGHT + above), size * below

    def board(self, sheet, x, baseline, radius):
        height, width = sheet.shape
        return ink.rounded(
            width, height, (x, baseline - self.up, x + self.width, baseline + self.down), radius
        )

    def mask(self, sheet, x, baseline):
        return setting.stamp(
            sheet.shape, self.text, x + self.ahead, baseline, self.face, self.size, self.tracking
        )


class Plate(Box):
    """An enamel sign: petrol ground, a cream line, cream letters."""

    def __init__(self, text, size):
        super().__init__(text, size, size * 0.3, 0.2, 0.34 if set(text) & set("gjpqy") else 0.2)

    def paint(self, sheet, x, baseline):
        height, width = sheet.shape
        outer = self.board(sheet, x, baseline, 13)
        box = (x, baseline - self.up, x + self.width, baseline + self.down)
        line = ink.rounded(width, height, [box[0] + 4, box[1] + 4, box[2] - 4, box[3] - 4], 10)
        inner = ink.rounded(width, height, [box[0] + 7, box[1] + 7, box[2] - 7, box[3] - 7], 7)
        letters = self.mask(sheet, x, baseline)
        enamel = fall(sheet.shape, box[1], box[3], "#22606D", "#123A45")
        sheet.shade_with(outer)
        for mask, colour in (
            (outer, enamel),
            (line, ink.CREAM),
            (inner, enamel),
            (letters, ink.CREAM),
        ):
            sheet.later(lambda picture, mask=mask, colour=colour: ink.paint(picture, mask, colour))


class Flaps:
    """Split flaps of a departure board, one letter each; capitals, as such boards have."""

    def __init__(self, text, size):
        self.text, self.size = text.upper(), size
        self.tile, self.gap = size * 0.86, size * 0.07
        self.width = len(text) * (self.tile + self.gap) - self.gap
        self.up, self.down = size * 0.98, size * 0.24

    def paint(self, sheet, x, baseline):
        for letter in self.text:
            self._flap(sheet, letter, x, baseline)
            x += self.tile + self.gap

    def _flap(self, sheet, letter, x, baseline):
        height, width = sheet.shape
        top, bottom = baseline - self.up, baseline + self.down
        split = baseline - setting.CAP_HEIGHT / 2 * self.size
        tile = ink.rounded(width, height, (x, top, x + self.tile, bottom), self.size * 0.09)
        rows = np.arange(height, dtype=np.float32)[:, None]
        glyph = setting.places(letter, "sign", self.size)[1]
        mask = setting.stamp(
            sheet.shape, letter, x + (self.tile - glyph) / 2, baseline, "sign", self.size
        )
        upper = fall(sheet.shape, top, split, "#2A373B", "#161F22")
        lower = fall(sheet.shape, split, bottom, "#2E3C40", "#1C2629")
        ground = np.where((rows < split)[..., None], upper, lower)
        paper = fall(sheet.shape, top, split, "#FFC768", "#F0A238")
        paper = np.where((rows < split)[..., None], paper, ink.rgb("#FFC05A"))
        slit = np.clip(1.6 - np.abs(rows + 0.5 - split), 0, 1) * tile
        shine = np.clip(1 - np.abs(rows + 0.5 - split - 2.5), 0, 1) * tile
        sheet.shade_with(tile)
        for part, colour, share in (
            (tile, ground, 1),
            (mask, paper, 1),
            (slit, "#05090A", 1),
            (shine, "#FFFFFF", 0.12),
        ):
            sheet.later(lambda picture, p=part, c=colour, s=share: ink.paint(picture, p, c, s))


class Ticket(Box):
    """A paper ticket with notched ends, a perforation and a printed stripe."""

    def __init__(self, text, size):
        super().__init__(text, size, size * 0.62, 0.24, 0.26)

    def paint(self, sheet, x, baseline):
        height, width = sheet.shape
        top, bottom, right = baseline - self.up, baseline + self.down, x + self.width
        paper = self.board(sheet, x, baseline, 7)
        bite = (bottom - top) * 0.15
        for side in (x, right):
            paper = np.minimum(paper, 1 - ink.disc(width, height, side, (top + bottom) / 2, bite))
        for tear in (x + self.size * 0.38, right - self.size * 0.38):
            for hole in np.arange(top + 7, bottom - 3, 9):
                paper = np.minimum(paper, 1 - ink.disc(width, height, tear, hole, 1.8))
        stripes = [
            ink.rounded(width, height, (x, edge, right, edge + 4), 0)
            for edge in (top + 6, bottom - 10)
        ]
        stripe = np.maximum(*stripes) * paper
        letters = self.mask(sheet, x, baseline)
        colour = fall(sheet.shape, top, bottom, "#FFF6E0", "#EAD7AE")
        sheet.shade_with(self.board(sheet, x, baseline, 7))
        for part, tint in ((paper, colour), (stripe, ink.ROSE), (letters, "#2A1B33")):
            sheet.later(lambda picture, p=part, t=tint: ink.paint(picture, p, t))


class Dots(Box):
    """A display of lamps on a black board: each lamp as bright as the letter covers it; capitals,
    which few lamps tell best.
    """

    PITCH = 5.0  # pixels from lamp to lamp

    def __init__(self, text, size, colour):
        super().__init__(text.upper(), size, 3 * self.PITCH, 0.26, 0.26, tracking=0.06)
        self.colour = colour

    def _lamps(self, sheet, x, baseline):
        """Centre and brightness of each lamp on the board."""
        letters = ink.blur(self.mask(sheet, x, baseline), 1.0)
        across = np.arange(x + self.PITCH, x + self.width - self.PITCH / 2, self.PITCH)
        down = np.arange(
            baseline - self.up + self.PITCH, baseline + self.down - self.PITCH / 2, self.PITCH
        )
        return [
            (cx, cy, float(ink.smooth(0.3, 0.7, letters[int(cy), int(cx)])))
            for cy in down
            for cx in across
        ]

    def paint(self, sheet, x, baseline):
        height, width = sheet.shape
        board, frame = self.board(sheet, x, baseline, 8), ink.grown(
            self.board(sheet, x, baseline, 8), 3
        )
        rows, columns = np.mgrid[0:height, 0:width].astype(np.float32) + 0.5
        lit, dark = np.zeros(sheet.shape, np.float32), np.zeros(sheet.shape, np.float32)
        for cx, cy, bright in self._lamps(sheet, x, baseline):
            part = (slice(int(cy) - 5, int(cy) + 6), slice(int(cx) - 5, int(cx) + 6))
            lamp = np.clip(2.5 - np.hypot(columns[part] - cx, rows[part] - cy), 0, 1)
            lit[part] = np.maximum(lit[part], lamp * bright)
            dark[part] = np.maximum(dark[part], lamp)
        sheet.shade_with(frame)
        for part, colour, share in (
            (frame, "#2B3A3E", 1),
            (board, "#090C0C", 1),
            (dark, ink.mix(self.colour, "#0A0C0C", 0.86), 1),
            (ink.blur(lit, 5) * board, self.colour, 0.55),
            (lit, self.colour, 1),
            (ink.smooth(0.72, 1, ink.blur(lit, 0.8)), "#FFF6DC", 0.7),
        ):
            sheet.later(lambda picture, p=part, c=colour, s=share: ink.paint(picture, p, c, s))
