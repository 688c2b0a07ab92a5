"""The layer's unit tests (LayerTest.cpp) in browsers, and what does not compile for them."""
import os
import shutil
import subprocess
import unittest

from support import MADE, ROOT, WORK, in_each_browser

PAGE = '''<!DOCTYPE html><title>layer</title><link rel="icon" href="data:,"><canvas id="vyr-canvas"></canvas>
<script src="web-layer.js"></script>'''
RUN = '''
    const lines = [], say = line => lines.push(line);
    const program = await createShow({print: say, printErr: say});
    return [program._vyr_run_tests(), lines];
'''


@in_each_browser
class Layer:
    def test_layer_does_what_the_desktops_driver_does(self):
        folder = WORK / 'layer'
        folder.mkdir(parents=True, exist_ok=True)
        for name in ('web-layer.js', 'web-layer.wasm'):
            shutil.copy(MADE / name, folder)
        (folder / 'index.html').write_text(PAGE)
        browser = self.browse()
        browser.open(self.serve(folder).address)
        status, lines = browser.run(RUN)
        self.assertEqual(status, 0, '\n'.join(lines))
        passed = next(line for line in lines if 'PASSED' in line)
        print(' ', browser.name, passed.strip())
        self.assertGreater(int(passed.split(']')[1].split()[0]), 30)


class Lacking(unittest.TestCase):
    """What the layer lacks is known when a show is built, not when it plays."""

    def compile(self, body):
        source = f'#include <epoxy/gl.h>\nvoid Draw() {{ {body} }}\n'
        return subprocess.run(['em++', '-x', 'c++', '-std=c++20', '-fsyntax-only',
                               f'-I{ROOT}/platform/web/include', '-'], input=source, text=True,
                              capture_output=True, check=False, env=dict(os.environ))

    def test_calls_and_constants_of_the_layer_compile(self):
        self.assertEqual(self.compile('glBegin(GL_QUADS); glEnd();').returncode, 0)

    def test_others_do_not(self):
        for body in ('glFogf(0x0B65, 1);', 'glEnable(GL_FOG);', 'glBindBuffer(0x8892, 0);',
                     'glVertex4f(0, 0, 0, 1);', 'glMatrixMode(GL_TEXTURE);'):
            result = self.compile(body)
            self.assertNotEqual(result.returncode, 0, body)
            self.assertIn('undeclared identifier', result.stderr)
