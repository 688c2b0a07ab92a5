"""Painter's order: the show draws an object's triangles as they stand in the file and keeps no depth.

The object never turns, but it passes to the left, right, above and below of the viewer, who so
looks at it from many sides. From each of these places we note which triangle covers which, pixel
by pixel, and then look for one order in which as little as possible is covered wrongly. Triangles
that face away are culled by the show and play no part for that place.
"""

import heapq

import numpy as np

PIXELS = 420  # width and height of the picture that is looked at from each place
TOUCHING = 0.003  # units: surfaces that are no farther apart do not cover each other


def places():
    """Where the object may stand in the show, seen from the origin down -z: within the 60 degree, 16
    : 9 view.
    """
    spots = [(0, 0, -5), (0, 0, -3), (2, 0, -4), (-2, 0, -4), (0, 1.5, -4), (0, -1.5, -4)]
    spots += [(x, y, -5) for x in (-4.5, -3, -1.5, 1.5, 3, 4.5) for y in (-2, -0.8, 0.8, 2)]
    return np.array(spots, float)


def _projected(mesh, spot):
    """Corners on the picture plane (triangle, corner, x y) in pixels, and 1 / distance of each
    corner.
    """
    corners = mesh.corners() + spot
    flat = corners[..., :2] / -corners[..., 2:]
    low, high = flat.min((0, 1)), flat.max((0, 1))
    return (flat - low) / (high - low).max() * (PIXELS - 1), 1 / -corners[..., 2]


def _covered(flat, inverse):
    """Pixels of one triangle (their numbers) and the distance there; none when it faces away."""
    (ax, ay), (bx, by), (cx, cy) = flat
    area = (bx - ax) * (cy - ay) - (by - ay) * (cx - ax)
    if area <= 1e-9:
        return None
    left, right = int(np.ceil(min(ax, bx, cx))), int(max(ax, bx, cx))
    low, high = int(np.ceil(min(ay, by, cy))), int(max(ay, by, cy))
    if left > right or low > high:
        return None
    y, x = np.mgrid[low : high + 1, left : right + 1]
    u = ((bx - x) * (cy - y) - (by - y) * (cx - x)) / area
    v = ((cx - x) * (ay - y) - (cy - y) * (ax - x)) / area
    inside = (u >= 0) & (v >= 0) & (u + v <= 1)
    if not inside.any():
        return None
    u, v = u[inside], v[inside]
    return y[inside] * PIXELS + x[inside], 1 / (
        u * inverse[0] + v * inverse[1] + (1 - u - v) * inverse[2]
    )


def _pairs(mesh, spot, weights):
    """Adds to `weights` how many pixels each (far, near) pair of triangles shares, seen with the
    object at `spot`.
    """
    flat, inverse = _projected(mesh, spot)
    pixels, depths, owners = [], [], []
    for i in range(len(flat)):
        found = _covered(flat[i], inverse[i])
        if found:
            pixels.append(found[0])
            depths.append(found[1])
            owners.append(np.full(len(found[0]), i))
    pixels, depths, owners = map(np.concatenate, (pixels, depths, owners))
    rank = np.lexsort((-depths, pixels))  # pixel by pixel, the farthest first
    pixels, depths, owners = pixels[rank], depths[rank], owners[rank]
    for step in (
        1,
        2,
        3,
    ):  # not only the next one in front: a pair must hold even where a third lies between
        apart = (pixels[step:] == pixels[:-step]) & (depths[:-step] - depths[step:] > TOUCHING)
        pairs, counts = np.unique(
            owners[:-step][apart] * len(flat) + owners[step:][apart], return_counts=True
        )
        for pair, count in zip(pairs.tolist(), counts.tolist()):
            weights[pair] = weights.get(pair, 0) + count


def _sorted_by(count, weights, distance):
    """Far before near; where pairs contradict each other, the triangle goes next that wrongs the
    fewest pixels.
    """
    near, waiting = [[] for _ in range(count)], np.zeros(count)
    for pair, weight in weights.items():
        opposite = weights.get(pair % count * count + pair // count, 0)
        if weight > opposite:
            near[pair // count].append((pair % count, weight - opposite))
            waiting[pair % count] += weight - opposite
    queue = [(waiting[i], -distance[i], i) for i in range(count)]
    heapq.heapify(queue)
    order, wronged, done = [], 0, np.zeros(count, bool)
    while queue:
        still, _, i = heapq.heappop(queue)
        if done[i] or still > waiting[i]:
            continue
        done[i] = True
        order.append(i)
        wronged += waiting[i]
        for j, weight in near[i]:
            if not done[j]:
                waiting[j] -= weight
                heapq.heappush(queue, (waiting[j], -distance[j], j))
    return np.array(order), wronged


def painted_order(mesh):
    """Numbers of the triangles from first to last to paint, and the share of covered pixels that
    still come out wrong.
    """
    weights = {}
    for spot in places():
        _pairs(mesh, spot, weights)
    distance = -mesh.corners()[..., 2].mean(1)
    order, wronged = _sorted_by(len(mesh.triangles), weights, distance)
    return order, wronged / max(1, sum(weights.values()))
