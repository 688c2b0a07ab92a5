"""Setting type: where each letter of a word stands, and the mask that its outlines give."""

from functools import lru_cache

import numpy as np
from PIL import Image, ImageDraw, ImageFont

# Letters are drawn this much larger and averaged down: smooth edges, places finer than a pixel
FINE = 4
FACES = {
    "sign": "/usr/share/texmf/fonts/opentype/public/tex-gyre/texgyreadventor-bold.otf",
    "soft": "/usr/share/texmf/fonts/opentype/public/tex-gyre/texgyreadventor-regular.otf",
    "tube": "/usr/share/fonts/truetype/comfortaa/Comfortaa-Bold.ttf",
}
X_HEIGHT = 0.54  # of "sign", in ems
CAP_HEIGHT = 0.74


@lru_cache(maxsize=None)
def font(face, pixels):
    return ImageFont.truetype(FACES[face], pixels, layout_engine=ImageFont.Layout.RAQM)


def places(text, face, size, tracking=0.0):
    """Left edge of every letter in pixels, the face's kerning included, and the word's width.
    `tracking` is in ems.
    """
    type_ = font(face, round(size * FINE))
    lefts, pen = [], 0.0
    for i, letter in enumerate(text):
        lefts.append(pen / FINE)
        pair = text[i : i + 2]
        step = (
            type_.getlength(pair) - type_.getlength(pair[1])
            if len(pair) == 2
            else type_.getlength(letter)
        )
        pen += step + (tracking * size * FINE if len(pair) == 2 else 0)
    return lefts, pen / FINE


def _patch(letter, face, size, degrees):
    """One letter on a patch of its own, turned about its middle; also where the patch's pen point
    lies in it.
    """
    type_, room = font(face, round(size * FINE)), round(size * FINE)
    patch = Image.new("L", (3 * room, 3 * room))
    ImageDraw.Draw(patch).text((room, 2 * room), letter, fill=255, font=type_, anchor="ls")
    if degrees:
        middle = (room + type_.getlength(letter) / 2, 2 * room - X_HEIGHT / 2 * room)
        patch = patch.rotate(degrees, Image.Resampling.BICUBIC, center=middle)
    return patch, room, 2 * room


def stamp(shape, text, x, baseline, face, size, tracking=0.0, pose=None):
    """Mask of `text` with its pen at (x, baseline). `pose(i)` gives letter i a drop in pixels and a
    turn in degrees.
    """
    height, width = shape
    sheet = Image.new("L", (width * FINE, height * FINE))
    lefts, _ = places(text, face, size, tracking)
    for i, (letter, left) in enumerate(zip(text, lefts)):
        drop, degrees = pose(i) if pose else (0, 0)
        patch, pen_x, pen_y = _patch(letter, face, size, degrees)
        at = (round((x + left) * FINE) - pen_x, round((baseline + drop) * FINE) - pen_y)
        sheet.paste(255, (at[0], at[1]), patch)
    return np.asarray(sheet.reduce(FINE), np.float32) / 255
