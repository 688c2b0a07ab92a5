"""content/measure on the show's timeline, and on timelines with one fault each."""

import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
VYR_TRACKS = sys.argv.pop(1)
EXTRA_CUT = "\nsection extra at 8:2 length 0:1\n  track image:left\n    0:0:{} photo.skarnold04\n"
TIMELINE = (ROOT / "content/timeline.txt").read_text(encoding="utf-8")


def measured(text):
    """Exit status and output of content/measure for a timeline's text."""
    with tempfile.TemporaryDirectory() as folder:
        timeline = Path(folder) / "timeline.txt"
        timeline.write_text(text, encoding="utf-8")
        subprocess.run([VYR_TRACKS, "compile", timeline, "-o", folder], check=True)
        done = subprocess.run([sys.executable, ROOT / "content/measure", folder],
                              capture_output=True, text=True)
    return done.returncode, done.stdout


class Measure(unittest.TestCase):
    def changed(self, pattern, replacement):
        text, count = re.subn(pattern, replacement, TIMELINE)
        self.assertGreater(count, 0, f"the timeline has no more '{pattern}'")
        return measured(text)

    def test_the_show_is_within_its_limits(self):
        status, said = measured(TIMELINE)
        self.assertEqual(status, 0, said)
        for kind in ["photos", "lyric images", "objects"]:
            self.assertRegex(said, kind + r" +(\d+) of \1 shown\n")

    def test_a_cut_three_rows_beside_its_beat_is_out_of_limits(self):
        status, said = measured(TIMELINE + EXTRA_CUT.format(3))
        self.assertEqual(status, 1)
        self.assertRegex(said, r"image:left .* by 3 rows    OUT OF LIMITS")

    def test_a_cut_one_row_beside_its_beat_is_not(self):
        status, said = measured(TIMELINE + EXTRA_CUT.format(1))
        self.assertEqual(status, 0, said)

    def test_a_picture_that_never_appears_is_named(self):
        status, said = self.changed(r"photo\.leather\b(?! =)", "photo.duck")
        self.assertEqual(status, 1)
        self.assertIn("shown, missing [27]", said)

    def test_a_picture_past_the_last_is_named(self):
        status, said = measured(TIMELINE + EXTRA_CUT.format(1).replace("photo.skarnold04", "1000"))
        self.assertEqual(status, 1)
        self.assertIn("shown, picked past the last [1000]    OUT OF LIMITS", said)

    def test_a_long_rest_is_found(self):
        status, said = self.changed(r"    2:0:0   photo\.vemby03 .*\n    4:0:0   off\n", "")
        self.assertEqual(status, 1)
        self.assertRegex(said, r"rest .* at bar 41\.50    OUT OF LIMITS")

    def test_a_picture_that_comes_a_fifth_time_is_out_of_limits(self):
        status, said = measured(TIMELINE + "\nsection extra at 8:0\n  track image:center\n"
                                + "".join(f"    {bar}:1:0 photo.skarnold02\n    {bar}:3:0 off\n" for bar in range(3)))
        self.assertEqual(status, 1)
        self.assertIn("5 times at most, skarnold02    OUT OF LIMITS", said)

    def test_prints_that_lie_over_each_other_are_named(self):
        status, said = measured(TIMELINE + "\nsection extra at 8:0\n  track image:right\n"
                                "    0:1:0 photo.tovak10\n    0:3:0 off\n")
        self.assertEqual(status, 1)
        self.assertRegex(said, r"collisions +16 rows, the first at bar 8\.25    OUT OF LIMITS")

    def test_a_line_of_words_that_stands_still_is_named(self):
        still = re.sub(r"(  track lyrics:x[^\n]*\n    0:0:0 +)\S+(\n    0:0:6 +)\S+( .*\n    1:2:6 +)\S+", r"\g<1>300\g<2>300\g<3>300",
                       TIMELINE, count=1)
        self.assertNotEqual(still, TIMELINE)
        status, said = measured(still)
        self.assertEqual(status, 1)
        self.assertRegex(said, r"40 lines, 39 of them move, not \[0\]    OUT OF LIMITS")

    def test_words_that_leave_slowly_are_out_of_limits(self):
        status, said = self.changed(r"    1:2:6   1  linear\n    1:3:1   0  hold", "    1:2:6   1  linear\n    1:3:7   0  hold")
        self.assertEqual(status, 1)
        self.assertRegex(said, r"9 rows at most to fade out    OUT OF LIMITS")


class TunnelLight(unittest.TestCase):
    def checked(self, text):
        """Exit status and output of content/tunnel-light --check beside a timeline's text."""
        with tempfile.TemporaryDirectory() as folder:
            shutil.copy(ROOT / "content/tunnel-light", folder)
            (Path(folder) / "timeline.txt").write_text(text, encoding="utf-8")
            done = subprocess.run([sys.executable, Path(folder) / "tunnel-light", "--check"], capture_output=True, text=True)
        return done.returncode, done.stdout

    def test_the_lamp_stands_at_the_tunnels_end(self):
        self.assertEqual(self.checked(TIMELINE), (0, ""))

    def test_another_way_through_the_tunnel_asks_for_another_light(self):
        moved = TIMELINE.replace("    0:0:0   86\n    4:0:0   122", "    0:0:0   86\n    4:0:0   130")
        self.assertNotEqual(moved, TIMELINE)
        status, said = self.checked(moved)
        self.assertEqual(status, 1)
        self.assertIn("run content/tunnel-light", said)


unittest.main()
