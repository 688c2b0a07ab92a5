"""Real daemons for the tests, all on this machine and all in a folder of their own: Slurm with two
nodes, and sshd. Every process that is started here is ended here."""

import getpass
import os
import secrets
import shutil
import signal
import socket
import subprocess
import time
from pathlib import Path

HANG = 600  # seconds: what takes longer hangs, on the busiest machine too


def wait_until(holds, what, process=None):
    """Fails when it takes too long, or when `process` ends before."""
    end = time.monotonic() + HANG
    while not holds():
        if process and process.poll() is not None:
            raise RuntimeError(f"{what}: {process.communicate()}")
        if time.monotonic() > end:
            raise TimeoutError(what)
        time.sleep(0.05)


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def status_fields(entry):
    """Of a folder below /proc, what follows the name: state, parent, ..."""
    return (entry / "stat").read_text(encoding="utf-8", errors="replace").rpartition(")")[2].split()


def descendants(pid):
    """The process and all that it started, and they did: those in a session of their own too."""
    parents = {}
    for entry in Path("/proc").iterdir():
        if entry.name.isdigit():
            try:
                parents.setdefault(int(status_fields(entry)[1]), []).append(int(entry.name))
            except OSError:
                continue
    found = [pid]
    for one in found:
        found.extend(parents.get(one, []))
    return found


def end(pids, how=signal.SIGKILL):
    for pid in pids:
        try:
            os.kill(pid, how)
        except ProcessLookupError:
            continue


def owners_of_sockets(folder):
    """Processes that listen on a socket file below `folder`: each step of a job does."""
    lines = Path("/proc/net/unix").read_text(encoding="utf-8", errors="replace").splitlines()
    sockets = {f"socket:[{line.split()[6]}]" for line in lines if line.partition(" /")[2].startswith(f"{folder}/"[1:])}
    return [int(entry.parent.name) for entry in Path("/proc").glob("[0-9]*/fd") if sockets & open_files(entry)]


def open_files(entry):
    links = set()
    try:
        for link in entry.iterdir():
            links.add(os.readlink(link))
    except OSError:  # it has ended
        pass
    return links


class Daemon:
    """A program in the foreground, with what it says in a file."""

    def __init__(self, name, command, folder, environment=None):
        self.log = folder / f"{name}.out"
        with open(self.log, "ab") as out:
            self.process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=out, stderr=out,
                                            env={**os.environ, **(environment or {})},
                                            start_new_session=True)

    def stop(self):
        """In order, then with force; what it started goes with it."""
        family = descendants(self.process.pid)
        self.process.terminate()
        try:
            self.process.wait(20)
        except subprocess.TimeoutExpired:
            pass
        end(family)
        self.process.wait()

    def kill(self):
        """As when the machine loses its power."""
        end(descendants(self.process.pid))
        self.process.wait()


SLURM_CONF = """\
ClusterName=test
SlurmctldHost={host}(127.0.0.1)
SlurmctldPort={port}
SlurmUser={user}
SlurmdUser={user}
AuthType=auth/munge
# A job that is run again waits until nobody could know it from before.
AuthInfo=socket={folder}/munge/socket,cred_expire=5
CredType=cred/munge
StateSaveLocation={folder}/state
SlurmdSpoolDir={folder}/spool-%n
SlurmctldPidFile={folder}/slurmctld.pid
SlurmdPidFile={folder}/slurmd-%n.pid
SlurmctldLogFile={folder}/slurmctld.log
SlurmdLogFile={folder}/slurmd-%n.log
SlurmdParameters=config_overrides
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
JobAcctGatherType=jobacct_gather/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
SchedulerParameters=batch_sched_delay=0,sched_interval=5,sched_min_interval=0
MpiDefault=none
MailProg=/bin/true
ReturnToService=2
SlurmdTimeout={patience}
KillWait=1
MinJobAge=300
{nodes}
PartitionName=render Nodes=ALL Default=YES MaxTime=INFINITE State=UP
"""


class Slurm:
    """munged, slurmctld and slurmd for each node, `cpus` each, whatever the machine has. A node that
    says nothing for `patience` seconds is dead to Slurm."""

    programs = ("munged", "slurmctld", "slurmd", "sbatch", "squeue", "scontrol")

    def __init__(self, folder, nodes=("node1", "node2"), patience=5, cpus=1):
        self.folder = folder
        self.daemons = {}
        self.environment = {"SLURM_CONF": str(folder / "slurm.conf")}
        for name in ("munge", "state"):
            (folder / name).mkdir(parents=True)
            (folder / name).chmod(0o700)
        (folder / "munge/key").write_bytes(secrets.token_bytes(1024))
        (folder / "munge/key").chmod(0o600)
        host = socket.gethostname()
        lines = "\n".join(f"NodeName={name} NodeHostname={host} NodeAddr=127.0.0.1 Port={free_port()} CPUs={cpus}"
                          for name in nodes)
        (folder / "slurm.conf").write_text(
            SLURM_CONF.format(host=host, port=free_port(), user=getpass.getuser(), folder=folder,
                              patience=patience, nodes=lines), encoding="utf-8")
        try:
            self.start(nodes)
        except BaseException:
            self.stop()
            raise

    def start(self, nodes):
        munge = self.folder / "munge"
        self.daemons["munged"] = Daemon("munged", [
            self.find("munged"), "--foreground", "--force", f"--key-file={munge}/key", f"--socket={munge}/socket",
            f"--pid-file={munge}/pid", f"--log-file={munge}/log", f"--seed-file={munge}/seed"], self.folder)
        wait_until((munge / "socket").exists, "munged")
        self.daemons["slurmctld"] = Daemon("slurmctld", [self.find("slurmctld"), "-D"], self.folder, self.environment)
        for node in nodes:
            self.start_node(node)
        wait_until(lambda: self.run("sinfo", "-h", "-N", "-t", "idle", "-o", "%N").split() == list(nodes), "nodes")

    def start_node(self, node):
        (self.folder / f"spool-{node}").mkdir(exist_ok=True)
        self.daemons[node] = Daemon(node, [self.find("slurmd"), "-D", "-N", node], self.folder, self.environment)

    def kill_node(self, node):
        """The machine loses its power: slurmd, and the jobs, whose steps are no children of it."""
        steps = owners_of_sockets(self.folder / f"spool-{node}")
        self.daemons.pop(node).kill()
        end([one for step in steps for one in descendants(step)])

    def jobs(self, states):
        return self.run("squeue", "-h", "-r", "-t", states, "-o", "%i").split()

    def unreachable(self):
        """A configuration whose controller is not there."""
        path = self.folder / "unreachable.conf"
        text = (self.folder / "slurm.conf").read_text(encoding="utf-8")
        lines = [f"SlurmctldPort={free_port()}\nMessageTimeout=2" if line.startswith("SlurmctldPort") else line
                 for line in text.splitlines()]
        path.write_text("\n".join(lines) + "\n", encoding="utf-8")
        return path

    def stop(self):
        steps = owners_of_sockets(self.folder)
        for name in reversed(list(self.daemons)):
            self.daemons.pop(name).stop()
        end([one for step in steps for one in descendants(step)])

    def run(self, *command):
        done = subprocess.run(command, capture_output=True, text=True, check=False,
                              env={**os.environ, **self.environment})
        return done.stdout if done.returncode == 0 else ""

    @staticmethod
    def find(program):
        return shutil.which(program, path=os.environ["PATH"] + ":/usr/sbin:/sbin")


SSHD_CONF = """\
Port {port}
ListenAddress 127.0.0.1
HostKey {folder}/host_key
PidFile {folder}/pid
AuthorizedKeysFile {folder}/authorized_keys
PasswordAuthentication no
KbdInteractiveAuthentication no
UsePAM no
StrictModes no
PermitRootLogin prohibit-password
SetEnv {environment}
"""

SSH_CONF = """\
Host {name}
  HostName 127.0.0.1
  Port {port}
  HostKeyAlias {name}
  IdentityFile {folder}/user_key
  IdentitiesOnly yes
  UserKnownHostsFile {known}
"""


class Host:
    """A machine that one can log in to: an sshd with keys of its own. `apart`: it does not see `hidden`,
    a folder that other machines share."""

    programs = ("sshd", "ssh", "ssh-keygen")

    def __init__(self, folder, name, known, hidden=None, environment="VYR_HOST=1"):
        self.folder, self.name = folder / name, name
        self.folder.mkdir(parents=True)
        for key in ("host_key", "user_key"):
            subprocess.run(["ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", str(self.folder / key)], check=True)
        shutil.copy(self.folder / "user_key.pub", self.folder / "authorized_keys")
        self.port = free_port()
        self.environment = environment
        public = (self.folder / "host_key.pub").read_text(encoding="utf-8")
        with open(known, "a", encoding="utf-8") as list_of_keys:
            list_of_keys.write(f"{name} {public}")
        (self.folder / "sshd.conf").write_text(SSHD_CONF.format(**vars(self)), encoding="utf-8")
        self.client = SSH_CONF.format(known=known, **vars(self))
        command = [Slurm.find("sshd"), "-D", "-e", "-f", str(self.folder / "sshd.conf")]
        if hidden:  # a file system of its own there
            command = ["unshare", "--mount", "sh", "-c", 'mount -t tmpfs none "$1" && shift && exec "$@"', "sh",
                       hidden, *command]
        if os.getuid() == 0:
            Path("/run/sshd").mkdir(exist_ok=True)  # which it wants to be there
        self.daemon = Daemon("sshd", command, self.folder)
        wait_until(self.answers, "sshd")

    def answers(self):
        if self.daemon.process.poll() is not None:
            raise RuntimeError(self.daemon.log.read_text(encoding="utf-8"))
        with socket.socket() as probe:
            return probe.connect_ex(("127.0.0.1", self.port)) == 0

    def kill(self):
        """The machine loses its power, with all sessions."""
        self.daemon.kill()

    stop = kill


def write_ssh_config(path, hosts):
    path.write_text("".join(host.client for host in hosts), encoding="utf-8")
    return f"ssh -F {path}"
