"""The pointer shapes as SVG: name -> (hotspot, frames, duration of a frame in ms)."""

SIZE = 24
OUTLINE = 'stroke="#18202c" stroke-width="1.4" stroke-linejoin="round" fill="#ffffff"'
THICK = 'fill="none" stroke="#ffffff" stroke-width="4" stroke-linecap="round" stroke-linejoin="round"'
THIN = 'fill="none" stroke="#18202c" stroke-width="1.8" stroke-linecap="round" stroke-linejoin="round"'


def stroke(d):
    """A dark line with a light rim, to be seen on any ground."""
    return f'<path d="{d}" {THICK}/><path d="{d}" {THIN}/>'


ARROW = f'<path d="M2 1.5V17.5L6.2 13.9L9 20.3L12 19L9.2 12.8H15Z" {OUTLINE}/>'
HAND = (f'<path d="M8.5 1.5C10 1.5 10.5 2.5 10.5 3.5V9L16.5 10.4C18 10.8 18.6 12 18.4 13.4L17.4 20.5H8.6'
        f'L4.3 14.4C3.6 13.3 5 11.9 6.5 13.2V3.5C6.5 2.5 7 1.5 8.5 1.5Z" {OUTLINE}/>')
HORIZONTAL = stroke("M3 12H21M7 8L3 12L7 16M17 8L21 12L17 16")


def turned(picture, degrees):
    return f'<g transform="rotate({degrees} 12 12)">{picture}</g>'


def hourglass(frame):
    glass = f'<path d="M6 2.5H18V6L13.2 12L18 18V21.5H6V18L10.8 12L6 6Z" {OUTLINE}/>'
    if frame == 7:
        return turned(glass, 45)
    fallen = frame / 6
    top = 7.5 - 1.4 + 3.4 * fallen
    bottom = 20.3 - 3.4 * fallen
    half = 3.6 * (1 - fallen)
    sand = f'<path d="M{12 - half:.2f} {top:.2f}H{12 + half:.2f}L12 11Z" fill="#d9a441"/>'
    if frame:
        sand += f'<path d="M8 20.3H16L12 {bottom:.2f}Z" fill="#d9a441"/>'
    return glass + sand


CURSORS = {
    "MOUSE_ALTERNATIVE": ((12, 2), [f'<path d="M12 1.5L18 9H14.5V21.5H9.5V9H6Z" {OUTLINE}/>'], 20),
    "MOUSE_CROSSHAIR": ((12, 12), [stroke("M12 2V9M12 15V22M2 12H9M15 12H22")], 20),
    "MOUSE_HOURGLASS": ((12, 12), [hourglass(i) for i in range(8)], 120),
    "MOUSE_MOVE": ((12, 12), [stroke("M12 3V21M3 12H21M9 6L12 3L15 6M9 18L12 21L15 18M6 9L3 12L6 15M18 9L21 12L18 15")], 20),
    "MOUSE_NORMAL": ((2, 1), [ARROW], 20),
    "MOUSE_SELECT": ((8, 1), [HAND], 20),
    "MOUSE_SIZE_DIAGONAL1": ((12, 12), [turned(HORIZONTAL, 45)], 20),
    "MOUSE_SIZE_DIAGONAL2": ((12, 12), [turned(HORIZONTAL, -45)], 20),
    "MOUSE_SIZE_HORIZONTAL": ((12, 12), [HORIZONTAL], 20),
    "MOUSE_SIZE_VERTICAL": ((12, 12), [turned(HORIZONTAL, 90)], 20),
    "MOUSE_TEXTSELECT": ((12, 12), [stroke("M9 3C10.5 3 12 3.5 12 5V19C12 20.5 10.5 21 9 21M15 3C13.5 3 12 3.5 12 5M12 19C12 20.5 13.5 21 15 21")], 20),
    "MOUSE_UNAVAILABLE": ((12, 12), ['<circle cx="12" cy="12" r="9" fill="none" stroke="#ffffff" stroke-width="5"/>'
                                     '<circle cx="12" cy="12" r="9" fill="none" stroke="#b3261e" stroke-width="3"/>'
                                     '<path d="M6 6L18 18" stroke="#b3261e" stroke-width="3"/>'], 20),
}


def svg(frames):
    parts = "".join(f'<svg x="{i * SIZE}" width="{SIZE}" height="{SIZE}">{f}</svg>' for i, f in enumerate(frames))
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{SIZE * len(frames)}" height="{SIZE}">{parts}</svg>')
