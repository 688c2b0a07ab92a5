"""The whole show, drawn every third row, and its music's length. ./web bench clock plays it in real time."""
from support import in_each_browser

DRAW_ALL = '''
    let frames = 0, errors = 0;
    for (let row = 0; row <= vyr.score.show.lastRow; row += 3) {
        await vyr.bringPicked(vyr.stage, row);
        vyr.draw(row, row / vyr.rate);
        errors += vyr.stage.program._vyr_opengl_error() !== 0;
        frames++;
    }
    return [frames, errors];
'''


class Whole:
    def assert_clean(self, browser):
        self.assertEqual(browser.console, [])
        self.assertIsNone(browser.run('return vyr.error ? vyr.error.message : null'))
        self.assertEqual(browser.run('return vyr.stage.messages'), [])
        self.assertEqual(browser.run('return vyr.stage.program._vyr_opengl_error()'), 0)
        self.assertEqual(browser.run('return [...vyr.failedPictures]'), [])


@in_each_browser
class Drawn(Whole):
    size = (320, 180)

    def test_every_third_row_draws_without_an_error(self):
        browser = self.open_player()
        frames, errors = browser.run(DRAW_ALL)
        self.assertEqual((frames, errors), (3624 // 3 + 1, 0))
        self.assert_clean(browser)


class Length:
    """The music's length is that of the desktop's decoder: no shift, no gap."""

    def test_music_has_as_many_frames_as_on_a_desktop(self):
        browser = self.open_player()
        frames = browser.run('''
            const bytes = await vyr.files.get(vyr.score.show.music);
            const context = new OfflineAudioContext(2, 1, 44100);
            return (await context.decodeAudioData(bytes.slice().buffer)).length;''')
        self.assertEqual(frames, 9155568)


in_each_browser(Length)
