#!/usr/bin/env python3
"""Tries `orvo view --serve`: what it answers, and to whom.

    serve_test.py TOOL EXAMPLES
"""

import http.client
import json
import os
import re
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from urllib.parse import quote, urlsplit

TOOL, EXAMPLES = Path(sys.argv[1]).resolve(), Path(sys.argv[2])
HOSTILE = "a<img src=x onerror=alert(1)>&\"'.orvo"


class Server:
    """The tool at work in a folder, until the end of the block."""

    def __init__(self, *words):
        self.process = subprocess.Popen([TOOL, "view", "--serve", *map(str, words)], stdout=subprocess.PIPE, text=True)
        self.address = self.process.stdout.readline().strip()
        self.parts = urlsplit(self.address)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGINT)
        self.process.wait(20)
        self.process.stdout.close()

    def ask(self, *what, **how):
        """The status, the headers and the text of an answer."""
        status, headers, content = self.fetch(*what, **how)
        return status, headers, content.decode()

    def fetch(self, what="", method="GET", secret=None, **headers):
        """The same, with its bytes."""
        connection = http.client.HTTPConnection(self.parts.hostname, self.parts.port, timeout=20)
        try:
            connection.request(method, (secret or self.parts.path) + what, headers=headers)
            answer = connection.getresponse()
            return answer.status, answer.headers, answer.read()
        finally:
            connection.close()


class Serve(unittest.TestCase):
    def setUp(self):
        self.folder = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        shutil.copy(EXAMPLES / "music/music.orvo", self.folder / "music.orvo")
        (self.folder / "below").mkdir()
        shutil.copy(EXAMPLES / "picture/picture.orvo", self.folder / "below" / HOSTILE)
        (self.folder / "broken.orvo").write_text("<score>")
        (self.folder / "secret.txt").write_text("secret")

    def test_a_file_is_a_page_that_watches_itself(self):
        with Server(self.folder / "music.orvo") as server:
            status, headers, page = server.ask()
            self.assertEqual(status, 200)
            self.assertIn("<title>music.orvo</title>", page)
            self.assertIn("connect-src 'self'", page)
            self.assertEqual(headers["Cache-Control"], "no-store")
            picture = json.loads(re.search(r'id="picture">(.*?)</script>', page, re.DOTALL).group(1))
            self.assertEqual(picture["watch"], "state?file=music.orvo")
            before = server.ask(picture["watch"])[2]
            self.assertEqual(server.ask(picture["watch"])[2], before)
            os.utime(self.folder / "music.orvo", (1, 1))
            self.assertNotEqual(server.ask(picture["watch"])[2], before)

    def test_media_are_handed_out_as_the_page_names_them(self):
        shutil.copytree(EXAMPLES / "music/media", self.folder / "media")
        wave = (self.folder / "media/drum-loop.wav").read_bytes()
        with Server(self.folder, "--audio", "link") as server:
            self.assertEqual(server.fetch("media?file=music.orvo&number=0")[0], 404, "before its page")
            page = server.ask("session?file=music.orvo")[2]
            picture = json.loads(re.search(r'id="picture">(.*?)</script>', page, re.DOTALL).group(1))
            address = next(media["sound"] for media in picture["media"] if media["path"].endswith("drum-loop.wav"))
            status, headers, content = server.fetch(address)
            self.assertEqual((status, content), (200, wave))
            self.assertEqual(headers["X-Content-Type-Options"], "nosniff")
            status, _, content = server.fetch(address, Range="bytes=10-19")
            self.assertEqual((status, content), (206, wave[10:20]))
            for what in ("media?file=music.orvo&number=99", "media?file=music.orvo&number=..%2Fsecret.txt",
                         "media?file=music.orvo&number=", "media?file=secret.txt&number=0", "media?number=0", "media"):
                status, _, content = server.fetch(what)
                self.assertEqual(status, 404, what)
                self.assertNotIn(b"secret", content)
            (self.folder / "media/drum-loop.wav").unlink()
            self.assertEqual(server.fetch(address)[0], 404)

    def test_without_audio_no_media_are_handed_out(self):
        shutil.copytree(EXAMPLES / "music/media", self.folder / "media")
        with Server(self.folder) as server:
            self.assertIn('"audio":false', server.ask("session?file=music.orvo")[2])
            self.assertEqual(server.fetch("media?file=music.orvo&number=0")[0], 404)

    def test_a_folder_is_a_gallery(self):
        with Server(self.folder) as server:
            status, headers, gallery = server.ask()
            self.assertEqual(status, 200)
            self.assertIn("default-src 'none'", headers["Content-Security-Policy"])
            self.assertEqual(gallery.count("<li>"), 3)
            self.assertNotIn("<img src=x", gallery)
            self.assertIn("below/a&lt;img", gallery)
            name = quote("below/" + HOSTILE, safe="")
            self.assertIn(f'href="session?file={name}"', gallery)
            status, headers, picture = server.ask("picture?theme=dark&file=" + name)
            self.assertEqual((status, headers["Content-Type"]), (200, "image/svg+xml"))
            self.assertTrue(picture.startswith("<svg "))
            status, _, page = server.ask("session?file=" + name)
            self.assertEqual(status, 200)
            self.assertNotIn("<img src=x", page)
            shutil.copy(EXAMPLES / "music/music.orvo", self.folder / "later.orvo")
            self.assertIn("later.orvo", server.ask()[2])

    def test_a_broken_session_is_excused(self):
        with Server(self.folder) as server:
            status, _, page = server.ask("session?file=broken.orvo")
            self.assertEqual(status, 500)
            self.assertIn("the root element is &lt;score>", page)
            self.assertEqual(server.ask("picture?file=broken.orvo")[0], 500)

    def test_nothing_else_is_served(self):
        with Server(self.folder) as server:
            for what in ("session?file=secret.txt", "session?file=..%2F..%2Fetc%2Fpasswd", "secret.txt", "../secret.txt",
                         "session?file=", "session", "state?file=%2Fetc%2Fpasswd", "picture?file=music.orvo%00"):
                status, _, text = server.ask(what)
                self.assertEqual(status, 404, what)
                self.assertNotIn("secret", text)

    def test_others_are_refused(self):
        with Server(self.folder) as server:
            port = server.parts.port
            self.assertEqual(server.ask(Host="evil.example")[0], 403)
            self.assertEqual(server.ask(Host=f"evil.example:{port}")[0], 403)
            self.assertEqual(server.ask(Host="127.0.0.1")[0], 403)
            self.assertEqual(server.ask(Origin="http://evil.example")[0], 403)
            self.assertEqual(server.ask(Origin="null")[0], 403)
            self.assertEqual(server.ask(Host=f"localhost:{port}", Origin=f"http://127.0.0.1:{port}")[0], 403)
            self.assertEqual(server.ask(Host=f"localhost:{port}", Origin=f"http://localhost:{port}")[0], 200)
            self.assertEqual(server.ask(method="DELETE")[0], 405)
            self.assertEqual(server.ask(secret="/")[0], 404)
            self.assertEqual(server.ask(secret="/" + "0" * 32 + "/")[0], 404)

    def test_only_this_computer_is_listened_to(self):
        with Server(self.folder) as server:
            with self.assertRaises(OSError):
                socket.create_connection(("127.0.0.2", server.parts.port), timeout=5).close()

    def test_each_run_has_a_secret_of_its_own(self):
        with Server(self.folder) as one, Server(self.folder) as other:
            self.assertRegex(one.parts.path, r"^/[0-9a-f]{32}/$")
            self.assertNotEqual(one.parts.path, other.parts.path)

    def test_a_signal_ends_it_well(self):
        for ending in (signal.SIGINT, signal.SIGTERM):
            with Server(self.folder) as server:
                server.ask()
                server.process.send_signal(ending)
                self.assertEqual(server.process.wait(20), 0)

    def test_a_port_in_use_is_reported(self):
        with Server(self.folder) as server:
            port = str(server.parts.port)
            run = subprocess.run([TOOL, "view", "--serve", self.folder, "--port", port], capture_output=True, text=True, timeout=20)
            self.assertEqual((run.returncode, run.stdout), (1, ""))
            self.assertIn(f"port {port} is not free", run.stderr)

    def test_what_cannot_be_served_is_said(self):
        for words, code, text in ((["none.orvo"], 1, "there is no such file or folder"),
                                  (["music.orvo", "-o", "a.html"], 2, "--serve saves nothing"),
                                  (["music.orvo", "music.orvo"], 2, "one file or folder is served"),
                                  (["-"], 2, "one file or folder is served"),
                                  (["music.orvo", "--audio", "embed"], 2, "a server hands the media out")):
            run = subprocess.run([TOOL, "view", "--serve", *words], capture_output=True, text=True, timeout=20, cwd=self.folder)
            self.assertEqual(run.returncode, code, words)
            self.assertIn(text, run.stderr)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
