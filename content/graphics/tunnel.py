"""The tunnel's texture: the dial of a station clock with nothing in the middle, so that one looks
through slice after slice.

The show multiplies it with magenta (red and blue rise with distance, green is gone) and draws it
in three nested squares a slice. So only red and blue carry colour here, and each has a part of the
dial for itself: rims and hours are red, figures and fog are blue. Where they lie over each other in
the depth they become magenta. The square's border is empty, or one would see it; the smallest copy is drawn five times
smaller than the texture without mipmaps, so nothing is finer than about five pixels.
"""

import numpy as np
from PIL import Image, ImageDraw, ImageFont

import ink

SIZE = 512
FACE = "/usr/share/texmf/fonts/opentype/public/tex-gyre/texgyreadventor-bold.otf"
FIGURES = {0: "12", 3: "3", 5: "17", 6: "6", 9: "9"}  # seventeen hours: the hour of the bus


def _figures(radius, height):
    """Mask of the hours that are named, each with its foot to the middle."""
    fine, mask = 2, Image.new("L", (2 * SIZE, 2 * SIZE))
    font = ImageFont.truetype(FACE, height * fine)
    for hour, text in FIGURES.items():
        patch = Image.new("L", mask.size)
        top = (SIZE, SIZE - radius * fine)
        ImageDraw.Draw(patch).text(top, text, fill=255, font=font, anchor="mm")
        mask.paste(255, (0, 0), patch.rotate(-30 * hour, Image.Resampling.BICUBIC))
    return np.asarray(mask.reduce(fine), np.float32) / 255


def _polar():
    y, x = np.mgrid[0:SIZE, 0:SIZE].astype(np.float32) + 0.5 - SIZE / 2
    return np.hypot(x, y) / (SIZE / 2), np.degrees(np.arctan2(x, -y)) % 360


def _band(radius, at, half, soft=0.008):
    return ink.smooth(half + soft, half - soft, np.abs(radius - at))


def _ticks(radius, angle, every, half_width, inner, outer):
    """Radial bars; `half_width` is in shares of half the texture's size."""
    off = np.abs((angle + every / 2) % every - every / 2)
    across = np.radians(off) * radius
    return ink.smooth(half_width + 0.006, half_width - 0.006, across) * _band(
        radius, (inner + outer) / 2, (outer - inner) / 2
    )


def _bars(radius, angle):
    """The hours: long bars where no figure stands, short ones above a figure."""
    hour = np.round(angle / 30) % 12
    named = np.isin(hour, list(FIGURES))
    return np.where(
        named,
        _ticks(radius, angle, 30, 0.022, 0.79, 0.85),
        _ticks(radius, angle, 30, 0.026, 0.58, 0.85),
    )


def tunnel():
    radius, angle = _polar()
    picture = ink.canvas(SIZE, SIZE)
    fog = ink.smooth(0.40, 0.72, radius) * ink.smooth(0.97, 0.80, radius)
    swirl = 0.75 + 0.25 * np.cos(np.radians(angle) * 3 + radius * 5)
    ink.paint(picture, fog * swirl, "#2848FF", 0.42)
    ink.paint(picture, ink.blur(_band(radius, 0.86, 0.03), 9), "#FF2030", 0.55)
    for mask, colour, opacity in (
        (_band(radius, 0.86, 0.022), "#FF6040", 0.95),
        (_ticks(radius, angle, 6, 0.010, 0.79, 0.815), "#4060FF", 0.7),
        (_bars(radius, angle), "#FF3838", 0.95),
        (_figures(0.655 * SIZE / 2, 58), "#7088FF", 0.95),
    ):
        ink.paint(picture, mask, colour, opacity)
    return picture * ink.smooth(0.985, 0.90, radius)[..., None]
