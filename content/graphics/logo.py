"""The logo: zemlogo.svg turned into pixels and the show's title below it, with a dark surround like
the lyrics', so that both stand on any background.
"""

import io
import subprocess
from pathlib import Path

import numpy as np
from PIL import Image, ImageDraw, ImageFont

import ink

SOURCE = Path(__file__).with_name("zemlogo.svg")
FACE = "/usr/share/texmf/fonts/opentype/public/tex-gyre/texgyreadventor-regular.otf"
TITLE, SIZE, SPACING, BASELINE, MIDDLE = "waiting", 66, 26, 392, 372  # pixels of the picture


def _drawn(svg):
    png = subprocess.run(
        ["rsvg-convert"], input=svg.encode(), check=True, capture_output=True
    ).stdout
    picture = np.array(Image.open(io.BytesIO(png)).convert("RGBA"), np.float32) / 255
    picture[..., :3] *= picture[..., 3:]
    return picture


def _without(svg, group):
    """The drawing less one group, given by its id."""
    start = svg.index(f'<g id="{group}"')
    return svg[:start] + svg[svg.index("</g>", start) + 4 :]


def _title(width, height):
    """Mask of the title, widely spaced."""
    fine = 4
    font = ImageFont.truetype(FACE, SIZE * fine)
    steps = [font.getlength(letter) + SPACING * fine for letter in TITLE]
    mask, x = Image.new("L", (width * fine, height * fine)), MIDDLE * fine - sum(steps) / 2
    for letter, step in zip(TITLE, steps):
        ImageDraw.Draw(mask).text((x, BASELINE * fine), letter, fill=255, font=font, anchor="ls")
        x += step
    return np.asarray(mask.reduce(fine), np.float32) / 255


def logo():
    svg = SOURCE.read_text(encoding="utf-8")
    drawing, solid = _drawn(svg), _drawn(_without(svg, "light"))[..., 3]
    height, width = solid.shape
    title = _title(width, height)
    solid = np.maximum(solid, title)
    picture = ink.canvas(width, height)
    ink.paint(picture, ink.blur(ink.grown(solid, 10), 9), ink.NIGHT, 0.5)
    ink.paint(picture, ink.blur(ink.grown(solid, 4), 1.2), ink.NIGHT, 0.9)
    ink.paint(picture, title, ink.CREAM)
    return drawing + picture * (1 - drawing[..., 3:])
