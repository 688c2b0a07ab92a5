"""The vignette: dark soft corners and the dust of an old print, over the whole picture.

It is drawn pixel for pixel at 1280 by 720, always, so it must not cost the picture its light: the
corners lose about two thirds, the middle nothing. Its alpha is dithered when written; a smooth
fall over hundreds of pixels would band otherwise.
"""

import numpy as np

import ink

WIDTH, HEIGHT = 1280, 720


def _corners():
    y, x = np.mgrid[0:HEIGHT, 0:WIDTH].astype(np.float32) + 0.5
    nx, ny = np.abs(x / WIDTH * 2 - 1), np.abs(y / HEIGHT * 2 - 1)
    away = (nx**2.6 + (ny * 0.94) ** 2.6) ** (
        1 / 2.6
    )  # between an ellipse and the frame's own shape
    rim = ink.smooth(0.985, 1.03, np.maximum(nx, ny * 1.01)) * 0.25
    return np.clip(0.66 * ink.smooth(0.62, 1.24, away) ** 1.15 + rim, 0, 1), away


def _speck(chance, x, y):
    """A crumb: a few discs on a short walk."""
    mask, steps = np.zeros((HEIGHT, WIDTH), np.float32), int(chance.integers(1, 5))
    for _ in range(steps):
        part = ink.disc(40, 40, 20 + (x % 1), 20 + (y % 1), chance.uniform(0.5, 1.5), 0.7)
        left, top = int(np.clip(x - 20, 0, WIDTH - 40)), int(np.clip(y - 20, 0, HEIGHT - 40))
        window = mask[top : top + 40, left : left + 40]
        np.maximum(window, part, out=window)
        x, y = x + chance.uniform(-1.6, 1.6), y + chance.uniform(-1.6, 1.6)
    return mask


def _hair(chance, x, y):
    """A lint hair: a thin line that curls."""
    mask, heading, curl = (
        np.zeros((HEIGHT, WIDTH), np.float32),
        chance.uniform(0, 6.3),
        chance.uniform(-0.14, 0.14),
    )
    for _ in range(int(chance.integers(12, 34))):
        end = (x + 2 * np.cos(heading), y + 2 * np.sin(heading))
        left, top = int(np.clip(x - 8, 0, WIDTH - 16)), int(np.clip(y - 8, 0, HEIGHT - 16))
        line = ink.stroke(16, 16, (x - left, y - top), (end[0] - left, end[1] - top), 0.7, 0.8)
        window = mask[top : top + 16, left : left + 16]
        np.maximum(window, line, out=window)
        (x, y), heading = end, heading + curl + chance.uniform(-0.12, 0.12)
    return mask


def _scratch(chance, x):
    """A scratch of the film's travel: upright, nearly straight, broken, fainter to its ends."""
    rows, columns = np.mgrid[0:HEIGHT, 0:WIDTH].astype(np.float32)
    top, bottom = sorted(chance.uniform(-80, HEIGHT + 80, 2))
    wander = x + 1.5 * np.sin(rows / chance.uniform(60, 140) + chance.uniform(0, 6))
    breaks = ink.smooth(-0.4, 0.5, np.sin(rows / chance.uniform(9, 31)) + np.sin(rows / 47 + x))
    ends = ink.smooth(0, 60, rows - top) * ink.smooth(0, 60, bottom - rows)
    return np.clip(1 - np.abs(columns - wander), 0, 1) * breaks * ends


def vignette():
    chance = np.random.default_rng(17)
    corners, away = _corners()
    outside = ink.smooth(0.42, 0.9, away)  # dirt gathers at the borders; the middle stays clear
    picture = ink.canvas(WIDTH, HEIGHT)
    ink.paint(picture, corners, "#050D10")
    for number in range(110):
        x, y = chance.uniform(0, WIDTH), chance.uniform(0, HEIGHT)
        dark = number % 3 > 0
        ink.paint(
            picture,
            _speck(chance, x, y) * outside,
            "#120C08" if dark else "#F5E9D0",
            0.5 if dark else 0.16,
        )
    for _ in range(9):
        ink.paint(
            picture,
            _hair(chance, chance.uniform(0, WIDTH), chance.uniform(0, HEIGHT)) * outside,
            "#0C0806",
            0.42,
        )
    for x in chance.choice([41, 97, 163, 1118, 1187, 1241], 5, replace=False):
        ink.paint(picture, _scratch(chance, float(x)), "#F5E9D0", 0.1)
    return picture
