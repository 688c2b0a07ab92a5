"""Joins the pieces, on whatever machine runs it.

The recorder makes the sound and the captions anew, as it does for a recording that one machine
makes, so that there is no seam in them; the pictures are copied as they were encoded.
"""

import shutil
import tempfile
from fractions import Fraction
from pathlib import Path

from . import check, recorder
from .failure import Failure

REASONS = 3  # of pieces that can't be used, in one line


def join(plan):
    """Makes the plan's output and its manifest. Returns one line; Failure says which piece is to
    blame. What the output was before stays until the new one is whole."""
    done_mark(plan).unlink(missing_ok=True)
    heads = check_pieces(plan)
    folder = None
    try:
        folder = Path(tempfile.mkdtemp(prefix="join-", dir=plan.folder / "tries"))
        join_in(folder, plan)
        write_manifests(plan)
        clear_tries(plan)
        done_mark(plan).touch()
    except OSError as error:
        raise Failure(f"{error.filename}: {error.strerror}") from error
    finally:
        if folder:
            shutil.rmtree(folder, ignore_errors=True)
    return f"{plan.output}: {plan.frames} frames of {len(heads)} pieces, drawn by {heads[0].driver}"


def clear_tries(plan):
    """What machines left that died. Where one still makes a piece that was given up, it will fail."""
    for folder in (plan.folder / "tries").iterdir():
        shutil.rmtree(folder, ignore_errors=True)


def done_mark(plan):
    """There when the last join went well."""
    return plan.folder / "joined"


def check_pieces(plan):
    """The heads of all pieces, which are whole and of one driver."""
    results = check.for_each(plan, head_or_failure)
    failures = [(piece, head) for piece, head in zip(plan.pieces, results) if isinstance(head, Failure)]
    if failures:
        reasons = "; ".join(explain(plan, piece, failure) for piece, failure in failures[:REASONS])
        more = f"; and {len(failures) - REASONS} more" if len(failures) > REASONS else ""
        raise Failure(f"{len(failures)} of {len(plan.pieces)} pieces can't be joined: {reasons}{more}; "
                      "the command, given again, makes them anew")
    check_one_driver(plan, results)
    return results


def head_or_failure(plan, piece):
    try:
        return check.check_piece(plan, piece)
    except Failure as failure:
        return failure


def explain(plan, piece, failure):
    """Why the piece is as it is: what its machine said last, where it is not there at all."""
    said = [] if plan.manifest(piece).exists() else find_messages(plan, piece)
    return said[-1] if said else f"piece {piece.number}: {failure}"


def find_messages(plan, piece):
    """What Slurm's task, and those of GNU Parallel, said about it."""
    begin = f"piece {piece.number}: "
    lines = []
    for name in (f"{piece.number}.log", "parallel.txt"):
        log = plan.folder / "logs" / name
        text = log.read_text(encoding="utf-8", errors="replace") if log.exists() else ""
        lines += [line.removeprefix("vyr-farm: ") for line in text.splitlines()]
    return [line for line in lines if line.startswith(begin)]


def check_one_driver(plan, heads):
    drivers = {}
    for piece, head in zip(plan.pieces, heads):
        drivers.setdefault(head.driver, []).append(piece.number)
    if len(drivers) == 1:
        return
    by_count = sorted(drivers.items(), key=lambda item: len(item[1]))
    odd = " ".join(f"{number}.txt" for number in by_count[0][1])
    what = ", ".join(f"{driver}: {in_ranges(numbers)}" for driver, numbers in by_count)
    raise Failure(f"pieces of different drivers, whose pictures may differ ({what}): remove {odd} from "
                  f"{plan.folder}/pieces and make them where the others were made")


def in_ranges(numbers):
    """[1, 2, 3, 5] as "1-3,5"."""
    ranges = []
    for number in numbers:
        if ranges and ranges[-1][1] == number - 1:
            ranges[-1][1] = number
        else:
            ranges.append([number, number])
    return ",".join(str(a) if a == b else f"{a}-{b}" for a, b in ranges)


def join_in(folder, plan):
    pictures = folder / "pieces.txt"
    pictures.write_text(list_of_pieces(plan), encoding="utf-8")
    Path(plan.output).parent.mkdir(parents=True, exist_ok=True)
    video = folder / "whole.mp4"
    recorder.run([*plan.recorder_options(), "--pictures", str(pictures), "-o", str(video)])
    check.check_video(video, plan.frames)
    put_in_place(video, Path(plan.output))


def put_in_place(path, place):
    """A folder of its own may lie on another disk: the file is copied beside its place first."""
    beside = place.with_name(f".{place.name}.vyr-farm")
    try:
        shutil.move(path, beside)
        beside.rename(place)
    except OSError:
        beside.unlink(missing_ok=True)
        raise


def list_of_pieces(plan):
    """As ffmpeg's concat demuxer reads it. Each piece has the time that its frames take, rounded so
    that no error grows with the number of pieces, and is read from its first picture: its own sound,
    which is left out, begins a little earlier."""
    rate = Fraction(recorder.Head.parse(plan.recording + ", drawn by nobody").rate)

    def microseconds(frame):
        return round((frame - plan.pieces[0].first) / rate * 1000000)

    lines = []
    for piece in plan.pieces:
        path = str(plan.video(piece)).replace("'", r"'\''")
        lines.append(f"file '{path}'\ninpoint 0us\n"
                     f"duration {microseconds(piece.last + 1) - microseconds(piece.first)}us\n")
    return "".join(lines)


def write_manifests(plan):
    """The manifest of the whole: that of the first piece, and the frames of the others."""
    text = plan.manifest(plan.pieces[0]).read_text(encoding="utf-8")
    for piece in plan.pieces[1:]:
        _, lines = check.read_manifest(plan.manifest(piece))
        text += "".join(line + "\n" for line in lines)
    for path in filter(None, (plan.folder / "manifest.txt", plan.manifest_copy and Path(plan.manifest_copy))):
        beside = path.with_name(f".{path.name}.vyr-farm")
        beside.write_text(text, encoding="utf-8")
        beside.rename(path)
