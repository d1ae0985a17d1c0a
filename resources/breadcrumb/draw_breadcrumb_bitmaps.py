#!/usr/bin/env python3
"""Draws the breadcrumb bar's four pictures as 32-bit bottom-up BMP files with premultiplied
alpha, as AlphaBlend with AC_SRC_ALPHA wants them:

  108  12 x 22  the drop-down arrow
  109  32 x 32  the fill under the cursor (read through its column at x 2)
  200  32 x 32  the fill of a pressed button (the same column)
  201  32 x 32  the frame of a hot button, with corners of 5 pixels

Run it in this folder after changing a picture; the build takes the .bmp files as they stand."""
import struct


def write_bmp(name, width, height, pixel):
    rows = []
    for y in range(height - 1, -1, -1):  # bottom-up
        row = b""
        for x in range(width):
            r, g, b, a = pixel(x, y)
            row += bytes((b * a // 255, g * a // 255, r * a // 255, a))
        rows.append(row)
    data = b"".join(rows)
    header = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 32, 0, len(data), 2835, 2835, 0, 0)
    with open(name, "wb") as f:
        f.write(b"BM" + struct.pack("<IHHI", 14 + len(header) + len(data), 0, 0, 14 + len(header)))
        f.write(header + data)


def arrow(x, y):
    # a down-pointing triangle of 7 x 4 pixels in the middle of the 12 x 22 cell
    top, left = 9, 2
    dy = y - top
    if 0 <= dy < 4 and left + dy <= x <= left + 6 - dy:
        return (0x40, 0x40, 0x40, 255)
    return (0, 0, 0, 0)


def fill(colour, alpha):
    return lambda x, y: colour + (alpha,)


def frame(x, y):
    edge = x in (0, 31) or y in (0, 31)
    corner = (x in (0, 31)) and (y in (0, 31))
    if corner:
        return (0, 0, 0, 0)  # rounded off
    if edge:
        return (0x7D, 0xA2, 0xCE, 255)
    if x in (1, 30) or y in (1, 30):
        return (0xFF, 0xFF, 0xFF, 160)  # inner highlight
    return (0xEB, 0xF4, 0xFD, 96)


write_bmp("crumb_arrow_108.bmp", 12, 22, arrow)
write_bmp("crumb_hot_109.bmp", 32, 32, fill((0xCC, 0xE4, 0xF7), 200))
write_bmp("crumb_pressed_200.bmp", 32, 32, fill((0x99, 0xC9, 0xEF), 220))
write_bmp("crumb_frame_201.bmp", 32, 32, frame)
