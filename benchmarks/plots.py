#!/usr/bin/python3
"""Draws the pictures of docs/performance.md:  benchmarks/plots.py WORK"""
import os
import sys

import matplotlib

matplotlib.use("Agg")
from matplotlib import pyplot  # noqa: E402

work, images = sys.argv[1], "docs/images"
ROWS_A_SECOND = 17.6
OURS, PEER = "#c2185b", "#455a64"


def table_of(name, separator=None):
    """Columns of numbers; a line that holds none is a heading."""
    path = f"{work}/{name}"
    if not os.path.exists(path):
        return []
    rows = []
    with open(path, encoding="utf-8") as file:
        for line in file:
            try:
                rows.append([float(cell) for cell in line.split(separator)])
            except ValueError:
                continue
    return list(zip(*rows))


def begin(title, y_label, rows=1):
    figure, axes = pyplot.subplots(rows, 1, figsize=(9, 3.2 * rows), dpi=100, squeeze=False)
    axes[0][0].set_title(title, loc="left", fontsize=11)
    for (each,) in axes:
        each.set_ylabel(y_label)
        each.grid(color="#dddddd", linewidth=0.6)
        each.spines[["top", "right"]].set_visible(False)
    axes[-1][0].set_xlabel("seconds of the show")
    return figure, [each for (each,) in axes]


def save(figure, name):
    figure.tight_layout()
    figure.savefig(f"{images}/{name}.png")
    pyplot.close(figure)


def draw_frames():
    columns = table_of("frames.txt")
    if not columns:
        return
    places, drawn, replayed = columns
    seconds = [place / ROWS_A_SECOND for place in places]
    figure, (axes,) = begin("Time of a frame, median of the runs", "ms")
    axes.plot(seconds, replayed, color=PEER, linewidth=2.2, alpha=0.55, label="its OpenGL calls replayed bare")
    axes.plot(seconds, drawn, color=OURS, linewidth=1.0, label="drawn by the show")
    axes.set_xlim(0, max(seconds))
    axes.set_ylim(0, None)
    axes.legend(frameon=False, loc="lower right", bbox_to_anchor=(1, 0.99), ncol=2)
    save(figure, "frame-time")


def draw_clock():
    both = [(table_of("clock-error.txt", "\t"), "Error of the clock over the show"),
            (table_of("clock-error.txt.loaded", "\t"), "The same with the machine busy")]
    both = [(columns, title) for columns, title in both if columns]
    if not both:
        return
    figure, all_axes = begin(both[0][1], "ms", len(both))
    for axes, (columns, title) in zip(all_axes, both):
        axes.set_title(title, loc="left", fontsize=11)
        axes.plot(columns[0][::4], columns[2][::4], ".", color=PEER, markersize=1.5, alpha=0.5,
                  label="position as the sound library tells it")
        axes.plot(columns[0], columns[1], color=OURS, linewidth=0.9, label="the show's clock")
        axes.set_xlim(0, max(columns[0]))
        axes.legend(frameon=False, loc="lower right", bbox_to_anchor=(1, 0.99), ncol=2, markerscale=6)
    save(figure, "clock-error")


draw_frames()
draw_clock()
