# SPDX-License-Identifier: GPL-3.0-or-later
"""Tests hold the tables of docs/operations.md: each line names a test that exists, each test of faults has its line, and
the test looks for the text that its line says the user sees."""

import ast
import os
import pathlib
import re
import unittest

SOURCES = pathlib.Path(os.environ["OXC_SOURCES"])
TESTS = SOURCES / "tests" / "e2e"


def rows():
    """The cells of each line that names a test."""
    for line in (SOURCES / "docs" / "operations.md").read_text(encoding="utf-8").splitlines():
        cells = [cell.strip() for cell in line.strip("|").split(" | ")]
        if line.startswith("| ") and re.fullmatch(r"`test_\w+\.\w+\.test_\w+` ?", cells[-1]):
            yield cells


def tests_of(module):
    """Class.test of a module."""
    tree = ast.parse((TESTS / (module + ".py")).read_text(encoding="utf-8"))
    return {"%s.%s.%s" % (module, one.name, function.name) for one in tree.body if isinstance(one, ast.ClassDef)
            for function in one.body if isinstance(function, ast.FunctionDef) and function.name.startswith("test_")}


def texts_of(module):
    """The strings of a module and of what it imports from beside it."""
    tree = ast.parse((TESTS / (module + ".py")).read_text(encoding="utf-8"))
    texts = [node.value for node in ast.walk(tree) if isinstance(node, ast.Constant) and isinstance(node.value, str)]
    for node in tree.body:
        if isinstance(node, ast.ImportFrom) and (TESTS / (node.module + ".py")).exists():
            texts += texts_of(node.module)
    return texts


class Operations(unittest.TestCase):
    def test_every_line_names_a_test_that_there_is(self):
        named = [cells[-1].strip("`") for cells in rows()]
        self.assertGreater(len(named), 30)
        for name in named:
            self.assertIn(name, tests_of(name.split(".")[0]))

    def test_every_test_of_a_fault_has_its_line(self):
        named = {cells[-1].strip("`") for cells in rows()}
        for module in ("test_disk_faults", "test_machine_faults", "test_backup"):
            self.assertEqual(tests_of(module) - named, set())

    def test_what_the_user_sees_is_what_the_test_looks_for(self):
        checked = 0
        for cells in (cells for cells in rows() if len(cells) == 4):
            module = cells[-1].strip("`").split(".")[0]
            # Strings that are written for re have their own marks.
            texts = [re.sub(r"\\(.)", r"\1", text) for text in texts_of(module)]
            for quoted in re.findall(r"`([^`]+)`", cells[1]):
                for piece in quoted.split("…"):
                    if len(piece) > 8:
                        self.assertTrue(any(piece.strip('"') in text for text in texts), (cells[-1], piece))
                        checked += 1
        self.assertGreater(checked, 25)


if __name__ == "__main__":
    unittest.main()
