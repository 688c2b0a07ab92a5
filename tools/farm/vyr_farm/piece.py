"""Makes one piece, on whatever machine runs it.

A try has a folder of its own, and its results take their places only when they are accepted. So two
machines may make one piece at a time, as happens when one was given up too early: both results are
the same, and the last one stays.
"""

import shutil
import tempfile
from pathlib import Path

from . import check, recorder
from .failure import Failure


def make(plan, number):
    """Returns one line that says what was done; Failure names the piece."""
    piece = plan.piece(number)
    if check.is_done(plan, piece):
        return f"piece {number} is there already"
    folder = None
    try:
        folder = Path(tempfile.mkdtemp(prefix=f"{number}-", dir=plan.folder / "tries"))
        seconds = record(plan, piece, folder)
    except OSError as error:
        raise Failure(f"piece {number}: {error.filename}: {error.strerror}") from error
    except Failure as failure:
        raise Failure(f"piece {number}: {failure}", failure.status) from failure
    finally:
        if folder:
            shutil.rmtree(folder, ignore_errors=True)
    return f"piece {number}: {piece.count} frames, {seconds:.1f} seconds of a processor"


def record(plan, piece, folder):
    video, manifest = folder / "piece.mp4", folder / "piece.txt"
    seconds = recorder.run([*plan.recorder_options(), "--frames", f"{piece.first}-{piece.last}",
                            "-o", str(video), "--manifest", str(manifest)], plan.environment)
    check.check_manifest(manifest, plan, piece)
    check.check_video(video, piece.count)
    manifest.rename(plan.manifest(piece))
    video.rename(plan.video(piece))
    return seconds
