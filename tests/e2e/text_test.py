#!/usr/bin/env python3
"""The menu as text, on terminals and pipes, from the start to the choice."""

import fcntl
import os
import pathlib
import pty
import re
import select
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import termios
import unittest

import pyte

from harness import BUILD, ROOT, SANDBOX, SKIPPED, copy_menu, need_sandbox, text_of, wait_until

QUESTION = "or ? for help: "


class TextMenu:
    """A run on a terminal of its own, or between pipes."""

    def __init__(self, state, *options, term="linux", size=(25, 80), letters="C.UTF-8", pipe=None,
                 program=(BUILD / "bin/zel-text",)):
        self.state = pathlib.Path(state)
        self.seen, self.told = b"", 0
        command = [SANDBOX, "--state", state, "--", *program, *options]
        environment = dict(os.environ, TERM=term, LANG="C.UTF-8", LC_CTYPE=letters)
        environment.pop("LC_ALL", None)
        self.master, slave = pty.openpty()
        self.resize(*size)
        self.modes = termios.tcgetattr(slave)
        self.process = subprocess.Popen(
            command, env=environment, stdin=pipe or slave, stdout=slave, stderr=subprocess.PIPE,
            start_new_session=True, preexec_fn=None if pipe else lambda: fcntl.ioctl(0, termios.TIOCSCTTY, 0))
        self.slave = slave

    def resize(self, rows, columns):
        fcntl.ioctl(self.master, termios.TIOCSWINSZ, struct.pack("HHHH", rows, columns, 0, 0))
        self.screen = pyte.Screen(min(columns, 99), min(rows, 99))
        self.screen.reset_mode(pyte.modes.DECAWM)  # it is told sizes that it does not have
        self.stream = pyte.ByteStream(self.screen)

    def read(self):
        while select.select([self.master], [], [], 0.02)[0]:
            data = os.read(self.master, 1 << 16)
            self.seen += data
            self.stream.feed(data)
        return self.seen.decode(errors="replace")

    def type(self, text, until):
        """Answers what comes, up to what ends it: a text, or a condition for a full screen."""
        if text:
            self.read()
            self.told = len(self.seen)
        before = self.told
        os.write(self.master, text.encode("latin-1"))
        done = until if callable(until) else lambda: until in self.seen[before:].decode(errors="replace")
        try:
            wait_until(lambda: self.read() and done(), until)
        except AssertionError:
            raise AssertionError(f"{until} not in {self.seen[before:]!r}\n{self.text()}") from None
        self.told = len(self.seen)
        return self.seen[before:].decode(errors="replace").replace("\r", "")

    def text(self):
        return "\n".join(line.rstrip() for line in self.screen.display)

    def at_cursor(self):
        return self.screen.display[self.screen.cursor.y][self.screen.cursor.x:]

    def on(self, title):
        """Whether the cursor stands on this entry, which is marked."""
        return lambda: self.at_cursor().startswith(title) and self.screen.display[self.screen.cursor.y][0] == ">"

    def end(self):
        wait_until(lambda: self.read() is not None and self.process.poll() is not None, "the end")
        assert termios.tcgetattr(self.slave) == self.modes
        message = self.process.stderr.read().decode()
        self.process.stderr.close()
        os.close(self.master)
        os.close(self.slave)
        return self.process.returncode, text_of(self.state / "root/output.txt"), message


class TextTest(unittest.TestCase):
    def setUp(self):
        self.state = pathlib.Path(tempfile.mkdtemp(prefix="zel-text-"))
        self.addCleanup(shutil.rmtree, self.state)
        copy_menu(ROOT / "data", self.state / "etc/zel")
        shutil.copytree(BUILD / "locale", self.state / "usr/local/share/locale")
        (self.state / "tmp").mkdir()
        (self.state / "etc/sysconfig").mkdir()

    def start(self, *options, **how):
        menu = TextMenu(self.state, *options, **how)
        self.addCleanup(lambda: menu.process.poll() is None and os.killpg(menu.process.pid, signal.SIGKILL))
        return menu

    def position(self):
        return text_of(self.state / "tmp/menupos.txt")

    def test_plain_lines_from_the_start_to_the_choice_and_back_to_its_place(self):
        menu = self.start("--plain")
        shown = menu.type("", QUESTION)
        self.assertTrue(shown.startswith("\nRescue menu\nWhat do you want to do?\n>  1  Start the rescue desktop\n"))
        self.assertIn("\n\n   3  Disks and partitions (submenu)\n", shown)
        self.assertIn("  7  Reset the firmware password (not available)\n", shown)
        for answer, said in (("?", "?3 explains entry 3."), ("?3", "Lists, checks, copies"), ("? 13", "no such entry"),
                             ("0", "no such entry"), ("99999999999", "no such entry"), ("7", "not available"),
                             ("\xff\xc0 2", "no such entry"), ("\x03\x1c\x1a\x04", "no such entry"),
                             ("x" * 3000, "no such entry"), (" ", "> "), ("3", "0  Back to the previous menu")):
            self.assertIn(said, menu.type(answer + "\n", QUESTION), answer)
        self.assertIn("\n   1  Start", menu.type("0\n", QUESTION))
        (self.state / "tmp/disks.probing").touch()
        menu.type("2\n", "Enter cancels.")
        menu.type("\n", QUESTION)
        menu.type("2\n", "Enter cancels.")
        (self.state / "tmp/disks.probing").unlink()
        self.assertEqual((*menu.end(), self.position()), (20, "scan --all --repair=ask\n", "", "1"))
        self.assertNotIn(b"\x1b", menu.seen)
        (self.state / "tmp/menupos.txt").write_text("3,2")
        menu = self.start(term="nonesuch")
        self.assertIn("\n>  2  Check a file system\n", menu.type("", QUESTION))
        (self.state / "tmp/progress").write_text("[Progress]\nStepNumber=9\nCurrentStep=4\nProgressHide=0\n")
        self.assertIn("\nProgress: 4/9\n", menu.type("", "4/9\r\nNumber"))

    def test_the_whole_screen_from_the_start_to_the_choice_and_back_to_its_place(self):
        down, up, end = "\x1b[B", "\x1b[A", "\x1b[4~"
        menu = self.start()
        menu.type("", menu.on("Start the rescue desktop"))
        menu.type("\r\r\r" + down, menu.on("Scan"))  # held from before: chooses nothing
        menu.type(down + "\r\r\r", menu.on("Back to the previous menu"))
        menu.type(" ", menu.on("Disks and partitions"))
        self.assertRegex(menu.text(), r"^Rescue menu\nWhat do you .* 3/12\n  Start(.|\n)*\nLists, checks, copies")
        menu.type("?", lambda: menu.text().startswith("Arrow keys") and "Letters" in menu.text())
        menu.type("q", menu.on("Disks"))
        for size in ((12, 40), (1, 1), (65000, 65000), (2, 9), (9, 20), (25, 80)):
            menu.resize(*size)
            menu.type("", menu.on("Disks" if size[0] > 1 else ""))
        menu.resize(12, 40)
        menu.type("sC", menu.on("Scan"))
        menu.type("\t" + end, lambda: "\nreport.\n" in menu.text())
        menu.type("\t" + up, menu.on("Start"))
        for step, cancel in enumerate("\x03\x1b c", 3):
            menu.type("\r", lambda: "Please wait" in menu.text() and menu.at_cursor().startswith("Cancel ]"))
            (self.state / "tmp/progress").write_text(f"[Progress]\nStepNumber=9\nCurrentStep={step}\nProgressHide=0\n")
            menu.type("", lambda: re.search(rf"\n\[#+\.+] {step}/9\n", menu.text()))
            menu.type(cancel + down, menu.on("Scan"))
            menu.type(up, menu.on("Start"))
        # As terminals of other kinds send them.
        for key, entry in (("\x1b[8~", "Switch the computer off"), ("\x1b[7~", "Start"), ("\x1b[B", "Scan")):
            menu.type(key, menu.on(entry))
        menu.type("\x03\x1c\x1a\x04\x13" + end, menu.on("Switch the computer off"))
        menu.type(up, menu.on("Restart"))
        os.write(menu.master, b"\r")
        self.assertEqual((*menu.end(), self.position()), (80, "reboot\n", "", "13"))
        menu = self.start()
        menu.type("", menu.on("Restart"))

    def test_one_entry_at_a_time_for_those_who_listen_or_read_with_their_fingers(self):
        menu = self.start("--speak")

        def tells(line, below):
            """The cursor stands before a line, which a braille display shows, and has another one below it."""
            def is_told():
                return (menu.at_cursor().rstrip() == line and menu.screen.cursor.x == 0 and
                        "".join(menu.screen.display[menu.screen.cursor.y + 1:]).startswith(below))
            return is_told

        shown = menu.type("", tells("Start the rescue desktop, 1 of 12", "Starts the graphical"))
        self.assertTrue(shown.startswith("\nRescue menu\nWhat do you want to do?\nF1 or ?: help\n"), shown)
        (self.state / "tmp/disks.probing").touch()
        firmware = "Reset the firmware password, not available, 7 of 12"
        scan = "Scan the disks for damage, 2 of 12"
        for keys, line, below in (("\x1b[B", scan, "Looks at every disk"), ("\x1b[6~\x1b[B", firmware, ""),
                                  (" ", firmware, ""), ("\x1b[4~", "Switch the computer off, 12 of 12", "Switch"),
                                  ("\x1b", "Switch the computer off, 12 of 12", "Switch"),
                                  ("n\x1b[5~", "Start the rescue desktop, 1 of 12", "Starts"),
                                  ("?", "Arrow keys, Page Up, Page Down, Home, End: move", "Enter or Space: choose"),
                                  ("\x1b[1~\x1b[B\x1b[A\x0e", scan, "Looks at every disk"),
                                  ("\r", "Please wait. Looking for disks...", "Enter cancels."),
                                  ("\x1b[Bc", scan, "Looks at every disk"), ("\t", scan, "Looks at every disk")):
            menu.type(keys, tells(line, below))
        self.assertEqual(menu.text().count("Looks at every disk"), 1)
        (self.state / "tmp/progress").write_text("[Progress]\nStepNumber=9\nCurrentStep=4\nProgressHide=0\n")
        menu.type("", "Progress: 4/9")
        menu.type("\r", tells("Please wait. Looking for disks...", "Enter cancels."))
        (self.state / "tmp/disks.probing").unlink()
        self.assertEqual((*menu.end(), self.position()), (20, "scan --all --repair=ask\n", "", "1"))
        (self.state / "etc/sysconfig/i18n").write_text("LANG=ja\n")
        (self.state / "tmp/menupos.txt").write_text("3,0")
        menu = self.start("--speak", size=(4, 20))
        menu.type("", tells("前のメニューに戻る,", "6件中1件目"))

    def test_the_script_does_what_is_chosen_also_without_graphics(self):
        programs = self.state / "run/programs"
        programs.mkdir(parents=True)
        shutil.copy(BUILD / "bin/zel-text", programs)
        (self.state / "etc/zel/menu.cfg").write_text(
            "[MENU_CONFIGURATION]\nLinesNumber=2\n[LINE1]\nTitle=Nothing\nExCode=9\n"
            "[LINE2]\nTitle=Something\nExCode=7\nExString=echo so be it\n")
        for tty, name, term in (("/dev/tty1", "", "linux"), ("/dev/ttyS0", ".ttyS0", "vt220")):
            for file, does in (("tty", f"echo {tty}"), ("zel", "exit 0"), ("echo", '/bin/echo "$@" on $TERM')):
                (programs / file).write_text(f"#!/bin/sh\n{does}\n")
                (programs / file).chmod(0o755)
            menu = self.start(term="linux", program=(
                "sh", "-c", "mount --bind /run/programs /usr/local/sbin; exec sh /etc/zel/rescue-menu"))
            menu.type("", "Something")
            menu.type("\x1b[4~", "Something")
            menu.type("\r", f"so be it on {term}\r\n\r\nPress Enter")
            self.assertEqual(text_of(self.state / f"root/output{name}.txt"), "echo so be it\n")
            self.assertEqual(text_of(self.state / f"tmp/menupos{name}.txt"), "1")
            menu.type("\n", "Something")
            os.killpg(menu.process.pid, signal.SIGKILL)

    def test_a_default_is_chosen_by_itself_until_a_key_comes_or_a_choice_was_made(self):
        file = self.state / "etc/zel/menu.cfg"
        file.write_text(file.read_text().replace("LinesN", "Default = 11\nDefaultTimeout = 2\nLinesN", 1))
        for options in (), ("--plain",), ("--speak",):
            menu = self.start(*options)
            menu.type("", "Open a shell starts in 2 s.")
            self.assertEqual((*menu.end(), self.position()), (40, "shell\n", "", "9"))
            menu = self.start()
            menu.type("", menu.on("Open a shell"))
            self.assertNotIn("stops it", menu.text())
            (self.state / "tmp/menupos.txt").unlink()
        menu = self.start()
        menu.type("", "starts in")
        menu.type("x", lambda: "stops it" not in menu.text())

    def test_letters_that_a_terminal_lacks_come_as_near_as_they_can(self):
        for language, letters, title in (("de", "C", "Rettungsmenue\nWas moechten Sie tun?"),
                                        ("de", "C.UTF-8", "Rettungsmenü\nWas möchten Sie tun?"),
                                        ("ru", "C", "Menyu vosstanovleniya\nChto vy khotite sdelat'?"),
                                        ("ja", "C", "Rescue menu\nWhat do you want to do?"),
                                        ("ja", "C.UTF-8", "レスキューメニュー\n何をしますか？"),
                                        ("ru", "C.UTF-8", "Меню восстановления\nЧто вы хотите сделать?")):
            (self.state / "etc/sysconfig/i18n").write_text(f"LANG={language}\n")
            self.assertIn(f"\n{title}\n", self.start("--plain", letters=letters).type("", ":"))

    def test_an_end_from_outside_is_no_choice(self):
        gone = "zel-text: the terminal or the input has ended\n"
        for options, name, status in (((), "TERM", -signal.SIGTERM), (("--plain",), "HUP", -signal.SIGHUP)):
            menu = self.start(*options)
            menu.type("", "Start")
            os.write(menu.master, b"\x13")  # stops what is shown
            pid = wait_until(lambda: subprocess.run(["pgrep", "-s", str(menu.process.pid), "-x", "zel-text"],
                                                    capture_output=True, text=True).stdout, "the program")
            os.kill(int(pid), signal.Signals["SIG" + name])
            self.assertEqual(menu.end(), (status, None, ""))
        menu = self.start()
        menu.type("", menu.on("Start"))
        for _ in range(50):
            os.write(menu.master, b"\x1bB\xff\x1b[\x1bB" * 40)
            menu.read()
        os.close(menu.master)
        os.close(menu.slave)
        self.assertIn(menu.process.wait(), (1, -signal.SIGHUP))
        menu.process.stderr.close()
        self.assertIsNone(text_of(self.state / "root/output.txt"))
        for typed, left in ((b"", (1, None, gone)), (b"?\n8", (1, None, gone)), (b"3\r\n0\n8\n", (40, "shell\n", ""))):
            with tempfile.TemporaryFile() as file:
                file.write(typed)
                file.seek(0)
                self.assertEqual(self.start(pipe=file).end(), left)


if __name__ == "__main__":
    if not (BUILD / "bin/zel-text").exists():
        sys.exit(SKIPPED)
    need_sandbox()
    unittest.main()
