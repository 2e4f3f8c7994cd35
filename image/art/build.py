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

FONT_DIRECTORY = pathlib.Path("/usr/share/fonts/truetype/dejavu")
FONT_LICENCE = pathlib.Path("/usr/share/doc/fonts-dejavu-core/copyright")


def run(*command, directory=None):
    subprocess.run([str(part) for part in command], check=True, cwd=directory, stdout=subprocess.DEVNULL)


def render(svg, target):
    source = target.with_suffix(".svg")
    source.write_text(svg)
    run("rsvg-convert", source, "-o", target)


def to_bmp(png, bmp, ground, masked):
    """A 24-bit picture on a ground; where a masked one is mostly transparent it takes the mask colour."""
    over = ["/usr/bin/convert", png, "-background", palette.css(ground), "-flatten"]
    if masked:
        run("/usr/bin/convert", png, "-alpha", "extract", "-threshold", "49%", "-negate", f"{png}.mask.png")
        run(*over, f"{png}.flat.png")
        run("/usr/bin/convert", f"{png}.flat.png", "(", f"{png}.flat.png", "-fill", palette.css(palette.MASK),
            "-colorize", "100", ")", f"{png}.mask.png", "-composite", "-type", "TrueColor", f"BMP3:{bmp}")
    else:
        run(*over, "-type", "TrueColor", f"BMP3:{bmp}")


def build_datafile(target, pictures):
    """Objects named as the skin wants them, with their properties; without dates, so that the same pictures
    give the same file. dat finds pictures only in the current directory."""
    target.unlink(missing_ok=True)
    for name, bmp, properties in pictures:
        kept = [f"-s-{key}" for key in properties]
        values = [f"{key}={value}" for key, value in properties.items()]
        run("dat", "-a", "-k", "-c0", "-s1", *kept, "-t", "BMP", "-bpp", "24", f"NAME={name}", *values, target.resolve(),
            bmp.name, directory=bmp.parent)


def add_palette(target, bmp):
    run("dat", "-a", "-k", "-c0", "-s1", "-t", "PAL", "NAME=XTRA_PALETTE", target.resolve(), bmp.name,
        directory=bmp.parent)
    clear_fillers(target)


def clear_fillers(target):
    """dat leaves the fourth byte of each colour as it finds it in its memory."""
    data = bytearray(target.read_bytes())
    start = data.index(b"PAL ") + 12  # behind the type and two sizes
    data[start + 3:start + 1024:4] = bytes(256)
    target.write_bytes(data)


def build_elements(work, target):
    pictures = []
    for name, element in ELEMENTS.items():
        render(element.svg(), work / f"{name}.png")
        to_bmp(work / f"{name}.png", work / f"{name}.bmp", palette.FACE, element.masked)
        pictures.append((name, work / f"{name}.bmp", {"TCKX": element.tile[0], "TCKY": element.tile[1]}))
    build_datafile(target, pictures)


def build_cursors(work, target):
    pictures = []
    for name, (hotspot, frames, duration) in cursors.CURSORS.items():
        render(cursors.svg(frames), work / f"{name}.png")
        to_bmp(work / f"{name}.png", work / f"{name}.bmp", palette.WHITE, True)
        pictures.append((name, work / f"{name}.bmp", {"FCSX": hotspot[0], "FCSY": hotspot[1],
                                                      "FRMS": len(frames), "FDUR": duration}))
    build_datafile(target, pictures)


def build_icons(work, target):
    for name in icons.ICONS:
        render(icons.svg(name), work / f"{name}.png")
        to_bmp(work / f"{name}.png", target / f"{name}.bmp", palette.SUNKEN, True)


def build_backgrounds(work, target):
    for w, h in backgrounds.SIZES:
        render(backgrounds.svg(w, h), work / f"back{w}.png")
        # Colours at half the resolution are decoded in half the time, and nobody sees it here.
        run("/usr/bin/convert", work / f"back{w}.png", "-quality", "90", "-sampling-factor", "2x2", "-strip",
            target / f"back{w}.jpg")


def build_progress(work, target):
    bar = "".join(f'<rect y="{y}" width="4" height="1" fill="rgb({91 - 4 * y},{145 - 3 * y},{208 - 3 * y})"/>'
                  for y in range(20))
    render(f'<svg xmlns="http://www.w3.org/2000/svg" width="4" height="20">{bar}</svg>', work / "progress.png")
    to_bmp(work / "progress.png", target / "progress.bmp", palette.FACE, False)


def main(data):
    skin_directory = data / "skin"
    for directory in (skin_directory / "fonts", data / "icons", data / "pic"):
        directory.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as name:
        work = pathlib.Path(name)
        build_elements(work, skin_directory / "skin.dat")
        build_cursors(work, skin_directory / "cursors.dat")
        build_icons(work, data / "icons")
        build_backgrounds(work, data / "pic")
        build_progress(work, data / "pic")
        shown = palette8.colors(sorted(work.glob("back*.png")), sorted(work.glob("*.bmp")) +
                                sorted((data / "icons").glob("*.bmp")))
        palette8.write_bmp(work / "palette.bmp", shown)
        add_palette(skin_directory / "skin.dat", work / "palette.bmp")
    for file in sorted({file for file, _ in skin.FONTS}):
        shutil.copyfile(FONT_DIRECTORY / file, skin_directory / "fonts" / file)
    shutil.copyfile(FONT_LICENCE, skin_directory / "fonts" / "LICENSE")
    (skin_directory / "zel.skin").write_text(skin.description())


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
