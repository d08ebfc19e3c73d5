# SPDX-License-Identifier: GPL-3.0-or-later
"""What the tests of faults have in common: what the user sees, and that every run is mailed once when all is well again."""

from harness import CourierTest


class Faults(CourierTest):
    def setUp(self):
        super().setUp()
        self.courier.settings(Poll="0", AlertWho="boss@example.com")
        # The machine's own words are compared, too.
        self.courier.write_days_year_first()

    def alert(self):
        """The words of the first alert, once it is there."""
        def alerts():
            return [mail for mail in self.courier.mails() if mail["Subject"] == "Pressroom Error"]
        self.courier.wait(alerts, what="alert")
        return " ".join(alerts()[0].get_body().get_content().split())

    def reports(self):
        return [mail for mail in self.courier.mails() if mail["Subject"] != "Pressroom Error"]

    def failure(self, key):
        self.courier.wait(lambda: self.courier.history(key), what="failure row")
        _, _, status, description = self.courier.history(key)[0]
        self.assertEqual(status, "Failure")
        return description

    def package_failure(self):
        self.courier.wait(self.courier.package_history, what="failure row")
        return self.courier.package_history()[0][3]

    def line(self, words):
        self.courier.wait(lambda: words in self.courier.said(), what="line " + words)

    def ends(self, words):
        """The process ends with code 1 and says why in its last line."""
        self.assertEqual(self.courier.process.wait(30), 1)
        self.assertIn(words, self.courier.said().strip().splitlines()[-1])

    def assert_mailed_once(self, key):
        """The run is made up by the running scheduler or the next one, and no poll after it mails it again."""
        if self.courier.process.poll() is not None:
            self.courier.start()
        self.courier.wait(lambda: [row for row in self.courier.history(key) if row[2] == "Success"], what="run")
        self.wait_for_polls(2)
        self.assertEqual(len(self.reports()), 1)
        self.assertEqual(len([row for row in self.courier.history(key) if row[2] == "Success"]), 1)

    def assert_package_mailed_once(self):
        self.courier.wait(lambda: [row for row in self.courier.package_history() if row[3] is None], what="run")
        self.wait_for_polls(2)
        self.assertEqual(len(self.reports()), 1)

    def wait_for_polls(self, count):
        trace = self.courier.database.parent / "PressroomLive.polled"
        for _ in range(count):
            before = trace.stat().st_mtime_ns if trace.exists() else 0
            self.courier.wait(lambda: trace.exists() and trace.stat().st_mtime_ns != before, what="poll")

    def start(self):
        """A scheduler past its start-up."""
        self.courier.start()
        self.wait_for_polls(1)
