"""The page, as a viewer has it: started, paused, searched, enlarged, heard late, shown anew."""

from support import in_each_browser

# What the device plays and what is shown, at one picture.
AT_A_FRAME = '''return new Promise(done => vyr.addEventListener('time', () => done(
    [vyr.music.audio.currentTime, vyr.seconds, vyr.music.latency, vyr.drawnRow]), {once: true}))'''
PLAYING = 'vyr.state === "playing" && vyr.seconds > {0}'


class Started:
    """A show that plays, begun by a click as a viewer does; in a small window, for software draws it."""
    size = (640, 400)

    def start(self, **options):
        browser = self.open_player(**options)
        self.click(browser, 'start')
        browser.wait(PLAYING.format(0.2))
        return browser

    def click(self, browser, name, count=1):
        x, y = browser.run(f'const box = document.getElementById("{name}").getBoundingClientRect();'
                           'return [box.x + box.width / 2, box.y + box.height / 2]')
        browser.click(x, y, count)

    def text(self, browser, name):
        return browser.run(f'const it = document.getElementById("{name}"); return it.hidden ? null : it.textContent')

    def assert_clean(self, browser):
        self.assertEqual(browser.console, [])
        self.assertIsNone(browser.run('return vyr.error ? vyr.error.message : null'))
        self.assertEqual(browser.run('return vyr.stage.program._vyr_opengl_error()'), 0)


@in_each_browser
class Title(Started):
    def test_says_what_the_show_is(self):
        browser = self.open_player()
        self.assertEqual(self.text(browser, 'name'), 'Waiting')
        self.assertEqual(browser.run('return document.title'), 'Waiting')
        self.assertEqual(self.text(browser, 'start-text'), 'Start')
        self.assertIn('3 minutes 25 seconds', self.text(browser, 'length'))
        self.assertIn('up to 2.5 times a second, within the three', self.text(browser, 'flashes'))
        self.assertIn('we are waiting', self.text(browser, 'transcript'))
        self.assertTrue(browser.wait('document.getElementById("title-picture").naturalWidth'))
        self.assert_clean(browser)

    def test_asks_no_other_host(self):
        browser = self.open_player()
        names = browser.run('return performance.getEntriesByType("resource").map(entry => entry.name)')
        self.assertGreater(len(names), 10)
        own = self.site.address
        self.assertEqual([name for name in names if not name.startswith((own, 'data:', 'blob:'))], [])

    def test_nothing_sounds_before_the_start(self):
        browser = self.open_player()
        self.assertTrue(browser.run('return vyr.music.audio.paused && vyr.music.context === undefined'))


@in_each_browser
class Playing(Started):
    def test_picture_follows_the_music(self):
        browser = self.start()
        browser.wait(PLAYING.format(1.5))
        position, seconds, latency, row = browser.run(AT_A_FRAME)
        self.assertLess(abs(position - latency - seconds), 0.2)
        self.assertAlmostEqual(row / 17.6, seconds, delta=0.1)
        self.assert_clean(browser)

    def test_space_pauses_and_goes_on_from_there(self):
        browser = self.start()
        browser.press(' ')
        browser.wait('vyr.state === "paused" && vyr.music.audio.paused')
        place = browser.run('return vyr.seconds')
        browser.press(' ')
        browser.wait('vyr.state === "playing"')
        self.assertGreaterEqual(browser.run('return vyr.seconds'), place)
        browser.wait(PLAYING.format(place + 0.5))
        self.assert_clean(browser)

    def test_escape_goes_back_to_the_title_and_start_goes_on(self):
        browser = self.start()
        browser.press('Escape')
        browser.wait('vyr.state === "paused" && document.body.classList.contains("at-title")')
        self.assertEqual(self.text(browser, 'start-text'), 'Go on')
        place = browser.run('return vyr.seconds')
        browser.wait('getComputedStyle(document.getElementById("title")).opacity === "1"')
        self.click(browser, 'start')
        browser.wait(PLAYING.format(place + 0.1))
        self.assert_clean(browser)

    def test_arrows_and_bar_seek(self):
        browser = self.start()
        browser.press('ArrowRight')
        browser.wait(PLAYING.format(5))
        box = browser.run('const box = document.getElementById("seek").getBoundingClientRect();'
                          'return [box.x, box.y + box.height / 2, box.width]')
        browser.click(box[0] + box[2] / 2, box[1])
        browser.wait(PLAYING.format(95))
        self.assertLess(browser.run('return vyr.seconds'), 112)
        self.assert_clean(browser)

    def test_seek_while_paused_draws_the_place(self):
        browser = self.start()
        browser.press(' ')
        browser.wait('vyr.state === "paused"')
        browser.run('await vyr.seek(60); return 1')
        browser.wait('vyr.drawnRow === 60 * 17.6')
        self.assertAlmostEqual(browser.run('return vyr.music.audio.currentTime'), 60, delta=0.1)
        self.assertEqual(browser.run('return vyr.state'), 'paused')
        self.assert_clean(browser)

    def test_bar_and_pointer_hide_and_come_back(self):
        browser = self.start()
        browser.wait('document.body.classList.contains("is-quiet")')
        self.assertEqual(browser.run('return getComputedStyle(document.body).cursor'), 'none')
        browser.move(200, 100)
        browser.wait('!document.body.classList.contains("is-quiet")')

    def test_captions_are_the_words_and_are_remembered(self):
        browser = self.start()
        browser.run('await vyr.seek(44.5); return 1')
        browser.press('c')
        browser.wait('document.getElementById("caption").textContent === "we are waiting"')
        browser.press('c')
        browser.wait('document.getElementById("caption").hidden')
        browser.press('c')
        browser.open(self.site.address)
        browser.wait('document.getElementById("captions").getAttribute("aria-pressed") === "true"')

    def test_delay_moves_the_picture_and_is_remembered(self):
        browser = self.start()
        before = browser.run('return vyr.music.latency')
        browser.run('const it = document.getElementById("offset"); it.value = 150;'
                    'it.dispatchEvent(new Event("input")); return 1')
        self.assertAlmostEqual(browser.run('return vyr.music.latency') - before, 0.15, delta=0.03)
        browser.open(self.site.address)
        browser.wait('window.vyr && vyr.state === "ready"')
        self.assertAlmostEqual(browser.run('return vyr.music.offset'), 0.15)

    def test_last_row_ends_it_and_it_can_begin_anew(self):
        browser = self.start()
        browser.run('await vyr.seek(205); return 1')
        browser.wait('vyr.state === "ended"')
        self.assertEqual(self.text(browser, 'start-text'), 'Once more')
        browser.wait('getComputedStyle(document.getElementById("title")).opacity === "1"')
        self.click(browser, 'start')
        browser.wait('vyr.state === "playing" && vyr.seconds > 0.3 && vyr.seconds < 100')
        self.assert_clean(browser)


@in_each_browser
class Windows(Started):
    # Firefox gives no full screen to a window without the focus, and there is no window manager here
    # to give it any: then the page says so and plays on.
    def test_double_click_and_f_enlarge(self):
        browser = self.start()
        browser.press('f')
        if browser.name == 'firefox':
            browser.wait('document.getElementById("note").textContent === "This browser gives no full screen here."')
        else:
            self.enlarge(browser)
        browser.wait(PLAYING.format(0.5))
        self.assert_clean(browser)

    def enlarge(self, browser):
        browser.wait('document.fullscreenElement')
        browser.press('f')
        browser.wait('!document.fullscreenElement')
        browser.click(320, 120, 2)
        browser.wait('document.fullscreenElement')
        browser.run('document.exitFullscreen(); return 1')
        browser.wait('!document.fullscreenElement')

    def test_another_size_is_drawn_in_its_own_pixels(self):
        browser = self.start()
        place = browser.run('return vyr.seconds')
        browser.resize(500, 420)
        browser.wait('vyr.stage.canvas.width === 500 && vyr.stage.canvas.height === 420')
        self.assertEqual(browser.run('return document.querySelectorAll("canvas").length'), 1)
        browser.wait(PLAYING.format(place + 1))
        self.assert_clean(browser)

    def test_lost_graphics_come_back(self):
        browser = self.start()
        place = browser.run('window.before = vyr.stage; before.canvas.getContext("webgl2")'
                            '.getExtension("WEBGL_lose_context").loseContext(); return vyr.seconds')
        browser.wait('vyr.stage !== before && !vyr.stage.isLost')
        browser.wait(PLAYING.format(place + 0.5))
        self.assertEqual(browser.run('return vyr.stage.program._vyr_opengl_error()'), 0)

    # A tab that nobody sees draws nothing; seen again, it is where the music is.
    def test_hidden_and_seen_again_it_is_with_the_music(self):
        browser = self.start()
        browser.run('window.asked = requestAnimationFrame; window.kept = null;'
                    'window.requestAnimationFrame = call => { window.kept = call; return 0; }; return 1')
        browser.wait('window.kept')
        place = browser.run('return vyr.seconds')
        browser.wait(f'vyr.music.audio.currentTime > {place} + 3')
        self.assertLess(browser.run('return vyr.seconds') - place, 0.5)
        browser.run('window.requestAnimationFrame = window.asked; asked(window.kept); return 1')
        browser.wait(PLAYING.format(place + 2.5))
        position, seconds, latency, _ = browser.run(AT_A_FRAME)
        self.assertLess(abs(position - latency - seconds), 0.2)
        self.assert_clean(browser)
