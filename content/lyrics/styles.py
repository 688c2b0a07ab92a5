"""The ways a word can look. Each style measures its word and later paints it on the sheet that all words of a line share.

A style gives its width and how far it reaches above and below the base line; `paint` gets the pen. Letters that stand free
report their mask to `sheet.shade`, from which the sheet makes one dark surround for the whole line; everything that is to lie
over the surround is put off with `sheet.later`.
"""

import numpy as np

import ink
import setting

TIGHT = -0.022  # tracking of the bold face in ems: headlines of the 1970s were set close


def fall(shape, top, bottom, above, below):
    """A colour for each pixel that runs from `above` at row `top` to `below` at row `bottom`."""
    share = ink.smooth(top, bottom, np.arange(shape[0], dtype=np.float32))[:, None, None]
    return np.broadcast_to(ink.rgb(above) * (1 - share) + ink.rgb(below) * share, (*shape, 3))


class Letters:
    """Free letters in one colour that warms towards the base line."""

    def __init__(self, text, size, above="#FFF8E8", below="#F0DDB4", face="sign", tracking=TIGHT, pose=None):
        self.text, self.size, self.face, self.tracking, self.pose = text, size, face, tracking, pose
        self.colours = (above, below)
        self.width = setting.places(text, face, size, tracking)[1]
        self.up, self.down = size * 0.75, size * (0.22 if set(text) & set("gjpqy,") else 0.03)

    def mask(self, sheet, x, baseline):
        return setting.stamp(sheet.shape, self.text, x, baseline, self.face, self.size, self.tracking, self.pose)

    def colour(self, sheet, baseline):
        return fall(sheet.shape, baseline - 0.72 * self.size, baseline, *self.colours)

    def paint(self, sheet, x, baseline):
        mask, colour = self.mask(sheet, x, baseline), self.colour(sheet, baseline)
        sheet.shade_with(mask)
        sheet.later(lambda picture: ink.paint(picture, mask, colour))


class Water(Letters):
    """Letters that stand in water: mint below a wavy line with light on it."""

    def __init__(self, text, size, level):
        super().__init__(text, size)
        self.level = level  # share of the x-height that is under water

    def colour(self, sheet, baseline):
        rows, columns = np.mgrid[0 : sheet.shape[0], 0 : sheet.shape[1]].astype(np.float32)
        line = baseline - self.level * self.size + 3 * np.sin(columns / 13) + 1.5 * np.sin(columns / 5.3)
        wet = ink.smooth(-1, 1, rows - line)[..., None]
        light = np.exp(-(((rows - line - 1) / 2.2) ** 2))[..., None]
        deep = fall(sheet.shape, baseline - self.level * self.size, baseline + 4, "#A5E3D0", "#5CB7A6")
        dry = super().colour(sheet, baseline)
        return (dry * (1 - wet) + deep * wet) * (1 - light) + ink.rgb("#FFFFFF") * light


class Clock(Letters):
    """A word whose o is a clock face; `hands` are (hours round the dial, length) pairs."""

    def __init__(self, text, size, hands):
        super().__init__(text, size, "#FFD58A", "#FFA53A")
        self.hands = hands

    def mask(self, sheet, x, baseline):
        return setting.stamp(sheet.shape, self.text.replace("o", "\u2002"), x, baseline, self.face, self.size, self.tracking)

    def paint(self, sheet, x, baseline):
        lefts, _ = setting.places(self.text, self.face, self.size, self.tracking)
        i = self.text.index("o")
        centre = (x + (lefts[i] + lefts[i + 1]) / 2, baseline - 0.272 * self.size)
        radius, (height, width) = 0.285 * self.size, sheet.shape
        dial = ink.disc(width, height, *centre, radius)
        face = ink.disc(width, height, *centre, radius - 0.065 * self.size)
        before = setting.stamp(sheet.shape, self.text[:i], x, baseline, self.face, self.size, self.tracking)
        after = setting.stamp(sheet.shape, self.text[i + 1 :], x + lefts[i + 1], baseline, self.face, self.size, self.tracking)
        letters, colour = np.maximum(before, after), self.colour(sheet, baseline)
        sheet.shade_with(np.maximum(letters, dial))
        sheet.later(lambda picture: ink.paint(picture, letters, colour))
        sheet.later(lambda picture: self._dial(picture, dial, face, centre))

    def _dial(self, picture, dial, face, centre):
        height, width = picture.shape[:2]
        ink.paint(picture, dial, "#FFB347")
        ink.paint(picture, face, "#FFF6E2")
        for hour, length in self.hands:
            angle = hour / 12 * 2 * np.pi
            reach = length * self.size
            tip = (centre[0] + np.sin(angle) * reach, centre[1] - np.cos(angle) * reach)
            ink.paint(picture, ink.stroke(width, height, centre, tip, 0.05 * self.size), ink.NIGHT)
        ink.paint(picture, ink.disc(width, height, *centre, 0.04 * self.size), ink.ROSE)


class Neon(Letters):
    """A bent glass tube: a pale core, its colour around it, and light on the dark board behind."""

    def __init__(self, text, size, colour):
        super().__init__(text, size, face="tube", tracking=-0.01)
        self.light = colour

    def paint(self, sheet, x, baseline):
        tube = self.mask(sheet, x, baseline)
        sheet.shade_with(ink.grown(tube, 5))
        core = ink.smooth(0.62, 1.0, ink.blur(tube, self.size * 0.026))
        sheet.later(lambda picture: ink.paint(picture, ink.blur(ink.grown(tube, 3), 16), self.light, 0.4))
        sheet.later(lambda picture: ink.paint(picture, ink.blur(tube, 4), self.light, 0.5))
        sheet.later(lambda picture: ink.paint(picture, tube, ink.mix(self.light, "#FFF3DC", 0.18)))
        sheet.later(lambda picture: ink.paint(picture, core, ink.mix(self.light, "#FFFBF0", 0.86)))


class Box:
    """A word on a board of its own, `ahead` pixels in from the board's ends; the base of styles that bring their own ground."""

    def __init__(self, text, size, ahead, above=0.24, below=0.24, face="sign", tracking=0.0):
        self.text, self.size, self.ahead, self.face, self.tracking = text, size, ahead, face, tracking
        self.letters = setting.places(text, face, size, tracking)[1]
        self.width = self.letters + 2 * ahead
        self.up, self.down = size * (setting.CAP_HEIGHT + above), size * below

    def board(self, sheet, x, baseline, radius):
        height, width = sheet.shape
        return ink.rounded(width, height, (x, baseline - self.up, x + self.width, baseline + self.down), radius)

    def mask(self, sheet, x, baseline):
        return setting.stamp(sheet.shape, self.text, x + self.ahead, baseline, self.face, self.size, self.tracking)


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
        for mask, colour in ((outer, enamel), (line, ink.CREAM), (inner, enamel), (letters, ink.CREAM)):
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
        mask = setting.stamp(sheet.shape, letter, x + (self.tile - glyph) / 2, baseline, "sign", self.size)
        upper = fall(sheet.shape, top, split, "#2A373B", "#161F22")
        lower = fall(sheet.shape, split, bottom, "#2E3C40", "#1C2629")
        ground = np.where((rows < split)[..., None], upper, lower)
        paper = fall(sheet.shape, top, split, "#FFC768", "#F0A238")
        paper = np.where((rows < split)[..., None], paper, ink.rgb("#FFC05A"))
        slit = np.clip(1.6 - np.abs(rows + 0.5 - split), 0, 1) * tile
        shine = np.clip(1 - np.abs(rows + 0.5 - split - 2.5), 0, 1) * tile
        sheet.shade_with(tile)
        for part, colour, share in ((tile, ground, 1), (mask, paper, 1), (slit, "#05090A", 1), (shine, "#FFFFFF", 0.12)):
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
        stripes = [ink.rounded(width, height, (x, edge, right, edge + 4), 0) for edge in (top + 6, bottom - 10)]
        stripe = np.maximum(*stripes) * paper
        letters = self.mask(sheet, x, baseline)
        colour = fall(sheet.shape, top, bottom, "#FFF6E0", "#EAD7AE")
        sheet.shade_with(self.board(sheet, x, baseline, 7))
        for part, tint in ((paper, colour), (stripe, ink.ROSE), (letters, "#2A1B33")):
            sheet.later(lambda picture, p=part, t=tint: ink.paint(picture, p, t))


class Dots(Box):
    """A display of lamps on a black board: each lamp as bright as the letter covers it; capitals, which few lamps tell best."""

    PITCH = 5.0  # pixels from lamp to lamp

    def __init__(self, text, size, colour):
        super().__init__(text.upper(), size, 3 * self.PITCH, 0.26, 0.26, tracking=0.06)
        self.colour = colour

    def _lamps(self, sheet, x, baseline):
        """Centre and brightness of each lamp on the board."""
        letters = ink.blur(self.mask(sheet, x, baseline), 1.0)
        across = np.arange(x + self.PITCH, x + self.width - self.PITCH / 2, self.PITCH)
        down = np.arange(baseline - self.up + self.PITCH, baseline + self.down - self.PITCH / 2, self.PITCH)
        return [(cx, cy, float(ink.smooth(0.3, 0.7, letters[int(cy), int(cx)]))) for cy in down for cx in across]

    def paint(self, sheet, x, baseline):
        height, width = sheet.shape
        board, frame = self.board(sheet, x, baseline, 8), ink.grown(self.board(sheet, x, baseline, 8), 3)
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


class Trio:
    """Three dots, one a duck: the mark of the whole production."""

    def __init__(self, size):
        self.radius, self.step = size * 0.1, size * 0.34
        self.width = 2 * self.step + 2 * self.radius
        self.up, self.down = size * 0.36, 0

    def paint(self, sheet, x, baseline):
        height, width = sheet.shape
        for i, (colour, lift) in enumerate(((ink.AMBER, 0), (ink.MINT, 0.6), (ink.LILAC, 0))):
            centre = (x + self.radius + i * self.step, baseline - self.radius * (1 + 2 * lift))
            dot = ink.disc(width, height, *centre, self.radius)
            sheet.shade_with(dot)
            sheet.later(lambda picture, d=dot, c=colour: ink.paint(picture, d, c))


def wave(size, step):
    return lambda i: (np.sin(i * step) * size * 0.11, np.cos(i * step) * -9)


def falling(size):
    return lambda i: (size * 0.012 * i**1.7, (-4.5 if i % 2 else 2.6) * i)


AMBER, MINT, LILAC = ("#FFD58A", "#FFA53A"), ("#C4F0E0", "#7FC8B2"), ("#EAD6F4", "#C39BD6")
STYLES = {
    ".": lambda text, size: Letters(text, size),
    "a": lambda text, size: Letters(text, size, *AMBER),
    "m": lambda text, size: Letters(text, size, *MINT),
    "l": lambda text, size: Letters(text, size, *LILAC),
    "s": lambda text, size: Letters(text, size, face="soft", tracking=-0.01),
    "p": lambda text, size: Letters(text, size, face="soft", tracking=0.09),
    "f": lambda text, size: Flaps(text, size),
    "n": lambda text, size: Neon(text, size, ink.AMBER),
    "N": lambda text, size: Neon(text, size, "#6FE0C0"),
    "R": lambda text, size: Neon(text, size, "#FF6F52"),
    "t": lambda text, size: Ticket(text, size),
    "d": lambda text, size: Dots(text, size, "#FFB028"),
    "D": lambda text, size: Dots(text, size, "#FF5A3C"),
    "w": lambda text, size: Letters(text, size, *MINT, tracking=0.03, pose=wave(size, 1.5)),
    "x": lambda text, size: Letters(text, size, *AMBER, tracking=0.02, pose=falling(size)),
    "c": lambda text, size: Clock(text, size, ((10, 0.11), (2, 0.17))),
    "C": lambda text, size: Clock(text, size, ((8.6, 0.17),)),
    "u": lambda text, size: Water(text, size, 0.42 if text == "water" else 0.2),
    "g": lambda text, size: Plate(text, size),
}
