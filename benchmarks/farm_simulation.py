#!/usr/bin/env python3
"""How long a recording takes on up to 1,000 machines: computed, from costs that were measured on one.

Usage: benchmarks/farm_simulation.py [--show DIR] [--size WxH] [--fps RATE] [--build DIR]

Measures what the frames cost, as vyr-farm does, and divides them into pieces as it does. What Slurm, a
shared disk and the join cost was measured by benchmarks/farm.py and stands below. Then machines of one
CPU each take pieces one after the other: a machine waits for Slurm to start its task, reads the show from
the disk, which gives all machines together so many bytes a second, and draws. No machine is quite as
fast as the next, and now and then one dies; its piece is made again. Prints a table, the same every time
for the same costs.
"""

import argparse
import heapq
import os
import random
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.dont_write_bytecode = True

# Measured, see docs/farm.md.
TASKS_A_SECOND = 60  # that Slurm starts
SECONDS_BETWEEN_TASKS = 0.9  # from the end of a task to the next one's start, on one node
SECONDS_OF_A_JOIN, SECONDS_OF_A_JOINED_PIECE, JOINED_MB_A_SECOND = 1.5, 0.001, 250
SHOW_MB, VIDEO_MB_OF_A_MEGAPIXEL = 22, 0.021  # the second: of each picture

# Assumed.
DISK_MB_A_SECOND = 1000  # of a shared disk, over a network of 10 Gbit/s
SPEED_SPREAD = 0.05  # of the machines, a standard deviation
SECONDS_UNTIL_A_DEATH_IS_NOTICED = 300  # Slurm's default

MACHINES = (1, 2, 8, 64, 256, 1000)
PIECES_OF_A_MACHINE = (1, 2, 4)


class Disk:
    """Gives what is asked for, one after the other."""

    def __init__(self):
        self.free = 0.0

    def read(self, now, megabytes):
        self.free = max(now, self.free) + megabytes / DISK_MB_A_SECOND
        return self.free


def make_pieces(prices, machines, one_dies=False):
    """When the last piece is made, in seconds after the submission. `one_dies`: the first machine, in the
    middle of its first piece."""
    speeds = spread_speeds(machines)
    disk, start, end = Disk(), 0.0, 0.0
    idle = [(0.0, number) for number in range(machines)]  # when, which
    waiting = [(0.0, price) for price in prices]  # not before, seconds of a CPU
    while waiting:
        free, machine = heapq.heappop(idle)
        ready, price = waiting.pop(0)
        start = max(start + 1 / TASKS_A_SECOND, free)
        began = max(start, ready)
        drawn = disk.read(began, SHOW_MB) + price / speeds[machine]
        if one_dies and machine == 0:
            waiting.append(((began + drawn) / 2 + SECONDS_UNTIL_A_DEATH_IS_NOTICED, price))
            continue  # it does not come back
        end = max(end, drawn)
        heapq.heappush(idle, (drawn + SECONDS_BETWEEN_TASKS, machine))
    return end


def spread_speeds(machines):
    """1 on average."""
    chance = random.Random(1)
    speeds = [chance.gauss(1.0, SPEED_SPREAD) for _ in range(machines)]
    return [speed * machines / sum(speeds) for speed in speeds]


def join(pieces, megabytes):
    return SECONDS_OF_A_JOIN + SECONDS_OF_A_JOINED_PIECE * pieces + megabytes / JOINED_MB_A_SECOND


def duration(seconds):
    minutes, seconds = divmod(round(seconds), 60)
    hours, minutes = divmod(minutes, 60)
    return f"{hours}:{minutes:02}:{seconds:02}"


def when_one_dies(pieces, machines, joined):
    return duration(make_pieces(pieces, machines, True) + joined) if machines > 1 else "never"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", type=Path, default=ROOT / "build")
    parser.add_argument("--show", type=Path)
    parser.add_argument("--size", default="3840x2160")
    parser.add_argument("--fps", default="60")
    given = parser.parse_args()
    sys.path.insert(0, str(given.build.resolve() / "lib/vyr/farm"))
    sys.argv[0] = str(given.build.resolve() / "bin/vyr-farm")  # the recorder is found beside it
    from vyr_farm import costs, recorder

    show = ["--show", str((given.show or given.build / "show").resolve())]
    head = recorder.describe([*show, "--size", given.size, "--fps", given.fps])
    measured = costs.measure(show, head, 64, {"LP_NUM_THREADS": "0"})
    megabytes = VIDEO_MB_OF_A_MEGAPIXEL * head.pixels / 1e6 * len(measured.frames)
    whole = measured.start + sum(measured.frames) + measured.sound
    print(f"{head.recording()}\nmeasured: a piece's start {measured.start:.2f} s, all frames {sum(measured.frames):.0f} s "
          f"(dearest {max(measured.frames):.2f}, cheapest {min(measured.frames):.2f}), sound {measured.sound:.2f} s, of "
          f"one CPU; load {os.getloadavg()[0]:.1f} on {os.cpu_count()} CPUs\n\n"
          "| machines | pieces | a piece | all pieces | join | in all | times as fast | of the machines' time | when one dies |\n"
          "|---|---|---|---|---|---|---|---|---|")
    for machines in MACHINES:
        for more in PIECES_OF_A_MACHINE:
            pieces = [price for _, _, price in costs.divide(measured, head, machines * more)] \
                if machines * more <= len(measured.frames) // costs.shortest_piece(head) else None
            if not pieces:
                continue
            drawn, joined = make_pieces(pieces, machines), join(len(pieces), megabytes)
            total = drawn + joined
            print(f"| {machines} | {len(pieces)} | {max(pieces):.1f} s | {duration(drawn)} | {joined:.0f} s | "
                  f"{duration(total)} | {whole / total:.1f} | {100 * whole / total / machines:.0f} % | "
                  f"{when_one_dies(pieces, machines, joined)} |")


main()
