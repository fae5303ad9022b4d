#!/usr/bin/env python3
"""Draws the combo box's two arrow images, combo-arrow.png (enabled, the skin's text colour) and
combo-arrow-disabled.png (the skin's disabled text colour): 12 x 12 pixel RGBA PNG files holding a
small downward triangle with softened edges on a transparent ground. Run it by hand when the
arrows should change; the build embeds the files it writes."""
import os
import struct
import zlib

SIZE = 12
INKS = {"combo-arrow.png": (200, 200, 200), "combo-arrow-disabled.png": (110, 110, 110)}


def coverage(x, y):
    # A triangle from (2, 4) to (10, 4) down to (6, 8.5), sampled 4 x 4 times per pixel.
    hits = 0
    for sy in range(4):
        for sx in range(4):
            px, py = x + (sx + 0.5) / 4, y + (sy + 0.5) / 4
            depth = (py - 4.0) / 4.5
            if 0.0 <= depth <= 1.0 and abs(px - 6.0) <= 4.0 * (1.0 - depth):
                hits += 1
    return hits / 16


def png(ink):
    rows = b""
    for y in range(SIZE):
        row = bytearray([0])  # no filter
        for x in range(SIZE):
            row += bytes(ink) + bytes([round(255 * coverage(x, y))])
        rows += row

    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))

    header = struct.pack(">IIBBBBB", SIZE, SIZE, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
            chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def main():
    folder = os.path.dirname(os.path.abspath(__file__))
    for name, ink in INKS.items():
        with open(os.path.join(folder, name), "wb") as out:
            out.write(png(ink))


if __name__ == "__main__":
    main()
