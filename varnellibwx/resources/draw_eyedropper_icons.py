#!/usr/bin/env python3
"""Draws the eyedropper buttons' faces: a pipette leaning to the right with a drop under its tip,
20 x 20 pixels (eyedropper-color.png, eyedropper-inverse.png) and 40 x 40 for double scale
(the same names with -2x). The "Pick Color" drop is the highlight blue; the "Pick Inverse" drop is
split white and black. RGBA PNG files on a transparent ground, each pixel sampled 6 x 6 times.
Run it by hand when the faces should change; the build embeds the files it writes."""
import math
import os

from pngfile import rgba_png

BODY = (200, 200, 200)
DARK = (120, 120, 120)
BLUE = (39, 147, 255)
WHITE = (235, 235, 235)
BLACK = (20, 20, 20)


def capsule(ax, ay, bx, by, radius):
    def inside(x, y):
        dx, dy = bx - ax, by - ay
        t = max(0.0, min(1.0, ((x - ax) * dx + (y - ay) * dy) / (dx * dx + dy * dy)))
        return math.hypot(x - ax - t * dx, y - ay - t * dy) <= radius
    return inside


def drop(cx, cy, radius):
    # A circle with a point on top.
    def inside(x, y):
        if math.hypot(x - cx, y - cy) <= radius:
            return True
        depth = (cy - y) / (1.6 * radius)
        return 0.0 <= depth <= 1.0 and abs(x - cx) <= radius * (1.0 - depth) * 0.95
    return inside


def shapes(inverse):
    # In unit coordinates, painted in order, later over earlier.
    tube = capsule(0.60, 0.40, 0.30, 0.70, 0.075)
    result = [
        (capsule(0.70, 0.30, 0.84, 0.16, 0.11), DARK),   # the bulb
        (capsule(0.52, 0.28, 0.72, 0.48, 0.05), BODY),   # the collar
        (tube, BODY),
        (capsule(0.30, 0.70, 0.24, 0.76, 0.035), BODY),  # the tip
    ]
    shape = drop(0.20, 0.86, 0.10)
    if inverse:
        result += [(lambda x, y: shape(x, y) and x < 0.20, WHITE),
                   (lambda x, y: shape(x, y) and x >= 0.20, BLACK)]
    else:
        result.append((shape, BLUE))
    return result


def png(size, inverse):
    layers = shapes(inverse)
    samples = 6

    def pixel(x, y):
        total = [0.0, 0.0, 0.0]
        hits = 0
        for sy in range(samples):
            for sx in range(samples):
                u, v = (x + (sx + 0.5) / samples) / size, (y + (sy + 0.5) / samples) / size
                ink = None
                for inside, colour in layers:
                    if inside(u, v):
                        ink = colour
                if ink:
                    hits += 1
                    for i in range(3):
                        total[i] += ink[i]
        if not hits:
            return (0, 0, 0, 0)
        return tuple(round(t / hits) for t in total) + (round(255 * hits / samples ** 2),)

    return rgba_png(size, pixel)


def main():
    folder = os.path.dirname(os.path.abspath(__file__))
    for inverse, name in ((False, "eyedropper-color"), (True, "eyedropper-inverse")):
        for size, suffix in ((20, ""), (40, "-2x")):
            with open(os.path.join(folder, name + suffix + ".png"), "wb") as out:
                out.write(png(size, inverse))


if __name__ == "__main__":
    main()
