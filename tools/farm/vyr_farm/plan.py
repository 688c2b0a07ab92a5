"""A recording's folder: what is recorded, in which pieces, and what was made of it so far.

  plan.json      the recording and its pieces
  show/          the show as it was when the recording was planned: it may be edited meanwhile
  lyrics.txt     its words, where captions are wanted
  piece.sh ...   how the engines run it, see scripts.py
  pieces/        K.mp4 and K.txt, its manifest: both there and whole when piece K is done
  tries/         what is being made, one folder a try
  logs/          what the machines said
"""

import json
import shutil
from dataclasses import asdict, dataclass, field
from pathlib import Path

from . import costs, recorder, scripts
from .failure import Failure


@dataclass(frozen=True)
class Piece:
    number: int  # from 1
    first: int  # frame; the last one included
    last: int
    cost: float  # expected seconds of a processor

    @property
    def count(self):
        return self.last - self.first + 1


@dataclass
class Plan:
    folder: Path
    output: str  # the video, absolute
    manifest_copy: str  # where a manifest of the whole is wanted, absolute; "" for nowhere
    recording: str  # what is recorded, as a manifest's head says it
    options: list  # of the recorder: size, rate, rows
    environment: dict = field(default_factory=dict)  # set where pieces are made
    pieces: list = field(default_factory=list)

    def video(self, piece):
        return self.folder / "pieces" / f"{piece.number}.mp4"

    def manifest(self, piece):
        return self.folder / "pieces" / f"{piece.number}.txt"

    @property
    def frames(self):
        return sum(piece.count for piece in self.pieces)

    def recorder_options(self):
        """For any machine that has the folder."""
        options = ["--show", str(self.folder / "show"), *self.options]
        lyrics = self.folder / "lyrics.txt"
        return options + (["--lyrics", str(lyrics)] if lyrics.exists() else [])

    def piece(self, number):
        if not 1 <= number <= len(self.pieces):
            raise Failure(f"piece {number}: the pieces are 1 to {len(self.pieces)}", 2)
        return self.pieces[number - 1]

    def save(self):
        """Written last, and whole: a folder with this file is a finished plan."""
        kept = {name: value for name, value in asdict(self).items() if name not in ("folder", "pieces")}
        rows = ",\n".join("  " + json.dumps(asdict(piece)) for piece in self.pieces)
        text = json.dumps(kept, indent=1)[:-2] + ',\n "pieces": [\n' + rows + "\n ]\n}\n"
        temporary = self.folder / ".plan.json"
        temporary.write_text(text, encoding="utf-8")
        temporary.rename(self.folder / "plan.json")


def load(folder):
    """The plan in `folder`; Failure when there is none that can be read."""
    path = Path(folder) / "plan.json"
    try:
        kept = json.loads(path.read_text(encoding="utf-8"))
        pieces = [Piece(**piece) for piece in kept.pop("pieces")]
        plan = Plan(folder=Path(folder).absolute(), pieces=pieces, **kept)
        check_pieces(plan)
        return plan
    except OSError as error:
        raise Failure(f"{path}: {error.strerror}") from error
    except (ValueError, TypeError, KeyError, AttributeError) as error:
        raise Failure(f"{path}: no plan: {error}") from error


def check_pieces(plan):
    """What a hand may have changed: pieces follow each other."""
    for number, piece in enumerate(plan.pieces, 1):
        follows = number == 1 or piece.first == plan.pieces[number - 2].last + 1
        if piece.number != number or not follows or piece.count < 1:
            raise ValueError(f"piece {number} does not follow the one before it")
    if not plan.pieces:
        raise ValueError("it has no pieces")


def make(wanted):
    """The plan for `wanted` (the command line, see main.py): the one that is in its folder, else a new
    one, which draws some frames to know what they cost."""
    folder = folder_of(wanted)
    options = [*words_of(size=wanted.size, fps=wanted.fps), *row_options(wanted)]
    video = ["-o", str(wanted.output)] + (["--lyrics", str(wanted.lyrics)] if wanted.lyrics else [])
    head = recorder.describe(["--show", str(wanted.show), *options, *video], wanted.environment)
    if (folder / "plan.json").exists():
        return check_same(load(folder), wanted, head)
    if folder.exists() and any(folder.iterdir()):
        clear_half_made(folder)
    try:
        return make_new(folder, wanted, options, head)
    except OSError as error:
        raise Failure(f"{error.filename or folder}: {error.strerror}") from error
    except shutil.Error as error:  # a list of what could not be copied, each with its reason
        raise Failure(": ".join(map(str, error.args[0][0][1:]))) from error


def folder_of(wanted):
    return Path(wanted.folder or Path(wanted.output).with_suffix(".farm")).absolute()


def words_of(**options):
    """--name=value of those that were given; a value may begin with a dash."""
    return [f"--{name}={value}" for name, value in options.items() if value is not None]


def row_options(wanted):
    return words_of(**{"from": wanted.start, "to": wanted.end})


def check_same(plan, wanted, head):
    """The pieces that are there are used again where the same is wanted, and nowhere else."""
    differences = [
        (plan.recording != head.recording(), f"{plan.recording}; this is {head.recording()}"),
        (len(plan.pieces) != wanted.parts, f"{len(plan.pieces)} pieces, not {wanted.parts}"),
        (plan.output != absolute(wanted.output), plan.output),
        (plan.environment != wanted.environment, f"other --env: {plan.environment}, not {wanted.environment}"),
        (words_of_plan(plan) != (Path(wanted.lyrics).read_bytes() if wanted.lyrics else None), "other words")]
    for differs, what in differences:
        if differs:
            raise Failure(f"{plan.folder}: holds another recording ({what}): remove it, or name another "
                          "with --folder")
    if plan.manifest_copy != absolute(wanted.manifest):
        plan.manifest_copy = absolute(wanted.manifest)
        plan.save()
    return plan


def absolute(path):
    return str(Path(path).absolute()) if path else ""


def words_of_plan(plan):
    path = plan.folder / "lyrics.txt"
    return path.read_bytes() if path.exists() else None


def clear_half_made(folder):
    """What an interrupted plan left; a folder of anything else is left alone."""
    known = {"show", "lyrics.txt", "pieces", "tries", "logs", ".plan.json", *scripts.NAMES}
    others = [entry.name for entry in folder.iterdir() if entry.name not in known]
    if others:
        raise Failure(f"{folder}: has something else in it ({others[0]}): name another with --folder")
    shutil.rmtree(folder)


def make_new(folder, wanted, options, head):
    plan = Plan(folder, absolute(wanted.output), absolute(wanted.manifest), head.recording(), options,
                wanted.environment)
    costs.divide(costs.Costs(0, 0, [1] * (head.last - head.first + 1)), head, wanted.parts)
    for name in ("pieces", "tries", "logs"):
        (folder / name).mkdir(parents=True, exist_ok=True)
    copy_show(Path(wanted.show), folder)
    if wanted.lyrics:
        shutil.copyfile(wanted.lyrics, folder / "lyrics.txt")
    copied = recorder.describe([*plan.recorder_options(), "-o", plan.output], wanted.environment)
    if copied.show != head.show:
        raise Failure(f"{wanted.show}: changed while it was copied: give the command again")
    measured = costs.measure(["--show", str(folder / "show"), *row_options(wanted)], head, wanted.parts,
                             wanted.environment)
    plan.pieces = [Piece(number, *piece)
                   for number, piece in enumerate(costs.divide(measured, head, wanted.parts), 1)]
    scripts.write(plan)
    plan.save()
    return plan


def copy_show(show, folder):
    """All of it but recordings, which lie in it where it is the working directory."""
    def leave_out(where, names):
        inside = [name for name in names if (Path(where) / name).resolve() == folder.resolve()]
        return inside + [name for name in names if name.endswith((".mp4", ".farm"))]

    shutil.copytree(show, folder / "show", ignore=leave_out)
