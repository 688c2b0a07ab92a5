"""Slurm: an array job with a task a piece, and a job that joins them."""

import shutil
import subprocess
import time

from . import join
from .failure import Failure, last_line
from .progress import Progress

SECONDS_BETWEEN_LOOKS = 2
ENDED = {"BOOT_FAIL", "CANCELLED", "COMPLETED", "DEADLINE", "FAILED", "NODE_FAIL", "OUT_OF_MEMORY", "PREEMPTED",
         "REVOKED", "TIMEOUT"}


def submit(plan, options):
    """The numbers of the jobs, the join's last. Those that are under way already, from a command
    given before, are not submitted again."""
    require("sbatch")
    running = jobs_under_way(plan)
    if running:
        return running, True
    join.done_mark(plan).unlink(missing_ok=True)
    done = subprocess.run(["sh", str(plan.folder / "slurm.sh"), *options], stdin=subprocess.DEVNULL,
                          capture_output=True, text=True, errors="replace", check=False)
    if done.returncode != 0:
        raise Failure(f"sbatch: {reason(done.stderr)}")
    jobs = [line.split(";")[0] for line in done.stdout.split()]
    (plan.folder / "jobs.txt").write_text("\n".join(jobs) + "\n", encoding="utf-8")
    return jobs, False


def require(name):
    if not shutil.which(name):
        raise Failure(f"{name} is not there: install slurm-client, on a machine of the cluster")


def reason(errors):
    line = last_line(errors).removeprefix("sbatch: error: ")
    line = line.removeprefix("Batch job submission failed: ")
    if "partition" in line:
        line += "; sinfo says which there are"
    return line or "it said nothing"


def jobs_under_way(plan):
    path = plan.folder / "jobs.txt"
    jobs = path.read_text(encoding="utf-8").split() if path.exists() else []
    return jobs if any(is_under_way(job) for job in jobs) else []


def is_under_way(job):
    return any(state not in ENDED for state in states(job))


def states(job):
    """Of its tasks: PENDING, RUNNING, COMPLETED ... Slurm forgets a job some minutes after its end."""
    for _ in range(5):
        done = subprocess.run(["squeue", "--noheader", "--states=all", "--format=%T", "--jobs", job],
                              stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)
        if done.returncode == 0:
            return done.stdout.split()
        if "Invalid job id" in done.stderr:
            return []
        time.sleep(SECONDS_BETWEEN_LOOKS)  # the controller starts anew, or is busy
    raise Failure(f"squeue: {last_line(done.stderr)}")


def say(plan, jobs, were_there):
    numbers = ",".join(jobs)
    verb = "are under way already" if were_there else "are submitted"
    print(f"jobs {numbers} {verb}: {', '.join(['the pieces', 'the join'][-len(jobs):])}\n"
          f"  watch them:    squeue --jobs={numbers}    (what they say: {plan.folder}/logs/)\n"
          f"  cancel them:   scancel {' '.join(jobs)}\n"
          f"  the video:     {plan.output}", flush=True)


def wait(plan, jobs):
    """Until the join has ended. Failure says why it went wrong."""
    progress = Progress(plan)
    try:
        while is_under_way(jobs[-1]):
            progress.show()
            time.sleep(SECONDS_BETWEEN_LOOKS)
    except KeyboardInterrupt as interrupt:
        raise Failure(f"no longer waiting; the jobs go on: scancel {' '.join(jobs)} cancels them", 130) \
            from interrupt
    finally:
        progress.end()
    if not went_well(plan, jobs[-1]):
        raise Failure(explain(plan))
    progress.show()


def went_well(plan, job):
    """A file that another machine has made may be seen late: Slurm knows sooner, while it knows."""
    ended = states(job)
    return ended == ["COMPLETED"] if ended else join.done_mark(plan).exists()


def explain(plan):
    log = plan.folder / "logs" / "join.log"
    said = last_line(log.read_text(encoding="utf-8", errors="replace")) if log.exists() else ""
    return said.removeprefix("vyr-farm: ") or f"the join was cancelled, or its machine died: see {log}"


def run(plan, options, waits):
    jobs, were_there = submit(plan, options)
    say(plan, jobs, were_there)
    if waits:
        wait(plan, jobs)
