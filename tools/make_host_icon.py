#!/usr/bin/env python3
"""Draws host/kxhost.ico: a heartbeat on a green tile, at the sizes that Windows asks for.

Run by hand when the picture is to change; the result is committed. Needs nothing but Python.
"""
import struct
import sys
from pathlib import Path

SIZES = (16, 20, 24, 32, 48, 64)
TILE = (20, 87, 40)
TRACE = (255, 255, 255)
SAMPLES = 4  # per pixel and direction
# One beat across the tile, in hundredths of its side.
BEAT = [(8, 55), (26, 55), (33, 47), (40, 55), (45, 60), (53, 18), (61, 80), (67, 55), (75, 55), (82, 46), (88, 55), (93, 55)]


def distance(x, y, a, b):
    (ax, ay), (bx, by) = a, b
    dx, dy = bx - ax, by - ay
    t = max(0.0, min(1.0, ((x - ax) * dx + (y - ay) * dy) / (dx * dx + dy * dy)))
    return ((x - ax - t * dx) ** 2 + (y - ay - t * dy) ** 2) ** 0.5


def colour(x, y, half_width):
    """The colour at a place in hundredths of the side, or none outside the rounded tile."""
    radius = 18
    cx, cy = min(max(x, radius), 100 - radius), min(max(y, radius), 100 - radius)
    if (x - cx) ** 2 + (y - cy) ** 2 > radius**2:
        return None
    near = min(distance(x, y, a, b) for a, b in zip(BEAT, BEAT[1:]))
    return TRACE if near <= half_width else TILE


def pixel(column, row, size):
    half_width = max(3.2, 100 * 0.7 / size)
    hits = []
    for i in range(SAMPLES * SAMPLES):
        x = (column + (i % SAMPLES + 0.5) / SAMPLES) * 100 / size
        y = (row + (i // SAMPLES + 0.5) / SAMPLES) * 100 / size
        hits.append(colour(x, y, half_width))
    inside = [h for h in hits if h]
    if not inside:
        return (0, 0, 0, 0)
    mean = [round(sum(h[k] for h in inside) / len(inside)) for k in range(3)]
    return (mean[2], mean[1], mean[0], round(255 * len(inside) / len(hits)))


def image(size):
    rows = [b"".join(bytes(pixel(c, r, size)) for c in range(size)) for r in reversed(range(size))]
    mask = b"\0" * ((size + 31) // 32 * 4 * size)
    header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 32, 0, 0, 0, 0, 0, 0)
    return header + b"".join(rows) + mask


def main():
    target = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).parent.parent / "host" / "kxhost.ico")
    images = [image(size) for size in SIZES]
    offset = 6 + 16 * len(images)
    directory = struct.pack("<HHH", 0, 1, len(images))
    for size, data in zip(SIZES, images):
        directory += struct.pack("<BBBBHHII", size, size, 0, 0, 1, 32, len(data), offset)
        offset += len(data)
    target.write_bytes(directory + b"".join(images))


main()
