# SPDX-License-Identifier: GPL-3.0-or-later
"""docs/database.md has the tables and columns of the blank database, in their order, and no others."""

import pathlib
import re
import sqlite3
import unittest

TOP = pathlib.Path(__file__).resolve().parent.parent.parent


class DatabaseGuide(unittest.TestCase):
    def test_tables_and_columns_are_those_of_the_schema(self):
        database = sqlite3.connect(":memory:")
        database.executescript((TOP / "src/store/schema.sql").read_text())
        names = [name for name, in database.execute(
            "select name from sqlite_master where type = 'table' and name not like 'sqlite_%' order by rowid")]
        made = {name: [row[1] for row in database.execute("pragma table_info(%s)" % name)] for name in names}
        guide = (TOP / "docs/database.md").read_text()
        tables = guide.partition("<!-- tables -->")[2].partition("<!-- end of tables -->")[0]
        told = {section.partition("\n")[0].strip(): re.findall(r"^\| `(\w+)` \| \S", section, re.M)
                for section in tables.split("\n## ")[1:]}
        self.assertGreater(len(made), 5)
        self.assertEqual(told, made)


if __name__ == "__main__":
    unittest.main()
