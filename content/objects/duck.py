"""oh1: Tovak, the rubber duck who counts, with his round spectacles. Its light is baked into its
texture.

Every part is a chart: a rectangle of the texture that is wrapped round the part as a map round a
globe. A chart gives the point and the normal for any place (u, v) on it, so the mesh and the
texels come from one description.
"""

import numpy as np
from PIL import Image

import shape
from mesh import Mesh, joined
from rubber import EYE, TURN, painted

TEXTURE = "data/textures/oh1.png"
SIZE = (1024, 704)  # of the texture
SCALE, LIFT = 0.98, -0.03
ROOT, SLEEVE = np.array([0.0, -0.36, -0.34]), (0.36, 0.62)  # of the skin's chart
GUTTER = 3  # texels that repeat a chart's border, so that filtering finds its own colours there


def _skin_chart(u, v):
    """Round a line that runs up from the tail's root to the head: below a half globe, then a sleeve,
    above another half globe.
    """
    axis = (shape.HEAD - ROOT) / np.linalg.norm(shape.HEAD - ROOT)
    back = np.cross(axis, [1.0, 0, 0])  # the seam, u = 0, runs down the back
    turn = 2 * np.pi * u - 0.25 * np.sin(2 * np.pi * u)  # closer columns there, where the tail is
    around = np.cos(turn)[..., None] * back + np.sin(turn)[..., None] * np.array([1.0, 0, 0])
    tilt = np.interp(v, [0, SLEEVE[0], SLEEVE[1], 1], [-np.pi / 2, 0, 0, np.pi / 2])[..., None]
    start = ROOT + np.interp(v, SLEEVE, [0, 1])[..., None] * (shape.HEAD - ROOT)
    point = shape.surface(shape.skin, start, np.cos(tilt) * around + np.sin(tilt) * axis, 2.0)
    return point, shape.normal(shape.skin, point)


def _bill_chart(u, v):
    middle = np.array([0, 0.44, 0.86])
    turn, tilt = 2 * np.pi * u, (np.pi * (v - 0.5))[..., None]
    around = np.stack(
        [np.sin(turn), -np.cos(turn), np.zeros_like(turn)], -1
    )  # the seam lies underneath
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
            [
                side * np.sin(bearing) * np.cos(height),
                np.sin(height),
                np.cos(bearing) * np.cos(height),
            ],
            -1,
        )

    return path


def _bridge(u):
    x = 0.105 * (2 * u - 1)
    return np.stack(
        [x, shape.HEAD[1] + 0.125 + 0.05 * (1 - (2 * u - 1) ** 2), shape.HEAD[2] + 0.565 + 0 * u],
        -1,
    )


# Chart, place on the texture (left, top, right, bottom), facets across and down, paint.
PARTS = [
    (_skin_chart, (0, 0, 704, 704), (64, 44), "skin"),
    (_bill_chart, (704, 0, 1024, 224), (32, 18), "bill"),
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
    mesh = Mesh(
        points,
        np.concatenate([np.stack([a, b, c], -1), np.stack([a, c, d], -1)]),
        _placed(u, v, box).reshape(-1, 2),
    )
    if (mesh.normals() * normals.reshape(-1, 3)[mesh.triangles[:, 0]]).sum() < 0:
        mesh.triangles = mesh.triangles[:, ::-1]
    return mesh.kept(np.linalg.norm(mesh.normals(), axis=1) > 0)


def _crossing(field, inside, outside):
    """Share of the way from a point inside to one outside where the field is zero."""
    low, high = 0.0, 1.0
    for _ in range(20):
        middle = (low + high) / 2
        low, high = (
            (middle, high) if field(inside + middle * (outside - inside)) < 0 else (low, middle)
        )
    return (low + high) / 2


def _clipped(mesh, field):
    """The mesh without what lies inside `field`, cut along the surface: painted last, it would show
    through otherwise.
    """
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
                positions.append(
                    mesh.positions[inner] * (1 - share) + mesh.positions[outer] * share
                )
                uv.append(mesh.uv[inner] * (1 - share) + mesh.uv[outer] * share)
                outline.append(len(positions) - 1)
        triangles += [[outline[0], outline[k], outline[k + 1]] for k in range(1, len(outline) - 1)]
    return Mesh(positions, triangles, uv)


def duck():
    parts = [_patch(chart, box, facets) for chart, box, facets, _ in PARTS]
    bill, wires = _clipped(parts[1], shape.skin), [
        _clipped(part, shape.everything) for part in parts[2:]
    ]
    whole = joined([parts[0], bill, *wires])
    moved = whole.moved(TURN * SCALE, (0, LIFT, 0))
    return moved.kept(np.linalg.norm(moved.normals(), axis=1) > 0)


def texture():
    """The image of all charts; unused room has the skin's mean colour."""
    width, height = SIZE
    image = np.broadcast_to(np.array([0.85, 0.55, 0.12]), (height, width, 3)).copy()
    for chart, (left, top, right, bottom), _, kind in PARTS:
        x, y = np.arange(right - left) + 0.5, np.arange(bottom - top) + 0.5
        u = (x - GUTTER) / (right - left - 2 * GUTTER)
        v = 1 - (y - GUTTER) / (bottom - top - 2 * GUTTER)
        u, v = np.meshgrid(np.clip(u, 0, 1), np.clip(v, 0, 1))
        image[top:bottom, left:right] = painted(kind, *chart(u, v))
    return Image.fromarray(np.round(np.clip(image, 0, 1) * 255).astype(np.uint8), "RGB")
