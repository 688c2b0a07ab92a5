#!/usr/bin/env python3
"""Serves a folder on this machine, with parts of files where a browser asks for them.

    serve.py FOLDER [PORT]

`Site` is the same for tests, which may make it slow or wrong.
"""
import functools
import http.server
import os
import re
import sys
import threading
import time

TYPES = {'.js': 'text/javascript', '.wasm': 'application/wasm', '.vtt': 'text/vtt', '.webp': 'image/webp',
         '.mp3': 'audio/mpeg', '.json': 'application/json', '.packed': 'application/octet-stream',
         '': 'application/octet-stream'}
PIECE = 8192


class Handler(http.server.SimpleHTTPRequestHandler):
    protocol_version = 'HTTP/1.1'
    extensions_map = {**http.server.SimpleHTTPRequestHandler.extensions_map, **TYPES}

    def __init__(self, site, *arguments):
        self.site = site
        super().__init__(*arguments, directory=site.folder)

    def log_message(self, format, *arguments):
        pass

    def do_GET(self):
        path = self.translate_path(self.path)
        if os.path.isdir(path) or not os.path.exists(path) or self.site.answer(self, path):
            if os.path.isdir(path) and self.path.endswith('/'):
                path = os.path.join(path, 'index.html')
            elif os.path.isdir(path) or not os.path.exists(path):
                self.send_nothing(301 if os.path.isdir(path) else 404)
                return
            else:
                return
        with open(path, 'rb') as file:
            self.send_data(file.read(), self.guess_type(path))

    def send_nothing(self, status):
        self.send_response(status)
        if status == 301:
            self.send_header('Location', self.path + '/')
        self.send_header('Content-Length', '0')
        self.end_headers()

    def send_data(self, data, kind, claimed=None):
        """`claimed`: the size that is said, where it is not the one that is sent."""
        first, last = 0, len(data) - 1
        part = re.fullmatch(r'bytes=(\d+)-(\d*)', self.headers.get('Range', ''))
        if part and self.site.has_ranges:
            first, last = int(part[1]), min(int(part[2] or last), last)
            if first > last:
                self.send_response(416)
                self.send_header('Content-Range', f'bytes */{len(data)}')
                self.send_header('Content-Length', '0')
                self.end_headers()
                return
            self.send_response(206)
            self.send_header('Content-Range', f'bytes {first}-{last}/{len(data)}')
        else:
            self.send_response(200)
        if self.site.has_ranges:
            self.send_header('Accept-Ranges', 'bytes')
        self.send_header('Content-Type', kind)
        self.send_header('Content-Length', str(claimed or last + 1 - first))
        self.send_header('Cache-Control', 'no-cache')
        self.end_headers()
        try:
            self.site.send(self.wfile, data[first:last + 1])
        except OSError:
            self.close_connection = True
        if claimed:
            self.close_connection = True


class Site(http.server.ThreadingHTTPServer):
    """`folder` at http://127.0.0.1:PORT/. `bytes_per_second` is one line that all answers share.
    `answer(handler, path)`, where it is given, answers by itself and says so, or lets the file be
    sent."""
    daemon_threads = True

    def __init__(self, folder, port=0, bytes_per_second=None, has_ranges=True, answer=None):
        self.folder = str(folder)
        self.bytes_per_second, self.has_ranges = bytes_per_second, has_ranges
        self.answer = answer or (lambda handler, path: False)
        self.sent = 0  # bytes of bodies
        self.turn = threading.Lock()
        super().__init__(('127.0.0.1', port), functools.partial(Handler, self))
        threading.Thread(target=self.serve_forever, daemon=True).start()

    @property
    def address(self):
        return f'http://127.0.0.1:{self.server_address[1]}/'

    def handle_error(self, request, client_address):
        pass  # a browser that hangs up

    def send(self, stream, data):
        for first in range(0, len(data), PIECE):
            piece = data[first:first + PIECE]
            if self.bytes_per_second:
                with self.turn:
                    time.sleep(len(piece) / self.bytes_per_second)
            stream.write(piece)
            self.sent += len(piece)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.shutdown()
        self.server_close()


def main():
    if len(sys.argv) not in (2, 3) or not os.path.exists(os.path.join(sys.argv[1], 'index.html')):
        sys.exit('usage: serve.py FOLDER [PORT]; FOLDER has an index.html')
    try:
        with Site(sys.argv[1], int(sys.argv[2]) if len(sys.argv) == 3 else 8000) as site:
            print(f'{site.address} - Ctrl-C ends it', flush=True)
            try:
                threading.Event().wait()
            except KeyboardInterrupt:
                print()
    except (OSError, ValueError, OverflowError) as error:
        sys.exit(f'serve.py: {error}')


if __name__ == '__main__':
    main()
