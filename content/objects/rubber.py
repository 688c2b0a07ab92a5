"""What the duck is made of: its paint, and the light that is baked into its texture."""

import numpy as np

import shape
from mesh import turn_y
from solids import FILL, KEY

TURN = turn_y(34)  # the duck looks past the viewer's right shoulder
# From the head's middle to its left eye, the viewer's right.
EYE = np.array([np.sin(0.52) * np.cos(0.16), np.sin(0.16), np.cos(0.52) * np.cos(0.16)])


def _smooth(low, high, x):
    t = np.clip((x - low) / (high - low), 0, 1)
    return t * t * (3 - 2 * t)


def _mix(a, b, share):
    return a * (1 - share[..., None]) + np.asarray(b) * share[..., None]


def _skin_paint(point):
    """Yellow rubber; eyes and cheeks are painted on, as on any duck of this kind."""
    colour = np.broadcast_to(np.array([1.0, 0.70, 0.13]), point.shape)
    folded = np.concatenate([np.abs(point[..., :1]), point[..., 1:]], -1) - shape.HEAD
    toward = folded / np.maximum(np.linalg.norm(folded, axis=-1, keepdims=True), 1e-9)
    on_head = (np.linalg.norm(folded, axis=-1) < shape.HEAD_RADIUS + 0.05) & (folded[..., 1] > -0.3)
    angle = lambda d: np.degrees(
        np.arccos(np.clip(toward @ (np.asarray(d) / np.linalg.norm(d)), -1, 1))
    )
    at = lambda bearing, height: [
        np.sin(bearing) * np.cos(height),
        np.sin(height),
        np.cos(bearing) * np.cos(height),
    ]
    colour = _mix(
        colour, [0.93, 0.36, 0.22], 0.45 * _smooth(17, 3, angle(at(0.85, -0.17))) * on_head
    )
    white, pupil = _smooth(14.6, 13.8, angle(EYE)), _smooth(9.2, 8.4, angle(at(0.46, 0.15)))
    colour = _mix(colour, [0.55, 0.30, 0.05], 0.6 * _smooth(16.2, 14.6, angle(EYE)) * on_head)
    colour = _mix(colour, [1.0, 0.98, 0.93], white * on_head)
    return _mix(colour, [0.05, 0.09, 0.11], pupil * on_head)


def _glints(point):
    """The lamp in the eyes: one dot each, on the same side of both."""
    q = (point - shape.HEAD) / np.maximum(
        np.linalg.norm(point - shape.HEAD, axis=-1, keepdims=True), 1e-9
    )
    light = np.zeros(point.shape[:-1])
    for bearing in (-0.46, 0.46):
        for off, up, size in ((-0.055, 0.065, 3.1), (0.06, -0.055, 1.5)):
            b, h = bearing + off, 0.15 + up
            d = np.array([np.sin(b) * np.cos(h), np.sin(h), np.cos(b) * np.cos(h)])
            light = np.maximum(
                light, _smooth(size, size - 0.8, np.degrees(np.arccos(np.clip(q @ d, -1, 1))))
            )
    return light * (np.linalg.norm(point - shape.HEAD, axis=-1) < shape.HEAD_RADIUS + 0.05)


def _occlusion(point, normal):
    """How open the sky is: 1 free, 0 shut, from the distance found at five steps out along the
    normal.
    """
    shut = np.zeros(point.shape[:-1])
    for step, weight in ((0.03, 1.0), (0.07, 0.8), (0.14, 0.6), (0.26, 0.4), (0.42, 0.25)):
        shut += weight * np.clip(step - shape.everything(point + normal * step), 0, step) / step
    return np.clip(1 - shut / 2.2, 0, 1)


def _shadow(point, normal, light):
    """Soft shadow towards `light`: the nearest miss on the way decides."""
    open_, travel = np.ones(point.shape[:-1]), np.full(point.shape[:-1], 0.03)
    for _ in range(26):
        near = shape.everything(point + normal * 0.02 + light * travel[..., None])
        open_ = np.minimum(open_, np.clip(0.5 + 4.5 * near / travel, 0, 1))
        travel += np.clip(near, 0.02, 0.2)
    return open_


def _shaded(point, normal, albedo, polish):
    """Warm lamp from upper left, evening sky from the right, a little light through the rubber, and a
    gloss.
    """
    unit = lambda v: v / np.linalg.norm(v, axis=-1, keepdims=True)
    key, fill = unit(KEY) @ TURN, unit(FILL) @ TURN  # lights stand still while the duck is turned
    sight = unit(np.array([0, 0.2, 4.5]) @ TURN - point)
    open_, lamp = _occlusion(point, normal), _shadow(point, normal, key)
    facing, sky = normal @ key, np.clip(normal @ fill, 0, 1)
    diffuse = np.clip((facing + 0.25) / 1.25, 0, 1) * (0.25 + 0.75 * lamp)
    through = (
        np.clip((0.35 - np.abs(facing)) / 0.35, 0, 1)[..., None]
        * np.array([0.16, 0.045, 0.0])
        * open_[..., None]
    )
    bounced = open_[..., None] ** np.array(
        [0.75, 1.15, 1.5]
    )  # what light reaches a fold has met warm rubber before
    light = np.array([0.34, 0.31, 0.33]) * bounced + diffuse[..., None] * np.array(
        [0.98, 0.86, 0.68]
    )
    light = light + (sky * open_)[..., None] * np.array([0.26, 0.17, 0.24])
    gleam = np.clip((normal * unit(key + sight)).sum(-1), 0, 1)
    gloss = polish * (0.60 * gleam**90 + 0.16 * gleam**14) * lamp * open_
    edge = np.clip(1 - (normal * sight).sum(-1), 0, 1) ** 3
    colour = albedo * light + through + gloss[..., None] * np.array([1.0, 0.95, 0.84])
    return colour + (0.30 * edge * open_ * (0.3 + sky))[..., None] * np.array([0.62, 0.80, 0.86])


def painted(kind, point, normal):
    """The colour of places on the "skin", the "bill" or a "wire", lit as they stand in the show."""
    if kind == "skin":
        colour = _shaded(point, normal, _skin_paint(point), 1.0)
        return _mix(colour, [1.0, 0.99, 0.95], _glints(point))
    if kind == "bill":
        gap = _smooth(
            0.0,
            0.012,
            np.abs(
                point[..., 1] - 0.43 - 0.36 * np.square(np.maximum(point[..., 2] - 0.86, 0)) + 0.012
            ),
        )
        return _shaded(
            point,
            normal,
            _mix(np.broadcast_to([0.55, 0.13, 0.06], point.shape), [0.95, 0.36, 0.10], gap),
            0.9,
        )
    return _shaded(point, normal, np.broadcast_to([0.16, 0.13, 0.17], point.shape), 1.6)
