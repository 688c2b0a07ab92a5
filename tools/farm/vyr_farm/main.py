"""The command line."""

import argparse
import re
import shlex
import signal
import sys
from pathlib import Path

from . import check, join, parallel, piece, plan, slurm
from .failure import Failure

DESCRIPTION = """\
Records a show on many machines: in pieces of equal cost, which are joined to the video that one
machine would have made. What is made on the way lies in a folder beside the video (show.farm for
show.mp4): pieces that are done are not made twice, when the command is given again.
"""
EXIT = "Exit status: 0 done, 1 failed, 2 misused, 130 interrupted."


class Parser(argparse.ArgumentParser):
    """One line for a mistake, as the other tools have it."""

    def __init__(self, **more):
        super().__init__(allow_abbrev=False, formatter_class=argparse.RawDescriptionHelpFormatter, **more)

    def error(self, message):
        raise Failure(message, 2)


def add_recording(parser):
    parser.add_argument("--show", required=True, metavar="DIR", help="the show's folder")
    parser.add_argument("--parts", required=True, type=parts, metavar="N", help="so many pieces")
    parser.add_argument("-o", "--output", required=True, metavar="FILE", help="the MP4 file to make")
    parser.add_argument("--manifest", metavar="FILE", help="write a line a frame: frame, row, hash")
    parser.add_argument("--folder", metavar="DIR", help="for plan and pieces [FILE with .farm in place of .mp4]")
    parser.add_argument("--env", action="append", default=[], type=setting, metavar="NAME=VALUE",
                        dest="environment", help="set in the environment in which pieces are made")
    for name, what, metavar in (("size", "of the picture in pixels [1280x720]", "WxH"),
                                ("fps", "frames a second, whole or as 30000/1001 [60]", "RATE")):
        parser.add_argument(f"--{name}", metavar=metavar, help=what)
    parser.add_argument("--from", dest="start", metavar="ROW", help="begin at ROW [0]")
    parser.add_argument("--to", dest="end", metavar="ROW", help="end before ROW [the show's last]")
    parser.add_argument("--lyrics", metavar="FILE", help="put the words in FILE into the video as captions")


def parts(text):
    if not re.fullmatch(r"[0-9]{1,6}", text) or int(text) < 1:
        raise argparse.ArgumentTypeError(f"{text}: a number of pieces, 1 or more")
    return int(text)


def setting(text):
    if not re.fullmatch(r"[A-Za-z_][A-Za-z0-9_]*=.*", text):
        raise argparse.ArgumentTypeError(f"{text}: as in LP_NUM_THREADS=0")
    return tuple(text.split("=", 1))


def make_parser(version):
    parser = Parser(prog="vyr-farm", description=DESCRIPTION, epilog=EXIT)
    parser.add_argument("--version", action="version", version=f"vyr-farm {version}")
    commands = parser.add_subparsers(dest="command", required=True, metavar="COMMAND", parser_class=Parser)

    def add(name, run, text):
        command = commands.add_parser(name, help=text, description=text + ".")
        command.set_defaults(run=run)
        return command

    on_slurm = add("slurm", run_slurm, "make pieces and video on a Slurm cluster")
    add_recording(on_slurm)
    on_slurm.add_argument("--partition", metavar="NAME", help="of the cluster [its default]")
    on_slurm.add_argument("--sbatch", action="append", default=[], metavar="OPTION",
                          help="one more option of sbatch, as in --sbatch=--mem=2G")
    on_slurm.add_argument("--wait", action="store_true", help="until the video is there, and say how far it is")
    over_ssh = add("parallel", run_parallel, "make the pieces on machines over ssh, and the video here")
    add_recording(over_ssh)
    over_ssh.add_argument("--hosts", required=True, metavar="HOST,HOST...", help="as ssh knows them")
    over_ssh.add_argument("--jobs", type=parts, default=1, metavar="N", help="pieces at a time on a machine [1]")
    over_ssh.add_argument("--ssh", default="ssh", metavar="COMMAND", help="how to start ssh, as in 'ssh -F FILE' [ssh]")
    add_recording(add("plan", run_plan, "write the scripts for both, and run nothing"))
    for name, run, text in (("piece", run_piece, "make piece K of a plan, as its scripts do"),
                            ("missing", run_missing, "print the pieces of a plan that are still to be made"),
                            ("join", run_join, "join the pieces of a plan")):
        command = add(name, run, text)
        command.add_argument("folder", metavar="DIR", help="the plan's folder")
        if name == "piece":
            command.add_argument("number", type=parts, metavar="K")
    return parser


def make_plan(wanted):
    wanted.environment = dict(wanted.environment)
    if Path(wanted.output).suffix != ".mp4":
        raise Failure(f"-o {wanted.output}: a recording is written to a .mp4 file", 2)
    return plan.make(wanted)


def run_plan(wanted, _):
    made = make_plan(wanted)
    longest = max(made.pieces, key=lambda one: one.cost)
    folder = shlex.quote(str(made.folder))
    print(f"{made.recording}: {len(made.pieces)} pieces, {made.frames} frames, about {longest.cost:.0f} "
          "seconds of a processor each\n"
          f"  on Slurm:                   sh {folder}/slurm.sh [options of sbatch]\n"
          f"  over ssh, a shared disk:    sh {folder}/parallel.sh HOST,HOST...\n"
          f"  over ssh, disks apart:      sh {folder}/parallel-copies.sh HOST,HOST...\n"
          f"  then:                       vyr-farm join {folder}")


def run_slurm(wanted, _):
    slurm.require("sbatch")
    partition = [f"--partition={wanted.partition}"] if wanted.partition else []
    slurm.run(make_plan(wanted), [*partition, *wanted.sbatch], wanted.wait)


def run_parallel(wanted, version):
    hosts = parallel.read_hosts(wanted.hosts)
    parallel.require("parallel", "ssh")
    options = ["--jobs", str(wanted.jobs)]
    print(parallel.run(make_plan(wanted), hosts, options, wanted.ssh, version))


def run_piece(wanted, _):
    print(piece.make(plan.load(wanted.folder), wanted.number))


def run_missing(wanted, _):
    for one in check.missing(plan.load(wanted.folder)):
        print(one.number)


def run_join(wanted, _):
    print(join.join(plan.load(wanted.folder)))


def end_in_order(*_):
    raise KeyboardInterrupt


def main(version):
    for polite in (signal.SIGTERM, signal.SIGHUP):
        if signal.getsignal(polite) != signal.SIG_IGN:  # as nohup has it
            signal.signal(polite, end_in_order)
    sys.stdout.reconfigure(errors="surrogateescape")  # names of files may be any bytes
    try:
        wanted = make_parser(version).parse_args()
        wanted.run(wanted, version)
        return 0
    except Failure as failure:
        print(f"vyr-farm: {failure}", file=sys.stderr)
        return failure.status
    except KeyboardInterrupt:
        print("vyr-farm: interrupted", file=sys.stderr)
        return 130
    except OSError as error:
        print(f"vyr-farm: {error.filename or error}: {error.strerror}", file=sys.stderr)
        return 1
