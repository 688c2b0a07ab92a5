#!/usr/bin/python3
"""The show on the disk beside its own recording, and in memory beside its textures.

  benchmarks/size.py BUILD WORK

The whole recording would take most of an hour, so stretches of it stand for it. Each begins with a key
frame, which a whole recording has seldom: only what lies between them counts, and the music not at
all, so that the recording comes out rather too small.
"""
import os
import subprocess
import sys

from report import note, row

build, work = sys.argv[1:]
show = f"{build}/show"
runs, frame_rate, rows_a_second, last_row = 5, 60, 17.6, 3624
stretches = [300, 1000, 1700, 2400, 3100]  # first rows; a second each


def bytes_of_folder(path):
    return sum(os.path.getsize(os.path.join(folder, name))
               for folder, _, names in os.walk(path) for name in names)


def bytes_a_frame(first_row):
    clip = f"{work}/clip.mp4"
    subprocess.run([f"{build}/bin/vyr-record", "--show", show, "--size", "1920x1080",
                    "--fps", str(frame_rate), "--from", str(first_row),
                    "--to", str(first_row + rows_a_second), "-o", clip],
                   check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    packets = subprocess.run(["ffprobe", "-v", "error", "-select_streams", "v",
                              "-show_entries", "packet=size,flags", "-of", "csv=p=0", clip],
                             check=True, stdout=subprocess.PIPE, text=True).stdout.split()
    os.remove(clip)
    sizes = [int(size) for size, flags in (packet.split(",")[:2] for packet in packets)
             if "K" not in flags]
    return sum(sizes) / len(sizes)


def on_disk():
    frames = last_row / rows_a_second * frame_rate
    average = sum(bytes_a_frame(first) for first in stretches) / len(stretches)
    row("show on disk", "its 1080p60 recording", "MiB", "<=0.2",
        [(bytes_of_folder(show) / 2**20, frames * average / 2**20)])
    note(f"The recording's size is estimated from {len(stretches)} seconds of it, key frames and music not counted.")


def in_memory():
    pairs = []
    for _ in range(runs):
        printed = subprocess.run([f"{build}/bench/bench-memory", show], check=True,
                                 stdout=subprocess.PIPE, text=True).stdout
        size = {name: int(number) / 2**20 for name, number in
                (line.split() for line in printed.splitlines()
                 if line.startswith(("show ", "window ", "textures ")))}
        pairs.append((size["show"], 1.5 * size["textures"] + size["window"]))
    row("show in memory", "1.5 times its textures and an empty window", "MiB", "<=1", pairs)


on_disk()
in_memory()
