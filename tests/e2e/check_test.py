"""The checker of menu trees: silent about good ones, and each mistake named once, in its place.

The trees are copies of `checked`; `mistakes.txt` says what is changed in them, and what is said of it.
"""

import base64
import json
import os
import pathlib
import random
import re
import shutil
import struct
import subprocess
import tempfile
import unittest

from harness import BUILD, ROOT, copy_menu

HERE = pathlib.Path(__file__).parent
READY = "/tmp/services.ready"  # what the first item of data/ waits for
MAN = (ROOT / "man/zel-check.1").read_text(encoding="utf-8")


def picture(width, height, shade=0xE0):
    rows = bytes([shade]) * ((3 * width + 3) // 4 * 4 * height)
    return b"BM" + struct.pack("<IIIIiiHHIIiiII", 54 + len(rows), 0, 54, 40, width, height, 1, 24, *[0] * 6) + rows


def datafile(**pictures):
    """A datafile of grey pictures in 24 bits, as Allegro's tools write them."""
    data = b"slh.ALL." + struct.pack(">I", len(pictures))
    for name, (width, height) in pictures.items():
        content = struct.pack(">hHH", 24, width, height) + b"\xE0" * (3 * width * height)
        data += b"propNAME" + struct.pack(">I", len(name)) + name.encode()
        data += b"BMP " + struct.pack(">ii", len(content), len(content)) + content
    return data


def check(tree, *options):
    result = subprocess.run([BUILD / "bin/zel-check", *options, "."], check=False, capture_output=True, cwd=tree,
                            timeout=60)
    return result.returncode, result.stdout.decode()


def as_bytes(lines):
    """Lines of a table, in which \\xE4 is a byte, {N*TEXT} is a text N times, and \\s a blank at the end."""
    text = re.sub(r"\{(\d+)\*([^}]*)\}", lambda match: int(match[1]) * match[2], "\n".join(lines))
    return re.sub(rb"\\x(..)", lambda match: bytes.fromhex(match[1].decode()), text.encode())


class CheckTest(unittest.TestCase):

    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.tree, self.shipped = (pathlib.Path(place.name) / name for name in ("menu", "shipped"))
        copy_menu(ROOT / "data", self.shipped)

    def make_tree(self):
        shutil.rmtree(self.tree, ignore_errors=True)
        shutil.copytree(HERE / "checked", self.tree)
        shutil.copy(ROOT / "data/skin/fonts/DejaVuSans.ttf", self.tree / "skin/sans.ttf")
        for name, size in {"icons/disk.bmp": (22, 22), "icons/desktop.bmp": (22, 22), "icons/large.bmp": (22, 90),
                           "icons/large@2x.bmp": (44, 90), "actions/wipe": (1, 1),
                           "wide.bmp": (800, 600), "small.bmp": (640, 480), "large.bmp": (700, 700), "pic/progress.bmp": (8, 20)}.items():
            (self.tree / name).parent.mkdir(exist_ok=True)
            (self.tree / name).write_bytes(picture(*size))
        (self.tree / "skin/skin.dat").write_bytes(datafile(BUTTON=(24, 104), LIST=(64, 208)))
        (self.tree / "skin/shapes.dat").write_bytes(datafile(MOUSE_MOVE=(16, 16)))
        (self.tree / "skin/odd.dat").write_bytes(datafile(BUTTON=(24, 101), LIST=(64, 208), BUTON=(30, 100)))
        (self.tree / "skin/odd@2x.dat").write_bytes(datafile(BUTTON=(24, 101), LIST=(64, 208)))

    def plant(self, file, lines):
        """Makes the change that lines with - and + describe. Answers the new text, for its place."""
        path = self.tree / file
        old, new = (as_bytes([line[2:] for line in lines if line[0] == sign]) for sign in "-+")
        text = path.read_bytes() if path.exists() else b""
        self.assertEqual(text.count(old + b"\n") if old else 1, 1, f"{file}: {old}")
        path.write_bytes(text.replace(old + b"\n", new + b"\n" if new else b"", 1) if old else new + b"\n")
        return new

    def line_of(self, file, text):
        return (b"\n" + (self.tree / file).read_bytes()).split(b"\n" + text + b"\n")[0].count(b"\n") + 1 if text else 1

    def test_each_mistake_is_named_once_in_its_place(self):
        table = (HERE / "mistakes.txt").read_text(encoding="utf-8")
        for group in table.split("\n## ")[1:]:
            self.make_tree()
            places = []
            for mistake in group.split("\n\n")[1:]:
                file, *lines = mistake.strip("\n").split("\n")
                new = self.plant(file, lines)
                for line in lines:
                    mark, _, message = line.partition(" ")
                    if mark[0] == "!":
                        places.append((file, new, int(mark[1:] or 1) - 1, message))
                    elif mark == "@":
                        other, text, message = message.split(" | ")
                        places.append((other, as_bytes([text]), 0, message))
            expected = sorted(f"{file}:{self.line_of(file, text) + below}: {message}"
                              for file, text, below, message in places)
            with self.subTest(group=group.split("\n")[0]):
                self.maxDiff = None
                self.assertEqual(sorted(check(self.tree)[1].splitlines()), expected)

    def test_nothing_is_said_about_good_trees(self):
        self.make_tree()
        self.assertEqual(check(self.tree, "--strict"), (0, ""))
        self.assertEqual(check(self.tree, "--json"), (0, "[]\n"))
        self.assertEqual(check(ROOT / "data", "--strict"), (0, ""))

    def test_editors_and_scripts_are_told_too(self):
        self.make_tree()
        self.plant("menu.cfg", ["- Title = Restart", '+ Title = "Re\\start"'])
        self.assertEqual([check(self.tree, *options)[0] for options in ((), ("--strict",))], [0, 1])
        status, text = check(self.tree, "--json")
        self.assertEqual((status, json.loads(text)), (0, [{
            "file": "menu.cfg", "line": 92, "severity": "warning", "name": "quotes",
            "message": "the quotes around Re\\start are part of the value", "advice": "remove them"}]))
        self.plant("menu.cfg", ["- ExCode = 10", "+ ExCode = 256"])
        self.assertEqual(check(self.tree)[0], 2)

    def test_the_manual_explains_each_message(self):
        def explain(*name):
            return subprocess.check_output([BUILD / "bin/zel-check", "--explain", *name], text=True).strip()

        names = explain().split()
        self.assertEqual(names, re.findall(r"^\.It Cm (\S+)$", MAN, re.MULTILINE))
        for name in names:
            self.assertEqual(explain(name), MAN.split(f".It Cm {name}\n")[1].split("\n.")[0])

    def preview(self, *options):
        with tempfile.NamedTemporaryFile() as picture:
            subprocess.check_call([BUILD / "bin/zel-preview", self.shipped, "--png", picture.name, *options])
            return pathlib.Path(picture.name).read_bytes()

    def test_a_preview_has_what_it_is_asked_for(self):
        wait = ("--keys", "Return")
        options = [(), ("--lang", "de"), ("--lang", "ja"), ("--progress", "3/12"), ("--look", "skin/light.skin"), wait,
                   (*wait, "--after", "3"), ("--select", "3,2"), ("--keys", "F1")]
        seen = [self.preview(*each) for each in options]
        self.assertEqual(len(set(seen)), len(seen))
        self.assertEqual(self.preview("--keys", "Down Down Return Down Down"), seen[7])
        self.assertEqual(self.preview("--assume", READY, *wait), seen[0])  # as it was when that was chosen

    def test_a_contact_sheet_has_every_menu_and_stays_when_it_is_sent(self):
        (self.shipped / "raid.cfg").unlink()  # the menu is empty then
        sheet = [BUILD / "bin/zel-preview", self.shipped, "--all", self.tree, "--size", "320x240", "--lang", "fr"]
        result = subprocess.run(sheet, check=False, capture_output=True, text=True)
        self.assertEqual((result.returncode, result.stderr), (2, "zel-preview: raid.cfg: there is no such file\n"))
        page = (self.tree / "index.html").read_text(encoding="utf-8")
        menus = re.findall(r"<h2>(\w+)\.cfg <span>(.*)</span>", page)
        self.assertEqual(len(menus), len(list((ROOT / "data").glob("*.cfg"))) - 1)  # zel.cfg is none
        self.assertIn("where there is /usr/local/sbin/unlock, which is missing", page)
        self.assertIn(("menu", "Que voulez-vous faire\xa0?"), menus)
        for name, _ in menus:
            picture = base64.b64encode((self.tree / f"{name}-320x240-fr.png").read_bytes()).decode()
            self.assertEqual(page.count(f'"data:image/png;base64,{picture}"'), 1, name)
        (self.shipped / "zel.cfg").write_text("[Toolkit]\n", encoding="utf-16")
        result = subprocess.run(sheet, check=False, capture_output=True, text=True)
        self.assertEqual((result.returncode, result.stderr), (2, f"zel-preview: {self.shipped}/zel.cfg: has zero bytes and is no text\n"))

    def test_a_wrong_command_line_says_what_is_wrong_with_it(self):
        picture_of = ("zel-preview", ROOT / "data", "--png", "/none/a.png")
        for program, *options, complaint in (
                ("zel-check", "--explain", "octla", "did you mean octal?"), ("zel-check", "/none", "/none: No such file"),
                ("zel-check", "a", "b", "b: one directory only"), ("zel-check", "--strikt", "'--strikt'"),
                ("zel-preview", "--size", "0x9", "--size 0x9: "), ("zel-preview", "--depth", "7", "--depth 7: "),
                ("zel-preview", "--zoom", "9", "--zoom 9: "), ("zel-preview", "--keys", "Dwon", "--keys: there is no key Dwon"),
                ("zel-preview", "--lang", "xx", "--lang xx: "), ("zel-preview", "--progress", "4/3", "--progress 4/3: "),
                ("zel-preview", "--select", "3,,2", "--select 3,,2: "), ("zel-preview", "--after", "3s", "--after 3s: "), ("zel-preview", "--serve= 80", "--serve= 80: "),
                ("zel-preview", ROOT / "data", "--select", "9,1", "--png", "a", "--select 9: entry 9 of menu.cfg opens no menu"),
                ("zel-preview", ROOT / "data", "--look", "menu.cfg", "--png", "a", "menu.cfg: is no description of a skin"),
                ("zel-preview", ROOT / "data", "--all", "/dev/null/x", "--all /dev/null/x: "),
                ("zel-preview", "--serve", "65536", "--serve=65536: "), ("zel-preview", "--png", "a", "--serve", "only one goes"), ("zel-preview", "--png", "a.JPG", "--png a.JPG: "), (*picture_of, "--png /none/a.png: "),
                ("zel-preview", "--look=", "--look: names no"), ("zel-preview", "--assume", "a", "--assume-missing", "a", "one file, a: "),
                ("zel-preview", "/none", "--png", "a", "/none: No such file"), ("zel-preview", "/", "--all", "/", "--all /: holds"),
                ("zel-preview", ROOT / "po", "--png", "a", "po/menu.cfg: there is no such file"),
                ("zel-gallery", "--page", "none", "--page none: "), ("zel-gallery", "--depth", "x", "--depth x: "),
                ("zel-gallery", "--png", "/none/a", "--skin", "/none/b", "/none/b: "), ("zel-gallery", "x", "x: "),
                ("zel-skin", "paint", "paint: "), ("zel-skin", "unpack", "a", "unpack: DIR is missing"),
                ("zel-skin", "pack", "a", "b", "b: one too many"), ("zel-skin", "unpack", "a", "b", "--to", "c", "--to: not for"),
                ("zel-skin", "pack", "/none", "/none/skin.ini: there is no such file"), ("zel-skin", "--too", "'--too'"),
                ("zel-skin", "new", "/none/a", "--ground", "1,2", "--ground 1,2: "), ("zel-skin", "new", "a", "--size", "7", "--size 7: "),
                ("zel-skin", "new", "a", "--from", "/none", "--from /none: "), ("zel-skin", "new", "a", "--font", "/none", "--font /none: "),
                ("zel-skin", "new", "a", "--from", ROOT / "data/menu.cfg", "menu.cfg: is no description of a skin"),
                ("zel-skin", "sheet", ROOT / "data/menu.cfg", "--png", "a", "menu.cfg: is no description of a skin"),
                ("zel-skin", "new", ROOT, "is there already"), ("zel-skin", "sheet", "a", "--png is missing"),
                ("zel-skin", "sheet", "/dev", "--png", "a", "/dev: is no file"),
                ("zel-skin", "sheet", ROOT / "data/skin/zel.skin", "--png", "/none/a", "--png /none/a: ")):
            result = subprocess.run([BUILD / "bin" / program, *options], check=False, capture_output=True, text=True)
            self.assertEqual((result.returncode, result.stdout), (2, ""), (program, *options))
            self.assertIn(complaint, result.stderr)

    def test_files_that_are_none_neither_crash_nor_hang_it(self):
        self.make_tree()
        for name, special in {"menu.cfg": os.mkfifo, "hints.txt": os.mkdir, "skin/sans.ttf": os.mkfifo,
                              "skin/skin.dat": lambda path: path.symlink_to(path.name), "zel.cfg": os.mkfifo}.items():
            path = self.tree / name
            path.unlink()
            special(path)
            self.assertEqual(check(self.tree)[0], 2, name)
        self.make_tree()
        for name in ("menu.cfg", "tools.cfg", "hints.txt", "zel.cfg", "skin/plain.skin", "skin/skin.dat", "wide.bmp"):
            (self.tree / name).write_bytes(random.Random(name).randbytes(100000).replace(b"\0", b"[L"))
            self.assertEqual(check(self.tree)[0], 2, name)

    def test_what_others_may_write_is_not_safe(self):
        self.make_tree()
        (self.tree / "icons/disk.bmp").chmod(0o666)
        (self.tree / "skin").chmod(0o777)
        advice = "warning: other users may write to {0}; take the right from them: chmod o-w {0} [writable]"
        self.assertEqual(sorted(check(self.tree)[1].splitlines()),
                         [f"{name}:1: {advice.format(name)}" for name in ("icons/disk.bmp", "skin")])


if __name__ == "__main__":
    unittest.main()
