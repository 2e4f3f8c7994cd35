"""The background pictures: a calm dark ground with the rings of a lifebelt, so faint that text lies well on them."""

import math

SIZES = ((640, 480), (800, 600), (1024, 768), (1280, 800), (1920, 1080), (1080, 1920))
SCALES = (1, 2)  # at three times the size nobody sees a difference


def lifebelt(cx, cy, r):
    part = 2 * math.pi * r / 8
    ring = f'<circle cx="{cx}" cy="{cy}" r="{r}" fill="none" stroke="#ffffff" stroke-opacity=".035" stroke-width="{r * .42:.1f}"/>'
    bands = (f'<circle cx="{cx}" cy="{cy}" r="{r}" fill="none" stroke="#ffffff" stroke-opacity=".03" '
             f'stroke-width="{r * .42:.1f}" stroke-dasharray="{part:.2f} {part:.2f}" '
             f'transform="rotate(22.5 {cx} {cy})"/>')
    return ring + bands


def svg(w, h):
    unit = min(w, h)
    return f'''<svg xmlns="http://www.w3.org/2000/svg" width="{w}" height="{h}">
<defs><linearGradient id="ground" x1="0" y1="0" x2="0" y2="1">
<stop offset="0" stop-color="#25344a"/><stop offset=".5" stop-color="#192433"/><stop offset="1" stop-color="#111925"/>
</linearGradient></defs>
<rect width="{w}" height="{h}" fill="url(#ground)"/>
{lifebelt(round(w - .16 * unit, 1), round(.1 * unit, 1), round(.3 * unit, 1))}
</svg>'''
