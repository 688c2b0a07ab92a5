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


RIM, WIRE = 0.205, 0.019  # radius of a spectacle rim, and of its wire


def _rim(side):
    """Middle of the rim before the eye on that side (-1, 1), and its right, up and forward."""
    eye = EYE * [side, 1, 1]
    facing = eye + [0, 0.05, 0.55]
    facing = facing / np.linalg.norm(facing)
    right = np.cross([0, 1.0, 0], facing)
    right /= np.linalg.norm(right)
    return shape.HEAD + eye * 0.60, right, np.cross(facing, right), facing


def _rim_point(side, outward):
    """Where a temple (outward 1) or the bridge (-1) is hinged to the rim."""
    middle, right, up, _ = _rim(side)
    return middle + RIM * (outward * side * 0.97 * right + 0.24 * up)


def _ring_chart(side):
    middle, right, up, facing = _rim(side)

    def chart(u, v):
        a, b = 2 * np.pi * u, 2 * np.pi * v
        spoke = np.cos(a)[..., None] * right + np.sin(a)[..., None] * up
        n = np.cos(b)[..., None] * spoke + np.sin(b)[..., None] * facing
        return middle + RIM * spoke + WIRE * n, n

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
    """From the hinge round the head, close to it."""
    start = _rim_point(side, 1)

    def round_the_head(u):
        bearing, height = 0.88 + 0.95 * u, 0.16 + 0.04 * u
        reach = 0.615 - 0.065 * u
        direction = [
            side * np.sin(bearing) * np.cos(height),
            np.sin(height),
            np.cos(bearing) * np.cos(height),
        ]
        return shape.HEAD + reach[..., None] * np.stack(direction, -1)

    def path(u):
        u = np.asarray(u, float)
        hinge = (start - round_the_head(np.zeros(()))) * ((1 - np.clip(u, 0, 1)) ** 2)[..., None]
        return round_the_head(u) + hinge

    return path


def _bridge(u):
    """From rim to rim, in an arch."""
    left, right = _rim_point(-1, -1), _rim_point(1, -1)
    u = np.asarray(u, float)[..., None]
    return left + u * (right - left) + (1 - (2 * u - 1) ** 2) * [0, 0.05, 0.02]


# Chart, place on the texture (left, top, right, bottom), facets across and down, paint.
PARTS = [
    (_skin_chart, (0, 0, 704, 704), (64, 44), "skin"),
    (_bill_chart, (704, 0, 1024, 224), (32, 18), "bill"),
    (_ring_chart(-1), (704, 224, 1024, 288), (40, 7), "wire"),
    (_ring_chart(1), (704, 288, 1024, 352), (40, 7), "wire"),
    (_wire_chart(_temple(-1), 0.015), (704, 352, 1024, 400), (14, 6), "wire"),
    (_wire_chart(_temple(1), 0.015), (704, 400, 1024, 448), (14, 6), "wire"),
    (_wire_chart(_bridge, 0.016), (704, 448, 1024, 480), (10, 6), "wire"),
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


BLANK = (704, 480, 1024, 704)  # white: there a surface has only its own colour
SURFACES = [  # colours that multiply the texture
    ("mirror", (0.20, 0.28, 0.30)),
    ("night", (0.030, 0.085, 0.10)),
    ("ripple", (0.46, 0.68, 0.68)),
    ("duck", (1, 1, 1)),
]
HULL = 0.016  # how far the night around the duck stands off its skin
DEEP = 0.75  # below the water, where the mirror image ends


def _plain(mesh):
    """The mesh with every point on the texture's blank."""
    left, top, right, bottom = BLANK
    middle = [(left + right) / 2 / SIZE[0], (top + bottom) / 2 / SIZE[1]]
    return Mesh(mesh.positions, mesh.triangles, np.tile(middle, (len(mesh.positions), 1)))


def _hull(mesh):
    """A shell just outside the mesh: painted first, it leaves a dark rim that hides stairs."""
    out = np.zeros_like(mesh.positions)
    for corner in range(3):
        np.add.at(out, mesh.triangles[:, corner], mesh.normals())
    out /= np.maximum(np.linalg.norm(out, axis=1, keepdims=True), 1e-9)
    return _plain(Mesh(mesh.positions + HULL * out, mesh.triangles, mesh.uv))


def _mirrored(mesh, water):
    """What the water shows of it: upside down, broken by waves that widen as it gets deeper."""
    flipped = Mesh(
        mesh.positions * [1, -1, 1] + [0, 2 * water, 0], mesh.triangles[:, ::-1], mesh.uv
    )

    def waves(place):
        down = np.maximum(water - place[..., 1], 0) / DEEP
        stripe = np.cos(2 * np.pi * 4.6 * down**0.8 + 0.5 * np.sin(5 * place[..., 0]))
        return stripe + 1.05 - 1.9 * down

    return _clipped(flipped, waves)


def _ripples(water):
    """Two thin rings on the water, as a viewer just above it sees them."""
    turn, rings = np.linspace(0, 2 * np.pi, 73), []
    for across, high, thick in ((1.02, 0.085, 0.018), (1.40, 0.125, 0.013)):
        edges = [
            np.stack(
                [
                    (across + grow) * np.cos(turn),
                    water + (high + grow * 0.6) * np.sin(turn) - 0.03,
                    np.full(turn.shape, -0.5),
                ],
                -1,
            )
            for grow in (-thick / 2, thick / 2)
        ]
        first = np.arange(72)
        cells = [[first, first + 73, first + 74], [first, first + 74, first + 1]]
        rings.append(
            _plain(Mesh(np.concatenate(edges), np.concatenate([np.stack(c, -1) for c in cells])))
        )
    return joined(rings)


def duck():
    """The layers of the object, painted one after the other: (name of the surface, mesh)."""
    parts = [_patch(chart, box, facets) for chart, box, facets, _ in PARTS]
    bill, wires = _clipped(parts[1], shape.skin), [
        _clipped(part, shape.everything) for part in parts[2:]
    ]
    whole = joined([parts[0], bill, *wires])
    moved = whole.moved(TURN * SCALE, (0, LIFT, 0))
    moved = moved.kept(np.linalg.norm(moved.normals(), axis=1) > 0)
    water = moved.positions[:, 1].min() + 0.07
    layers = [_mirrored(moved, water), _hull(moved), _ripples(water), moved]
    return [
        (name, mesh.kept(np.linalg.norm(mesh.normals(), axis=1) > 0))
        for (name, _), mesh in zip(SURFACES, layers)
    ]


def texture():
    """The image of all charts; the room that is left is blank."""
    width, height = SIZE
    image = np.broadcast_to(np.array([0.85, 0.55, 0.12]), (height, width, 3)).copy()
    for chart, (left, top, right, bottom), _, kind in PARTS:
        x, y = np.arange(right - left) + 0.5, np.arange(bottom - top) + 0.5
        u = (x - GUTTER) / (right - left - 2 * GUTTER)
        v = 1 - (y - GUTTER) / (bottom - top - 2 * GUTTER)
        u, v = np.meshgrid(np.clip(u, 0, 1), np.clip(v, 0, 1))
        image[top:bottom, left:right] = painted(kind, *chart(u, v))
    image[BLANK[1] : BLANK[3], BLANK[0] : BLANK[2]] = 1
    return Image.fromarray(np.round(np.clip(image, 0, 1) * 255).astype(np.uint8), "RGB")
