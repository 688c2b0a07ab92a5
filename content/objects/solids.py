"""Facetted solids for objects that carry their light in their surfaces' colours. Every solid is open
where no one can look.
"""

import numpy as np

from mesh import Mesh

KEY, FILL = np.array([-0.48, 0.66, 0.58]), np.array(
    [0.80, -0.25, 0.54]
)  # towards the lamp, towards the evening sky
KEY_LIGHT, FILL_LIGHT, AMBIENT = (
    np.array([1.02, 0.90, 0.70]),
    np.array([0.16, 0.30, 0.36]),
    np.array([0.27, 0.29, 0.36]),
)


def rgb(colour):
    return np.array([int(colour[i : i + 2], 16) for i in (1, 3, 5)]) / 255


def lit(mesh, colour, shine=0.25, glow=0.0):
    """The mesh with every facet coloured as the two lights find it; `glow` is the share of light that
    comes from within.
    """
    normal = mesh.normals()
    key, fill = (
        np.clip(normal @ light / np.linalg.norm(light), 0, 1)[:, None] for light in (KEY, FILL)
    )
    halfway = KEY / np.linalg.norm(KEY) + [0, 0, 1]
    gleam = np.clip(normal @ halfway / np.linalg.norm(halfway), 0, 1)[:, None] ** 24
    light = AMBIENT + key * KEY_LIGHT + fill * FILL_LIGHT
    shade = (
        rgb(colour) * (light * (1 - glow) + glow * (0.82 + 0.4 * normal[:, 2:]))
        + shine * gleam * KEY_LIGHT
    )
    mesh.colours = np.clip(shade, 0, 1)
    return mesh


def quads(grid, closed=True):
    """Facets between the rows of a grid (row, column, xyz), every facet with points of its own;
    columns may close to a ring.
    """
    rows, columns = grid.shape[:2]
    positions = []
    for r in range(rows - 1):
        for c in range(columns if closed else columns - 1):
            a, b = grid[r, c], grid[r, (c + 1) % columns]
            d, e = grid[r + 1, c], grid[r + 1, (c + 1) % columns]
            for corners in ((a, b, e), (a, e, d)):
                if (
                    np.linalg.norm(np.cross(corners[1] - corners[0], corners[2] - corners[0]))
                    > 1e-9
                ):
                    positions.extend(corners)
    return Mesh(positions, np.arange(len(positions)))


def lathe(profile, sides):
    """Turns a profile of (radius, z) round the z axis. Walk the profile so that its outer side lies
    to the left of the walk.
    """
    angle = np.arange(sides) / sides * 2 * np.pi
    grid = [[(r * np.cos(a), r * np.sin(a), z) for a in angle] for r, z in profile]
    return quads(np.array(grid, float))


def tube(path, radius, sides=6):
    """A tube of `sides` facets round a path that lies in a plane z = constant; the ends stay open."""
    path = np.asarray(path, float)
    along = np.gradient(path, axis=0)
    along /= np.linalg.norm(along, axis=1, keepdims=True)
    left = np.stack([-along[:, 1], along[:, 0], np.zeros(len(path))], -1)
    radius = np.broadcast_to(radius, len(path))[:, None]
    ring = [
        path + radius * (np.cos(a) * left + np.sin(a) * np.array([0, 0, 1]))
        for a in np.arange(sides) / sides * 2 * np.pi
    ]
    return quads(np.stack(ring, 1)[:, ::-1])


def ball(centre, radius, sides=12, rings=7):
    latitude = np.linspace(-np.pi / 2, np.pi / 2, rings)
    grid = [
        [
            (np.cos(t) * np.cos(a), np.sin(t), -np.cos(t) * np.sin(a))
            for a in np.arange(sides) / sides * 2 * np.pi
        ]
        for t in latitude
    ]
    return quads(np.array(grid) * radius + np.asarray(centre, float))


def _inset(outline, depth):
    """The outline moved inward by `depth`, corner by corner."""
    before, after = outline - np.roll(outline, 1, 0), np.roll(outline, -1, 0) - outline
    inward = lambda edge: np.stack([-edge[:, 1], edge[:, 0]], -1) / np.linalg.norm(
        edge, axis=1, keepdims=True
    )
    n, m = inward(before), inward(after)
    return outline + depth * (n + m) / np.maximum(1 + (n * m).sum(1, keepdims=True), 0.25)


def _cut_to_triangles(outline):
    """Ear clipping of a simple polygon that runs counter-clockwise."""
    left, triangles = list(range(len(outline))), []
    side = lambda a, b, p: (b[0] - a[0]) * (p[1] - a[1]) - (b[1] - a[1]) * (p[0] - a[0])
    while len(left) > 3:
        for k in range(len(left)):
            i, j, l = left[k - 1], left[k], left[(k + 1) % len(left)]
            a, b, c = outline[i], outline[j], outline[l]
            others = (outline[o] for o in left if o not in (i, j, l))
            if side(a, b, c) > 1e-12 and not any(
                side(a, b, p) >= 0 and side(b, c, p) >= 0 and side(c, a, p) >= 0 for p in others
            ):
                break
        triangles.append((left[k - 1], left[k], left[(k + 1) % len(left)]))
        del left[k]
    return triangles + [tuple(left)]


def plate(outline, back, front, bevel):
    """A board with a counter-clockwise outline, from z = back to z = front, its front edge bevelled;
    open behind.
    """
    outline = np.asarray(outline, float)
    at = lambda flat, z: np.column_stack([flat, np.full(len(flat), z)])
    top = at(_inset(outline, bevel), front)
    walls = quads(np.stack([at(outline, back), at(outline, front - bevel), top]))
    positions = top[np.array(_cut_to_triangles(top[:, :2]))].reshape(-1, 3)
    return walls, Mesh(positions, np.arange(len(positions)))


def ridge(outline_half, length, root, height):
    """A hand or bar along +y, folded along its middle like paper: (half width, share of length) pairs
    give its right edge.
    """
    right = np.array([(w, root + s * (length - root), 0) for w, s in outline_half], float)
    middle = np.array([(0, y, height) for _, y, _ in right])
    left = right * [-1, 1, 1]
    return quads(np.stack([left, middle, right], 1), closed=False)
