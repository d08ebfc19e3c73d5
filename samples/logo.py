# SPDX-License-Identifier: GPL-3.0-or-later
"""The trading house's mark as a PNG: a white N on a navy disc."""
import struct
import zlib

SIZE = 96
NAVY, WHITE = (0x1F, 0x3A, 0x5F), (0xFF, 0xFF, 0xFF)


def _colour(x, y):
    middle = (SIZE - 1) / 2
    if (x - middle) ** 2 + (y - middle) ** 2 > (SIZE / 2) ** 2:
        return WHITE
    left, right, top, bottom, stroke = 28, 67, 25, 70, 9
    if not top <= y <= bottom:
        return NAVY
    slope = left + (y - top) * (right - left - stroke) / (bottom - top)
    on_letter = left <= x < left + stroke or right - stroke < x <= right or slope <= x < slope + stroke
    return WHITE if on_letter else NAVY


def _chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def png():
    lines = b"".join(b"\0" + bytes(part for x in range(SIZE) for part in _colour(x, y)) for y in range(SIZE))
    head = struct.pack(">IIBBBBB", SIZE, SIZE, 8, 2, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + _chunk(b"IHDR", head) + _chunk(b"IDAT", zlib.compress(lines, 9))
            + _chunk(b"IEND", b""))
