#!/usr/bin/env python3
"""The live preview, on its page in a browser, in its window, and beside the launcher."""

import base64
import http.client
import json
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
import urllib.request

from harness import BUILD, ROOT, Display, Launcher, copy_menu, need_sandbox, wait_until

PREVIEW = BUILD / "bin/zel-preview"
CHROMIUM = shutil.which("chromium")


class Browser:
    """A page in Debian's Chromium, without a display, driven through its pipe."""

    def __init__(self, profile, address):
        to_browser, self._out = os.pipe()
        self._in, from_browser = os.pipe()
        # The browser's ends are its descriptors 3 and 4.
        self.process = subprocess.Popen(
            ["sh", "-c", f'exec "$@" 3<&{to_browser} 4>&{from_browser}', "sh", CHROMIUM, "--headless", "--no-sandbox",
             "--disable-gpu", "--remote-debugging-pipe", f"--user-data-dir={profile}"],
            pass_fds=(to_browser, from_browser), stderr=subprocess.DEVNULL)
        os.close(to_browser)
        os.close(from_browser)
        self._received, self._number, self._session = b"", 0, {}
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        self._session = {"sessionId": self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]}
        self.call("Emulation.setDeviceMetricsOverride", width=1300, height=760, deviceScaleFactor=1, mobile=False)
        self.call("Page.navigate", url=address)

    def call(self, method, **parameters):
        self._number += 1
        message = {"id": self._number, "method": method, "params": parameters, **self._session}
        os.write(self._out, json.dumps(message).encode() + b"\0")
        while True:
            while b"\0" not in self._received:
                self._received += os.read(self._in, 1 << 16)
            line, self._received = self._received.split(b"\0", 1)
            answer = json.loads(line)
            if answer.get("id") == self._number:
                return answer["result"]

    def value(self, script):
        return self.call("Runtime.evaluate", expression=script, returnByValue=True)["result"].get("value")

    def press(self, key, code, modifiers=0):
        for kind in ("keyDown", "keyUp"):
            self.call("Input.dispatchKeyEvent", type=kind, key=key, code=key, windowsVirtualKeyCode=code, modifiers=modifiers)

    def click(self, x, y):
        for kind, buttons in (("mouseMoved", 0), ("mousePressed", 1), ("mouseReleased", 0)):
            self.call("Input.dispatchMouseEvent", type=kind, x=x, y=y, button="left", buttons=buttons, clickCount=1)

    def stop(self):
        self.process.kill()
        self.process.wait()
        os.close(self._in)
        os.close(self._out)


def colours(*preview):
    """The pixels of a picture that is made of data/."""
    with tempfile.NamedTemporaryFile(suffix=".png") as file:
        subprocess.check_call([PREVIEW, *preview, "--png", file.name])
        return subprocess.check_output(["/usr/bin/convert", file.name, "-depth", "8", "rgb:-"])


def shown(display, stride=800):
    """The pixels of the upper left part of a screen with 24 bits for each."""
    screen = display.picture()
    rows = b"".join(screen[4 * stride * y:4 * (stride * y + 800)] for y in range(600))
    pixels = bytearray(3 * 800 * 600)
    for channel in range(3):
        pixels[channel::3] = rows[2 - channel::4]
    return bytes(pixels)


def in_16_bits(pixels):
    """As a display with so many has them."""
    return b"".join(((r >> 3) << 11 | (g >> 2) << 5 | b >> 3).to_bytes(2, "little")
                    for r, g, b in zip(pixels[::3], pixels[1::3], pixels[2::3]))


class PreviewTest(unittest.TestCase):
    def setUp(self):
        place = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        self.addCleanup(place.cleanup)
        self.place = pathlib.Path(place.name)
        self.tree = self.place / "menu"
        copy_menu(ROOT / "data", self.tree)

    def start(self, *options, **environment):
        process = subprocess.Popen([PREVIEW, self.tree, *options], stdout=subprocess.PIPE, text=True,
                                   env=dict(os.environ, TMPDIR=str(self.place), **environment))
        self.addCleanup(process.stdout.close)
        self.addCleanup(process.wait)
        self.addCleanup(process.terminate)
        return process

    def edit(self, old, new):
        menu = self.tree / "menu.cfg"
        text = menu.read_text(encoding="utf-8")
        self.assertIn(old, text)
        (self.tree / "new").write_text(text.replace(old, new), encoding="utf-8")
        (self.tree / "new").rename(menu)  # as editors do

    def test_a_picture_is_the_launchers_to_the_pixel(self):
        need_sandbox()
        for depth, bits, seen in ((32, 24, shown), (16, 16, Display.picture)):
            display = Display(depth=bits)
            self.addCleanup(display.stop)
            settings = self.tree / "zel.cfg"
            settings.write_text(re.sub("colorDepth = .*", f"colorDepth = {depth}", settings.read_text()))
            launcher = Launcher(display, self.tree)
            self.addCleanup(launcher.stop)
            launcher.start()
            done = ""
            for keys in ("", "Down Down Return", "Down Down Down", "F1"):
                if keys:
                    launcher.press(*keys.split())
                done += " " + keys
                expected = colours(self.tree, "--keys", done)
                expected = expected if bits == 24 else in_16_bits(expected)
                with self.subTest(depth=depth, keys=done):
                    wait_until(lambda: seen(display) == expected, "the same picture")

    def test_a_window_shows_what_would_be_shown_and_what_was_changed(self):
        display = Display(1024, 800)
        self.addCleanup(display.stop)
        process = self.start(DISPLAY=display.name)

        def expect(*options):
            expected = colours(self.tree, *options)
            wait_until(lambda: shown(display, stride=1024) == expected, options)

        expect()
        display.xdotool("key", "Down", "Down", "Return", "Down")
        expect("--keys", "Down Down Return Down")
        self.edit("Heading = Rescue menu", "Heading = Changed")
        expect("--keys", "Down Down Return Down")
        display.xdotool("mousemove", "700", "730", "click", "1")  # on "From the beginning"
        expect()
        below = display.picture()[4 * 1024 * 600:]
        self.edit("LinesNumber", "NoNumber")
        expect()
        wait_until(lambda: display.picture()[4 * 1024 * 600:] != below, "other findings")
        process.terminate()
        self.assertEqual(process.wait(), 0)
        process = self.start(DISPLAY=display.name)
        expect()
        display.xdotool("search", "--name", "zel-preview", "windowclose")  # nobody asks the window itself
        self.assertEqual(process.wait(timeout=10), 0)
        self.assertEqual(list(self.place.iterdir()), [self.tree])
        without = subprocess.run([PREVIEW, self.tree], env=dict(os.environ, DISPLAY=""), capture_output=True, text=True)
        self.assertEqual(without.returncode, 2)
        self.assertIn("--serve", without.stderr)

    def test_only_its_own_page_is_answered(self):
        port, secret = re.fullmatch(r"http://127\.0\.0\.1:(\d+)(/\w{32}/)\n",
                                    self.start("--serve").stdout.readline()).groups()
        host, ours = f"127.0.0.1:{port}", {"Origin": f"http://127.0.0.1:{port}"}

        def status(method, path, headers=(), body=None):
            connection = http.client.HTTPConnection("127.0.0.1", int(port), timeout=10)
            self.addCleanup(connection.close)
            connection.request(method, path, body, {"Host": host, **dict(headers)})
            return connection.getresponse().status

        for method, path, headers, body, expected in (
                ("GET", secret, {}, None, 200), ("GET", "/", {}, None, 404), ("GET", secret.upper(), {}, None, 404),
                ("GET", secret[:-2] + "/", {}, None, 404), ("GET", secret + "none", {}, None, 404),
                ("GET", secret, {"Host": "menu.example"}, None, 403), ("GET", secret, {"Host": "127.0.0.1:1"}, None, 403),
                ("GET", secret, {"Origin": "http://menu.example"}, None, 403),
                ("GET", secret, {"Sec-Fetch-Site": "cross-site"}, None, 403), ("PUT", secret, {}, None, 405),
                ("POST", secret + "input", {}, "down 84 0 0", 403), ("POST", secret + "input", ours, "down 84 0 0", 204),
                ("POST", secret + "input", ours, "down 9999 -1\nmouse x\nwheel 1e9\n\xff", 204),
                ("POST", secret + "change", ours, "size 99999x99999", 400), ("POST", secret + "change", ours, "depth 7", 400),
                ("POST", secret + "input", {**ours, "Transfer-Encoding": "chunked"}, None, 400),
                ("POST", secret + "input", {**ours, "Content-Length": "9" * 9}, None, 400), ("GET", secret, {}, None, 200)):
            with self.subTest(method=method, path=path, headers=headers, body=body):
                self.assertEqual(status(method, path, headers, body), expected)

    def test_whatever_the_files_are_nothing_crashes_or_hangs(self):
        server = self.start("--serve")
        address = server.stdout.readline().strip()
        picture = self.place / "a.png"
        for name in ("menu.cfg", "zel.cfg", "hints.txt", "skin/zel.skin", "skin/skin.dat", "pic/back800.jpg"):
            file = self.tree / name
            whole = file.read_bytes()
            for put in (lambda: file.write_bytes(random.Random(name).randbytes(100000)), lambda: os.mkfifo(file),
                        lambda: file.symlink_to(file.name), lambda: (file.touch(), os.truncate(file, 3 << 30))):
                file.unlink()
                put()
                result = subprocess.run([PREVIEW, self.tree, "--png", picture], check=False, capture_output=True, timeout=30)
                self.assertIn((result.returncode, result.stderr == b""), ((0, True), (2, False)))
            file.unlink()
            file.write_bytes(whole)
        expected = colours(self.tree)

        def served():
            with urllib.request.urlopen(address + "picture", timeout=10) as answer:
                picture.write_bytes(answer.read())
            return subprocess.check_output(["/usr/bin/convert", picture, "-depth", "8", "rgb:-"])

        wait_until(lambda: served() == expected, "the picture of before")
        self.assertIsNone(server.poll())

    @unittest.skipUnless(CHROMIUM, "there is no chromium")
    def test_the_page_works_as_the_menu_does(self):
        browser = Browser(self.place / "profile", self.start("--serve").stdout.readline().strip())
        self.addCleanup(browser.stop)

        def text():
            return browser.value("document.body.innerText")

        def canvas():
            png = browser.value("document.getElementById('menu').toDataURL()").split(",")[1]
            return subprocess.check_output(["/usr/bin/convert", "-", "-depth", "8", "rgb:-"], input=base64.b64decode(png))

        def expect(*options):
            expected = colours(self.tree, *options)
            wait_until(lambda: canvas() == expected, options)

        wait_until(lambda: browser.value("document.getElementById('menu').dataset.frame"), "a picture")
        expect()
        counting = {colours(self.tree, "--keys", "Return", "--after", str(second)) for second in range(5)}  # machines are slow
        browser.press("Enter", 13)
        wait_until(lambda: canvas() in counting, "the window that waits")
        for place in ((415, 416), (1200, 700)):  # "Cancel", and beside the page's picture
            browser.click(*place)
        expect()
        browser.value("document.getElementById('menu').focus()")
        browser.press("ArrowUp", 38, 2 + 8)  # Ctrl and Shift
        self.assertEqual(browser.value("document.activeElement.id"), "language")
        browser.value("document.getElementById('menu').focus()")
        browser.press("ArrowDown", 40)
        expect("--keys", "Down")
        browser.press("Enter", 13)
        wait_until(lambda: "20\nString\nscan --all --repair=ask\nPosition\n1\n" in text(), "a choice")
        expect("--keys", "Down")
        browser.click(115, 307)  # on "Network", where the page has it
        before = canvas()
        browser.click(115, 307)
        wait_until(lambda: canvas() != before, "another menu")
        self.edit("LinesNumber", "LinesNumbr")
        wait_until(lambda: "did you mean LinesNumber? [unknown-key]" in text(), "a finding")
        self.edit("LinesNumbr", "LinesNumber")
        browser.value("document.getElementById('begin').click()")
        expect()
        start = time.monotonic()
        self.edit("Heading = Rescue menu", "Heading = Changed")
        frame = browser.value("document.getElementById('menu').dataset.frame")
        wait_until(lambda: browser.value("document.getElementById('menu').dataset.frame") != frame, "a change", poll=0.005)
        print(f"a change is seen after {1000 * (time.monotonic() - start):.0f} ms", file=sys.stderr)
        expect()
        for name, value in (("look", "skin/light.skin"), ("look", ""), ("zoom", "1.5"), ("zoom", "")):
            browser.value(f"(e => {{ e.value = '{value}'; e.dispatchEvent(new Event('change')) }})(document.getElementById('{name}'))")
            expect(*((f"--{name}", value) if value else ()))
        skin = pathlib.Path(shutil.copytree(ROOT / "data/skin", self.place / "elsewhere")) / "zel.skin"
        (self.tree / "zel.cfg").write_text(f"[Toolkit]\nskinPath = {skin}\nscreenWidth = 800\nscreenHeight = 600\n")
        expect()
        shutil.copy(skin, self.tree / "skin/new.skin")
        wait_until(lambda: "skin/new.skin" in browser.value("document.getElementById('look').innerText"), "a new look to choose")
        skin.write_bytes((ROOT / "data/skin/light.skin").read_bytes())
        expect()
        shutil.move(self.tree, self.place / "away")
        wait_until(lambda: "No such file" in text(), "that the directory is gone")
        shutil.move(self.place / "away", self.tree)
        wait_until(lambda: "No such file" not in text(), "that it is back")


if __name__ == "__main__":
    unittest.main()
