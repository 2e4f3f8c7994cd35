#!/usr/bin/env python3
"""The life of the Debian packages in a minimal Debian: installed, upgraded, run, purged, and on a live system.

As root, in a mount namespace of its own: the mounts end with it, however it ends.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "image"))
from machine import IMAGE, ROOT, Machine  # noqa: E402

WORK = ROOT / "build-deb"
EMULATOR = "/usr/bin/qemu-i386-static"  # the kernel may run 64-bit programs only
COLOURS_OF_TEXT = 16
PATIENCE = "120"  # seconds until a program that does not end is killed
UNIT = "rescue-menu.service"
KEPT_BY_DPKG = ("tmp", "var/cache", "var/lib/dpkg", "var/log")

NO_GRAPHICS = "Erfahrene Anwender können versuchen, selbst"  # the user's language and the locale's encoding

# Programs for the menu's script: a launcher that takes one choice after the other, and ends it at last.
PROGRAMS = {
    "zel": "[ $# = 0 ] || exit 0; read -r choice </tmp/choices || kill -KILL $PPID; sed -i 1d /tmp/choices; echo $choice >/root/output.txt",
    "interrupt": "kill -INT $PPID",
    "poweroff": "echo off; false",
    "stty": "",
}
PROMPT = "\nPress Enter to get back to the menu. "


def package(name, architecture):
    return next((ROOT / "build").glob(f"{name}_*_{architecture}.deb"))


def mount(*arguments):
    subprocess.run(["mount", *arguments], check=True)


class System:
    """A Debian that looks like the one below; its changes go to a layer of its own."""

    def __init__(self, below):
        self.directory = pathlib.Path(tempfile.mkdtemp(prefix="system.", dir=WORK))
        self.root, upper, work = (self.directory / name for name in ("root", "upper", "work"))
        for directory in (self.root, upper, work):
            directory.mkdir()
        mount("-t", "overlay", "-o", f"lowerdir={below},upperdir={upper},workdir={work}", "system", self.root)
        mount("-t", "proc", "proc", self.root / "proc")
        mount("--bind", WORK / "archives", self.root / "var/cache/apt/archives")

    def remove(self):
        subprocess.run(["umount", "--recursive", self.root], check=True)
        shutil.rmtree(self.directory)

    def run(self, *command, **variables):
        """Answers the status and what was printed."""
        chroot = ["timeout", "--signal=KILL", PATIENCE, "chroot", self.root]
        ran = subprocess.run([*chroot, *command], env={"PATH": os.environ["PATH"], **variables}, start_new_session=True,
                             encoding="utf-8", stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT, check=False)
        return ran.returncode, ran.stdout

    def do(self, *command):
        status, text = self.run(*command, DEBIAN_FRONTEND="noninteractive")
        assert status == 0, f"{command}: status {status}\n{text}"

    def install(self, path, *options):
        shutil.copy(path, self.root / "tmp/new.deb")
        self.do("dpkg", "--install", "--force-confold", *options, "/tmp/new.deb")

    def files(self):
        """All that is there but dpkg's own memory."""
        found = subprocess.check_output(["find", self.root, "-xdev", "-mindepth", "1", "-printf", r"%P\n"], text=True)
        return {path for path in found.splitlines() if not path.startswith(KEPT_BY_DPKG)}


class PackageTest:
    """Each test has a system of its own, with the package in it."""

    @classmethod
    def setUpClass(cls):
        system = System(WORK / "base")
        cls.addClassCleanup(system.remove)
        shutil.copy(EMULATOR, system.root / "usr/bin")
        cls.package = package("zel", cls.architecture)
        depends = subprocess.check_output(["dpkg-deb", "--field", cls.package, "Depends"], text=True)
        system.do("apt-get", "satisfy", "-qy", "--no-install-recommends",
                  re.sub(r"(^|, )([^ ,\n]+)", rf"\1\2:{cls.architecture}", depends))
        cls.before = system.files()
        system.install(cls.package)
        cls.installed = system.root

    def setUp(self):
        self.system = System(self.installed)
        self.addCleanup(self.system.remove)

    def predecessor(self, *changed):
        """The package as it was called before there was a source package, for i386 alone, with a line more in files."""
        tree = self.system.directory / "predecessor"
        subprocess.run(["dpkg-deb", "--raw-extract", self.package, tree], check=True)
        subprocess.run(["sed", "-i", "s/^Version:.*/Version: 0.1.0+20261126.003652/; s/^Architecture:.*/Architecture: i386/;"
                        "/^Depends:/d", tree / "DEBIAN/control"], check=True)
        subprocess.run(["sed", "-i", "$a # old", *changed], check=True, cwd=tree)
        subprocess.run(["dpkg-deb", "--build", tree], check=True, stdout=subprocess.DEVNULL)
        return f"{tree}.deb"

    def test_it_is_whole_and_its_unit_is_not_enabled(self):
        self.assertEqual(self.system.run("dpkg", "--verify", "zel"), (0, ""))
        self.assertTrue((self.system.root / "usr/lib/systemd/system" / UNIT).is_file())
        self.assertEqual(list((self.system.root / "etc").rglob(UNIT)), [])
        subprocess.check_call([ROOT / "tools/check-hardening", self.system.root / "usr/sbin/zel"])

    def test_an_upgrade_keeps_what_the_user_changed_and_a_purge_what_the_user_made(self):
        settings, hints, own = (self.system.root / "etc/zel" / name for name in ("zel.cfg", "hints.txt", "own.cfg"))
        wants = self.system.root / "etc/systemd/system/multi-user.target.wants"
        self.system.do("dpkg", "--purge", "zel")
        self.system.install(self.predecessor("etc/zel/zel.cfg", "etc/zel/hints.txt"))
        settings.write_text("[Toolkit]\n")
        own.touch()
        wants.mkdir(parents=True, exist_ok=True)
        (wants / UNIT).symlink_to(f"/usr/lib/systemd/system/{UNIT}")
        self.system.install(self.package, "--path-exclude=/usr/share/locale/*")
        self.assertFalse((self.system.root / "usr/local/share/locale/*").exists())
        self.assertEqual(settings.read_text(), "[Toolkit]\n")
        self.assertFalse(hints.read_text().endswith("# old\n"))
        self.assertTrue((wants / UNIT).is_symlink())
        self.system.do("dpkg", "--purge", "zel")
        self.assertEqual(self.system.files() ^ self.before, {"etc/zel", "etc/zel/own.cfg"})

    def test_without_a_framebuffer_it_says_so_in_the_users_language(self):
        (self.system.root / "etc/sysconfig").mkdir()
        (self.system.root / "etc/sysconfig/i18n").write_text("LANG=de\n")
        status, text = self.system.run(*self.launcher, LC_ALL="C.UTF-8")
        self.assertEqual(status, 0)
        self.assertIn(NO_GRAPHICS, text)


class Amd64Test(PackageTest, unittest.TestCase):
    architecture = "amd64"
    launcher = ["zel"]

    def test_a_live_system_shows_the_menu(self):
        self.system.do("apt-get", "install", "-qy", "--no-install-recommends", "systemd-sysv", "kbd")
        self.system.do("systemctl", "enable", UNIT)
        initrd = self.system.directory / "initrd"
        subprocess.check_call(f"ln -s sbin/init init; rm -r var/lib/apt/lists usr/share/doc usr/share/locale; find . -xdev | "
                              f"cpio -o -H newc --quiet >{initrd}", shell=True, cwd=self.system.root)
        kernel = next((IMAGE / "firmware/boot").glob("vmlinuz-*"))
        machine = Machine("0x314", system=(kernel, initrd))
        self.addCleanup(machine.stop)
        machine.see(lambda picture: picture.colours() > COLOURS_OF_TEXT, "the menu")
        machine.press("ret")  # to look for disks, of which there are none
        machine.see(lambda picture: picture.colours() <= COLOURS_OF_TEXT, "the text of a choice")
        machine.press("ret")
        machine.see(lambda picture: picture.colours() > COLOURS_OF_TEXT, "the menu again")

    def test_the_programs_for_authors_run(self):
        self.system.do("apt-get", "install", "-qy", "--no-install-recommends", "liballegro4.4")
        self.system.install(package("zel-tools", "amd64"))
        programs = [self.system.root / "usr/bin" / name for name in ("zel-check", "zel-preview", "zel-gallery", "zel-skin")]
        subprocess.check_call([ROOT / "tools/check-hardening", *programs])
        for command in ("zel-check /etc/zel", "zel-preview /etc/zel --png /tmp/menu.png",
                        "zel-gallery --skin /etc/zel/skin/zel.skin --png /tmp/gallery.png",
                        "zel-skin unpack /etc/zel/skin/zel.skin /tmp/skin", "zel-skin pack /tmp/skin"):
            self.assertEqual(self.system.run(*command.split()), (0, ""), command)
        self.assertEqual(self.system.run("sh", "-c", "head -qc 4 /tmp/*.png | tr -d '\\211'"), (0, "PNG" * 2))

    def test_the_menus_script_survives_its_surroundings(self):
        files = {"sys/class/graphics/fb0/virtual_size": "1280,1024\n", "sys/class/graphics/fb0/bits_per_pixel": "24\n",
                 "etc/sysconfig/i18n": "LANG='de\n", "etc/sysconfig/keyboard": "KEYTABLE=de\n",
                 "etc/zel/own.cfg": "[Other]\na = b\n[Zel]\n\tScreenWidth 640\nskinPath = a\n",
                 "tmp/choices": "interrupt\necho one two\npoweroff\n"}
        files |= {f"usr/local/sbin/{name}": f"#!/bin/sh\n{text}\n" for name, text in PROGRAMS.items()}
        for name, text in files.items():
            file = self.system.root / name
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text(text)
            file.chmod(0o755)
        settings = self.system.root / "etc/zel/zel.cfg"
        settings.unlink()
        settings.symlink_to("own.cfg")
        _, text = self.system.run("/etc/zel/rescue-menu")
        self.assertTrue(text.endswith(f"There is no loadkeys on this disc.\n{PROMPT}one two\n{PROMPT}off\n"), text)
        self.assertTrue(settings.is_symlink())
        self.assertEqual(settings.read_text(), "[Other]\na = b\n[Zel]\nscreenWidth = 1024\nscreenHeight = 768\n"
                                               "colorDepth = 24\nskinPath = a\n")


class ToolkitTest(unittest.TestCase):
    def test_other_programs_can_be_built_with_it(self):
        with tempfile.TemporaryDirectory(dir=WORK) as tree:
            for architecture in ("amd64", "i386"):
                subprocess.check_call(["dpkg-deb", "--extract", package("libzel-toolkit-dev", architecture), tree])
            subprocess.check_call(
                f"c++ -std=c++20 -I{ROOT} {ROOT}/docs/example/scripted.cpp -o {tree}/ask $(PKG_CONFIG_PATH={tree}"
                f"/usr/lib/x86_64-linux-gnu/pkgconfig pkg-config --cflags --libs zel-toolkit) && {tree}/ask s && "
                f"i686-linux-gnu-ld -r --whole-archive {tree}/usr/lib/i386-linux-gnu/*.a -o {tree}/all", shell=True)


class I386Test(PackageTest, unittest.TestCase):
    architecture = "i386"
    launcher = [EMULATOR, "/usr/sbin/zel"]


if __name__ == "__main__":
    unittest.main()
