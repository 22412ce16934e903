#!/usr/bin/env python3
"""Draws the pictures of the message box, 64 pixels and, for screens of more than 200 %, 128: 101 critical,
102 question, 103 exclamation, 104 information; PNG with alpha. And synthesises its sounds of the same
numbers: 22,050 Hz, 16 bits, one channel, well below a second.

Shapes are told in the 64 units of the smaller picture.
"""

import math
import struct
import sys
import wave
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent))
from draw import ClearCanvas, disc, polygon, stroke, vertical

WHITE = (0xFF, 0xFF, 0xFF)


class Drawing:
    """A picture of 64 units at any size."""

    def __init__(self, side):
        self.side, self.scale = side, side / 64
        self.canvas = ClearCanvas(side, side)

    def fill(self, inside, colour):
        k = self.scale
        self.canvas.fill(lambda x, y: inside(x / k, y / k), colour, 0, 0, self.side, self.side)

    def shade(self, top, bottom, first=4, last=60):
        return vertical(top, bottom, round(first * self.scale), round(last * self.scale))


def round_rectangle(left, top, right, bottom, radius):
    def inside(x, y):
        dx = max(left + radius - x, x - (right - radius), 0)
        dy = max(top + radius - y, y - (bottom - radius), 0)
        return dx * dx + dy * dy <= radius * radius

    return inside


def ball(drawing, rim, top, bottom, gloss):
    drawing.fill(disc(32, 32, 29), rim)
    drawing.fill(disc(32, 32, 26.6), drawing.shade(top, bottom))
    # Light from above: the part of the ball over a shallow curve.
    drawing.fill(lambda x, y: (x - 32) ** 2 + (y - 32) ** 2 <= 24.6**2 and y < 30 - ((x - 32) / 14) ** 2, gloss)


def critical(drawing):
    ball(drawing, (0x8E, 0x1B, 0x17), (0xEE, 0x64, 0x55), (0xC0, 0x24, 0x1E), (0xF0, 0x7C, 0x6E))
    for ends in ([(21.5, 21.5), (42.5, 42.5)], [(42.5, 21.5), (21.5, 42.5)]):
        drawing.fill(stroke(ends, 7), WHITE)


def question(drawing):
    ball(drawing, (0x1F, 0x56, 0x93), (0x6F, 0xB2, 0xEA), (0x2B, 0x74, 0xBE), (0x88, 0xC0, 0xEF))
    arc = [(32 + 9 * math.cos(math.radians(a)), 25 - 9 * math.sin(math.radians(a))) for a in range(165, -56, -10)]
    drawing.fill(stroke(arc + [(32.6, 35.4), (32, 38.5)], 6), WHITE)
    drawing.fill(disc(32, 48, 3.8), WHITE)


def exclamation(drawing):
    rim, corner = (0xB0, 0x7A, 0x0C), [(32, 8), (58, 54), (6, 54)]
    drawing.fill(polygon(corner), rim)
    drawing.fill(stroke(corner + corner[:1], 8), rim)
    inner = [(32, 10), (56, 53), (8, 53)]
    face = drawing.shade((0xFF, 0xE7, 0x7A), (0xF3, 0xB4, 0x1B))
    drawing.fill(polygon(inner), face)
    drawing.fill(stroke(inner + inner[:1], 4.4), face)
    ink = (0x4A, 0x33, 0x08)
    drawing.fill(polygon([(28.6, 23), (35.4, 23), (33.9, 40), (30.1, 40)]), ink)
    drawing.fill(disc(32, 23.4, 3.4), ink)
    drawing.fill(disc(32, 46.6, 3.3), ink)


def information(drawing):
    ball(drawing, (0x1F, 0x56, 0x93), (0x6F, 0xB2, 0xEA), (0x2B, 0x74, 0xBE), (0x88, 0xC0, 0xEF))
    drawing.fill(disc(32, 19.5, 4.2), WHITE)
    drawing.fill(round_rectangle(28.4, 27, 35.6, 48, 1.6), WHITE)
    drawing.fill(round_rectangle(24.5, 27, 33, 31.4, 1.4), WHITE)
    drawing.fill(round_rectangle(24.5, 43.8, 39.5, 48.2, 1.4), WHITE)


PICTURES = {101: critical, 102: question, 103: exclamation, 104: information}

RATE = 22050
# Notes as (hertz, start in seconds, length in seconds, loudness).
SOUNDS = {
    101: [(196.0, 0.0, 0.16, 0.5), (146.8, 0.13, 0.25, 0.5)],
    102: [(523.3, 0.0, 0.12, 0.35), (784.0, 0.10, 0.22, 0.35)],
    103: [(440.0, 0.0, 0.10, 0.4), (440.0, 0.14, 0.18, 0.4)],
    104: [(659.3, 0.0, 0.30, 0.35)],
}


def sample(notes, t):
    """A soft bell: the note and two overtones, each dying faster than the one below."""
    value = 0.0
    for hertz, start, length, loudness in notes:
        u = t - start
        if not 0 <= u < length:
            continue
        attack = min(1.0, u / 0.006) * min(1.0, (length - u) / 0.02)
        tone = sum(math.sin(2 * math.pi * hertz * n * u) * math.exp(-7 * n * u) / n for n in (1, 2, 3))
        value += loudness * attack * tone / 1.6
    return max(-1.0, min(1.0, value))


def save_sound(path, notes):
    seconds = max(start + length for _, start, length, _ in notes)
    values = [round(32767 * sample(notes, i / RATE)) for i in range(round(seconds * RATE))]
    with wave.open(str(path), "wb") as out:
        out.setnchannels(1)
        out.setsampwidth(2)
        out.setframerate(RATE)
        out.writeframes(struct.pack(f"<{len(values)}h", *values))


if __name__ == "__main__":
    for number, draw in PICTURES.items():
        for side in (64, 128):
            drawing = Drawing(side)
            draw(drawing)
            drawing.canvas.save_png(HERE / f"msg_box_{number}_{side}.png")
    for number, notes in SOUNDS.items():
        save_sound(HERE / f"sound_{number}.wav", notes)
