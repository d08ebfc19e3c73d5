# SPDX-License-Identifier: GPL-3.0-or-later
"""A package made in the wizard of the real program, by keys alone, and run by the scheduler.

With OXC_PICTURES set to a folder, pictures of its pages are left there."""

import time
import unittest

from dialogs import DialogTest
from harness import system_path

WIZARD = "Multiple Reports Wizard"
VALUES = "Add Report Parameters"
COMPOUND_FILE = b"\xd0\xcf\x11\xe0"


class PackageWizard(DialogTest):
    def setUp(self):
        super().setUp()
        samples = system_path(self.courier.app / "samples")
        self.courier.settings(Poll="1", DefPath=samples.replace("\\", "\\\\"))
        self.packages = self.courier.folder / "packages"
        self.packages.mkdir()

    def open_wizard(self):
        self.main = self.open_editor()
        self.display.key("alt+t", "Down", "Return")
        self.wizard = self.window(WIZARD)

    def add_report(self, letter, value=None):
        self.type(letter)
        self.display.key("Return")
        self.window(VALUES)
        if value:
            self.display.key("ctrl+a")
            self.type(value)
        self.picture("package-wizard-values-" + letter)
        self.display.key("Return")
        self.gone(VALUES, self.wizard)

    def fill_schedule(self, format_letters):
        self.type("Month end")
        self.picture("package-wizard-1")
        self.display.key("Return")
        self.type("D")
        self.display.key("Tab")
        self.type("0000")
        self.display.key(*["Tab"] * 7)  # through the parts of both dates
        self.type(format_letters)
        self.display.key("Tab", "ctrl+a")
        self.type(system_path(self.packages))
        self.picture("package-wizard-2")
        self.display.key("Return")

    def fill_reports(self):
        self.add_report("i", "10017")
        self.add_report("s")
        self.picture("package-wizard-3")
        self.display.key(*["Tab"] * 6, "Return")

    def fill_email(self):
        self.type("ann@example.com;bob@example.com")
        self.display.key("Tab", "Tab")
        self.type("Month's end")
        self.display.key("Tab")
        self.type("Two files.")
        self.picture("package-wizard-4")

    def finish(self):
        self.display.key("alt+f")
        self.gone(WIZARD)
        time.sleep(3)
        self.picture("package-wizard-wait")
        self.box(self.main)
        self.picture("package-wizard-created")
        self.display.key("Return")
        self.gone("Creating Report package....Please wait", self.main)
        self.picture("package-wizard-desktop")
        self.assertIsNone(self.courier.process.poll())
        self.courier.stop()

    def make_package(self, format_letters):
        self.open_wizard()
        self.fill_schedule(format_letters)
        self.fill_reports()
        self.fill_email()
        self.finish()

    def run_scheduler(self):
        self.courier.extra_environment = {}
        self.courier.run_until_package_history()

    def test_package_made_by_keys_alone_is_run_and_mailed(self):
        self.make_package("M")
        today = time.strftime("%Y-%m-%d")
        self.assertEqual(
            self.courier.sql("select ClientName, BatchName, Recipients, Frequency, RunTime, StartDate, EndDate, "
                             "NextRunDate, Subject, Message, Destination, MailBatch from ReportBatch"),
            [("NONE", "Month end", "ann@example.com;bob@example.com;", "Daily", "00:00", today, "3000-12-31", today,
              "Months end", "Two files.", system_path(self.packages) + "\\", "T")])
        samples = self.courier.app / "samples"
        self.assertEqual(
            self.courier.sql("select ReportTitle, ReportPath, ReportFormat from ReportBatchDtls order by DetailID"),
            [("1>invoice.rpt", system_path(samples / "invoice.rpt"), "MS Excel"),
             ("2>sales_by_region.rpt", system_path(samples / "sales_by_region.rpt"), "MS Excel")])
        self.assertEqual(self.courier.sql("select DetailID, ParValue from ReportBatchPar order by ParID"),
                         [(1, "10017"), (2, "2025")])
        self.assertEqual(self.courier.sql("select count(*) from tmpPar"), [(0,)])

        self.run_scheduler()
        self.assertEqual([row[2] for row in self.courier.package_history()], ["T"])
        files = self.courier.package_files()
        self.assertEqual(list(files), ["1>invoice.rpt.xls", "2>sales_by_region.rpt.xls"])
        mail, = self.courier.mails()
        self.assertEqual((mail["To"], mail["Subject"]), ("ann@example.com, bob@example.com", "Months end"))
        self.assertIn("Two files.", mail.get_body().get_content())
        attached = [part.get_payload(decode=True) for part in mail.iter_attachments()]
        self.assertEqual(attached, list(files.values()))
        self.assertTrue(all(data.startswith(COMPOUND_FILE) for data in attached))

    def test_esc_leaves_no_trace(self):
        self.open_wizard()
        self.fill_schedule("H")
        self.add_report("i")
        self.assertEqual(self.courier.sql("select rptName, parValue from tmpPar"), [("1>invoice.rpt", "10042")])
        self.display.key("Escape")
        self.gone(WIZARD)
        self.assertEqual(self.courier.sql("select count(*) from tmpPar"), [(0,)])
        self.assertEqual(self.courier.sql("select count(*) from ReportBatch"), [(0,)])
        self.assertIsNone(self.courier.process.poll())


class PackageWizardTwiceAsLarge(PackageWizard):
    scale = "2"


if __name__ == "__main__":
    unittest.main()
