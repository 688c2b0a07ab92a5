"""oh2: the station clock, seventeen past five, hung from its bracket between two lamps, the bus's
number below it.

Made of facets: the show draws no light, so each facet has the colour that the light gives it, and
each colour is a surface.
"""

import numpy as np

from mesh import Mesh, joined, turn_z
from solids import ball, lathe, lit, plate, quads, ridge, tube

SIDES = 40
SCALE = 0.72  # the whole is about two and a quarter units tall then
MOST_SURFACES = 190
# fmt: off
DUCK = [  # an outline, y downward
    (0, 32), (12, 38), (24, 39), (33, 35), (38, 28), (37, 14), (43, 3), (52, -3),
    (60, -4), (71, -1), (78, 7), (80, 17), (88, 19), (96, 24), (90, 30), (77, 31),
    (73, 37), (80, 44), (85, 54), (83, 66), (76, 76), (64, 81), (48, 83), (26, 79),
    (10, 66), (2, 50),
]
ONE = [(-0.2, -0.17), (-0.1, -0.17), (-0.1, 0.17), (-0.18, 0.17), (-0.29, 0.09), (-0.29, 0), (-0.2, 0.055)]
SEVEN = [(0.02, -0.17), (0.13, -0.17), (0.27, 0.09), (0.27, 0.17), (-0.02, 0.17), (-0.02, 0.08), (0.15, 0.08)]
# fmt: on


def _case():
    ring = lambda profile, colour, shine=0.3: lit(lathe(profile, SIDES), colour, shine)
    yield ring([(0.82, -0.36), (0.98, -0.32), (1.05, -0.2), (1.05, 0.1)], "#2A6E78")
    yield ring([(1.05, 0.1), (1.07, 0.13), (1.07, 0.19), (1.02, 0.24)], "#3C8A90", 0.5)
    yield ring([(1.02, 0.24), (0.975, 0.28), (0.92, 0.28), (0.88, 0.24)], "#F0AE4C", 0.55)
    yield ring([(0.88, 0.24), (0.85, 0.12)], "#173F49")


def _face():
    rim = lit(lathe([(0.85, 0.12), (0.80, 0.14)], SIDES), "#D8C7A0", 0)
    # Flat: of a vaulted dial's nearly equal shades only a few surfaces would be left, as patches.
    dial = lit(lathe([(0.80, 0.14), (0.0, 0.14)], SIDES), "#FBF0D8", 0.06)
    yield rim
    yield dial


def _hours():
    for hour in range(12):
        half, inner = (0.055, 0.54) if hour % 3 == 0 else (0.034, 0.61)
        bar = [(-half, inner), (half, inner), (half, 0.76), (-half, 0.76)]
        colour = "#D8603F" if hour == 5 else "#5A3668"  # the hour of the bus
        for part in plate(bar, 0.12, 0.185, 0.022):
            yield lit(part.moved(turn_z(-30 * hour)), colour, 0.3)


def _shadow(half_outline, length, root, degrees):
    """What a hand takes from the dial: a darker copy, down and to the right."""
    flat = lit(ridge(half_outline, length, root, 0), "#C9B68E", 0)
    return flat.moved(turn_z(-degrees), (0.035, -0.045, 0.161))


def _hands():
    hour, minute = [(0.035, 0), (0.075, 0.62), (0.001, 1)], [(0.03, 0), (0.055, 0.7), (0.001, 1)]
    second = [(0.022, 0), (0.010, 1)]
    turns = (
        (hour, 0.50, -0.13, 158.5, "#1C4450", 0.19),
        (minute, 0.76, -0.15, 102, "#1C4450", 0.215),
        (second, 0.79, -0.2, -51, "#C8553D", 0.24),
    )
    for outline, length, root, degrees, _, _ in turns:
        yield _shadow(outline, length, root, degrees)
    for outline, length, root, degrees, colour, z in turns:
        yield lit(
            ridge(outline, length, root, 0.028).moved(turn_z(-degrees), (0, 0, z)), colour, 0.6
        )
    yield lit(lathe([(0.075, 0.24), (0.06, 0.29), (0.0, 0.305)], 12), "#F0AE4C", 0.5)


def _duck():
    """A duck rides on the second hand."""
    outline = (np.array(DUCK[::-1], float) - [46, 40]) * [1, -1] * 0.0036
    for part in plate(outline, 0.262, 0.312, 0.02):
        yield lit(part, "#FFC04D", 0.35).shifted((-0.335, 0.265, 0))
    eye, beak = lathe([(0.022, 0.312), (0.0, 0.318)], 8), [
        (0.118, 0.083),
        (0.176, 0.061),
        (0.155, 0.041),
        (0.112, 0.037),
    ]
    yield lit(eye, "#0E2A33", 0).shifted((-0.335 + 0.062, 0.265 + 0.095, 0.002))
    for part in plate(beak[::-1], 0.27, 0.318, 0.008):
        yield lit(part, "#D9603F", 0.3).shifted((-0.335, 0.265, 0))


def _bracket():
    yield lit(tube([(0, 1.42, -0.05), (0, 1.2, -0.05), (0, 1.0, -0.05)], 0.06, 8), "#2A6E78", 0.4)
    yield lit(
        tube(
            [(-1.0, 1.42, -0.05), (-0.3, 1.42, -0.05), (0.3, 1.42, -0.05), (1.0, 1.42, -0.05)],
            0.055,
            8,
        ),
        "#2A6E78",
        0.4,
    )
    yield lit(
        lathe([(0.12, -0.12), (0.13, -0.02), (0.09, 0.05), (0, 0.07)], 12), "#F0AE4C", 0.5
    ).shifted((0, 1.42, 0))
    turn = np.linspace(0, 1, 16)
    for side in (-1, 1):
        angle, radius = np.pi * (0.5 + 1.6 * turn), 0.30 - 0.17 * turn
        curl = np.stack(
            [
                side * (0.36 - radius * np.cos(angle) * 0.9),
                1.12 + radius * np.sin(angle),
                np.full(16, -0.05),
            ],
            -1,
        )
        yield lit(tube(curl, 0.032), "#3C8A90", 0.4)
        yield from _lamp(side * 1.0)


def _lamp(x):
    yield lit(tube([(x, 1.47, -0.05), (x, 1.34, -0.05)], 0.045, 8), "#2A6E78", 0.4)
    shade = quads(
        np.array(
            [
                [
                    (x + r * np.cos(a), y, -0.05 - r * np.sin(a))
                    for a in np.arange(12) / 12 * 2 * np.pi
                ]
                for r, y in ((0.17, 1.24), (0.15, 1.31), (0.05, 1.37))
            ]
        )
    )
    yield lit(ball((x, 1.17, -0.05), 0.14), "#FFD590", 0.1, glow=0.85)
    yield lit(shade, "#3C8A90", 0.4)


def _board(w, h, y, cut):
    """Outline of a board with its corners cut off; half width, half height, height of its middle."""
    corners = [(w - cut, -h), (w, cut - h), (w, h - cut), (w - cut, h)]
    other = [(cut - w, h), (-w, h - cut), (-w, cut - h), (cut - w, -h)]
    return np.array(corners + other) + [0, y]


def _chains():
    for x in (-0.42, 0.42):
        for i in range(6):
            link = ball((x, -0.9 - 0.075 * i, -0.05), 0.04, 6, 5)
            yield lit(link, "#F0AE4C" if i % 2 else "#C98A36", 0.4)


def _number():
    yield from _chains()
    for part in plate(_board(0.62, 0.30, -1.6, 0.09), -0.14, 0.02, 0.035):
        yield lit(part, "#F5E9D0", 0.2)
    for part in plate(_board(0.55, 0.24, -1.6, 0.07), 0.02, 0.045, 0.012):
        yield lit(part, "#1E4F5A", 0.3)
    for digit in (ONE, SEVEN):
        for part in plate(np.array(digit) + [0, -1.6], 0.04, 0.12, 0.022):
            yield lit(part, "#FFB347", 0.4)


def _night():
    """The night behind the clock: a dark sheet a little larger than each part, so that edges are no stairs."""
    sheets = [lathe([(1.105, -0.40), (0.0, -0.40)], SIDES)]
    boards = (_board(0.655, 0.335, -1.6, 0.1), [(-1.1, 1.33), (1.1, 1.33), (1.1, 1.51), (-1.1, 1.51)])
    columns = [[(x - w, low), (x + w, low), (x + w, high), (x - w, high)]
               for x, w, low, high in ((0, 0.09, 1.0, 1.4), (-0.42, 0.07, -1.35, -0.9), (0.42, 0.07, -1.35, -0.9))]
    for outline in (*boards, *columns):
        sheets.append(_sheet(outline))
    for x in (-1.0, 1.0):
        sheets.append(lathe([(0.20, -0.40), (0.0, -0.40)], 16).shifted((x, 1.2, 0)))
    for sheet in sheets:
        yield lit(sheet, "#071619", 0, glow=1.0)


def _sheet(outline):
    """A flat convex polygon that faces the viewer, its points counter-clockwise."""
    points = np.array([(x, y, -0.40) for x, y in outline], float)
    middle = range(1, len(points) - 1)
    return Mesh(points, [(0, i, i + 1) for i in middle])


def clock():
    """The mesh, and the list of its surfaces' colours with the number of each triangle's surface."""
    parts = [*_night(), *_bracket(), *_case(), *_face(), *_hours(), *_hands(), *_duck(), *_number()]
    mesh = joined(parts).moved(np.eye(3) * SCALE, (0, 0.13 * SCALE, 0))
    for steps in range(64, 4, -1):  # as many tones as the surfaces allow
        tones, surface_of = np.unique(
            np.round(mesh.colours * steps) / steps, axis=0, return_inverse=True
        )
        if len(tones) <= MOST_SURFACES:
            return mesh, tones, surface_of.reshape(-1)
    raise ValueError("the clock has too many colours for its surfaces")
