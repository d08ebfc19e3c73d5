# SPDX-License-Identifier: GPL-3.0-or-later
"""A session with the Schedule History window of the real program, by keys: a schedule is run from one of its runs,
another is deleted, and F5 shows what came in meanwhile."""

import datetime
import time
import unittest

from desk_session import DeskSession


def day(offset):
    return str(datetime.date.today() + datetime.timedelta(days=offset))


class History(DeskSession):
    def setUp(self):
        super().setUp()
        # Older runs would be purged when the editor starts.
        self.first, self.other = day(-12), day(-3)
        self.sales = self.courier.schedule(ReportTitle="Sales by region", Frequency="Weekly", NextRun="2030-01-07",
                                           RunAt="06:30")
        self.courier.parameters(self.sales, "2024")
        self.stock = self.courier.schedule(ReportTitle="Stock on hand", NextRun="2030-01-02", RunAt="18:00")
        self.courier.schedule(ReportTitle="Never run yet", Frequency="Monthly", NextRun="2030-02-01")
        self.ran(self.sales, self.first + " 06:30:04")
        self.ran(self.sales, day(-5) + " 06:30:02", "Failure", "File not found: Z:\\srv\\reports\\sales.rpt")
        self.ran(self.stock, self.other + " 18:00:11")
        self.courier.package([("Acrobat Format (PDF)", "sales_by_region.rpt", "2024")], BatchName="Month end",
                             Frequency="Monthly")

    def ran(self, key, moment, status="Success", error="None"):
        self.courier.sql("insert into ReportHistory(ReportID, LastRun, Status, ErrMsg) values(?,?,?,?)", key, moment,
                         status, error)

    def open_history(self):
        self.press("alt+t")
        self.next_window("menu of the tools")
        self.press("Up", "Return")  # Schedule History
        self.back_to_main()
        time.sleep(0.3)

    def choose(self, text, *keys):
        """An entry of the menu of the node whose text begins so."""
        self.type(text)
        self.press("Menu")
        self.next_window("menu of the run")
        self.picture("history-menu")
        self.press(*keys, "Return")

    def boxes(self):
        return [window for window in self.display.windows(self.courier.process.pid, "^Oxbow Courier$")
                if window != self.main]

    def answer(self, what, key):
        self.courier.wait(self.boxes, 20, what)
        time.sleep(0.3)
        self.display.focus(self.boxes()[0])
        self.picture("history-" + what)
        self.press(key)
        self.back_to_main()

    def test_session(self):
        self.start_session()
        self.open_history()
        self.picture("history")
        self.run_again()
        self.delete()
        self.refresh()
        self.show_packages()
        self.assertIsNone(self.courier.process.poll(), self.courier.said())

    def run_again(self):
        self.choose(self.first, "Down")  # Execute Schedule
        self.answer("success", "Return")
        rows = self.courier.history(self.sales)
        self.assertEqual(len(rows), 3)
        self.assertEqual(rows[-1][2:], ("Success", "None"))
        self.assertEqual(self.courier.next_run(self.sales), "2030-01-07")
        self.assertEqual(len(self.courier.mails()), 1)
        self.picture("history-new-row")
        # The tree shows it: a run can be asked for at the new row.
        self.choose(rows[-1][1], "Down")
        self.answer("second-success", "Return")
        self.assertEqual(len(self.courier.history(self.sales)), 4)

    def delete(self):
        self.choose(self.other, "Up")  # Delete schedule
        self.answer("question", "alt+y")
        self.courier.wait(lambda: self.stock not in self.rows("select ReportID from ReportScheduler"), 10, "deletion")
        self.assertEqual(len(self.courier.history(self.stock)), 1)
        self.picture("history-deleted")

    def refresh(self):
        self.ran(self.sales, day(1) + " 06:30:00")
        self.press("F5")
        self.choose(day(1), "Down")
        self.answer("third-success", "Return")
        self.assertEqual(len(self.courier.history(self.sales)), 6)

    def heading(self):
        """How much is seen of the report's heading: no window or picture has its colour."""
        return self.display.pixels(self.main).count((0x1f, 0x3a, 0x5f))

    def show_packages(self):
        self.press("ctrl+Tab")
        self.picture("history-packages-closed")
        self.press("F5")
        self.picture("history-packages")
        self.type("1:Month")
        self.press("Down", "Down", "Menu")
        self.next_window("menu of the package's report")
        self.picture("history-package-menu")
        self.assertEqual(self.heading(), 0)
        self.press("Down", "Return")  # Run Report...
        self.courier.wait(lambda: self.heading() > 3000, 30, "the report on the screen")
        self.picture("history-preview")
        self.assertEqual(self.others(), [])


class HistoryAtTwiceTheSize(History):
    scale = 2
    screen = "2560x1600"


if __name__ == "__main__":
    unittest.main()
