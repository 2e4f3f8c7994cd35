"""The background pictures: a calm dark ground with a lifebelt, beside which the menu files' heading stands."""

import math

SIZES = ((640, 480), (800, 600), (1024, 768), (1280, 800), (1920, 1080), (1080, 1920))
SCALES = (1, 2)  # at three times the size nobody sees a difference


def wave(w, h, level, swing, phase, color):
    points = [f"{x} {level * h + swing * h * math.sin(phase + 2 * math.pi * x / w):.1f}" for x in range(0, w + 1, 4)]
    return f'<path d="M0 {h}L{"L".join(points)}L{w} {h}Z" fill="{color}"/>'


def lifebelt(cx, cy, r):
    ring = f'<circle cx="{cx}" cy="{cy}" r="{r}" fill="none" stroke="#e9eef5" stroke-width="{r * .42:.1f}"/>'
    part = 2 * math.pi * r / 8
    bands = (f'<circle cx="{cx}" cy="{cy}" r="{r}" fill="none" stroke="#d5483d" stroke-width="{r * .42:.1f}" '
             f'stroke-dasharray="{part:.2f} {part:.2f}" transform="rotate(22.5 {cx} {cy})"/>')
    return ring + bands


def svg(w, h):
    unit = min(w / 800, h / 600)
    return f'''<svg xmlns="http://www.w3.org/2000/svg" width="{w}" height="{h}">
<defs><linearGradient id="ground" x1="0" y1="0" x2="0" y2="1">
<stop offset="0" stop-color="#1d4468"/><stop offset=".55" stop-color="#163352"/><stop offset="1" stop-color="#0d2036"/>
</linearGradient></defs>
<rect width="{w}" height="{h}" fill="url(#ground)"/>
{wave(w, h, .50, .035, .6, "#17395a")}{wave(w, h, .66, .03, 2.4, "#132f4c")}{wave(w, h, .84, .025, 4.0, "#0f263f")}
{lifebelt(round(62 * unit, 1), round(57 * unit, 1), round(19 * unit, 1))}
</svg>'''
