#!/usr/bin/env python3
"""Draws the scr*.bmp bitmaps of the scroll bars.

Every picture is drawn once, for a bar from left to right (name ending in H), and turned about its diagonal for
a bar from top to bottom (V), so that both directions are the same bar. Cells of a strip, one below the other in a
thumb or grip and side by side in a button, are the states in the order of the painter's enumerations.
Magenta is left out where a glyph is laid over a face.
"""

import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent))
from draw import Canvas

BREADTH = 17
THUMB = 15  # length of a thumb's cell
BUTTON = 18
GRIP_LENGTH, GRIP_BREADTH = 10, 9


def rgb(text):
    return tuple(int(text[i : i + 2], 16) for i in (0, 2, 4))


def mix(a, b, t):
    return tuple(round(x + t * (y - x)) for x, y in zip(a, b))


# Lines of the track from its upper rim to its lower one, as a colour by state: idle, pressed, disabled. The
# fourth line is spare.
TRACK = [("D5DBE3", "E9EDF2", "F6F8FA"), ("AEBBCB", "BFCBD9", "CFD9E5"), ("E3E6EA", "F1F3F5", "F8F9FA")]
TRACK.append(TRACK[0])

# Faces: border, light inner rim, colour at the top, above the middle, below it, at the bottom.
IDLE = ("9AABC0", "FFFFFF", "F7F9FC", "E6ECF4", "D7E0EC", "E9EFF6")
NEAR = IDLE
HOT = ("5C94CC", "FFFFFF", "F1F9FF", "D5ECFC", "BBDFF8", "DAF0FD")
PRESSED = ("2F6CA8", "B9DBF3", "C4E3F8", "A3D2F2", "84BEE9", "B0DAF5")
DISABLED = ("CDD4DD", "FAFBFC", "F6F7F9", "F1F3F6", "ECEFF3", "F3F5F7")
REST = ("D5DBE3", "F4F6F9", "EFF2F6", "EAEEF3", "E5E9EF", "EBEFF3")  # a button with the pointer away

THUMB_FACES = (IDLE, HOT, PRESSED, DISABLED)
BUTTON_FACES = (REST, NEAR, PRESSED, HOT, DISABLED)

ARROWS = ("6B7C92", "4F627B", "123F6B", "1C5C96", "BBC4CF")
GRIPS = (("8494AA", "FFFFFF"), ("4E86BD", "FFFFFF"), ("2A639D", "D4ECFC"), ("C5CDD7", "FFFFFF"))


def face(canvas, left, top, length, breadth, colours, under):
    """A rounded box; `under` is what shows at its corners."""
    border, rim, *glow = map(rgb, colours)
    right, bottom = left + length, top + breadth
    middle = (breadth - 4) // 2

    def gradient(_, y):
        row = y - top - 2
        if row < middle:
            return mix(glow[0], glow[1], row / (middle - 1))
        return mix(glow[2], glow[3], (row - middle) / (breadth - 5 - middle))

    canvas.rectangle(left, top, right, bottom, border)
    canvas.rectangle(left + 1, top + 1, right - 1, bottom - 1, rim)
    canvas.rectangle(left + 2, top + 2, right - 2, bottom - 2, gradient)
    for x, inner_x in ((left, left + 1), (right - 1, right - 2)):
        for y, inner_y in ((top, top + 1), (bottom - 1, bottom - 2)):
            canvas.pixels[y][x] = mix(under, border, 0.25)
            canvas.pixels[inner_y][inner_x] = mix(rim, border, 0.5)


def track():
    strip = Canvas(len(TRACK), BREADTH)
    for x, (rim, edge, centre) in enumerate(TRACK):
        for y in range(BREADTH):
            colour = mix(rgb(edge), rgb(centre), 1 - abs(y - BREADTH // 2) / (BREADTH // 2))
            strip.pixels[y][x] = rgb(rim) if y in (0, BREADTH - 1) else colour
    return strip


def thumb():
    strip = Canvas(THUMB, len(THUMB_FACES) * BREADTH)
    for state, colours in enumerate(THUMB_FACES):
        face(strip, 0, state * BREADTH, THUMB, BREADTH, colours, rgb(TRACK[0][0]))
    return strip


def grip():
    strip = Canvas(GRIP_LENGTH, len(GRIPS) * GRIP_BREADTH)
    for state, (dark, light) in enumerate(GRIPS):
        top = state * GRIP_BREADTH + 1
        for x in (1, 4, 7):
            strip.rectangle(x, top, x + 1, top + GRIP_BREADTH - 2, rgb(dark))
            strip.rectangle(x + 1, top, x + 2, top + GRIP_BREADTH - 2, rgb(light))
    return strip


def button():
    strip = Canvas(len(BUTTON_FACES) * BUTTON, BREADTH)
    for state, colours in enumerate(BUTTON_FACES):
        face(strip, state * BUTTON, 0, BUTTON, BREADTH, colours, rgb(TRACK[0][0]))
    return strip


def arrow(points_right):
    """A triangle four pixels long and seven broad, all of its edges on pixels."""
    strip = Canvas(len(ARROWS) * BUTTON, BREADTH)
    for state, colour in enumerate(ARROWS):
        for column in range(4):
            reach = 3 - column if points_right else column
            x = state * BUTTON + 7 + column
            strip.rectangle(x, 8 - reach, x + 1, 9 + reach, rgb(colour))
    return strip


def turned(strip):
    out = Canvas(strip.height, strip.width)
    out.pixels = [list(column) for column in zip(*strip.pixels)]
    return out


def turned_cells(strip, cells):
    """As `turned`, but each cell in its place below the other."""
    height = strip.height // cells
    out = Canvas(height, cells * strip.width)
    rows = []
    for cell in range(cells):
        rows += [list(column) for column in zip(*strip.pixels[cell * height : (cell + 1) * height])]
    out.pixels = rows
    return out


if __name__ == "__main__":
    left, right = arrow(False), arrow(True)
    pictures = {
        "backh": track(), "backv": turned(track()),
        "thumbh": thumb(), "thumbv": turned(thumb()),
        "griph": grip(), "gripv": turned_cells(grip(), len(GRIPS)),
        "arrowh": button(), "arrowv": turned(button()),
        "arrowhl": left, "arrowhr": right,
        "arrowvt": turned(left), "arrowvb": turned(right),
    }
    for name, picture in pictures.items():
        picture.save_bmp(HERE / f"scr{name}.bmp")
