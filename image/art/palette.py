"""The colours of the skins, in one place: the pictures and the skin descriptions use the same.

A colour is named by what it is for; each of the schemes says what it is there.
"""

NIGHT = {
    "FACE": (37, 45, 59),  # windows
    "FONTFACE": (232, 237, 244),
    "LIGHT": (58, 68, 86),  # "shad1"
    "DARK": (76, 88, 108),  # "shad2" and edges
    "SUNKEN": (27, 33, 44),
    "BACK": (20, 26, 36),
    "ACCENT": (48, 110, 190),
    "ACCENT_DARK": (128, 184, 248),  # marks and edges of what has the focus
    "ACCENT_LIGHT": (40, 72, 118),
    "FOCUS": (44, 66, 100),
    "DISABLED": (132, 143, 160),  # text and marks
    "EDGE_OFF": (60, 70, 86),  # around what is disabled
    "BAR": (46, 56, 73),  # title bar
    "BAR_OFF": (40, 48, 62),  # of a window without the focus
    "TOOLTIP": (52, 62, 80),
    "BUTTON": (54, 65, 84),
    "GREY": (62, 73, 92),
    "GRIP": (92, 106, 128),
    "GRIP_FOCUS": (110, 146, 196),
    "WHITE": (255, 255, 255),
    # Panels and entries of the menu.
    "PANEL": (30, 37, 49),
    "PANEL_EDGE": (52, 62, 80),
    "FIELD": (38, 70, 118),
    "FIELD_EDGE": (92, 148, 222),
    "IDLE": (44, 53, 69),
    "IDLE_EDGE": (68, 80, 100),
    "HEADING": (244, 247, 251),
    "QUIET": (166, 178, 196),  # titles and key help
    "RULE": (58, 69, 88),
}

DAY = {
    "FACE": (240, 243, 247),
    "FONTFACE": (26, 34, 46),
    "LIGHT": (255, 255, 255),
    "DARK": (158, 170, 187),
    "SUNKEN": (255, 255, 255),
    "BACK": (226, 231, 238),
    "ACCENT": (34, 98, 178),
    "ACCENT_DARK": (22, 76, 144),
    "ACCENT_LIGHT": (204, 222, 245),
    "FOCUS": (216, 230, 248),
    "DISABLED": (108, 117, 131),
    "EDGE_OFF": (196, 204, 215),
    "BAR": (222, 228, 236),
    "BAR_OFF": (232, 236, 242),
    "TOOLTIP": (255, 250, 222),
    "BUTTON": (252, 253, 254),
    "GREY": (210, 217, 226),
    "GRIP": (172, 183, 199),
    "GRIP_FOCUS": (110, 150, 202),
    "WHITE": (255, 255, 255),
    "PANEL": (255, 255, 255),
    "PANEL_EDGE": (204, 212, 223),
    "FIELD": (206, 224, 247),
    "FIELD_EDGE": (64, 128, 208),
    "IDLE": (234, 238, 243),
    "IDLE_EDGE": (200, 208, 219),
    "HEADING": (26, 34, 46),
    "QUIET": (84, 95, 111),
    "RULE": (222, 227, 234),
}

# Without pictures: the toolkit draws the elements in the first ten.
CONTRAST = {
    **NIGHT,
    "FACE": (0, 0, 0),
    "FONTFACE": (255, 255, 255),
    "LIGHT": (208, 208, 208),
    "DARK": (208, 208, 208),
    "SUNKEN": (0, 0, 0),
    "BACK": (0, 0, 0),
    "ACCENT_LIGHT": (0, 84, 170),
    "BUTTON": (44, 44, 44),
    "FOCUS": (0, 84, 170),
    "DISABLED": (150, 150, 150),
    "ACCENT_DARK": (255, 214, 10),
    "TOOLTIP": (0, 0, 0),
    "GREY": (64, 64, 64),
    "PANEL": (0, 0, 0),
    "PANEL_EDGE": (150, 150, 150),
    "FIELD": (255, 214, 10),
    "FIELD_EDGE": (255, 255, 255),
    "IDLE": (0, 0, 0),
    "IDLE_EDGE": (255, 214, 10),
    "HEADING": (255, 255, 255),
    "QUIET": (255, 255, 255),
    "RULE": (150, 150, 150),
}

MASK = (255, 0, 255)
NAMES = tuple(NIGHT)
globals().update({name: name for name in NAMES})

_scheme = NIGHT


def use(scheme):
    """All colours are those of this scheme from now on."""
    global _scheme
    _scheme = scheme


def rgb(color):
    """What a name stands for; three numbers are themselves."""
    return _scheme[color] if isinstance(color, str) else color


def css(color):
    return "#%02x%02x%02x" % rgb(color)
