"""Plans, pieces and joins without an engine: which pieces there are, which are accepted, and which are
refused to be joined."""

import json
import os
import shlex
import shutil
import subprocess
import unittest

from support import FARM, NIGHT, RECORD, ROOT, SMALL, WAITING, FarmTest, Gate

from vyr_farm import plan, progress

LYRICS = ["--lyrics", ROOT / "examples/night/words.txt"]


class Plans(FarmTest):
    def test_hold_all_that_a_machine_needs_and_scripts_that_say_what_they_do(self):
        said = self.plan(*LYRICS)
        for name in "piece.sh", "join.sh", "slurm.sh", "parallel.sh", "parallel-copies.sh":
            text = (self.farm_folder / name).read_text(encoding="utf-8")
            self.assertTrue(text.startswith("#!/bin/sh\n# "), name)
            self.assertEqual(subprocess.run(["sh", "-n", self.farm_folder / name], check=False).returncode, 0, name)
        self.assertIn(f"{shlex.quote(str(self.farm_folder))}/slurm.sh", said)
        self.assertTrue((self.farm_folder / "show/show.so").exists())
        self.assertEqual(self.missing(), [1, 2, 3, 4])
        self.assertEqual(self.run_farm("join", self.farm_folder).returncode, 1)
        self.assertFalse(self.output.exists())

    def test_a_show_may_be_edited_while_it_is_recorded(self):
        copy = self.folder / "night"
        shutil.copytree(NIGHT, copy)
        self.plan(show=copy)
        (copy / "data/moon.png").unlink()
        self.make(1)
        self.assertEqual(self.missing(), [2, 3, 4])

    def test_a_show_that_holds_its_own_recordings_is_copied_without_them(self):
        copy = self.folder / "night"
        shutil.copytree(NIGHT, copy)
        self.output = copy / "show.mp4"
        self.output.write_bytes(b"before")
        self.plan(show=copy)
        self.assertFalse((copy / "show.farm/show/show.mp4").exists())
        self.assertFalse((copy / "show.farm/show/show.farm").exists())

    def test_given_again_the_plan_stays_and_so_do_its_scripts(self):
        self.plan()
        before = (self.farm_folder / "plan.json").read_bytes()
        (self.farm_folder / "piece.sh").write_text("#!/bin/sh\n# mine\n", encoding="utf-8")
        self.plan()
        self.assertEqual((self.farm_folder / "plan.json").read_bytes(), before)
        self.assertIn("mine", (self.farm_folder / "piece.sh").read_text(encoding="utf-8"))

    def test_two_recordings_do_not_share_a_folder(self):
        self.plan()
        for words, what in ((self.recording(show=WAITING), "Waiting"), (self.recording(size="32x18"), "32x18"),
                            (self.recording("--from", "32"), "frames 20-"), (self.recording(parts=5), "not 5"),
                            (self.recording(*LYRICS), "words"), (self.recording("--env", "A=1"), "--env")):
            self.expect_failure(["plan", *words], self.farm_folder, what, "--folder")

    def test_what_was_interrupted_is_planned_anew_and_other_files_are_left_alone(self):
        (self.farm_folder / "show").mkdir(parents=True)
        (self.farm_folder / "show/half").touch()
        self.plan()
        self.assertFalse((self.farm_folder / "show/half").exists())
        shutil.rmtree(self.farm_folder)
        self.farm_folder.mkdir()
        (self.farm_folder / "thesis.txt").write_text("mine", encoding="utf-8")
        self.expect_failure(["plan", *self.recording()], "thesis.txt")
        self.assertTrue((self.farm_folder / "thesis.txt").exists())

    def test_misuse_is_one_line_and_leaves_nothing(self):
        for more, what, status in ((["--parts", "0"], "--parts", 2), (["--parts", "many"], "--parts", 2),
                                   (["--parts", "161"], "--parts 161", 2), (["--size", "65x36"], "--size", 2),
                                   (["--fps", "0"], "--fps", 2), (["--from", "999"], "--from", 2),
                                   (["--env", "A"], "--env", 2), (["--frobnicate"], "--frobnicate", 2),
                                   (["-o", "show.avi"], "show.avi", 2), (["--show", "nowhere"], "nowhere", 1),
                                   (["--lyrics", "nowhere"], "nowhere", 1)):
            self.expect_failure(["plan", *self.recording(), *more], what, status=status)
            self.assertFalse((self.farm_folder / "plan.json").exists())

    def test_a_plan_that_a_hand_has_spoiled_is_no_plan(self):
        self.plan()
        path = self.farm_folder / "plan.json"
        good = json.loads(path.read_text(encoding="utf-8"))
        gap = json.loads(json.dumps(good))
        gap["pieces"][1]["first"] += 1
        no_pieces = {**good, "pieces": []}
        for text in ("", "{}", "[]", "null", json.dumps(gap), json.dumps(no_pieces), json.dumps({**good, "more": 1})):
            path.write_text(text, encoding="utf-8")
            self.expect_failure(["missing", self.farm_folder], "plan.json: no plan")
        path.unlink()
        self.expect_failure(["missing", self.farm_folder], "plan.json: No such file")

    def test_a_disk_that_is_full(self):
        # no file may grow beyond a kilobyte, which a write hears as it hears of a full disk
        script = 'trap "" XFSZ; ulimit -f 2; exec "$@"'
        done = subprocess.run(["sh", "-c", script, "sh", FARM, "plan", *map(str, self.recording())],
                              capture_output=True, text=True, check=False)
        self.assertEqual(done.returncode, 1)
        self.assertEqual(len(done.stderr.splitlines()), 1, done.stderr)
        self.assertFalse((self.farm_folder / "plan.json").exists())


class Pieces(FarmTest):
    def setUp(self):
        super().setUp()
        self.gate = Gate(self.folder / "gate")
        self.plan(*self.gate.option)

    def test_joined_are_the_whole(self):
        self.make(1, 2, 3, 4)
        self.farm("join", self.farm_folder)
        self.expect_whole()

    def test_that_are_done_are_not_made_twice(self):
        self.make(2)
        self.gate.fail(1)
        self.assertIn("there already", self.farm("piece", self.farm_folder, 2))
        self.assertEqual(self.missing(), [1, 3, 4])

    def test_that_fail_leave_nothing_and_say_why(self):
        self.gate.fail(1)
        self.expect_failure(["piece", self.farm_folder, 1], "piece 1: ", "failed as it was told")
        self.assertEqual(list((self.farm_folder / "tries").iterdir()), [])
        self.assertEqual(list((self.farm_folder / "pieces").iterdir()), [])

    def test_have_numbers(self):
        self.expect_failure(["piece", self.farm_folder, 5], "1 to 4", status=2)
        self.expect_failure(["piece", self.farm_folder, "one"], "one", status=2)

    def spoil(self, name, change):
        path = self.farm_folder / "pieces" / name
        path.write_bytes(change(path.read_bytes()))
        return path

    def test_that_were_cut_short_are_made_anew(self):
        self.make(1, 2)
        # pictures end before the table says; the manifest has lost a line; two lines are swapped
        self.spoil("1.mp4", lambda video: video[:-1000])
        self.spoil("2.txt", lambda text: b"".join(text.splitlines(True)[:-1]))
        self.assertEqual(self.missing(), [1, 2, 3, 4])
        self.make(1, 2, 3, 4)
        for change in (lambda text: b"", lambda text: b"\xff\xfe" * 100, lambda text: text[:100],
                       lambda text: b"".join([*text.splitlines(True)[:2], *reversed(text.splitlines(True)[2:])])):
            self.spoil("3.txt", change)
            self.assertEqual(self.missing(), [3])
            self.expect_failure(["join", self.farm_folder], "1 of 4 pieces", "piece 3", "3.txt")
        self.make(3)
        for change in (lambda video: b"", lambda video: video[:100], lambda video: os.urandom(5000)):
            self.spoil("4.mp4", change)
            self.expect_failure(["join", self.farm_folder], "1 of 4 pieces", "piece 4", "4.mp4")

    def test_whose_file_has_too_few_pictures_are_made_anew(self):
        self.make(1)
        video = self.farm_folder / "pieces/1.mp4"
        shorter = self.folder / "shorter.mp4"
        subprocess.run(["ffmpeg", "-v", "error", "-i", video, "-c", "copy", "-t", "1", shorter], check=True)
        shutil.move(shorter, video)
        self.expect_failure(["join", self.farm_folder], "1.mp4: has ", "pictures")

    def test_of_another_recording_are_not_joined(self):
        self.make(1, 2, 3, 4)
        before = self.farm_folder / "pieces/2.txt"
        good = before.read_text(encoding="utf-8")
        number = self.farm_folder / "pieces/2"
        other = {"show": (WAITING, SMALL), "size": (NIGHT, ["--size", "32x18", "--fps", "10"]),
                 "rate": (NIGHT, ["--size", "64x36", "--fps", "12"]),
                 "rows": (NIGHT, [*SMALL, "--to", "250"])}
        for show, options in other.values():
            subprocess.run([RECORD, "--show", show, *options, "--frames", "40-79", "-o", f"{number}.mp4",
                            "--manifest", f"{number}.txt"], check=True)
            self.expect_failure(["join", self.farm_folder], "piece 2", "is of another recording")
        self.assertFalse(self.output.exists())
        before.write_text(good, encoding="utf-8")

    def test_of_different_drivers_are_not_joined(self):
        self.make(1, 2, 3)
        # the software renderer with narrower registers, which its name says
        self.farm("piece", self.farm_folder, 4, environment={"LP_NATIVE_VECTOR_WIDTH": "128"})
        self.expect_failure(["join", self.farm_folder], "different drivers, whose pictures may differ", "128 bits",
                            "remove 4.txt")
        (self.farm_folder / "pieces/4.txt").unlink()
        self.make(4)
        self.farm("join", self.farm_folder)

    def test_a_join_that_fails_leaves_what_there_was(self):
        self.make(1, 2, 3, 4)
        self.output.write_bytes(b"before")
        self.gate.fail(1)
        path = f"{self.folder}/gate/bin:{os.environ['PATH']}"
        self.expect_failure(["join", self.farm_folder], "failed as it was told", environment={"PATH": path})
        self.assertEqual(self.output.read_bytes(), b"before")
        self.assertFalse((self.farm_folder / "joined").exists())
        self.assertEqual(list((self.farm_folder / "tries").iterdir()), [])

    def test_a_join_clears_what_dead_machines_left(self):
        (self.farm_folder / "tries/2-abc").mkdir()
        self.make(1, 2, 3, 4)
        self.farm("join", self.farm_folder)
        self.assertEqual(list((self.farm_folder / "tries").iterdir()), [])


class Captions(FarmTest):
    def test_are_those_of_the_whole_and_rows_choose_its_frames(self):
        # from and to within lines of words, and a rate that no decimal number is
        more = [*LYRICS, "--from", "66.5", "--to", "200.3", "--fps", "30000/1001"]
        manifest = self.folder / "frames.txt"
        self.plan(*more, "--manifest", manifest, parts=5)
        self.make(1, 2, 3, 4, 5)
        self.farm("join", self.farm_folder)
        self.assertTrue(has_words(self.output))
        self.expect_whole(*more)
        self.assertEqual(manifest.read_bytes(), (self.farm_folder / "manifest.txt").read_bytes())


def has_words(video):
    done = subprocess.run(["ffmpeg", "-v", "error", "-i", video, "-map", "0:s", "-f", "srt", "-"],
                          capture_output=True, text=True, check=True)
    return "-->" in done.stdout


class Waiting(FarmTest):
    def test_progress_says_pieces_frames_and_the_time_that_is_left(self):
        self.plan()
        made = plan.load(self.farm_folder)
        made.pieces = [plan.Piece(number, 40 * number - 40, 40 * number - 1, 10.0) for number in range(1, 5)]
        now = [100.0]
        line = progress.Progress(made, lambda: now[0])
        self.assertRegex(line.line(), r"^pieces 0/4  frames 0/160  time left: not known yet$")
        self.make(1)
        (self.farm_folder / "tries/2-xyz").mkdir()
        (self.farm_folder / "tries/2-xyz/.piece.txt.abcdef").write_text("# a\n# b\n" + "1 1.0 hash\n" * 7,
                                                                        encoding="utf-8")
        now[0] = 110.0
        # 10 seconds for 47 frames of the same cost each
        self.assertEqual(line.line(), "pieces 1/4  frames 47/160  0:00:24 left")


class Engines(FarmTest):
    def path_without(self, *left_out):
        """Everything of the usual path but these."""
        folder = self.folder / "bin"
        folder.mkdir()
        for place in reversed(os.environ["PATH"].split(":")):
            for program in os.scandir(place) if os.path.isdir(place) else ():
                link = folder / program.name
                link.unlink(missing_ok=True)
                if program.name not in left_out:
                    link.symlink_to(program.path)
        return {"PATH": str(folder)}

    def test_that_are_not_there_are_named_before_anything_is_made(self):
        without = self.path_without("sbatch", "parallel")
        self.expect_failure(["slurm", *self.recording()], "sbatch is not there", "slurm-client", environment=without)
        self.expect_failure(["parallel", "--hosts", "anna", *self.recording()], "parallel is not there",
                            environment=without)
        self.assertFalse(self.farm_folder.exists())


if __name__ == "__main__":
    unittest.main()
