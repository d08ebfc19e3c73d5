# SPDX-License-Identifier: GPL-3.0-or-later
"""A scheduler that is killed loses nothing: the date of a run and its history row are there together or not at all, and
the mail is not sent again, unless the kill falls between the server's word and the process's first line about it."""

import collections
import email.parser
import os
import pathlib
import random
import re
import signal
import subprocess
import time
import unittest

from mail_server import MailTest

LONG = bool(os.environ.get("OXC_LONG_TESTS"))
# The calls that change files. The kernel kills the process as it makes the call.
CALLS = ("openat", "write", "pwrite64", "fdatasync", "ftruncate", "unlink", "unlinkat", "rmdir", "rename", "fcntl", "close")


class Kills(MailTest):
    def setUp(self):
        super().setUp()
        self.server = self.serve()
        self.use(self.server.port)
        self.key = self.courier.schedule()
        self.today = self.courier.next_run(self.key)
        self.twice = []

    def again(self):
        """As at the start, but for the server's mails."""
        self.courier.sql("update ReportScheduler set NextRun = ?", self.today)
        self.courier.sql("delete from ReportHistory")
        # Of the kill before: they would mean this run, whose date is the same.
        for name in ("PressroomLive.delivered", "PressroomLive.begun"):
            (self.courier.app / name).unlink(missing_ok=True)
        for mail in self.server.folder.glob("*.eml"):
            mail.unlink()

    def is_recorded(self):
        """Whether the date has moved, which it does with its row alone."""
        moved = self.courier.next_run(self.key) != self.today
        self.assertEqual(len(self.courier.history()), 1 if moved else 0)
        return moved

    def traced(self, *options):
        """Starts under strace; gives when the process is gone or the run is recorded."""
        trace = self.courier.folder / "trace"
        # Detached from what it starts: the report process is not the one to kill.
        process = self.courier.start(prefix=("strace", "-f", "-b", "execve", "-o", str(trace), *options))
        end = time.monotonic() + 60
        while process.poll() is None and not self.courier.history():
            self.assertLess(time.monotonic(), end, self.courier.said())
            time.sleep(0.02)
        if process.poll() is None:
            time.sleep(0.3)  # what follows the record: the file beside the database, the poll's end
            for child in pathlib.Path("/proc/%d/task/%d/children" % (process.pid, process.pid)).read_text().split():
                os.kill(int(child), signal.SIGKILL)
        process.wait(10)
        return trace.read_text(errors="replace")

    def ends_well(self, what):
        """The next start leaves one mail, date and row; a second mail is noted if none could know of the first."""
        mailed = len(self.server.reports())
        self.assertLessEqual(mailed, 1)
        recorded = self.is_recorded()
        note = self.courier.app / "PressroomLive.delivered"
        noted = note.exists() and note.read_text().endswith("end\n")
        if not recorded:
            self.courier.run_until_history()
        self.assertTrue(self.is_recorded())
        self.assertEqual(self.courier.history()[0][2], "Success")
        mails = len(self.server.reports())
        if mails != 1:
            for header in ("Message-ID", "Date"):
                self.assertEqual(len({mail[header] for mail in self.server.reports()}), 1, header)
            self.assertEqual((mails, mailed, recorded, noted), (2, 1, False, False), what)
            self.twice.append(what)

    def calls_of_a_run(self):
        """How often each call is made before the mail goes out and until its run is over."""
        before, whole = collections.Counter(), collections.Counter()
        counter = before
        for line in self.traced("-e", "trace=sendto,recvfrom," + ",".join(CALLS)).splitlines():
            call = re.match(r"\d+ +(\w+)\(", line)
            if call and call[1] in CALLS:
                whole[call[1]] += 1
                before[call[1]] += counter is before
            if '"DATA' in line:
                counter = whole
        return before, whole

    def test_kill_at_the_calls_after_the_delivery(self):
        before, whole = self.calls_of_a_run()
        points = [(call, number) for call in CALLS for number in range(before[call] + 1, whole[call] + 1)]
        self.assertGreater(len(points), 60)
        if not LONG:
            points = random.Random(os.environ.get("OXC_SEED")).sample(points, 12)
        for call, number in points:
            self.again()
            self.traced("-e", "trace=" + call, "-e", "inject=%s:signal=SIGKILL:when=%d" % (call, number))
            self.ends_well("%s %d" % (call, number))
        print("%d kills, %d mails twice: %s" % (len(points), len(self.twice), self.twice))

    def test_kill_at_any_moment(self):
        rounds = 60 if LONG else 6
        start = time.monotonic()
        self.courier.run_until_history()
        length = time.monotonic() - start
        recorded = 0
        for number in range(rounds):
            self.again()
            delay = random.uniform(0, 1.2 * length)
            self.courier.start()
            time.sleep(delay)
            self.courier.process.kill()
            self.courier.process.wait()
            recorded += self.is_recorded()
            self.ends_well("%.3f s" % delay)
        print("%d kills within %.2f s, %d of them after the record, %d mails twice: %s"
              % (rounds, 1.2 * length, recorded, len(self.twice), self.twice))


class ManyKills(MailTest):
    """Schedules and a package that have years of days to make up: there is always a run under way."""

    KILLS = 50

    def setUp(self):
        super().setUp()
        self.server = self.serve()
        self.use(self.server.port)
        self.courier.settings(Poll="0", AlertWho="boss@example.com")
        for subject, word in (("One", "Acrobat Format (PDF)"), ("Two", "MS Excel"), ("Three", "DHTML")):
            self.courier.schedule(Subject=subject, Format=word, NextRun="2020-01-01")
        self.courier.package([("Acrobat", "summary.rpt")], Subject="Four", NextRunDate="2020-01-01")

    def days_recorded(self):
        """How many days each item has moved on, by its subject."""
        rows = self.courier.sql("select Subject, julianday(NextRun) - julianday('2020-01-01') from ReportScheduler "
                                "union all "
                                "select Subject, julianday(NextRunDate) - julianday('2020-01-01') from ReportBatch")
        return {subject: round(days) for subject, days in rows}

    def mails_of_runs(self):
        """For each item by its subject: the dates of the mails of each run, by the id that is the run's own."""
        runs = collections.defaultdict(lambda: collections.defaultdict(list))
        for path in self.server.folder.glob("*.eml"):
            with open(path, "rb") as file:
                mail = email.parser.BytesParser().parse(file, headersonly=True)
            runs[mail["Subject"]][mail["Message-ID"]].append(mail["Date"])
        return runs

    def copies(self):
        return sum(len(dates) - 1 for runs in self.mails_of_runs().values() for dates in runs.values())

    def test_fifty_kills_lose_no_mail_and_double_none_but_that_under_way(self):
        chance = random.Random(os.environ.get("OXC_SEED"))
        copies = 0
        for number in range(self.KILLS):
            process = self.courier.start()
            time.sleep(chance.uniform(0.1, 2.0))
            process.kill()
            process.wait()
            now = self.copies()
            self.assertLessEqual(now - copies, 1, "kill %d" % number)
            copies = now
        before = self.days_recorded()
        self.courier.start()
        self.courier.wait(lambda: all(days > before[subject] for subject, days in self.days_recorded().items()),
                          what="one more day of each item")
        self.courier.stop()
        runs, recorded = self.mails_of_runs(), self.days_recorded()
        for subject, days in recorded.items():
            # The last run may have been mailed as the scheduler was ended, and waits for its record.
            self.assertIn(len(runs[subject]) - days, (0, 1), subject)
            for dates in runs[subject].values():
                self.assertEqual(len(set(dates)), 1, "copies of one run have one date")
        self.assertEqual(runs.keys(), recorded.keys())
        self.assertEqual(self.courier.sql("pragma integrity_check"), [("ok",)])
        print("%d kills, %d runs, %d mails twice" % (self.KILLS, sum(recorded.values()), copies))


if __name__ == "__main__":
    unittest.main()
