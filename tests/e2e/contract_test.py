#!/usr/bin/env python3
"""What scripts that start the launcher rely on, also with signals at the worst moments and a lack of everything."""

import signal
import subprocess
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
    {"Title": "Not for long", "ExCode": 12, "WaitForFile": "/tmp/never", "Timeout": 2},
)
CANCEL_KEYS = (("key", "Return"), ("key", "space"), ("key", "Escape"), ("key", "ctrl+c"),
               ("key", "--delay", 0, "alt+c"))
FILL = "mount -t tmpfs -o size=4k full {0} && ! cat /dev/zero >{0}/filling 2>/dev/null"


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
            (launcher.state / "etc/zel/zel.cfg").write_text(shipped + f"\n[Toolkit]\nfullscreen = {fullscreen}\n")
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
        for entry in range(2):
            launcher = self.launcher(config(menu_cfg=WAITING))
            launcher.position_file.write_text(str(entry))
            menu_alone = launcher.start()
            for keys in (*CANCEL_KEYS, None):
                launcher.press("Return")
                start = time.monotonic()
                # What moves in the window never stands still.
                wait_until(lambda: self.display.picture() != menu_alone, "the window")
                if keys:
                    self.display.xdotool(*keys)
                    self.display.wait_for(menu_alone)
            if entry == 0:
                self.assertIsNone(launcher.output())
                (launcher.state / "tmp/ready").touch()
            self.expect(launcher, 11 + entry, "\n", str(entry))
            seconds = time.monotonic() - start
            self.assertTrue(entry == 0 or 2.9 < seconds < 4.5, seconds)


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
    def program(self, launcher, name, does):
        file = launcher.state / "run/programs" / name
        file.parent.mkdir(exist_ok=True)
        file.write_text(f"#!/bin/sh\n{does}\n")
        file.chmod(0o755)

    def test_a_language_is_that_of_menu_programs_and_console_until_another_is_chosen(self):
        launcher = self.launcher({"rescue-menu": (ROOT / "data/rescue-menu").read_text()})
        (launcher.state / "etc/sysconfig").mkdir()
        for name, text in (("etc/sysconfig/i18n", "# own\nLANG = it\nSYSFONT=x\nLANGUAGE=y\n"),
                           ("run/cmdline", "quiet zel.lang=zh_CN\n"), ("run/choices", "language ja\nlanguage *\n")):
            (launcher.state / name).write_text(text)
        zel = ("[ $1 ] && exit\ncat /etc/sysconfig/*; echo $LANG\n"
               "read -r choice && echo $choice >/root/output.txt || kill -KILL $PPID")
        for name, does in (("zel", zel), ("stty", ""), ("loadkeys", "echo $*"), ("setfont", "echo $*")):
            self.program(launcher, name, does)
        launcher.launch(before="mount --bind /run/cmdline /proc/cmdline; mount --bind /run/programs /usr/local/sbin\n"
                               "sh /etc/zel/rescue-menu </run/choices; exec sh /etc/zel/rescue-menu </dev/null")
        font = "Uni2-Fixed16"
        menus = [("us", "LANG=cn\nLANG=zh_CN.UTF-8"), ("jp106", "LANG=ja_JP.UTF-8"), *[("us", "LANG=en_US.UTF-8")] * 2]
        self.assertEqual(launcher.end()[3], "".join(
            f"{keys}\n{font}\n# own\nLANGUAGE=y\n{lang}\nSYSFONT={font}\nKEYTABLE={keys}\n{lang[-11:]}\n" for keys, lang in menus))

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
            for name, does in (("zel", zel), ("shell", "echo a shell; kill -KILL $PPID"), ("stty", "")):
                self.program(launcher, name, does)
            launcher.launch(before=f"mount --bind /run/programs /usr/local/sbin; {before}\n"
                                   "SHELL=/run/programs/shell exec sh /etc/zel/rescue-menu")
            stdout = f"There is no menu: {reason}.\nType 'exit' to get back to the menu.\na shell\n"
            self.assertEqual(launcher.end()[::3], (-signal.SIGKILL, stdout))


if __name__ == "__main__":
    need_sandbox()
    unittest.main()
