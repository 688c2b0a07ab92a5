"""The scripts of a recording's folder: plain files to read, to change, and to start by hand.

They are written once, with the plan, and stay as they are afterwards. What differs from one call to
the next (a partition, hosts) is a word of their command line.
"""

import hashlib
import shlex
import socket
import sys
from pathlib import Path

PIECE = """\
#!/bin/sh
# Makes one piece of {name}: a task of the array job that slurm.sh submits. The task's number is the
# piece's. When a machine dies, Slurm runs the task again; when the piece fails, this does, three
# times in all, on whatever machine is next.
#SBATCH --job-name={name}
#SBATCH --requeue
#SBATCH --open-mode=append
{farm} piece {folder} "$SLURM_ARRAY_TASK_ID" && exit
[ "${{SLURM_RESTART_COUNT:-0}}" -lt 3 ] || exit 1
exec scontrol requeue "${{SLURM_ARRAY_JOB_ID}}_$SLURM_ARRAY_TASK_ID"
"""

JOIN = """\
#!/bin/sh
# Joins the pieces of {name}, once all tasks of the array job are done.
#SBATCH --job-name={name}
#SBATCH --requeue
#SBATCH --open-mode=append
exec {farm} join {folder} "$@"
"""

SLURM = """\
#!/bin/sh
# Submits the pieces of {name} that are missing, and the join that comes after them. Prints the
# numbers of the two jobs.
#
#   sh slurm.sh [options of sbatch]       sh slurm.sh --partition=render --cpus-per-task=8
folder={folder}
missing=$({farm} missing "$folder") || exit
if [ -n "$missing" ]; then
    tasks=$(echo "$missing" | paste -sd , -)
    pieces=$(sbatch --parsable --output="$folder/logs/%a.log" "$@" --array="$tasks" "$folder/piece.sh") || exit
    pieces=${{pieces%;*}}
    echo "$pieces"
fi
sbatch --parsable --output="$folder/logs/join.log" "$@" ${{pieces:+--dependency=afterany:$pieces}} \\
    "$folder/join.sh" && exit
[ -z "$pieces" ] || scancel "$pieces" # nobody would join them
exit 1
"""

PARALLEL = """\
#!/bin/sh
# Makes the pieces of {name} that are missing, on machines that have this folder under the same name.
# A piece that fails is made on another machine, in four tries at most.
#
#   sh parallel.sh HOST,HOST... [options of parallel]       sh parallel.sh anna,bert --jobs 2
folder={folder}
hosts=${{1:?which hosts, with commas between them}}
shift
{farm} missing "$folder" |
    parallel --will-cite --ssh "${{VYR_FARM_SSH:-ssh}}" --sshlogin "$hosts" --jobs 1 --retries 4 \\
        --joblog "$folder/logs/parallel.log" "$@" {there}
"""

COPIES = """\
#!/bin/sh
# Makes the pieces of {name} that are missing, on machines that don't share a disk with this one: each
# gets a copy of this folder, with the show in it, and gives its pieces back; the copies are removed at
# the end. A piece that fails is made on another machine, in four tries at most.
#
#   sh parallel-copies.sh HOST,HOST... [options of parallel]
folder={folder}
copy={copy} # in the home folder there
hosts=${{1:?which hosts, with commas between them}}
shift
ssh=${{VYR_FARM_SSH:-ssh}}
remove_copies() {{
    for host in $(echo "$hosts" | tr , ' '); do
        # shellcheck disable=SC2086 # a command and its options
        $ssh "$host" rm -rf "$copy" 2>/dev/null
    done
}}
trap remove_copies EXIT
trap 'exit 130' INT TERM
for host in $(echo "$hosts" | tr , ' '); do
    # shellcheck disable=SC2086
    $ssh "$host" mkdir -p "$copy/pieces" "$copy/tries" &&
        rsync -a --delete --rsh "$ssh" --exclude /pieces/ --exclude /tries/ --exclude /logs/ \\
            "$folder/" "$host:$copy/" ||
        echo "vyr-farm: host $host: got no copy of the show" >&2
done
cd "$folder" || exit
{farm} missing "$folder" |
    parallel --will-cite --ssh "$ssh" --sshlogin "$hosts" --jobs 1 --retries 4 \\
        --joblog "$folder/logs/parallel.log" --workdir "$copy" \\
        --return pieces/{{}}.txt --return pieces/{{}}.mp4 "$@" {apart}
"""

TEXTS = {"piece.sh": PIECE, "join.sh": JOIN, "slurm.sh": SLURM, "parallel.sh": PARALLEL,
         "parallel-copies.sh": COPIES}
NAMES = tuple(TEXTS)


def program():
    return Path(sys.argv[0]).resolve()


def write(plan):
    folder = str(plan.folder)
    place = hashlib.sha256(f"{socket.gethostname()}:{folder}".encode()).hexdigest()[:12]
    words = {"name": "".join(c if c.isalnum() or c in "._-" else "_" for c in Path(plan.output).name),
             "folder": shlex.quote(folder),
             "farm": shlex.quote(str(program())),
             # commands for a shell on another machine, in one word for the one here
             "there": shlex.quote(shlex.join([str(program()), "piece", folder]) + " {}"),
             "apart": shlex.quote(shlex.join([str(program()), "piece", "."]) + " {}"),
             "copy": f".cache/vyr-farm/{place}"}
    for name, text in TEXTS.items():
        path = plan.folder / name
        path.write_text(text.format(**words), encoding="utf-8", errors="surrogateescape")
        path.chmod(0o755)
