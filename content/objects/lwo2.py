"""Writes a triangle mesh as a LightWave object, layout LWO2: big-endian chunks in a FORM, each padded
to an even length.

What is written: TAGS (surface names), PNTS, VMAP (texture coordinates), POLS (FACE), PTAG (a
surface for each polygon), CLIP (one still image, index 1) and one SURF for each name. The reader
takes them in this order, reads polygon indices as two bytes only, and paints the polygons as they
stand in the file.
"""

import struct

# From here on a LightWave index needs four bytes, which the reader does not know in POLS
LARGEST_INDEX = 0xFF00
CLIP_INDEX = 1


def _s0(text):
    """A string with its NUL, padded to an even length."""
    raw = text.encode("ascii") + b"\0"
    return raw + b"\0" * (len(raw) % 2)


def _chunk(name, body):
    return name + struct.pack(">I", len(body)) + body + b"\0" * (len(body) % 2)


def _sub(name, body):
    return name + struct.pack(">H", len(body)) + body + b"\0" * (len(body) % 2)


def _points(positions):
    return b"".join(struct.pack(">3f", *p) for p in positions)


def _texture_map(name, coordinates):
    """A two-dimensional TXUV map with an entry for every point. v grows upward: the reader takes 1 -
    v as the image's row.
    """
    entries = (struct.pack(">H2f", i, u, v) for i, (u, v) in enumerate(coordinates))
    return b"TXUV" + struct.pack(">H", 2) + _s0(name) + b"".join(entries)


def _faces(triangles):
    return b"FACE" + b"".join(struct.pack(">4H", 3, *t) for t in triangles)


def _surface_tags(surfaces):
    return b"SURF" + b"".join(struct.pack(">2H", i, s) for i, s in enumerate(surfaces))


def _image_block(map_name):
    """A colour texture from the clip through the texture map."""
    header = _s0("\x7f") + _sub(b"CHAN", b"COLR") + _sub(b"ENAB", struct.pack(">H", 1))
    body = _sub(b"IMAP", header) + _sub(b"PROJ", struct.pack(">H", 5))
    return body + _sub(b"IMAG", struct.pack(">H", CLIP_INDEX)) + _sub(b"VMAP", _s0(map_name))


def _surface(name, colour, map_name):
    body = (
        _s0(name) + _s0("") + _sub(b"COLR", struct.pack(">3fH", *colour, 0))
    )  # 14 bytes: the colour and "no envelope"
    return body + (_sub(b"BLOK", _image_block(map_name)) if map_name else b"")


def write(path, positions, triangles, surfaces, surface_of, texture=None, coordinates=None):
    """Writes the file at `path`.

    `triangles` are index triples, counter-clockwise from outside; `surfaces` is a list of (name,
    (red, green, blue)), and `surface_of` gives each triangle's number in it. With a `texture` (its
    path as the show opens it) every surface carries it, and `coordinates` has (u, v) for every
    point.
    """
    if len(positions) > LARGEST_INDEX or len(triangles) > LARGEST_INDEX:
        raise ValueError(f"{path}: more than {LARGEST_INDEX} points or polygons")
    map_name = "uv" if texture else None
    chunks = [(b"TAGS", b"".join(_s0(name) for name, _ in surfaces)), (b"PNTS", _points(positions))]
    if texture:
        chunks.append((b"VMAP", _texture_map(map_name, coordinates)))
    chunks += [(b"POLS", _faces(triangles)), (b"PTAG", _surface_tags(surface_of))]
    if texture:
        chunks.append((b"CLIP", struct.pack(">I", CLIP_INDEX) + _sub(b"STIL", _s0(texture))))
    chunks += [(b"SURF", _surface(name, colour, map_name)) for name, colour in surfaces]
    body = b"LWO2" + b"".join(_chunk(name, data) for name, data in chunks)
    path.write_bytes(b"FORM" + struct.pack(">I", len(body)) + body)
