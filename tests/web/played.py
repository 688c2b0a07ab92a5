"""The whole show played once in real time with sound: ./web bench clock. It takes as long as the show."""
import statistics

from support import in_each_browser
from test_show import Whole

# What the page shows and what the device plays, at each picture.
WATCH = '''
    window.log = [];
    vyr.addEventListener('time', event => log.push([vyr.frameTime, event.detail, vyr.music.audio.currentTime]));
    document.getElementById('start').click();
    return 1;
'''


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
