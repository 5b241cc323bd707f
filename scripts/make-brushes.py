#!/usr/bin/env python3
"""Writes the paint brushes resources/brushes/Brush_hardness_0.png (soft) and Brush_hardness_100.png
(hard): white round stamps whose alpha is the brush's coverage, 64 x 64 pixels. Only the standard library
is used, so the files can be made again anywhere: python3 scripts/make-brushes.py"""

import math
import os
import struct
import zlib

SIDE = 64
RADIUS = SIDE / 2.0


def hard(d):
    # Full coverage to one pixel inside the rim, then a one-pixel ramp to nothing at the rim.
    return min(1.0, max(0.0, RADIUS - d))


def soft(d):
    # Falls smoothly from the centre to nothing at the rim.
    r = d / RADIUS
    return (1.0 - r * r) ** 2 if r < 1.0 else 0.0


def png(path, coverage):
    rows = bytearray()
    for y in range(SIDE):
        rows.append(0)  # filter: none
        for x in range(SIDE):
            d = math.hypot(x + 0.5 - RADIUS, y + 0.5 - RADIUS)
            rows += bytes((255, 255, 255, int(round(coverage(d) * 255))))

    def chunk(kind, body):
        data = kind + body
        return struct.pack(">I", len(body)) + data + struct.pack(">I", zlib.crc32(data) & 0xFFFFFFFF)

    header = struct.pack(">IIBBBBB", SIDE, SIDE, 8, 6, 0, 0, 0)  # 8-bit RGBA
    with open(path, "wb") as f:
        f.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(bytes(rows), 9))
                + chunk(b"IEND", b""))


if __name__ == "__main__":
    folder = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "resources", "brushes")
    os.makedirs(folder, exist_ok=True)
    png(os.path.join(folder, "Brush_hardness_100.png"), hard)
    png(os.path.join(folder, "Brush_hardness_0.png"), soft)
