# SPDX-License-Identifier: GPL-3.0-or-later
"""A session with the Desktop of the real program: folders, the table, a preview, a deletion, mostly by keys."""

import time
import unittest

from desk_session import DeskSession


class Desktop(DeskSession):
    def setUp(self):
        super().setUp()
        for name, parent in [("Sales", 0), ("Stock", 0), ("North", 1), ("South", 1), ("Accounts", 0)]:
            self.courier.sql("insert into Folders(FolderName, Parent) values(?,?)", name, parent)
        key = self.courier.schedule(ReportTitle="Sales by region", Frequency="Weekly")
        self.courier.parameters(key, "2024")
        self.courier.schedule(ReportTitle="Daily figures for the board", Parent="Sales",
                              SendTo="ann@example.com;bob@example.com;")
        self.courier.schedule(ReportTitle="Week", Parent="Sales", Frequency="Weekly", Format="HTML")
        self.courier.package([("Acrobat Format (PDF)", "sales_by_region.rpt")], BatchName="Month end")

    def folders(self):
        return self.rows("select FolderName from Folders")

    def test_session(self):
        self.start_session()
        self.picture("desktop")
        self.click(*self.ROOT)
        self.picture("desktop-root")
        self.make_folder("Ledger")
        self.rename("Ledger", "Books")
        self.delete_folder("Books")
        self.open_package()
        self.show_table()
        self.preview()

    def make_folder(self, name):
        self.click(*self.NEW_FOLDER)
        self.display.focus(self.next_window("question for a name"))
        self.type(name)
        self.picture("desktop-name")
        self.press("Return")
        self.courier.wait(lambda: name in self.folders(), 10, "new folder")
        self.assertEqual(self.courier.sql("select Parent from Folders where FolderName=?", name), [(0,)])
        self.back_to_main()

    def rename(self, old, new):
        self.to_list()
        self.type(old)
        self.press("F2")
        self.press("ctrl+a")
        self.type(new)
        self.picture("desktop-rename")
        self.press("Return")
        self.courier.wait(lambda: new in self.folders() and old not in self.folders(), 10, "new name")

    def delete_folder(self, name):
        self.press("Menu")
        self.next_window("menu of the folder")
        self.picture("desktop-menu")
        self.press("Up", "Return")  # Delete...
        time.sleep(0.5)
        self.display.focus(self.next_window("question"))
        self.picture("desktop-delete")
        self.press("alt+y")
        self.courier.wait(lambda: name not in self.folders(), 10, "deletion")
        self.back_to_main()

    def open_package(self):
        self.to_list()
        self.type("Month")
        self.press("Return")
        self.picture("desktop-package")
        self.press("ctrl+w")

    def show_table(self):
        self.press("alt+v")
        self.next_window("menu of the views")
        self.press("d")
        self.back_to_main()
        self.assertIn('"View"="3"', (self.courier.config / "settings.reg").read_text())
        self.picture("desktop-details")

    def preview(self):
        self.to_list()
        self.type("Sales by")
        self.press("Menu")
        self.next_window("menu of the report")
        self.picture("desktop-report-menu")
        self.press("Down", "Return")  # Run Report
        time.sleep(2)
        self.picture("desktop-preview")
        self.assertEqual(self.others(), [])
        self.press("ctrl+F4")  # closes it, and keys are the list's again
        self.press("F2", "ctrl+a")
        self.type("By region")
        self.press("Return")
        self.courier.wait(lambda: "By region" in self.rows("select ReportTitle from ReportScheduler"), 10, "new title")
        self.assertIsNone(self.courier.process.poll(), self.courier.said())


class DesktopAtTwiceTheSize(Desktop):
    scale = 2
    screen = "2560x1600"


if __name__ == "__main__":
    unittest.main()
