"""vyr-farm over a real sshd, with GNU Parallel: two machines that are this one."""

import os
import re
import signal
import subprocess
import tempfile
import unittest
from pathlib import Path

import daemons
from support import FARM, FarmTest, Gate, skip_without


class OverSsh(FarmTest):
    apart = False  # whether the machines see the folder

    def setUp(self):
        super().setUp()
        work = self.folder / "work"
        work.mkdir()
        self.output = work / "show.mp4"
        self.farm_folder = work / "show.farm"
        self.gate = Gate(self.folder / "gate")
        self.addCleanup(self.gate.open)
        keys = tempfile.TemporaryDirectory(prefix="vyr-ssh-")
        self.addCleanup(keys.cleanup)
        self.known = Path(keys.name) / "known_hosts"
        self.hosts = {name: daemons.Host(Path(keys.name), name, self.known,
                                         hidden=work if self.apart else None, environment=f"VYR_HOST={name}")
                      for name in ("anna", "bert")}
        for host in self.hosts.values():
            self.addCleanup(host.stop)
        self.ssh = daemons.write_ssh_config(Path(keys.name) / "config", self.hosts.values())

    def command(self, *more, hosts="anna,bert"):
        return ["parallel", *self.recording(*self.gate.option), "--hosts", hosts, "--ssh", self.ssh, *more]

    def start(self, *before):
        return subprocess.Popen([*before, str(FARM), *map(str, self.command())], stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, text=True)

    def shut(self):
        self.plan(*self.gate.option)
        self.gate.shut()

    def is_reached(self, *hosts):
        return all(self.gate.is_reached(host) for host in hosts)

    def who_made(self):
        lines = (self.farm_folder / "logs/parallel.log").read_text(encoding="utf-8").splitlines()[1:]
        return {line.split("\t")[1] for line in lines}

    def expect_no_copies(self):
        script = (self.farm_folder / "parallel-copies.sh").read_text(encoding="utf-8")
        copy = Path.home() / re.search(r"^copy=(\S+)", script, re.M)[1]
        self.assertTrue(str(copy).startswith(str(Path.home() / ".cache/vyr-farm/")))
        self.assertFalse(copy.exists())


class Shared(OverSsh):
    def test_both_machines_make_pieces_and_the_video_is_made_here(self):
        said = self.farm(*self.command())
        self.assertIn(f"{self.output}: 160 frames of 4 pieces, drawn by ", said)
        self.assertEqual(self.who_made(), {"anna", "bert"})
        self.expect_whole()

    def test_pieces_that_are_done_are_not_made_twice(self):
        self.plan(*self.gate.option)
        self.make(1, 2, 3)
        self.farm(*self.command())
        text = (self.farm_folder / "logs/parallel.log").read_text(encoding="utf-8")
        self.assertEqual(len(text.splitlines()), 2)
        self.hosts["anna"].kill()
        self.hosts["bert"].kill()
        self.farm(*self.command())  # only the join, which needs no machine
        self.expect_whole()

    def test_a_machine_that_dies_in_the_middle_of_a_piece(self):
        self.shut()
        farm = self.start()
        daemons.wait_until(lambda: self.is_reached("anna", "bert"), "a piece on each machine", farm)
        self.hosts["bert"].kill()
        self.gate.open()
        _, errors = farm.communicate()
        self.assertEqual(farm.returncode, 0, errors)
        self.expect_whole()

    def test_a_piece_that_fails_is_run_again_three_times(self):
        self.plan(*self.gate.option)
        self.make(1, 2, 3)
        self.gate.fail(3)
        self.farm(*self.command())
        self.expect_whole()

    def test_a_piece_that_fails_again_and_again_ends_with_the_reason(self):
        self.plan(*self.gate.option)
        self.make(1, 2, 3)
        self.gate.fail(100)
        self.expect_failure(self.command(), "1 of 4 pieces can't be joined: piece 4", "failed as it was told")
        self.assertEqual(self.gate.failures_left(), 100 - 4)

    def test_an_interruption_keeps_what_is_done_and_ends_the_rest(self):
        self.plan(*self.gate.option)
        self.make(1)
        self.gate.shut()
        farm = self.start()
        daemons.wait_until(lambda: self.is_reached("anna", "bert"), "a piece on each machine", farm)
        farm.send_signal(signal.SIGINT)
        _, errors = farm.communicate()
        self.assertEqual(farm.returncode, 130)
        self.assertIn("vyr-farm: interrupted: the pieces that are done stay", errors)
        self.gate.open()
        self.assertEqual(self.missing(), [2, 3, 4])
        self.farm(*self.command())
        self.expect_whole()

    @unittest.skipUnless(os.getuid() == 0, "only root mounts a disk")
    def test_a_disk_that_is_full(self):
        self.plan(*self.gate.option)
        tries = self.farm_folder / "tries"
        subprocess.run(["mount", "-t", "tmpfs", "-o", "size=8k", "none", tries], check=True)
        try:
            self.expect_failure(self.command(), "4 of 4 pieces can't be joined", "No space left on device")
        finally:
            subprocess.run(["umount", tries], check=True)
        self.assertFalse(self.output.exists())
        self.farm(*self.command())
        self.expect_whole()


class Faults(OverSsh):
    def test_a_host_that_is_down_is_left_out(self):
        self.hosts["bert"].kill()
        lines = self.expect_down(self.command(), "bert")
        self.assertEqual(self.who_made(), {"anna"})
        self.assertEqual(len([line for line in lines if line.startswith("vyr-farm: ")]), 1)
        self.expect_whole()

    def expect_down(self, command, host):
        done = self.run_farm(*command)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn(f"vyr-farm: host {host} is down, the others do its work: ", done.stderr)
        return done.stderr.splitlines()

    def test_no_host_is_up(self):
        for host in self.hosts.values():
            host.kill()
        self.expect_failure(self.command(), "no host is up")

    def test_a_host_that_nobody_knows_is_down(self):
        self.expect_down(self.command(hosts="anna,nowhere.invalid"), "nowhere.invalid")

    def test_a_host_whose_key_is_unknown(self):
        text = self.known.read_text(encoding="utf-8")
        self.known.write_text("\n".join(line for line in text.splitlines() if "anna" in line) + "\n", encoding="utf-8")
        lines = self.expect_failure(self.command(), "host bert: its key is not known here", "ssh bert")
        self.assertEqual(len(lines), 1)

    def test_a_host_whose_key_has_changed(self):
        anna, bert = self.known.read_text(encoding="utf-8").splitlines()
        key = anna.removeprefix("anna ")
        self.known.write_text(f"{anna}\nbert {key}\n", encoding="utf-8")
        self.assertNotIn(key, bert)
        lines = self.expect_failure(self.command(), "host bert: its key is not known here, or has changed")
        self.assertEqual(len(lines), 1)

    def test_a_host_that_wants_a_password(self):
        (self.hosts["bert"].folder / "authorized_keys").write_text("", encoding="utf-8")
        lines = self.expect_failure(self.command(), "host bert: asks for a password", "ssh-copy-id bert")
        self.assertEqual(len(lines), 1)

    def test_misuse(self):
        for hosts in "", "anna,,bert", "-oProxyCommand=x", "a;b":
            self.expect_failure(self.command(f"--hosts={hosts}"), "--hosts", status=2)
        self.assertFalse(self.farm_folder.exists())


class Apart(OverSsh):
    """Machines with a disk of their own: the show goes there, pieces come back."""

    apart = True

    def test_the_show_is_copied_there_and_pieces_come_back(self):
        self.farm(*self.command())
        self.assertEqual(self.who_made(), {"anna", "bert"})
        self.assertIn("--return", (self.farm_folder / "parallel-copies.sh").read_text(encoding="utf-8"))
        self.expect_whole()
        self.expect_no_copies()

    def test_a_machine_that_dies_in_the_middle_of_a_piece(self):
        self.shut()
        farm = self.start()
        daemons.wait_until(lambda: self.is_reached("anna", "bert"), "a piece on each machine", farm)
        self.hosts["bert"].kill()
        self.gate.open()
        _, errors = farm.communicate()
        self.assertEqual(farm.returncode, 0, errors)
        self.expect_whole()

    def test_an_end_in_the_background_leaves_no_copies(self):
        self.shut()
        # what a shell starts in the background does not hear Ctrl-C
        farm = self.start("sh", "-c", 'trap "" INT; exec "$@"', "sh")
        daemons.wait_until(lambda: self.is_reached("anna", "bert"), "a piece on each machine", farm)
        farm.send_signal(signal.SIGTERM)
        farm.communicate()
        self.assertEqual(farm.returncode, 130)
        self.expect_no_copies()


if __name__ == "__main__":
    skip_without(*daemons.Host.programs, "parallel", "rsync", "unshare")
    if os.getuid() != 0:
        print("skipped: only root gives a machine a disk of its own")
        Apart = None
    unittest.main()
