# SPDX-License-Identifier: GPL-3.0-or-later
"""oxc-schedule beside a real scheduler: what it adds is run and mailed, and it waits for a busy database."""

import json
import sqlite3
import threading
import time
import unittest

from harness import CourierTest, attachment, pdf_text


class ScheduleCommand(CourierTest):
    def command(self, *arguments, code=0):
        result = self.courier.schedule_command(*arguments)
        self.assertEqual(result.returncode, code, result.stdout + result.stderr)
        return result.stderr if code else result.stdout

    def add(self, *arguments):
        return self.command("add", str(self.courier.app / "samples" / "sales_by_region.rpt"), "--to",
                            "ann@example.com;Bob <bob@example.com>", "--at", "00:00", *arguments)

    def test_schedule_added_while_the_scheduler_runs_is_mailed(self):
        self.courier.start()
        self.courier.wait(lambda: self.courier.schedule_command("status").returncode == 0, what="poll")
        self.command("folder", "add", "Finance")
        self.add("--folder", "Finance", "--title", "Sales", "--subject", "Figures", "--weekly", "-p", "Year=2024")
        self.courier.wait(lambda: len(self.courier.history()) == 1, what="run")
        self.assertEqual([row[2:] for row in self.courier.history()], [("Success", "None")])
        mail, = self.courier.mails()
        self.assertEqual(mail["Subject"], "Figures")
        self.assertEqual([str(address) for address in mail["To"].addresses],
                         ["ann@example.com", "Bob <bob@example.com>"])
        self.assertIn("2024", pdf_text(attachment(mail)[2]))
        row, = json.loads(self.command("history", "Sales", "--json"))
        self.assertEqual((row["folder"], row["title"], row["status"]), ("Finance", "Sales", "Success"))
        # The run of today is over: the next one is a week later.
        coming, = json.loads(self.command("next", "--days", "8", "--json"))
        self.assertEqual((coming["moment"][:10], coming["due"]), (self.courier.next_run(1), False))
        self.assertIn("oxc_outbox_messages 1\n", self.command("status", "--prometheus"))
        self.assertIsNone(self.courier.process.poll())

    def test_run_on_demand_moves_no_date(self):
        self.add("--title", "Sales", "--start", "2990-01-01", "--format", "html")
        self.assertEqual(self.command("run", "Sales"), "Schedule executed successfully\n")
        self.assertEqual(len(self.courier.mails()), 1)
        self.assertEqual(self.courier.next_run(1), "2990-01-01")

    def test_package_of_the_poll_holds_its_files(self):
        output = self.courier.folder / "packages"
        output.mkdir()
        samples = self.courier.app / "samples"
        self.command("package", "add", "Month", "--report", str(samples / "sales_by_region.rpt"), "--report",
                     str(samples / "invoice.rpt"), "-p", "OrderID=10017", "--output", str(output), "--to",
                     "ann@example.com", "--at", "00:00", "--monthly")
        self.courier.run_until_package_history()
        mail, = self.courier.mails()
        self.assertEqual([part.get_filename() for part in mail.iter_attachments()],
                         ["sales_by_region.rpt.pdf", "invoice.rpt.pdf"])
        self.assertIn("10017", pdf_text((output / "invoice.rpt.pdf").read_bytes()))

    def test_busy_database_is_waited_for(self):
        connection = sqlite3.connect(self.courier.database, isolation_level=None, check_same_thread=False)
        connection.execute("begin immediate")
        release = threading.Timer(2, lambda: connection.execute("rollback"))
        release.start()
        started = time.monotonic()
        self.add("--title", "Sales")
        self.assertGreater(time.monotonic() - started, 1)
        release.join()
        connection.close()
        self.assertEqual(self.courier.sql("select ReportTitle from ReportScheduler"), [("Sales",)])

    def test_scheduler_that_ended_is_late_and_then_gone(self):
        self.courier.start()
        self.courier.wait(lambda: self.courier.schedule_command("status").returncode == 0, what="poll")
        self.courier.stop()
        time.sleep(2.5)
        self.assertIn("Last poll: ", self.courier.schedule_command("status", "--warn", "1").stdout)
        self.assertEqual(self.courier.schedule_command("status", "--warn", "1").returncode, 1)
        self.assertEqual(self.courier.schedule_command("status", "--critical", "1").returncode, 2)


if __name__ == "__main__":
    unittest.main()
