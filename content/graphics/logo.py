"""The logo: zemlogo.svg turned into pixels, with a dark surround like the lyrics', so that it stands
on any background.
"""

import io
import subprocess
from pathlib import Path

import numpy as np
from PIL import Image

import ink

SOURCE = Path(__file__).with_name("zemlogo.svg")


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


def logo():
    svg = SOURCE.read_text(encoding="utf-8")
    drawing, solid = _drawn(svg), _drawn(_without(svg, "light"))[..., 3]
    height, width = solid.shape
    picture = ink.canvas(width, height)
    ink.paint(picture, ink.blur(ink.grown(solid, 10), 9), ink.NIGHT, 0.5)
    ink.paint(picture, ink.blur(ink.grown(solid, 4), 1.2), ink.NIGHT, 0.9)
    return drawing + picture * (1 - drawing[..., 3:])
