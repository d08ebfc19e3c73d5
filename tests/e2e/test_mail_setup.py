# SPDX-License-Identifier: GPL-3.0-or-later
"""Mail from nothing to a scheduled report: the profile is made by commands, checked, tried and then used."""

import subprocess
import unittest

from mail_server import MailTest


class MailSetup(MailTest):
    def oxc_mail(self, *arguments, said=""):
        return subprocess.run([str(self.courier.app / "oxc-mail"), *arguments], input=said, capture_output=True,
                              text=True, timeout=30, env=self.courier.environment())

    def assert_done(self, *arguments, said=""):
        done = self.oxc_mail(*arguments, said=said)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertNotIn("s3cret", done.stdout)
        return done.stdout

    def test_profile_made_by_commands_mails_scheduled_reports(self):
        server = self.serve("--security", "starttls", "--certificate-name", "127.0.0.1", "--user", "reports",
                            "--password", "s3cret ; x")
        profile = self.courier.config / "mail.ini"
        profile.unlink()
        self.assertEqual(self.oxc_mail("check").returncode, 1)

        self.assert_done("set", "Transport=smtp", "From=Reports <reports@example.com>", "Host=127.0.0.1",
                         "Port=%d" % server.port, "User=reports",
                         "CAFile=%s" % (self.courier.folder / "mail" / "ca.pem"))
        refused = self.oxc_mail("check")
        self.assertEqual(refused.returncode, 1)
        self.assertTrue(refused.stderr.startswith("oxc-mail: User, Password: "), refused.stderr)
        self.assertEqual(self.assert_done("password", said="s3cret ; x\n"), "The password is stored.\n")
        self.assertEqual(profile.stat().st_mode & 0o777, 0o600)
        self.assertIn("; Password: set\n", self.assert_done("show"))
        self.assertIn("takes mail from reports@example.com", self.assert_done("check"))
        self.assertEqual(server.messages(), [])

        self.assert_done("test", "ann@example.com")
        self.assertEqual([(m["Subject"], m["X-Envelope-To"]) for m in server.messages()],
                         [("Test message", "ann@example.com")])

        key = self.courier.schedule()
        self.courier.run_until_history()
        self.assertEqual(self.courier.history(key)[0][2:], ("Success", "None"))
        self.assertEqual([m["X-Envelope-To"] for m in server.reports()], ["ann@example.com"])
        self.assertNotIn("s3cret", self.courier.said())


if __name__ == "__main__":
    unittest.main()
