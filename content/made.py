"""What each committed result of content/ is made of, and the list that tells which sources it was
last made of: content/made.txt, a line a result, `HASH-OF-SOURCES  HASH-OF-RESULT  PATH`.
"""

import hashlib
import subprocess
from pathlib import Path

CONTENT = Path(__file__).resolve().parent
ROOT = CONTENT.parent
LIST = CONTENT / "made.txt"

# Files that only look at results; a change in them makes nothing stale.
LOOKS_ONLY = {"README.md", "check", "measure", "preview.py", "intelligibility.py"}
KINDS = ["photos", "lyrics", "graphics", "objects", "font", "music"]


def known_files():
    """What git tracks or would track below content/; leftovers of other programs are no sources."""
    command = ["git", "-C", str(ROOT), "ls-files", "-z", "-co", "--exclude-standard", "content"]
    done = subprocess.run(command, capture_output=True, text=True)
    if done.returncode == 0:
        found = {ROOT / name for name in done.stdout.split("\0") if name}
    else:  # an unpacked archive
        found = {p for p in CONTENT.rglob("*") if "__pycache__" not in p.parts}
    return sorted(p for p in found if p.is_file() and p.name not in LOOKS_ONLY)


def sources_below(folder, files):
    return [f for f in files if CONTENT / folder in f.parents]


def photos(files):
    own = sources_below("photos", files)
    scenes = [f for f in own if f.suffix == ".pov"]
    shared = [f for f in own if f.suffix != ".pov"]
    for scene in scenes:
        folder = "data" if scene.stem in ("duck", "frenchduck") else "data/photos"
        yield f"{folder}/{scene.stem}.png", [scene, *shared]


def lyrics(files):
    sources = [*sources_below("lyrics", files), CONTENT / "graphics/ink.py"]
    for number in range(34):
        yield f"data/lyrics/lyrics{number:03}", sources


def graphics(files):
    shared = [CONTENT / "graphics/ink.py", CONTENT / "graphics/make"]
    for name, program in ("zemlogo", "logo"), ("tex9", "tunnel"), ("vignette1", "vignette"):
        own = [CONTENT / f"graphics/{program}.py"]
        if name == "zemlogo":
            own.append(CONTENT / "graphics/zemlogo.svg")
        yield f"data/{name}.png", own + shared


def objects(files):
    sources = [*sources_below("objects", files), CONTENT / "graphics/ink.py"]
    for path in "data/oh1.lwo", "data/textures/oh1.png", "data/oh2.lwo":
        yield path, sources


def font(files):
    for path in "data/font/waiting.fnt", "data/font/waiting.png":
        yield path, [CONTENT / "font/make"]


def music(files):
    yield "data/waiting.mp3", sources_below("music", files)


def recipes(kinds=KINDS):
    """(kind, path of the result, its sources), for every result of these kinds."""
    files = known_files()
    for kind in kinds:
        for path, sources in globals()[kind](files):
            yield kind, path, sources


def hash_of(paths):
    """One hash of names and contents; None when a file is missing."""
    total = hashlib.sha256()
    for path in sorted(paths):
        if not path.is_file():
            return None
        total.update(f"{path.relative_to(ROOT).as_posix()}\0".encode())
        total.update(hashlib.sha256(path.read_bytes()).digest())
    return total.hexdigest()[:16]


def read_list():
    """Path of each noted result: (hash of its sources, its own hash)."""
    if not LIST.exists():
        return {}
    lines = (line.split() for line in LIST.read_text().splitlines() if line[:1] != "#")
    return {words[2]: (words[0], words[1]) for words in lines if len(words) == 3}


def write_list(noted):
    head = "# sources           result            path: what each result was last made of (content/make)\n"
    rows = [f"{noted[path][0]}  {noted[path][1]}  {path}\n" for path in sorted(noted)]
    LIST.write_text(head + "".join(rows))


def note(kinds, is_made=lambda path: True):
    """Notes the results of these kinds as made of their sources of now."""
    noted = read_list()
    for _, path, sources in recipes(kinds):
        hashes = hash_of(sources), hash_of([ROOT / path])
        if is_made(path) and None not in hashes:
            noted[path] = hashes
    write_list(noted)
