#!/usr/bin/env python3
"""Draws the product icon, vellum-icon.png: a 48 x 48 dark rounded tile holding a light disc
that runs from warm to cool, the colours of the renderer's temperature scale. Run it by hand
when the icon should change; the build embeds the PNG it writes."""
import math
import struct
import zlib

SIZE = 48


def pixel(x, y):
    cx = cy = (SIZE - 1) / 2
    # Rounded tile: distance outside a square of half-width 18 with corner radius 5.
    qx, qy = max(abs(x - cx) - 18, 0), max(abs(y - cy) - 18, 0)
    tile = math.hypot(qx, qy) - 5
    if tile > 0.5:
        return (0, 0, 0, 0)
    alpha = 255 if tile < -0.5 else int(255 * (0.5 - tile))
    r, g, b = 37, 37, 37
    disc = math.hypot(x - cx, y - cy) - 14
    if disc < 0.5:
        t = x / (SIZE - 1)
        warm, cool = (255, 170, 80), (120, 180, 255)
        shade = [int(w + (c - w) * t) for w, c in zip(warm, cool)]
        cover = 1.0 if disc < -0.5 else 0.5 - disc
        r, g, b = [int(base + (s - base) * cover) for base, s in zip((r, g, b), shade)]
    return (r, g, b, alpha)


def chunk(kind, data):
    body = kind + data
    return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))


rows = b"".join(b"\x00" + bytes(v for x in range(SIZE) for v in pixel(x, y)) for y in range(SIZE))
png = (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", SIZE, SIZE, 8, 6, 0, 0, 0))
       + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))
with open("vellum-icon.png", "wb") as out:
    out.write(png)
