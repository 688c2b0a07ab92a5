"""content/check on a copy of content/ with a few results: what it lets pass, and what not."""

import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent


def run(copy, program, *arguments):
    return subprocess.run([sys.executable, str(copy / "content" / program), *arguments],
                          capture_output=True, text=True)


class Check(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.copy = Path(self.folder.name)
        for name in "content", "data":
            shutil.copytree(ROOT / name, self.copy / name)
        self.assertEqual(run(self.copy, "make", "--note", "font", "lyrics").returncode, 0)

    def tearDown(self):
        self.folder.cleanup()

    def faults(self):
        """Lines about the font and the lyrics: what else stands in data/ is no matter here."""
        done = run(self.copy, "check")
        return [line for line in done.stdout.splitlines() if "content/make font" in line
                or "content/make lyrics" in line]

    def test_notes_what_was_made(self):
        self.assertEqual(self.faults(), [])

    def test_a_changed_source_makes_its_results_stale_and_no_others(self):
        with open(self.copy / "content/font/make", "a", encoding="utf-8") as program:
            program.write("# another size\n")
        said = self.faults()
        self.assertEqual(len(said), 2)
        self.assertIn("data/font/waiting.fnt: was not made again after its sources changed", said[0])

    def test_a_new_line_of_words_makes_every_lyric_image_stale(self):
        with open(self.copy / "content/lyrics/lyrics.txt", "a", encoding="utf-8") as words:
            words.write("# words\n")
        self.assertEqual(len(self.faults()), 34)

    def test_a_result_that_was_painted_over_is_a_fault(self):
        with open(self.copy / "data/font/waiting.png", "ab") as page:
            page.write(b"x")
        self.assertIn("is not the file that was made", self.faults()[0])

    def test_a_missing_result_is_a_fault(self):
        (self.copy / "data/lyrics/lyrics007").unlink()
        self.assertIn("data/lyrics/lyrics007: is missing", self.faults()[0])

    def test_a_manual_makes_nothing_stale(self):
        (self.copy / "content/font/README.md").write_text("changed\n", encoding="utf-8")
        self.assertEqual(self.faults(), [])


unittest.main()
