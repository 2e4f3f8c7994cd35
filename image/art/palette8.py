"""The palette of 8-bit modes: the colours of the skin's description and the best for all its pictures."""

import struct
import subprocess

import palette

ENTRIES = 256
BACKGROUND_SHARE = 88  # entries for the gradients of the backgrounds

# What the toolkit and menus name, beside the colours of the skin.
NAMED = [(255, 255, 255), (0, 0, 0), (255, 0, 0), (0, 255, 0), (0, 0, 255), (0, 255, 255), (255, 255, 0), (96, 96, 96),
         (128, 128, 128), (192, 192, 192), (255, 170, 0), (150, 96, 0), (144, 0, 168), (128, 0, 0), (0, 128, 0),
         (0, 0, 128), (140, 140, 140), (150, 150, 150), (200, 100, 100), (110, 120, 190),
         # Colours of menus, as they are and as a dark ground makes them.
         (20, 84, 40), (42, 160, 80), (170, 28, 28), (240, 96, 96)]


def quantized(pictures, count):
    """The colours that serve some pictures best."""
    if not pictures:
        return []
    command = ["/usr/bin/convert", *map(str, pictures), "-append", "+dither", "-colors", str(count), "-unique-colors",
               "-depth", "8", "rgb:-"]
    raw = subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout
    return [tuple(raw[i:i + 3]) for i in range(0, len(raw), 3)]


def as_shown(color):
    """With the six bits for each component that a palette has."""
    return tuple(part >> 2 for part in color)


def colors(backgrounds, pictures):
    """Entry 0 is the mask; no two entries look alike."""
    fixed = [palette.rgb(name) for name in sorted(palette.NAMES)]
    chosen = {as_shown(palette.MASK): palette.MASK}
    for group in (NAMED, fixed, quantized(backgrounds, BACKGROUND_SHARE), quantized(pictures, ENTRIES)):
        for color in group:
            if len(chosen) < ENTRIES:
                chosen.setdefault(as_shown(color), color)
    return list(chosen.values())


def write_bmp(target, entries):
    """A picture of one pixel that carries the palette; dat takes palettes from pictures."""
    table = b"".join(bytes((b, g, r, 0)) for r, g, b in entries).ljust(4 * ENTRIES, b"\0")
    start = 14 + 40 + len(table)
    header = struct.pack("<2sIHHI", b"BM", start + 4, 0, 0, start)
    info = struct.pack("<IiiHHIIiiII", 40, 1, 1, 1, 8, 0, 4, 2835, 2835, ENTRIES, 0)
    target.write_bytes(header + info + table + bytes(4))
