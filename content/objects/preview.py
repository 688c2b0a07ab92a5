#!/usr/bin/python3
"""Shows an object as the show draws it: file order, no depth buffer, back faces culled, colour times
texture.

Usage: preview.py oh1|oh2 OUT.png   a sheet of views: straight ahead, then passing on all sides.
"""

import struct
import sys
from pathlib import Path

import numpy as np
from PIL import Image

ROOT = Path(__file__).resolve().parent.parent.parent
VIEWS = [
    (0, 0, -4),
    (0, 0, -3),
    (-2.6, 0.3, -4),
    (2.6, 0.3, -4),
    (0.6, -1.6, -4),
    (-0.6, 1.4, -4),
    (-3, -1.4, -4),
    (3, 1.4, -4),
    (0, 0, -8),
]


def _chunks(data, start, end, size_bytes):
    while start < end:
        size = int.from_bytes(data[start + 4 : start + 4 + size_bytes], "big")
        body = start + 4 + size_bytes
        yield data[start : start + 4], data[body : body + size]
        start = body + size + size % 2


def _s0(data, at=0):
    end = data.index(b"\0", at)
    return data[at:end].decode(), end + 1 + (end + 1 - at) % 2


def read(path):
    """Points, triangles, colour of each triangle, texture coordinates (or None) and texture path (or
    None) of a file.
    """
    data = path.read_bytes()
    points = triangles = owners = uv = texture = None
    names, colours = [], {}
    for name, body in _chunks(data, 12, 8 + int.from_bytes(data[4:8], "big"), 4):
        if name == b"TAGS":
            at = 0
            while at < len(body):
                tag, at = _s0(body, at)
                names.append(tag)
        elif name == b"PNTS":
            points = np.frombuffer(body, ">f4").reshape(-1, 3).astype(float)
        elif name == b"VMAP":
            at = _s0(body, 6)[1]
            entries = np.frombuffer(body[at:], np.dtype([("i", ">u2"), ("u", ">f4"), ("v", ">f4")]))
            uv = np.stack([entries["u"], 1 - entries["v"]], -1).astype(float)
        elif name == b"POLS":
            triangles = np.frombuffer(body[4:], ">u2").reshape(-1, 4)[:, 1:].astype(int)
        elif name == b"PTAG":
            owners = np.frombuffer(body[4:], ">u2").reshape(-1, 2)[:, 1].astype(int)
        elif name == b"CLIP":
            texture = _s0(body, 10)[0]
        elif name == b"SURF":
            tag, at = _s0(body)
            at = _s0(body, at)[1]
            colours[tag] = struct.unpack(">3f", body[at + 6 : at + 18])
    return points, triangles, np.array([colours[n] for n in names])[owners], uv, texture


def draw(thing, spot, width, height):
    """One picture of what `read` gave, standing at `spot`."""
    points, triangles, colours, uv, texture = thing
    image = np.array([0.09, 0.16, 0.19]) * np.ones((height, width, 1))
    texels = (
        None
        if texture is None
        else np.asarray(Image.open(ROOT / texture).convert("RGB"), float) / 255
    )
    eye = points + spot
    scale = height / 2 / np.tan(np.radians(30))
    inverse = 1 / -eye[:, 2]
    flat = np.stack(
        [width / 2 + eye[:, 0] * inverse * scale, height / 2 - eye[:, 1] * inverse * scale], -1
    )
    for t, colour in zip(triangles, colours):
        (ax, ay), (bx, by), (cx, cy) = flat[t]
        area = (bx - ax) * (cy - ay) - (by - ay) * (cx - ax)
        left, right = int(max(0, min(ax, bx, cx))), int(min(width - 1, max(ax, bx, cx)))
        top, bottom = int(max(0, min(ay, by, cy))), int(min(height - 1, max(ay, by, cy)))
        if (
            area >= 0 or left > right or top > bottom
        ):  # rows grow downward: front faces turn clockwise here
            continue
        y, x = np.mgrid[top : bottom + 1, left : right + 1] + 0.5
        u = ((bx - x) * (cy - y) - (by - y) * (cx - x)) / area
        v = ((cx - x) * (ay - y) - (cy - y) * (ax - x)) / area
        inside = (u >= 0) & (v >= 0) & (u + v <= 1)
        if texels is None:
            image[top : bottom + 1, left : right + 1][inside] = colour
            continue
        share = np.stack([u, v, 1 - u - v], -1)[inside] * inverse[t]
        place = (share @ uv[t]) / share.sum(1, keepdims=True)
        image[top : bottom + 1, left : right + 1][inside] = colour * _texel(texels, place)
    return image


def _texel(texels, place):
    """Bilinear, repeating, as the show filters."""
    height, width = texels.shape[:2]
    x, y = place[:, 0] * width - 0.5, place[:, 1] * height - 0.5
    left, top = np.floor(x).astype(int), np.floor(y).astype(int)
    fx, fy = (x - left)[:, None], (y - top)[:, None]
    pick = lambda dx, dy: texels[(top + dy) % height, (left + dx) % width]
    return (pick(0, 0) * (1 - fx) + pick(1, 0) * fx) * (1 - fy) + (
        pick(0, 1) * (1 - fx) + pick(1, 1) * fx
    ) * fy


def _around(image, spot, side=600):
    """The part of a 1920 by 1080 picture where the object is."""
    x, y = (
        int(half + sign * at / -spot[2] * 935)
        for half, sign, at in ((960, 1, spot[0]), (540, -1, spot[1]))
    )
    padded = np.pad(image, [(side, side), (side, side), (0, 0)])
    return padded[y + side // 2 : y + side + side // 2, x + side // 2 : x + side + side // 2]


def sheet(name):
    thing = read(ROOT / "data" / f"{name}.lwo")
    tiles = [_around(draw(thing, np.array(spot), 1920, 1080), spot) for spot in VIEWS]
    rows = [np.concatenate(tiles[i : i + 3], 1) for i in range(0, len(tiles), 3)]
    return Image.fromarray(np.round(np.concatenate(rows) * 255).astype(np.uint8))


if __name__ == "__main__":
    sheet(sys.argv[1]).save(sys.argv[2])
