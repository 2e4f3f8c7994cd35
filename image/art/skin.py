"""The skin descriptions."""

from palette import (ACCENT, ACCENT_DARK, ACCENT_LIGHT, BACK, BUTTON, DARK, DISABLED, FACE, FIELD, FIELD_EDGE, FOCUS,
                     FONTFACE, GREY, HEADING, IDLE, IDLE_EDGE, LIGHT, PANEL, PANEL_EDGE, QUIET, RULE, SUNKEN, TOOLTIP,
                     WHITE)
import palette

TEXT_SECTIONS = ("BUTTON", "CHECKBOX", "RADIO", "LIST", "TEXT", "MENU", "PROGRESS", "WINDOW", "HYPER", "TAB",
                 "TOOLTIP", "LABEL")
# Text colours that differ from plain text: section -> text colour of the states normal, selected, disabled, focused.
TEXT_COLORS = {
    "BUTTON": (FONTFACE, WHITE, DISABLED, FONTFACE),
    "LIST": (FONTFACE, WHITE, DISABLED, FONTFACE),
    "MENU": (FONTFACE, WHITE, DISABLED, FONTFACE),
    "WINDOW": (FONTFACE, FONTFACE, DISABLED, FONTFACE),
    "HYPER": (ACCENT_DARK, ACCENT_DARK, DISABLED, ACCENT_DARK),
}
PLAIN = (FONTFACE, FONTFACE, DISABLED, FONTFACE)

FALLBACK = "DroidSansFallbackFull.ttf"  # with the letters of Chinese and Japanese
FONTS = (("DejaVuSans.ttf", 18), ("DejaVuSans-Bold.ttf", 18), ("DejaVuSans-Bold.ttf", 24), ("DejaVuSans-Bold.ttf", 32),
         ("DejaVuSans.ttf", 16))
BOLD, SMALL = 1, 4


def rgb(color):
    return ",".join(str(part) for part in palette.rgb(color))


def section(name, values):
    return f"\n[{name}]\n" + "".join(f"{key} = {value}\n" for key, value in values)


def text_section(name):
    font = BOLD if name == "WINDOW" else 0
    colors = TEXT_COLORS.get(name, PLAIN)
    return ([(f"font{i + 1}", font) for i in range(4)] +
            [(f"f_col{i + 1}", rgb(color)) for i, color in enumerate(colors)] +
            [(f"s_col{i + 1}", -1) for i in range(4)])


def extra(name):
    return {
        "BUTTON": [("displacement", 1), ("animationType", 1), ("animationLength", 120)],
        "LIST": [("height", 30)],
        "MENU": [("height", 20), ("delay", 300)],
        "WINDOW": [("textX", 16), ("textY", 9), ("alignment", 0), ("textBack", 0), ("exitX", -28), ("exitY", 10),
                   ("maxX", -50), ("maxY", 10), ("minX", -72), ("minY", 10), ("animationType", 0),
                   ("animationLength", 0)],
        "TOOLTIP": [("backColor", rgb(TOOLTIP)), ("borderColor", rgb(DARK)), ("animationType", 1),
                    ("animationLength", 120)],
    }.get(name, [])


def menu_sections(has_picture):
    """Panels without frames, and entries whose field takes the icon in."""
    return (section("PANEL", [("backColor", rgb(PANEL)), ("borderColor", rgb(PANEL_EDGE)),
                              ("focusBorderColor", rgb(FIELD_EDGE)), ("border", 1), ("radius", 10), ("paddingX", 8),
                              ("paddingY", 8)]) +
            section("TITLE", [("font", BOLD), ("color", rgb(QUIET)), ("height", 36), ("alignment", 0), ("textX", 10)]) +
            section("ENTRY", [("color", rgb(FONTFACE)), ("selectColor", rgb(FONTFACE)),
                              ("disableColor", rgb(DISABLED)), ("returnColor", rgb(QUIET)),
                              ("separatorColor", rgb(RULE)), ("fieldColor", rgb(FIELD)),
                              ("fieldBorderColor", rgb(FIELD_EDGE)), ("idleColor", rgb(IDLE)),
                              ("idleBorderColor", rgb(IDLE_EDGE)), ("fieldX", 0), ("fieldY", 0), ("fieldRadius", 7),
                              ("fieldBorder", 1), ("iconX", 10), ("textX", 44), ("markX", 14),
                              ("separatorHeight", 10), ("wrap", 1)]) +
            section("HINT", [("paddingX", 10), ("paddingY", 4)]) +
            section("SCREEN", [("picture", int(has_picture)), ("headingColor", rgb(HEADING)),
                               ("keyHelpColor", rgb(QUIET))]) +
            section("WAIT", [("countdownColor", rgb(ACCENT_DARK)), ("countdownBackColor", rgb(FACE))]) +
            section("BAR", [("color", rgb(FIELD_EDGE)), ("backColor", rgb(GREY)), ("borderColor", rgb(GREY))]))


def description(title, data, has_picture):
    text = "# A look of the example menu. Made by tools/build-art from image/art; change it there.\n"
    text += section("Skin", [("title", title), ("main_data", data), ("cursors", "cursors.dat"),
                             ("dottedRect", 0), ("focus", 2)])
    text += section("COLORS", [
        ("face", rgb(FACE)), ("fontface", rgb(FONTFACE)), ("shad1", rgb(LIGHT)), ("shad2", rgb(DARK)),
        ("disable", rgb(DISABLED)), ("select", rgb(ACCENT_LIGHT)), ("deselect", rgb(BUTTON)), ("focus", rgb(FOCUS)),
        ("sunken", rgb(SUNKEN)), ("back", rgb(BACK)), ("contrast", 4.5)])
    for i, (file, size) in enumerate(FONTS):
        text += section(f"FONT{i}", [("file", f"fonts/{file}"), ("fallback", f"fonts/{FALLBACK}"), ("size", size)])
    for name in TEXT_SECTIONS:
        text += section(name, text_section(name) + extra(name))
    text += section("BOX", [("font1", 0), ("f_col1", rgb(FONTFACE)), ("f_col2", rgb(DISABLED)),
                            ("s_col1", -1), ("s_col2", -1), ("offX", 8), ("offY", 1), ("backColor", rgb(FACE)),
                            ("alignment", 0), ("borderColor", -1)])
    text += menu_sections(has_picture)
    text += section("WALLPAPER", [("style", 3)])
    text += section("COMBOBOX", [("animationType", 6), ("animationLength", 120)])
    text += section("MOUSE", [("shadowColor", "0,0,0"), ("shadowSize", 2), ("shadowOffsetX", 2), ("shadowOffsetY", 2)])
    return text
