"""vyr-record, as the farm uses it."""

import os
import re
import shutil
import subprocess
import sys
import tempfile
from dataclasses import dataclass
from fractions import Fraction
from pathlib import Path

from .failure import Failure, last_line

HEAD = re.compile(r"(?P<show>.* \([0-9a-f]{32}\)), (?P<size>\d+x\d+), (?P<rate>[\d/]+) frames a "
                  r"second, frames (?P<first>\d+)-(?P<last>\d+), drawn by (?P<driver>.+)")


@dataclass(frozen=True)
class Head:
    """What the first line of a manifest says. Pieces are of one recording when all of it is equal."""

    show: str  # its title, and a hash of its files
    size: str  # "1280x720"
    rate: str  # frames a second, "60" or "30000/1001"
    first: int  # the frames of the whole recording, the last one included
    last: int
    driver: str  # the renderer's name and version

    @staticmethod
    def parse(line):
        """None when `line` is no such line."""
        found = HEAD.fullmatch(line.removeprefix("# ").strip())
        if not found:
            return None
        words = found.groupdict()
        return Head(words["show"], words["size"], words["rate"], int(words["first"]),
                    int(words["last"]), words["driver"])

    def recording(self):
        """All but the driver, in words: what is recorded, whoever draws it."""
        return f"{self.show}, {self.size}, {self.rate} frames a second, frames {self.first}-{self.last}"

    @property
    def pixels(self):
        width, height = self.size.split("x")
        return int(width) * int(height)

    @property
    def frames_per_second(self):
        return Fraction(self.rate)


def program():
    """The recorder beside this program, else the one on the path."""
    beside = Path(sys.argv[0]).resolve().parent / "vyr-record"
    found = str(beside) if beside.exists() else shutil.which("vyr-record")
    if not found:
        raise Failure("vyr-record is neither beside this program nor on the path")
    return found


def run(arguments, environment=None):
    """Runs the recorder. Returns the processor seconds that it used, ffmpeg's included. Throws what
    the recorder said as a Failure."""
    with tempfile.TemporaryFile() as errors:
        process = subprocess.Popen([program(), *arguments], stdin=subprocess.DEVNULL, stderr=errors,
                                   env={**os.environ, **(environment or {})})
        try:
            _, status, usage = os.wait4(process.pid, 0)
            process.returncode = os.waitstatus_to_exitcode(status)
        except BaseException:
            process.terminate()  # it ends in order, and leaves no file of its own
            process.wait()
            raise
        errors.seek(0)
        check(process.returncode, errors.read().decode(errors="replace"))
    return usage.ru_utime + usage.ru_stime


def describe(arguments, environment=None):
    """The head of what these options would record; nothing is drawn."""
    done = subprocess.run([program(), *arguments, "--describe"], stdin=subprocess.DEVNULL,
                          capture_output=True, text=True, errors="replace", check=False,
                          env={**os.environ, **(environment or {})})
    check(done.returncode, done.stderr)
    head = Head.parse(done.stdout)
    if not head:
        raise Failure(f"{program()}: is not of this version")
    return head


def check(status, errors):
    if status == 0:
        return
    reason = last_line(errors).removeprefix("vyr-record: ")
    raise Failure(reason or f"vyr-record: ended with status {status}", 2 if status == 2 else 1)
