"""The same pictures as the recorder draws, by the same Mesa in Firefox and by SwiftShader in Chromium."""
from support import (Difference, MADE, ROOT, in_each_browser, picture_at, recorded, save)

FIREFOX_LARGEST = 3
CHROMIUM_MEAN, CHROMIUM_SHARE = 2.5, 0.03

WAITING = ROOT / 'build/show'
# Of every section: logo, photographs, tunnel, both objects, words, the lamp, the film's grain.
ROWS = [8, 132, 256, 400, 512, 600.5, 776, 880, 1024, 1152, 1280, 1400.25, 1544, 1792, 2048, 2312, 2560,
        2816, 3336, 3584]
# Where the film is spliced its grain is twice as strong for a beat. A rounding in the grain's random
# numbers makes it another grain: what lies under it must be the same.
SPLICES = [768, 1536, 2304, 3328]
GRAIN_BLOCK, GRAIN_MEAN = 16, 1.0  # pixels averaged, so that no grain is left; steps of 255


def blocks(picture):
    height, width, _ = picture.shape
    step = GRAIN_BLOCK
    return picture.reshape(height // step, step, width // step, step, 3).mean(axis=(1, 3))


class Stills:
    def compare(self, browser, show, row, size='1280x720'):
        seen, wanted = picture_at(browser, row), recorded(show, row, size)
        self.assertEqual(seen.shape, wanted.shape)
        difference = Difference(seen, wanted)
        print(f'  {show.name} row {row}, {browser.name}: {difference}')
        name = f'{browser.name}-{show.name}-{row}-{size}.png'
        if browser.name == 'firefox':
            if difference.largest > FIREFOX_LARGEST:
                save(seen, name)
            self.assertLessEqual(difference.largest, FIREFOX_LARGEST, f'row {row}')
        else:
            if difference.mean > CHROMIUM_MEAN or difference.share > CHROMIUM_SHARE:
                save(seen, name)
            self.assertLessEqual(difference.mean, CHROMIUM_MEAN, f'row {row}')
            self.assertLessEqual(difference.share, CHROMIUM_SHARE, f'row {row}')

    def compare_all(self, folder, show, rows, size='1280x720'):
        browser = self.open_player(folder)
        for row in rows:
            with self.subTest(row=row):
                self.compare(browser, show, row, size)
        self.assertEqual(browser.run('return vyr.stage.program._vyr_opengl_error()'), 0)
        self.assertEqual(browser.run('return vyr.stage.messages'), [])
        # Reading pixels is the test's, and it is slow.
        self.assertEqual([line for line in browser.console if 'due to ReadPixels' not in line], [])


@in_each_browser
class Waiting(Stills):
    def test_twenty_stills_are_the_recorders(self):
        self.compare_all(MADE / 'site', WAITING, ROWS)

    def test_splices_differ_in_grain_alone(self):
        browser = self.open_player(MADE / 'site')
        for row in SPLICES:
            seen, wanted = (blocks(picture) for picture in (picture_at(browser, row), recorded(WAITING, row)))
            self.assertLessEqual(float(abs(seen - wanted).mean()), GRAIN_MEAN, f'row {row}')


@in_each_browser
class TallWindow(Stills):
    """Bars above and below, as on such a display."""
    size = (800, 700)

    def test_picture_is_as_wide_as_the_window(self):
        self.compare_all(MADE / 'site', WAITING, [256, 1280, 3584], '800x700')


@in_each_browser
class WideWindow(Stills):
    """Cropped above and below, as on such a display."""
    size = (1280, 500)

    def test_picture_is_as_wide_as_the_window(self):
        self.compare_all(MADE / 'site', WAITING, [256, 1280, 3584], '1280x500')
