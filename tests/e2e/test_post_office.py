# SPDX-License-Identifier: GPL-3.0-or-later
"""Mail through Postfix into mailboxes of Dovecot, read by IMAP: what arrives is what was sent, byte for byte."""

import email.utils
import shutil
import subprocess
import time
import unittest

import post_office
from harness import MIME_TYPES, CourierTest, another_clock, attachment
from post_office import MAILBOXES, PASSWORD, SENDER, PostOffice

WORDS = {"pdf": "Acrobat Format (PDF)", "doc": "MS Word", "rtf": "Rich Text", "xls": "MS Excel", "htm": "DHTML"}
FORMATS = {"pdf": "pdf", "doc": "doc", "rtf": "rtf", "xls": "xls", "htm": "html"}  # as oxc-report names them
NAME = "Umsätze März – 売上"
LONG_SUBJECT = ("Umsätze der Filialen im März – 三月の売上報告書 " * 8)[:300]
MISSING = post_office.what_is_missing()


@unittest.skipIf(MISSING, MISSING)
class PostOfficeTest(CourierTest):
    @classmethod
    def setUpClass(cls):
        cls.office = PostOffice()
        cls.addClassCleanup(cls.office.close)

    def setUp(self):
        super().setUp()
        self.use()
        # Mailboxes keep what other tests sent.
        self.before = {name: len(self.office.mailbox(name)) for name in MAILBOXES}

    def use(self, password=PASSWORD, authority=None):
        self.courier.profile("Transport=smtp\nHost=127.0.0.1\nPort=%d\nUser=%s\nPassword=%s\nCAFile=%s\n" % (
            self.office.port, SENDER, password, authority or self.office.authority))
        (self.courier.config / "mail.ini").chmod(0o600)

    def arrived(self, name):
        return self.office.mailbox(name)[self.before[name]:]

    def await_mails(self, anns, bobs):
        """The mails of both mailboxes, once there are so many. The server delivers after it has answered."""
        end = time.monotonic() + 30
        while time.monotonic() < end:
            boxes = [self.arrived(name) for name in MAILBOXES]
            if len(boxes[0]) >= anns and len(boxes[1]) >= bobs:
                self.assertEqual([len(box) for box in boxes], [anns, bobs])
                return boxes
            time.sleep(0.1)
        raise AssertionError("%s mails; %s" % ([len(box) for box in boxes], self.office.said()))

    def export(self, report, format_word, output):
        subprocess.run([str(self.courier.app / "oxc-report"), "export", str(report), "-f", format_word, "-o",
                        str(output)], env=self.courier.environment(), check=True, timeout=60)
        return output.read_bytes()

    def stop_the_clock(self):
        """Two exports of the same data have the same bytes then."""
        self.courier.extra_environment = another_clock(FAKETIME=time.strftime("%Y-%m-%d %H:%M:%S", time.gmtime()))

    def test_five_formats_arrive_in_two_mailboxes_byte_for_byte(self):
        self.stop_the_clock()
        report = self.courier.folder / (NAME + ".rpt")
        shutil.copy(self.courier.app / "samples" / "sales_by_region.rpt", report)
        exports = {}
        for ending, word in WORDS.items():
            self.courier.schedule(report=report, Format=word, SendTo="ann@example.com;bob@example.com;",
                                  Subject=ending + " " + LONG_SUBJECT, Message="Grüße – よろしく")
            exports[ending] = self.export(report, FORMATS[ending], self.courier.folder / ("export." + ending))
        self.courier.run_until_history(len(WORDS), 60)
        self.assertEqual({row[2:] for row in self.courier.history()}, {("Success", "None")})
        for box in self.await_mails(len(WORDS), len(WORDS)):
            for mail in box:
                ending, subject = mail["Subject"].split(" ", 1)
                self.assertEqual(subject, LONG_SUBJECT.strip())
                self.assertEqual(mail["To"], "ann@example.com, bob@example.com")
                self.assertEqual(mail.get_body().get_content(), "Grüße – よろしく\r\n")
                name, kind, data = attachment(mail)
                self.assertTrue(name.endswith("." + ending), name)
                self.assertIn(kind, MIME_TYPES[ending])
                self.assertEqual(data, exports[ending])

    def test_package_arrives_in_two_mailboxes_with_the_files_of_its_folder(self):
        report = self.courier.folder / (NAME + ".rpt")
        shutil.copy(self.courier.app / "samples" / "sales_by_region.rpt", report)
        self.courier.package([("Acrobat", report), ("MS Word", report), ("Rich Text", report), ("MS Excel", report),
                              ("HTML", report)], Subject=LONG_SUBJECT,
                             Recipients="Jörg Müßig <ann@example.com>;山田太郎 <bob@example.com>;")
        self.courier.run_until_package_history()
        files = self.courier.package_files()
        self.assertEqual(len(files), 5)
        # The name of a page has no blanks.
        self.assertTrue(all(NAME in name or NAME.replace(" ", "") + ".rpt.htm" in name for name in files), list(files))
        for mail, in self.await_mails(1, 1):
            self.assertEqual(mail["Subject"], LONG_SUBJECT.strip())
            self.assertEqual([(address.display_name, address.addr_spec) for address in mail["To"].addresses],
                             [("Jörg Müßig", "ann@example.com"), ("山田太郎", "bob@example.com")])
            self.assertEqual({part.get_filename(): part.get_payload(decode=True) for part in mail.iter_attachments()},
                             files)

    def test_mail_says_that_no_person_wrote_it_and_servers_add_neither_date_nor_id(self):
        start = int(time.time())
        self.courier.schedule(SendTo="ann@example.com;bob@example.com;")
        self.courier.schedule(report="gone.rpt")
        self.courier.settings(Poll="60", AlertWho="bob@example.com")
        self.courier.start()
        (report,), bobs = self.await_mails(1, 2)
        self.courier.stop()
        self.assertEqual([mail["Subject"] for mail in bobs], ["Figures", "Pressroom Error"])
        self.assertEqual(bobs[0]["Message-ID"], report["Message-ID"])
        for mail in bobs:
            self.assertEqual(mail.get_all("Auto-Submitted"), ["auto-generated"])
            self.assertRegex(mail["Message-ID"], r"^<[0-9a-f]{32}@example\.com>$")
            self.assertEqual(len(mail.get_all("Date")), 1)
            moment = email.utils.parsedate_to_datetime(mail["Date"]).timestamp()
            self.assertTrue(start <= moment <= time.time(), mail["Date"])

    def test_wrong_password_is_named_and_nothing_arrives(self):
        self.use(password="guess")
        key = self.courier.schedule()
        self.courier.run_until_history()
        self.assertEqual(self.courier.history(key)[0][2], "Failure")
        self.assertIn("User", self.courier.history(key)[0][3])
        self.assertNotIn("guess", self.courier.said() + self.courier.history(key)[0][3])
        self.assertEqual([self.arrived(name) for name in MAILBOXES], [[], []])

    def test_recipient_without_a_mailbox_is_alerted_and_the_others_get_the_mail(self):
        self.courier.settings(Poll="1", AlertWho="bob@example.com")
        self.courier.schedule(SendTo="ann@example.com;nobody@example.com;")
        self.courier.start()
        (mail,), (alert,) = self.await_mails(1, 1)
        self.courier.stop()
        self.assertEqual([row[2:] for row in self.courier.history()], [("Success", "None")])
        self.assertEqual(mail["Subject"], "Figures")
        self.assertIn("the server refuses nobody@example.com (550 5.1.1", alert.get_content())

    def test_check_and_test_of_the_mail_profile(self):
        def oxc_mail(*arguments):
            return subprocess.run([str(self.courier.app / "oxc-mail"), *arguments], env=self.courier.environment(),
                                  capture_output=True, text=True, timeout=60, check=False)
        checked = oxc_mail("check")
        self.assertEqual(checked.returncode, 0, checked.stderr)
        sent = oxc_mail("test", *MAILBOXES[:1])
        self.assertEqual(sent.returncode, 0, sent.stderr)
        (mail,), _ = self.await_mails(1, 0)
        self.assertEqual(mail["Auto-Submitted"], "auto-generated")


if __name__ == "__main__":
    unittest.main()
