# SPDX-License-Identifier: GPL-3.0-or-later
"""A picture to draw polygons on, with smooth edges: drawn three times as large, and made smaller at the end."""
FINE = 3


class Canvas:
    def __init__(self, width, height):
        self._width, self._height = width, height
        self._rows = [bytearray(3 * width * FINE) for _ in range(height * FINE)]

    def polygon(self, corners, colour):
        """Fills a polygon; `corners` are (x, y) in pixels from the top left, `colour` is (red, green, blue)."""
        fine = [(x * FINE, y * FINE) for x, y in corners]
        pixel = bytes(reversed(colour))
        top = max(0, int(min(y for _, y in fine)))
        bottom = min(len(self._rows), int(max(y for _, y in fine)) + 1)
        for row in range(top, bottom):
            crossings = sorted(self._crossings(fine, row + 0.5))
            for left, right in zip(crossings[::2], crossings[1::2]):
                first = max(0, round(left))
                end = min(self._width * FINE, round(right))
                if first < end:
                    self._rows[row][3 * first:3 * end] = pixel * (end - first)

    @staticmethod
    def _crossings(corners, y):
        for (x1, y1), (x2, y2) in zip(corners, corners[1:] + corners[:1]):
            if (y1 <= y) != (y2 <= y):
                yield x1 + (y - y1) * (x2 - x1) / (y2 - y1)

    def bottom_up_bgr(self):
        """The rows from the last to the first, each of whole groups of four bytes."""
        padding = bytes(-3 * self._width % 4)
        return b"".join(self._row(y) + padding for y in reversed(range(self._height)))

    def _row(self, y):
        fine = self._rows[y * FINE:(y + 1) * FINE]
        samples = FINE * FINE
        row = bytearray(3 * self._width)
        for part in range(3):
            # Each fine column of one colour part, added up over the rows and the columns of a pixel.
            columns = [line[part + 3 * column::3 * FINE] for line in fine for column in range(FINE)]
            row[part::3] = bytes((sum(values) + samples // 2) // samples for values in zip(*columns))
        return bytes(row)
