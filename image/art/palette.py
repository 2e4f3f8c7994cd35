"""The colours of the skin, in one place: the pictures and the skin description use the same."""

FACE = (226, 231, 238)
FONTFACE = (24, 32, 44)
LIGHT = (250, 251, 253)  # "shad1"
DARK = (160, 171, 188)  # "shad2"
SUNKEN = (251, 252, 254)
BACK = FACE  # also behind the countdown of the waiting window, which is dark blue
ACCENT = (31, 95, 168)
ACCENT_DARK = (22, 72, 132)
ACCENT_LIGHT = (196, 216, 241)
FOCUS = (210, 226, 246)
DISABLED = (120, 129, 143)  # text and marks
EDGE_OFF = (188, 196, 208)  # around what is disabled
INACTIVE = (118, 133, 156)  # a window without the focus
INACTIVE_DARK = (96, 110, 132)
TOOLTIP = (255, 250, 222)
BUTTON = (241, 244, 248)
GREY = (206, 212, 222)
WHITE = (255, 255, 255)
MASK = (255, 0, 255)


def css(color):
    return "#%02x%02x%02x" % color
