#!/usr/bin/env python3
"""Draws the skins of USForm: form_THEME_PERCENT.png, one sheet a theme and scale.

A sheet holds, from the top down at its left edge, the 22 control boxes (numbers 51 to 58, 61 to 67, 71 to 77);
beside them, at column W (the box's width), the title strip inactive and active, then one row each of the left
edge inactive and active and the right edge inactive and active, then the bottom edge's two columns. Sizes are
those of 96 dots an inch, scaled and rounded. Borders and corners are pixels of 96 dots enlarged whole, so that
they stay sharp; faces and glyphs are drawn for the size.
"""

import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent))
from draw import SAMPLES, ClearCanvas, stroke

PERCENTS = (100, 125, 150, 200, 300)
BOXES = [*range(51, 59), *range(61, 68), *range(71, 78)]
STRIP, HEIGHT = 10, 28
WHITE = (0xFF, 0xFF, 0xFF)


def rgb(text):
    return tuple(bytes.fromhex(text))


def mix(a, b, t):
    return tuple(round(p + t * (q - p)) for p, q in zip(a, b))


class Skin:
    """One theme. Edge colours run from the border inwards; faces are (border, top, bottom, glyph)."""

    def __init__(self, width, zones, rows, edges, bottoms, title, glyphs, hot, pressed, close_hot, close_pressed):
        self.width, self.zones, self.rows = width, zones, rows
        self.edges, self.bottoms = edges, bottoms
        self.title, self.glyphs = title, glyphs
        self.hot, self.pressed, self.close_hot, self.close_pressed = hot, pressed, close_hot, close_pressed
        self.flat = width > 100

    def strip_pixel(self, active, x, y, t):
        """The title strip at column x from the nearer end and row y; t is y as a part of the height."""
        border, light = self.edges[active][0], self.edges[active][1]
        if self.flat:
            if y == 0 or x == 0:
                return border
            if y == 1 or x == 1 or (y == 27 and x >= 4):
                return light if y < 27 or x == 1 else self.edges[active][4]
            return self.edges[active][2]
        if y == 0 or x == 0 or (y == 1 and x < 4) or (x == 1 and y < 4):
            return border
        top, middle, bottom = self.title[active]
        if y == 1 or x == 1:
            return mix(light, WHITE, 0.45) if y == 1 else light
        return mix(top, middle, t / 0.45) if t < 0.45 else mix(middle, bottom, (t - 0.45) / 0.55)


OFFICE_ZONES = ((2, 22), (25, 46), (50, 71))
FLAT_ZONES = ((2, 29), (30, 55), (56, 101))


def edges(*texts):
    return [[rgb(c) for c in text.split()] for text in texts]


def face(text):
    return [rgb(c) for c in text.split()]


THEMES = [
    Skin(
        76, OFFICE_ZONES, (6, 26),
        edges("B4B9C0 E6E5E5 B0CBEF", "3B5A82 B1C6E1 B0CBEF"), edges("B0CBEF B0CBEF B4B9C0", "B0CBEF B0CBEF 3B5A82"),
        (face("EEF3FA DEE8F5 CFDEF2"), face("DCE9FA C3D9F5 B0CBEF")), (rgb("8FA6C6"), rgb("2B4F86")),
        face("7FA3D1 F7FAFE C9DDF6 2B4F86"), face("5F83B3 93B4DF B8D2F2 1D3A68"),
        face("A8423B F2A49C D6544A FFFFFF"), face("8C2F29 A8382F C8544A FFFFFF"),
    ),
    Skin(
        76, OFFICE_ZONES, (6, 26),
        edges("B4B9C0 F0F0F0 E0F4F4", "727880 DEDDDE BBBABA"), edges("C7C9CE C7C9CE B4B9C0", "C7C9CE C7C9CE 727880"),
        (face("F7F7F8 EDEEEF E3E4E6"), face("F1F1F3 D9DADD C3C4C8")), (rgb("A4A8AE"), rgb("454B54")),
        face("8A9098 FFFFFF D9DCE0 454B54"), face("6E747C A9AEB5 C6CAD0 2E333A"),
        face("A8423B F2A49C D6544A FFFFFF"), face("8C2F29 A8382F C8544A FFFFFF"),
    ),
    Skin(
        107, FLAT_ZONES, (1, 20),
        edges("798288 D5E1E8 D1DDE6 D1DDE6 CAD6DE", "354A59 8BB8D7 3F95CF 3F95CF 8BB8D7"),
        edges("CAD6DE D1DDE6 D1DDE6 D5E1E8 798288", "8BB8D7 3F95CF 3F95CF 8BB8D7 354A59"),
        None, (rgb("5A6670"), WHITE),
        face("6FB3E0 6FB3E0 6FB3E0 FFFFFF"), face("226C9F 226C9F 226C9F FFFFFF"),
        face("E04343 E04343 E04343 FFFFFF"), face("993D3D 993D3D 993D3D FFFFFF"),
    ),
]
CLOSE_PLAIN = {False: rgb("A9B3BB"), True: rgb("C75050")}


class Sheet:
    def __init__(self, skin, percent):
        self.skin, self.percent = skin, percent
        self.canvas = ClearCanvas(self.px(skin.width) + self.px(STRIP), self.px(HEIGHT) * len(BOXES))
        self.masks = {}

    def px(self, length):
        return (length * self.percent + 50) // 100

    def line(self):
        return max(1, self.percent // 100)

    def unit(self, pixel, most):
        return min(most - 1, int((pixel + 0.5) * 100 / self.percent))

    def put(self, x, y, colour):
        self.canvas.pixels[y][x] = (*colour, 1.0)

    def block(self, left, top, right, bottom, colour):
        for y in range(top, bottom):
            for x in range(left, right):
                self.put(x, y, colour)

    def strips(self):
        left, height, thick = self.px(self.skin.width), self.px(HEIGHT), len(self.skin.edges[0])
        for active in (False, True):
            for y in range(height):
                for x in range(self.px(STRIP)):
                    self.put(left + x, active * height + y, self.strip(active, self.unit(x, STRIP), y))
            for x in range(self.px(thick)):
                colours = self.skin.edges[active]
                step = self.unit(x, thick)
                self.put(left + x, 2 * height + active, colours[step])
                self.put(left + x, 2 * height + 2 + active, colours[thick - 1 - step])
                self.put(left + active, 2 * height + 4 + x, self.skin.bottoms[active][step])

    def strip(self, active, from_end, y):
        return self.skin.strip_pixel(active, from_end, self.unit(y, HEIGHT), y / (self.px(HEIGHT) - 1))

    def boxes(self):
        for row, number in enumerate(BOXES):
            self.box(row * self.px(HEIGHT), number)

    def box(self, top, number):
        group, active = number - number % 10, number > 60
        maximized = group == 60 or (group == 50 and number > 54)
        step = number - (55 if group == 50 and maximized else group + 1)
        pressed, hot = step > 3, step if step < 4 else step - 3
        width = self.skin.width
        for y in range(self.px(HEIGHT)):
            for x in range(self.px(width)):
                end = self.px(width) - 1 - x
                self.put(x, top + y, self.strip(active, min(self.unit(end, 200), STRIP - 1), y))
        for button in (1, 2, 3):
            self.button(top, button, active, maximized, hot == button, pressed)

    def button(self, top, button, active, maximized, hot, pressed):
        skin, close = self.skin, button == 3
        glyph = skin.glyphs[active]
        first, last = skin.zones[button - 1]
        left, right = self.px(first), self.px(last + 1)
        upper, lower = top + self.px(skin.rows[0]), top + self.px(skin.rows[1] + 1)
        if hot:
            looks = (skin.close_pressed if pressed else skin.close_hot) if close else skin.pressed if pressed else skin.hot
            border, light, dark, glyph = looks
            for y in range(upper, lower):
                self.block(left, y, right, y + 1, mix(light, dark, (y - upper) / max(1, lower - upper - 1)))
            if not skin.flat:
                self.outline(left, upper, right, lower, border)
        elif skin.flat and close:
            self.block(left, upper, right, lower, CLOSE_PLAIN[active])
            glyph = WHITE
        kind = ("minimize", "restore" if maximized else "maximize", "close")[button - 1]
        mask, side = self.mask(kind)
        at_x, at_y = left + (right - left - side) // 2, upper + (lower - upper - side) // 2
        for y in range(side):
            for x in range(side):
                if mask[y][x]:
                    self.canvas.blend(at_x + x, at_y + y, glyph, mask[y][x])

    def outline(self, left, top, right, bottom, colour):
        """A frame whose four corner pixels are left out; what lay under them comes back half."""
        line = self.line()
        self.block(left + line, top, right - line, top + line, colour)
        self.block(left + line, bottom - line, right - line, bottom, colour)
        self.block(left, top + line, left + line, bottom - line, colour)
        self.block(right - line, top + line, right, bottom - line, colour)
        for x in (left - 1, right):
            under = self.canvas.pixels[top][x][:3]
            side = left if x < left else right - line
            self.block(side, top, side + line, top + line, mix(under, colour, 0.4))
            self.block(side, bottom - line, side + line, bottom, mix(under, colour, 0.4))

    def mask(self, kind):
        if kind not in self.masks:
            self.masks[kind] = self.glyph(kind)
        return self.masks[kind]

    def glyph(self, kind):
        """Coverage of a glyph, a square of ten pixels at 96 dots."""
        side, line = self.px(10), self.line()
        cover = [[0.0] * side for _ in range(side)]

        def bar(left, top, right, bottom, weight=1.0):
            for y in range(max(0, top), min(side, bottom)):
                for x in range(max(0, left), min(side, right)):
                    cover[y][x] = weight

        def window(left, top, right, bottom):
            bar(left, top, right, bottom)
            bar(left + line, top + 2 * line, right - line, bottom - line, 0.0)

        if kind == "minimize":
            bar(self.px(1), side - self.px(1) - 2 * line, side - self.px(1), side - self.px(1))
        elif kind == "maximize":
            window(0, self.px(1), side, side)
        elif kind == "restore":
            window(self.px(3), 0, side, side - self.px(3))
            bar(0, self.px(3) - line, side - self.px(3) + line, side, 0.0)
            window(0, self.px(3), side - self.px(3), side)
        else:
            low, high = self.px(1) + 0.5 * line, side - self.px(1) - 0.5 * line
            width = 1.7 * self.percent / 100
            arms = [stroke([(low, low), (high, high)], width), stroke([(low, high), (high, low)], width)]
            for y in range(side):
                for x in range(side):
                    hits = 0
                    for i in range(SAMPLES * SAMPLES):
                        point = x + (i % SAMPLES + 0.5) / SAMPLES, y + (i // SAMPLES + 0.5) / SAMPLES
                        hits += arms[0](*point) or arms[1](*point)
                    cover[y][x] = hits / SAMPLES**2
        return cover, side


if __name__ == "__main__":
    for theme, skin in enumerate(THEMES):
        for percent in PERCENTS:
            sheet = Sheet(skin, percent)
            sheet.strips()
            sheet.boxes()
            sheet.canvas.save_png(HERE / f"form_{theme}_{percent}.png")
