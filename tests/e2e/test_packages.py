# SPDX-License-Identifier: GPL-3.0-or-later
"""Packages: every report of one is written into its folder, all files go out in one mail, and a failure leaves its row,
its alert and the next run where it was."""

import datetime
import re
import sqlite3
import time
import unittest

import xlrd

from harness import CourierTest, pdf_text, system_path

FIVE = [("Acrobat", "sales_by_region.rpt"), ("Rich Text", "sales_by_region.rpt"), ("MS Excel", "order_list.rpt"),
        ("HTML", "summary.rpt"), ("MS Word", "sales_by_region.rpt")]
FIVE_NAMES = ["sales_by_region.rpt.pdf", "2>sales_by_region.rpt.rtf", "3>order_list.rpt.xls", "4summary.rpt.htm",
              "5>sales_by_region.rpt.doc"]
TODAY = time.strftime("%Y-%m-%d")
TOMORROW = (datetime.date.today() + datetime.timedelta(days=1)).isoformat()


def words(text):
    return " ".join(text.split())


class PackageTest(CourierTest):
    def sample_rows(self, statement):
        connection = sqlite3.connect(self.courier.app / "samples" / "sales.db")
        self.addCleanup(connection.close)
        return connection.execute(statement).fetchall()

    def subjects(self):
        return [mail["Subject"] for mail in self.courier.mails()]

    def run_failing(self, count=1):
        """Runs until that many failure rows and their alerts are there; returns the rows' descriptions."""
        self.courier.start()
        self.courier.wait(lambda: self.subjects().count("Pressroom Error") >= count, 60, "alert")
        self.courier.stop()
        return [row[3] for row in self.courier.package_history()]

    def assert_alert(self, text):
        alert = [mail for mail in self.courier.mails() if mail["Subject"] == "Pressroom Error"][0]
        self.assertEqual(words(alert.get_body().get_content()), words(text))
        self.assertEqual(alert["To"], "boss@example.com")
        self.assertEqual(alert["Importance"].lower(), "high")


class Contents(PackageTest):
    def test_five_formats_leave_five_files_and_one_mail_with_all_of_them(self):
        key = self.courier.package(FIVE)
        self.courier.run_until_package_history()
        files = self.courier.package_files()
        self.assertEqual(sorted(files), sorted(FIVE_NAMES))
        self.check_contents(files)
        mails = self.courier.mails()
        self.assertEqual(len(mails), 1)
        self.assertEqual(mails[0]["Subject"], "Package")
        self.assertEqual(mails[0]["To"], "ann@example.com, bob@example.com")
        self.assertEqual(mails[0].get_body().get_content().strip(), "Good morning")
        sent = [(part.get_filename(), part.get_payload(decode=True)) for part in mails[0].iter_attachments()]
        self.assertEqual(sent, [(name, files[name]) for name in FIVE_NAMES])
        self.assertEqual([row[0] for row in self.courier.package_history()], [str(key)])
        self.assertEqual([row[2:] for row in self.courier.package_history()], [("T", None)])
        self.assertEqual(self.courier.package_next_run(key), TOMORROW)

    def check_contents(self, files):
        regions = [name for (name,) in self.sample_rows("select name from regions")]
        text = pdf_text(files["sales_by_region.rpt.pdf"])
        for name in ("2>sales_by_region.rpt.rtf", "5>sales_by_region.rpt.doc"):
            self.assertTrue(files[name].startswith(b"{\\rtf1"), name)
            for region in regions:
                self.assertIn(region, text)
                self.assertIn(region.encode(), files[name])
        orders = self.sample_rows("select count(*) from orders where order_date between '2024-01-01' and '2026-12-31'")
        sheet = xlrd.open_workbook(file_contents=files["3>order_list.rpt.xls"]).sheet_by_index(0)
        self.assertGreaterEqual(sheet.nrows, orders[0][0])
        self.assertTrue(files["4summary.rpt.htm"].startswith(b"<!DOCTYPE html>"))
        self.assertIn("Sales summary", files["4summary.rpt.htm"].decode())

    def test_history_moment_is_date_comma_time(self):
        self.courier.write_days_year_first()
        self.courier.package()
        self.courier.run_until_package_history()
        self.assertRegex(self.courier.package_history()[0][1], r"^%s,\d\d:\d\d:\d\d$" % TODAY)

    def test_wizards_pdf_word_is_unknown_here_and_its_slot_is_sent_empty(self):
        key = self.courier.package([("Acrobat Format (PDF)", "sales_by_region.rpt"), ("MS Word", "summary.rpt")])
        self.courier.run_until_package_history()
        self.assertEqual(list(self.courier.package_files()), ["2>summary.rpt.doc"])
        self.assertEqual(self.subjects(), ["Package"])
        # A report without a file has no attachment.
        names = [part.get_filename() for part in self.courier.mails()[0].iter_attachments()]
        self.assertEqual(names, ["2>summary.rpt.doc"])
        self.assertEqual(self.courier.package_next_run(key), TOMORROW)

    def test_empty_package_mails_without_files_and_moves_on(self):
        key = self.courier.package()
        self.courier.run_until_package_history()
        self.assertEqual(self.subjects(), ["Package"])
        self.assertEqual(list(self.courier.mails()[0].iter_attachments()), [])
        self.assertEqual(self.courier.package_next_run(key), TOMORROW)

    def test_package_without_mail_leaves_its_files_and_counts_as_delivered(self):
        key = self.courier.package(FIVE[:1], MailBatch="F", Recipients="N/A")
        self.courier.run_until_package_history()
        self.assertEqual(list(self.courier.package_files()), FIVE_NAMES[:1])
        self.assertEqual(self.courier.mails(), [])
        self.assertEqual(self.courier.package_history()[0][2:], ("T", None))
        self.assertEqual(self.courier.package_next_run(key), TOMORROW)

    def test_next_run_replaces_the_files_of_the_one_before(self):
        self.courier.package(FIVE[:1], Frequency="Daily", NextRunDate="2026-01-01")
        (self.courier.folder / "packages" / FIVE_NAMES[0]).write_text("old")
        self.courier.run_until_package_history()
        self.assertTrue(self.courier.package_files()[FIVE_NAMES[0]].startswith(b"%PDF-1.7"))

    def test_values_go_to_the_parameters_by_their_position(self):
        self.courier.package([("Acrobat", "order_list.rpt", "2024-03-01", "2024-03-31")])
        # The order is that of the keys, not that of the rows.
        self.courier.sql("update ReportBatchPar set ParID = 100, ParValue = '2024-03-31' where ParID = 1")
        self.courier.sql("update ReportBatchPar set ParID = 1, ParValue = '2024-03-01' where ParID = 2")
        self.courier.run_until_package_history()
        text = words(pdf_text(self.courier.package_files()["order_list.rpt.pdf"]))
        inside, outside = (
            {str(key) for (key,) in self.sample_rows(
                "select order_id from orders where %s (order_date between '2024-03-01' and '2024-03-31')" % negation)}
            for negation in ("", "not"))
        self.assertGreater(len(inside), 5)
        found = set(re.findall(r"\b\d{5}\b", text))
        self.assertEqual(found & (inside | outside), inside)


class Limits(PackageTest):
    def numbered(self, count):
        return [("Rich Text", "summary.rpt")] * count

    def test_twenty_reports_run(self):
        self.courier.package(self.numbered(20))
        self.courier.run_until_package_history()
        self.assertEqual(len(self.courier.package_files()), 20)
        self.assertEqual(len(list(self.courier.mails()[0].iter_attachments())), 20)
        self.assertEqual(self.courier.package_history()[0][2:], ("T", None))

    def test_twenty_first_fails_after_twenty_files_and_all_is_run_again(self):
        self.courier.start_ticking()
        key = self.courier.package(self.numbered(21))
        self.courier.wait(lambda: self.courier.package_history(), 60, "failure row")
        written = self.courier.package_files()
        self.assertEqual(sorted(written), sorted("%d>summary.rpt.rtf" % n for n in range(1, 21)))
        before = (self.courier.folder / "packages" / "1>summary.rpt.rtf").stat().st_mtime_ns
        self.courier.wait(lambda: len(self.courier.package_history()) >= 2, 60, "second failure row")
        self.courier.stop()
        self.assertNotEqual((self.courier.folder / "packages" / "1>summary.rpt.rtf").stat().st_mtime_ns, before)
        self.assertEqual({row[0::2] + row[3:] for row in self.courier.package_history()},
                         {("", "T", "Subscript out of range")})
        self.assertEqual(self.courier.package_next_run(key), TODAY)
        self.assertNotIn("Package", self.subjects())
        self.assert_alert("An error occured in BatchReport. Subscript out of range [9]")


class Failures(PackageTest):
    def test_missing_destination_folder(self):
        gone = self.courier.folder / "gone"
        key = self.courier.package(FIVE[:1], Destination=system_path(gone) + "\\")
        descriptions = self.run_failing()
        self.assertEqual(len(descriptions), 1)
        self.assertIn("gone", descriptions[0])
        self.assertFalse(gone.exists())
        self.assertEqual(self.courier.package_next_run(key), TODAY)
        self.assertEqual(self.subjects(), ["Pressroom Error"])

    def test_missing_report_file_ends_the_poll_for_the_packages_after_it(self):
        first = self.courier.package(FIVE[:1])
        second = self.courier.package([("Acrobat", "gone.rpt")])
        third = self.courier.package(FIVE[:1])
        self.run_failing()
        rows = self.courier.package_history()
        # The row of the failure has the key of the package before it.
        self.assertEqual([row[0] for row in rows], [str(first), str(first)])
        self.assertIsNone(rows[0][3])
        self.assertIn("gone.rpt", rows[1][3])
        self.assertEqual([self.courier.package_next_run(key) for key in (first, second, third)],
                         [TOMORROW, TODAY, TODAY])

    def test_value_that_does_not_convert(self):
        self.courier.package([("Acrobat", "sales_by_region.rpt", "abc")])
        self.assertEqual(self.run_failing(), ["Type mismatch"])
        self.assert_alert("An error occured in BatchReport. Type mismatch [13]")
        self.assertEqual(self.courier.package_files(), {})

    def test_more_values_than_parameters(self):
        self.courier.package([("Acrobat", "sales_by_region.rpt", "2024", "2025")])
        self.assertEqual(self.run_failing(), ["Subscript out of range"])

    def test_without_an_alert_address_the_row_is_there_all_the_same(self):
        self.courier.settings(Poll="1", AlertWho="")
        self.courier.package([("Acrobat", "gone.rpt")])
        self.courier.run_until_package_history()
        self.assertIn("gone.rpt", self.courier.package_history()[0][3])


class Order(PackageTest):
    """Singles before packages at start-up, packages before singles in a tick; who turns the timer on again."""

    def sent_order(self):
        paths = sorted(self.courier.outbox.glob("*.eml"), key=lambda path: path.stat().st_mtime_ns)
        return [re.search(rb"^Subject: (.*?)\r?$", path.read_bytes(), re.M).group(1).decode() for path in paths]

    def test_singles_go_first_at_start_up(self):
        self.courier.package()
        self.courier.schedule(Format="DHTML")
        self.courier.run_until_package_history()
        self.assertEqual(self.sent_order(), ["Figures", "Package"])

    def test_packages_go_first_in_a_tick(self):
        self.courier.start_ticking()
        self.courier.package(FIVE[:1])
        self.courier.schedule(Format="DHTML")
        self.courier.wait(lambda: len(self.courier.mails()) == 2, what="mails")
        self.assertEqual(self.sent_order(), ["Package", "Figures"])

    def test_package_among_singles(self):
        keys = [self.courier.schedule(Format=word) for word in ("DHTML", "MS Word", "Acrobat Format (PDF)")]
        package = self.courier.package(FIVE)
        self.courier.run_until_package_history()
        self.assertEqual([row[0] for row in self.courier.history()], keys)
        self.assertEqual({row[2] for row in self.courier.history()}, {"Success"})
        self.assertEqual(self.courier.package_history()[0][0], str(package))
        self.assertEqual(self.sent_order(), ["Figures"] * 3 + ["Package"])

    def test_failed_package_at_start_up_ends_all_polling(self):
        self.courier.package([("Acrobat", "gone.rpt")])
        process = self.courier.start()
        self.courier.wait(self.courier.mails, what="alert")
        key = self.courier.schedule()
        time.sleep(5)
        self.assertEqual(self.courier.history(key), [])
        self.assertEqual(len(self.courier.package_history()), 1)
        self.assertIsNone(process.poll())

    def test_failed_package_in_a_tick_is_mended_by_the_singles_after_it(self):
        self.courier.start_ticking()
        bad = self.courier.package([("Acrobat", "gone.rpt")])
        self.courier.wait(lambda: len(self.courier.package_history()) >= 2, what="two failure rows")
        self.courier.sql("delete from ReportBatch where ReportID = ?", bad)
        good = self.courier.package(FIVE[:1])
        self.courier.wait(lambda: self.courier.package_next_run(good) == TOMORROW, what="delivery")


if __name__ == "__main__":
    unittest.main()
