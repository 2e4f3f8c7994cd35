#!/usr/bin/env python3
"""What scripts that start the launcher rely on: exit status, result files, start, refusal, waiting."""

import time
import unittest

from harness import ROOT, Display, Launcher, need_sandbox, wait_until

SETTINGS = """[Toolkit]
screenWidth = 800
screenHeight = 600
colorDepth = 16
fullscreen = 1
skinPath = default
"""

SECOND = "second --with=\"two words\"\n"


def menu(*entries):
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
WAITING = menu(
    {"Title": "Appears", "ExCode": 11, "WaitForFile": "/tmp/ready"},
    {"Title": "Disappears", "ExCode": 12, "WaitWhileFile": "/tmp/busy"},
    {"Title": "Not for long", "ExCode": 13, "WaitForFile": "/tmp/never", "Timeout": 2},
    {"Title": "For ages", "ExCode": 14, "WaitForFile": "/tmp/ready", "Timeout": 2**31 - 1},
)
CANCEL_KEYS = (("key", "Return"), ("key", "space"), ("key", "Escape"), ("key", "ctrl+c"),
               ("key", "--delay", 0, "alt+c"))


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

    def expect(self, launcher, status, output=None, position=None, stdout="", stderr=""):
        """The launcher ends by itself and leaves exactly this."""
        self.assertEqual(launcher.end(), (status, output, position, stdout, stderr))


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
            before = self.display.picture()
            launcher.press("Down")
            self.display.wait_for_change(before)  # only once the keys before it have been dealt with
            self.assertIsNone(launcher.output())
            launcher.press("Return")
            self.expect(launcher, 20, "scan --all --repair=ask\n", "1")


class StartTest(LauncherTest):

    def test_a_start_that_fails_says_why_and_chooses_nothing(self):
        no_skin = config(zel_cfg=SETTINGS.replace("= default", "= missing.skin"))
        for root, files, status, output, stdout, stderr in (
                (False, config(), 0, "earlier\n", "", "You must have root permissions to run this program\n"),
                (True, no_skin, 1, None, "Error: skin description file not found!\n\n", "")):
            launcher = self.launcher(files)
            launcher.output_file.write_text("earlier\n")
            launcher.launch(root=root)
            self.expect(launcher, status, output, None, stdout, stderr)

    def test_the_menu_keeps_no_rights_that_it_does_not_need(self):
        launcher = self.launcher()
        launcher.start()
        for status in launcher.threads():
            self.assertRegex(status, r"(?s)CapEff:\t000000000400000a\n.*NoNewPrivs:\t1\nSeccomp:\t2\n")


class WaitTest(LauncherTest):

    def test_keys_cancel_it_and_files_and_time_end_it(self):
        for entry in range(4):
            launcher = self.launcher(config(menu_cfg=WAITING))
            launcher.position_file.write_text(str(entry))
            (launcher.state / "tmp/busy").touch()
            menu_alone = launcher.start()
            for keys in (*CANCEL_KEYS, None):
                launcher.press("Return")
                start = time.monotonic()
                # What moves in the window never stands still.
                wait_until(lambda: self.display.picture() != menu_alone, "the window")
                if keys:
                    self.display.xdotool(*keys)
                    self.display.wait_for(menu_alone)
            if entry != 2:
                self.assertIsNone(launcher.output())
                (launcher.state / "tmp/ready").touch()
                (launcher.state / "tmp/busy").unlink()
            self.expect(launcher, 11 + entry, "\n", str(entry))
            seconds = time.monotonic() - start
            self.assertTrue(entry != 2 or 2.9 < seconds < 4.5, seconds)


if __name__ == "__main__":
    need_sandbox()
    unittest.main()
