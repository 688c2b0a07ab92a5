#!/usr/bin/env python3
"""Makes a site of a show: a folder that any server of files can give away, under any path.

    site.py --program PROGRAM.js --page DIR --tracks DIR --data DIR --pictures TOOL --cache DIR
            [--extras DIR] --output DIR

PROGRAM.js and PROGRAM.wasm beside it are the show, compiled. What the page needs to know about the
files stands in manifest.json; files are named there as the show names them:

    program, code   the address of each and its size
    tracks          the address of all tracks, as one file
    files           path: {url, bytes, packed}; packed: by gzip
    pictures        path: {url, bytes, width, height, components}
    title, captions, transcript, flashes    where they are there
"""
import argparse
import base64
import gzip
import hashlib
import json
import pathlib
import re
import subprocess
import sys

IGNORED = {'CMakeLists.txt'}
PLAYED_AS_IT_IS = {'.mp3'}  # the browser asks for parts of it
SHOWN_BY_BROWSERS = {b'\x89PNG': 'png', b'\xff\xd8\xff': 'jpeg'}


def options():
    parser = argparse.ArgumentParser()
    for name in ('program', 'page', 'tracks', 'pictures', 'cache', 'output'):
        parser.add_argument('--' + name, required=True)
    for name in ('data', 'extras'):
        parser.add_argument('--' + name, default='')
    return parser.parse_args()


class Site:
    """The folder that is made; what an earlier run left there and this one does not is removed."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        self.written = set()

    def write(self, name, data):
        """Writes `data` under `name` and says how a page finds it."""
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        if not path.exists() or path.read_bytes() != data:
            path.write_bytes(data)
        self.written.add(path)
        # A new build is a new address: no cache mixes the two.
        return {'url': f'{name}?{hashlib.sha256(data).hexdigest()[:8]}', 'bytes': len(data)}

    def remove_others(self):
        for path in sorted(self.folder.rglob('*'), reverse=True):
            if path.is_dir():
                if not any(path.iterdir()):
                    path.rmdir()
            elif path not in self.written:
                path.unlink()


def pack_tracks(folder):
    tracks = {path.name: base64.b64encode(path.read_bytes()).decode()
              for path in sorted(pathlib.Path(folder).glob('*.track'))}
    return json.dumps(tracks).encode()


def list_pictures(tool, data, cache):
    """Path under `data`: width, height, components and the file of its WebP."""
    result = subprocess.run([tool, data, cache], stdout=subprocess.PIPE, text=True, check=False)
    if result.returncode:
        sys.exit('site.py: no pictures, see above')
    pictures = {}
    for line in result.stdout.splitlines():
        name, *numbers = line.split('\t')
        pictures[name] = [int(number) for number in numbers] + [cache / (name + '.webp')]
    return pictures


def add_picture(site, name, data, picture):
    """The smaller one of the file and its WebP; a format that browsers lack is always WebP."""
    width, height, components, webp = picture
    packed = webp.read_bytes()
    is_shown = any(data.startswith(magic) for magic in SHOWN_BY_BROWSERS)
    if is_shown and len(data) <= len(packed):
        entry = site.write('data/' + name, data)
    else:
        entry = site.write(f'data/{name}.webp', packed)
    return dict(entry, width=width, height=height, components=components)


def add_file(site, name, data):
    packed = gzip.compress(data, 9, mtime=0)
    if pathlib.Path(name).suffix in PLAYED_AS_IT_IS or len(packed) > 0.9 * len(data):
        return site.write('data/' + name, data)
    # Not .gz: some servers would unpack that on the way, others would not.
    return dict(site.write(f'data/{name}.packed', packed), packed=True)


def add_data(site, manifest, folder, tool, cache):
    root = pathlib.Path(folder)
    pictures = list_pictures(tool, folder, cache)
    for path in sorted(root.rglob('*')):
        name = path.relative_to(root).as_posix()
        if not path.is_file() or path.name in IGNORED:
            continue
        data = path.read_bytes()
        if name in pictures:
            manifest['pictures']['data/' + name] = add_picture(site, name, data, pictures[name])
        else:
            manifest['files']['data/' + name] = add_file(site, name, data)


def read_flashes(text):
    """What the recorder's flash report says at its end."""
    most = re.search(r'most flashes in a second: ([\d.]+) general, ([\d.]+) red', text)
    if not most:
        sys.exit('site.py: flashes.txt is no report of vyr-record --flash-report')
    return {'general': float(most[1]), 'red': float(most[2]),
            'within': 'within the limit' in text}


def add_extras(site, manifest, folder):
    for key, name in (('title', 'title.webp'), ('captions', 'captions.vtt'),
                      ('transcript', 'transcript.txt')):
        path = pathlib.Path(folder) / name
        if path.exists():
            manifest[key] = site.write(name, path.read_bytes())
    report = pathlib.Path(folder) / 'flashes.txt'
    if report.exists():
        manifest['flashes'] = read_flashes(report.read_text())


def main():
    chosen = options()
    site = Site(chosen.output)
    program = pathlib.Path(chosen.program)
    manifest = {
        'program': site.write('program.js', program.read_bytes()),
        'code': dict(site.write('program.wasm.packed', gzip.compress(
            program.with_suffix('.wasm').read_bytes(), 9, mtime=0)), packed=True),
        'tracks': dict(site.write('tracks.json.packed', gzip.compress(
            pack_tracks(chosen.tracks), 9, mtime=0)), packed=True),
        'files': {}, 'pictures': {}}
    if chosen.data:
        add_data(site, manifest, chosen.data, chosen.pictures,
                 pathlib.Path(chosen.cache) / 'pictures')
    if chosen.extras:
        add_extras(site, manifest, chosen.extras)
    for path in sorted(pathlib.Path(chosen.page).iterdir()):
        site.write(path.name, path.read_bytes())
    site.write('manifest.json', json.dumps(manifest, indent=1).encode())
    site.remove_others()


if __name__ == '__main__':
    main()
