"""Servers that are slow, wrong or incomplete: the page names the file in one sentence, and goes on where it can."""
import pathlib

from support import in_each_browser


def named(part):
    return lambda handler, path: part in pathlib.Path(path).name


class Faulty:
    """Opens the page of a site whose server answers otherwise for some files."""
    size = (480, 270)

    def open_faulty(self, is_meant, answer, **options):
        def answer_some(handler, path):
            if not is_meant(handler, path):
                return False
            answer(handler, pathlib.Path(path).read_bytes())
            return True
        self.site = self.serve(answer=answer_some, **options)
        browser = self.browse()
        browser.open(self.site.address)
        browser.wait('window.vyr && vyr.state !== "loading"')
        return browser

    def failure(self, browser):
        self.assertEqual(browser.run('return vyr.state'), 'failed')
        return browser.run('const it = document.getElementById("error"); return it.hidden ? null : it.textContent')


def missing(handler, data):
    handler.send_nothing(404)


def half(handler, data):
    handler.send_data(data[:len(data) // 2], 'application/octet-stream')


def broken_off(handler, data):
    handler.headers.replace_header('Range', '') if 'Range' in handler.headers else None
    handler.send_data(data[:len(data) // 2], 'application/octet-stream', claimed=len(data))


def page(handler, data):
    handler.send_data(b'<!DOCTYPE html><title>Not found</title>', 'text/html')


def garbage(handler, data):
    handler.send_data(bytes(len(data)), 'application/octet-stream')


@in_each_browser
class Fault(Faulty):
    def test_missing_file_is_named(self):
        for name, path in (('noise.fs', 'data/shaders/noise.fs'), ('oh1.lwo', 'data/oh1.lwo'),
                           ('tex9', 'data/tex9.png'), ('manifest.json', 'manifest.json')):
            with self.subTest(file=name):
                browser = self.open_faulty(named(name), missing)
                self.assertEqual(self.failure(browser), f'{path} is missing on the server.')
                browser.close()

    def test_half_a_file_is_named(self):
        browser = self.open_faulty(named('oh1.lwo'), half)
        self.assertRegex(self.failure(browser), r'^data/oh1\.lwo arrived broken: \d+ bytes, and it has \d+\.$')

    def test_connection_that_breaks_is_named(self):
        browser = self.open_faulty(named('oh2.lwo'), broken_off)
        self.assertRegex(self.failure(browser), r'^data/oh2\.lwo .*(broke|broken)')

    def test_page_in_the_place_of_a_file_is_named(self):
        browser = self.open_faulty(named('plasma.fs'), page)
        self.assertEqual(self.failure(browser), 'data/shaders/plasma.fs: the server sent a page (text/html) in its place.')
        browser.close()
        browser = self.open_faulty(named('manifest.json'), page)
        self.assertEqual(self.failure(browser), 'manifest.json: the server sent something else.')

    def test_bytes_that_are_no_picture_are_named(self):
        browser = self.open_faulty(named('vignette1'), garbage)
        self.assertEqual(self.failure(browser), 'data/vignette1.png is no picture that this browser can read.')

    def test_program_that_is_none_is_named(self):
        browser = self.open_faulty(named('program.wasm'), garbage)
        self.assertRegex(self.failure(browser), '^program.wasm arrived broken')

    # A picture that a track picks is left out, and the show plays.
    def test_missing_photo_is_named_and_the_show_goes_on(self):
        browser = self.open_faulty(named('tovak01.png'), missing)
        self.assertEqual(browser.run('return vyr.state'), 'ready')
        browser.wait('vyr.failedPictures.has("data/photos/tovak01.png")')
        note = browser.run('return document.getElementById("note").textContent')
        self.assertEqual(note, 'data/photos/tovak01.png is missing on the server. The show goes on without it.')
        browser.run('document.getElementById("start").click(); return 1')
        browser.wait('vyr.state === "playing" && vyr.seconds > 1')

    def test_missing_music_is_named(self):
        browser = self.open_faulty(named('waiting.mp3'), missing)
        browser.run('document.getElementById("start").click(); return 1')
        browser.wait('vyr.state === "failed"')
        self.assertRegex(self.failure(browser), '^data/waiting.mp3: it is missing on the server')

    def test_half_the_music_is_named_when_it_ends(self):
        browser = self.open_faulty(named('waiting.mp3'), half)
        browser.run('document.getElementById("start").click(); return 1')
        browser.wait('vyr.state === "failed" || vyr.seconds > 0.3')
        if browser.run('return vyr.state') != 'failed':
            browser.run('vyr.seek(104); return 1')
            browser.wait('vyr.state === "failed" || vyr.music.audio.ended || vyr.seconds > 100')
            browser.wait('vyr.state === "failed"')
        self.assertRegex(self.failure(browser), '^data/waiting.mp3')


@in_each_browser
class Slow(Faulty):
    def test_seek_works_where_the_server_sends_no_parts(self):
        browser = self.open_player(has_ranges=False)
        browser.run('document.getElementById("start").click(); return 1')
        browser.wait('vyr.state === "playing" && vyr.seconds > 0.2')
        browser.run('vyr.seek(150); return 1')
        browser.wait('vyr.state === "playing" && vyr.seconds > 150.2')
        self.assertGreater(browser.run('return vyr.music.audio.currentTime'), 150)
        self.assertEqual(browser.console, [])

    # The picture that is shown next does not come yet: neither does the music go on.
    def test_music_waits_with_the_picture(self):
        import threading
        gate = threading.Event()
        self.addCleanup(gate.set)

        def hold(handler, path):
            if 'leather' in path:
                gate.wait()
            return False
        browser = self.open_player(answer=hold)
        first = browser.run('const from = [...Array(3624).keys()]; return from.find(row => '
                            'vyr.score.picked(row).includes("data/photos/leather.png"))')
        start = first / 17.6 - 1
        browser.run(f'document.getElementById("start").click(); await vyr.seek({start}); return 1')
        browser.wait('vyr.waitsFor === "data/photos/leather.png"')
        browser.wait('!document.getElementById("note").hidden')
        self.assertTrue(browser.run('return vyr.music.audio.paused'))
        place = browser.run('return vyr.seconds')
        self.assertLess(place, start + 1.3)
        gate.set()
        browser.wait(f'vyr.waitsFor === null && vyr.seconds > {place} + 0.3')
        self.assertEqual(browser.console, [])

    # All pictures are held back but those of the beginning and of the place that is sought.
    def test_seek_while_loading_brings_what_is_seen_there_first(self):
        import threading
        browser = self.open_player()
        allowed = browser.run('return [...vyr.score.order(0, 352), ...vyr.score.order(190 * 17.6, 192 * 17.6)]')
        names = {pathlib.Path(path).name for path in allowed}
        gate = threading.Event()
        self.addCleanup(gate.set)

        def hold(handler, path):
            file = pathlib.Path(path)
            if file.parent.name in ('photos', 'lyrics') and file.name.removesuffix('.webp') not in names:
                gate.wait()
            return False
        browser.open(self.serve(answer=hold).address)
        browser.wait('window.vyr && vyr.state === "ready"')
        browser.run('document.getElementById("start").click(); await vyr.seek(190); return 1')
        browser.wait('vyr.state === "playing" && vyr.seconds > 190.2')
        self.assertGreater(browser.run('return vyr.stage.missing.length'), 10)
        self.assertEqual(browser.console, [])
