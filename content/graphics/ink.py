"""Drawing with light and ink: what the lyric images and the graphics share.

A picture is a float array of rows, columns and four channels: red, green, blue multiplied by
alpha, and alpha, all from 0 to 1 in the encoding of the screen (the show blends there, so what is
seen here is what it shows). A mask is a float array of rows and columns from 0 to 1. Nothing here
is random unless a seed is given: a second run writes the same bytes.
"""

import numpy as np
from PIL import Image

TEAL, PETROL, AMBER, ROSE = "#0E2A33", "#1E4F5A", "#FFB347", "#C8553D"
CREAM, PLUM, MINT, LILAC = (
    "#F5E9D0",
    "#4B2E57",
    "#7FC8B2",
    "#C9A6DA",
)  # lilac: plum, as bright as the other two names
NIGHT = "#071619"  # the dark around letters: teal, nearly black


def rgb(colour):
    """The three channels, 0 to 1, of "#RRGGBB"; a triple of floats is given back as it is."""
    if not isinstance(colour, str):
        return np.asarray(colour, np.float32)
    return np.array([int(colour[i : i + 2], 16) for i in (1, 3, 5)], np.float32) / 255


def mix(a, b, share):
    """The colour that lies `share` of the way from a to b."""
    return rgb(a) * (1 - share) + rgb(b) * share


def canvas(width, height):
    """An empty picture: transparent everywhere."""
    return np.zeros((height, width, 4), np.float32)


def paint(picture, mask, colour, opacity=1.0):
    """Lays `colour` (one colour, or a colour for each pixel) over the picture where the mask says
    so.
    """
    alpha = np.clip(mask * opacity, 0, 1)[..., None]
    picture *= 1 - alpha
    picture[..., :3] += rgb(colour) * alpha
    picture[..., 3:] += alpha


def _along(mask, kernel, axis):
    radius = len(kernel) // 2
    padded = np.pad(
        mask, [(radius, radius) if i == axis else (0, 0) for i in range(mask.ndim)], mode="edge"
    )
    length = mask.shape[axis]
    total = np.zeros_like(mask)
    for i, weight in enumerate(kernel):
        total += weight * (padded[i : i + length] if axis == 0 else padded[:, i : i + length])
    return total


def blur(mask, sigma):
    """Gaussian blur of a mask (or of a picture) by `sigma` pixels; the border continues outward."""
    radius = max(1, int(sigma * 3))
    kernel = np.exp(-0.5 * (np.arange(-radius, radius + 1) / sigma) ** 2).astype(np.float32)
    kernel /= kernel.sum()
    return _along(_along(mask, kernel, 0), kernel, 1)


def shifted(mask, dx, dy):
    """The mask moved by whole pixels; what comes in from outside is empty."""
    out = np.zeros_like(mask)
    height, width = mask.shape
    if abs(dx) >= width or abs(dy) >= height:
        return out
    out[max(0, dy) : height + min(0, dy), max(0, dx) : width + min(0, dx)] = mask[
        max(0, -dy) : height + min(0, -dy), max(0, -dx) : width + min(0, -dx)
    ]
    return out


def grown(mask, radius):
    """The mask widened by a round pen of `radius` pixels."""
    reach = int(np.ceil(radius))
    out = mask.copy()
    for dy in range(-reach, reach + 1):
        for dx in range(-reach, reach + 1):
            edge = np.clip(
                radius + 0.5 - np.hypot(dx, dy), 0, 1
            )  # a soft rim keeps the outline smooth
            if edge > 0:
                np.maximum(out, shifted(mask, dx, dy) * edge, out=out)
    return out


def smooth(low, high, value):
    """0 below `low`, 1 above `high`, an S-curve between them."""
    t = np.clip((value - low) / (high - low), 0, 1)
    return t * t * (3 - 2 * t)


def rounded(width, height, box, radius, soft=0.5):
    """Mask of a box (left, top, right, bottom) with round corners."""
    y, x = np.mgrid[0:height, 0:width].astype(np.float32) + 0.5
    half_x, half_y = (box[2] - box[0]) / 2, (box[3] - box[1]) / 2
    radius = min(radius, half_x, half_y)
    qx = np.abs(x - (box[0] + box[2]) / 2) - half_x + radius
    qy = np.abs(y - (box[1] + box[3]) / 2) - half_y + radius
    distance = (
        np.hypot(np.maximum(qx, 0), np.maximum(qy, 0)) + np.minimum(np.maximum(qx, qy), 0) - radius
    )
    return np.clip(0.5 - distance / (2 * soft), 0, 1)


def disc(width, height, x, y, radius, soft=0.5):
    """Mask of a filled circle."""
    rows, columns = np.mgrid[0:height, 0:width].astype(np.float32) + 0.5
    return np.clip(0.5 - (np.hypot(columns - x, rows - y) - radius) / (2 * soft), 0, 1)


def stroke(width, height, start, end, thickness, soft=0.5):
    """Mask of a line with round ends."""
    rows, columns = np.mgrid[0:height, 0:width].astype(np.float32) + 0.5
    dx, dy = end[0] - start[0], end[1] - start[1]
    along = ((columns - start[0]) * dx + (rows - start[1]) * dy) / max(dx * dx + dy * dy, 1e-6)
    along = np.clip(along, 0, 1)
    distance = np.hypot(columns - start[0] - along * dx, rows - start[1] - along * dy)
    return np.clip(0.5 - (distance - thickness / 2) / (2 * soft), 0, 1)


def _bled(picture):
    """Straight colours; where alpha is (almost) none, the colour of the nearest paint, so that
    filtering brings no fringe.
    """
    colour, weight = picture[..., :3].copy(), picture[..., 3:].copy()
    straight = np.where(weight > 1 / 255, colour / np.maximum(weight, 1e-6), 0)
    known = weight > 1 / 255
    for sigma in (1, 2, 4, 8, 16, 32):
        spread, share = blur(colour, sigma), blur(weight, sigma)
        found = ~known & (share > 1e-4)
        straight = np.where(found, spread / np.maximum(share, 1e-6), straight)
        known |= found
    mean = colour.sum((0, 1)) / max(weight.sum(), 1e-6)
    return np.clip(np.where(known, straight, mean), 0, 1)


def save(picture, path, seed=1):
    """Writes a PNG with straight alpha, 8 bits a channel; alpha is dithered, so that soft edges do
    not band.
    """
    noise = np.random.default_rng(seed).random(picture.shape[:2], np.float32)
    alpha = picture[..., 3]
    steps = np.floor(alpha * 255 + np.where((alpha > 0.001) & (alpha < 0.999), noise, 0.5))
    pixels = np.empty(picture.shape, np.uint8)
    pixels[..., :3] = np.round(_bled(picture) * 255)
    pixels[..., 3] = np.clip(steps, 0, 255)
    Image.fromarray(pixels, "RGBA").save(path, format="PNG", optimize=True)


def cropped(picture, margin=2, smallest=(0, 0)):
    """Cuts away empty borders down to `margin` transparent pixels, but not below `smallest` (width,
    height).
    """
    seen = picture[..., 3] > 1 / 255
    rows, columns = np.flatnonzero(seen.any(1)), np.flatnonzero(seen.any(0))
    out = picture[rows[0] : rows[-1] + 1, columns[0] : columns[-1] + 1]
    short = [
        max(2 * margin, smallest[1] - out.shape[0]),
        max(2 * margin, smallest[0] - out.shape[1]),
    ]
    return np.pad(
        out,
        [
            (short[0] // 2, short[0] - short[0] // 2),
            (short[1] // 2, short[1] - short[1] // 2),
            (0, 0),
        ],
    )
