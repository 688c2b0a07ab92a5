#!/usr/bin/env python3
"""vyr-farm measured, on a real Slurm and a real sshd on this machine. Prints what it found, and how
busy the machine was.

Usage: benchmarks/farm.py PART [--build DIR] [--work DIR] [--show DIR] [recorder options]

    overhead   the show in 8 pieces on two nodes, beside two pieces by hand: seconds by the clock, and of
               the processor, which count where the machine does other work too
    balance    64 pieces on one machine, two at a time: seconds of a processor each, and their join
    whole      the show in 8 pieces on both engines, one of two machines killed on the way, beside one
               recorder: are the manifests, the times of all packets and the sound the same?

Recorder options are those that vyr-farm knows: --size, --fps, --from, --to. Two CPUs are needed. With
--work what was recorded stays there, and is not made twice.
"""

import argparse
import os
import re
import resource
import subprocess
import sys
import tempfile
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.dont_write_bytecode = True
sys.path.insert(0, str(ROOT / "tests/farm"))
os.environ.setdefault("VYR_BUILD", str(ROOT / "build"))

import daemons  # noqa: E402
from support import describe  # noqa: E402

ONE_CPU = ["--env", "LP_NUM_THREADS=0"]  # each piece draws on the one CPU that is its own


def seconds(*commands, environment=None):
    """By the clock, until all of `commands`, side by side, have ended well."""
    began = time.monotonic()
    running = [subprocess.Popen([str(word) for word in command], stdout=subprocess.DEVNULL,
                                env={**os.environ, **(environment or {})}) for command in commands]
    if any([process.wait() for process in running]):
        sys.exit("a recording failed, see above")
    return time.monotonic() - began


def processor_seconds():
    """Of everything that this program has started and waited for."""
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime


def costs(folder):
    """Seconds of a processor of each piece, as the machines said them."""
    text = "".join(path.read_text(encoding="utf-8", errors="replace") for path in folder.glob("logs/*")
                   if path.name != "join.log")
    found = re.findall(r"^piece (\d+): \d+ frames, ([\d.]+) seconds", text, re.M)
    return [value for _, value in sorted({int(number): float(value) for number, value in found}.items())]


def load():
    return f"(load of the machine at the end: {os.getloadavg()[0]:.1f} on {os.cpu_count()} CPUs)"


class Measuring:
    def __init__(self, given, recorder_options):
        self.build, self.show, self.work = given.build, given.show, given.work
        self.options = ["--show", given.show, *recorder_options]

    def farm(self, engine, name, parts, *more):
        return [self.build / "bin/vyr-farm", engine, *self.options, "--parts", parts, "-o", self.work / f"{name}.mp4",
                *ONE_CPU, *more]

    def slurm(self):
        folder = Path(tempfile.mkdtemp(prefix="vyr-slurm-"))
        return daemons.Slurm(folder)

    def machines(self, *names):
        folder = Path(tempfile.mkdtemp(prefix="vyr-ssh-"))
        hosts = [daemons.Host(folder, name, folder / "known_hosts") for name in names]
        return hosts, daemons.write_ssh_config(folder / "config", hosts)

    def overhead(self):
        record = [self.build / "bin/vyr-record", *self.options]
        hand = seconds(*([*record, "--part", f"{part}/2", "-o", self.work / f"hand{part}.mp4"] for part in (1, 2)),
                       environment={"LP_NUM_THREADS": "0"})
        hand_spent = processor_seconds()
        slurm = self.slurm()
        try:
            before = processor_seconds()
            planned = seconds(self.farm("plan", "overhead", 8))
            plan_spent = processor_seconds() - before
            farmed = seconds(self.farm("slurm", "overhead", 8, "--wait"), environment=slurm.environment)
        finally:
            slurm.stop()
        spent = costs(self.work / "overhead.farm")
        print(f"by the clock: two pieces by hand {hand:.1f} s; plan {planned:.1f} s, 8 pieces on two nodes and join "
              f"{farmed:.1f} s: {100 * (farmed / hand - 1):+.1f} % without the plan, "
              f"{100 * ((farmed + planned) / hand - 1):+.1f} % with it\n"
              f"of the processor: two pieces by hand {hand_spent:.1f} s, plan {plan_spent:.1f} s, 8 pieces "
              f"{sum(spent):.1f} s: {100 * (sum(spent) / hand_spent - 1):+.1f} % without the plan, "
              f"{100 * ((sum(spent) + plan_spent) / hand_spent - 1):+.1f} % with it {load()}")

    def balance(self):
        hosts, ssh = self.machines("anna")
        try:
            seconds(self.farm("parallel", "balance", 64, "--hosts", "anna", "--jobs", "2", "--ssh", ssh))
        finally:
            hosts[0].stop()
        spent = costs(self.work / "balance.farm")
        print(f"{len(spent)} pieces: {min(spent):.1f} to {max(spent):.1f} processor seconds, the shortest "
              f"{100 * (1 - min(spent) / max(spent)):.1f} % below the longest {load()}")
        self.join()

    def join(self):
        folder = self.work / "balance.farm"
        took = seconds([self.build / "bin/vyr-farm", "join", folder])
        size = (self.work / "balance.mp4").stat().st_size / 1e6
        print(f"joined in {took:.1f} s: {size:.0f} MB {load()}")

    def whole(self):
        video, manifest = self.work / "whole.mp4", self.work / "whole.txt"
        if not manifest.exists():
            seconds([self.build / "bin/vyr-record", *self.options, "-o", video, "--manifest", manifest])
        for engine in (self.on_slurm, self.over_ssh):
            engine()
            name = engine.__name__
            same = (self.work / f"{name}.farm/manifest.txt").read_bytes() == manifest.read_bytes()
            alike = describe(self.work / f"{name}.mp4") == describe(video)
            print(f"{name}: manifest {'the same' if same else 'DIFFERENT'}, times of packets and sound "
                  f"{'the same' if alike else 'DIFFERENT'} {load()}", flush=True)

    def on_slurm(self):
        slurm = self.slurm()
        try:
            self.run_and_kill(self.farm("slurm", "on_slurm", 8, "--wait"), "on_slurm",
                              lambda: slurm.kill_node("node2"), slurm.environment)
        finally:
            slurm.stop()

    def over_ssh(self):
        hosts, ssh = self.machines("anna", "bert")
        try:
            self.run_and_kill(self.farm("parallel", "over_ssh", 8, "--hosts", "anna,bert", "--ssh", ssh), "over_ssh",
                              hosts[1].kill, {})
        finally:
            hosts[0].stop()

    def run_and_kill(self, command, name, kill, environment):
        """Once a piece is done, and others are under way."""
        process = subprocess.Popen([str(word) for word in command], env={**os.environ, **environment})
        while process.poll() is None and not (self.work / f"{name}.farm/pieces/1.mp4").exists():
            time.sleep(1)
        time.sleep(3)  # into the next
        kill()
        print(f"{name}: a machine was killed", flush=True)
        if process.wait():
            sys.exit(f"{name}: failed, see above")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter,
                                     allow_abbrev=False)
    parser.add_argument("part", choices=["overhead", "balance", "join", "whole"])
    parser.add_argument("--build", type=Path, default=ROOT / "build")
    parser.add_argument("--show", type=Path)
    parser.add_argument("--work", type=Path)
    given, recorder_options = parser.parse_known_args()
    given.build = given.build.resolve()
    given.show = (given.show or given.build / "show").resolve()
    with tempfile.TemporaryDirectory(prefix="vyr-farm-") as temporary:
        given.work = (given.work or Path(temporary)).resolve()
        given.work.mkdir(parents=True, exist_ok=True)
        getattr(Measuring(given, recorder_options), given.part)()


main()
