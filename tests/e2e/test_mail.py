# SPDX-License-Identifier: GPL-3.0-or-later
"""Mail against a real server on loopback: each kind of failure is handled as it should be, nothing goes out twice and nothing is lost."""

import time
import unittest

from mail_server import MAILBOX, MailTest, free_port


class Mail(MailTest):
    def assert_once(self, server, key):
        self.courier.wait(lambda: self.courier.history(key), what="history row")
        self.assertEqual(self.courier.history(key)[0][2], "Success")
        # Two more polls send nothing more.
        polls = self.courier.schedule(NextRun="2020-01-01", Frequency="Daily")
        self.courier.wait(lambda: len(self.courier.history(polls)) >= 2, what="two more polls")
        self.courier.stop()
        self.assertEqual(len([m for m in server.reports() if m["X-Envelope-To"] == "ann@example.com"])
                         - len(self.courier.history(polls)), 1)

    # A server that takes the mail

    def check_accepted(self, word, security, more=""):
        arguments = ["--security", security] if security != "none" else []
        server = self.serve(*arguments, "--certificate-name", "127.0.0.1")
        self.use(server.port, security, more)
        key = self.courier.schedule(Format=word)
        self.courier.run_until_history()
        self.assertEqual(self.courier.history(key)[0][2:], ("Success", "None"))
        self.assertEqual([m["X-Envelope-To"] for m in server.messages()], ["ann@example.com"])

    def test_engines_mail_is_taken(self):
        self.check_accepted("Acrobat Format (PDF)", "none")

    def test_html_mail_is_taken(self):
        self.check_accepted("DHTML", "none")

    def test_starttls(self):
        self.check_accepted("DHTML", "starttls", "CAFile=%s\n" % (self.courier.folder / "mail" / "ca.pem"))

    def test_tls(self):
        self.check_accepted("Acrobat Format (PDF)", "tls", "CAFile=%s\n" % (self.courier.folder / "mail" / "ca.pem"))

    def test_answer_lost_after_the_message_was_taken_sends_nothing_twice(self):
        server = self.serve("--mode", "drop-after-data")
        self.use(server.port)
        key = self.courier.schedule(Format="DHTML")
        self.courier.start()
        self.assert_once(server, key)

    # A server or mailbox that takes nothing: one box, no row, no alert; made up when it is back

    def check_mailbox_road(self, *arguments, port=None):
        bad = self.serve(*arguments, name="bad") if arguments else None
        port = bad.port if bad else port
        self.use(port)
        key = self.courier.schedule(Format="DHTML")
        due = self.courier.next_run(key)
        self.courier.start()
        self.courier.wait(lambda: MAILBOX in self.courier.said(), what="box")
        self.assertEqual(self.courier.history(key), [])
        self.assertEqual(self.courier.next_run(key), due)
        if bad:
            self.assertEqual(bad.messages(), [])
            bad.close()
        good = self.serve(port=port, name="good")
        self.assert_once(good, key)
        self.assertEqual(good.alerts(), [])

    def test_full_mailbox(self):
        self.check_mailbox_road("--mode", "full-recipient")

    def test_message_over_the_limit(self):
        self.check_mailbox_road("--mode", "full-message")

    def test_connection_dropped_in_the_message(self):
        self.check_mailbox_road("--mode", "drop-data")

    def test_server_that_hangs(self):
        self.check_mailbox_road("--mode", "hang")

    def test_server_that_is_closing(self):
        self.check_mailbox_road("--mode", "greet-421")

    def test_server_that_is_not_there(self):
        self.check_mailbox_road(port=free_port())

    # Other failures: the alert, no row for an HTML report, a failure row for the engine's own mail

    # A recipient that the server refuses for good does not stop the others, and is reported once

    def check_refused_recipient(self, **columns):
        server = self.serve("--mode", "reject-recipient", "--recipient", "bob@example.com")
        self.use(server.port)
        key = self.courier.schedule(SendTo="ann@example.com;bob@example.com;", **columns)
        self.courier.start()
        self.assert_once(server, key)
        (alert,) = server.alerts()
        self.assertEqual(alert["X-Envelope-To"], "boss@example.com")
        text = ('The mail "Figures" has gone out, but not to everybody: the server refuses bob@example.com '
                "(550 5.1.1 nobody's here by that name)")
        self.assertEqual(alert.get_content().strip(), text)
        self.assertEqual(self.courier.said().count(text), 1, self.courier.said())
        self.assertRegex(self.courier.said(), r"(?m)^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d The mail \"Figures\" has gone out")

    def test_refused_recipient_of_an_html_report_does_not_stop_the_others(self):
        self.check_refused_recipient(Format="DHTML")

    def test_refused_recipient_of_the_engines_mail_does_not_stop_the_others(self):
        self.check_refused_recipient()

    def test_html_report_that_nobody_may_get_is_alerted(self):
        server = self.serve("--mode", "reject-recipient", "--recipient", "ann@example.com")
        self.use(server.port)
        key = self.courier.schedule(Format="DHTML")
        due = self.courier.next_run(key)
        self.courier.start()
        self.courier.wait(server.alerts, what="alert")
        self.courier.stop()
        self.assertEqual(server.reports(), [])
        self.assertEqual(self.courier.history(key), [])
        self.assertEqual(self.courier.next_run(key), due)
        text = server.alerts()[0].get_body().get_content()
        self.assertTrue(text.startswith("An error occured in SendMailBatch. "), text)
        self.assertIn("ann@example.com", text)
        self.assertIn('The mail "Figures" did not go out: ', self.courier.said())

    def test_engines_mail_that_nobody_may_get_is_a_failure(self):
        server = self.serve("--mode", "reject-recipient", "--recipient", "ann@example.com")
        self.use(server.port)
        key = self.courier.schedule()
        self.courier.start()
        self.courier.wait(server.alerts, what="alert")
        self.courier.stop()
        self.assertEqual(server.reports(), [])
        self.assertEqual(self.courier.history(key)[0][2], "Failure")
        self.assertIn("ann@example.com", self.courier.history(key)[0][3])
        self.assertTrue(server.alerts()[0].get_body().get_content().startswith("An error occured in Schedchk. "))

    def test_recipient_that_is_put_off_is_waited_for(self):
        later = self.serve("--mode", "defer-recipient", "--recipient", "bob@example.com", name="later")
        self.use(later.port)
        key = self.courier.schedule(SendTo="ann@example.com;bob@example.com;")
        self.courier.start()
        self.courier.wait(later.alerts, what="alert")
        self.assertEqual(later.reports(), [])
        self.assertEqual(self.courier.history(key)[0][2], "Failure")
        later.close()
        good = self.serve(port=later.port, name="good")
        self.courier.wait(lambda: [row for row in self.courier.history(key) if row[2] == "Success"], what="success")
        self.courier.stop()
        self.assertEqual([m["X-Envelope-To"] for m in good.reports()], ["ann@example.com, bob@example.com"])

    # Copies that cannot be helped bear one id and one date

    def check_copies(self, **columns):
        server = self.serve("--mode", "lose-answer")
        self.use(server.port)
        self.courier.schedule(NextRun="2020-01-01", **columns)
        self.courier.start()
        self.courier.wait(lambda: len(server.reports()) >= 2, what="copies")
        self.courier.stop()
        server.close()
        good = self.serve(port=server.port, name="good")
        self.courier.start()
        self.courier.wait(lambda: len(good.reports()) >= 2, what="two days")
        self.courier.stop()
        ids = {m["Message-ID"] for m in server.reports()}
        self.assertEqual(len(ids), 1)
        days = [m["Message-ID"] for m in good.reports()]
        self.assertEqual({days[0]}, ids)
        self.assertNotIn(days[1], ids)
        # One date too: that of the first attempt, also in the next process.
        self.assertEqual({m["Date"] for m in server.reports()}, {good.reports()[0]["Date"]})
        self.assertRegex(days[0], r"^<[0-9a-f]{32}@example\.com>$")
        # Each alert is of its own.
        alerts = [m["Message-ID"] for m in server.alerts()]
        self.assertEqual(len(alerts), len(set(alerts)))
        self.assertTrue(ids.isdisjoint(alerts))

    def test_copies_of_an_html_report_bear_one_id(self):
        self.check_copies(Format="DHTML")

    def test_copies_of_the_engines_mail_bear_one_id(self):
        self.check_copies()

    def test_late_answer_makes_no_copy(self):
        server = self.serve("--mode", "late-data", "--delay", "5")
        self.use(server.port)
        key = self.courier.schedule(Format="DHTML")
        self.courier.run_until_history()
        self.assertEqual(self.courier.history(key)[0][2], "Success")
        self.assertEqual(len(server.messages()), 1)

    # Alerts that reach nobody

    def check_lost_alert(self, alert_who, words):
        self.courier.settings(Poll="1", AlertWho=alert_who)
        self.courier.schedule(report=self.courier.folder / "no.rpt")
        self.courier.start()
        self.courier.wait(lambda: words in self.courier.said(), what="dated line")
        self.courier.stop()
        self.assertRegex(self.courier.said(), r"(?m)^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d An alert did not go out .* "
                                              r"It says: An error occured in Schedchk\. ")
        self.assertEqual(self.courier.mails(), [])

    def test_alert_without_an_address_is_a_dated_line(self):
        self.check_lost_alert("", "An alert did not go out as no alert address is set: ")

    def test_alert_to_two_names_is_a_dated_line(self):
        self.check_lost_alert("ann@example.com;boss@example.com;",
                              'An alert did not go out to "ann@example.com;boss@example.com;": ')

    def test_server_lost_to_the_engines_mail_is_a_failure_and_its_alert_shows_the_box(self):
        self.use(free_port())
        key = self.courier.schedule()
        due = self.courier.next_run(key)
        self.courier.start()
        self.courier.wait(lambda: MAILBOX in self.courier.said(), what="box")
        self.courier.stop()
        self.assertEqual(self.courier.history(key)[0][2], "Failure")
        self.assertEqual(self.courier.next_run(key), due)

    def test_certificate_that_is_not_trusted_is_told_and_nothing_is_sent(self):
        server = self.serve("--security", "tls", "--certificate-name", "127.0.0.1")
        self.use(server.port, "tls")
        key = self.courier.schedule()
        self.courier.start()
        self.courier.wait(lambda: self.courier.history(key), what="failure row")
        self.courier.stop()
        self.assertIn("certificate", self.courier.history(key)[0][3].lower())
        self.assertNotIn(MAILBOX, self.courier.said())
        self.assertEqual(server.messages(), [])

    # Without a profile the alert cannot even log on, and that error passes out of the poll

    def test_no_profile_at_start_up_is_shown_and_the_process_stays(self):
        (self.courier.config / "mail.ini").unlink()
        key = self.courier.schedule()
        process = self.courier.start()
        self.courier.wait(lambda: "Oxbow Courier encountred an error." in self.courier.said(), what="box")
        self.assertEqual(self.courier.history(key)[0][2], "Failure")
        self.assertIn("mail.ini", self.courier.history(key)[0][3])
        self.assertIsNone(process.poll())

    def test_no_profile_in_a_tick_ends_the_process_with_its_box(self):
        (self.courier.config / "mail.ini").unlink()
        process = self.courier.start()
        self.courier.wait(lambda: (self.courier.folder / "log").exists(), what="start")
        time.sleep(1)
        key = self.courier.schedule()
        self.assertEqual(process.wait(20), 1)
        self.assertEqual(self.courier.history(key)[0][2], "Failure")
        self.assertIn("Run-time error", self.courier.said())
        self.assertIn("mail.ini", self.courier.said())


if __name__ == "__main__":
    unittest.main()
