"""Writes square RGBA PNG files for the scripts that draw the library's embedded images."""
import struct
import zlib


def rgba_png(size, pixel):
    """A size x size PNG whose pixel (x, y) is pixel(x, y): four bytes, red, green, blue, alpha."""
    rows = b""
    for y in range(size):
        row = bytearray([0])  # no filter
        for x in range(size):
            row += bytes(pixel(x, y))
        rows += row

    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))

    header = struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
            chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))
