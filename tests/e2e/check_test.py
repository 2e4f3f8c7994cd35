"""The checker of menu trees: silent about a good one, plain about each mistake."""

import pathlib
import shutil
import subprocess
import tempfile
import unittest

from harness import BUILD, ROOT

MISTAKES = {
    "zel.cfg": [
        ("colorDepth", "colourDepth", "zel.cfg: [Toolkit] colourDepth: nobody reads this key"),
        ("[Toolkit]", "vsync = 1\n[Toolkit]", "zel.cfg: vsync: nobody reads this key"),
        ("skin/light", "skin/lite", "zel.cfg: [Toolkit] looks: there is no file skin/lite.skin"),
        ("fullscreen = 1", "yield = 1\nYield = 0", "zel.cfg: [Toolkit] Yield: stands there twice; the first counts"),
        ("= skin/zel.skin\n", "= skin/zel.skin\n[Mouse]\nmouseSpeed = 2", "zel.cfg: [Mouse]: nobody reads this section"),
    ],
    "menu.cfg": [
        ("LinesNumber = 16", "LinesNumber = 15", "menu.cfg: [LINE16]: never shown: LinesNumber is 15"),
        ("MenuLeft = 32", "Default = 16\nMenuLeft = 32",
         "menu.cfg: [MENU_CONFIGURATION] Default: no item of this number can be chosen"),
        ("ExCode = 31", "ExCode = 08", 'menu.cfg: [LINE9] ExCode: "08" is no number'),
        ("icons/memory.bmp", "icons/none.bmp", "menu.cfg: [LINE9] Icon: there is no file icons/none.bmp"),
        ("icons/log.bmp", "hints.txt", "menu.cfg: [LINE12] Icon: hints.txt is no readable picture"),
        ("Color = 20,84,40", "Color = 20,84", 'menu.cfg: [LINE11] Color: "20,84" is no colour of the form 255,255,255'),
        ("HintSection = log", "HintSection = lag",
         "menu.cfg: [LINE12] HintSection: hints.de.txt has no text for lag"),
        ("ExCode = 40", "ExCode = 300", "menu.cfg: [LINE11] ExCode: scripts see the exit status 44"),
        ("[LINE14]", "[LINE13]", "menu.cfg: [LINE13]: begins more than once; of each key the first counts"),
        ("MenuWidth = 440", "MenuWidth = 800", "menu.cfg: the menu does not fit a screen of 800 x 600"),
        ("HintWidth = 236", "HintTitle = Help",
         "menu.cfg: [MENU_CONFIGURATION_640x480] HintTitle: nobody reads this key"),
        ("ProgressX = 36", "ProgressX = 4294967356",
         'menu.cfg: [MENU_CONFIGURATION_1024x768] ProgressX: "4294967356" is too large'),
        ("[LINE3]", "[LINE 3]", "menu.cfg: [LINE2] [LINE: is no section head"),
        ("Separator = 1\n\n[LINE8]", "Title.de = Mehr\n\n[LINE8]", "menu.cfg: [LINE7]: not shown in English"),
        ("[LINE10]", "[LINE010]", "menu.cfg: [LINE010]: nobody reads this section"),
    ],
    "raid.cfg": [("Title.ja", "Title.jp", "raid.cfg: [LINE2] Title.ja: is missing in a language that other texts have")],
    "language.cfg": [("中文", "中\u0378文", "language.cfg: [LINE8] Title: the font has no \u0378")],
    "hints.txt": [("[end:log]", "[log]", "hints.txt: [log]: no item shows this text")],
    "disks.cfg": [
        ("Submenu = crypt.cfg", "Submenu = menu.cfg", "disks.cfg: opens menu.cfg, which leads here"),
        ("ExCode = 102\n", "", "disks.cfg: [LINE2]: without ExCode the exit status is 0, as after a failure"),
    ],
}
# A text of many bytes, and a name that each hint file may write in an encoding of its own.
HARMLESS = {file.name: [("mdstat]", "Стан]", None)] for file in (ROOT / "data").glob("hints*")} | {
    "raid.cfg": [("Show their state", "Ж" * 600, None), ("= mdstat", "= Стан", None)],
}


def check(directory):
    result = subprocess.run([BUILD / "bin/zel-check", directory], check=False, capture_output=True, text=True)
    return result.returncode, result.stdout.splitlines()


class CheckTest(unittest.TestCase):

    def check_changed(self, files):
        with tempfile.TemporaryDirectory() as name:
            tree = pathlib.Path(name) / "menu"
            shutil.copytree(ROOT / "data", tree)
            for file, changes in files.items():
                text = (tree / file).read_bytes()
                for old, new, _ in changes:
                    self.assertIn(old.encode(), text)
                    text = text.replace(old.encode(), new.encode())
                (tree / file).write_bytes(text)
            return check(tree)

    def test_nothing_is_said_about_a_good_tree_and_a_missing_one(self):
        self.assertEqual(check("/nonexistent"), (2, []))
        self.assertEqual(check(ROOT / "data"), (0, []))
        self.assertEqual(self.check_changed(HARMLESS), (0, []))

    def test_each_mistake_is_named_once(self):
        status, lines = self.check_changed(MISTAKES)
        self.assertEqual(status, 1)
        for changes in MISTAKES.values():
            for _, _, message in changes:
                self.assertEqual(lines.count(message), 1, message)


if __name__ == "__main__":
    unittest.main()
