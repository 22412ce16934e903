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


def us_calendar(canvas):
    canvas.rectangle(1, 2, 15, 14, (0xFF, 0xFF, 0xFF))
    canvas.rectangle(1, 2, 15, 5, vertical((0xE0, 0x6A, 0x4A), (0xB8, 0x3A, 0x2A), 2, 5))
    canvas.frame(1, 2, 15, 14, BORDER)
    for left in (4, 11):
        canvas.rectangle(left, 0, left + 1, 4, (0x3A, 0x3A, 0x3A))
    for row in range(3):
        for column in range(4):
            marked = (row, column) == (1, 2)
            canvas.rectangle(3 + 3 * column, 6 + 3 * row - (row > 1), 5 + 3 * column, 8 + 3 * row - (row > 1), MARK if marked else (0x9A, 0xB4, 0xD0))


def us_tree_view(canvas):
    line = (0x90, 0x90, 0x90)
    canvas.rectangle(3, 4, 4, 13, line)
    for top, left in ((7, 6), (12, 6)):
        canvas.rectangle(3, top, left, top + 1, line)
    for left, top in ((1, 1), (6, 5), (6, 10)):
        canvas.rectangle(left, top, left + 5, top + 4, vertical((0xFF, 0xE9, 0xA8), (0xF0, 0xC0, 0x50), top, top + 4))
        canvas.frame(left, top, left + 5, top + 4, BORDER)
    for top in (2, 7, 12):
        canvas.rectangle(7 if top == 2 else 12, top, 15, top + 1, (0x3A, 0x3A, 0x3A))


def us_tool_bar(canvas):
    canvas.rectangle(0, 3, 16, 12, vertical((0xFD, 0xFE, 0xFF), (0xC4, 0xDA, 0xF0), 3, 12))
    canvas.frame(0, 3, 16, 12, BORDER)
    for row in range(5, 10, 2):
        canvas.rectangle(2, row, 3, row + 1, BORDER)
    canvas.rectangle(4, 5, 8, 10, (0xF2, 0xB1, 0x2A))
    canvas.rectangle(9, 5, 13, 10, (0x5C, 0x94, 0xCC))


def us_image_list(canvas):
    for left, top in ((1, 1), (3, 3), (5, 5)):
        canvas.rectangle(left, top, left + 10, top + 9, FACE)
        canvas.frame(left, top, left + 10, top + 9, BORDER)
    canvas.rectangle(6, 6, 14, 13, vertical((0xBF, 0xE0, 0xF8), (0xF4, 0xF9, 0xFE), 6, 13))
    canvas.fill(disc(12.0, 8.0, 1.4), (0xE8, 0xA0, 0x20), 6, 6, 14, 13)
    canvas.fill(polygon([(6, 13), (9.2, 8.6), (11.2, 11.2), (12.2, 10.2), (14, 13)]), MARK, 6, 6, 14, 13)


def us_text_box(canvas):
    canvas.rectangle(0, 3, 16, 12, (0xFF, 0xFF, 0xFF))
    canvas.frame(0, 3, 16, 12, BORDER)
    for column in (4, 5, 6):  # the bar of an insertion point between letters
        canvas.rectangle(column, 5, column + 1, 6 if column != 5 else 10, (0x3A, 0x3A, 0x3A))
        canvas.rectangle(column, 9, column + 1, 10, (0x3A, 0x3A, 0x3A))
    canvas.rectangle(8, 7, 13, 8, MARK)


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


def us_combo_box(canvas):
    canvas.rectangle(0, 1, 16, 8, (0xFF, 0xFF, 0xFF))
    canvas.rectangle(10, 2, 15, 7, vertical((0xDF, 0xEE, 0xFC), (0xB9, 0xD3, 0xEE), 2, 7))
    canvas.rectangle(9, 2, 10, 7, (0x9C, 0xB8, 0xD8))
    canvas.frame(0, 1, 16, 8, BORDER)
    canvas.rectangle(2, 4, 7, 5, (0x3A, 0x3A, 0x3A))
    for row in range(2):
        canvas.rectangle(11 + row, 4 + row, 14 - row, 5 + row, BORDER)
    canvas.rectangle(1, 8, 13, 15, (0xFF, 0xFF, 0xFF))
    canvas.frame(1, 7, 13, 15, (0x7F, 0x9F, 0xC6))
    for row, end in ((9, 9), (12, 10)):
        canvas.rectangle(3, row, end, row + 1, (0x6A, 0x6A, 0x6A))


def us_label(canvas):
    canvas.fill(stroke([(2.6, 13.0), (8.0, 1.8), (13.4, 13.0)], 2.0), BORDER, 0, 0, 16, 15)
    canvas.fill(stroke([(4.6, 9.4), (11.4, 9.4)], 1.8), MARK, 0, 0, 16, 15)


def us_flex_grid(canvas):
    canvas.rectangle(1, 1, 15, 14, (0xFF, 0xFF, 0xFF))
    canvas.rectangle(1, 1, 15, 5, vertical((0xF4, 0xF9, 0xFE), (0xB9, 0xD3, 0xEE), 1, 5))
    canvas.rectangle(2, 8, 14, 11, (0xFD, 0xE6, 0xB8))
    for row in (5, 8, 11):
        canvas.rectangle(1, row, 15, row + 1, (0x9C, 0xB8, 0xD8))
    canvas.rectangle(6, 1, 7, 14, (0x9C, 0xB8, 0xD8))
    canvas.rectangle(10, 1, 11, 14, (0x9C, 0xB8, 0xD8))
    canvas.frame(1, 1, 15, 14, BORDER)


def us_progress_bar(canvas):
    canvas.rectangle(0, 4, 16, 11, (0xFF, 0xFF, 0xFF))
    canvas.rectangle(1, 5, 10, 10, vertical((0x9C, 0xE0, 0x90), (0x22, 0xA8, 0x20), 5, 10))
    canvas.frame(0, 4, 16, 11, BORDER)


def us_picture_lcd(canvas):
    canvas.rectangle(0, 1, 16, 14, vertical((0xF4, 0xF9, 0xFE), (0xCF, 0xE2, 0xF5), 1, 14))
    canvas.frame(0, 1, 16, 14, BORDER)
    for left, bars in ((3, "abdeg"), (9, "abcdg")):  # the digits 2 and 3
        for name, area in {"a": (0, 3, 4, 4), "b": (4, 4, 5, 7), "c": (4, 8, 5, 11), "d": (0, 11, 4, 12), "e": (-1, 8, 0, 11), "g": (0, 7, 4, 8)}.items():
            if name in bars:
                canvas.rectangle(left + area[0], area[1], left + area[2], area[3], MARK)


def us_group_box(canvas):
    canvas.rectangle(1, 2, 15, 14, (0xFF, 0xFF, 0xFF))
    canvas.rectangle(1, 2, 15, 6, vertical((0xF4, 0xF9, 0xFE), (0xB9, 0xD3, 0xEE), 2, 6))
    canvas.frame(1, 2, 15, 14, BORDER)
    canvas.rectangle(3, 3, 9, 5, (0x3A, 0x3A, 0x3A))
    for top in (8, 11):
        canvas.rectangle(3, top, 5, top + 2, MARK)
        canvas.rectangle(7, top, 12, top + 1, (0x3A, 0x3A, 0x3A))


def us_status_bar(canvas):
    canvas.rectangle(0, 5, 16, 13, vertical((0xFD, 0xFE, 0xFF), (0xC4, 0xDA, 0xF0), 5, 13))
    canvas.frame(0, 5, 16, 13, BORDER)
    canvas.rectangle(2, 9, 6, 10, (0x3A, 0x3A, 0x3A))
    canvas.rectangle(7, 6, 8, 12, (0x9C, 0xB8, 0xD8))
    canvas.rectangle(9, 8, 11, 11, MARK)
    for step in range(3):  # the grip
        for column in range(step + 1):
            canvas.rectangle(14 - column, 9 + step, 15 - column, 10 + step, BORDER)


def us_ribbon(canvas):
    canvas.rectangle(0, 4, 16, 14, vertical((0xFD, 0xFE, 0xFF), (0xC4, 0xDA, 0xF0), 4, 14))
    canvas.frame(0, 4, 16, 14, BORDER)
    canvas.rectangle(1, 1, 7, 5, (0xFD, 0xFE, 0xFF))
    canvas.rectangle(1, 1, 7, 2, BORDER)
    canvas.rectangle(1, 1, 2, 5, BORDER)
    canvas.rectangle(6, 1, 7, 5, BORDER)
    canvas.rectangle(2, 6, 6, 10, (0xF2, 0xB1, 0x2A))
    canvas.rectangle(7, 6, 11, 10, (0x5C, 0x94, 0xCC))
    canvas.rectangle(12, 6, 13, 12, (0x9C, 0xB8, 0xD8))
    canvas.rectangle(2, 11, 11, 12, (0x9C, 0xB8, 0xD8))


def us_form(canvas):
    canvas.rectangle(1, 1, 15, 14, (0xFF, 0xFF, 0xFF))
    canvas.rectangle(1, 1, 15, 5, vertical((0x5A, 0xA7, 0xDA), (0x3F, 0x95, 0xCF), 1, 5))
    canvas.rectangle(11, 1, 15, 4, (0xC7, 0x50, 0x50))
    canvas.rectangle(3, 3, 7, 4, (0xFF, 0xFF, 0xFF))
    canvas.frame(1, 1, 15, 14, BORDER)


def us_tab(canvas):
    canvas.rectangle(1, 5, 15, 14, (0xFF, 0xFF, 0xFF))
    canvas.frame(1, 5, 15, 14, BORDER)
    canvas.rectangle(6, 2, 11, 6, vertical((0xF4, 0xF9, 0xFE), (0xB9, 0xD3, 0xEE), 2, 6))
    canvas.frame(6, 2, 11, 6, BORDER)
    canvas.rectangle(1, 1, 7, 6, (0xFF, 0xFF, 0xFF))
    canvas.frame(1, 1, 7, 6, BORDER)
    canvas.rectangle(2, 5, 6, 6, (0xFF, 0xFF, 0xFF))
    canvas.rectangle(3, 3, 5, 4, (0x3A, 0x3A, 0x3A))
    canvas.rectangle(4, 8, 12, 9, (0x9C, 0xB8, 0xD8))
    canvas.rectangle(4, 11, 10, 12, (0x9C, 0xB8, 0xD8))


def us_menu(canvas):
    canvas.rectangle(0, 0, 16, 4, vertical((0xF4, 0xF9, 0xFE), (0xC4, 0xDA, 0xF0), 0, 4))
    canvas.rectangle(1, 3, 12, 15, (0xFF, 0xFF, 0xFF))
    canvas.rectangle(1, 3, 4, 15, (0xDA, 0xEA, 0xFA))
    canvas.rectangle(2, 6, 11, 9, (0xFD, 0xE6, 0xB8))
    canvas.frame(1, 3, 12, 15, BORDER)
    for row, end in ((5, 9), (7, 10), (10, 8), (12, 10)):
        canvas.rectangle(5, row, end, row + 1, (0x3A, 0x3A, 0x3A))


ICONS = {name: draw for name, draw in list(globals().items()) if name.startswith("us_")}

if __name__ == "__main__":
    for name, draw in ICONS.items():
        icon = Canvas(16, 15, GRAY)
        draw(icon)
        icon.save_bmp(HERE / f"{name}.bmp")
