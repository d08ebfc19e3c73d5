# SPDX-License-Identifier: GPL-3.0-or-later
"""Runs on demand from the context menus of the real Desktop: the mail, the files and the history rows that they leave,
and what the user is told."""

import time
import unittest

from desk_session import DeskSession
from harness import attachment, pdf_text

TODAY = time.strftime("%Y-%m-%d")


class RunningNow(DeskSession):
    def menu_of(self, item):
        """The context menu of the item whose text begins so."""
        self.to_list()
        self.type(item)
        self.press("Menu")
        return self.next_window("menu of " + item)

    def choose(self, item, *keys):
        menu = self.menu_of(item)
        self.press(*keys)
        self.courier.wait(lambda: menu not in self.others(), 10, "end of the menu")

    def execute_schedule(self, item):
        self.choose(item, "Down", "Down", "Return")

    def execute_package(self, item):
        self.choose(item, "Down", "Return")

    def close_box(self, name):
        box = self.next_window("box")
        self.picture(name)
        self.display.focus(box)
        self.press("Return")
        self.back_to_main()

    def open_desktop(self):
        self.courier.write_days_year_first()
        self.start_session()
        self.click(*self.ROOT)

    def assert_stamp(self, stamp):
        self.assertRegex(stamp, "^%s \\d\\d:\\d\\d:\\d\\d$" % TODAY)


class Success(RunningNow):
    def test_schedule_past_its_end_runs_and_leaves_its_mail_and_row(self):
        key = self.courier.schedule(ReportTitle="Sales", EndDate="2001-01-01", NextRun="2001-01-01")
        self.open_desktop()
        self.menu_of("Sales")
        self.picture("running-now-menu")
        self.press("Escape")
        self.back_to_main()
        self.execute_schedule("Sales")
        self.close_box("running-now-done")
        [(_, stamp, status, text)] = self.courier.history(key)
        self.assert_stamp(stamp)
        self.assertEqual((status, text), ("Success", "None"))
        self.assertEqual(self.courier.next_run(key), "2001-01-01")
        [mail] = self.courier.mails()
        self.assertEqual((mail["To"], mail["Subject"]), ("ann@example.com", "Figures"))
        self.assertTrue(pdf_text(attachment(mail)[2]))

    def test_package_past_its_end_leaves_its_files_mail_and_row(self):
        key = self.courier.package([("Acrobat Format (PDF)", "sales_by_region.rpt"), ("HTML", "summary.rpt")],
                                   BatchName="Month end", EndDate="2001-01-01", NextRunDate="2001-01-01")
        self.open_desktop()
        self.menu_of("Month")
        self.picture("running-now-package-menu")
        self.press("Escape")
        self.back_to_main()
        self.execute_package("Month")
        self.close_box("running-now-package-done")
        self.assertEqual(sorted(self.courier.package_files()), ["2summary.rpt.htm", "sales_by_region.rpt.pdf"])
        [mail] = self.courier.mails()
        self.assertEqual(mail["To"], "ann@example.com, bob@example.com")
        self.assertEqual([part.get_filename() for part in mail.iter_attachments()],
                         ["sales_by_region.rpt.pdf", "2summary.rpt.htm"])
        [(row, stamp, success, text)] = self.courier.package_history()
        self.assertRegex(stamp, "^%s,\\d\\d:\\d\\d:\\d\\d$" % TODAY)
        self.assertEqual((row, success, text), (str(key), "T", None))
        self.assertEqual(self.courier.package_next_run(key), "2001-01-01")


class Failure(RunningNow):
    def test_missing_report_is_told_and_leaves_a_row_without_a_status(self):
        key = self.courier.schedule("gone.rpt", ReportTitle="Gone")
        self.open_desktop()
        self.execute_schedule("Gone")
        self.close_box("running-now-failed")
        [(_, stamp, status, text)] = self.courier.history(key)
        self.assert_stamp(stamp)
        self.assertEqual(status, "")
        self.assertIn("gone.rpt", text)
        self.assertEqual(self.courier.mails(), [])
        self.assertIsNone(self.courier.process.poll(), self.courier.said())

    def test_format_that_nobody_knows_is_answered_by_nothing(self):
        self.courier.schedule(ReportTitle="Odd", Format="Lotus")
        self.courier.schedule(ReportTitle="Sales")
        self.open_desktop()
        self.execute_schedule("Odd")
        time.sleep(1)
        self.assertEqual(self.others(), [])
        self.execute_schedule("Sales")
        self.close_box("running-now-after-odd")
        self.assertEqual(len(self.courier.history()), 1)

    def test_package_with_a_missing_report_ends_the_editor_with_the_run_times_box(self):
        self.courier.package([("PDF", "gone.rpt")], BatchName="Broken")
        self.open_desktop()
        self.execute_package("Broken")
        box = self.next_window("run time's box")
        self.picture("running-now-package-error")
        self.display.focus(box)
        self.display.key("Return")
        self.assertEqual(self.courier.process.wait(10), 1)
        self.assertEqual(self.courier.package_history(), [])
        self.assertEqual(self.courier.mails(), [])

    def test_package_whose_mail_fails_leaves_a_row_without_a_key(self):
        self.courier.package([("PDF", "sales_by_region.rpt")], BatchName="Month end", Recipients="<>;")
        self.open_desktop()
        self.execute_package("Month")
        self.courier.wait(self.courier.package_history, 20, "row of the failure")
        [(row, _, success, text)] = self.courier.package_history()
        self.assertEqual((row, success, text), ("", "T", ""))
        self.courier.wait(lambda: len(self.courier.mails()) == 2, 10, "alerts")
        for mail, words in zip(self.courier.mails(), ("SendMailBatch. ", "BatchReport.  [0]")):
            self.assertEqual((mail["To"], mail["Subject"]), ("boss@example.com", "Pressroom Error"))
            self.assertIn("An error occured in " + words, mail.get_body().get_content())
        self.assertEqual(self.others(), [])


class SuccessAtTwiceTheSize(Success):
    scale = 2
    screen = "2560x1600"


if __name__ == "__main__":
    unittest.main()
