# SPDX-License-Identifier: GPL-3.0-or-later
"""The table of covered lines has a row for each room of the sources, and no other."""

import importlib.util
import os
import pathlib
import re
import unittest

ROOT = pathlib.Path(os.environ["OXC_SOURCES"])


def table_maker():
    spec = importlib.util.spec_from_file_location("coverage_by_room", ROOT / "docs/coverage_by_room.py")
    module = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    return module


class CoverageTable(unittest.TestCase):
    def test_the_rooms_are_those_of_the_sources(self):
        room = table_maker().room
        rooms = {room(source.relative_to(ROOT).as_posix()) for source in (ROOT / "src").rglob("*.cpp")}
        rows = re.findall(r"^\| (\S+) \| \d+ \| [\d.]+ % \|$", (ROOT / "docs/coverage.md").read_text(), re.MULTILINE)
        self.assertEqual(sorted(rooms) + ["all"], rows, "docs/coverage.md is out of date; tests/coverage makes it again")


if __name__ == "__main__":
    unittest.main()
