"""vyr-farm on a real Slurm: munged, slurmctld, and two nodes on this machine."""

import os
import signal
import subprocess
import tempfile
import unittest
from pathlib import Path

import daemons
from support import FARM, FarmTest, Gate, skip_without


class OnSlurm(FarmTest):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="vyr-slurm-")
        cls.addClassCleanup(folder.cleanup)
        cls.slurm = daemons.Slurm(Path(folder.name))
        cls.addClassCleanup(cls.slurm.stop)

    def setUp(self):
        super().setUp()
        self.gate = Gate(self.folder / "gate")
        self.addCleanup(self.gate.open)
        for name, value in self.slurm.environment.items():
            os.environ[name] = value

    def command(self, *more):
        return ["slurm", *self.recording(*self.gate.option), *more]

    def start(self, *more):
        """The farm at work; what it says is read at its end."""
        return subprocess.Popen([str(FARM), *map(str, self.command(*more))], stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, text=True)

    def shut(self):
        """From the plan on, pieces stop where they are encoded."""
        self.plan(*self.gate.option)
        self.gate.shut()

    def wait_for(self, holds, what, process=None):
        daemons.wait_until(holds, what, process)

    def expect_video(self):
        self.assertEqual(list((self.farm_folder / "tries").iterdir()), [])
        self.expect_whole()

    def log(self, name):
        return (self.farm_folder / f"logs/{name}.log").read_text(encoding="utf-8")


class Jobs(OnSlurm):
    def test_make_the_video_and_the_command_says_how_to_watch_them(self):
        said = self.farm(*self.command("--wait", "--partition", "render", "--sbatch=--comment=ours"))
        jobs = said.split()[1].split(",")
        self.assertIn(f"squeue --jobs={','.join(jobs)}", said)
        self.assertIn(f"scancel {' '.join(jobs)}", said)
        self.expect_video()
        self.assertIn("Comment=ours", self.slurm.run("scontrol", "show", "job", jobs[-1]))

    def test_that_are_done_are_not_made_twice(self):
        self.plan(*self.gate.option)
        self.make(1, 3)
        self.farm(*self.command("--wait"))
        self.assertFalse((self.farm_folder / "logs/1.log").exists())
        self.assertIn("piece 2: ", self.log(2))
        self.farm(*self.command("--wait"))  # only the join
        self.assertEqual(self.log(2).count("piece 2: "), 1)
        self.expect_video()

    def test_given_again_while_they_are_under_way_nothing_is_submitted(self):
        self.shut()
        first = self.farm(*self.command()).split()[1]
        again = self.farm(*self.command())
        self.assertIn(f"jobs {first} are under way already", again)
        self.gate.open()
        self.farm(*self.command("--wait"))
        self.expect_video()

    def test_go_on_when_the_wait_is_interrupted(self):
        self.shut()
        waiting = self.start("--wait")
        self.wait_for(lambda: self.gate.is_reached("node1") or self.gate.is_reached("node2"), "a piece", waiting)
        waiting.send_signal(signal.SIGINT)
        said, errors = waiting.communicate()
        jobs = said.split()[1].replace(",", " ")
        self.assertEqual(waiting.returncode, 130)
        self.assertIn(f"vyr-farm: no longer waiting; the jobs go on: scancel {jobs} cancels them\n", errors)
        self.gate.open()
        self.assertIn("are under way already", self.farm(*self.command("--wait")))
        self.expect_video()

    def test_that_fail_are_run_again_three_times(self):
        self.plan(*self.gate.option)
        self.make(1, 2, 3)
        self.gate.fail(3)
        self.farm(*self.command("--wait"))
        self.assertEqual(self.log(4).count("failed as it was told"), 3)
        self.expect_video()

    def test_that_fail_again_and_again_end_with_the_reason(self):
        self.plan(*self.gate.option)
        self.make(1, 2, 3)
        self.gate.fail(100)
        self.expect_failure(self.command("--wait"), "1 of 4 pieces can't be joined: piece 4", "failed as it was told",
                            "given again")
        self.assertEqual(self.log(4).count("failed as it was told"), 4)
        self.gate.fail(0)
        self.farm(*self.command("--wait"))
        self.expect_video()

    def test_that_are_cancelled_end_the_wait(self):
        self.shut()
        waiting = self.start("--wait")
        self.wait_for(lambda: self.slurm.jobs("RUNNING"), "a piece", waiting)
        self.slurm.run("scancel", *(self.farm_folder / "jobs.txt").read_text(encoding="utf-8").split())
        _, errors = waiting.communicate()
        self.assertEqual(waiting.returncode, 1)
        self.assertIn("vyr-farm: the join was cancelled", errors)


class Faults(OnSlurm):
    def test_no_such_partition(self):
        lines = self.expect_failure(self.command("--partition", "nowhere"), "partition", "sinfo")
        self.assertEqual(len(lines), 1)
        self.assertEqual(self.slurm.jobs("PENDING,RUNNING"), [])

    def test_no_controller(self):
        lines = self.expect_failure(self.command(), "sbatch: ",
                                    environment={"SLURM_CONF": str(self.slurm.unreachable())})
        self.assertEqual(len(lines), 1)

    def test_a_join_that_is_refused_cancels_the_pieces(self):
        # the join's script is gone, so that only its submission fails
        self.plan(*self.gate.option)
        (self.farm_folder / "join.sh").unlink()
        self.expect_failure(self.command(), "join.sh")
        self.wait_for(lambda: not self.slurm.jobs("PENDING,RUNNING"), "the end of the pieces")

    def test_a_node_that_dies_in_the_middle_of_a_piece(self):
        self.shut()
        waiting = self.start("--wait")
        self.wait_for(lambda: self.gate.is_reached("node1") and self.gate.is_reached("node2"), "a piece on each node", waiting)
        self.slurm.kill_node("node2")
        self.addCleanup(self.slurm.start_node, "node2")
        self.gate.open()
        _, errors = waiting.communicate()
        self.assertEqual(waiting.returncode, 0, errors)
        self.expect_video()

    @unittest.skipUnless(os.getuid() == 0, "only root mounts a disk")
    def test_a_disk_that_is_full(self):
        self.plan(*self.gate.option)
        pieces = self.farm_folder / "tries"
        subprocess.run(["mount", "-t", "tmpfs", "-o", "size=8k", "none", pieces], check=True)
        mounted = [pieces]
        self.addCleanup(lambda: mounted and subprocess.run(["umount", mounted[0]], check=True))
        self.expect_failure(self.command("--wait"), "4 of 4 pieces can't be joined", "No space left on device")
        self.assertFalse(self.output.exists())
        subprocess.run(["umount", mounted.pop()], check=True)
        self.farm(*self.command("--wait"))
        self.expect_video()


if __name__ == "__main__":
    skip_without(*daemons.Slurm.programs)
    unittest.main()
