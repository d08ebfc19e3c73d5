# SPDX-License-Identifier: GPL-3.0-or-later
"""Every format leaves one mail with the right attachment, and what is in it is what the data says."""

import sqlite3
import subprocess
import tempfile
import unittest

from harness import MIME_TYPES, CourierTest, attachment, pdf_text, report_formats


class Formats(CourierTest):
    def run_format(self, word, **columns):
        key = self.courier.schedule(Format=word, **columns)
        self.courier.run_until_history()
        self.assertEqual([(row[2], row[3]) for row in self.courier.history(key)], [("Success", "None")])
        mails = self.courier.mails()
        self.assertEqual(len(mails), 1)
        self.assertEqual(mails[0]["Subject"], "Figures")
        self.assertEqual(mails[0]["To"], "ann@example.com")
        self.assertEqual(mails[0].get_body().get_content().strip(), "Good morning")
        return attachment(mails[0])

    def check(self, word, ending, magic, **columns):
        name, mime, data = self.run_format(word, **columns)
        self.assertTrue(name.endswith("." + ending), name)
        self.assertIn(mime, MIME_TYPES[ending])
        self.assertEqual(data[:len(magic)], magic)
        return data

    def test_pdf_holds_the_values_that_sql_gives(self):
        data = self.check("Acrobat Format (PDF)", "pdf", b"%PDF-1.7")
        text = " ".join(pdf_text(data).split())
        database = sqlite3.connect(self.courier.app / "samples" / "sales.db")
        for (region,) in database.execute("select name from regions"):
            self.assertIn(region, text)
        with tempfile.NamedTemporaryFile(suffix=".pdf") as file:
            file.write(data)
            file.flush()
            checked = subprocess.run(["qpdf", "--check", file.name], capture_output=True, text=True)
        self.assertEqual(checked.returncode, 0, checked.stdout + checked.stderr)

    def test_word(self):
        self.check("MS Word", "doc", b"{\\rtf1")

    def test_rich_text(self):
        self.check("Rich Text", "rtf", b"{\\rtf1")

    def test_excel(self):
        self.check("MS Excel", "xls", b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1")

    def test_html_leaves_a_file_of_ours_and_mails_it(self):
        data = self.check("DHTML", "htm", b"<!DOCTYPE html>")
        files = list((self.courier.app / "output").glob("*.htm"))
        self.assertEqual(len(files), 1)
        self.assertEqual(files[0].read_bytes(), data)

    def test_unknown_word_exports_nothing_and_stays_due(self):
        key = self.courier.schedule(Format="Text")
        before = self.courier.next_run(key)
        good = self.courier.schedule()
        self.courier.run_until_history()
        self.assertEqual(self.courier.history(key), [])
        self.assertEqual(self.courier.next_run(key), before)
        self.assertEqual(len(self.courier.history(good)), 1)


class Types(unittest.TestCase):
    def test_every_format_has_an_expected_type(self):
        self.assertEqual(set(report_formats()) - set(MIME_TYPES), set())


if __name__ == "__main__":
    unittest.main()
