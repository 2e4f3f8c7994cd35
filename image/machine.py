"""A machine under QEMU that was started from the rescue image, and its user: typing, looking, asking."""

import array
import atexit
import functools
import json
import os
import pathlib
import re
import shutil
import socket
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[1]
IMAGE = ROOT / "build-image"
PATIENCE = 120.0  # seconds until a wait counts as failed; there may be no acceleration
POLL = 0.05
SILENCE = 1.5  # seconds without a sound after which speech counts as over
STANDSTILL = 0.3  # seconds without a change after which a picture counts as complete
# The firmware's code and its variables, of Debian's packages ovmf and ovmf-ia32, and whether it protects
# them, which Secure Boot needs.
UEFI = {"64": ("OVMF_CODE_4M.fd", "OVMF_VARS_4M.fd", False),
        "64, Secure Boot": ("OVMF_CODE_4M.ms.fd", "OVMF_VARS_4M.ms.fd", True),
        "32": ("OVMF32_CODE_4M.secboot.fd", "OVMF32_VARS_4M.fd", True)}
KEYS = {" ": "spc", ">": "shift-dot", "/": "slash", "\n": "ret"}  # what QEMU calls other than letters and digits
PICTURES = os.environ.get("ZEL_PICTURES")  # a directory that keeps what was seen


def wait_until(condition, what):
    """Answers the condition's first true value."""
    end = time.monotonic() + PATIENCE
    while not (value := condition()):
        if time.monotonic() > end:
            raise AssertionError(f"waited in vain: {what}")
        time.sleep(POLL)
    return value


@functools.cache
def test_initrd():
    subprocess.run([ROOT / "image/guest/pack"], check=True)
    return IMAGE / "test-initrd.gz"


class Line:
    """A connection to one of QEMU's sockets, read up to what is expected."""

    def __init__(self, path):
        self.socket = socket.socket(socket.AF_UNIX)
        wait_until(lambda: self.socket.connect_ex(str(path)) == 0, f"QEMU's socket {path}")
        self.text = b""

    def send(self, text):
        self.socket.sendall(text.encode() + b"\n")

    def expect(self, pattern):
        """Answers the match of a pattern; what came before it is forgotten."""
        while not (match := re.search(pattern, self.text)):
            self.socket.settimeout(PATIENCE)
            self.text += self.socket.recv(65536) or sys.exit("QEMU ended")
        self.text = self.text[match.end():]
        return match


class Picture:
    """What the screen shows."""

    def __init__(self, ppm):
        header = re.match(rb"P6\s+(\d+)\s+(\d+)\s+255\s", ppm)
        self.ppm, self.pixels, self.size = ppm, ppm[header.end():], (int(header[1]), int(header[2]))

    def __eq__(self, other):
        return self.ppm == other.ppm

    def at(self, x, y):
        start = (y * self.size[0] + x) * 3
        return tuple(self.pixels[start:start + 3])

    def colours(self):
        return len({self.pixels[start:start + 3] for start in range(0, len(self.pixels), 3)})


class Recording:
    """What a sound card plays."""

    def __init__(self):
        self.file = tempfile.NamedTemporaryFile(suffix=".wav")
        self.devices = ["-device", "intel-hda", "-device", "hda-output,audiodev=sound",
                        "-audiodev", f"wav,id=sound,path={self.file.name}"]

    def loud(self):
        """How many values of the recording so far are far from silence."""
        sound = pathlib.Path(self.file.name).read_bytes()[44:]  # behind the header
        return sum(abs(value) > 500 for value in array.array("h", sound[:len(sound) // 2 * 2]))

    def listen(self, more_than):
        """Answers the same once there is more to hear than that, and then nothing for a while."""
        wait_until(lambda: self.loud() > more_than, "a sound")
        seen = [self.loud()]

        def is_silent():
            time.sleep(SILENCE)
            seen.append(self.loud())
            return seen[-1] == seen[-2]
        wait_until(is_silent, "silence")
        return seen[-1]


def uefi_options(kind, directory):
    code, variables, is_protected = UEFI[kind]
    own_variables = shutil.copy(f"/usr/share/OVMF/{variables}", directory)
    options = ["-machine", "q35,smm=" + ("on" if is_protected else "off"),
               "-drive", f"if=pflash,format=raw,readonly=on,file=/usr/share/OVMF/{code}",
               "-drive", f"if=pflash,format=raw,file={own_variables}"]
    return options + ["-global", "driver=cfi.pflash01,property=secure,value=on"] * is_protected


class Machine:
    """Starts a disc of the ISO as a CD, or as a stick, or a system of somebody else's, which is a kernel and an
    initramfs, or else the image's kernel alone with what the tests need, and with an archive behind it."""

    def __init__(self, vga="normal", adapter="std", program="qemu-system-x86_64", cpu="qemu64", disc=None, stick=None,
                 uefi=None, system=None, archive=None, words="", devices=()):
        self.directory = tempfile.TemporaryDirectory(prefix="zel-boot.")
        path, self.name = pathlib.Path(self.directory.name), f"UEFI {uefi}" if uefi else vga
        if disc or stick:
            start = ["-cdrom", disc] if disc else ["-drive", f"format=raw,file={stick}"]
        else:
            kernel, initrd = system or (IMAGE / "vmlinuz", test_initrd())
            if archive:
                both = path / "initrd"
                both.write_bytes(initrd.read_bytes() + archive.read_bytes())
                initrd = both
            start = ["-kernel", kernel, "-initrd", initrd, "-append", f"quiet vga={vga} {words}"]
        start += devices
        memory = 2048 if system else 512 if uefi else 256 if archive or devices else 128  # megabytes
        start += uefi_options(uefi, path) if uefi else []
        self.process = subprocess.Popen(
            [program, *f"-accel tcg -cpu {cpu} -m {memory} -vga {adapter} -display none -no-reboot -nodefaults".split(),
             *f"-qmp unix:{path}/monitor,server,nowait -serial unix:{path}/serial,server,nowait".split(), *start])
        atexit.register(self.process.kill)
        self.monitor, self.serial = Line(path / "monitor"), Line(path / "serial")
        self.ask("qmp_capabilities")
        if not (disc or stick or system):
            self.serial.expect(rb"ready\n")

    def stop(self):
        self.process.kill()
        self.process.wait()
        self.directory.cleanup()

    def ask(self, command, **arguments):
        self.monitor.send(json.dumps({"execute": command, "arguments": arguments}))
        return json.loads(self.monitor.expect(rb'\{"(return|error)".*\}\r\n').group())["return"]

    def do(self, *lines):
        for line in lines:
            answer = self.ask("human-monitor-command", **{"command-line": line})
            assert not answer, f"{line}: {answer}"
            time.sleep(POLL)  # the machine has to see the release of a key before the next press

    def press(self, *keys):
        self.do(*(f"sendkey {key} 20" for key in keys))

    def type(self, text):
        self.press(*(KEYS.get(letter, letter.lower() if letter.islower() or letter.isdigit() else f"shift-{letter.lower()}")
                     for letter in text))

    def look(self):
        path = pathlib.Path(self.directory.name, "screen.ppm")
        self.ask("screendump", filename=str(path))
        return Picture(path.read_bytes())

    def see(self, condition, what):
        """Answers the first picture that meets the condition and then stands still."""
        def complete():
            if condition(picture := self.look()):
                time.sleep(STANDSTILL)
                return picture if self.look() == picture else None
        picture = wait_until(complete, what)
        if PICTURES:
            pathlib.Path(PICTURES, f"{self.name} {what.replace('/', '-')}.ppm").write_bytes(picture.ppm)
        return picture

    def press_and_see(self, *keys):
        before = self.look()
        self.press(*keys)
        return self.see(lambda picture: picture != before, f"a change after {keys}")

    def run(self, command):
        """Answers what a command of the machine's shell prints."""
        self.serial.send(command)
        return self.serial.expect(rb"(?s)(.*?)=\d+=\n").group(1).decode()

    def read(self, path):
        """A file's text, None when there is none."""
        text = self.run(f"test -e {path} && echo + && cat {path}")
        return text[2:] if text else None

    def read_until(self, path, text):
        wait_until(lambda: text in (self.read(path) or ""), f"{text!r} in {path}")

    def launch(self, command):
        self.run(f"rm -f /tmp/test/status /root/output.txt; echo '{command}' >/tmp/test/go")
