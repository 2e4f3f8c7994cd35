"""Runs the real launcher in a sandbox on a virtual screen, and plays the user.

Everything is waited for by looking: at the screen's picture, at the process, at files.
"""

import os
import pathlib
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ.get("ZEL_BUILD", ROOT / "build"))
SANDBOX = ROOT / "tools/sandbox"
SANDBOX_FAILED = 125
SKIPPED = 77  # the exit status that CTest takes for a skipped test

sys.path.insert(0, str(ROOT / "tools/support"))
from virtual_display import Display, wait_until  # noqa: E402


def need_sandbox():
    """Ends a test program as skipped where there can be no sandbox."""
    with tempfile.TemporaryDirectory() as state:
        command = [SANDBOX, "--state", state, "--", "true"]
        if subprocess.run(command, check=False).returncode == SANDBOX_FAILED:
            sys.exit(SKIPPED)


def copy_menu(source, directory):
    """A menu as on a disc with all programs that it knows."""
    shutil.copytree(source, directory, dirs_exist_ok=True)
    for menu in directory.glob("*.cfg"):
        menu.write_text(re.sub(r"ShowIfFileExists = /(usr/)?s?bin/.*\n", "", menu.read_text()))


class Launcher:
    """One launcher with files of its own; `start` it as often as needed.

    `config` is a directory, or a dictionary from file names to texts: the launcher's /etc/zel.
    """

    def __init__(self, display, config):
        self.display = display
        self.state = pathlib.Path(tempfile.mkdtemp(prefix="zel-e2e-"))
        self.output_file = self.state / "root/output.txt"
        self.position_file = self.state / "tmp/menupos.txt"
        for directory in ("etc/zel", "root", "run", "tmp"):
            (self.state / directory).mkdir(parents=True)
        if not isinstance(config, dict):
            copy_menu(config, self.state / "etc/zel")
            config = {}
        for name, text in config.items():
            (self.state / "etc/zel" / name).write_text(text)
        self._process = None

    def start(self, **options):
        """Starts it and answers the finished menu's picture."""
        self.launch(**options)
        return self.display.wait_for_content()

    def launch(self, root=True, before=None):
        """Starts it without waiting for the menu. `before`: commands of a shell that becomes the launcher,
        unless it becomes something else."""
        # Without a search path Allegro finds no program for message boxes and prints its messages.
        options = ["--state", self.state, "--env", "PATH=/nowhere"]
        if not root:
            options.append("--not-root")
        program = [BUILD / "bin/zel"]
        if before:
            shutil.copy(*program, self.state / "run")
            program = ["sh", "-c", f"PATH=/usr/sbin:/usr/bin:/sbin:/bin\n{before}\nPATH=/nowhere exec /run/zel"]
        environment = dict(os.environ, DISPLAY=self.display.name)
        with open(self.state / "stdout", "wb") as out, open(self.state / "stderr", "wb") as err:
            self._process = subprocess.Popen(
                [SANDBOX, *options, "--", *program], env=environment,
                process_group=0, stdin=subprocess.DEVNULL, stdout=out, stderr=err)

    def press(self, *keys):
        # All within one logic tick; what comes within a millisecond Allegro takes for a repeated key.
        self.display.xdotool("key", "--delay", 4, *keys)

    def threads(self):
        """What the system says about each."""
        return [path.read_text() for path in pathlib.Path(f"/proc/{self._process.pid}/task").glob("*/status")]

    def refuse_memory(self):
        """From here on there is no more than it has."""
        resource.prlimit(self._process.pid, resource.RLIMIT_AS, (0, 0))

    def output(self):
        return text_of(self.output_file)

    def end(self):
        """Waits for it and answers what is left: exit status, output, position and what was printed."""
        wait_until(lambda: self._process.poll() is not None, "the end of the launcher")
        wait_until(self.display.is_blank, "a blank screen")
        files = (self.position_file, self.state / "stdout", self.state / "stderr")
        return self._process.returncode, self.output(), *map(text_of, files)

    def stop(self):
        if self._process and self._process.poll() is None:
            os.killpg(self._process.pid, signal.SIGKILL)
            self._process.wait()
        shutil.rmtree(self.state)


def text_of(path):
    return path.read_text() if path.is_file() else None
