#!/usr/bin/env python3
"""Draws option_marks.png: the marks of USOptionButton, 12 by 12 pixels each on a clear ground, one below the
other at steps of 13 from row 2 (not chosen) and from row 52 (chosen): normal, hover, pressed, disabled.

A disc of 12 pixels has its centre between pixels, so that the ring is alike on all four sides. The last row of
the first four is the first row of the second four: both rings have the same colour there.
"""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent))
from draw import ClearCanvas, disc, vertical

SIDE, STEP = 12, 13
WIDTH, HEIGHT = 12, 103
BASES = {False: 2, True: 52}

SHARED = (0x98, 0xAA, 0xC6)

LOOKS = [
    # ring from top, ring to bottom, inner ring, face from top, face to bottom, dot from top, dot to bottom
    (SHARED, (0x72, 0x90, 0xBC), (0xE6, 0xEC, 0xF5), (0xD8, 0xE2, 0xEF), (0xFC, 0xFD, 0xFE), (0x4F, 0x7F, 0xC4), (0x1F, 0x46, 0x86)),
    ((0xCB, 0xA0, 0x5C), (0xB7, 0x86, 0x3C), (0xFF, 0xF0, 0xC6), (0xFF, 0xDF, 0x92), (0xFF, 0xFA, 0xE6), (0x4F, 0x7F, 0xC4), (0x1F, 0x46, 0x86)),
    ((0xA0, 0x69, 0x22), (0xA0, 0x69, 0x22), (0xFF, 0xD9, 0x96), (0xFF, 0xC0, 0x5E), (0xFF, 0xE2, 0xAE), (0x33, 0x60, 0xA4), (0x14, 0x33, 0x66)),
    ((0xC2, 0xC8, 0xD2), SHARED, (0xF1, 0xF3, 0xF6), (0xEA, 0xED, 0xF1), (0xF8, 0xF9, 0xFA), (0xB4, 0xBD, 0xCB), (0xA0, 0xAB, 0xBC)),
]


def mark(canvas, y, look, chosen):
    ring_top, ring_bottom, inner, face_top, face_bottom, dot_top, dot_bottom = look
    centre = SIDE / 2
    end = y + SIDE if chosen else min(y + SIDE, BASES[True])

    def round_fill(radius, colour):
        canvas.fill(disc(centre, y + centre, radius), colour, 0, y, SIDE, end)

    round_fill(5.9, vertical(ring_top, ring_bottom, y, y + SIDE))
    round_fill(4.85, inner)
    round_fill(3.95, vertical(face_top, face_bottom, y + 2, y + SIDE - 2))
    if chosen:
        round_fill(2.55, vertical(dot_top, dot_bottom, y + 3, y + SIDE - 3))


if __name__ == "__main__":
    strip = ClearCanvas(WIDTH, HEIGHT)
    for chosen, base in BASES.items():
        for index, look in enumerate(LOOKS):
            mark(strip, base + index * STEP, look, chosen)
    strip.save_png(Path(__file__).resolve().parent / "option_marks.png")
