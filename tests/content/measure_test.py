"""content/measure on the show's timeline, and on timelines with one fault each."""

import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
VYR_TRACKS = sys.argv.pop(1)
EXTRA_CUT = "\nsection extra at 8:2 length 0:1\n  track image:left\n    0:0:{} photo.duck\n"
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
        self.assertIn("29 of 29", said)
        self.assertIn("34 of 34", said)

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
        self.assertIn("28 of 29 shown, missing [27]", said)

    def test_a_picture_past_the_last_is_named(self):
        status, said = measured(TIMELINE + EXTRA_CUT.format(1).replace("photo.duck", "29"))
        self.assertEqual(status, 1)
        self.assertIn("29 of 29 shown, picked past the last [29]    OUT OF LIMITS", said)

    def test_a_long_rest_is_found(self):
        early = re.search(r"^repeat tick .*\n", TIMELINE, re.M)
        self.assertIsNotNone(early, "the intro ticks no more")
        status, said = measured(TIMELINE.replace(early[0], ""))
        self.assertEqual(status, 1)
        self.assertRegex(said, r"rest .* at bar 0\.00    OUT OF LIMITS")


unittest.main()
