# SPDX-License-Identifier: GPL-3.0-or-later
"""Packages on the real Desktop, by keys: a report's output is opened, its values are changed and used by the scheduler,
and the last report of a package takes the package along."""

import time
import unittest

from desk_session import DeskSession
from harness import pdf_text


WITHOUT_PARAMETERS = """<?xml version="1.0"?>
<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2005/01/reportdefinition">
  <Body><Height>5cm</Height><ReportItems>
    <Textbox Name="Greeting"><Height>1cm</Height><Width>8cm</Width><Value>Good morning</Value></Textbox>
  </ReportItems></Body>
  <Width>16cm</Width>
</Report>
"""


class PackageCommands(DeskSession):
    def setUp(self):
        super().setUp()
        plain = self.courier.folder / "plain.rpt"
        plain.write_text(WITHOUT_PARAMETERS)
        self.key = self.courier.package([("Acrobat", "sales_by_region.rpt", "2024"), ("Acrobat", plain)],
                                        BatchName="Month end", Frequency="Monthly")

    def text_of_output(self):
        return pdf_text(self.courier.package_files()["sales_by_region.rpt.pdf"])

    def run_package(self, runs):
        self.courier.sql("update ReportBatch set NextRunDate=?", time.strftime("%Y-%m-%d"))
        self.courier.run_until_package_history(runs)

    def open_package(self, name):
        """In a window of its own, whose list has the keys."""
        self.to_list()
        self.type(name)
        self.press("Return")

    def choose(self, item, *keys):
        """An entry of the menu of the item whose text begins so."""
        self.type(item)
        self.press("Menu")
        menu = self.next_window("menu of " + item)
        self.picture("package-menu-" + item[0])
        self.press(*keys, "Return")
        self.courier.wait(lambda: menu not in self.others(), 10, "end of the menu")

    def values(self):
        return self.rows("select ParValue from ReportBatchPar where DetailID=1 order by ParID")

    def test_output_is_opened_and_new_values_are_used_by_the_next_run(self):
        note = self.associate("application/pdf")
        self.run_package(1)
        self.assertIn("2024", self.text_of_output())
        self.start_session()
        self.open_package("Month")
        self.picture("package")
        self.view_output(note)
        self.edit_values()
        self.assertIsNone(self.courier.process.poll(), self.courier.said())
        self.courier.stop()
        self.run_package(2)
        text = self.text_of_output()
        self.assertIn("2026", text)
        self.assertNotIn("2024", text)

    def view_output(self, note):
        self.choose("1", "Down", "Down")
        self.courier.wait(note.exists, 10, "the output")
        self.assertEqual(note.read_text().strip().removeprefix("file://"),
                         str(self.courier.folder / "packages" / "sales_by_region.rpt.pdf"))
        (self.courier.folder / "packages" / "sales_by_region.rpt.pdf").rename(self.courier.folder / "away.pdf")
        self.choose("1", "Down", "Down")
        box = self.next_window("box")
        self.display.focus(box)
        self.picture("package-no-output")
        self.press("Return")
        self.back_to_main()

    def edit_values(self):
        for button, expected in (("Escape", ["2024"]), ("Return", ["2026"])):
            self.choose("1", "Down", "Down", "Down")
            dialog = self.next_window("parameters")
            time.sleep(0.3)
            self.display.focus(dialog)
            self.type("2026")
            self.picture("package-parameters")
            self.press(button)
            self.back_to_main()
            self.courier.wait(lambda: self.values() == expected, 10, "values")
        self.choose("2", "Down", "Down", "Down")
        box = self.next_window("box")
        self.display.focus(box)
        self.picture("package-no-parameters")
        self.press("Return")
        self.back_to_main()

    def test_last_report_takes_its_package_along(self):
        self.courier.package([("Acrobat", "summary.rpt")], BatchName="Week")
        self.start_session()
        self.open_package("Week")
        self.picture("package-of-one")
        self.choose("1", "Up")
        box = self.next_window("question")
        self.display.focus(box)
        self.picture("package-question")
        asked = time.monotonic()
        self.press("alt+y")
        self.courier.wait(lambda: "Week" not in self.rows("select BatchName from ReportBatch"), 10, "deletion")
        self.assertGreater(time.monotonic() - asked, 2)
        self.back_to_main()
        self.picture("package-empty")
        self.press("ctrl+w")
        self.picture("package-gone")
        self.assertEqual(self.rows("select ReportID from ReportBatchDtls"), [self.key, self.key])
        self.assertIsNone(self.courier.process.poll(), self.courier.said())


class PackageCommandsAtTwiceTheSize(PackageCommands):
    scale = 2
    screen = "2560x1600"


if __name__ == "__main__":
    unittest.main()
