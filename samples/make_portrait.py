#!/usr/bin/env python3
"""Draws a synthetic portrait with red-eye, for trying the filter.

    make_portrait.py PORTRAIT.png [SELECTION.png]

Writes an 800x600 RGB picture of a face whose two pupils are red, with a
small white catchlight in each, and optionally a selection mask of the same
size (white = selected) with a rectangle round each eye. Prints the two
rectangles, one "x,y,w,h" per line. Python 3 standard library only.
"""

import math
import struct
import sys
import zlib

WIDTH, HEIGHT = 800, 600
EYES = ((338, 268), (462, 268))
EYE_BOX = (46, 28)  # half width and half height of the selection round an eye


class Canvas:
    def __init__(self, width, height, color):
        self.width, self.height = width, height
        self.pixels = [list(color) for _ in range(width * height)]

    def paint(self, box, coverage, color):
        """Blends `color` (an RGB tuple or a function of x, y) into every pixel
        of `box` (x0, y0, x1, y1) by `coverage(x, y)` in 0..1."""
        x0, y0, x1, y1 = (int(v) for v in box)
        x0, y0 = max(x0, 0), max(y0, 0)
        x1, y1 = min(x1, self.width), min(y1, self.height)
        for y in range(y0, y1):
            row = y * self.width
            for x in range(x0, x1):
                a = coverage(x + 0.5, y + 0.5)
                if a <= 0.0:
                    continue
                c = color(x + 0.5, y + 0.5) if callable(color) else color
                p = self.pixels[row + x]
                if a >= 1.0:
                    p[0], p[1], p[2] = c
                else:
                    p[0] += (c[0] - p[0]) * a
                    p[1] += (c[1] - p[1]) * a
                    p[2] += (c[2] - p[2]) * a

    def rgb_rows(self):
        for y in range(self.height):
            row = bytearray()
            for p in self.pixels[y * self.width:(y + 1) * self.width]:
                row += bytes(max(0, min(255, int(v + 0.5))) for v in p)
            yield bytes(row)


def ellipse(cx, cy, rx, ry, soft=1.0):
    """Coverage of an ellipse with an anti-aliased edge `soft` pixels wide."""
    def coverage(x, y):
        dx, dy = (x - cx) / rx, (y - cy) / ry
        d = math.sqrt(dx * dx + dy * dy)
        if d < 1e-9:
            return 1.0
        gradient = math.hypot(dx / rx, dy / ry) / d
        distance = (d - 1.0) / gradient  # signed, in pixels
        return min(1.0, max(0.0, 0.5 - distance / soft))
    return (cx - rx - soft, cy - ry - soft, cx + rx + soft + 1, cy + ry + soft + 1), coverage


def mix(a, b, t):
    t = min(1.0, max(0.0, t))
    return tuple(a[i] + (b[i] - a[i]) * t for i in range(3))


def scaled(shape, strength):
    box, coverage = shape
    return box, lambda x, y: coverage(x, y) * strength


def draw_background(canvas):
    top, bottom = (92, 112, 138), (38, 46, 62)
    canvas.paint((0, 0, WIDTH, HEIGHT), lambda x, y: 1.0,
                 lambda x, y: mix(top, bottom, y / HEIGHT + abs(x - 400) / 1600))


def draw_body(canvas):
    canvas.paint(*ellipse(400, 700, 300, 190, 2), (52, 58, 80))   # shoulders
    canvas.paint(*ellipse(400, 500, 62, 90, 2),
                 lambda x, y: mix((206, 150, 118), (168, 112, 86), (y - 430) / 80))  # neck
    canvas.paint(*ellipse(400, 250, 196, 232, 3), (58, 38, 26))   # hair behind the face
    canvas.paint(*ellipse(246, 300, 20, 38, 1.5), (214, 160, 128))  # ears
    canvas.paint(*ellipse(554, 300, 20, 38, 1.5), (214, 160, 128))


def skin(x, y):
    # Lighter in the middle of the face, warmer towards its edge.
    d = math.hypot((x - 392) / 150.0, (y - 270) / 195.0)
    return mix((236, 190, 160), (196, 136, 104), d * d)


def draw_face(canvas):
    canvas.paint(*ellipse(400, 295, 150, 195, 2), skin)
    canvas.paint(*ellipse(400, 128, 168, 70, 2.5), (64, 42, 29))  # fringe
    for cx in (318, 482):
        canvas.paint(*scaled(ellipse(cx, 352, 38, 24, 24), 0.35), (226, 118, 112))  # cheeks
    canvas.paint(*scaled(ellipse(400, 345, 14, 40, 10), 0.25), (170, 110, 84))  # nose ridge
    canvas.paint(*scaled(ellipse(386, 376, 7, 4, 2), 0.7), (120, 70, 56))  # nostrils
    canvas.paint(*scaled(ellipse(414, 376, 7, 4, 2), 0.7), (120, 70, 56))
    canvas.paint(*ellipse(400, 430, 46, 15, 1.5), (178, 82, 86))  # lips
    canvas.paint(*ellipse(400, 430, 40, 2, 1.2), (110, 46, 52))


def draw_eye(canvas, cx, cy):
    box, brow = ellipse(cx, cy - 40, 42, 9, 2)
    canvas.paint(box, lambda x, y: brow(x, y) * (1.0 if y < cy - 38 else 0.85), (70, 46, 32))
    canvas.paint(*scaled(ellipse(cx, cy - 6, 40, 22, 8), 0.5), (176, 120, 100))  # lid shadow
    canvas.paint(*ellipse(cx, cy, 34, 15, 1.2),
                 lambda x, y: mix((246, 242, 236), (196, 186, 182), abs(x - cx) / 34))  # sclera
    canvas.paint(*ellipse(cx, cy, 14, 14, 1.0),
                 lambda x, y: mix((92, 140, 150), (36, 70, 86), math.hypot(x - cx, y - cy) / 14))
    # The red-eye: the flash lit the retina, so the pupil glows red.
    canvas.paint(*ellipse(cx, cy, 8.5, 8.5, 1.0),
                 lambda x, y: mix((236, 58, 44), (168, 22, 24), math.hypot(x - cx, y - cy) / 8.5))
    canvas.paint(*ellipse(cx - 3, cy - 3, 2.2, 2.2, 0.8), (255, 255, 252))  # catchlight
    box, lid = ellipse(cx, cy - 2, 36, 16, 1.5)
    canvas.paint(box, lambda x, y: lid(x, y) * (1.0 - ellipse(cx, cy, 34, 15, 1.2)[1](x, y))
                 if y < cy else 0.0, (60, 36, 30))  # upper lid line


def draw_portrait():
    canvas = Canvas(WIDTH, HEIGHT, (0, 0, 0))
    draw_background(canvas)
    draw_body(canvas)
    draw_face(canvas)
    for cx, cy in EYES:
        draw_eye(canvas, cx, cy)
    return canvas


def selection_rects():
    w, h = EYE_BOX
    return [(cx - w, cy - h, 2 * w, 2 * h) for cx, cy in EYES]


def selection_mask(rects):
    canvas = Canvas(WIDTH, HEIGHT, (0, 0, 0))
    for x, y, w, h in rects:
        canvas.paint((x, y, x + w, y + h), lambda px, py: 1.0, (255, 255, 255))
    return canvas


def write_png(path, canvas):
    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))

    raw = b"".join(b"\x00" + row for row in canvas.rgb_rows())
    header = struct.pack(">IIBBBBB", canvas.width, canvas.height, 8, 2, 0, 0, 0)
    with open(path, "wb") as f:
        f.write(b"\x89PNG\r\n\x1a\n")
        f.write(chunk(b"IHDR", header))
        f.write(chunk(b"IDAT", zlib.compress(raw, 9)))
        f.write(chunk(b"IEND", b""))


def main(argv):
    if len(argv) not in (2, 3):
        sys.stderr.write(__doc__)
        return 1
    write_png(argv[1], draw_portrait())
    rects = selection_rects()
    if len(argv) == 3:
        write_png(argv[2], selection_mask(rects))
    for rect in rects:
        print("%d,%d,%d,%d" % rect)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
