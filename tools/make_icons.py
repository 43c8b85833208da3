#!/usr/bin/env python3
"""Draws the library's pictures into dialogs/resources: marker badges, lead icons, button icons.

Run by hand when a picture is to change; the results are committed. Needs nothing but Python.

  badge_*.bmp   16-colour badges that name a marker at the foot of its line, one colour for each wave
  lead_*.ico    the twelve leads, 16 and 32 pixels, one colour for each group of leads
  button_*.ico  what the buttons of the interpretation pane insert or open, 16, 24 and 32 pixels
"""
import struct
import sys
from pathlib import Path

# Capitals are seven rows high, small letters five; a letter is as wide as it needs.
PIXEL_FONT = {
    "P": "###. #..# #..# ###. #... #... #...",
    "Q": ".###. #...# #...# #...# #.#.# #..#. .##.#",
    "R": "###. #..# #..# ###. #.#. #..# #..#",
    "S": ".### #... #... .##. ...# ...# ###.",
    "T": "##### ..#.. ..#.. ..#.. ..#.. ..#.. ..#..",
    "I": "### .#. .#. .#. .#. .#. ###",
    "V": "#...# #...# #...# .#.#. .#.#. ..#.. ..#..",
    "L": "#... #... #... #... #... #... ####",
    "F": "#### #... #... ###. #... #... #...",
    "a": "... ... ##. ..# .## #.# .##",
    "f": ".## #.. ### #.. #.. #.. #..",
    "n": ".... .... ###. #..# #..# #..# #..#",
    "o": ".... .... .##. #..# #..# #..# .##.",
    "'": "# # . . . . .",
    "1": ".#. ##. .#. .#. .#. .#. ###",
    "2": ".##. #..# ...# ..#. .#.. #... ####",
    "3": "###. ...# ...# .##. ...# ...# ###.",
    "4": "..#. .##. #.#. #.#. #### ..#. ..#.",
    "5": "#### #... ###. ...# ...# #..# .##.",
    "6": ".##. #... #... ###. #..# #..# .##.",
}


def text_pixels(text):
    """The set pixels of a text and its width, from its top left corner."""
    pixels, x = set(), 0
    for letter in text:
        rows = PIXEL_FONT[letter].split()
        pixels |= {(x + c, r) for r, row in enumerate(rows) for c, mark in enumerate(row) if mark == "#"}
        x += len(rows[0]) + 1
    return pixels, x - 1


# ---- badges ----

PAPER = (253, 255, 255)  # the view's paper, around the rounded corners
WHITE = (255, 255, 255)
WAVES = {
    "P": ((31, 95, 176), (18, 58, 112)),
    "QRS": ((176, 42, 30), (112, 22, 14)),
    "T": ((110, 62, 158), (68, 34, 102)),
    "off": ((84, 88, 92), (48, 50, 54)),  # the offset of whichever wave a dialog shows
}

BADGES = [
    ("badge_qrs_on", "QRSon", "QRS", 40),
    ("badge_qrs_off", "QRSoff", "QRS", 40),
    ("badge_p_on", "Pon", "P", 24),
    ("badge_p_off", "Poff", "P", 24),
    ("badge_t_off", "Toff", "T", 24),
    ("badge_q_on_lead", "Qon", "QRS", 24),
    ("badge_r_on_lead", "Ron", "QRS", 24),
    ("badge_s_on_lead", "Son", "QRS", 24),
    ("badge_r_prime_on_lead", "R'on", "QRS", 24),
    ("badge_s_prime_on_lead", "S'on", "QRS", 24),
    ("badge_off_lead", "off", "off", 24),
    ("badge_t_on_lead", "Ton", "T", 24),
    ("badge_t_prime_on_lead", "T'on", "T", 24),
    ("badge_p_on_lead", "Pon", "P", 24),
    ("badge_p_prime_on_lead", "P'on", "P", 24),
]

BADGE_HEIGHT = 20
CORNER = 5  # radius, pixels


def blend(a, b, share):
    return tuple(round(x * share + y * (1 - share)) for x, y in zip(a, b))


def covered(x, y, width, height, radius, samples=4):
    """How much of pixel x, y lies inside a rounded rectangle at the origin, 0 to 1."""
    inside = 0
    for i in range(samples * samples):
        px, py = x + (i % samples + 0.5) / samples, y + (i // samples + 0.5) / samples
        cx, cy = min(max(px, radius), width - radius), min(max(py, radius), height - radius)
        inside += (px - cx) ** 2 + (py - cy) ** 2 <= radius**2 and 0 <= px <= width and 0 <= py <= height
    return inside / samples**2


def badge(text, wave, width):
    fill, edge = WAVES[wave]
    letters, text_width = text_pixels(text)
    left, top = (width - text_width) // 2, (BADGE_HEIGHT - 7) // 2
    shades = 4  # of a blended edge, so that sixteen colours are enough

    def colour(x, y):
        if (x - left, y - top) in letters:
            return WHITE
        outer = round(covered(x, y, width, BADGE_HEIGHT, CORNER) * shades) / shades
        inner = round(covered(x - 1, y - 1, width - 2, BADGE_HEIGHT - 2, CORNER - 1) * shades) / shades
        return blend(fill, blend(edge, PAPER, outer), inner)

    return [[colour(x, y) for x in range(width)] for y in range(BADGE_HEIGHT)]


def bmp16(rows):
    palette = sorted({pixel for row in rows for pixel in row})
    assert len(palette) <= 16, len(palette)
    place = {pixel: i for i, pixel in enumerate(palette)}
    width = len(rows[0])
    data = b""
    for row in reversed(rows):
        line = bytes(place[row[x]] << 4 | (place[row[x + 1]] if x + 1 < width else 0) for x in range(0, width, 2))
        data += line + b"\0" * (-len(line) % 4)
    colours = b"".join(bytes((b, g, r, 0)) for r, g, b in palette + [(0, 0, 0)] * (16 - len(palette)))
    start = 14 + 40 + len(colours)
    header = struct.pack("<2sIHHI", b"BM", start + len(data), 0, 0, start)
    return header + struct.pack("<IiiHHIIiiII", 40, width, len(rows), 1, 4, 0, len(data), 0, 0, 16, 0) + colours + data


# ---- icons ----

CLEAR = (0, 0, 0, 0)


def icon_image(rows):
    size = len(rows)
    data = b"".join(bytes((b, g, r, a)) for row in reversed(rows) for r, g, b, a in row)
    mask = b""
    for row in reversed(rows):
        bits = sum(1 << (size - 1 - x) for x in range(size) if row[x][3] < 128)
        line = bits << (-size % 8)
        mask += line.to_bytes((size + 7) // 8, "big") + b"\0" * (-((size + 7) // 8) % 4)
    return struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 32, 0, 0, 0, 0, 0, 0) + data + mask


def icon(pictures):
    images = [icon_image(rows) for rows in pictures]
    offset = 6 + 16 * len(images)
    directory = struct.pack("<HHH", 0, 1, len(images))
    for rows, data in zip(pictures, images):
        directory += struct.pack("<BBBBHHII", len(rows), len(rows), 0, 0, 1, 32, len(data), offset)
        offset += len(data)
    return directory + b"".join(images)


LEAD_GROUPS = [
    (("I", "II", "III"), (31, 95, 176)),
    (("aVR", "aVL", "aVF"), (14, 118, 90)),
    (("V1", "V2", "V3", "V4", "V5", "V6"), (156, 52, 64)),
]


def lead_icon(text, fill, size):
    """White letters on a rounded tile; the large picture doubles every pixel of the small one's letters, so that
    both have whole pixels."""
    scale = size // 16
    letters, text_width = text_pixels(text)
    left, top = (16 - text_width) // 2, 4

    def colour(x, y):
        if (x // scale - left, y // scale - top) in letters:
            return WHITE + (255,)
        inside = covered(x, y, size, size, 3 * scale)
        return fill + (round(255 * inside),) if inside else CLEAR

    return [[colour(x, y) for x in range(size)] for y in range(size)]


# Shapes are painted in their order. Corners are given on a grid of 16 and put on whole pixels at every size.
INK = (52, 58, 66)
SHEET = (255, 255, 255)
LINES = (150, 158, 168)
GREEN = (24, 140, 60)
COVER = (31, 95, 176)
COVER_EDGE = (18, 58, 112)
TRACE = (196, 30, 40)


def box(x0, y0, x1, y1):
    return [(x0, y0), (x1, y0), (x1, y1), (x0, y1)]


def plus():
    cross = [(10, 8), (13, 8), (13, 10), (15, 10), (15, 13), (13, 13), (13, 15), (10, 15), (10, 13), (8, 13), (8, 10), (10, 10)]
    rim = [(9, 7), (14, 7), (14, 9), (16, 9), (16, 14), (14, 14), (14, 16), (9, 16), (9, 14), (7, 14), (7, 9), (9, 9)]
    return [(rim, SHEET), (cross, GREEN)]


BUTTONS = {
    "button_insert_library_entry": [
        (box(1, 1, 12, 15), COVER_EDGE),
        (box(2, 2, 11, 14), COVER),
        (box(2, 2, 4, 14), COVER_EDGE),
        (box(5, 3, 10, 5), SHEET),
    ]
    + plus(),
    "button_insert_automatic": [
        (box(1, 1, 14, 14), INK),
        (box(2, 2, 13, 13), SHEET),
        ([(2, 7), (5, 7), (6, 3), (7, 3), (9, 9), (10, 7), (13, 7), (13, 8), (11, 8), (9, 12), (8, 12), (6.5, 6), (6, 8), (2, 8)], TRACE),
    ]
    + plus(),
    "button_dictionary": [
        ([(0, 2), (7, 3), (8, 4), (9, 3), (16, 2), (16, 13), (9, 14), (8, 15), (7, 14), (0, 13)], COVER_EDGE),
        ([(1, 3), (7, 4), (7, 13), (1, 12)], SHEET),
        ([(9, 4), (15, 3), (15, 12), (9, 13)], SHEET),
        (box(2, 5, 6, 6), LINES),
        (box(2, 7, 6, 8), LINES),
        (box(2, 9, 6, 10), LINES),
        (box(10, 5, 14, 6), LINES),
        (box(10, 7, 14, 8), LINES),
        (box(10, 9, 14, 10), LINES),
    ],
}


def contains(corners, x, y):
    inside = False
    for (ax, ay), (bx, by) in zip(corners, corners[1:] + corners[:1]):
        if (ay > y) != (by > y) and x < (bx - ax) * (y - ay) / (by - ay) + ax:
            inside = not inside
    return inside


def button_icon(shapes, size, samples=4):
    placed = [([(round(x * size / 16), round(y * size / 16)) for x, y in corners], colour) for corners, colour in shapes]

    def pixel(column, row):
        hits = []
        for i in range(samples * samples):
            x, y = column + (i % samples + 0.5) / samples, row + (i // samples + 0.5) / samples
            over = [colour for corners, colour in placed if contains(corners, x, y)]
            hits += over[-1:]
        if not hits:
            return CLEAR
        mean = tuple(round(sum(h[k] for h in hits) / len(hits)) for k in range(3))
        return mean + (round(255 * len(hits) / samples**2),)

    return [[pixel(x, y) for x in range(size)] for y in range(size)]


def main():
    root = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).parent.parent / "dialogs" / "resources")
    for name, text, wave, width in BADGES:
        (root / f"{name}.bmp").write_bytes(bmp16(badge(text, wave, width)))
    for leads, fill in LEAD_GROUPS:
        for text in leads:
            pictures = [lead_icon(text, fill, size) for size in (16, 32)]
            (root / f"lead_{text.lower()}.ico").write_bytes(icon(pictures))
    for name, shapes in BUTTONS.items():
        pictures = [button_icon(shapes, size) for size in (16, 24, 32)]
        (root / f"{name}.ico").write_bytes(icon(pictures))


main()
