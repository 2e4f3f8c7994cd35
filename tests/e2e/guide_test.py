"""The guide and the manual: their examples are without mistakes, their pictures current, their pages readable."""

import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

from harness import BUILD, ROOT

GUIDE = ROOT / "docs/guide"
TREES = sorted(path.parent for path in GUIDE.glob("examples/*/menu.cfg"))
PAGES = [ROOT / "README.md", *ROOT.glob("docs/*.md"), *GUIDE.glob("*.md")]
MANUAL = sorted((ROOT / "man").iterdir())
PROGRAMS = {"PATH": f"{BUILD}/bin:{ROOT}/startup:/usr/bin:/bin"}
# What programs read is in files of these names, by the section that an example begins with.
FILES = {"MENU_CONFIGURATION": "menu.cfg", "Toolkit": "zel.cfg", "desktop": "hints.txt"}


def run(*command, cwd=None):
    ran = subprocess.run(command, check=False, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, env=PROGRAMS, cwd=cwd)
    return ran.returncode, ran.stdout


class GuideTest(unittest.TestCase):
    def setUp(self):
        self.place = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))

    def check(self, tree):
        self.assertEqual(run("zel-check", "--strict", tree), (0, ""), tree)

    def blocks(self, kind):
        for page in PAGES:
            yield from re.findall(rf"^```{kind}\n(.*?)^```$", page.read_text(), re.MULTILINE | re.DOTALL)

    def test_the_examples_have_no_mistakes_and_the_pages_quote_them(self):
        for part in ("data", "live/config/includes.chroot/etc/zel"):
            shutil.copytree(ROOT / part, self.place / "live", dirs_exist_ok=True)
        for tree in (*TREES, self.place / "live"):
            self.check(tree)
        for name, block in self.blocks(r"\w+ (\S+/\S+)"):
            self.assertIn("\n" + block, "\n" + (GUIDE / "examples" / name).read_text(), name)

    def test_what_the_pages_have_one_type_works(self):
        shutil.copytree(TREES[0], self.place / "mymenu")
        for block in self.blocks("sh run"):
            self.assertEqual(run("bash", "-e", "-c", block, cwd=self.place), (0, ""))

    def test_each_entry_of_the_shipped_menu_has_something_that_does_it_or_is_there_only_with_its_program(self):
        act = (ROOT / "data/rescue-menu").read_text().split("\nact() {")[1].split("\n}")[0]
        menus = {path.name: path.read_text().split("\n[LINE")[1:] for path in (ROOT / "data").glob("*.cfg")}
        conditional = {name for entries in menus.values() for entry in entries if "ShowIfFileExists" in entry
                       for name in re.findall(r"^Submenu = (.*)", entry, re.MULTILINE)}
        for name, entries in menus.items():
            for word in (word for entry in entries if "ShowIfFileExists" not in entry and "Disable" not in entry
                         for word in re.findall(r"^ExString = (\S+)", entry, re.MULTILINE)):
                self.assertTrue(name in conditional or f":{word})" in act or (ROOT / "data/actions" / word).exists(), word)

    def test_the_examples_of_the_manual_are_a_menu_without_mistakes(self):
        shutil.copytree(TREES[0], self.place / "menu")
        for page in MANUAL:
            for block, section in re.findall(r"^\.Bd -literal.*\n(\[(\w+)\](?s:.*?))^\.Ed", page.read_text(), re.MULTILINE):
                if section in FILES:
                    (self.place / "menu" / FILES[section]).write_text(block)
        self.check(self.place / "menu")

    def test_the_tables_have_every_key(self):
        for page, source, pattern, others in (
                ("keys-menu.md", "launcher/menu_keys.h", r'{"(\w+)", MenuKey::', set()),
                ("keys-settings.md", "toolkit/base/settings.cpp", r'(?:Int|Bool|Driver)\("(\w+)"',
                 {"skinPath", "zoom", "looks", "unicode"})):
            listed = re.findall(r"^\| `(\w+)` \|", (GUIDE / page).read_text(), re.MULTILINE)
            self.assertEqual(sorted(listed), sorted({*re.findall(pattern, (ROOT / source).read_text()), *others}))
        ranges = re.findall(r'Int\("(\w+)", \S+ {(\S+), (\d+)}\)', (ROOT / source).read_text())
        self.assertEqual(len(ranges), 10)
        for name, least, most in ranges:
            self.assertRegex((GUIDE / page).read_text(), rf"\| `{name}` \| \S+ \| {least} to {most}\b")

    def test_the_pictures_are_what_their_commands_make(self):
        self.assertEqual(run(GUIDE / "draw", self.place), (0, ""))
        made = sorted(path.name for path in self.place.iterdir())
        self.assertEqual(made, sorted(path.name for path in (GUIDE / "pictures").iterdir()))
        for name in made:
            # Pixels that differ by more than another choice of 255 colours can explain.
            self.assertEqual(run("compare", "-metric", "AE", "-fuzz", "5%", self.place / name, GUIDE / "pictures" / name,
                                 "null:"), (0, "0"), name)

    def test_links_lead_somewhere(self):
        for page in PAGES:
            for link in re.findall(r"\]\(([^)#:]+)(?:#[^)]*)?\)", page.read_text()):
                self.assertTrue((page.parent / link).exists(), f"{page.name}: {link}")

    def test_each_program_of_the_manual_tells_its_options_and_its_version(self):
        version = re.search(r"project\(zel VERSION (\S+)", (ROOT / "CMakeLists.txt").read_text())[1]
        for name in (page.stem for page in MANUAL if page.suffix in (".1", ".8") and page.stem != "rescue-menu"):
            self.assertEqual(run(name, "--version"), (0, f"{name} {version}\n"))
            self.assertRegex("{} {}".format(*run(name, "--help")), f"^0 usage: {name} (?s:.*)--help")

    def test_the_manual_is_clean_and_fits_80_columns(self):
        self.assertEqual(run("mandoc", "-T", "lint", "-W", "warning", *MANUAL), (0, ""))
        for page in MANUAL:
            lines = re.sub(".\b", "", run("mandoc", "-T", "utf8", page)[1]).splitlines()
            self.assertEqual([line for line in lines if len(line) > 80], [], page.name)


if __name__ == "__main__":
    unittest.main()
