# SPDX-License-Identifier: GPL-3.0-or-later
"""What the machine can lack while the scheduler runs: descriptors, memory, the right time. Each test sees what the user
sees, then mends the machine, and every run is mailed once. docs/operations.md has a line for each."""

import datetime
import os
import re
import resource
import signal
import time
import unittest

from faults import Faults
from harness import another_clock
from test_failures import table_report


class Process(Faults):
    def limit(self, what, value):
        """Bounds what the running process may take from now on; returns the former bounds."""
        pid = self.courier.process.pid
        return resource.prlimit(pid, what, (value, resource.prlimit(pid, what)[1]))

    def test_no_descriptors(self):
        self.start()
        self.limit(resource.RLIMIT_NOFILE, len(os.listdir("/proc/%d/fd" % self.courier.process.pid)))
        self.ends('Run-time error "67":  Too many open files: the data file "%s" cannot be opened'
                  % self.courier.database)
        self.assert_mailed_once(self.courier.schedule())

    def test_few_descriptors(self):
        """Enough for the database and not for the run."""
        self.start()
        before = self.limit(resource.RLIMIT_NOFILE,
                            len(os.listdir("/proc/%d/fd" % self.courier.process.pid)) + 5)
        key = self.courier.schedule()
        self.assertIn("Too many open files", self.failure(key))
        self.limit(resource.RLIMIT_NOFILE, before[0])
        self.assert_mailed_once(key)

    def address_space(self):
        with open("/proc/%d/status" % self.courier.process.pid, encoding="ascii") as file:
            return int(re.search(r"VmSize:\s+(\d+)", file.read())[1]) * 1024

    @unittest.skipIf("ASAN_OPTIONS" in os.environ, "the sanitizers take memory of their own")
    def test_no_memory(self):
        self.start()
        self.limit(resource.RLIMIT_AS, self.address_space())
        self.ends('Run-time error "7":  Out of memory')
        self.assert_mailed_once(self.courier.schedule())

    @unittest.skipIf("ASAN_OPTIONS" in os.environ, "the sanitizers take memory of their own")
    def test_little_memory(self):
        """Enough for the poll and not for the run, which has bounds of its own."""
        self.courier.extra_environment["OXC_REPORT_MEMORY"] = "512"
        self.start()
        report = self.courier.folder / "greedy.rpt"
        query = "select length(hex(zeroblob(%d))) as name"
        report.write_text(table_report(self.courier.app / "samples" / "sales.db", query % 110000000))
        key = self.courier.schedule(report=report)
        words = 'Data set "S", data source "D": there is not enough memory for the query'
        self.assertEqual(self.failure(key), words)
        self.assertIn(words, self.alert())
        report.write_text(table_report(self.courier.app / "samples" / "sales.db", query % 300))
        self.assert_mailed_once(key)


class Clock(Faults):
    """The machine's clock is set while the scheduler runs."""

    def setUp(self):
        super().setUp()
        self.moment = self.courier.folder / "moment"
        self.courier.extra_environment.update(
            another_clock(FAKETIME_TIMESTAMP_FILE=str(self.moment), FAKETIME_NO_CACHE="1"))
        # Noon, far from the midnight of the machine.
        self.noon = datetime.datetime(2027, 3, 4, 12, 0, 0)
        self.set(self.noon)

    def set(self, moment):
        """Offsets alone go on with the time that passes."""
        seconds = round((moment - datetime.datetime.utcnow()).total_seconds())
        fresh = self.moment.with_suffix(".new")
        fresh.write_text("%+d\n" % seconds)
        fresh.rename(self.moment)

    def daily(self, run_at, next_run="2027-03-04"):
        return self.courier.schedule(RunAt=run_at, NextRun=next_run)

    def await_runs(self, key, count):
        self.courier.wait(lambda: len(self.courier.history(key)) >= count, what="%d runs" % count)

    def test_clock_set_back_an_hour(self):
        done, coming = self.daily("11:59"), self.daily("11:30", "2027-03-05")
        self.start()
        self.await_runs(done, 1)
        self.set(self.noon - datetime.timedelta(hours=1))
        self.wait_for_polls(3)
        self.set(self.noon + datetime.timedelta(seconds=30))
        self.wait_for_polls(3)
        self.assertEqual(len(self.courier.history(done)), 1)
        self.assertEqual(self.courier.history(coming), [])
        self.assertEqual(len(self.reports()), 1)
        self.assertEqual(self.courier.next_run(done), "2027-03-05")

    def test_clock_set_forward_a_year_and_back(self):
        daily, weekly = self.daily("23:00"), self.courier.schedule(RunAt="23:00", NextRun="2027-03-04",
                                                                   Frequency="Monthly")
        self.start()
        self.set(datetime.datetime(2028, 3, 4, 23, 30))
        self.await_runs(daily, 3)
        self.set(self.noon + datetime.timedelta(minutes=1))
        self.wait_for_polls(3)
        # One run for each poll was made up, and no more after the clock was right again.
        days = len(self.courier.history(daily))
        moved = datetime.date(2027, 3, 4) + datetime.timedelta(days=days)
        self.assertEqual(self.courier.next_run(daily), moved.isoformat())
        self.assertLess(days, 60)
        self.assertEqual(len(self.reports()), days + len(self.courier.history(weekly)))
        self.assertEqual({row[2] for row in self.courier.history()}, {"Success"})

    def test_machine_that_sleeps_for_an_hour(self):
        key = self.daily("12:30")
        self.start()
        self.courier.process.send_signal(signal.SIGSTOP)
        self.set(self.noon + datetime.timedelta(hours=1))
        time.sleep(1)
        self.courier.process.send_signal(signal.SIGCONT)
        self.await_runs(key, 1)
        self.wait_for_polls(2)
        (row,) = self.courier.history(key)
        self.assertRegex(row[1], r"^2027-03-04 13:00:\d\d$")
        self.assertEqual(len(self.reports()), 1)
        self.assertEqual(self.courier.next_run(key), "2027-03-05")


if __name__ == "__main__":
    unittest.main()
