#!/usr/bin/env python3
"""Draws the combo box's two arrow images, combo-arrow.png (enabled, the skin's text colour) and
combo-arrow-disabled.png (the skin's disabled text colour): 12 x 12 pixel RGBA PNG files holding a
small downward triangle with softened edges on a transparent ground. Run it by hand when the
arrows should change; the build embeds the files it writes."""
import os

from pngfile import rgba_png

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
    return rgba_png(SIZE, lambda x, y: tuple(ink) + (round(255 * coverage(x, y)),))


def main():
    folder = os.path.dirname(os.path.abspath(__file__))
    for name, ink in INKS.items():
        with open(os.path.join(folder, name), "wb") as out:
            out.write(png(ink))


if __name__ == "__main__":
    main()
