"""The whole show: drawn, every third row, and played once in real time with sound."""
import statistics

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
# What the page shows and what the device plays, at each picture.
WATCH = '''
    window.log = [];
    vyr.addEventListener('time', event => log.push([performance.now() / 1000, event.detail, vyr.music.audio.currentTime]));
    document.getElementById('start').click();
    return 1;
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


def line_through(points):
    """Slope and height of the straight line nearest to the points."""
    slope, height = statistics.linear_regression(*zip(*points))
    return slope, height


@in_each_browser
class Played(Whole):
    """Takes as long as the show does."""
    size = (320, 180)
    FURTHEST = 0.004  # seconds from a straight line, after the first second, in which the clock anchors

    def test_from_beginning_to_end_with_an_even_clock(self):
        browser = self.open_player()
        browser.run(WATCH)
        for place in range(20, 206, 20):
            browser.wait_long(f'vyr.seconds > {place} || vyr.state === "failed"')
        browser.wait_long('vyr.state === "ended" || vyr.state === "failed"')
        self.assertEqual(browser.run('return vyr.state'), 'ended')
        log = browser.run('return log')
        self.report(browser, log)
        self.assert_clean(browser)
        shown = [seconds for _, seconds, _ in log]
        self.assertEqual([b for a, b in zip(shown, shown[1:]) if b < a], [], 'the clock went back')
        self.assertLess(shown[0], 0.1, 'row 0 and the music begin together')
        self.assertLessEqual(self.furthest(log), self.FURTHEST)
        self.assertEqual(browser.run('return vyr.score.seconds.toFixed(3)'), '205.909')

    def points(self, log):
        moving = next(i for i, (_, seconds, _) in enumerate(log) if seconds > 0)
        begin = log[moving][0] + 1
        return [(now, seconds) for now, seconds, _ in log if now > begin]

    def furthest(self, log):
        slope, height = line_through(self.points(log))
        return max(abs(seconds - slope * now - height) for now, seconds in self.points(log))

    def report(self, browser, log):
        slope, _ = line_through(self.points(log))
        apart = [position - seconds for _, seconds, position in log[60:]]
        latency = browser.run('return vyr.music.latency')
        print(f'  {browser.name}: {len(log)} pictures, at most {1000 * self.furthest(log):.2f} ms from a straight '
              f'line, rate {slope:.6f}, sound ahead by {1000 * statistics.mean(apart):.1f} ms, of which latency '
              f'{1000 * latency:.1f}')


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
