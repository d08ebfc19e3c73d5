# SPDX-License-Identifier: GPL-3.0-or-later
"""The region that a program runs in changes nothing in a document: the report names its own."""

import os
import pathlib
import sqlite3
import subprocess
import tempfile
import unittest

from harness import STAGE, another_clock, report_formats

REGIONS = ("de_DE.UTF-8", "tr_TR.UTF-8")
NAMES_IN_CAPITALS = """<Report><DataSources><DataSource Name="db"><ConnectionProperties><DataProvider>SQLITE</DataProvider>
<ConnectString>Data Source=ids.db</ConnectString></ConnectionProperties></DataSource></DataSources>
<DataSets><DataSet Name="Items"><Query><DataSourceName>db</DataSourceName><CommandText>select ID from items</CommandText>
</Query><Fields><Field Name="ID"><DataField>ID</DataField></Field></Fields></DataSet></DataSets><Width>4in</Width>
<Body><Height>1in</Height><ReportItems><Textbox Name="b"><Value>="Item " &amp; First(Fields!id.Value, "Items")</Value>
<Style><BackgroundColor>WHITE</BackgroundColor><FontStyle>ITALIC</FontStyle></Style></Textbox></ReportItems></Body></Report>"""


class Regions(unittest.TestCase):
    def setUp(self):
        held = tempfile.TemporaryDirectory(prefix="oxc-e2e-")
        self.addCleanup(held.cleanup)
        self.folder = pathlib.Path(held.name)

    def export(self, report, word, region):
        out = self.folder / f"{report.stem}.{word}"
        environment = {name: value for name, value in os.environ.items()
                       if name != "LANG" and not name.startswith("LC_")}
        environment.update(another_clock(FAKETIME="2026-03-01 10:00:00"), LC_ALL=region,
                           LANGUAGE=region.partition(".")[0], OXC_HOME=str(self.folder / "app"))
        done = subprocess.run([STAGE / "oxc-report", "export", report, "-f", word, "-o", out], capture_output=True,
                              text=True, env=environment, timeout=120)
        self.assertEqual((done.returncode, done.stderr), (0, ""), (report, region))
        return out.read_bytes()

    def test_the_regions_of_these_tests_are_there(self):
        for region in REGIONS:
            point = subprocess.run(["locale", "decimal_point"], capture_output=True, text=True,
                                   env={"LC_ALL": region, "PATH": os.environ["PATH"]}, check=True)
            self.assertEqual(point.stdout, ",\n", region)

    def test_samples_are_the_same_in_every_region(self):
        samples = sorted((STAGE / "samples").glob("*.rpt"))
        self.assertEqual(len(samples), 6)
        for row, report in enumerate(samples):
            for column, word in enumerate(report_formats()):
                # In turn: each region has every format and half of every report's.
                region = REGIONS[(row + column) % len(REGIONS)]
                # Not assertEqual: the bytes of a document would be the message.
                self.assertTrue(self.export(report, word, region) == self.export(report, word, "C.UTF-8"),
                                (report.name, word, region))

    def test_names_are_found_whatever_their_case(self):
        with sqlite3.connect(self.folder / "ids.db") as database:
            database.execute("create table items (ID integer)")
            database.execute("insert into items values (17)")
        report = self.folder / "names.rpt"
        report.write_text(NAMES_IN_CAPITALS)
        for region in ("C.UTF-8", *REGIONS):
            text = self.export(report, "html", region).decode()
            self.assertIn("Item 17", text, region)
            self.assertIn("font-style:italic", text, region)


if __name__ == "__main__":
    unittest.main()
