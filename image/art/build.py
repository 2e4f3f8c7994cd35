"""Builds everything under data/ that is drawn: the skin, the icons and the backgrounds.

Started by tools/build-art, which sees to the programs that it needs.
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile

import backgrounds
import cursors
import icons
import palette
import palette8
import skin
from elements import ELEMENTS

# How many times its size everything is drawn: a zoom takes the nearest of them.
SCALES = (1, 2, 3)

FONT_DIRECTORY = pathlib.Path("/usr/share/fonts/truetype")
FONT_LICENCES = [pathlib.Path(f"/usr/share/doc/{package}/copyright")
                 for package in ("fonts-dejavu-core", "fonts-droid-fallback")]


def run(*command):
    subprocess.run([str(part) for part in command], check=True, stdout=subprocess.DEVNULL)


def render(svg, target, scale=1):
    source = target.with_suffix(".svg")
    source.write_text(svg)
    run("rsvg-convert", "-z", scale, source, "-o", target)


def at_scale(name, scale):
    """disk@2x for disk"""
    return name if scale == 1 else f"{name}@{scale}x"


def to_bmp(png, bmp, ground, masked):
    """A 24-bit picture on a ground; where a masked one is mostly transparent it takes the mask colour."""
    over = ["/usr/bin/convert", png, "-background", ground, "-flatten"]
    if masked:
        run("/usr/bin/convert", png, "-alpha", "extract", "-threshold", "49%", "-negate", f"{png}.mask.png")
        run(*over, f"{png}.flat.png")
        run("/usr/bin/convert", f"{png}.flat.png", "(", f"{png}.flat.png", "-fill", palette.css(palette.MASK),
            "-colorize", "100", ")", f"{png}.mask.png", "-composite", "-type", "TrueColor", f"BMP3:{bmp}")
    else:
        run(*over, "-type", "TrueColor", f"BMP3:{bmp}")


def draw_elements(work):
    """Answers the lines of the project that are about them."""
    lines = []
    for name, element in ELEMENTS.items():
        for scale in SCALES:
            png, bmp = work / f"{at_scale(name, scale)}.png", work / f"{at_scale(name, scale)}.bmp"
            render(element.svg(), png, scale)
            to_bmp(png, bmp, palette.css(palette.FACE), element.masked)
        lines.append(f"{name} = {name}.bmp {element.tile[0]} {element.tile[1]}\n")
    return lines


def draw_cursors(work):
    """Likewise; all looks have them."""
    lines = []
    for name, (hotspot, frames, duration) in cursors.CURSORS.items():
        for scale in SCALES:
            png, bmp = work / f"{at_scale(name, scale)}.png", work / f"{at_scale(name, scale)}.bmp"
            render(cursors.svg(frames), png, scale)
            to_bmp(png, bmp, palette.css(palette.WHITE), True)
        lines.append(f"{name} = {bmp.parent / name}.bmp {hotspot[0]} {hotspot[1]} {len(frames)} {duration}\n")
    return lines


def build_icons(work, target, scale):
    for name in icons.ICONS:
        png = work / f"{at_scale(name, scale)}.png"
        render(icons.svg(name), png, scale)
        # Nothing of the ground is mixed with its edge, so that it lies on any.
        to_bmp(png, target / f"{at_scale(name, scale)}.bmp", icons.ICONS[name][0], True)


def build_backgrounds(work, target):
    for w, h in backgrounds.SIZES:
        for scale in backgrounds.SCALES:
            name = at_scale(f"back{w}", scale)
            render(backgrounds.svg(w, h), work / f"{name}.png", scale)
            # Colours at half the resolution are decoded in half the time, and nobody sees it here.
            run("/usr/bin/convert", work / f"{name}.png", "-quality", "90", "-sampling-factor", "2x2", "-strip",
                target / f"{name}.jpg")


def build_progress(work, target):
    bar = "".join(f'<rect y="{y}" width="4" height="1" fill="rgb({91 - 4 * y},{145 - 3 * y},{208 - 3 * y})"/>'
                  for y in range(20))
    render(f'<svg xmlns="http://www.w3.org/2000/svg" width="4" height="20">{bar}</svg>', work / "progress.png")
    to_bmp(work / "progress.png", target / "progress.bmp", palette.css(palette.FACE), False)


# Name of the description, of its elements, its title, the colours, and whether the background's picture shows.
LOOKS = (("zel", "skin", "Calm night", palette.NIGHT, True), ("light", "light", "Calm day", palette.DAY, False),
         ("contrast", None, "High contrast", palette.CONTRAST, False))


# The datafiles of the largest pictures are packed: they would take megabytes of an initramfs.
PACKED_FROM = 3


def build_look(work, skin_directory, look, pointers, backgrounds_seen, other_pictures):
    name, data, title, colors, has_picture = look
    palette.use(colors)
    work = work / name
    work.mkdir()
    elements = draw_elements(work) if data else []
    if data:
        pictures = [*sorted(file for file in work.glob("*.bmp") if "@" not in file.name), *other_pictures]
        palette8.write_bmp(work / "palette.bmp", palette8.colors(backgrounds_seen if has_picture else [], pictures))
        elements = ["\n[ELEMENTS]\n", *elements, "XTRA_PALETTE = palette.bmp\n"]
    (work / "skin.ini").write_text("".join((
        skin.description(title, data and f"{data}.dat", has_picture),
        f"\n[PACK]\nname = {name}.skin\npacked = {PACKED_FROM}\n", *elements, "\n[POINTERS]\n", *pointers)))
    run("build/bin/zel-skin", "pack", work, "--to", skin_directory)


def main(data):
    skin_directory = data / "skin"
    for directory in (skin_directory / "fonts", data / "icons", data / "pic"):
        directory.mkdir(parents=True, exist_ok=True)
    for file in sorted({file for file, _ in skin.FONTS} | {skin.FALLBACK}):
        (source,) = FONT_DIRECTORY.glob(f"*/{file}")
        shutil.copyfile(source, skin_directory / "fonts" / file)
    (skin_directory / "fonts" / "LICENSE").write_text("\n".join(file.read_text() for file in FONT_LICENCES))
    with tempfile.TemporaryDirectory() as name:
        work = pathlib.Path(name)
        pointers = draw_cursors(work)
        for scale in SCALES:
            build_icons(work, data / "icons", scale)
        build_backgrounds(work, data / "pic")
        build_progress(work, data / "pic")
        plain = [file for directory in (work, data / "icons") for file in sorted(directory.glob("*.bmp"))
                 if "@" not in file.name]
        for look in LOOKS:
            build_look(work, skin_directory, look, pointers, sorted(work.glob("back*[0-9].png")), plain)


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
