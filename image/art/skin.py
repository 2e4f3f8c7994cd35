"""The skin description."""

import palette

TEXT_SECTIONS = ("BUTTON", "CHECKBOX", "RADIO", "LIST", "TEXT", "MENU", "PROGRESS", "WINDOW", "HYPER", "TAB",
                 "TOOLTIP")
# Text colours that differ from dark text: section -> text colour of the states normal, selected, disabled, focused.
TEXT_COLORS = {
    "BUTTON": (palette.FONTFACE, palette.WHITE, palette.DISABLED, palette.ACCENT_DARK),
    "LIST": (palette.FONTFACE, palette.WHITE, palette.DISABLED, palette.FONTFACE),
    "TEXT": (palette.FONTFACE, palette.FONTFACE, palette.DISABLED, palette.ACCENT_DARK),
    "MENU": (palette.FONTFACE, palette.WHITE, palette.DISABLED, palette.FONTFACE),
    "WINDOW": (palette.WHITE, palette.WHITE, palette.FACE, palette.WHITE),
    "HYPER": (palette.ACCENT, palette.ACCENT_DARK, palette.DISABLED, palette.ACCENT_DARK),
}
PLAIN = (palette.FONTFACE, palette.FONTFACE, palette.DISABLED, palette.FONTFACE)

FALLBACK = "DroidSansFallbackFull.ttf"  # with the letters of Chinese and Japanese
FONTS = (("DejaVuSans.ttf", 18), ("DejaVuSans-Bold.ttf", 18), ("DejaVuSans-Bold.ttf", 24), ("DejaVuSans-Bold.ttf", 36))
BOLD = 1


def rgb(color):
    return ",".join(str(part) for part in color)


def section(name, values):
    return f"\n[{name}]\n" + "".join(f"{key} = {value}\n" for key, value in values)


def text_section(name):
    font = BOLD if name == "WINDOW" else 0
    colors = TEXT_COLORS.get(name, PLAIN)
    return ([(f"font{i + 1}", font) for i in range(4)] +
            [(f"f_col{i + 1}", rgb(color)) for i, color in enumerate(colors)] +
            [(f"s_col{i + 1}", -1) for i in range(4)])


EXTRA = {
    "BUTTON": [("displacement", 1), ("animationType", 1), ("animationLength", 120)],
    "MENU": [("height", 20), ("delay", 300)],
    "WINDOW": [("textX", 10), ("textY", 5), ("alignment", 0), ("textBack", 0), ("exitX", -22), ("exitY", 6),
               ("maxX", -41), ("maxY", 6), ("minX", -60), ("minY", 6), ("animationType", 0), ("animationLength", 0)],
    "TOOLTIP": [("backColor", rgb(palette.TOOLTIP)), ("borderColor", rgb(palette.DARK)), ("animationType", 1),
                ("animationLength", 120)],
}


def description():
    text = "# The look of the example menu. Made by tools/build-art from image/art; change it there.\n"
    text += section("Skin", [("title", "Calm water"), ("main_data", "skin.dat"), ("cursors", "cursors.dat"),
                             ("dottedRect", 0), ("focus", 2)])
    text += section("COLORS", [
        ("face", rgb(palette.FACE)), ("fontface", rgb(palette.FONTFACE)), ("shad1", rgb(palette.LIGHT)),
        ("shad2", rgb(palette.DARK)), ("disable", rgb(palette.DISABLED)), ("select", rgb(palette.ACCENT_LIGHT)),
        ("deselect", rgb(palette.GREY)), ("focus", rgb(palette.FOCUS)), ("sunken", rgb(palette.SUNKEN)),
        ("back", rgb(palette.BACK))])
    for i, (file, size) in enumerate(FONTS):
        text += section(f"FONT{i}", [("file", f"fonts/{file}"), ("fallback", f"fonts/{FALLBACK}"), ("size", size)])
    for name in TEXT_SECTIONS:
        text += section(name, text_section(name) + EXTRA.get(name, []))
    text += section("BOX", [("font1", 0), ("f_col1", rgb(palette.FONTFACE)), ("f_col2", rgb(palette.DISABLED)),
                            ("s_col1", -1), ("s_col2", -1), ("offX", 8), ("offY", 1), ("backColor", rgb(palette.FACE)),
                            ("alignment", 0)])
    text += section("WALLPAPER", [("style", 3)])
    text += section("COMBOBOX", [("animationType", 6), ("animationLength", 120)])
    text += section("MOUSE", [("shadowColor", "0,0,0"), ("shadowSize", 2), ("shadowOffsetX", 2), ("shadowOffsetY", 2)])
    return text
