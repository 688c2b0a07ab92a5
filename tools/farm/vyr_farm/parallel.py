"""GNU Parallel: a handful of machines, over ssh."""

import os
import re
import secrets
import shlex
import shutil
import signal
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass
from threading import Thread

from . import check, join, scripts
from .failure import Failure, last_line
from .progress import Progress

# Nothing is asked. A machine that dies without a word is given up after a minute.
ASKING_NOTHING = ("-o BatchMode=yes -o StrictHostKeyChecking=yes -o ConnectTimeout=15 "
                  "-o ServerAliveInterval=15 -o ServerAliveCountMax=4")
HOST = re.compile(r"[A-Za-z0-9_][A-Za-z0-9_.-]*(@[A-Za-z0-9_][A-Za-z0-9_.-]*)?")
SECONDS_BETWEEN_LOOKS = 1


@dataclass(frozen=True)
class Host:
    name: str
    is_up: bool
    has_folder: bool = False  # it sees this folder, under the same name
    reason: str = ""


def read_hosts(text):
    names = [name.strip() for name in text.split(",")]
    for name in names:
        if not HOST.fullmatch(name):
            raise Failure(f"--hosts {text}: names of machines with commas between them; ports and the "
                          "rest stand in ~/.ssh/config", 2)
    return list(dict.fromkeys(names))


def look_at(name, ssh, plan, version, token):
    """Whether the machine can make pieces. Failure for what a person has to change once."""
    program = str(scripts.program())
    folder = shlex.quote(str(plan.folder / token))
    script = f"{shlex.quote(program)} --version && {{ test -e {folder} && echo shared || echo apart; }}"
    done = subprocess.run([*ssh.split(), name, shlex.join(["sh", "-c", script])], stdin=subprocess.DEVNULL,
                          capture_output=True, text=True, errors="replace", check=False)
    if done.returncode == 255:
        return refused(name, done.stderr)
    words = done.stdout.split()
    if words[:1] != ["vyr-farm"]:
        raise Failure(f"host {name}: {program} is not there: install vyr in the same place "
                      f"({last_line(done.stderr)})")
    if words[1] != version:
        raise Failure(f"host {name}: has version {words[1]}, and this is {version}: pictures may differ")
    return Host(name, True, words[-1] == "shared")


def refused(name, errors):
    reason = last_line(errors)
    if "Host key verification failed" in errors:
        raise Failure(f"host {name}: its key is not known here, or has changed: log in once by hand (ssh "
                      f"{name}) and compare it")
    if "Permission denied" in errors:
        raise Failure(f"host {name}: asks for a password: ssh-copy-id {name} sends it your key")
    return Host(name, False, reason=reason)


def find_hosts(names, ssh, plan, version):
    """The machines that answer, all asked at once."""
    token = f".seen-{secrets.token_hex(8)}"
    (plan.folder / token).touch()
    try:
        with ThreadPoolExecutor(len(names)) as workers:
            hosts = list(workers.map(lambda name: look_at(name, ssh, plan, version, token), names))
    finally:
        (plan.folder / token).unlink()
    for host in hosts:
        if not host.is_up:
            print(f"vyr-farm: host {host.name} is down, the others do its work: {host.reason}",
                  file=sys.stderr)
    if not any(host.is_up for host in hosts):
        raise Failure("no host is up")
    return [host for host in hosts if host.is_up]


def require(*names):
    for name in names:
        if not shutil.which(name):
            package = {"ssh": "openssh-client"}.get(name, name)
            raise Failure(f"{name} is not there: apt install {package}")


def run(plan, hosts, options, ssh, version):
    """Makes the pieces on `hosts` and joins them here. `ssh` is a command, in words between blanks."""
    ssh = f"{ssh} {ASKING_NOTHING}"
    if check.missing(plan):
        up = find_hosts(hosts, ssh, plan, version)
        is_shared = all(host.has_folder for host in up)
        if not is_shared:
            require("rsync")
        script = "parallel.sh" if is_shared else "parallel-copies.sh"
        make_pieces(plan, [str(plan.folder / script), ",".join(host.name for host in up), *options], ssh)
    return join.join(plan)


def make_pieces(plan, command, ssh):
    """Whether all went well is for the join to say, which looks at the pieces."""
    progress = Progress(plan)
    process = subprocess.Popen(["sh", *command], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT, env={**os.environ, "VYR_FARM_SSH": ssh},
                               start_new_session=True, preexec_fn=hear_interrupts)
    reader = Thread(target=keep_messages, args=(plan, process.stdout))
    reader.start()
    try:
        while process.poll() is None:
            progress.show()
            reader.join(SECONDS_BETWEEN_LOOKS)
    except KeyboardInterrupt as interrupt:
        os.killpg(process.pid, signal.SIGINT)  # GNU Parallel then ends what it started there
        process.wait()
        raise Failure("interrupted: the pieces that are done stay, the command given again makes the "
                      "others", 130) from interrupt
    finally:
        reader.join()
        progress.end()
    progress.show()


def hear_interrupts():
    """In a process of its own that a shell has started in the background, too."""
    signal.signal(signal.SIGINT, signal.SIG_DFL)


def keep_messages(plan, lines):
    """All that the machines say is kept; the farm's own failures are for the person who waits."""
    with open(plan.folder / "logs" / "parallel.txt", "ab") as log:
        for line in lines:
            log.write(line)
            log.flush()
            if line.startswith(b"vyr-farm: "):
                print(line.decode(errors="replace"), end="", file=sys.stderr, flush=True)
