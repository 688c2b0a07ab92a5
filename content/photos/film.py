"""The darkroom: turns a rendered scene (Radiance RGBE, linear light) into a picture. paper.py lays it on its paper."""

import numpy as np


def read_rgbe(path):
    """Linear RGB of a Radiance picture as float32, height x width x 3, rows top down."""
    data = open(path, "rb").read()
    head = data.index(b"\n\n") + 2
    end = data.index(b"\n", head)
    _, height, _, width = data[head:end].split()
    rows, at = [], end + 1
    for _ in range(int(height)):
        row, at = _read_row(data, at, int(width))
        rows.append(row)
    rgbe = np.stack(rows).astype(np.float32)
    return rgbe[..., :3] * np.exp2(rgbe[..., 3:] - 136.0)


def _read_row(data, at, width):
    if not (data[at] == 2 and data[at + 1] == 2 and data[at + 2] < 128):        # stored flat
        flat = np.frombuffer(data, np.uint8, width * 4, at)
        return flat.reshape(width, 4), at + width * 4
    at += 4
    planes = np.empty((4, width), np.uint8)
    for plane in planes:
        x = 0
        while x < width:
            count = data[at]
            if count > 128:                                                     # a run of one value
                plane[x:x + count - 128] = data[at + 1]
                x, at = x + count - 128, at + 2
            else:
                plane[x:x + count] = np.frombuffer(data, np.uint8, count, at + 1)
                x, at = x + count, at + 1 + count
    return planes.T, at


def blur(image, radius):
    """Gaussian blur of a float picture, mirrored at the edges."""
    reach = max(1, int(radius * 3))
    weights = np.exp(-0.5 * (np.arange(-reach, reach + 1) / radius) ** 2)
    weights /= weights.sum()
    for axis in (0, 1):
        pad = [(0, 0)] * image.ndim
        pad[axis] = (reach, reach)
        padded = np.pad(image, pad, mode="symmetric")
        length = image.shape[axis]
        image = sum(w * np.take(padded, range(i, i + length), axis) for i, w in enumerate(weights))
    return image


def develop(light, look, seed):
    """Film: halation, filmic curve, split toning, vignette, grain. Gives display values 0..1.
    `look` holds exposure (factor), warmth (-1..1), bloom, vignette, grain, fade and contrast (1 is plain)."""
    height, width = light.shape[:2]
    light = np.minimum(light, 24.0) * look["exposure"]
    bright = np.maximum(light - 0.9, 0.0)
    light = light + look["bloom"] * (0.10 * blur(bright, 3.0)
                                     + 0.10 * blur(bright, 13.0) * np.array([1.2, 0.75, 0.5]))
    light = light * np.array([1 + 0.16 * look["warmth"], 1 + 0.02 * look["warmth"], 1 - 0.20 * look["warmth"]])
    y, x = np.mgrid[0:height, 0:width]
    corner = ((x / (width - 1) - 0.5) ** 2 + (y / (height - 1) - 0.5) ** 2) * 2
    light = light * (1 - 0.55 * look["vignette"] * corner[..., None] ** 1.4)
    light = light + 0.09 * ((light @ np.array([0.3, 0.59, 0.11]))[..., None] - light)   # dyes are never pure
    curve = light * (2.51 * light + 0.03) / (light * (2.43 * light + 0.59) + 0.14)
    tone = np.clip(curve, 0, 1) ** (1 / 2.2)
    tone = 0.5 + (tone - 0.5) * look["contrast"]
    grey = tone @ np.array([0.3, 0.59, 0.11])
    shade = np.clip(1 - grey, 0, 1)[..., None] ** 2
    shine = np.clip(grey, 0, 1)[..., None] ** 2
    tone = tone + look["fade"] * (shade * np.array([0.012, 0.030, 0.036]) + shine * np.array([0.010, 0.000, -0.040]))
    roll = np.random.default_rng(seed)
    # One grain for the three layers and a little of each layer's own; strongest in the middle tones.
    grain = blur(roll.normal(size=(height, width, 1)), 0.55) * 1.6 + blur(roll.normal(size=(height, width, 3)), 0.6) * 0.6
    tone = tone + look["grain"] * 0.0115 * grain * (0.45 + 2.2 * np.clip(grey * (1 - grey), 0, 1))[..., None]
    return np.clip(tone, 0, 1)
