"""A virtual screen whose picture is read from outside, for programs that look at what others show."""

import os
import pathlib
import signal
import struct
import subprocess
import tempfile
import time

PATIENCE = 10.0  # seconds until a wait counts as failed
POLL = 0.02
STANDSTILL = 0.1  # seconds without a change after which a picture counts as complete


def wait_until(condition, what, patience=PATIENCE, poll=POLL):
    """Answers the condition's first true value."""
    end = time.monotonic() + patience
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"waited in vain: {what}")
        time.sleep(poll)


class Display:
    """A virtual screen. Its picture is read from the file that the server draws into."""

    def __init__(self, width=800, height=600, depth=24):
        self._memory = tempfile.TemporaryDirectory()
        screen = f"{width}x{height}x{depth}"
        self._server = subprocess.Popen(
            ["Xvfb", "-displayfd", "1", "-noreset", "-nolisten", "tcp",
             "-fbdir", self._memory.name, "-screen", "0", screen],
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        number = self._server.stdout.readline().decode().strip()
        if not number:
            raise AssertionError(f"Xvfb does not start with a screen of {screen}")
        self.name = ":" + number
        self.file = pathlib.Path(self._memory.name) / "Xvfb_screen0"
        header = struct.unpack(">25I", self.file.read_bytes()[:100])
        header_size, colours = header[0], header[19]
        self.start = header_size + 12 * colours

    def picture(self):
        """The pixels as bytes; equal when the same is seen."""
        return self.file.read_bytes()[self.start:]

    def is_blank(self):
        """Nothing is shown, or only the server's own pointer."""
        if self._server.poll() is not None:
            return True
        picture = self.picture()
        return len(picture) - picture.count(0) < len(picture) / 100

    def wait_for_change(self, before):
        """Answers the first complete picture that differs from an earlier one."""
        return self._wait_for_picture(lambda: self.picture() != before, "a change on the screen")

    def wait_for_content(self, standstill=STANDSTILL):
        """Answers the first complete picture that is not blank."""
        return self._wait_for_picture(lambda: not self.is_blank(), "something on the screen", standstill)

    def wait_for(self, picture):
        """Waits until exactly this is seen."""
        wait_until(lambda: self.picture() == picture, "an earlier picture")

    def _wait_for_picture(self, condition, what, standstill=STANDSTILL):
        def complete():
            if not condition():
                return None
            picture = self.picture()
            time.sleep(standstill)
            return picture if picture == self.picture() else None
        return wait_until(complete, what)

    def xdotool(self, *arguments):
        environment = dict(os.environ, DISPLAY=self.name)
        subprocess.run(["xdotool", *map(str, arguments)], env=environment, check=True)

    def stop(self, how=signal.SIGTERM):
        self._server.send_signal(how)
        self._server.wait()
        self._server.stdout.close()
        self._memory.cleanup()
