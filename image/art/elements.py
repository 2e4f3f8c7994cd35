"""The 46 elements of the skin as SVG pictures.

Each element is a list of frames on a grid; a frame is drawn by a small function that gets its drawing
state (0 normal, 1 pressed or selected, 2 disabled, 3 focused). What is stretched over a widget is cut
into edges and a tile, so everything but the edges of a frame has to repeat.
"""

from palette import (ACCENT, ACCENT_DARK, ACCENT_LIGHT, BACK, BAR, BAR_OFF, BUTTON, DARK, DISABLED, EDGE_OFF, FACE,
                     FOCUS, FONTFACE, GREY, GRIP, GRIP_FOCUS, LIGHT, PANEL, PANEL_EDGE, SUNKEN, WHITE, css)

NORMAL, PRESSED, OFF, FOCUSED = range(4)

FILLS = {NORMAL: BUTTON, PRESSED: ACCENT, OFF: FACE, FOCUSED: FOCUS}
EDGES = {NORMAL: DARK, PRESSED: ACCENT_DARK, OFF: EDGE_OFF, FOCUSED: ACCENT_DARK}
MARKS = {NORMAL: FONTFACE, PRESSED: WHITE, OFF: DISABLED, FOCUSED: ACCENT_DARK}


def fill(w, h, color):
    return f'<rect width="{w}" height="{h}" fill="{css(color)}"/>'


def box(x, y, w, h, color, edge=None, radius=3.0):
    """A rounded box whose one-pixel edge lies inside the given size."""
    if edge is None:
        return f'<rect x="{x}" y="{y}" width="{w}" height="{h}" rx="{radius}" fill="{css(color)}"/>'
    return (f'<rect x="{x + .5}" y="{y + .5}" width="{w - 1}" height="{h - 1}" rx="{radius}" '
            f'fill="{css(color)}" stroke="{css(edge)}"/>')


def path(d, color, width=0.0):
    if width:
        return (f'<path d="{d}" fill="none" stroke="{css(color)}" stroke-width="{width}" '
                'stroke-linecap="round" stroke-linejoin="round"/>')
    return f'<path d="{d}" fill="{css(color)}"/>'


def chevron(direction, cx, cy, color, r=4):
    d = {"left": f"M{cx + r / 2} {cy - r}L{cx - r / 2} {cy}L{cx + r / 2} {cy + r}",
         "right": f"M{cx - r / 2} {cy - r}L{cx + r / 2} {cy}L{cx - r / 2} {cy + r}",
         "up": f"M{cx - r} {cy + r / 2}L{cx} {cy - r / 2}L{cx + r} {cy + r / 2}",
         "down": f"M{cx - r} {cy - r / 2}L{cx} {cy + r / 2}L{cx + r} {cy - r / 2}"}[direction]
    return path(d, color, 2)


def button(state, w=24, h=26):
    picture = fill(w, h, FACE) + box(0, 0, w, h, FILLS[state], EDGES[state], 5)
    return picture + (inner_edge(w, h, 4) if state == FOCUSED else "")


def inner_edge(w, h, radius):
    """A second line inside of the first one."""
    return (f'<rect x="1.5" y="1.5" width="{w - 3}" height="{h - 3}" rx="{radius}" fill="none" '
            f'stroke="{css(ACCENT_DARK)}"/>')


# The thickness of scroll bars.
THIN = 14


def arrow_button(direction):
    """A mark on the track; a box only while it is pressed."""
    def draw(state):
        ground = fill(THIN, THIN, PANEL)
        pressed = box(1, 1, THIN - 2, THIN - 2, ACCENT, None, 3) if state == PRESSED else ""
        mark = GRIP if state in (NORMAL, OFF) else MARKS[state]
        return ground + pressed + chevron(direction, THIN / 2, THIN / 2, mark, 3)
    return draw


TOGGLE_FILLS = {NORMAL: SUNKEN, PRESSED: ACCENT, OFF: FACE, FOCUSED: FOCUS}
TOGGLE_MARKS = {NORMAL: ACCENT_DARK, PRESSED: WHITE, OFF: DISABLED, FOCUSED: ACCENT_DARK}


def check(state, checked):
    frame = fill(16, 16, FACE) + box(1, 1, 14, 14, TOGGLE_FILLS[state], EDGES[state])
    return frame + (path("M4.5 8.5L7 11L11.5 5", TOGGLE_MARKS[state], 2.2) if checked else "")


def radio(state, checked):
    frame = (fill(16, 16, FACE) + f'<circle cx="8" cy="8" r="6.5" fill="{css(TOGGLE_FILLS[state])}" '
             f'stroke="{css(EDGES[state])}"/>')
    return frame + (f'<circle cx="8" cy="8" r="3.2" fill="{css(TOGGLE_MARKS[state])}"/>' if checked else "")


LIST_ROWS = (SUNKEN, ACCENT_LIGHT, SUNKEN, FOCUS, ACCENT, ACCENT, SUNKEN, GREY)


# Wide tiles dress a wide widget with few copies.
WIDE = 64


def list_row(state):
    row = fill(WIDE, 26, SUNKEN)
    if state in (1, 3, 4, 5, 7):
        row += box(0, 1, WIDE, 24, LIST_ROWS[state], None, 4)
    return row


def slider_back(vertical):
    def draw(state):
        groove = FACE if state == OFF else GREY
        if vertical:
            return fill(22, 24, FACE) + box(9, 0, 4, 24, groove, DARK, 2)
        return fill(24, 22, FACE) + box(0, 9, 24, 4, groove, DARK, 2)
    return draw


def slider_grip(w, h):
    return lambda state: box(0, 0, w, h, FILLS[state], EDGES[state], 3)


def scroll_grip(w, h):
    fills = {NORMAL: GRIP, PRESSED: ACCENT, OFF: GREY, FOCUSED: GRIP_FOCUS}
    inset = 3
    return lambda state: fill(w, h, PANEL) + box(inset, inset, w - 2 * inset, h - 2 * inset, fills[state], None, 4)


def nothing(_):
    return ""


def window_icon(draw_mark):
    """A mark on the title bar; a box behind it only while it is pressed."""
    def draw(state):
        ground = fill(16, 16, BAR_OFF if state == OFF else BAR)
        pressed = box(0, 0, 16, 16, ACCENT, None, 3) if state == PRESSED else ""
        return ground + pressed + draw_mark({OFF: DISABLED, PRESSED: WHITE}.get(state, FONTFACE))
    return draw


def menu_item(frame):
    selected = frame in (1, 4, 6)
    background = ACCENT if selected else FACE
    mark = WHITE if selected else FONTFACE
    row = fill(48, 20, FACE) + (box(1, 0, 46, 20, background, None, 3) if selected else "")
    if frame == 2:
        row += f'<rect x="4" y="9" width="40" height="1" fill="{css(DARK)}"/>'
        row += f'<rect x="4" y="10" width="40" height="1" fill="{css(LIGHT)}"/>'
    if frame in (3, 4):
        row += chevron("right", 42, 10, mark, 3.5)
    if frame in (5, 6):
        row += path("M5 10.5L8 13.5L13 6.5", mark, 2)
    return row


def tab(frame):
    face = FACE if frame == 1 else GREY
    picture = box(0, 1, 24, 26, face, DARK, 3)
    if frame != 1:
        picture += f'<rect x="0" y="19" width="24" height="1" fill="{css(DARK)}"/>'
    return picture


def progress(frame, vertical):
    w, h = (15, 24) if vertical else (24, 15)
    if frame == 0:
        return box(0, 0, w, h, SUNKEN, DARK, 3)
    return box(2, 2, w - 4, h - 4, ACCENT, None, 2)


def frame_strip(w, h, active, horizontal, first, bar_side=False):
    """A border of a window: its outer line, and the colour of the title bar or of the window."""
    color = (BAR if active else BAR_OFF) if bar_side else FACE
    picture = fill(w, h, color)
    edge = ACCENT if active else DARK
    x = y = 0
    lw, lh = (w, 1) if horizontal else (1, h)
    if not first:
        x, y = (0, h - 1) if horizontal else (w - 1, 0)
    return picture + f'<rect x="{x}" y="{y}" width="{lw}" height="{lh}" fill="{css(edge)}"/>'


def window_side(active, first):
    """Beside the title bar it is of the bar's colour. Its ends close the window's line at the corners."""
    bar_part = frame_strip(4, 32, active, False, first, True)
    ends = "".join(f'<rect x="0" y="{y}" width="4" height="1" fill="{css(ACCENT if active else DARK)}"/>' for y in (0, 95))
    return frame_strip(4, 96, active, False, first) + bar_part + ends


def panel(color, edge, radius=3.0, outside=FACE):
    return lambda _: fill(WIDE, 64, outside) + box(0, 0, WIDE, 64, color, edge, radius)


def etched(first, second):
    def draw(_):
        return (f'<rect x="1.5" y="1.5" width="62" height="62" fill="none" stroke="{css(second)}"/>'
                f'<rect x=".5" y=".5" width="62" height="62" fill="none" stroke="{css(first)}"/>')
    return draw


def bar(w, h, *colors):
    step_x, step_y = (0, 1) if w > h else (1, 0)
    lw, lh = (w, 1) if w > h else (1, h)
    return "".join(f'<rect x="{i * step_x}" y="{i * step_y}" width="{lw}" height="{lh}" fill="{css(c)}"/>'
                   for i, c in enumerate(colors))


class Element:
    """Frames of one size on a grid of columns and rows, and the tile of a frame.

    `masked` elements are transparent where nothing is drawn.
    """

    def __init__(self, size, tile, draw, columns=1, rows=1, masked=False):
        self.size, self.tile, self.draw = size, tile, draw
        self.columns, self.rows, self.masked = columns, rows, masked

    def svg(self):
        w, h = self.size
        frames = []
        for row in range(self.rows):
            for column in range(self.columns):
                picture = self.draw(row * self.columns + column)
                frames.append(f'<svg x="{column * w}" y="{row * h}" width="{w}" height="{h}">{picture}</svg>')
        return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{w * self.columns}" '
                f'height="{h * self.rows}">{"".join(frames)}</svg>')


def two_columns(draw):
    return lambda i: draw(i // 2, i % 2 == 1)


CLOSE = window_icon(lambda c: path("M5 5L11 11M11 5L5 11", c, 2))
MAXIMISE = window_icon(lambda c: path("M4.5 5H11.5V11.5H4.5ZM4.5 6.5H11.5", c, 1.4))
MINIMISE = window_icon(lambda c: path("M4.5 11H11.5", c, 2))
RESTORE = window_icon(lambda c: path("M4.5 7H9.5V12H4.5ZM7 7V4.5H12V9.5H9.5", c, 1.4))

ELEMENTS = {
    "BOX": Element((64, 64), (56, 48), etched(DARK, LIGHT)),
    "BOX_SHADDOW": Element((64, 64), (56, 56), lambda _: fill(64, 64, DARK) + box(0, 0, 62, 62, FACE, DARK, 0)),
    "BUTTON": Element((24, 26), (12, 14), button, rows=4),
    "CHECKBOX": Element((16, 16), (8, 8), two_columns(check), columns=2, rows=4, masked=True),
    "CLEAR_BACK": Element((72, 72), (68, 68), lambda _: fill(72, 72, BACK)),
    "COMBO_BUTTON": Element((18, 20), (18, 20), lambda s: chevron("down", 9, 10, MARKS[s]), rows=4, masked=True),
    "HSLIDER_BACK": Element((24, 22), (16, 18), slider_back(False), rows=4),
    "HSLIDER_GRIP": Element((11, 22), (11, 22), slider_grip(11, 22), rows=4, masked=True),
    "ICONEXIT": Element((16, 16), (16, 16), CLOSE, rows=4),
    "ICONMAX": Element((16, 16), (16, 16), MAXIMISE, rows=4),
    "ICONMIN": Element((16, 16), (16, 16), MINIMISE, rows=4),
    "ICONRESTORE": Element((16, 16), (16, 16), RESTORE, rows=4),
    "LIST": Element((WIDE, 26), (WIDE - 8, 14), list_row, rows=8),
    "MENU_BACK": Element((WIDE, 64), (WIDE - 8, 56), panel(FACE, DARK)),
    "MENU_BUTTON": Element((18, 20), (10, 12), lambda f: fill(18, 20, ACCENT_LIGHT if f else FACE), rows=2),
    "MENU_ITEM": Element((48, 20), (16, 16), menu_item, rows=7),
    "PANEL_GROOVE": Element((64, 64), (56, 56), etched(DARK, LIGHT)),
    "PANEL_RAISED": Element((WIDE, 64), (WIDE - 8, 56), panel(FACE, PANEL_EDGE)),
    "PANEL_RIDGE": Element((64, 64), (60, 60), etched(LIGHT, DARK)),
    "PANEL_SUNKEN": Element((WIDE, 64), (WIDE - 8, 56), panel(SUNKEN, DARK)),
    "PROGRESSH": Element((24, 15), (12, 7), lambda f: progress(f, False), rows=2, masked=True),
    "PROGRESSV": Element((15, 24), (7, 12), lambda f: progress(f, True), columns=2, masked=True),
    "RADIO": Element((16, 16), (8, 8), two_columns(radio), columns=2, rows=4, masked=True),
    "SCROLL_DOWN": Element((THIN, THIN), (THIN - 8, THIN - 8), arrow_button("down"), rows=4),
    "SCROLL_HBACK": Element((24, THIN), (12, THIN - 8), lambda _: fill(24, THIN, PANEL), rows=4),
    "SCROLL_HGRIP": Element((36, THIN), (12, THIN - 8), scroll_grip(36, THIN), rows=4),
    "SCROLL_HGRIPOVERLAY": Element((THIN, THIN), (THIN, THIN), nothing, rows=4, masked=True),
    "SCROLL_LEFT": Element((THIN, THIN), (THIN - 8, THIN - 8), arrow_button("left"), rows=4),
    "SCROLL_RIGHT": Element((THIN, THIN), (THIN - 8, THIN - 8), arrow_button("right"), rows=4),
    "SCROLL_UP": Element((THIN, THIN), (THIN - 8, THIN - 8), arrow_button("up"), rows=4),
    "SCROLL_VBACK": Element((THIN, 24), (THIN - 8, 12), lambda _: fill(THIN, 24, PANEL), rows=4),
    "SCROLL_VGRIP": Element((THIN, 36), (THIN - 8, 12), scroll_grip(THIN, 36), rows=4),
    "SCROLL_VGRIPOVERLAY": Element((THIN, THIN), (THIN, THIN), nothing, rows=4, masked=True),
    "SEPARATORH": Element((12, 2), (8, 2), lambda _: bar(12, 2, DARK, LIGHT)),
    "SEPARATORV": Element((2, 12), (2, 8), lambda _: bar(2, 12, DARK, LIGHT)),
    "TAB_BUTTON": Element((24, 20), (12, 12), tab, rows=4, masked=True),
    "TAB_WINDOW": Element((WIDE, 64), (WIDE - 8, 56), panel(FACE, DARK)),
    "VSLIDER_BACK": Element((22, 24), (18, 16), slider_back(True), columns=4),
    "VSLIDER_GRIP": Element((22, 11), (22, 11), slider_grip(22, 11), columns=4, masked=True),
    "WINBOTTOM": Element((30, 4), (14, 4), lambda f: frame_strip(30, 4, f == 0, True, False), rows=2),
    "WINDOW": Element((30, 30), (14, 14), lambda _: fill(30, 30, FACE)),
    "WINGRIP": Element((30, 28), (14, 28), lambda f: fill(30, 28, BAR if f == 0 else BAR_OFF), rows=2),
    "WINLEFT": Element((4, 96), (4, 32), lambda f: window_side(f == 0, True), columns=2),
    "WINRIGHT": Element((4, 96), (4, 32), lambda f: window_side(f == 0, False), columns=2),
    "WINTEXT": Element((12, 24), (4, 24), lambda _: "", rows=2, masked=True),
    "WINTOP": Element((30, 4), (14, 4), lambda f: frame_strip(30, 4, f == 0, True, True, True), rows=2),
}
