# SPDX-License-Identifier: GPL-3.0-or-later
"""A schedule made in the single report wizard of the real program, by keys alone, and run by the scheduler."""

import time
import unittest

from dialogs import DialogTest
from harness import attachment, pdf_text, system_path


class Wizard(DialogTest):
    def setUp(self):
        super().setUp()
        samples = system_path(self.courier.app / "samples")
        self.courier.settings(Poll="1", DefPath=samples.replace("\\", "\\\\"))
        self.courier.sql("insert into Folders(FolderName, Parent) values('Sales', 0), ('Stock', 0)")

    def next(self):
        """A button that is pressed by its mnemonic stays down for a moment before it acts."""
        self.display.key("alt+n")
        time.sleep(0.4)

    def open_wizard(self):
        self.open_editor()
        self.display.key("alt+t", "Return")
        return self.window("Schedule Report Wizard")

    def pick_report(self, wizard, name):
        self.next()
        self.display.key("space")
        self.window("Select the report to schedule...")
        self.type(name)
        self.display.key("Return")
        self.gone("Select the report to schedule...", wizard)

    def make_schedule(self):
        wizard = self.open_wizard()
        self.pick_report(wizard, "invoice.rpt")
        self.display.key("ctrl+a")
        self.type("Ann's invoice")
        self.display.key("Tab", "Tab", "Tab", "alt+Down", "Down", "Return")
        self.display.focus(wizard)
        self.next()
        self.display.key(*["Tab"] * 6)  # through the parts of both dates
        self.type("0000")
        self.next()
        self.type("ann@example.com")
        self.display.key("Tab")
        self.type("Your invoice")
        self.display.key("Tab")
        self.type("It is attached.")
        self.next()
        self.display.key("Tab", "Down", "alt+e")
        self.window("Add Report Parameters")
        self.display.key("ctrl+a")
        self.type("10017")
        self.display.key("Return")
        self.gone("Add Report Parameters", wizard)
        self.next()
        self.display.key("alt+f")
        self.gone("Schedule Report Wizard")

    def test_schedule_made_by_keys_alone_is_run_and_mailed(self):
        self.make_schedule()
        today = time.strftime("%Y-%m-%d")
        self.assertEqual(
            self.courier.sql("select SendTo, Subject, Message, StartDate, EndDate, RunAt, Frequency, NextRun, "
                             "ReportPath, ReportTitle, Format, Parent, OriginalPath, LoginReq from ReportScheduler"),
            [("ann@example.com;", "Your invoice", "It is attached.", today, "3000-12-31", "00:00", "Daily", today,
              system_path(self.courier.app / "Cache" / "invoice.rpt"), "Anns invoice", "Acrobat Format (PDF)", "Stock",
              system_path(self.courier.app / "samples" / "invoice.rpt"), "F")])
        self.assertEqual(self.courier.sql("select ParName, ParValue from ReportParameter"), [("OrderID", "10017")])
        self.courier.stop()

        self.courier.extra_environment = {}
        self.courier.run_until_history()
        self.assertEqual([row[2] for row in self.courier.history()], ["Success"])
        mail, = self.courier.mails()
        self.assertEqual((mail["To"], mail["Subject"]), ("ann@example.com", "Your invoice"))
        self.assertIn("It is attached.", mail.get_body().get_content())
        name, kind, data = attachment(mail)
        self.assertEqual(kind, "application/pdf")
        self.assertIn("10017", pdf_text(data))

    def test_command_makes_the_rows_of_the_wizard(self):
        self.make_schedule()
        self.courier.stop()
        rows = self.rows()
        self.courier.sql("delete from ReportScheduler")
        self.courier.sql("delete from ReportParameter")
        result = self.courier.schedule_command(
            "add", str(self.courier.app / "samples" / "invoice.rpt"), "--title", "Ann's invoice", "--folder", "Stock",
            "--at", "00:00", "--to", "ann@example.com", "--subject", "Your invoice", "--message", "It is attached.",
            "--format", "pdf", "-p", "OrderID=10017")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(self.rows(), rows)

    def rows(self):
        """Every column of the one schedule and its values, but the key."""
        schedule, = self.courier.sql("select * from ReportScheduler")
        return schedule[1:], self.courier.sql("select ParName, ParValue, typeof(ParValue) from ReportParameter")

    def test_esc_leaves_no_trace(self):
        wizard = self.open_wizard()
        self.pick_report(wizard, "invoice.rpt")
        self.display.key("Escape")
        self.gone("Schedule Report Wizard")
        self.assertEqual(self.courier.sql("select count(*) from ReportScheduler"), [(0,)])
        self.assertEqual(list((self.courier.app / "Cache").iterdir()), [])
        self.assertIsNone(self.courier.process.poll())


if __name__ == "__main__":
    unittest.main()
