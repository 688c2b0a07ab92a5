"""Other shows than Waiting: every drawing mode and effect of the engine, and the show that vyr-new writes."""
import subprocess
import unittest

from support import MADE, ROOT, in_each_browser, leave_title
from test_stills import Stills

SHOWS = MADE / 'shows'


def make(folder):
    """Its site, and its folder on this machine, made by the command that a user gives."""
    result = subprocess.run([ROOT / 'web', '--show', folder], cwd=ROOT, text=True, capture_output=True,
                            check=False)
    if result.returncode:
        raise AssertionError(result.stdout + result.stderr)
    name = folder.name
    return SHOWS / name / 'web' / name, SHOWS / name / 'desktop' / name


@in_each_browser
class Modes(Stills):
    """Textured, sphere-mapped; normals and wireframe are lines, which a browser does not smooth; then
    the colour split, the feedback blur, the signal distortion and the plain picture."""
    ROWS = [2, 6, 18, 22, 26, 30]
    LINES = [10, 14]
    LINE_SHARE = 0.12  # of pixels on or beside a line

    def test_modes_and_effects_are_the_desktops(self):
        site, show = make(ROOT / 'tests/web/modes')
        self.compare_all(site, show, self.ROWS)

    def test_lines_are_where_the_desktops_are(self):
        from support import Difference, picture_at, recorded
        site, show = make(ROOT / 'tests/web/modes')
        browser = self.open_player(site)
        for row in self.LINES:
            seen, wanted = picture_at(browser, row), recorded(show, row)
            self.assertLess(Difference(seen, wanted).share, self.LINE_SHARE)
            drawn = [(abs(picture - picture[0, 0]).max(axis=2) > 40).mean() for picture in (seen, wanted)]
            self.assertGreater(min(drawn), 0.005)
            self.assertLess(max(drawn) / min(drawn), 2)


@in_each_browser
class Night(Stills):
    def test_stills_are_the_recorders(self):
        site, show = make(ROOT / 'examples/night')
        self.compare_all(site, show, [0, 40, 100.5, 200])

    def test_it_plays(self):
        site, _ = make(ROOT / 'examples/night')
        browser = self.open_player(site)
        self.assertEqual(browser.run('return document.title'), 'Night')
        browser.run('document.getElementById("start").click(); return 1')
        browser.wait('vyr.state === "playing" && vyr.seconds > 1')
        leave_title(browser)
        self.assertTrue(browser.run('return !document.getElementById("captions").hidden'))
        self.assertEqual(browser.console, [])


class Misuse(unittest.TestCase):
    """One line that says what is wrong, and nothing made."""

    def fail_with(self, *arguments):
        result = subprocess.run([ROOT / 'web', *arguments], cwd=ROOT, text=True, capture_output=True, check=False)
        self.assertNotEqual(result.returncode, 0)
        self.assertEqual(result.stderr.count('\n'), 1, result.stderr)
        return result.stderr

    def test_is_one_line(self):
        self.assertIn("unknown argument 'sreve'", self.fail_with('sreve'))
        self.assertIn('--show: what follows is missing', self.fail_with('--show'))
        self.assertIn('no CMakeLists.txt there', self.fail_with('--show', '/nowhere'))
        self.assertIn('not there', self.fail_with('--show', 'examples/night', '--words', '/nowhere'))
        self.assertIn("unknown option '--sow'", self.fail_with('--sow', 'x'))
