#!/usr/bin/env python3
"""Waiting for files."""

import time
import unittest

from contract_test import LauncherTest, config, menu
from harness import need_sandbox, wait_until

CANCEL_KEYS = (("key", "Return"), ("key", "space"), ("key", "Escape"), ("key", "ctrl+c"),
               ("key", "--delay", 0, "alt+c"))

WAITING = menu(
    {"Title": "Appears", "ExCode": 11, "WaitForFile": "/tmp/ready"},
    {"Title": "Disappears", "ExCode": 12, "WaitWhileFile": "/tmp/busy"},
    {"Title": "Not for long", "ExCode": 13, "WaitForFile": "/tmp/never", "Timeout": 2},
    {"Title": "For ages", "ExCode": 14, "WaitForFile": "/tmp/ready", "Timeout": 2**31 - 1},
)


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
