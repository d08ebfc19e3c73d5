# SPDX-License-Identifier: GPL-3.0-or-later
"""The engine's README names every header that a program may include."""

import pathlib
import re
import unittest

ENGINE = pathlib.Path(__file__).resolve().parents[2] / "src" / "rdl"


class EngineReadme(unittest.TestCase):
    def test_headers_for_programs_are_those_of_the_folder(self):
        text = (ENGINE / "README.md").read_text(encoding="utf-8")
        listed = re.search(r"A program includes only `api/`:(.*?)These headers", text, re.DOTALL).group(1)
        self.assertEqual(sorted(re.findall(r"`(\w+\.h)`", listed)), sorted(path.name for path in (ENGINE / "api").glob("*.h")))


if __name__ == "__main__":
    unittest.main()
