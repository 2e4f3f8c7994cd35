#!/usr/bin/env python3
"""The live system as a person meets it, from the firmware on: what its entries start, and its end."""

import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "image"))
import machine  # noqa: E402

machine.PATIENCE = 600.0  # a whole system starts, without acceleration


class LiveTest(unittest.TestCase):
    def see(self, is_menu, what):
        self.machine.see(lambda seen: (seen.colours() > 16) == is_menu and seen.size != (720, 400), what)

    def test_each_entry_starts_its_program_whatever_firmware_started_the_disc(self):
        for uefi in (None, "64, Secure Boot"):
            with self.subTest(uefi=uefi), tempfile.NamedTemporaryFile() as disk:
                disk.truncate(64 << 20)
                self.machine = machine.Machine(disc=machine.ROOT / "build-live/zel-live.iso", uefi=uefi, devices=[
                    "-m", "1024", "-drive", f"file={disk.name},format=raw,if=ide"])
                self.addCleanup(self.machine.stop)
                serial = self.machine.serial
                serial.expect(rb"> Recover lost files")  # the same menu as text
                self.see(True, "the menu")
                serial.socket.sendall(b"o")
                serial.expect(rb"> Open a shell")
                serial.socket.sendall(b"\r")
                serial.expect(rb"# $")
                for key, command, back in (("home", "pidof testdisk", ["ret"]), ("down", "grep -a PASSED /dev/vcs1", ["ret"]),
                                           ("down", "pidof Xorg && pidof icewm && pidof xfe", [])):
                    self.machine.press(key, "ret")
                    serial.send(f"until {command}; do sleep 1; done; pkill 'testdisk|icewm-session'; sleep 5; echo =$?=")
                    serial.expect(rb"=0=")
                    self.machine.press(*back)
                    serial.send("until pidof zel; do sleep 1; done; sleep 5; echo =$?=")
                    serial.expect(rb"=0=")
                    self.see(True, "the menu again")
                self.machine.press("end", "ret")
                self.assertEqual(self.machine.process.wait(machine.PATIENCE), 0)


if __name__ == "__main__":
    unittest.main()
