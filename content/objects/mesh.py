"""Triangle meshes: points, triangles (counter-clockwise from outside), and per point a texture
coordinate, per triangle a colour.
"""

import numpy as np


class Mesh:
    def __init__(self, positions, triangles, uv=None, colours=None):
        self.positions = np.asarray(positions, np.float64).reshape(-1, 3)
        self.triangles = np.asarray(triangles, np.int64).reshape(-1, 3)
        self.uv = None if uv is None else np.asarray(uv, np.float64)
        self.colours = None if colours is None else np.asarray(colours, np.float64)

    def corners(self):
        """The three corners of every triangle: an array of triangle, corner, axis."""
        return self.positions[self.triangles]

    def normals(self):
        """Unit normals of the triangles; a triangle without area has none (0, 0, 0)."""
        a, b, c = np.moveaxis(self.corners(), 1, 0)
        normal = np.cross(b - a, c - a)
        length = np.linalg.norm(normal, axis=1, keepdims=True)
        return np.where(length > 1e-12, normal / np.maximum(length, 1e-12), 0)

    def kept(self, chosen):
        """The mesh with only the `chosen` triangles (numbers or a mask), in that order, and only the
        points they use.
        """
        triangles = self.triangles[chosen]
        used, renumbered = np.unique(triangles, return_inverse=True)
        uv = None if self.uv is None else self.uv[used]
        colours = None if self.colours is None else self.colours[chosen]
        return Mesh(self.positions[used], renumbered.reshape(-1, 3), uv, colours)

    def moved(self, matrix, offset=(0, 0, 0)):
        """The mesh turned or scaled by a 3 by 3 matrix (no mirror image), then moved."""
        return Mesh(
            self.positions @ np.asarray(matrix).T + offset, self.triangles, self.uv, self.colours
        )

    def shifted(self, offset):
        return self.moved(np.eye(3), offset)


def joined(meshes):
    """One mesh of many; either all have texture coordinates or none, and the same for colours."""
    starts = np.cumsum([0] + [len(m.positions) for m in meshes[:-1]])
    together = lambda parts: None if parts[0] is None else np.concatenate(parts)
    triangles = np.concatenate([m.triangles + start for m, start in zip(meshes, starts)])
    positions = np.concatenate([m.positions for m in meshes])
    return Mesh(
        positions,
        triangles,
        together([m.uv for m in meshes]),
        together([m.colours for m in meshes]),
    )


def turn_x(degrees):
    c, s = np.cos(np.radians(degrees)), np.sin(np.radians(degrees))
    return np.array([[1, 0, 0], [0, c, -s], [0, s, c]])


def turn_y(degrees):
    c, s = np.cos(np.radians(degrees)), np.sin(np.radians(degrees))
    return np.array([[c, 0, s], [0, 1, 0], [-s, 0, c]])


def turn_z(degrees):
    c, s = np.cos(np.radians(degrees)), np.sin(np.radians(degrees))
    return np.array([[c, -s, 0], [s, c, 0], [0, 0, 1]])
