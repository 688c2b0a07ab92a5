"""The vignette: dark soft corners over the whole picture. No dust: here it would stand still, and the
show's noise has dust that moves.

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
    return np.clip(0.66 * ink.smooth(0.62, 1.24, away) ** 1.15 + rim, 0, 1)


def vignette():
    picture = ink.canvas(WIDTH, HEIGHT)
    ink.paint(picture, _corners(), "#050D10")
    return picture
