# SPDX-License-Identifier: GPL-3.0-or-later
"""Report Properties of the real program, by keys: a schedule is changed on several tabs, and its copy renewed."""

import time
import unittest

from desk_session import DeskSession
from harness import system_path


class Properties(DeskSession):
    def setUp(self):
        super().setUp()
        self.key = self.courier.schedule(ReportTitle="Week", Parent="Desktop", Frequency="Weekly", RunAt="07:30",
                                         LoginReq="T", UserName="", Password="", Format="MS Excel")
        self.courier.parameters(self.key, "2024")

    def stored(self, columns):
        return self.courier.sql("select %s from ReportScheduler" % columns)[0]

    def open_properties(self):
        self.start_session()
        self.to_list()
        self.type("Week")
        self.press("Menu")
        self.next_window("menu of the report")
        self.press("Up", "Return")  # Properties
        self.courier.wait(lambda: self.display.windows(self.courier.process.pid, "Report Properties"), 10, "form")
        self.form = self.display.windows(self.courier.process.pid, "Report Properties")[-1]
        self.display.focus(self.form)
        time.sleep(0.3)

    def test_changes_on_several_tabs_are_saved_together(self):
        next_run = self.stored("NextRun")
        self.open_properties()
        self.type("Ann's figures")
        self.press("Tab", "Tab", "Tab")
        self.type("Desktop")
        self.picture("properties-general")
        self.press("ctrl+Tab")
        self.type("0815")
        self.press("Tab", "Up")  # from Weekly to Daily
        self.picture("properties-schedule")
        self.press("ctrl+Tab")
        self.picture("properties-parameters")
        self.press("ctrl+Tab", "ctrl+Tab")
        self.picture("properties-logon")
        self.press("ctrl+Tab")
        self.press("ctrl+a")
        self.type("ann@example.com")
        self.picture("properties-email")
        self.press("alt+o")
        self.courier.wait(lambda: self.stored("ReportTitle") == ("Anns figures",), 10, "new title")
        self.back_to_main()
        self.assertEqual(self.stored("Parent, RunAt, Frequency, SendTo, Format, LoginReq"),
                         ("Desktop", "08:15", "Daily", "ann@example.com;", "MS Excel", "T"))
        self.assertEqual(self.stored("NextRun"), next_run)
        self.assertEqual([value for value, in self.courier.sql("select ParValue from ReportParameter")], ["2024"])

    def test_refresh_renews_the_copy_and_ends_the_program_with_its_box(self):
        users_file = self.courier.folder / "week.rpt"
        users_file.write_bytes((self.courier.app / "samples/sales_by_region.rpt").read_bytes())
        self.courier.sql("update ReportScheduler set OriginalPath=?", system_path(users_file))
        cached = self.courier.app / "Cache" / "week.rpt"
        self.open_properties()
        self.press(*["Tab"] * 6, "space")
        self.courier.wait(cached.exists, 10, "copy")
        self.courier.wait(lambda: len(self.others()) > 1, 10, "box")
        self.display.focus(max(self.others()))
        self.picture("properties-refresh")
        self.press("Return")
        self.courier.wait(lambda: self.courier.process.poll() is not None, 10, "end")
        self.assertEqual(self.courier.process.returncode, 1)
        self.assertEqual(cached.read_bytes(), users_file.read_bytes())


if __name__ == "__main__":
    unittest.main()
