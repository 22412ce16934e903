#!/usr/bin/env python3
"""Draws image_list.png: what a USImageList shows in the designer, 32 by 32 pixels on a clear ground."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent))
from draw import ClearCanvas, disc, polygon, vertical

SIDE = 32
BORDER = (0x2F, 0x5F, 0x9E)
FACE = vertical((0xFF, 0xFF, 0xFF), (0xDC, 0xE8, 0xF5), 2, 30)
SKY = vertical((0x9E, 0xCC, 0xF0), (0xEE, 0xF6, 0xFC), 12, 27)


def box(left, top, right, bottom):
    return polygon([(left, top), (right, top), (right, bottom), (left, bottom)])


if __name__ == "__main__":
    canvas = ClearCanvas(SIDE, SIDE)
    area = (0, 0, SIDE, SIDE)
    for left, top in ((2, 2), (5, 5), (8, 8)):
        canvas.fill(box(left, top, left + 21, top + 21), BORDER, *area)
        canvas.fill(box(left + 1, top + 1, left + 20, top + 20), FACE, *area)
    canvas.fill(box(11, 11, 26, 26), SKY, *area)
    canvas.fill(disc(22.5, 14.5, 2.2), (0xF0, 0xA8, 0x24), *area)
    canvas.fill(polygon([(11, 26), (16.5, 16.5), (22, 26)]), (0x2E, 0x8B, 0x57), *area)
    canvas.fill(polygon([(18, 26), (22, 20.5), (26, 26)]), (0x1C, 0x6B, 0x3C), *area)
    canvas.save_png(Path(__file__).resolve().parent / "image_list.png")
