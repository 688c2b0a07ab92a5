"""What a frame costs over the show, and pieces of equal cost.

A frame is measured at a smaller size, where it takes a fraction of its time: a few hundred frames,
spread over the recording. With the software renderer nearly all of a frame's time goes with its
pixels, so that costs at another size are these, scaled; what counts for the pieces is only how they
compare. A piece pays for more than its frames: the start of the recorder, and the sound from the
recording's beginning to its own end, which is encoded anew in every piece.
"""

import bisect
import math
import tempfile
from dataclasses import dataclass
from pathlib import Path

from . import recorder
from .failure import Failure

SMALL_PIXELS = 640 * 360
SAMPLES = 200
PASSES = 2  # a machine that does other work too is slower for a while: the smaller time counts
SAMPLES_OF_A_PIECE = 6
SHARE_OF_FRAMES = 8  # measuring draws at most every eighth frame, or what the pieces need
SHORTEST_PIECE = 10  # to a second: shorter ones have no whole packet of sound


@dataclass(frozen=True)
class Costs:
    """Processor seconds. On a graphics card: seconds by the clock, which are all that there is."""

    start: float  # of each piece, before its first frame
    sound: float  # to encode the sound of the whole recording
    frames: list  # one for each frame of the recording


def small_size(head):
    """The recording's shape, and a quarter of its pixels, where these are SMALL_PIXELS or more: costs at
    a size that is much smaller compare otherwise. Sides of a video are even."""
    width, height = (int(side) for side in head.size.split("x"))
    scale = min(1.0, max(0.5, math.sqrt(SMALL_PIXELS / head.pixels)))
    return tuple(max(2, round(side * scale / 2) * 2) for side in (width, height))


def sampling_rate(head, parts):
    """Frames a second, whole, to measure with."""
    count = head.last - head.first + 1
    seconds = count / head.frames_per_second
    wanted = max(SAMPLES_OF_A_PIECE * parts, min(SAMPLES, count // SHARE_OF_FRAMES))
    return max(1, math.ceil(min(wanted, count) / seconds))


def is_software(driver):
    return any(name in driver for name in ("llvmpipe", "softpipe", "swrast"))


def read_samples(path):
    """[(frame, cost)] and the driver, of a file that --costs wrote."""
    lines = path.read_text(encoding="utf-8").splitlines()
    driver = recorder.Head.parse(lines[0]).driver
    column = 3 if is_software(driver) else 2
    words = [line.split() for line in lines if not line.startswith("#")]
    prices = without_spikes([float(word[column]) / 1000 for word in words])
    return [(int(word[0]), price) for word, price in zip(words, prices)], driver


def without_spikes(prices):
    """Each is the middle one of itself and its neighbours: where something is drawn for the first time
    the driver compiles its shaders, once in a recording and not in every frame from there on."""
    padded = [*prices[1:2], *prices, *prices[-2:-1]]
    return [sorted(padded[at:at + 3])[1] for at in range(len(prices))] if len(prices) > 2 else prices


def measure(options, head, parts, environment):
    """Measures the recording that `head` describes. `options` are the recorder's, of the show and
    the rows; Failure says what the recorder said."""
    width, height = small_size(head)
    small = [*options, "--size", f"{width}x{height}"]
    rate = sampling_rate(head, parts)
    with tempfile.TemporaryDirectory(prefix="vyr-farm-") as folder:
        video = ["-o", f"{folder}/video.mp4"]
        grid = ["--fps", head.rate]

        def record(*more):
            return recorder.run([*small, *video, *more], environment)

        start = record(*grid, "--frames", f"{head.first}-{head.first}")
        with_sound = record(*grid, "--frames", f"{head.last}-{head.last}")
        passes = []
        for _ in range(PASSES):
            costs = Path(folder, "costs.txt")
            total = record("--fps", str(rate), "--costs", str(costs), "--manifest", f"{folder}/manifest.txt")
            samples, driver = read_samples(costs)
            drawing = sum(cost for _, cost in samples)
            # converted, hashed and encoded, beside the drawing; a graphics card draws meanwhile
            beside = (total - with_sound - drawing) / len(samples) if is_software(driver) else 0.0
            passes.append((samples, max(0.0, beside)))
    samples = [min(same) for same in zip(*(samples for samples, _ in passes))]
    encoding = min(beside for _, beside in passes)
    scale = head.pixels / (width * height)
    spread = [((frame / rate), (cost + encoding) * scale) for frame, cost in samples]
    return Costs(start, max(0.0, with_sound - start), spread_over_frames(spread, head))


def spread_over_frames(samples, head):
    """A cost for each frame of the recording, between those of the samples [(second, cost)]."""
    seconds = [second for second, _ in samples]
    frames = []
    for frame in range(head.first, head.last + 1):
        second = float(frame / head.frames_per_second)
        after = min(bisect.bisect_left(seconds, second), len(samples) - 1)
        before = max(0, after - 1)
        width = seconds[after] - seconds[before]
        share = min(1.0, max(0.0, (second - seconds[before]) / width)) if width > 0 else 1.0
        frames.append(samples[before][1] * (1 - share) + samples[after][1] * share)
    return frames


def shortest_piece(head):
    return math.ceil(head.frames_per_second / SHORTEST_PIECE)


def divide(costs, head, parts):
    """`parts` pieces of equal cost: [(first frame, last frame, cost)]."""
    count, shortest = len(costs.frames), shortest_piece(head)
    if parts > max(1, count // shortest):
        raise Failure(f"--parts {parts}: a piece has {shortest} frames or more, and there are {count}: "
                      f"{max(1, count // shortest)} pieces at most", 2)
    spent = [0.0]  # by the frames before each, with the sound up to there
    for cost in costs.frames:
        spent.append(spent[-1] + cost + costs.sound / count)
    borders = find_borders(spent, costs, parts, shortest)
    return [(head.first + begin, head.first + end - 1, piece_cost(costs, spent, begin, end))
            for begin, end in zip(borders, borders[1:])]


def piece_cost(costs, spent, begin, end):
    return costs.start + spent[end] - spent[begin] + costs.sound * begin / len(costs.frames)


def find_borders(spent, costs, parts, shortest):
    """Where pieces begin and end, for the price that, paid for each, comes out at the last frame."""
    count = len(costs.frames)
    low, high = 0.0, spent[-1] + costs.sound + costs.start
    for _ in range(60):
        price = (low + high) / 2
        if walk(spent, costs, price, parts)[-1] < count:
            low = price
        else:
            high = price
    borders = [0]
    for number, border in enumerate(walk(spent, costs, high, parts)[1:parts], 1):
        earliest = borders[-1] + shortest
        latest = count - (parts - number) * shortest
        borders.append(min(max(round(border), earliest), latest))
    return [*borders, count]


def walk(spent, costs, price, parts):
    """Borders, in frames and fractions of one, of pieces that cost `price` each."""
    count = len(costs.frames)
    borders = [0.0]
    for _ in range(parts):
        begin = borders[-1]
        paid = price - costs.start - costs.sound * begin / count
        borders.append(frame_at(spent, value_at(spent, begin) + max(0.0, paid)))
    return borders


def value_at(spent, frame):
    whole = min(int(frame), len(spent) - 2)
    return spent[whole] + (spent[whole + 1] - spent[whole]) * (frame - whole)


def frame_at(spent, value):
    if value >= spent[-1]:
        return float(len(spent) - 1)
    after = bisect.bisect_right(spent, value)
    before = after - 1
    return before + (value - spent[before]) / (spent[after] - spent[before])
