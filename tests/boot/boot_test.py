#!/usr/bin/env python3
"""The rescue image as a person meets it: on the console of a machine that was started from it."""

import gettext
import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "image"))
from machine import IMAGE, ROOT, Machine, Recording, wait_until  # noqa: E402

BLACK = (0, 0, 0)
USABLE = "text characters kernel lines\n"
SCREEN = "/dev/vcs1"  # the text on the first console
HARMLESS = {3, 17, 18, 19, 20, 21, 22, 23, 28}  # signals that end no process, and one that the shell ignores

# The second item of data/menu.cfg.
SCAN = "scan --all --repair=ask\n"

# Places in the layouts of data/menu.cfg: the hint panel's empty end, and the background alone.
PLACES = {(640, 480): ((500, 400), (4, 470)),
          (800, 600): ((620, 500), (4, 590)),
          (1024, 768): ((790, 640), (4, 758)),
          (1280, 800): ((1000, 660), (4, 790)),
          (1280, 1024): ((992, 820), (4, 1014)),
          (1920, 1080): ((1500, 900), (4, 1070))}
BAR_ROW, BAR_LEFT, BAR_RIGHT = 554, 52, 740  # of the progress bar at 800 x 600
# Colours of the shipped look.
PANEL, UNFILLED = (30, 37, 49), (62, 73, 92)


def is_panel(picture, x, y, color=PANEL):
    """As modes of 16 bits and of 256 colours have it."""
    return all(abs(seen - meant) < 9 for seen, meant in zip(picture.at(x, y), color))


def shows_menu(picture):
    """The panels are drawn last, over a background that is not black."""
    hint, background = PLACES.get(picture.size, ((0, 0), (0, 0)))
    return is_panel(picture, *hint) and picture.at(*background) != BLACK


class MachineTest(unittest.TestCase):
    def boot(self, **options):
        self.doCleanups()  # one at a time
        self.machine = Machine(**options)
        self.addCleanup(self.machine.stop)

    def menu(self, command="zel", shows=shows_menu):
        self.machine.run("cat /dev/zero >/dev/fb0")  # away with an earlier picture
        self.machine.launch(command)
        return self.machine.see(shows, "the menu")

    def expect(self, status, output, position):
        """The program ends by itself, leaves exactly this, and the console as it should be."""
        self.assertEqual(wait_until(lambda: self.machine.read("/tmp/test/status"), "the end"), f"{status}\n")
        self.assertEqual(self.machine.read("/root/output.txt"), output)
        self.assertEqual(self.machine.read("/tmp/menupos.txt"), position)
        self.assertEqual(self.machine.run("/test/console_state"), USABLE)

    def choose_second(self):
        self.machine.press("home", "down", "ret")
        self.expect(20, SCAN, "1")

    def click_second(self, before, way, bar):
        """Once the mouse's server runs. `way`: from the corner to the entry."""
        self.machine.run("touch /var/run/gpm.pid")
        self.machine.see(lambda picture: picture != before, "the pointer")
        self.machine.do(*["mouse_move -100 -100"] * 10)
        self.machine.see(lambda picture: picture.at(1, 3) != before.at(1, 3), "the pointer in the corner")
        self.machine.do(f"mouse_move {way}")
        self.machine.see(lambda picture: picture.at(1, 3) == before.at(1, 3), "the pointer on its way")
        self.machine.do("mouse_button 1", "mouse_button 0")
        self.machine.see(lambda picture: not is_panel(picture, *bar), "the second entry's bar")
        self.machine.press("ret")
        self.expect(20, SCAN, "1")


class ModeTest(MachineTest):
    """The menu in every mode of the framebuffer, with the settings that the start-up script makes."""

    def check(self, size, colours, meanwhile="true", **options):
        self.boot(**options)
        picture = self.menu("/etc/zel/rescue-menu")
        self.assertEqual(picture.size, size)
        self.assertGreater(picture.colours(), colours)
        self.machine.press_and_see("down")
        self.machine.press("ret")
        self.machine.read_until(SCREEN, "There is no disk.")
        self.machine.read_until(SCREEN, "Press Enter to get back to the menu.")
        self.assertEqual(self.machine.run("/test/console_state"), USABLE)
        wait_until(lambda: self.machine.look().colours() == 2, "the text console's colours")
        self.machine.run(meanwhile)
        self.machine.press("ret")
        self.machine.see(shows_menu, "the menu again")

    def test_sizes_and_depths(self):
        modes = ("0x301 0x311 0x312 0x342", "0x303 0x314 0x315 0x343", "0x305 0x317 0x318 0x344",
                 "0x37a", "0x307", "0x392")
        for size, numbers in zip(PLACES, modes):
            for vga, colours in zip(numbers.split(), (40, 300, 300, 300)):
                with self.subTest(vga=vga):
                    self.check(size, colours, vga=vga)

    def test_a_processor_of_1999(self):
        self.check((640, 480), 300, vga="0x311", program="qemu-system-i386", cpu="pentium3")

    def test_a_driver_takes_the_screen_over(self):
        for adapter, driver in (("std", "bochs"), ("virtio", "virtio-gpu")):
            with self.subTest(adapter):
                self.boot(vga="0x314", adapter=adapter)
                self.menu()
                self.machine.run(f"modprobe {driver}")
                self.choose_second()
                self.menu("/etc/zel/rescue-menu")
                self.machine.press_and_see("down")

    def test_a_driver_takes_the_screen_over_while_a_program_runs(self):
        # This driver refuses a card that the menu has open.
        self.check((800, 600), 400, "modprobe cirrus", vga="0x314", adapter="cirrus")

    def test_the_mouse_finds_an_entry_when_all_is_zoomed(self):
        self.boot(vga="0x392")  # 1920 x 1080, where each count is 3 pixels
        self.click_second(self.menu(), "133 93", (600, 279))

    def test_without_a_framebuffer_it_explains_and_the_script_shows_the_menu_as_text(self):
        self.boot()
        catalogues, said = IMAGE / "zel/locale", {}
        for name in ("en", *(catalogue.name for catalogue in catalogues.iterdir())):
            self.machine.run(f"echo LANG={name.replace('zh_CN', 'cn')} >/etc/sysconfig/i18n")
            self.machine.launch("LC_ALL=C.UTF-8 zel 2>/tmp/test/said")
            self.expect(0, None, None)
            said[name] = self.machine.read("/tmp/test/said").rstrip()
            translation = gettext.translation("quillon", catalogues, [name], fallback=True)
            self.assertEqual(said[name], translation.gettext(said["en"]))
        self.assertEqual(len(set(said.values())), len(said))
        self.machine.run("rm /etc/sysconfig/i18n")
        self.machine.launch("/etc/zel/rescue-menu")
        self.machine.read_until(SCREEN, "> Start the rescue desktop")
        self.machine.press(*["down"] * 7, "ret")
        self.machine.read_until(SCREEN, "to get back to the menu")
        self.machine.press(*"echo", "spc", "a", "spc", "shift-dot", *"sign", "ret")
        self.machine.read_until("/root/sign", "a")


class DiscTest(MachineTest):
    """The disc as it is, from the firmware on."""

    def test_the_disc_starts_by_itself_and_switches_the_machine_off(self):
        self.boot(disc=IMAGE / "zel-rescue.iso")
        menu = self.machine.see(shows_menu, "the menu")
        self.machine.do("mouse_move -100 -100")
        self.machine.see(lambda picture: picture != menu, "the pointer")
        self.machine.press_and_see("end")
        self.machine.press("ret")
        self.assertEqual(self.machine.process.wait(60), 0)

    def test_every_firmware_starts_the_disc_with_the_kernel_for_its_processor(self):
        iso, small = IMAGE / "zel-rescue.iso", {"program": "qemu-system-i386", "cpu": "pentium3"}
        for options, kernel in (({"disc": iso, **small}, "-686"), ({"stick": iso, "uefi": "64"}, "-amd64"),
                                ({"disc": iso, "uefi": "64, Secure Boot"}, "-amd64.*Secure boot enabled"),
                                ({"disc": iso, "uefi": "32"}, "-amd64")):
            with self.subTest(**options):
                self.boot(**options)
                self.machine.see(shows_menu, "the menu")
                self.machine.press("alt-f2")
                wait_until(lambda: self.machine.look().colours() == 2, "the second console")
                self.machine.press("ret")
                self.machine.type("dmesg >/dev/ttyS0\n")
                self.machine.serial.expect(f"(?s)Linux version [^ ]*{kernel}".encode())


class SpeechTest(MachineTest):
    """The menu for people who do not see it."""

    def test_a_letter_at_the_boot_menu_starts_a_menu_that_speaks_after_each_key_and_else_is_silent(self):
        recording = Recording()
        self.boot(stick=f"{IMAGE}/zel-rescue.iso,if=virtio", devices=recording.devices)
        self.machine.see(lambda picture: picture.colours() <= 4 and sum(picture.pixels) > 3e6, "the boot menu")
        self.machine.press("s")
        wait_until(recording.loud, "the first words")
        self.machine.press("end")  # instead of all of them
        heard = recording.listen(recording.loud())
        for key in "up", "down", "end":
            self.machine.press(key)
            heard = recording.listen(heard)

    def test_the_cells_of_a_braille_display_show_the_current_entry(self):
        self.boot(archive=IMAGE / "speech.gz", words="brltty=vr,server:")
        self.machine.run("ifconfig lo up; until netstat -ltn | grep -q :35752; do sleep 1; done")
        self.machine.run("(echo cells 40; while sleep 1; do :; done) | nc 127.0.0.1 35752 >/tmp/cells 2>&1 &")
        self.machine.launch("/etc/zel/rescue-menu")
        for keys, shown in (((), "Start the rescue desktop, 1 of 12"), (["down"], "Scan the disks for damage, 2 of 12"),
                            (["down"], "Disks and partitions, submenu, 3 of 12"),
                            (["ret"], "Back to the previous menu, 1 of 6"), (["end"], "Erase a disk, 6 of 6")):
            self.machine.press(*keys)
            wait_until(lambda: f'Visual "{shown}' in self.machine.run("grep Visual /tmp/cells | tail -n 1"), shown)


class ConsoleTest(MachineTest):
    """One machine for all: what happens on its console, at 800 x 600 in 16 bits."""

    @classmethod
    def setUpClass(cls):
        cls.machine = Machine(vga="0x314")
        cls.addClassCleanup(cls.machine.stop)

    def tearDown(self):
        self.machine.run("chvt 1; kill -KILL $(pidof rescue-menu) $(pidof zel); cp /test/zel.cfg /etc/zel/; "
                         "rm -f /etc/sysconfig/i18n /tmp/menupos.txt /tmp/progress /tmp/services.ready "
                         "/var/run/gpm.pid")
        self.machine.launch("true")
        wait_until(lambda: self.machine.read("/tmp/test/status") == "0\n", "the end of the launcher")

    def test_a_mode_that_the_framebuffer_does_not_have(self):
        for width, height, depth in ((1024, 768, 16), (800, 600, 32), (800, 600, 8), (99999, -1, 0)):
            with self.subTest(width=width, height=height, depth=depth):
                self.machine.run(f"sed -i -e /^zoom/d -e 's/^screenWidth.*/screenWidth = {width}/' -e 's/^screenHeight.*/"
                                 f"screenHeight = {height}/' -e 's/^colorDepth.*/colorDepth = {depth}/' /etc/zel/zel.cfg")
                picture = self.menu(shows=lambda seen: is_panel(seen, 80 + 500, 60 + 400))  # 640 x 480, in the middle
                self.assertEqual([picture.at(*place) for place in ((40, 300), (760, 300), (400, 30))], [BLACK] * 3)
                self.choose_second()

    def test_progress_follows_the_script(self):
        before = self.menu()
        for progress, unfilled in (("1/12", True), ("12/12", False)):
            self.machine.run(f"rescue-progress {progress}")
            self.machine.see(lambda seen: seen.at(BAR_LEFT, BAR_ROW) != before.at(BAR_LEFT, BAR_ROW) and
                             is_panel(seen, BAR_RIGHT, BAR_ROW, UNFILLED) == unfilled, f"progress {progress}")
        self.machine.run("rescue-progress --hide")
        self.machine.see(lambda picture: picture == before, "the menu without progress")
        self.assertEqual(self.machine.run("ls /tmp/progress*"), "/tmp/progress\n")

    def test_the_mouse_works_once_its_server_runs(self):
        before = self.menu()
        # The emulated mouse does not notice what is let go once nobody listens any more, and would keep the button down.
        self.machine.run("while ls -l /proc/[0-9]*/fd 2>/dev/null | grep -q /dev/input/; do usleep 10000; done")
        self.machine.do("mouse_move -300 -100", "mouse_button 1", "mouse_button 0")
        self.assertNotEqual(self.machine.press_and_see("down"), before)
        self.assertEqual(self.machine.press_and_see("up"), before)
        self.click_second(before, "120 123", (400, 154))  # each count is 5/4 pixels

    def test_every_bad_end_leaves_a_usable_console(self):
        for victim, signals in (("head", set(range(1, 65)) - HARMLESS), ("tail", {2, 6, 9, 11, 15})):
            for signal in sorted(signals):
                with self.subTest(victim=victim, signal=signal):
                    self.machine.launch("zel")
                    self.machine.run("until /test/console_state | grep -q 'graphics codes program bytes'; do usleep 10000; done; "
                                     f"kill -{signal} $(pidof zel | tr ' ' '\\n' | sort -n | {victim} -n 1); "
                                     "while pidof zel || ! test -e /tmp/test/status; do usleep 10000; done >/dev/null")
                    self.expect(128 + signal, None, None)

    def test_the_start_after_the_end_of_both_mends_the_console(self):
        self.menu()
        self.machine.run("kill -KILL $(pidof zel)")
        self.menu()
        self.choose_second()

    def test_other_consoles_and_ctrl_alt_del(self):
        before = self.menu()
        self.machine.press("alt-f2")
        wait_until(lambda: self.machine.look().colours() == 2, "the second console")
        self.machine.press("alt-f1")
        self.machine.see(lambda picture: picture == before, "the menu as it was")
        self.machine.press("ctrl-alt-delete", "esc")
        self.choose_second()

    def test_switches_at_every_moment_of_the_start(self):
        self.machine.launch("zel")
        self.machine.run("for k in $(seq 50); do chvt 2; chvt 1; usleep ${k}000; done")
        self.machine.see(shows_menu, "the menu")
        self.choose_second()

    def test_other_standard_inputs(self):
        for device in ("/dev/null", "/dev/console", "/dev/tty0"):
            self.menu(f"zel <{device}")
            self.choose_second()



if __name__ == "__main__":
    unittest.main(verbosity=2)
