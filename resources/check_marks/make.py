#!/usr/bin/env python3
"""Draws check_marks.bmp: the marks of USCheckBox, two columns of 13 pixels by fifteen rows of 13.

Column 0 serves the Office themes, column 1 Windows 8. No face is pure white or a usual window colour: a
transparent check box lets its back colour through, and a mark must not get holes on a white form.
"""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent))
from draw import Canvas, stroke, vertical

SIDE = 13
TICK = [(3.2, 6.4), (5.5, 8.9), (10.0, 3.6)]

OFFICE = {
    # state: outer border, inner frame, face from top, face to bottom
    "normal": ((0x8E, 0xA6, 0xC8), (0xE9, 0xEE, 0xF6), (0xDD, 0xE6, 0xF1), (0xFB, 0xFC, 0xFD)),
    "hover": ((0xC1, 0x9A, 0x5C), (0xFF, 0xF3, 0xD2), (0xFF, 0xE3, 0x9E), (0xFF, 0xFA, 0xE6)),
    "pressed": ((0xA4, 0x6F, 0x2A), (0xFF, 0xDF, 0xA6), (0xFF, 0xC8, 0x70), (0xFF, 0xE4, 0xB4)),
    "disabled": ((0xBC, 0xC3, 0xCE), (0xF1, 0xF3, 0xF6), (0xEA, 0xED, 0xF1), (0xF7, 0xF8, 0xFA)),
}
OFFICE_TICK = {"normal": (0x2B, 0x4F, 0x8C), "hover": (0x2B, 0x4F, 0x8C), "pressed": (0x1F, 0x3B, 0x6B),
               "disabled": (0xA3, 0xAE, 0xBF)}
OFFICE_BLOCK = {"normal": ((0x5B, 0x86, 0xC4), (0x3C, 0x66, 0xA8)), "hover": ((0xE8, 0xA3, 0x3A), (0xC9, 0x7E, 0x17)),
                "pressed": ((0xC9, 0x7E, 0x17), (0xA4, 0x63, 0x0C)), "disabled": ((0xC3, 0xCA, 0xD5),) * 2}

FLAT = {
    "normal": ((0x70, 0x70, 0x70), (0xFD, 0xFD, 0xFE)),
    "hover": ((0x2F, 0x8D, 0xD6), (0xF2, 0xF9, 0xFE)),
    "pressed": ((0x12, 0x64, 0xA6), (0xD3, 0xE9, 0xFA)),
    "disabled": ((0xBF, 0xBF, 0xBF), (0xF8, 0xF8, 0xF9)),
}
FLAT_TICK = {"normal": (0x20, 0x20, 0x20), "hover": (0x12, 0x64, 0xA6), "pressed": (0x0B, 0x4A, 0x7E),
             "disabled": (0xB0, 0xB0, 0xB0)}


def office_box(canvas, x, y, state):
    border, inner, top, bottom = OFFICE[state]
    canvas.rectangle(x, y, x + SIDE, y + SIDE, border)
    canvas.rectangle(x + 1, y + 1, x + SIDE - 1, y + SIDE - 1, inner)
    canvas.rectangle(x + 2, y + 2, x + SIDE - 2, y + SIDE - 2, vertical(top, bottom, y + 2, y + SIDE - 2))


def flat_box(canvas, x, y, state):
    border, face = FLAT[state]
    canvas.rectangle(x, y, x + SIDE, y + SIDE, border)
    canvas.rectangle(x + 1, y + 1, x + SIDE - 1, y + SIDE - 1, face)


def tick(canvas, x, y, colour, width):
    points = [(x + px, y + py) for px, py in TICK]
    canvas.fill(stroke(points, width), colour, x + 1, y + 1, x + SIDE - 1, y + SIDE - 1)


def mark(canvas, column, row, kind, state):
    x, y = column * SIDE, row * SIDE
    office = column == 0
    (office_box if office else flat_box)(canvas, x, y, state)
    if kind == "checked":
        tick(canvas, x, y, (OFFICE_TICK if office else FLAT_TICK)[state], 2.1 if office else 1.7)
    elif kind == "grayed" and office:
        top, bottom = OFFICE_BLOCK[state]
        canvas.rectangle(x + 4, y + 4, x + 9, y + 9, vertical(top, bottom, y + 4, y + 9))
    elif kind == "grayed":
        canvas.rectangle(x + 3, y + 3, x + 10, y + 10, FLAT_TICK[state])


# Rows of the strip, from the top; a row that no state shows repeats its neighbour.
ROWS = [
    ("unchecked", "normal"), ("unchecked", "hover"), ("unchecked", "pressed"),
    ("checked", "hover"),
    ("checked", "normal"), ("checked", "normal"), ("checked", "pressed"),
    ("checked", "pressed"), ("grayed", "normal"),
    ("grayed", "normal"), ("grayed", "hover"), ("grayed", "pressed"),
    ("unchecked", "disabled"), ("checked", "disabled"), ("grayed", "disabled"),
]

if __name__ == "__main__":
    strip = Canvas(2 * SIDE, len(ROWS) * SIDE)
    for index, (kind, state) in enumerate(ROWS):
        for column in (0, 1):
            mark(strip, column, index, kind, state)
    strip.save_bmp(Path(__file__).resolve().parent / "check_marks.bmp")
