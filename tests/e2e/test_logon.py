# SPDX-License-Identifier: GPL-3.0-or-later
"""A report on a real PostgreSQL: the schedule's user and password are what its tables are logged on with."""

import unittest

from databases import PASSWORD, POSTGRES, Postgres, report
from harness import CourierTest, attachment, pdf_text


@unittest.skipUnless(POSTGRES, "no PostgreSQL server here")
class Logon(CourierTest):
    @classmethod
    def setUpClass(cls):
        cls.server = Postgres()
        cls.addClassCleanup(cls.server.close)
        cls.server.sql("create table titles(title text, copies int);"
                       "insert into titles values('Emma', 3), ('Ulysses', 1), ('Beowulf', 7);"
                       "grant select on titles to clerk")

    def run_as(self, user, password, login="T", **columns):
        file = self.courier.folder / "titles.rpt"
        file.write_text(report("PostgreSQL", "Host=127.0.0.1;Port=%d;Database=postgres" % self.server.port,
                               "select title, copies from titles order by title", ["title", "copies"]))
        key = self.courier.schedule(report=file, UserName=user, Password=password, LoginReq=login, **columns)
        self.courier.start()
        # A failure's row comes before its alert.
        self.courier.wait(lambda: self.courier.history(key) and self.courier.mails(), what="history row and mail")
        self.courier.stop()
        return self.courier.history(key)[0]

    def assert_refused(self, row):
        self.assertEqual(row[2], "Failure")
        self.assertNotIn("'", row[3])
        self.assertIn("Books", row[3])
        alert = self.courier.mails()[0]
        self.assertEqual(alert["Subject"], "Pressroom Error")

    def test_user_and_password_open_the_table(self):
        self.assertEqual(self.run_as("clerk", PASSWORD)[2:], ("Success", "None"))
        text = pdf_text(attachment(self.courier.mails()[0])[2])
        self.assertEqual(text.split("\n")[:3], ["Beowulf|7", "Emma|3", "Ulysses|1"], text)

    def test_formula_filters_what_the_query_gives(self):
        self.run_as("clerk", PASSWORD, SelectionForm="{Titles.copies} > 2 and not ({title} startswith 'B')")
        text = pdf_text(attachment(self.courier.mails()[0])[2])
        self.assertEqual(text.split(), ["Emma|3"])

    def test_wrong_password_is_a_failure_that_names_the_source_and_no_secret(self):
        row = self.run_as("clerk", "open sesame")
        self.assert_refused(row)
        self.assertNotIn("sesame", row[3])

    def test_no_logon_without_the_flag(self):
        self.assert_refused(self.run_as("clerk", PASSWORD, login="F"))


if __name__ == "__main__":
    unittest.main()
