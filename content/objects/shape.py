"""The duck's form, told as distance: negative inside, positive outside, smooth where clay would be
smooth.

Units are the object's; the duck looks along +z and stands on y = -0.86.
"""

import numpy as np

BODY, HEAD = np.array([0.0, -0.38, -0.05]), np.array([0.0, 0.55, 0.36])
HEAD_RADIUS = 0.52


def _ball(p, centre, radius):
    return np.linalg.norm(p - centre, axis=-1) - radius


def _egg(p, centre, radii):
    """Close to the distance to an ellipsoid, and exact in sign."""
    q = p - centre
    near, slope = np.linalg.norm(q / radii, axis=-1), np.linalg.norm(q / np.square(radii), axis=-1)
    return near * (near - 1) / np.maximum(slope, 1e-9)


def _pin(p, start, end, first, last):
    """A capsule whose radius runs from `first` to `last`."""
    start, end = np.asarray(start, float), np.asarray(end, float)
    along = np.clip(((p - start) @ (end - start)) / ((end - start) @ (end - start)), 0, 1)
    return np.linalg.norm(p - start - along[..., None] * (end - start), axis=-1) - (
        first + (last - first) * along
    )


def _melt(a, b, width):
    """Union with a fillet of about `width`."""
    h = np.clip(0.5 + 0.5 * (b - a) / width, 0, 1)
    return b + (a - b) * h - width * h * (1 - h)


def _folded(p):
    """The right half stands for both."""
    return np.concatenate([np.abs(p[..., :1]), p[..., 1:]], -1)


def _wing(p):
    c, s = np.cos(0.32), np.sin(0.32)
    q = _folded(p) - [0.65, -0.29, -0.10]
    turned = np.stack([q[..., 0], c * q[..., 1] + s * q[..., 2], c * q[..., 2] - s * q[..., 1]], -1)
    return _melt(_egg(turned, 0, [0.12, 0.25, 0.44]), _ball(turned, [0.0, 0.05, -0.38], 0.07), 0.22)


def skin(p):
    """Body, neck, head, wings and tail in one piece."""
    trunk = _melt(_egg(p, BODY, [0.72, 0.54, 0.90]), _ball(p, [0, -0.30, 0.34], 0.53), 0.25)
    trunk = _melt(trunk, _pin(p, [0, -0.30, -0.62], [0, 0.17, -1.12], 0.36, 0.09), 0.26)
    trunk = _melt(trunk, _wing(p), 0.13)
    neck = _pin(p, [0, -0.10, 0.22], HEAD, 0.38, 0.30)
    whole = _melt(_melt(trunk, neck, 0.16), _ball(p, HEAD, HEAD_RADIUS), 0.10)
    return -_melt(-whole, p[..., 1] + 0.86, 0.10)  # a flat sole


def bill(p):
    """Upper and lower bill, a little open, bent upward at the tip; in the skin's coordinates."""
    q = p - [0, 0.43, 0.86]
    lift = 0.36 * np.square(np.maximum(q[..., 2], 0)) - 0.10 * np.square(q[..., 0]) * 4
    q = np.stack([q[..., 0], q[..., 1] - lift, q[..., 2]], -1)
    upper = _egg(q, [0, 0.045, 0.03], [0.265, 0.075, 0.33])
    lower = _egg(q, [0, -0.045, 0.0], [0.21, 0.055, 0.27])
    return _melt(upper, lower, 0.05)


def everything(p):
    return np.minimum(skin(p), bill(p))


def normal(field, p, step=0.004):
    """Unit gradient of a distance."""
    axes = np.eye(3) * step
    n = np.stack([field(p + a) - field(p - a) for a in axes], -1)
    return n / np.maximum(np.linalg.norm(n, axis=-1, keepdims=True), 1e-9)


def surface(field, origin, direction, reach):
    """Where rays from inside leave the solid: halving between 0 and `reach`, which must lie
    outside.
    """
    low, high = np.zeros(direction.shape[:-1]), np.full(direction.shape[:-1], float(reach))
    for step in np.linspace(0, reach, 48)[1:]:  # the first way out, should there be more than one
        inside = field(origin + direction * step) < 0
        open_ = high == reach
        low = np.where(inside & open_, step, low)
        high = np.where(~inside & open_, np.minimum(high, step), high)
    for _ in range(18):
        middle = (low + high) / 2
        inside = field(origin + direction * middle[..., None]) < 0
        low, high = np.where(inside, middle, low), np.where(inside, high, middle)
    return origin + direction * ((low + high) / 2)[..., None]
