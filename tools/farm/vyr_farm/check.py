"""Whether a piece is what it should be: its manifest has its frames, and its file is whole."""

import re
import struct
from concurrent.futures import ThreadPoolExecutor

from .failure import Failure
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
    """How many pictures the MP4 file `path` holds. Failure when it is not whole: its last box, which
    holds the pictures, ends where the file does."""
    try:
        with open(path, "rb") as file:
            top = {kind: place for kind, *place in boxes(file, 0, path.stat().st_size)}
            if b"mdat" not in top:
                raise ValueError("no pictures")
            return count_in_tracks(file, *top[b"moov"])
    except OSError as error:
        raise Failure(f"{path}: {error.strerror}") from error
    except (ValueError, KeyError, struct.error) as error:
        raise Failure(f"{path}: is not whole: {error}") from error


def boxes(file, begin, end):
    """The boxes between two places of an MP4 file: kind, and where the contents begin and end."""
    while begin < end:
        file.seek(begin)
        size, kind = struct.unpack(">I4s", file.read(8))
        start = begin + 8
        if size == 1:  # a long one
            size, start = struct.unpack(">Q", file.read(8))[0], start + 8
        if size < start - begin or begin + size > end:
            raise ValueError("cut short")
        yield kind, start, begin + size
        begin += size


def count_in_tracks(file, begin, end):
    """Of the track of pictures, how many."""
    for kind, *track in boxes(file, begin, end):
        if kind != b"trak":
            continue
        media = find(file, b"mdia", track)
        file.seek(find(file, b"hdlr", media)[0] + 8)
        if file.read(4) == b"vide":
            table = find(file, b"stbl", find(file, b"minf", media))
            file.seek(find(file, b"stsz", table)[0] + 8)
            return struct.unpack(">I", file.read(4))[0]
    return 0


def find(file, wanted, place):
    return {kind: inner for kind, *inner in boxes(file, *place)}[wanted]


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
