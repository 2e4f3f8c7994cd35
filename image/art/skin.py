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
    "WINDOW": (FONTFACE, FONTFACE, QUIET, FONTFACE),
    "HYPER": (ACCENT_DARK, ACCENT_DARK, DISABLED, ACCENT_DARK),
}
PLAIN = (FONTFACE, FONTFACE, DISABLED, FONTFACE)

FALLBACK = "DroidSansFallbackFull.ttf"  # with the letters of Chinese and Japanese
FONTS = (("DejaVuSans.ttf", 18), ("DejaVuSans-Bold.ttf", 18), ("DejaVuSans-Bold.ttf", 24), ("DejaVuSans-Bold.ttf", 32),
         ("DejaVuSans.ttf", 16))
BOLD, SMALL = 1, 4


LARGE_FONTS = (("DejaVuSans.ttf", 26), ("DejaVuSans-Bold.ttf", 26), ("DejaVuSans-Bold.ttf", 34),
               ("DejaVuSans-Bold.ttf", 36), ("DejaVuSans.ttf", 18))
# In the look for those who see badly.
LARGE_TEXT_COLORS = {
    "LIST": (FONTFACE, FONTFACE, DISABLED, FONTFACE),
    "WINDOW": (FONTFACE, FONTFACE, FACE, FONTFACE),
    "TEXT": (FONTFACE, FONTFACE, DISABLED, ACCENT_DARK),
}


def rgb(color):
    return ",".join(str(part) for part in palette.rgb(color))


def section(name, values):
    return f"\n[{name}]\n" + "".join(f"{key} = {value}\n" for key, value in values)


def text_section(name, own_colors=None):
    font = BOLD if name == "WINDOW" else 0
    colors = (own_colors or {}).get(name) or TEXT_COLORS.get(name, PLAIN)
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


def large_menu_sections():
    """The same with large print: no icons, and lines that nobody misses."""
    return (section("PANEL", [("backColor", rgb(PANEL)), ("borderColor", rgb(PANEL_EDGE)),
                              ("focusBorderColor", rgb(IDLE_EDGE)), ("border", 3), ("paddingX", 5), ("paddingY", 5)]) +
            section("TITLE", [("font", BOLD), ("color", rgb(QUIET)), ("height", 38), ("alignment", 0), ("textX", 10),
                              ("lineColor", rgb(RULE))]) +
            section("ENTRY", [("color", rgb(FONTFACE)), ("selectColor", rgb(PANEL)), ("disableColor", rgb(DISABLED)),
                              ("returnColor", rgb(FONTFACE)), ("separatorColor", rgb(RULE)),
                              ("fieldColor", rgb(FIELD)), ("fieldBorderColor", rgb(FIELD_EDGE)),
                              ("idleColor", rgb(IDLE)), ("idleBorderColor", rgb(IDLE_EDGE)), ("fieldX", 0),
                              ("fieldY", 1), ("fieldBorder", 3), ("iconX", 10), ("textX", 10), ("markX", 12),
                              ("separatorHeight", 11), ("wrap", 1), ("icons", 0)]) +
            section("HINT", [("paddingX", 8), ("paddingY", 6)]) +
            section("SCREEN", [("picture", 0), ("headingColor", rgb(HEADING)), ("keyHelpColor", rgb(QUIET))]) +
            section("WAIT", [("countdownColor", rgb(ACCENT_DARK)), ("countdownBackColor", rgb(FACE))]) +
            section("BAR", [("color", rgb(FIELD)), ("backColor", rgb(GREY)), ("borderColor", rgb(FIELD_EDGE))]))


def description(title, data, has_picture):
    """Without `data` that of large print and contrast."""
    own_colors = {} if data else LARGE_TEXT_COLORS
    text = "# A look of the example menu, which tools/build-art makes from image/art in the sources of Zel.\n"
    elements = [("main_data", data)] if data else []
    text += section("Skin", [("title", title), *elements, ("cursors", "cursors.dat"), ("dottedRect", int(not data)),
                             ("focus", 2)])
    text += section("COLORS", [
        ("face", rgb(FACE)), ("fontface", rgb(FONTFACE)), ("shad1", rgb(LIGHT)), ("shad2", rgb(DARK)),
        ("disable", rgb(DISABLED)), ("select", rgb(ACCENT_LIGHT)), ("deselect", rgb(BUTTON)), ("focus", rgb(FOCUS)),
        ("sunken", rgb(SUNKEN)), ("back", rgb(BACK)), ("contrast", 4.5 if data else 7)])
    for i, (file, size) in enumerate(FONTS if data else LARGE_FONTS):
        text += section(f"FONT{i}", [("file", f"fonts/{file}"), ("fallback", f"fonts/{FALLBACK}"), ("size", size)])
    for name in TEXT_SECTIONS:
        more = extra(name)
        if not data and name in ("LIST", "WINDOW"):
            more = [("height", 40)] if name == "LIST" else [("borderColor", rgb(FIELD_EDGE)), ("border", 3)]
        text += section(name, text_section(name, own_colors) + more)
    text += section("BOX", [("font1", 0), ("f_col1", rgb(FONTFACE)), ("f_col2", rgb(DISABLED)),
                            ("s_col1", -1), ("s_col2", -1), ("offX", 8), ("offY", 1), ("backColor", rgb(FACE)),
                            ("alignment", 0), ("borderColor", -1)])
    text += menu_sections(has_picture) if data else large_menu_sections()
    text += section("WALLPAPER", [("style", 3)])
    text += section("COMBOBOX", [("animationType", 6), ("animationLength", 120)])
    text += section("MOUSE", [("shadowColor", "0,0,0"), ("shadowSize", 2), ("shadowOffsetX", 2), ("shadowOffsetY", 2)])
    return text
