"""A small rasteriser for the library's own pictures: shapes with exact edges where they lie on pixels and
smooth ones where they do not. Pure Python, so that every picture can be made again anywhere.

Colours are (red, green, blue); coordinates are pixels, y downwards; a shape is a predicate over points.
"""

import struct
import zlib

SAMPLES = 8  # per pixel and direction


class Canvas:
    def __init__(self, width, height, background=(255, 0, 255)):
        self.width, self.height = width, height
        self.pixels = [[background] * width for _ in range(height)]

    def fill(self, inside, colour, left, top, right, bottom):
        """Blends `colour` (or colour(x, y) per pixel) where `inside(x, y)` holds, by coverage."""
        for y in range(max(0, top), min(self.height, bottom)):
            for x in range(max(0, left), min(self.width, right)):
                hits = sum(
                    inside(x + (i + 0.5) / SAMPLES, y + (j + 0.5) / SAMPLES)
                    for i in range(SAMPLES)
                    for j in range(SAMPLES)
                )
                if hits:
                    paint = colour(x, y) if callable(colour) else colour
                    self.blend(x, y, paint, hits / SAMPLES**2)

    def blend(self, x, y, colour, weight):
        old = self.pixels[y][x]
        self.pixels[y][x] = tuple(round(o + weight * (c - o)) for o, c in zip(old, colour))

    def rectangle(self, left, top, right, bottom, colour):
        for y in range(top, bottom):
            for x in range(left, right):
                self.pixels[y][x] = colour(x, y) if callable(colour) else colour

    def frame(self, left, top, right, bottom, colour):
        self.rectangle(left, top, right, top + 1, colour)
        self.rectangle(left, bottom - 1, right, bottom, colour)
        self.rectangle(left, top, left + 1, bottom, colour)
        self.rectangle(right - 1, top, right, bottom, colour)

    def save_bmp(self, path):
        """24 bits, bottom-up, rows padded to four bytes."""
        row_bytes = (self.width * 3 + 3) & ~3
        data = bytearray()
        for row in reversed(self.pixels):
            line = b"".join(bytes((b, g, r)) for r, g, b in row)
            data += line + b"\0" * (row_bytes - len(line))
        with open(path, "wb") as out:
            out.write(struct.pack("<2sIHHI", b"BM", 54 + len(data), 0, 0, 54))
            out.write(struct.pack("<IiiHHIIiiII", 40, self.width, self.height, 1, 24, 0, len(data), 2835, 2835, 0, 0))
            out.write(data)


class ClearCanvas(Canvas):
    """A canvas whose ground is clear: each pixel is straight colour and alpha, 0 to 1."""

    def __init__(self, width, height):
        super().__init__(width, height, (0, 0, 0, 0.0))

    def blend(self, x, y, colour, weight):
        *old, old_alpha = self.pixels[y][x]
        alpha = weight + old_alpha * (1 - weight)
        mixed = [(c * weight + o * old_alpha * (1 - weight)) / alpha for o, c in zip(old, colour)]
        self.pixels[y][x] = (*mixed, alpha)

    def save_png(self, path):
        """Eight bits a channel with alpha, rows unfiltered."""

        def chunk(kind, data):
            return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

        rows = bytearray()
        for row in self.pixels:
            rows.append(0)
            for *colour, alpha in row:
                rows += bytes((*(round(c) for c in colour), round(alpha * 255)))
        header = struct.pack(">IIBBBBB", self.width, self.height, 8, 6, 0, 0, 0)
        with open(path, "wb") as out:
            out.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header))
            out.write(chunk(b"IDAT", zlib.compress(bytes(rows), 9)) + chunk(b"IEND", b""))


def vertical(top_colour, bottom_colour, top, bottom):
    """A gradient from one row to another."""

    def colour(_, y):
        t = (y - top) / max(1, bottom - 1 - top)
        return tuple(round(a + t * (b - a)) for a, b in zip(top_colour, bottom_colour))

    return colour


def stroke(points, width):
    """The predicate of a polyline of a width, with round ends and joints."""

    def inside(x, y):
        for (x1, y1), (x2, y2) in zip(points, points[1:]):
            dx, dy = x2 - x1, y2 - y1
            t = max(0.0, min(1.0, ((x - x1) * dx + (y - y1) * dy) / (dx * dx + dy * dy)))
            if (x - x1 - t * dx) ** 2 + (y - y1 - t * dy) ** 2 <= width * width / 4:
                return True
        return False

    return inside


def disc(centre_x, centre_y, radius):
    return lambda x, y: (x - centre_x) ** 2 + (y - centre_y) ** 2 <= radius * radius


def polygon(points):
    """The predicate of a closed polygon, by the even-odd rule."""

    def inside(x, y):
        odd = False
        for (x1, y1), (x2, y2) in zip(points, points[1:] + points[:1]):
            if (y1 > y) != (y2 > y) and x < (x2 - x1) * (y - y1) / (y2 - y1) + x1:
                odd = not odd
        return odd

    return inside
