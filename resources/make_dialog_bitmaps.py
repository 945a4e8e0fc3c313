#!/usr/bin/env python3
"""Draws the main dialog's pictures into BMP files.

    make_dialog_bitmaps.py OUTPUT_FOLDER

ProductPicture.bmp (bitmap 777): a stylised eye and the name "Quorvex" on a
dark card, 24-bit. ZoomIn.bmp and ZoomOut.bmp (7772, 7771): a magnifier with
plus or minus, 8-bit with light grey (192, 192, 192) as the background, which
the dialog maps to the button face colour.
"""

import math
import os
import struct
import sys

# The static control is 125 x 47 dialog units: 218 x 76 pixels with the
# dialog font Wine substitutes, 187 x 76 with MS Sans Serif itself. The picture
# fills the larger size and keeps its content in the middle 184 pixels, so
# that a control that centres and clips it still shows all of it.
PRODUCT_SIZE = (218, 76)
CONTENT_WIDTH = 184
SUPERSAMPLING = 4

# ---------------------------------------------------------------------------
# BMP files


def bmp_file(width, height, bits, palette, rows):
    """`rows` top first; each row a bytes object of packed pixels."""
    stride = (width * bits // 8 + 3) & ~3
    pixel_data = b"".join(row.ljust(stride, b"\0") for row in reversed(rows))
    palette_data = b"".join(bytes((b, g, r, 0)) for (r, g, b) in palette)
    offset = 14 + 40 + len(palette_data)
    header = struct.pack("<2sIHHI", b"BM", offset + len(pixel_data), 0, 0, offset)
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, bits, 0, len(pixel_data),
                       2835, 2835, len(palette), 0)
    return header + info + palette_data + pixel_data


def write(folder, name, data):
    with open(os.path.join(folder, name), "wb") as f:
        f.write(data)


# ---------------------------------------------------------------------------
# Shapes as signed distances (negative inside), in pixels


def length(x, y):
    return math.sqrt(x * x + y * y)


def segment(px, py, ax, ay, bx, by):
    dx, dy = bx - ax, by - ay
    t = max(0.0, min(1.0, ((px - ax) * dx + (py - ay) * dy) / (dx * dx + dy * dy)))
    return length(px - ax - t * dx, py - ay - t * dy)


def arc(px, py, cx, cy, r, start, end):
    """Distance to the arc from angle `start` to `end` (degrees, y down)."""
    angle = math.degrees(math.atan2(py - cy, px - cx)) % 360
    span = end - start
    if span >= 360 or (angle - start) % 360 <= span:
        return abs(length(px - cx, py - cy) - r)
    ends = [(cx + r * math.cos(math.radians(a)), cy + r * math.sin(math.radians(a)))
            for a in (start, end)]
    return min(length(px - ex, py - ey) for ex, ey in ends)


def clamp01(t):
    return max(0.0, min(1.0, t))


def mix(a, b, t):
    return tuple(x + (y - x) * t for x, y in zip(a, b))


# ---------------------------------------------------------------------------
# The name, in strokes. Glyph units: x-height 1, baseline at y = 0, y down.

CAP = 1.42


def glyph_q(px, py):
    r = CAP / 2
    return min(arc(px, py, r, -r, r, 0, 360), segment(px, py, r + 0.25, -0.3, r + 0.72, 0.18))


def glyph_u(px, py):
    r = 0.36
    return min(segment(px, py, 0, -1, 0, -r), arc(px, py, r, -r, r, 0, 180),
               segment(px, py, 2 * r, -1, 2 * r, 0))


def glyph_o(px, py):
    return arc(px, py, 0.5, -0.5, 0.5, 0, 360)


def glyph_r(px, py):
    r = 0.42
    return min(segment(px, py, 0, -1, 0, 0), arc(px, py, r, -1 + r, r, 190, 300))


def glyph_v(px, py):
    return min(segment(px, py, 0, -1, 0.38, 0), segment(px, py, 0.38, 0, 0.76, -1))


def glyph_e(px, py):
    return min(arc(px, py, 0.5, -0.5, 0.5, 40, 360), segment(px, py, 0.0, -0.5, 1.0, -0.5))


def glyph_x(px, py):
    return min(segment(px, py, 0, -1, 0.74, 0), segment(px, py, 0, 0, 0.74, -1))


# (drawing, advance width, top of the glyph)
GLYPHS = [(glyph_q, CAP, -CAP), (glyph_u, 0.72, -1), (glyph_o, 1.0, -1), (glyph_r, 0.66, -1),
          (glyph_v, 0.76, -1), (glyph_e, 1.0, -1), (glyph_x, 0.74, -1)]
LETTER_GAP = 0.24
ACCENT_FROM = 4  # "vex" is drawn in the accent colour
NAME_WIDTH = sum(advance for _, advance, _ in GLYPHS) + LETTER_GAP * (len(GLYPHS) - 1)


class Name:
    def __init__(self, left, baseline, x_height, stroke):
        self.scale = x_height
        self.stroke = stroke
        self.baseline = baseline
        self.placed = []
        x = left
        for index, (draw, advance, top) in enumerate(GLYPHS):
            box = (x - stroke, baseline + top * x_height - stroke,
                   x + (advance + 0.25) * x_height + stroke, baseline + 0.25 * x_height + stroke)
            self.placed.append((draw, x, box, index >= ACCENT_FROM))
            x += (advance + LETTER_GAP) * x_height
        self.right = x - LETTER_GAP * x_height

    def coverage(self, px, py):
        """(plain coverage, accent coverage) of the name at a sample point."""
        plain = accent = 0.0
        for draw, x, (x0, y0, x1, y1), accented in self.placed:
            if not (x0 <= px <= x1 and y0 <= py <= y1):
                continue
            d = draw((px - x) / self.scale, (py - self.baseline) / self.scale) * self.scale
            inside = 1.0 if d <= self.stroke / 2 else 0.0
            if accented:
                accent = max(accent, inside)
            else:
                plain = max(plain, inside)
        return plain, accent


# ---------------------------------------------------------------------------
# The eye

class Eye:
    def __init__(self, cx, cy, half_width, half_height):
        self.cx, self.cy = cx, cy
        # Two circles through the corners (+-half_width, 0) and the lid
        # apexes (0, +-half_height) form the almond opening.
        self.radius = (half_width ** 2 + half_height ** 2) / (2 * half_height)
        self.offset = self.radius - half_height
        self.iris = half_height * 0.95
        self.pupil = self.iris * 0.42

    def opening(self, px, py):
        """Signed distance to the almond (negative inside)."""
        x, y = px - self.cx, py - self.cy
        upper = length(x, y - self.offset) - self.radius
        lower = length(x, y + self.offset) - self.radius
        return max(upper, lower)

    def color(self, px, py, background):
        x, y = px - self.cx, py - self.cy
        d = self.opening(px, py)
        outline = (214, 224, 236)
        if d > 1.6:
            return background
        if d > 0:
            return outline
        r = length(x, y)
        if r < self.pupil:
            highlight = length(x + self.pupil * 0.35, y + self.pupil * 0.4) < self.pupil * 0.32
            return (250, 250, 250) if highlight else (12, 12, 16)
        if r < self.iris:
            t = (r - self.pupil) / (self.iris - self.pupil)
            iris = mix((64, 170, 196), (20, 82, 120), t ** 1.4)
            # A last trace of red round the pupil: the eye the filter mends.
            glow = clamp01(1.0 - (r - self.pupil) / (self.iris * 0.35))
            iris = mix(iris, (168, 40, 44), 0.55 * glow)
            if r > self.iris - 1.2:
                iris = mix(iris, (10, 40, 60), 0.8)
            return iris
        shade = clamp01(-d / 6.0)
        return mix((196, 200, 206), (246, 244, 238), shade)


# ---------------------------------------------------------------------------
# The product picture

def product_picture():
    width, height = PRODUCT_SIZE
    top_colour, bottom_colour = (34, 52, 80), (14, 22, 38)
    border = (78, 104, 140)
    text_colour, accent_colour = (240, 244, 250), (232, 72, 76)
    content_left = (width - CONTENT_WIDTH) / 2
    eye = Eye(content_left + 28.0, height * 0.5, 25.0, 13.0)
    left, right = content_left + 62.0, content_left + CONTENT_WIDTH - 6.0
    x_height = (right - left) / NAME_WIDTH
    name = Name(left, baseline=height * 0.5 + x_height * 0.5, x_height=x_height, stroke=2.8)
    rows = []
    n = SUPERSAMPLING
    for y in range(height):
        row = bytearray()
        for x in range(width):
            if x == 0 or y == 0 or x == width - 1 or y == height - 1:
                row += bytes(border[::-1])
                continue
            total = [0.0, 0.0, 0.0]
            for sy in range(n):
                for sx in range(n):
                    px = x + (sx + 0.5) / n
                    py = y + (sy + 0.5) / n
                    background = mix(top_colour, bottom_colour, py / height)
                    c = eye.color(px, py, background)
                    plain, accent = name.coverage(px, py)
                    c = mix(c, text_colour, plain)
                    c = mix(c, accent_colour, accent)
                    total = [t + v for t, v in zip(total, c)]
            r, g, b = (int(round(t / (n * n))) for t in total)
            row += bytes((b, g, r))
        rows.append(bytes(row))
    return bmp_file(width, height, 24, [], rows)


# ---------------------------------------------------------------------------
# The zoom buttons: 16 x 16 pixels

ZOOM_PALETTE = [
    (192, 192, 192),  # background, shown as the button face
    (24, 32, 48),     # outline
    (214, 232, 248),  # lens
    (255, 255, 255),  # glint
    (128, 84, 44),    # handle
    (22, 92, 156),    # sign
]
BACKGROUND, OUTLINE, LENS, GLINT, HANDLE, SIGN = range(6)


def zoom_pixel(x, y, plus):
    """Palette index of pixel (x, y) of a magnifier with a plus or a minus."""
    d = length(x + 0.5 - 6.5, y + 0.5 - 6.5)
    if d < 4.4:
        bar = y in (6, 7) and 4 <= x <= 9
        stem = plus and x in (6, 7) and 4 <= y <= 9
        if bar or stem:
            return SIGN
        return GLINT if (x, y) in ((4, 3), (3, 4), (5, 3)) else LENS
    if d < 5.6:
        return OUTLINE
    along = x + y  # the handle runs down the diagonal
    across = x - y
    if 21 <= along <= 28 and abs(across) <= 1:
        return HANDLE if abs(across) <= 0 or along < 27 else OUTLINE
    if 21 <= along <= 29 and abs(across) == 2:
        return OUTLINE
    return BACKGROUND


def zoom_button(plus):
    rows = [bytes(zoom_pixel(x, y, plus) for x in range(16)) for y in range(16)]
    return bmp_file(16, 16, 8, ZOOM_PALETTE, rows)


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    folder = sys.argv[1]
    os.makedirs(folder, exist_ok=True)
    write(folder, "ProductPicture.bmp", product_picture())
    write(folder, "ZoomIn.bmp", zoom_button(plus=True))
    write(folder, "ZoomOut.bmp", zoom_button(plus=False))


if __name__ == "__main__":
    main()
