"""What the tests of the site share: where things are, pages in both browsers, pixels compared."""
import atexit
import base64
import io
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest


import numpy
from PIL import Image

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / 'tools/web'))

from browser import BROWSERS  # noqa: E402
from serve import Site  # noqa: E402

MADE = ROOT / 'build-web'
SITE = MADE / 'site'
WORK = MADE / 'tests'
TOOLS = ROOT / 'build/bin'


def start_sound():
    """A sound device that nobody hears, where the machine may have none. It ends with this program."""
    folder = tempfile.mkdtemp(prefix='vyr-sound-')
    os.environ.update(PULSE_SERVER=f'unix:{folder}/native', PULSE_RUNTIME_PATH=folder)
    daemon = subprocess.Popen(
        ['pulseaudio', '-n', '--exit-idle-time=-1', '--use-pid-file=no', '--daemonize=no',
         '-L', 'module-null-sink sink_name=null rate=44100',
         '-L', f'module-native-protocol-unix auth-anonymous=1 socket={folder}/native'],
        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def end():
        daemon.terminate()
        daemon.wait()
        shutil.rmtree(folder, ignore_errors=True)

    atexit.register(end)
    while daemon.poll() is None and not os.path.exists(folder + '/native'):
        pass


class BrowserTest(unittest.TestCase):
    """A test in one browser: `in_each_browser` makes one for each of them."""
    kind = None
    size = (1280, 720)

    def browse(self, **options):
        browser = self.kind(*self.size, **options)
        self.addCleanup(browser.close)
        return browser

    def serve(self, folder=SITE, **options):
        site = Site(folder, **options)
        self.addCleanup(site.server_close)
        self.addCleanup(site.shutdown)
        return site

    def open_player(self, folder=SITE, **options):
        """A page that is ready to start, and the site that serves it."""
        self.site = self.serve(folder, **options)
        browser = self.browse()
        browser.open(self.site.address)
        browser.wait('window.vyr && vyr.state !== "loading"')
        self.assertIsNone(browser.run('return vyr.error ? vyr.error.message : null'))
        return browser


def in_each_browser(case):
    """Makes CaseFirefox and CaseChromium of a class of tests."""
    module = sys.modules[case.__module__]
    for kind in BROWSERS.values():
        name = case.__name__ + kind.__name__
        setattr(module, name, type(name, (case, BrowserTest),
                                   {'kind': kind, '__module__': case.__module__}))


def leave_title(browser):
    browser.run('document.body.classList.remove("at-title"); return 1')


DRAW_STILL = '''
    await vyr.bringPicked(vyr.stage, {row});
    vyr.stage.upload();
    vyr.drawStill({row});
    if (vyr.error) throw vyr.error;
'''
READ_PIXELS = '''
    const gl = vyr.stage.canvas.getContext('webgl2'), w = gl.drawingBufferWidth, h = gl.drawingBufferHeight;
    const pixels = new Uint8Array(4 * w * h);
    gl.readPixels(0, 0, w, h, gl.RGBA, gl.UNSIGNED_BYTE, pixels);
    const url = await new Promise(done => {
        const reader = new FileReader();
        reader.onload = () => done(reader.result);
        reader.readAsDataURL(new Blob([pixels]));
    });
    return [w, h, url.slice(url.indexOf(',') + 1)];
'''


def picture_at(browser, row):
    """What the page draws at `row`: red, green, blue, rows top first."""
    width, height, data = browser.run(DRAW_STILL.replace('{row}', repr(float(row))) + READ_PIXELS)
    rgba = numpy.frombuffer(base64.b64decode(data), numpy.uint8).reshape(height, width, 4)
    return rgba[::-1, :, :3].astype(int)


def recorded(show, row, size='1280x720'):
    """The same by the recorder, over Mesa's software renderer; kept while the show is not newer."""
    file = WORK / 'stills' / f'{show.name}-{row}-{size}.png'
    file.parent.mkdir(parents=True, exist_ok=True)
    newest = max(path.stat().st_mtime for path in show.rglob('*') if path.is_file())
    if not file.exists() or file.stat().st_mtime < newest:
        subprocess.run([TOOLS / 'vyr-record', '--show', show, '--still', str(row), '--size', size,
                        '-o', file], check=True, env=dict(os.environ, LIBGL_ALWAYS_SOFTWARE='1'))
    return numpy.asarray(Image.open(file).convert('RGB')).astype(int)


class Difference:
    """Of two pictures, in steps of 255."""

    def __init__(self, seen, wanted):
        each = numpy.abs(seen - wanted)
        self.largest = int(each.max())
        self.mean = float(each.mean())
        self.share = float((each.max(axis=2) > 0.03 * 255).mean())  # of pixels off by more than 3 %

    def __str__(self):
        return f'largest {self.largest}, mean {self.mean:.3f}, {100 * self.share:.2f} % of pixels off by more than 3 %'


def save(picture, name):
    WORK.mkdir(parents=True, exist_ok=True)
    Image.fromarray(picture.astype(numpy.uint8)).save(WORK / name)


def load_screenshot(browser):
    return numpy.asarray(Image.open(io.BytesIO(browser.screenshot())).convert('RGB')).astype(int)
