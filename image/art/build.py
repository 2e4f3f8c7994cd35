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


def run(*command, directory=None):
    subprocess.run([str(part) for part in command], check=True, cwd=directory, stdout=subprocess.DEVNULL)


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


def build_datafile(target, pictures, scale, palette_bmp=None):
    """Objects named as the skin wants them, with their properties; without dates, so that the same pictures
    give the same file. The largest ones are compressed: they would take megabytes of an initramfs. dat finds
    pictures only in the current directory."""
    target.unlink(missing_ok=True)
    if palette_bmp:
        add_palette(target, palette_bmp)  # first, while its bytes are still to be seen
    packed = ("-c0",) if scale < 3 else ("-c1",)
    for name, bmp, properties in pictures:
        kept = [f"-s-{key}" for key in properties]
        values = [f"{key}={value}" for key, value in properties.items()]
        run("dat", "-a", "-k", *packed, "-s1", *kept, "-t", "BMP", "-bpp", "24", f"NAME={name}", *values, target.resolve(),
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


def build_elements(work, target, scale, palette_bmp=None):
    pictures = []
    for name, element in ELEMENTS.items():
        png, bmp = work / f"{at_scale(name, scale)}.png", work / f"{at_scale(name, scale)}.bmp"
        render(element.svg(), png, scale)
        to_bmp(png, bmp, palette.css(palette.FACE), element.masked)
        pictures.append((name, bmp, {"TCKX": scale * element.tile[0], "TCKY": scale * element.tile[1]}))
    build_datafile(target, pictures, scale, palette_bmp)


def build_cursors(work, target, scale):
    pictures = []
    for name, (hotspot, frames, duration) in cursors.CURSORS.items():
        png, bmp = work / f"{at_scale(name, scale)}.png", work / f"{at_scale(name, scale)}.bmp"
        render(cursors.svg(frames), png, scale)
        to_bmp(png, bmp, palette.css(palette.WHITE), True)
        pictures.append((name, bmp, {"FCSX": scale * hotspot[0], "FCSY": scale * hotspot[1],
                                     "FRMS": len(frames), "FDUR": duration}))
    build_datafile(target, pictures, scale)


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


def build_look(work, skin_directory, look, backgrounds_seen, other_pictures):
    name, data, title, colors, has_picture = look
    palette.use(colors)
    (skin_directory / f"{name}.skin").write_text(skin.description(title, data and f"{data}.dat", has_picture))
    if not data:
        return
    work = work / name
    work.mkdir()
    first = skin_directory / f"{data}.dat"
    build_elements(work, first, 1)
    palette_bmp = work / "palette.bmp"
    pictures = [*sorted(work.glob("*.bmp")), *other_pictures]
    palette8.write_bmp(palette_bmp, palette8.colors(backgrounds_seen if has_picture else [], pictures))
    add_palette(first, palette_bmp)
    for scale in SCALES[1:]:
        build_elements(work, skin_directory / f"{at_scale(data, scale)}.dat", scale, palette_bmp)


def main(data):
    skin_directory = data / "skin"
    for directory in (skin_directory / "fonts", data / "icons", data / "pic"):
        directory.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as name:
        work = pathlib.Path(name)
        for scale in SCALES:
            build_cursors(work, skin_directory / f"{at_scale('cursors', scale)}.dat", scale)
            build_icons(work, data / "icons", scale)
        build_backgrounds(work, data / "pic")
        build_progress(work, data / "pic")
        plain = [file for directory in (work, data / "icons") for file in sorted(directory.glob("*.bmp"))
                 if "@" not in file.name]
        for look in LOOKS:
            build_look(work, skin_directory, look, sorted(work.glob("back*[0-9].png")), plain)
    for file in sorted({file for file, _ in skin.FONTS} | {skin.FALLBACK}):
        (source,) = FONT_DIRECTORY.glob(f"*/{file}")
        shutil.copyfile(source, skin_directory / "fonts" / file)
    (skin_directory / "fonts" / "LICENSE").write_text("\n".join(file.read_text() for file in FONT_LICENCES))


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
