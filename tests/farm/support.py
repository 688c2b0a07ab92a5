"""What the farm's tests share: the programs of the build, shows, and a recording that is small."""

import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

BUILD = Path(os.environ["VYR_BUILD"])
FARM = BUILD / "bin/vyr-farm"
RECORD = BUILD / "bin/vyr-record"
ROOT = Path(__file__).resolve().parent.parent.parent
NIGHT = BUILD / "examples/night"  # 16 seconds, 256 rows
WAITING = BUILD / "show"
SMALL = ["--size", "64x36", "--fps", "10"]
SKIPPED = 77  # ctest says so

sys.path.insert(0, str(BUILD / "lib/vyr/farm"))
sys.path.insert(0, str(Path(__file__).resolve().parent))


def skip_without(*programs):
    missing = [name for name in programs if not shutil.which(name, path=os.environ["PATH"] + ":/usr/sbin:/sbin")]
    if missing:
        print(f"skipped: not there: {' '.join(missing)} (./test farm installs them)")
        sys.exit(SKIPPED)


class FarmTest(unittest.TestCase):
    """In an empty folder of its own."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="vyr farm ")  # a blank in every path
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.output = self.folder / "show.mp4"
        self.farm_folder = self.folder / "show.farm"

    def run_farm(self, *words, environment=None):
        return subprocess.run([str(FARM), *map(str, words)], capture_output=True, text=True, check=False,
                              cwd=self.folder, env={**os.environ, **(environment or {})})

    def farm(self, *words, environment=None):
        """What it printed, of a command that has to go well."""
        done = self.run_farm(*words, environment=environment)
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout

    def expect_failure(self, words, *what, status=1, environment=None):
        """One line of the farm's own, with all of `what` in it."""
        done = self.run_farm(*words, environment=environment)
        lines = done.stderr.splitlines()
        said = [line for line in lines if line.startswith("vyr-farm: ")]
        self.assertEqual(done.returncode, status, done.stderr)
        self.assertTrue(said, done.stderr)
        for text in what:
            self.assertIn(str(text), said[-1])
        self.assertNotIn("Traceback", done.stderr)
        return lines

    def recording(self, *more, parts=4, show=NIGHT, size=None):
        small = ["--size", size, *SMALL[2:]] if size else SMALL
        return ["--show", show, "--parts", parts, "-o", self.output, *small, *more]

    def plan(self, *more, **differences):
        return self.farm("plan", *self.recording(*more, **differences))

    def make(self, *numbers):
        for number in numbers:
            self.farm("piece", self.farm_folder, number)

    def missing(self):
        return [int(line) for line in self.farm("missing", self.farm_folder).split()]

    def record_whole(self, *more, show=NIGHT):
        """The manifest of one machine, and its video."""
        manifest, video = self.folder / "whole.txt", self.folder / "whole.mp4"
        grid = SMALL[:2] if "--fps" in more else SMALL
        subprocess.run([RECORD, "--show", show, *grid, *more, "-o", video, "--manifest", manifest], check=True)
        return manifest.read_text(encoding="utf-8"), video

    def expect_whole(self, *more):
        """The farm's result is that of one machine: manifest, pictures' times, sound, captions."""
        manifest, video = self.record_whole(*more)
        self.assertEqual((self.farm_folder / "manifest.txt").read_text(encoding="utf-8"), manifest)
        self.assertEqual(describe(self.output), describe(video))


def ask(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def describe(video):
    """All of a video but what its pictures look like: times, durations, hash of the decoded sound."""
    packets = ask("ffprobe", "-v", "error", "-show_entries", "packet=codec_type,pts,dts,duration",
                  "-show_entries", "format=duration,start_time", "-of", "csv", video)
    sound = ask("ffmpeg", "-v", "error", "-i", video, "-map", "0:a", "-f", "md5", "-")
    captions = ask("ffmpeg", "-v", "error", "-i", video, "-map", "0:s", "-f", "webvtt", "-") if has_captions(video) else ""
    return sorted(packets.splitlines()), sound, captions


def has_captions(video):
    return "subtitle" in ask("ffprobe", "-v", "error", "-show_entries", "stream=codec_type", "-of", "csv", video)


class Gate:
    """An ffmpeg ahead of the real one that does as a test wants. It is part of the environment in which
    pieces are made (`option`): open, it is the real one; shut, it says so by a file and waits until it
    is opened; failing, it fails so many times."""

    SCRIPT = """\
#!/bin/sh
gate={folder}
case "$*" in *rawvideo* | *concat*) # the one of several calls that has the pictures
    if [ -s "$gate/failures" ]; then
        sed -i '$d' "$gate/failures"
        echo "ffmpeg: failed as it was told" >&2
        exit 1
    fi ;;
esac
if [ -e "$gate/shut" ]; then
    touch "$gate/waiting-${{SLURMD_NODENAME:-${{VYR_HOST:-here}}}}"
    while [ -e "$gate/shut" ]; do sleep 0.05; done
fi
PATH=${{PATH#*:}} exec ffmpeg "$@"
"""

    def __init__(self, folder):
        self.folder = folder
        (folder / "bin").mkdir(parents=True)
        script = folder / "bin/ffmpeg"
        script.write_text(self.SCRIPT.format(folder=f"'{folder}'"), encoding="utf-8")
        script.chmod(0o755)
        self.option = ["--env", f"PATH={folder}/bin:{os.environ['PATH']}"]

    def shut(self):
        (self.folder / "shut").touch()

    def open(self):
        (self.folder / "shut").unlink(missing_ok=True)

    def fail(self, times):
        (self.folder / "failures").write_text("once more\n" * times, encoding="utf-8")

    def failures_left(self):
        return len((self.folder / "failures").read_text(encoding="utf-8").splitlines())

    def is_reached(self, where):
        return (self.folder / f"waiting-{where}").exists()
