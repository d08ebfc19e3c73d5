# SPDX-License-Identifier: GPL-3.0-or-later
"""The picture of the rooms in the documentation is the one that the sources make."""

import os
import pathlib
import subprocess
import tempfile
import unittest

DOCS = pathlib.Path(os.environ["OXC_SOURCES"]) / "docs"


class DrawRooms(unittest.TestCase):
    def test_the_picture_is_current(self):
        with tempfile.TemporaryDirectory() as folder:
            drawn = pathlib.Path(folder) / "rooms.svg"
            subprocess.run([DOCS / "draw_rooms", drawn], check=True)
            self.assertEqual((DOCS / "rooms.svg").read_text(), drawn.read_text(),
                             "docs/rooms.svg is out of date; docs/draw_rooms draws it again")

    def test_no_room_includes_one_above_it(self):
        self.assertNotIn('class="up"', (DOCS / "rooms.svg").read_text())


if __name__ == "__main__":
    unittest.main()
