# SPDX-License-Identifier: GPL-3.0-or-later
"""A schedule fires at its minute and not before, whatever the calendar says."""

import time
import unittest

from harness import CourierTest, another_clock


class Clock(CourierTest):
    def fake(self, moment):
        self.courier.extra_environment = another_clock(FAKETIME="@" + moment)

    def test_fires_at_its_minute_and_not_before(self):
        self.fake("2027-03-04 13:59:54")
        key = self.courier.schedule(RunAt="14:00", NextRun="2027-03-04")
        self.courier.settings(Poll="0", AlertWho="boss@example.com")
        start = time.monotonic()
        self.courier.run_until_history()
        self.assertGreater(time.monotonic() - start, 4)
        (row,) = self.courier.history(key)
        self.assertRegex(row[1], r"^2027-03-04 14:00:0[0-3]$")
        self.assertEqual(row[2], "Success")
        self.assertEqual(self.courier.next_run(key), "2027-03-05")

    def test_day_before_it_does_not_fire(self):
        self.fake("2027-03-03 23:59:55")
        early = self.courier.schedule(RunAt="00:00", NextRun="2027-03-04")
        self.courier.settings(Poll="0", AlertWho="boss@example.com")
        self.courier.run_until_history()
        self.assertRegex(self.courier.history(early)[0][1], r"^2027-03-04 00:00:0[0-3]$")

    def test_missed_runs_are_made_up_one_a_poll(self):
        self.fake("2027-03-04 12:00:00")
        key = self.courier.schedule(RunAt="06:00", NextRun="2027-03-01")
        self.courier.settings(Poll="1", AlertWho="boss@example.com")
        self.courier.run_until_history(count=4)
        self.assertEqual(self.courier.next_run(key), "2027-03-05")
        stamps = [row[1] for row in self.courier.history(key)]
        self.assertEqual(len(set(stamps)), 4, stamps)
        self.assertEqual(len(self.courier.mails()), 4)


if __name__ == "__main__":
    unittest.main()
