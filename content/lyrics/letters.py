"""Styles of free letters: plain, under water, with a clock, neon; and the three dots."""

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

    def __init__(
        self, text, size, above="#FFF8E8", below="#F0DDB4", face="sign", tracking=TIGHT, pose=None
    ):
        self.text, self.size, self.face, self.tracking, self.pose = text, size, face, tracking, pose
        self.colours = (above, below)
        self.width = setting.places(text, face, size, tracking)[1]
        self.up, self.down = size * 0.75, size * (0.22 if set(text) & set("gjpqy,") else 0.03)

    def mask(self, sheet, x, baseline):
        return setting.stamp(
            sheet.shape, self.text, x, baseline, self.face, self.size, self.tracking, self.pose
        )

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
        line = (
            baseline
            - self.level * self.size
            + 3 * np.sin(columns / 13)
            + 1.5 * np.sin(columns / 5.3)
        )
        wet = ink.smooth(-1, 1, rows - line)[..., None]
        light = np.exp(-(((rows - line - 1) / 2.2) ** 2))[..., None]
        deep = fall(
            sheet.shape, baseline - self.level * self.size, baseline + 4, "#A5E3D0", "#5CB7A6"
        )
        dry = super().colour(sheet, baseline)
        return (dry * (1 - wet) + deep * wet) * (1 - light) + ink.rgb("#FFFFFF") * light


class Clock(Letters):
    """A word whose o is a clock face; `hands` are (hours round the dial, length) pairs."""

    def __init__(self, text, size, hands):
        super().__init__(text, size, "#FFD58A", "#FFA53A")
        self.hands = hands

    def mask(self, sheet, x, baseline):
        return setting.stamp(
            sheet.shape,
            self.text.replace("o", "\u2002"),
            x,
            baseline,
            self.face,
            self.size,
            self.tracking,
        )

    def paint(self, sheet, x, baseline):
        lefts, _ = setting.places(self.text, self.face, self.size, self.tracking)
        i = self.text.index("o")
        centre = (x + (lefts[i] + lefts[i + 1]) / 2, baseline - 0.272 * self.size)
        radius, (height, width) = 0.285 * self.size, sheet.shape
        dial = ink.disc(width, height, *centre, radius)
        face = ink.disc(width, height, *centre, radius - 0.065 * self.size)
        before = setting.stamp(
            sheet.shape, self.text[:i], x, baseline, self.face, self.size, self.tracking
        )
        after = setting.stamp(
            sheet.shape,
            self.text[i + 1 :],
            x + lefts[i + 1],
            baseline,
            self.face,
            self.size,
            self.tracking,
        )
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
        sheet.later(
            lambda picture: ink.paint(picture, ink.blur(ink.grown(tube, 3), 16), self.light, 0.4)
        )
        sheet.later(lambda picture: ink.paint(picture, ink.blur(tube, 4), self.light, 0.5))
        sheet.later(lambda picture: ink.paint(picture, tube, ink.mix(self.light, "#FFF3DC", 0.18)))
        sheet.later(lambda picture: ink.paint(picture, core, ink.mix(self.light, "#FFFBF0", 0.86)))


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
