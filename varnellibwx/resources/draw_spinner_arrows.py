#!/usr/bin/env python3
"""Draws the spinner's six arrow images, spinner-{up,down}-{normal,hover,pressed}.bmp: 11 x 9
pixel, uncompressed 24-bit BMP files (378 bytes each) holding a small triangle, light on the
dark skin. Normal is a soft grey on the skin's background, hover a brighter grey, pressed the
brightest on the skin's pressed blue. Run it by hand when the arrows should change; the build
embeds the files it writes."""
import os
import struct

WIDTH, HEIGHT = 11, 9
BACKGROUND = (68, 68, 68)
PRESSED_BACKGROUND = (0, 73, 112)
STATES = {
    "normal": ((165, 165, 165), BACKGROUND),
    "hover": ((225, 225, 225), BACKGROUND),
    "pressed": ((240, 240, 240), PRESSED_BACKGROUND),
}


def inside_up_arrow(x, y):
    # A triangle 7 wide and 4 high, its tip at the top, centred in the image.
    top = 3
    row = y - top
    return 0 <= row < 4 and abs(x - (WIDTH - 1) // 2) <= row


def bmp(pixels):
    row_size = (WIDTH * 3 + 3) // 4 * 4
    data = bytearray()
    for y in reversed(range(HEIGHT)):  # BMP rows are stored bottom-up
        row = bytearray()
        for x in range(WIDTH):
            r, g, b = pixels(x, y)
            row += bytes((b, g, r))
        data += row + bytes(row_size - len(row))
    header_size = 14 + 40
    file_header = struct.pack("<2sIHHI", b"BM", header_size + len(data), 0, 0, header_size)
    info = struct.pack("<IiiHHIIiiII", 40, WIDTH, HEIGHT, 1, 24, 0, len(data), 2835, 2835, 0, 0)
    return file_header + info + data


def main():
    folder = os.path.dirname(os.path.abspath(__file__))
    for state, (ink, paper) in STATES.items():
        for direction in ("up", "down"):
            def pixels(x, y, direction=direction):
                row = y if direction == "up" else HEIGHT - 1 - y
                return ink if inside_up_arrow(x, row) else paper
            image = bmp(pixels)
            assert len(image) == 378
            with open(os.path.join(folder, f"spinner-{direction}-{state}.bmp"), "wb") as out:
                out.write(image)


if __name__ == "__main__":
    main()
