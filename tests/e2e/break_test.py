#!/usr/bin/env python3
"""What scripts may rely on however a run ends: signals at the worst moments, and a lack of everything."""

import signal
import subprocess
import unittest

from contract_test import SECOND, LauncherTest, action, config, menu
from harness import ROOT, need_sandbox

FILL = "mount -t tmpfs -o size=4k full {0} && ! cat /dev/zero >{0}/filling 2>/dev/null"


class ScarcityTest(LauncherTest):

    def test_a_choice_that_cannot_be_told_apart_or_written_is_none(self):
        for before, old, position, message in (
                ("mount -o remount,bind,ro /root", "old\n", None, "remove /root/output.txt: Read-only file system"),
                ("mount -o remount,bind,ro /root", None, "1", "write /root/output.txt: Read-only file system"),
                ("mkdir /root/output.txt /tmp/menupos.txt", None, None, "write /root/output.txt: .+"),
                (FILL.format("/root"), None, "1", "write /root/output.txt: No space left on device")):
            launcher = self.launcher()
            if old:
                launcher.output_file.write_text(old)
            launcher.launch(before=before)
            if not old:
                self.display.wait_for_content()
                launcher.press("Down", "Return")
            *left, stderr = launcher.end()
            self.assertEqual(left, [1, old, position, ""])
            self.assertRegex(stderr, f"^zel: cannot {message}\n$")

    def test_a_choice_takes_neither_room_in_tmp_nor_many_descriptors(self):
        for before, position in ((FILL.format("/tmp"), None), ("ulimit -n 6", "1")):
            launcher = self.launcher()
            launcher.start(before=before)
            launcher.press("Down", "Return")
            self.expect(launcher, 12, SECOND, position)

    def test_too_little_memory_ends_it_with_a_message(self):
        files = config(more_cfg=menu(*[action("x" * 1000, 1, "x" * 1000)] * 5000))
        launcher = self.launcher(files)
        launcher.launch(before="ulimit -v 20000")
        self.expect(launcher, 1, stderr="zel: out of memory\n")
        launcher.start()
        launcher.refuse_memory()
        launcher.press("End", "Return")
        self.expect(launcher, 1, stderr="zel: out of memory\n")

    def test_a_display_that_goes_away_ends_it_without_a_choice(self):
        launcher = self.launcher()
        self.addCleanup(self.setUpClass)  # another one for the other tests
        launcher.start()
        self.display.stop(signal.SIGKILL)
        self.assertEqual(launcher.end()[:2], (1, None))


class SignalTest(LauncherTest):
    def setUp(self):
        if subprocess.run(["strace", "-o", "/dev/null", "true"], check=False).returncode != 0:
            self.skipTest("strace may not trace here")

    def launch(self, call, number, name):
        launcher = self.launcher()
        launcher.output_file.write_text("old\n")
        launcher.launch(before=f"exec strace -fo /dev/null -e trace={call} "
                               f"-e inject={call}:signal={name}:when={number} /run/zel")
        return launcher

    def temporary_files(self, launcher):
        return [*launcher.state.glob("*/*.zel-*")]

    def test_before_the_choice_they_win(self):
        for name, number, output in (("KILL", 1, "old\n"), ("KILL", 2, None), ("TERM", 1, None), ("HUP", 2, None)):
            launcher = self.launch("unlink", number, name)
            self.expect(launcher, -signal.Signals["SIG" + name], output)

    def test_after_the_choice_only_a_kill_ends_it_and_leaves_all_or_nothing(self):
        for call, number, output, position in (("fchmod", 1, None, None), ("rename", 1, None, None),
                                               ("fchmod", 2, None, "1"), ("rename", 2, None, "1"),
                                               ("exit_group", 1, SECOND, "1")):
            for name in ("KILL", "TERM", "INT", "HUP"):
                with self.subTest(call=call, number=number, name=name):
                    launcher = self.launch(call, number, name)
                    self.display.wait_for_content()
                    launcher.press("Down", "Return")
                    if name != "KILL":
                        self.expect(launcher, 12, SECOND, "1")
                        self.assertEqual(self.temporary_files(launcher), [])
                        continue
                    self.expect(launcher, -signal.SIGKILL, output, position)
                    self.assertEqual(len(self.temporary_files(launcher)), 0 if output else 1)
                    launcher.start()
                    self.assertEqual(self.temporary_files(launcher), [])
                    launcher.press("Return")
                    launcher.end()


class ScriptTest(LauncherTest):
    def test_it_does_nothing_without_a_new_choice(self):
        menu = "[MENU_CONFIGURATION]\nLinesNumber = {}\n[LINE1]\nTitle = x\n"
        zel = '[ "$1" ] && exec /run/zel $1; echo reboot >/root/output.txt; kill -KILL $$'
        nothing = "/etc/zel/menu.cfg has nothing to choose"
        for text, before, reason in (
                (menu.format(1), "mount -o remount,bind,ro /root", "an earlier choice cannot be removed"),
                (menu.format(0), "", nothing), ("", "rm /etc/zel/menu.cfg", nothing),
                (menu.format("0x1"), "", "the status of zel is 137")):
            launcher = self.launcher({"menu.cfg": text, "rescue-menu": (ROOT / "data/rescue-menu").read_text()})
            launcher.output_file.write_text("poweroff\n")
            programs = launcher.state / "run/programs"
            programs.mkdir()
            for name, does in (("zel", zel), ("shell", "echo a shell; kill -KILL $PPID"), ("stty", "")):
                (programs / name).write_text(f"#!/bin/sh\n{does}\n")
                (programs / name).chmod(0o755)
            launcher.launch(before=f"mount --bind /run/programs /usr/local/sbin; {before}\n"
                                   "SHELL=/run/programs/shell exec sh /etc/zel/rescue-menu")
            stdout = f"There is no menu: {reason}.\nType 'exit' to get back to the menu.\na shell\n"
            self.assertEqual(launcher.end()[::3], (-signal.SIGKILL, stdout))


if __name__ == "__main__":
    need_sandbox()
    unittest.main()
