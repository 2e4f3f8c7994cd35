#!/usr/bin/env python3
"""Waiting for files, and the progress bar."""

import os
import shutil
import time
import unittest

from contract_test import LauncherTest, config, menu
from harness import ROOT, need_sandbox, wait_until

CANCEL_KEYS = (("key", "Return"), ("key", "space"), ("key", "Escape"), ("key", "ctrl+c"),
               ("key", "--delay", 0, "alt+c"))
CANCEL_BUTTON = 400, 328  # a point on it, in the built-in look

WAITING = menu(
    {"Title": "Appears", "ExCode": 11, "WaitForFile": "/tmp/ready"},
    {"Title": "Disappears", "ExCode": 12, "WaitWhileFile": "/tmp/busy"},
    {"Title": "Both", "ExCode": 13, "WaitForFile": "/tmp/ready", "WaitWhileFile": "/tmp/busy"},
    {"Title": "Not for long", "ExCode": 14, "WaitForFile": "/tmp/ready", "Timeout": 2},
    {"Title": "For ages", "ExCode": 15, "WaitForFile": "/tmp/ready", "Timeout": 2**31 - 1},
)


class WaitTest(LauncherTest):

    def start(self, entry, *files):
        """A launcher whose entry of that number, counted from 0, is current, and its picture."""
        launcher = self.launcher(config(menu_cfg=WAITING))
        launcher.position_file.write_text(str(entry))
        self.switch(launcher, *files)
        return launcher, launcher.start()

    def switch(self, launcher, *files):
        """Makes the files that are not there, and removes the others."""
        for file in (launcher.state / "tmp" / name for name in files):
            file.unlink() if file.exists() else file.touch()

    def open_window(self, launcher):
        before = self.display.picture()
        launcher.press("Return")
        # What moves in the window never stands still.
        wait_until(lambda: self.display.picture() != before, "the window")

    def test_what_is_ready_is_chosen_at_once(self):
        for entry, files in ((0, ["ready"]), (2, [])):
            launcher, _ = self.start(entry, *files)
            launcher.press("Return")
            self.expect(launcher, 11 + entry, "\n", str(entry))

    def test_files_end_the_waiting(self):
        for entry, files in ((0, []), (1, ["busy"]), (2, ["ready", "busy"]), (4, [])):
            launcher, _ = self.start(entry, *files)
            self.open_window(launcher)
            self.assertIsNone(launcher.output())
            self.switch(launcher, *(files or ["ready"]))
            self.expect(launcher, 11 + entry, "\n", str(entry))

    def test_the_time_limit_ends_the_waiting(self):
        launcher, _ = self.start(3)
        start = time.monotonic()
        launcher.press("Return")
        self.expect(launcher, 14, "\n", "3")
        seconds = time.monotonic() - start
        self.assertTrue(2.9 < seconds < 4.5, seconds)

    def test_cancelled_waits_leave_the_menu_as_it_was(self):
        for entry in (0, 4):
            launcher, before = self.start(entry)
            for keys in CANCEL_KEYS + CANCEL_KEYS:
                self.open_window(launcher)
                self.display.xdotool(*keys)
                self.display.wait_for(before)
            self.switch(launcher, "ready")
            launcher.press("Return")
            self.expect(launcher, 11 + entry, "\n", str(entry))

    def test_the_cancel_button_works_with_the_mouse(self):
        launcher = self.launcher(config(menu_cfg=WAITING))
        launcher.mouse_server.touch()
        picture = launcher.start()

        def moves():  # again while Allegro still takes the pointer to the middle
            self.display.xdotool("mousemove", *CANCEL_BUTTON)
            return self.display.picture() != picture

        wait_until(moves, "the pointer")
        before = self.display.wait_for_change(picture)
        self.open_window(launcher)
        self.display.xdotool("click", 1)
        self.display.wait_for(before)
        launcher.press("Down", "Return")
        self.expect(launcher, 12, "\n", "1")


class ProgressTest(LauncherTest):

    def start(self):
        launcher = self.launcher()
        (launcher.state / "etc/zel/pic").mkdir()
        shutil.copy(ROOT / "data/pic/progress.bmp", launcher.state / "etc/zel/pic")
        return launcher, launcher.start()

    def report(self, launcher, hide=0, done=0):
        new = launcher.state / "tmp/new"
        new.write_text(f"[Progress]\nStepNumber = 10\nCurrentStep = {done}\n"
                       f"ProgressHide = {hide}\nProgressInterval = 20\n")
        new.rename(launcher.state / "tmp/progress")

    def test_the_bar_appears_fills_and_hides(self):
        launcher, without = self.start()
        seen = [without]
        for done in (0, 3, 10):
            self.report(launcher, done=done)
            seen.append(self.display.wait_for_change(seen[-1]))
        self.report(launcher, done=3)
        self.display.wait_for(seen[2])
        self.report(launcher, done=11)
        self.display.wait_for(seen[3])
        self.report(launcher, hide=1)
        self.display.wait_for(without)

    def test_nonsense_hides_the_bar_and_does_no_harm(self):
        launcher, without = self.start()
        file, other = launcher.state / "tmp/progress", launcher.state / "tmp/other"
        for make in (lambda: os.mkfifo(file), file.mkdir, lambda: file.symlink_to("/dev/zero"),
                     lambda: file.write_bytes(bytes(range(256)) * 9999)):
            self.report(launcher, done=5)
            self.display.wait_for_change(without)
            file.replace(other)
            make()
            self.display.wait_for(without)
            file.rmdir() if file.is_dir() else file.unlink()


if __name__ == "__main__":
    need_sandbox()
    unittest.main()
