"""How far a recording is, from what lies in its folder."""

import sys
import time


class Progress:
    """A line on the terminal that is written over; where standard error is none, a line each time
    another piece is done."""

    def __init__(self, plan, clock=time.monotonic):
        self.plan = plan
        self.clock = clock
        self.began = clock()
        self.work_before = self.look()[2]
        self.said = None

    def look(self):
        """Pieces that are done, frames that are drawn, and the work that this was, in seconds."""
        pieces, frames, work = 0, 0, 0.0
        under_way = self.frames_under_way()
        for piece in self.plan.pieces:
            is_done = self.plan.video(piece).exists() and self.plan.manifest(piece).exists()
            drawn = piece.count if is_done else min(piece.count, under_way.get(piece.number, 0))
            pieces += is_done
            frames += drawn
            work += piece.cost * drawn / piece.count
        return pieces, frames, work

    def frames_under_way(self):
        """By the number of the piece: lines of the manifests that are being written."""
        frames = {}
        for path in self.plan.folder.glob("tries/*-*/*piece.txt*"):
            try:
                number = int(path.parent.name.split("-")[0])
                frames[number] = max(frames.get(number, 0), path.read_bytes().count(b"\n") - 2)
            except (OSError, ValueError):  # done, or given up, in this moment
                continue
        return frames

    def line(self):
        pieces, frames, work = self.look()
        return (f"pieces {pieces}/{len(self.plan.pieces)}  frames {frames}/{self.plan.frames}  "
                f"{self.time_left(work)}")

    def time_left(self, work):
        done, seconds = work - self.work_before, self.clock() - self.began
        if done <= 0 or seconds <= 0:
            return "time left: not known yet"
        left = round((sum(piece.cost for piece in self.plan.pieces) - work) * seconds / done)
        return f"{left // 3600}:{left // 60 % 60:02}:{left % 60:02} left"

    def show(self):
        if sys.stderr.isatty():
            print(f"\r\033[K{self.line()}", end="", file=sys.stderr, flush=True)
            return
        pieces = self.look()[0]
        if pieces != self.said:
            self.said = pieces
            print(self.line(), file=sys.stderr, flush=True)

    def end(self):
        if sys.stderr.isatty():
            print("\r\033[K", end="", file=sys.stderr, flush=True)
