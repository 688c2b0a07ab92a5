"""Real browsers, started and driven: Firefox by WebDriver BiDi, Chromium by its DevTools protocol.

Both draw without a graphics card: Firefox needs a display and draws by Mesa there (xvfb-run), Chromium
has none and draws by SwiftShader. Each has a profile of its own, which goes with it.
"""
import base64
import fcntl
import json
import os
import queue
import secrets
import shutil
import socket
import struct
import subprocess
import tempfile
import threading
import time

PATIENCE = 300  # seconds: an answer that does not come by then never does


class BrowserError(RuntimeError):
    pass


class WebSocket:
    """As much of RFC 6455 as a client of one well-behaved server needs."""

    def __init__(self, port, path):
        self.socket = socket.create_connection(('127.0.0.1', port))
        self.stream = self.socket.makefile('rb')
        key = base64.b64encode(secrets.token_bytes(16)).decode()
        self.socket.sendall((f'GET {path} HTTP/1.1\r\nHost: 127.0.0.1:{port}\r\nUpgrade: websocket\r\n'
                             'Connection: Upgrade\r\nSec-WebSocket-Version: 13\r\n'
                             f'Sec-WebSocket-Key: {key}\r\n\r\n').encode())
        if b' 101 ' not in self.stream.readline():
            raise BrowserError('the browser declined the connection')
        while self.stream.readline().strip():
            pass

    def send(self, text):
        data = text.encode()
        size = (struct.pack('!B', 0x80 | len(data)) if len(data) < 126 else
                struct.pack('!BH', 0x80 | 126, len(data)) if len(data) < 65536 else
                struct.pack('!BQ', 0x80 | 127, len(data)))
        mask = secrets.token_bytes(4)
        masked = bytes(byte ^ mask[i % 4] for i, byte in enumerate(data))
        self.socket.sendall(b'\x81' + size + mask + masked)

    def receive(self):
        message = b''
        while True:
            head = self.stream.read(2)
            if len(head) < 2:
                return None
            size = head[1] & 127
            if size == 126:
                size, = struct.unpack('!H', self.stream.read(2))
            elif size == 127:
                size, = struct.unpack('!Q', self.stream.read(8))
            data = self.stream.read(size)
            if head[0] & 15 == 8:
                return None
            if head[0] & 15 < 3:
                message += data
                if head[0] & 128:
                    return message.decode()

    def close(self):
        self.socket.close()


class Pipe:
    """Messages between zero bytes, over two file descriptors."""

    def __init__(self, read_end, write_end):
        self.reader = os.fdopen(read_end, 'rb')
        self.writer = os.fdopen(write_end, 'wb')

    def send(self, text):
        self.writer.write(text.encode() + b'\0')
        self.writer.flush()

    def receive(self):
        message = bytearray()
        while byte := self.reader.read(1):
            if byte == b'\0':
                return message.decode()
            message += byte
            message += self._more()
            if message.endswith(b'\0'):
                return message[:-1].decode()
        return None

    def _more(self):
        ahead = self.reader.peek(1)
        end = ahead.find(b'\0')
        return self.reader.read(len(ahead) if end < 0 else end + 1)

    def close(self):
        self.reader.close()
        self.writer.close()


def move_up(descriptor):
    """The same file under a number from 20 on."""
    moved = fcntl.fcntl(descriptor, fcntl.F_DUPFD_CLOEXEC, 20)
    os.close(descriptor)
    return moved


class Connection:
    """Commands and their answers; events go to `listener`."""

    def __init__(self, channel, listener):
        self.channel, self.listener = channel, listener
        self.count, self.answers = 0, {}
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        try:
            while (text := self.channel.receive()) is not None:
                message = json.loads(text)
                if message.get('id') in self.answers:
                    self.answers[message['id']].put(message)
                elif 'method' in message:
                    self.listener(message['method'], message['params'])
        except (OSError, ValueError):
            pass
        for answer in list(self.answers.values()):
            answer.put({'error': 'the browser has ended'})

    def call(self, method, _session=None, **params):
        self.count += 1
        number = self.count
        self.answers[number] = queue.Queue()
        message = {'id': number, 'method': method, 'params': params}
        if _session:
            message['sessionId'] = _session
        self.channel.send(json.dumps(message))
        answer = self.answers[number].get(timeout=PATIENCE)
        del self.answers[number]
        if answer.get('error'):
            raise BrowserError(f'{method}: {answer.get("message") or answer["error"]}')
        return answer.get('result', {})


class Browser:
    """What both have in common. `console`: every line of the console and every uncaught error."""

    name = ''

    def __init__(self, width=1280, height=720, arguments=()):
        self.console = []
        self.profile = tempfile.mkdtemp(prefix='vyr-browser-')
        self.start(width, height, list(arguments))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def wait(self, condition):
        """Until the expression `condition` is true in the page. One that never comes true is given
        up; the error says what the player does instead."""
        return self.run('for (let i = 0; i < 2000; i++) {'
                        f'  const value = ({condition}); if (value) return value;'
                        '  await new Promise(done => setTimeout(done, 20)); }'
                        'const {state, seconds, waitsFor, error, music} = window.vyr || {};'
                        f'throw new Error({json.dumps(condition)} + " never came true: " + JSON.stringify('
                        '[state, seconds, waitsFor, String(error), music?.audio.currentTime, music?.audio.paused]));')

    def wait_long(self, condition):
        """The same for what takes minutes."""
        while True:
            try:
                return self.wait(condition)
            except BrowserError:
                if self.run('return vyr.state') != 'playing':
                    raise

    def end(self):
        self.process.terminate()
        try:
            self.process.wait(20)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
        shutil.rmtree(self.profile, ignore_errors=True)


class Chromium(Browser):
    name = 'chromium'

    def start(self, width, height, arguments):
        # The browser finds commands at 3 and answers at 4: none of these ends may be there already.
        to_read, from_browser = (move_up(end) for end in os.pipe())
        to_browser, to_write = (move_up(end) for end in os.pipe())

        def pass_pipes():
            os.dup2(to_browser, 3)
            os.dup2(from_browser, 4)

        self.process = subprocess.Popen(
            ['chromium', '--headless=new', '--no-sandbox', '--remote-debugging-pipe',
             f'--user-data-dir={self.profile}', f'--window-size={width},{height}',
             '--no-first-run', '--disable-background-networking', '--disable-component-update',
             '--use-angle=swiftshader', '--enable-unsafe-swiftshader', '--ignore-gpu-blocklist',
             '--force-device-scale-factor=1', '--hide-scrollbars', *arguments, 'about:blank'],
            preexec_fn=pass_pipes, close_fds=False,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(to_browser)
        os.close(from_browser)
        self.connection = Connection(Pipe(to_read, to_write), self.listen)
        targets = self.connection.call('Target.getTargets')['targetInfos']
        self.target = next(t['targetId'] for t in targets if t['type'] == 'page')
        self.session = self.connection.call('Target.attachToTarget', targetId=self.target,
                                            flatten=True)['sessionId']
        for domain in ('Page', 'Runtime', 'Log', 'Network'):
            self.call(domain + '.enable')
        self.resize(width, height)

    def call(self, method, **params):
        return self.connection.call(method, self.session, **params)

    def listen(self, method, params):
        if method == 'Runtime.consoleAPICalled':
            self.console.append(' '.join(str(a.get('value', a.get('description'))) for a in params['args']))
        elif method == 'Runtime.exceptionThrown':
            details = params['exceptionDetails']
            self.console.append('uncaught: ' + details.get('exception', {}).get('description', details['text']))
        elif method == 'Log.entryAdded':
            self.console.append(params['entry']['text'])

    def resize(self, width, height):
        self.call('Emulation.setDeviceMetricsOverride', width=width, height=height,
                  deviceScaleFactor=1, mobile=False)

    def open(self, url):
        self.call('Page.navigate', url=url)
        self.wait('document.readyState === "complete"')

    def run(self, body):
        """What the function of this body answers; a promise is waited for."""
        result = self.call('Runtime.evaluate', expression=f'(async () => {{ {body} }})()',
                           awaitPromise=True, returnByValue=True, userGesture=True)
        if 'exceptionDetails' in result:
            details = result['exceptionDetails']
            raise BrowserError(details.get('exception', {}).get('description', details['text']))
        return result['result'].get('value')

    def click(self, x, y, count=1):
        for pressed in range(1, count + 1):
            for kind in ('mousePressed', 'mouseReleased'):
                self.call('Input.dispatchMouseEvent', type=kind, x=x, y=y, button='left',
                          clickCount=pressed)

    def move(self, x, y):
        self.call('Input.dispatchMouseEvent', type='mouseMoved', x=x, y=y)

    def press(self, key):
        names = {' ': ('Space', 32), 'Escape': ('Escape', 27), 'ArrowRight': ('ArrowRight', 39),
                 'ArrowLeft': ('ArrowLeft', 37)}
        code, number = names.get(key, ('Key' + key.upper(), ord(key.upper()[0])))
        text = {'text': key} if len(key) == 1 else {}
        self.call('Input.dispatchKeyEvent', type='keyDown', key=key, code=code,
                  windowsVirtualKeyCode=number, **text)
        self.call('Input.dispatchKeyEvent', type='keyUp', key=key, code=code,
                  windowsVirtualKeyCode=number)

    def screenshot(self):
        return base64.b64decode(self.call('Page.captureScreenshot')['data'])

    def close(self):
        try:
            self.connection.call('Browser.close')
        except (BrowserError, OSError, queue.Empty):
            pass
        self.end()


class Firefox(Browser):
    name = 'firefox'

    PREFERENCES = {
        'app.update.auto': False, 'app.normandy.enabled': False, 'toolkit.telemetry.enabled': False,
        'datareporting.policy.dataSubmissionEnabled': False, 'browser.aboutConfig.showWarning': False,
        'network.captive-portal-service.enabled': False, 'network.connectivity-service.enabled': False,
        'browser.shell.checkDefaultBrowser': False, 'browser.safebrowsing.malware.enabled': False,
        'browser.safebrowsing.phishing.enabled': False, 'extensions.update.enabled': False,
        'services.settings.server': 'data:,', 'browser.startup.page': 0, 'webgl.force-enabled': True,
        'full-screen-api.warning.timeout': 0, 'media.hardware-video-decoding.enabled': False,
        'dom.disable_open_during_load': False, 'remote.active-protocols': 1,
        'browser.tabs.unloadOnLowMemory': False, 'layout.css.devPixelsPerPx': '1.0',
        'ui.systemUsesDarkTheme': 1, 'privacy.reduceTimerPrecision': False,
    }

    def start(self, width, height, arguments):
        lines = [f'user_pref({json.dumps(k)}, {json.dumps(v)});' for k, v in self.PREFERENCES.items()]
        with open(os.path.join(self.profile, 'user.js'), 'w', encoding='utf-8') as file:
            file.write('\n'.join(lines))
        environment = dict(os.environ, LIBGL_ALWAYS_SOFTWARE='1', MOZ_DISABLE_CONTENT_SANDBOX='1',
                           HOME=self.profile)
        self.process = subprocess.Popen(
            ['firefox-esr', '--no-remote', '--profile', self.profile, '--remote-debugging-port=0',
             f'--width={width}', f'--height={height}', *arguments, 'about:blank'],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env=environment)
        self.connection = Connection(WebSocket(self._port(), '/session'), self.listen)
        self.call('session.new', capabilities={})
        self.context = self.call('browsingContext.getTree')['contexts'][0]['context']
        self.call('session.subscribe', events=['log.entryAdded'])
        self.resize(width, height)

    # The browser writes where it listens, once it does.
    def _port(self):
        path = os.path.join(self.profile, 'WebDriverBiDiServer.json')
        for _ in range(PATIENCE * 10):
            if self.process.poll() is not None:
                raise BrowserError('Firefox has ended: is there a display?')
            try:
                with open(path, encoding='utf-8') as file:
                    return json.load(file)['ws_port']
            except (OSError, ValueError):
                time.sleep(0.1)
        raise BrowserError('Firefox does not listen')

    def call(self, method, **params):
        return self.connection.call(method, **params)

    def listen(self, method, params):
        if method == 'log.entryAdded':
            kind = 'uncaught: ' if params.get('type') == 'javascript' else ''
            self.console.append(kind + str(params.get('text')))

    def resize(self, width, height):
        self.call('browsingContext.setViewport', context=self.context,
                  viewport={'width': width, 'height': height})

    def open(self, url):
        self.call('browsingContext.navigate', context=self.context, url=url, wait='complete')

    def run(self, body):
        result = self.call('script.evaluate', expression=f'(async () => JSON.stringify(await (async () => {{ {body} }})()))()',
                           target={'context': self.context}, awaitPromise=True, userActivation=True)
        if result['type'] == 'exception':
            raise BrowserError(result['exceptionDetails']['text'])
        text = result['result'].get('value')
        return None if text is None else json.loads(text)

    def _perform(self, kind, actions, **more):
        self.call('input.performActions', context=self.context,
                  actions=[dict(type=kind, id=kind, actions=actions, **more)])

    def click(self, x, y, count=1):
        press = [{'type': 'pointerDown', 'button': 0}, {'type': 'pointerUp', 'button': 0}]
        self._perform('pointer', [{'type': 'pointerMove', 'x': int(x), 'y': int(y)}] + press * count)

    def move(self, x, y):
        self._perform('pointer', [{'type': 'pointerMove', 'x': int(x), 'y': int(y)}])

    def press(self, key):
        value = {'Escape': '\ue00c', 'ArrowRight': '\ue014', 'ArrowLeft': '\ue012'}.get(key, key)
        self._perform('key', [{'type': 'keyDown', 'value': value}, {'type': 'keyUp', 'value': value}])

    def screenshot(self):
        return base64.b64decode(self.call('browsingContext.captureScreenshot', context=self.context)['data'])

    def close(self):
        try:
            self.call('browser.close')
        except (BrowserError, OSError, queue.Empty):
            pass
        self.end()


BROWSERS = {'firefox': Firefox, 'chromium': Chromium}
