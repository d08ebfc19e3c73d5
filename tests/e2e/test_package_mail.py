# SPDX-License-Identifier: GPL-3.0-or-later
"""The one mail of a package against a real server on loopback, and what is left when it does not go out."""

import datetime
import time
import unittest

from mail_server import MAILBOX, MailTest, free_port

TODAY = time.strftime("%Y-%m-%d")
TOMORROW = (datetime.date.today() + datetime.timedelta(days=1)).isoformat()
REPORTS = [("Acrobat", "sales_by_region.rpt"), ("MS Word", "summary.rpt"), ("HTML", "order_list.rpt")]
NAMES = ["sales_by_region.rpt.pdf", "2>summary.rpt.doc", "3order_list.rpt.htm"]
POLL_ALERT = "An error occured in BatchReport. [0]"


def packages(server):
    return [mail for mail in server.messages() if mail["Subject"] == "Package"]


def alert_texts(server):
    return [" ".join(mail.get_body().get_content().split()) for mail in server.alerts()]


class PackageMail(MailTest):
    def fails(self, key):
        """The package left a failure row without a word, and stays due."""
        self.courier.wait(self.courier.package_history, what="failure row")
        self.assertEqual([row[0::2] + row[3:] for row in self.courier.package_history()][0], ("", "T", ""))
        self.assertEqual(self.courier.package_next_run(key), TODAY)

    def test_all_files_go_out_in_one_mail_to_all_recipients(self):
        server = self.serve()
        self.use(server.port)
        key = self.courier.package(REPORTS)
        self.courier.run_until_package_history()
        self.assertEqual(len(server.messages()), 1)
        mail = packages(server)[0]
        self.assertEqual(mail["X-Envelope-To"], "ann@example.com, bob@example.com")
        files = self.courier.package_files()
        self.assertEqual([(part.get_filename(), part.get_payload(decode=True)) for part in mail.iter_attachments()],
                         [(name, files[name]) for name in NAMES])
        self.assertEqual(self.courier.package_next_run(key), TOMORROW)

    def test_list_without_a_last_separator_loses_its_last_name(self):
        server = self.serve()
        self.use(server.port)
        self.courier.package(REPORTS[:1], Recipients="ann@example.com;bob@example.com")
        self.courier.run_until_package_history()
        self.assertEqual([mail["X-Envelope-To"] for mail in server.messages()], ["ann@example.com"])

    def test_single_name_needs_no_separator(self):
        server = self.serve()
        self.use(server.port)
        self.courier.package(REPORTS[:1], Recipients="ann@example.com")
        self.courier.run_until_package_history()
        self.assertEqual([mail["X-Envelope-To"] for mail in server.messages()], ["ann@example.com"])

    def test_server_that_is_not_there_shows_the_box_for_mail_and_alert(self):
        self.use(free_port())
        key = self.courier.package(REPORTS)
        self.courier.start()
        self.fails(key)
        self.courier.wait(lambda: self.courier.said().count(MAILBOX) == 2, what="boxes")
        self.courier.stop()
        self.assertEqual(sorted(self.courier.package_files()), sorted(NAMES))

    def test_full_mailbox_shows_the_box_once_and_the_alert_has_no_description(self):
        server = self.serve("--mode", "full-recipient", "--recipient", "bob@example.com")
        self.use(server.port)
        key = self.courier.package(REPORTS)
        self.courier.start()
        self.fails(key)
        self.courier.wait(server.alerts, what="alert")
        self.courier.stop()
        self.assertEqual(self.courier.said().count(MAILBOX), 1)
        self.assertEqual(packages(server), [])
        self.assertEqual(alert_texts(server), [POLL_ALERT])
        self.assertEqual(server.alerts()[0]["X-Envelope-To"], "boss@example.com")

    def test_refused_recipient_does_not_stop_the_others_and_is_alerted_once(self):
        server = self.serve("--mode", "reject-recipient", "--recipient", "bob@example.com")
        self.use(server.port)
        key = self.courier.package(REPORTS)
        self.courier.start()
        # The package's row is there before its alert.
        self.courier.wait(self.courier.package_history, what="history row")
        self.courier.wait(server.alerts, what="alert")
        self.courier.stop()
        self.assertEqual(self.courier.package_next_run(key), TOMORROW)
        self.assertEqual([m["X-Envelope-To"] for m in packages(server)], ["ann@example.com"])
        (text,) = alert_texts(server)
        self.assertEqual(text, 'The mail "Package" has gone out, but not to everybody: the server refuses '
                               "bob@example.com (550 5.1.1 nobody's here by that name)")

    def test_package_that_nobody_may_get_is_alerted_by_the_mail_and_by_the_poll(self):
        server = self.serve("--mode", "reject-recipient", "--recipient", "bob@example.com")
        self.use(server.port)
        key = self.courier.package(REPORTS, Recipients="bob@example.com;")
        self.courier.start()
        self.fails(key)
        self.courier.wait(lambda: len(server.alerts()) == 2, what="alerts")
        self.courier.stop()
        mail, poll = alert_texts(server)
        self.assertTrue(mail.startswith("An error occured in SendMailBatch. "), mail)
        self.assertIn("bob@example.com", mail)
        self.assertEqual(poll, POLL_ALERT)
        self.assertEqual(packages(server), [])
        self.assertNotIn(MAILBOX, self.courier.said())

    def test_package_is_made_up_when_the_server_is_back(self):
        port = free_port()
        self.use(port)
        self.courier.start_ticking()
        key = self.courier.package(REPORTS)
        self.fails(key)
        server = self.serve(port=port)
        self.courier.wait(lambda: self.courier.package_history()[-1][3] is None, what="delivery")
        self.courier.stop()
        self.assertEqual(self.courier.package_next_run(key), TOMORROW)
        self.assertEqual(len(packages(server)), 1)

    def test_no_profile_at_start_up_leaves_the_row_and_its_box(self):
        (self.courier.config / "mail.ini").unlink()
        key = self.courier.package(REPORTS[:1])
        process = self.courier.start()
        self.courier.wait(lambda: "Oxbow Courier encountred an error." in self.courier.said(), what="box")
        self.assertIn("mail.ini", self.courier.package_history()[0][3])
        self.assertEqual(self.courier.package_next_run(key), TODAY)
        self.assertIsNone(process.poll())


if __name__ == "__main__":
    unittest.main()
