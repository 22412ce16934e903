#!/usr/bin/env python3
"""Draws the toolbox bitmaps of the controls: 16 by 15 pixels on the gray that designers make transparent."""

import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent))
from draw import Canvas, disc, polygon, stroke, vertical

GRAY = (0xC0, 0xC0, 0xC0)
BORDER = (0x2F, 0x5F, 0x9E)
FACE = vertical((0xF4, 0xF9, 0xFE), (0xCF, 0xE2, 0xF5), 2, 14)
MARK = (0x1C, 0x84, 0x3C)


def us_check_box(canvas):
    canvas.rectangle(2, 2, 13, 13, FACE)
    canvas.frame(2, 2, 13, 13, BORDER)
    canvas.fill(stroke([(4.6, 7.4), (7.2, 10.2), (13.4, 2.8)], 2.2), MARK, 3, 0, 16, 13)


def us_scroll_bar(canvas):
    canvas.rectangle(5, 0, 12, 15, FACE)
    canvas.frame(5, 0, 12, 15, BORDER)
    canvas.rectangle(6, 5, 11, 10, (0x5C, 0x94, 0xCC))
    for row in range(2):
        canvas.rectangle(8 - row, 2 + row, 9 + row, 3 + row, BORDER)
        canvas.rectangle(8 - row, 12 - row, 9 + row, 13 - row, BORDER)


def us_option_button(canvas):
    canvas.fill(disc(7.5, 7.5, 6.1), BORDER, 0, 0, 16, 15)
    canvas.fill(disc(7.5, 7.5, 5.0), FACE, 0, 0, 16, 15)
    canvas.fill(disc(7.5, 7.5, 2.6), MARK, 0, 0, 16, 15)


def us_button(canvas):
    canvas.rectangle(1, 3, 15, 12, vertical((0xFF, 0xFF, 0xFF), (0xB9, 0xD3, 0xEE), 3, 12))
    canvas.frame(1, 3, 15, 12, BORDER)
    canvas.rectangle(4, 6, 12, 7, (0x3A, 0x3A, 0x3A))
    canvas.rectangle(4, 8, 10, 9, (0x3A, 0x3A, 0x3A))


def us_alpha_image(canvas):
    canvas.rectangle(1, 1, 15, 14, vertical((0xDF, 0xEE, 0xFC), (0xFF, 0xFF, 0xFF), 1, 14))
    canvas.fill(disc(11.0, 4.6, 1.9), (0xF2, 0xB1, 0x2A), 1, 1, 15, 14)
    for left, peak, right, top, shade in ((1, 5, 10, 5, (0x4E, 0x9A, 0x5B)), (6, 11, 15, 8, (0x2C, 0x74, 0x45))):
        for row in range(top, 13):
            reach = row - top
            canvas.rectangle(max(left, peak - reach), row, min(right, peak + reach + 1), row + 1, shade)
    canvas.frame(1, 1, 15, 14, BORDER)


def us_image_list(canvas):
    for left, top in ((1, 1), (3, 3), (5, 5)):
        canvas.rectangle(left, top, left + 10, top + 9, FACE)
        canvas.frame(left, top, left + 10, top + 9, BORDER)
    canvas.rectangle(6, 6, 14, 13, vertical((0xBF, 0xE0, 0xF8), (0xF4, 0xF9, 0xFE), 6, 13))
    canvas.fill(disc(12.0, 8.0, 1.4), (0xE8, 0xA0, 0x20), 6, 6, 14, 13)
    canvas.fill(polygon([(6, 13), (9.2, 8.6), (11.2, 11.2), (12.2, 10.2), (14, 13)]), MARK, 6, 6, 14, 13)


def us_animated_image(canvas):
    canvas.rectangle(1, 0, 15, 15, (0x33, 0x3F, 0x4E))  # a strip of film with a running picture
    for column in range(2, 14, 3):
        canvas.rectangle(column, 1, column + 2, 2, (0xFF, 0xFF, 0xFF))
        canvas.rectangle(column, 13, column + 2, 14, (0xFF, 0xFF, 0xFF))
    canvas.rectangle(2, 3, 14, 12, vertical((0xDF, 0xEE, 0xFC), (0xFF, 0xFF, 0xFF), 3, 12))
    canvas.fill(polygon([(5.5, 4.2), (12.0, 7.5), (5.5, 10.8)]), MARK, 2, 3, 14, 12)


def us_list_box(canvas):
    canvas.rectangle(1, 0, 15, 15, (0xFF, 0xFF, 0xFF))
    canvas.frame(1, 0, 15, 15, BORDER)
    canvas.rectangle(2, 5, 14, 9, vertical((0xDF, 0xEE, 0xFC), (0xB9, 0xD3, 0xEE), 5, 9))
    for row, end in ((3, 11), (6, 10), (11, 12)):
        canvas.rectangle(4, row, end, row + 1, (0x3A, 0x3A, 0x3A))


ICONS = {name: draw for name, draw in list(globals().items()) if name.startswith("us_")}

if __name__ == "__main__":
    for name, draw in ICONS.items():
        icon = Canvas(16, 15, GRAY)
        draw(icon)
        icon.save_bmp(HERE / f"{name}.bmp")
