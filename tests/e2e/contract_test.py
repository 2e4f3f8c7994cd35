#!/usr/bin/env python3
"""What scripts that start the launcher rely on: exit status, result files, start and refusal."""

import unittest

from harness import ROOT, Display, Launcher, need_sandbox

SETTINGS = """[Toolkit]
screenWidth = 800
screenHeight = 600
colorDepth = 16
fullscreen = 1
skinPath = default
"""

SECOND = "second --with=\"two words\"\n"
NOT_ROOT = "You must have root permissions to run this program\n"


def menu(*entries):
    """A menu file; an entry is a dictionary of keys."""
    lines = ["[MENU_CONFIGURATION]", f"LinesNumber = {len(entries)}"]
    for number, entry in enumerate(entries, 1):
        lines += [f"[LINE{number}]", *(f"{key} = {value}" for key, value in entry.items())]
    return "\n".join(lines) + "\n"


def action(title, code, text):
    return {"Title": title, "ExCode": code, "ExString": text}


MAIN = menu(
    action("First", 11, "first"),
    action("Second", 12, SECOND.strip()),
    action("Nothing", 0, "nothing"),
    {"Title": "Beyond", "ExCode": 256 + 14},
    {"Title": "More", "Submenu": "more.cfg"},
)
MORE = menu(
    action("Inner first", 21, "inner first"),
    action("Inner second", 22, "inner second"),
    action("Inner nothing", 0, "inner nothing"),
)


def config(**changes):
    files = {"zel.cfg": SETTINGS, "menu.cfg": MAIN, "more.cfg": MORE}
    return files | {name.replace("_", "."): text for name, text in changes.items()}


class LauncherTest(unittest.TestCase):
    """A screen for all tests of a class, a launcher for each."""

    @classmethod
    def setUpClass(cls):
        cls.display = Display()
        cls.addClassCleanup(cls.display.stop)

    def launcher(self, files=None):
        launcher = Launcher(self.display, files or config())
        self.addCleanup(launcher.stop)
        return launcher

    def expect(self, launcher, status, output, position):
        """The launcher ends by itself and leaves exactly this."""
        self.assertEqual(launcher.wait(), status)
        self.assertEqual(launcher.output(), output)
        self.assertEqual(launcher.position(), position)
        self.assertEqual(launcher.stderr(), "")


class ChoiceTest(LauncherTest):

    def test_a_choice_is_reported_and_the_next_start_goes_back_there(self):
        launcher = self.launcher()
        for keys, status, output, position in (("Down Return", 12, SECOND, "1"),
                                               ("End KP_Enter Down Down Return", 22, "inner second\n", "4,2"),
                                               ("Return", 22, "inner second\n", "4,2"),
                                               ("Down Return", 0, "inner nothing\n", "0"),
                                               ("Return", 11, "first\n", "0"),
                                               ("Down Down Down Return", 14, "\n", "3")):
            launcher.start()
            self.assertIsNone(launcher.output())
            launcher.press(*keys.split())
            self.expect(launcher, status, output, position)

    def test_the_shipped_menu_in_a_window_and_in_full_screen_is_ended_by_a_choice_only(self):
        shipped = (ROOT / "data/zel.cfg").read_text()
        for fullscreen in (0, 1):
            launcher = self.launcher(ROOT / "data")
            launcher.configure({"zel.cfg": shipped + f"\n[Toolkit]\nfullscreen = {fullscreen}\n"})
            launcher.start()
            launcher.press("Escape", "alt+F4")
            launcher.press_and_see("Down")  # seen only once the keys before it have been dealt with
            self.assertIsNone(launcher.output())
            launcher.press("Return")
            self.expect(launcher, 20, "scan --all --repair=ask\n", "1")


class StartTest(LauncherTest):

    def test_a_start_that_fails_says_why_and_chooses_nothing(self):
        no_skin = config(zel_cfg=SETTINGS.replace("= default", "= missing.skin"))
        for options, files, status, stdout, stderr, output in (
                ({"root": False}, config(), 0, "", NOT_ROOT, "earlier\n"),
                ({}, no_skin, 1, "Error: skin description file not found!\n\n", "", None)):
            launcher = self.launcher(files)
            launcher.output_file.write_text("earlier\n")
            launcher.launch(**options)
            self.assertEqual(launcher.wait(), status)
            self.assertEqual((launcher.stdout(), launcher.output(), launcher.position()), (stdout, output, None))
            self.assertIn(stderr, (launcher.stderr(), None))

    def test_the_menu_keeps_no_rights_that_it_does_not_need(self):
        launcher = self.launcher()
        launcher.start()
        for status in launcher.threads():
            self.assertRegex(status, r"(?s)CapEff:\t000000000400000a\n.*NoNewPrivs:\t1\nSeccomp:\t2\n")


if __name__ == "__main__":
    need_sandbox()
    unittest.main()
