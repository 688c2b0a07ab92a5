"""oh1: Tovak, the rubber duck who counts, with his round spectacles. Its light is baked into its texture.

Every part is a chart: a rectangle of the texture that is wrapped round the part as a map round a globe. A chart gives the
point and the normal for any place (u, v) on it, so the mesh and the texels come from one description.
"""

import numpy as np
from PIL import Image

import shape
from mesh import Mesh, joined, turn_y
from solids import FILL, KEY

TEXTURE = "data/textures/oh1.png"
SIZE = (1024, 704)  # of the texture
TURN = turn_y(34)  # the duck looks past the viewer's right shoulder
SCALE, LIFT = 0.98, -0.03
GUTTER = 3  # texels that repeat a chart's border, so that filtering finds its own colours there
EYE = np.array([np.sin(0.52) * np.cos(0.16), np.sin(0.16), np.cos(0.52) * np.cos(0.16)])  # from the head's middle, right eye


def _skin_chart(u, v):
    """Round the line from the body's middle to the head's: below a half globe, a short sleeve, above another half globe."""
    axis = (shape.HEAD - shape.BODY) / np.linalg.norm(shape.HEAD - shape.BODY)
    back = np.cross([1.0, 0, 0], axis)  # the seam, u = 0, runs down the back
    turn = 2 * np.pi * (u - 0.07 * np.sin(2 * np.pi * u) / (2 * np.pi) * 2)  # closer columns where the tail is
    around = np.cos(turn)[..., None] * back + np.sin(turn)[..., None] * np.array([1.0, 0, 0])
    if (back @ [0, 0, 1]) > 0:
        around = -around
    low, high = np.clip(v / 0.47, 0, 1), np.clip((v - 0.53) / 0.47, 0, 1)
    tilt = ((high + low - 1) * np.pi / 2)[..., None]
    start = shape.BODY + np.clip((v - 0.47) / 0.06, 0, 1)[..., None] * (shape.HEAD - shape.BODY)
    point = shape.surface(shape.skin, start, np.cos(tilt) * around + np.sin(tilt) * axis, 2.0)
    return point, shape.normal(shape.skin, point)


def _bill_chart(u, v):
    middle = np.array([0, 0.44, 0.86])
    turn, tilt = 2 * np.pi * u, (np.pi * (v - 0.5))[..., None]
    around = np.stack([np.sin(turn), -np.cos(turn), np.zeros_like(turn)], -1)  # the seam lies underneath
    direction = np.cos(tilt) * around + np.sin(tilt) * np.array([0, 0, 1.0])
    point = shape.surface(shape.bill, middle, direction, 0.6)
    return point, shape.normal(shape.bill, point)


def _ring_chart(side):
    """A spectacle rim before the eye on that side (-1, 1)."""
    eye = EYE * [side, 1, 1]
    facing = eye + [0, 0.05, 0.55]
    facing = facing / np.linalg.norm(facing)
    right = np.cross([0, 1.0, 0], facing)
    right /= np.linalg.norm(right)
    up, middle = np.cross(facing, right), shape.HEAD + eye * 0.60

    def chart(u, v):
        a, b = 2 * np.pi * u, 2 * np.pi * v
        spoke = np.cos(a)[..., None] * right + np.sin(a)[..., None] * up
        n = np.cos(b)[..., None] * spoke + np.sin(b)[..., None] * facing
        return middle + 0.205 * spoke + 0.03 * n, n

    return chart


def _wire_chart(path, radius):
    """A round wire along a path (a function of 0 to 1)."""

    def chart(u, v):
        here, ahead = path(u), path(u + 1e-3)
        along = (ahead - here) / np.linalg.norm(ahead - here, axis=-1, keepdims=True)
        side = np.cross(along, [0, 1.0, 0.01])
        side /= np.linalg.norm(side, axis=-1, keepdims=True)
        b = 2 * np.pi * v
        n = np.cos(b)[..., None] * side + np.sin(b)[..., None] * np.cross(side, along)
        return here + radius * n, n

    return chart


def _temple(side):
    def path(u):
        bearing, height = 0.88 + 0.95 * u, 0.16 + 0.04 * u
        reach = 0.615 - 0.065 * u
        return shape.HEAD + reach[..., None] * np.stack(
            [side * np.sin(bearing) * np.cos(height), np.sin(height), np.cos(bearing) * np.cos(height)], -1)

    return path


def _bridge(u):
    x = 0.105 * (2 * u - 1)
    return np.stack([x, shape.HEAD[1] + 0.125 + 0.05 * (1 - (2 * u - 1) ** 2), shape.HEAD[2] + 0.565 + 0 * u], -1)


# Chart, place on the texture (left, top, right, bottom), facets across and down, paint.
PARTS = [
    (_skin_chart, (0, 0, 704, 704), (68, 34), "skin"),
    (_bill_chart, (704, 0, 1024, 224), (30, 16), "bill"),
    (_ring_chart(-1), (704, 224, 1024, 288), (26, 7), "wire"),
    (_ring_chart(1), (704, 288, 1024, 352), (26, 7), "wire"),
    (_wire_chart(_temple(-1), 0.022), (704, 352, 1024, 400), (7, 5), "wire"),
    (_wire_chart(_temple(1), 0.022), (704, 400, 1024, 448), (7, 5), "wire"),
    (_wire_chart(_bridge, 0.022), (704, 448, 1024, 480), (5, 5), "wire"),
]


def _placed(u, v, box):
    """Texture coordinates (v downward) of a chart's (u, v), inside its box's gutter."""
    left, top, right, bottom = box
    x = left + GUTTER + u * (right - left - 2 * GUTTER)
    y = bottom - GUTTER - v * (bottom - top - 2 * GUTTER)
    return np.stack([x / SIZE[0], y / SIZE[1]], -1)


def _patch(chart, box, facets):
    """The mesh of one part: a grid of points, two triangles a cell, turned outward."""
    u, v = np.meshgrid(np.linspace(0, 1, facets[0] + 1), np.linspace(0, 1, facets[1] + 1))
    points, normals = chart(u, v)
    rows, columns = np.mgrid[0 : facets[1], 0 : facets[0]]
    first = (rows * (facets[0] + 1) + columns).ravel()
    a, b, c, d = first, first + 1, first + facets[0] + 2, first + facets[0] + 1
    mesh = Mesh(points, np.concatenate([np.stack([a, b, c], -1), np.stack([a, c, d], -1)]), _placed(u, v, box).reshape(-1, 2))
    if (mesh.normals() * normals.reshape(-1, 3)[mesh.triangles[:, 0]]).sum() < 0:
        mesh.triangles = mesh.triangles[:, ::-1]
    return mesh.kept(np.linalg.norm(mesh.normals(), axis=1) > 0)


def _crossing(field, inside, outside):
    """Share of the way from a point inside to one outside where the field is zero."""
    low, high = 0.0, 1.0
    for _ in range(20):
        middle = (low + high) / 2
        low, high = (middle, high) if field(inside + middle * (outside - inside)) < 0 else (low, middle)
    return (low + high) / 2


def _clipped(mesh, field):
    """The mesh without what lies inside `field`, cut along the surface: painted last, it would show through otherwise."""
    value = field(mesh.positions)
    positions, uv, triangles = list(mesh.positions), list(mesh.uv), []
    for t in mesh.triangles:
        out = [i for i in range(3) if value[t[i]] >= 0]
        if len(out) in (0, 3):
            triangles += [list(t)] * (len(out) == 3)
            continue
        outline = []
        for i in range(3):
            here, there = t[i], t[(i + 1) % 3]
            if value[here] >= 0:
                outline.append(here)
            if (value[here] >= 0) != (value[there] >= 0):
                inner, outer = (here, there) if value[here] < 0 else (there, here)
                share = _crossing(field, mesh.positions[inner], mesh.positions[outer])
                positions.append(mesh.positions[inner] * (1 - share) + mesh.positions[outer] * share)
                uv.append(mesh.uv[inner] * (1 - share) + mesh.uv[outer] * share)
                outline.append(len(positions) - 1)
        triangles += [[outline[0], outline[k], outline[k + 1]] for k in range(1, len(outline) - 1)]
    return Mesh(positions, triangles, uv)


def duck():
    parts = [_patch(chart, box, facets) for chart, box, facets, _ in PARTS]
    whole = joined([parts[0], *(_clipped(part, shape.skin) for part in parts[1:])])
    moved = whole.moved(TURN * SCALE, (0, LIFT, 0))
    return moved.kept(np.linalg.norm(moved.normals(), axis=1) > 0)


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
    angle = lambda d: np.degrees(np.arccos(np.clip(toward @ (np.asarray(d) / np.linalg.norm(d)), -1, 1)))
    at = lambda bearing, height: [np.sin(bearing) * np.cos(height), np.sin(height), np.cos(bearing) * np.cos(height)]
    colour = _mix(colour, [0.93, 0.36, 0.22], 0.45 * _smooth(17, 3, angle(at(0.85, -0.17))) * on_head)
    white, pupil = _smooth(14.6, 13.8, angle(EYE)), _smooth(9.2, 8.4, angle(at(0.46, 0.15)))
    colour = _mix(colour, [0.55, 0.30, 0.05], 0.6 * _smooth(16.2, 14.6, angle(EYE)) * on_head)
    colour = _mix(colour, [1.0, 0.98, 0.93], white * on_head)
    return _mix(colour, [0.05, 0.09, 0.11], pupil * on_head)


def _glints(point):
    """The lamp in the eyes: one dot each, on the same side of both."""
    q = (point - shape.HEAD) / np.maximum(np.linalg.norm(point - shape.HEAD, axis=-1, keepdims=True), 1e-9)
    light = np.zeros(point.shape[:-1])
    for bearing in (-0.46, 0.46):
        for off, up, size in ((-0.055, 0.065, 3.1), (0.06, -0.055, 1.5)):
            b, h = bearing + off, 0.15 + up
            d = np.array([np.sin(b) * np.cos(h), np.sin(h), np.cos(b) * np.cos(h)])
            light = np.maximum(light, _smooth(size, size - 0.8, np.degrees(np.arccos(np.clip(q @ d, -1, 1)))))
    return light * (np.linalg.norm(point - shape.HEAD, axis=-1) < shape.HEAD_RADIUS + 0.05)


def _occlusion(point, normal):
    """How open the sky is: 1 free, 0 shut, from the distance found at five steps out along the normal."""
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
    """Warm lamp from upper left, evening sky from the right, a little light through the rubber, and a gloss."""
    unit = lambda v: v / np.linalg.norm(v, axis=-1, keepdims=True)
    key, fill = unit(KEY) @ TURN, unit(FILL) @ TURN  # lights stand still while the duck is turned
    sight = unit(np.array([0, 0.2, 4.5]) @ TURN - point)
    open_, lamp = _occlusion(point, normal), _shadow(point, normal, key)
    facing, sky = normal @ key, np.clip(normal @ fill, 0, 1)
    diffuse = np.clip((facing + 0.25) / 1.25, 0, 1) * (0.25 + 0.75 * lamp)
    through = np.clip((0.35 - np.abs(facing)) / 0.35, 0, 1)[..., None] * np.array([0.16, 0.045, 0.0]) * open_[..., None]
    light = np.array([0.30, 0.29, 0.31]) * open_[..., None] + diffuse[..., None] * np.array([0.98, 0.86, 0.68])
    light = light + (sky * open_)[..., None] * np.array([0.10, 0.20, 0.24])
    gleam = np.clip((normal * unit(key + sight)).sum(-1), 0, 1)
    gloss = polish * (0.60 * gleam**90 + 0.16 * gleam**14) * lamp
    edge = np.clip(1 - (normal * sight).sum(-1), 0, 1) ** 3
    colour = albedo * light + through + gloss[..., None] * np.array([1.0, 0.95, 0.84])
    return colour + (0.34 * edge * open_ * (0.3 + sky))[..., None] * np.array([0.45, 0.80, 0.86])


def _paint(kind, point, normal):
    if kind == "skin":
        colour = _shaded(point, normal, _skin_paint(point), 1.0)
        return _mix(colour, [1.0, 0.99, 0.95], _glints(point))
    if kind == "bill":
        gap = _smooth(0.0, 0.012, np.abs(point[..., 1] - 0.43 - 0.55 * np.square(np.maximum(point[..., 2] - 0.86, 0)) + 0.012))
        return _shaded(point, normal, _mix(np.broadcast_to([0.55, 0.13, 0.06], point.shape), [0.95, 0.36, 0.10], gap), 0.9)
    return _shaded(point, normal, np.broadcast_to([0.16, 0.13, 0.17], point.shape), 1.6)


def texture():
    """The image of all charts; unused room has the skin's mean colour."""
    width, height = SIZE
    image = np.broadcast_to(np.array([0.85, 0.55, 0.12]), (height, width, 3)).copy()
    for chart, (left, top, right, bottom), _, kind in PARTS:
        x, y = np.arange(right - left) + 0.5, np.arange(bottom - top) + 0.5
        u = (x - GUTTER) / (right - left - 2 * GUTTER)
        v = 1 - (y - GUTTER) / (bottom - top - 2 * GUTTER)
        u, v = np.meshgrid(np.clip(u, 0, 1), np.clip(v, 0, 1))
        image[top:bottom, left:right] = _paint(kind, *chart(u, v))
    return Image.fromarray(np.round(np.clip(image, 0, 1) * 255).astype(np.uint8), "RGB")
