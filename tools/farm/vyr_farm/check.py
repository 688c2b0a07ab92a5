"""Whether a piece is what it should be: its manifest has its frames, and its file is whole."""

import re
import subprocess
from concurrent.futures import ThreadPoolExecutor

from .failure import Failure, last_line
from .recorder import Head

LINE = re.compile(r"(\d+) \d+\.\d{6} [0-9a-f]{32}")


def read_manifest(path):
    """Its head and its lines without remarks. Failure when it has not the form of one."""
    try:
        text = path.read_text(encoding="utf-8", errors="replace")
    except OSError as error:
        raise Failure(f"{path}: {error.strerror}") from error
    lines = text.splitlines()
    head = Head.parse(lines[0]) if lines else None
    if not head:
        raise Failure(f"{path}: no manifest of a recording")
    return head, [line for line in lines if not line.startswith("#")]


def check_manifest(path, plan, piece):
    """Of `piece` and of this recording. Returns its head."""
    head, lines = read_manifest(path)
    if head.recording() != plan.recording:
        raise Failure(f"{path}: is of another recording: {head.recording()}")
    if len(lines) != piece.count:
        raise Failure(f"{path}: has {len(lines)} of {piece.count} frames")
    for frame, line in enumerate(lines, piece.first):
        found = LINE.fullmatch(line)
        if not found or int(found[1]) != frame:
            raise Failure(f"{path}: frame {frame} is not in its place")
    return head


def count_pictures(path):
    """How many pictures the video `path` holds. Failure when it is not whole."""
    command = ["ffprobe", "-v", "error", "-count_packets", "-select_streams", "v:0", "-show_entries",
               "stream=nb_read_packets", "-of", "csv=p=0", str(path)]
    try:
        done = subprocess.run(command, stdin=subprocess.DEVNULL, capture_output=True, text=True,
                              errors="replace", check=False)
    except FileNotFoundError as error:
        raise Failure("ffprobe is not there: it comes with ffmpeg") from error
    if done.returncode != 0 or done.stderr:
        reason = last_line(done.stderr).removeprefix(f"{path}: ")
        raise Failure(f"{path}: is not whole: {reason}")
    words = done.stdout.split(",")[0].split()
    return int(words[0]) if words and words[0].isdigit() else 0


def check_video(path, count):
    """It is whole and has `count` pictures."""
    pictures = count_pictures(path)
    if pictures != count:
        raise Failure(f"{path}: has {pictures} of {count} pictures")


def check_piece(plan, piece):
    """Returns the head of its manifest."""
    head = check_manifest(plan.manifest(piece), plan, piece)
    check_video(plan.video(piece), piece.count)
    return head


def is_done(plan, piece):
    try:
        check_piece(plan, piece)
        return True
    except Failure:
        return False


def for_each(plan, look):
    """`look(plan, piece)` for all pieces, several at a time: it mostly waits for a disk."""
    with ThreadPoolExecutor() as workers:
        return list(workers.map(lambda piece: look(plan, piece), plan.pieces))


def missing(plan):
    """The pieces that have to be made."""
    return [piece for piece, done in zip(plan.pieces, for_each(plan, is_done)) if not done]
