# SPDX-License-Identifier: GPL-3.0-or-later
"""A page as pixels, four for each point, so that an edge at whole points is one between two pixels."""

import subprocess

from look_report import MARGINS

SCALE = 4
DPI = 72 * SCALE
SHARES = {"Solid": 1.0, "Dashed": 3 / 5, "Dotted": 1 / 2, "Double": 1.0}  # of a line's length that is coloured
REACH = 5  # points on either side of an edge where a border is looked for


def rgb(colour):
    """Of #rrggbb or #aarrggbb."""
    return tuple(int(colour[-6:][i:i + 2], 16) for i in (0, 2, 4))


def over(colour, ground):
    """What a colour of a report looks like on another one."""
    alpha = int(colour[1:3], 16) / 255 if len(colour) == 9 else 1
    return tuple(round(a * alpha + b * (1 - alpha)) for a, b in zip(rgb(colour), ground))


def near(a, b, by=1):
    return all(abs(x - y) <= by for x, y in zip(a, b))


class Pixels:
    """Places are points in the body."""

    def __init__(self, ppm):
        _, size, _, self.bytes = ppm.split(b"\n", 3)
        self.width, self.height = map(int, size.split())

    @classmethod
    def of_pdf(cls, path):
        return cls(subprocess.run(["pdftoppm", "-r", str(DPI), "-l", "1", path], check=True, capture_output=True).stdout)

    @classmethod
    def of_png(cls, path):
        return cls(subprocess.run(["convert", path, "-depth", "8", "ppm:-"], check=True, capture_output=True).stdout)

    def pixel(self, x, y):
        begin = 3 * (self.width * y + x)
        return tuple(self.bytes[begin:begin + 3])

    def at(self, x, y):
        """The pixel whose upper left corner is there."""
        return self.pixel(round((MARGINS[0] + x) * SCALE), round((MARGINS[1] + y) * SCALE))

    def side(self, place, side, line):
        """The offsets in pixels from a box's edge of the columns or rows that have the line's colour in at least a quarter of their
        length, and the share of the length that has it in them."""
        x, y, width, height = place
        upright = side in ("left", "right")
        edge = {"left": MARGINS[0] + x, "top": MARGINS[1] + y, "right": MARGINS[0] + x + width, "bottom": MARGINS[1] + y + height}[side]
        begin, length = (MARGINS[1] + y, height) if upright else (MARGINS[0] + x, width)
        # Away from the corners, where two borders meet.
        along = range(round((begin + REACH) * SCALE), round((begin + length - REACH) * SCALE))
        shares = {}
        for offset in range(-REACH * SCALE, REACH * SCALE):
            across = round(edge * SCALE) + offset
            hits = sum(near(self.pixel(across, i) if upright else self.pixel(i, across), rgb(line.colour)) for i in along)
            if hits * 4 >= len(along):
                shares[offset] = hits / len(along)
        return list(shares), sum(shares.values()) / max(len(shares), 1)

    def ink(self, place, colour, by=40):
        """The bounds of what has a colour within a place, as left, top, right and bottom."""
        x, y, width, height = place
        rows = range(round((MARGINS[1] + y) * SCALE), round((MARGINS[1] + y + height) * SCALE))
        columns = range(round((MARGINS[0] + x) * SCALE), round((MARGINS[0] + x + width) * SCALE))
        found = [(i, j) for j in rows for i in columns if near(self.pixel(i, j), colour, by)]
        if not found:
            return None
        lefts, tops = zip(*found)
        return (min(lefts) / SCALE - MARGINS[0], min(tops) / SCALE - MARGINS[1], (max(lefts) + 1) / SCALE - MARGINS[0],
                (max(tops) + 1) / SCALE - MARGINS[1])


def offsets(line):
    """The pixels that a line covers, counted from the edge in its middle."""
    half = round(line.width * SCALE / 2)
    covered = list(range(-half, half))
    if line.style == "Double":
        third = 2 * half // 3
        covered = covered[:third] + covered[-third:]
    return covered
