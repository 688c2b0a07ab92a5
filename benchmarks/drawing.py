#!/usr/bin/python3
"""The show's frames drawn in a window, beside the bare replay of their own OpenGL calls, and its flat
layers beside SDL2's renderer.

  benchmarks/drawing.py BUILD WORK [FRAMES]     needs an X server; build/show and build/bench stand in BUILD

Leaves WORK/frames.txt: a line for each frame, its row, the milliseconds drawn and replayed.
"""
import os
import shutil
import statistics
import subprocess
import sys

from report import note, percentile, row, skip

build, work = (os.path.abspath(path) for path in sys.argv[1:3])
frames = int(sys.argv[3]) if len(sys.argv) > 3 else 150
runs = 5
show = build + "/show"


def run(*command):
    """What the program prints."""
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                          text=True).stdout


def times_of(program, *arguments):
    """{row: milliseconds} of a program that prints them."""
    lines = run(f"{build}/bench/{program}", show, str(frames), *arguments).splitlines()
    return {float(line.split()[0]): float(line.split()[1]) for line in lines}


def replayed_times(trace):
    """The same of a replay. It reports when each frame was finished, in nanoseconds; the last ones
    are those that count."""
    report = run("glretrace", "--benchmark", "--pframe-times", trace)
    ends = [int(line.split()[1]) for line in report.splitlines()
            if line.startswith("rendering_finished")]
    return [(end - start) / 1e6 for start, end in zip(ends, ends[1:])][-frames:]


def beside_replay():
    if not shutil.which("apitrace"):
        skip("whole show drawn", "apitrace is not here")
        return
    trace = f"{work}/show.trace"
    run("apitrace", "trace", "-o", trace, f"{build}/bench/bench-frames", show, str(frames))
    drawn, replayed = [], []
    for turn in range(runs):
        for side in ("drawn", "replayed") if turn % 2 == 0 else ("replayed", "drawn"):
            if side == "drawn":
                drawn.append(times_of("bench-frames"))
            else:
                replayed.append(replayed_times(trace))
    os.remove(trace)
    compare("whole show drawn", "bare replay", "<=1.03", [list(one.values()) for one in drawn],
            replayed)
    with open(f"{work}/frames.txt", "w", encoding="utf-8") as file:
        for index, place in enumerate(drawn[0]):
            mine = statistics.median(one[place] for one in drawn)
            peer = statistics.median(one[index] for one in replayed)
            print(place, mine, peer, file=file)


def compare(what, peer_name, bar, ours, peers):
    pairs = list(zip(ours, peers))
    row(f"{what}, mean", peer_name, "ms", bar,
        [(statistics.mean(mine), statistics.mean(peer)) for mine, peer in pairs])
    row(f"{what}, 99th percentile", peer_name, "ms", bar,
        [(percentile(mine, 0.99), percentile(peer, 0.99)) for mine, peer in pairs])


def difference_of_pictures(place):
    """Mean and largest difference of a picture by both renderers, of 255."""
    ours, peer, stride = f"{work}/ours.rgb", f"{work}/sdl.rgb", 1280 * 3
    run(f"{build}/bench/bench-frames", show, "1", "flat", ours, str(place))
    run(f"{build}/bench/bench-sdl", show, "1", peer, str(place))
    with open(ours, "rb") as file:
        data = file.read()
    upright = b"".join(data[y * stride:(y + 1) * stride] for y in reversed(range(720)))
    with open(peer, "rb") as file:
        differences = [abs(a - b) for a, b in zip(upright, file.read())]
    return statistics.mean(differences), max(differences)


def beside_sdl():
    if not os.path.exists(f"{build}/bench/bench-sdl"):
        skip("flat layers drawn", "libsdl2-dev is not here")
        return
    ours, peers = [], []
    for turn in range(runs):
        if turn % 2 == 0:
            ours.append(list(times_of("bench-frames", "flat").values()))
        peers.append(list(times_of("bench-sdl").values()))
        if turn % 2 == 1:
            ours.append(list(times_of("bench-frames", "flat").values()))
    compare("flat layers drawn", "SDL2's renderer", "<=1", ours, peers)
    means, largest = zip(*(difference_of_pictures(place) for place in (700, 1900, 3000)))
    note(f"Both renderers draw the same: the pictures of rows 700, 1900 and 3000 differ by {max(means):.4f} "
         f"of 255 on average and by {max(largest)} at most.")


beside_replay()
beside_sdl()
