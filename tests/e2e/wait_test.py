#!/usr/bin/env python3
"""Waiting for files, and the progress bar."""

import shutil
import time
import unittest

from contract_test import LauncherTest, config, menu
from harness import ROOT, need_sandbox, wait_until

CANCEL_KEYS = (("key", "Return"), ("key", "space"), ("key", "Escape"), ("key", "ctrl+c"),
               ("key", "--delay", 0, "alt+c"))

WAITING = menu(
    {"Title": "Appears", "ExCode": 11, "WaitForFile": "/tmp/ready"},
    {"Title": "Disappears", "ExCode": 12, "WaitWhileFile": "/tmp/busy"},
    {"Title": "Not for long", "ExCode": 13, "WaitForFile": "/tmp/never", "Timeout": 2},
    {"Title": "For ages", "ExCode": 14, "WaitForFile": "/tmp/ready", "Timeout": 2**31 - 1},
)


class WaitTest(LauncherTest):

    def start(self, entry):
        """A launcher whose entry of that number, counted from 0, is current, and its picture."""
        launcher = self.launcher(config(menu_cfg=WAITING))
        launcher.position_file.write_text(str(entry))
        self.ready, self.busy = (launcher.state / "tmp" / name for name in ("ready", "busy"))
        self.busy.touch()
        return launcher, launcher.start()

    def open_window(self, launcher):
        before = self.display.picture()
        launcher.press("Return")
        # What moves in the window never stands still.
        wait_until(lambda: self.display.picture() != before, "the window")

    def test_files_and_time_end_the_waiting(self):
        for entry in range(4):
            launcher, _ = self.start(entry)
            start = time.monotonic()
            self.open_window(launcher)
            if entry != 2:
                self.assertIsNone(launcher.output())
                self.ready.touch()
                self.busy.unlink()
            self.expect(launcher, 11 + entry, "\n", str(entry))
            seconds = time.monotonic() - start
            self.assertTrue(entry != 2 or 2.9 < seconds < 4.5, seconds)

    def test_cancelled_waits_leave_the_menu_as_it_was(self):
        for entry in (0, 3):
            launcher, before = self.start(entry)
            for keys in CANCEL_KEYS + CANCEL_KEYS:
                self.open_window(launcher)
                self.display.xdotool(*keys)
                self.display.wait_for(before)
            self.ready.touch()
            launcher.press("Return")
            self.expect(launcher, 11 + entry, "\n", str(entry))


class ProgressTest(LauncherTest):

    def test_the_bar_appears_fills_and_hides(self):
        launcher = self.launcher()
        (launcher.state / "etc/zel/pic").mkdir()
        shutil.copy(ROOT / "data/pic/progress.bmp", launcher.state / "etc/zel/pic")
        seen = [launcher.start()]
        for done, hide in ((0, 0), (3, 0), (10, 0), (0, 1)):
            new = launcher.state / "tmp/new"
            new.write_text(f"[Progress]\nStepNumber = 10\nCurrentStep = {done}\n"
                           f"ProgressHide = {hide}\nProgressInterval = 20\n")
            new.rename(launcher.state / "tmp/progress")
            seen.append(self.display.wait_for_change(seen[-1]))
        self.assertEqual(seen[-1], seen[0])


if __name__ == "__main__":
    need_sandbox()
    unittest.main()
