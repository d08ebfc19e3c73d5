# SPDX-License-Identifier: GPL-3.0-or-later
"""The scheduler as a process: idle, ended, killed, and beside others on the same database."""

import os
import random
import re
import resource
import sqlite3
import subprocess
import threading
import time
import unittest

from harness import CourierTest, attachment

TICK = os.sysconf("SC_CLK_TCK")
LONG = bool(os.environ.get("OXC_LONG_TESTS"))


def cpu_seconds(pid):
    with open("/proc/%d/stat" % pid) as file:
        fields = file.read().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / TICK


def resident_megabytes(pid):
    with open("/proc/%d/status" % pid) as file:
        return int(re.search(r"VmRSS:\s+(\d+)", file.read()).group(1)) / 1024


def core_bound(pid):
    with open("/proc/%d/limits" % pid) as file:
        return re.search(r"Max core file size +(\S+)", file.read()).group(1)


class Process(CourierTest):
    def test_idles_small_and_ends_on_sigterm(self):
        self.courier.settings(Poll="15", AlertWho="boss@example.com")
        process = self.courier.start()
        time.sleep(3)
        before = cpu_seconds(process.pid)
        seconds = 20 if LONG else 6
        time.sleep(seconds)
        used = cpu_seconds(process.pid) - before
        memory = resident_megabytes(process.pid)
        print("idle: %.2f %% of a core, %.1f MB" % (100 * used / seconds, memory))
        # One clock tick of 10 ms is what the kernel can tell in a short measurement.
        self.assertLessEqual(used, max(0.005 * seconds, 2 / TICK))
        # The sanitizers keep memory of their own; the program that counts lines has 20 MB of counts and of symbols.
        self.assertLess(memory, 600 if "ASAN_OPTIONS" in os.environ else 100 if "OXC_COVERAGE" in os.environ else 60)
        start = time.monotonic()
        process.terminate()
        self.assertEqual(process.wait(5), 0)
        self.assertLess(time.monotonic() - start, 1)

    def box_appears_and_the_poll_goes_on(self, **environment):
        """A mail that cannot go out shows its box; a schedule put in later runs all the same."""
        self.courier.extra_environment = environment
        self.courier.profile("Transport=smtp\nHost=127.0.0.1\nPort=1\nSecurity=none\nTimeout=2\n")
        key = self.courier.schedule(Format="DHTML")
        self.courier.start()
        self.courier.wait(lambda: "Your mailbox is over the limit" in self.courier.said(), what="box")
        self.courier.profile("Transport=outbox\nOutboxFolder=%s\n" % self.courier.outbox)
        self.courier.wait(lambda: self.courier.history(key), what="history row")

    def test_platform_without_a_screen_answers_boxes_by_itself(self):
        self.box_appears_and_the_poll_goes_on(QT_QPA_PLATFORM="offscreen")

    def test_display_that_does_not_answer_is_done_without(self):
        self.box_appears_and_the_poll_goes_on(DISPLAY=":97")

    def test_reader_of_its_messages_may_go(self):
        self.courier.profile("Transport=smtp\nHost=127.0.0.1\nPort=1\nSecurity=none\nTimeout=2\n")
        key = self.courier.schedule(Format="DHTML")
        self.courier.log, kept = subprocess.PIPE, self.courier.log
        process = self.courier.start()
        self.courier.log = kept
        process.stdout.read(20)
        process.stdout.close()
        time.sleep(5)
        self.assertIsNone(process.poll())
        self.courier.profile("Transport=outbox\nOutboxFolder=%s\n" % self.courier.outbox)
        self.courier.wait(lambda: self.courier.history(key), what="history row")

    @unittest.skipIf(resource.getrlimit(resource.RLIMIT_CORE)[1] == 0, "no process here may write a core dump")
    def test_no_program_writes_a_core_dump(self):
        """Passwords may be in the memory of each, and whoever starts it may want such files of other programs."""
        hard = resource.getrlimit(resource.RLIMIT_CORE)[1]
        self.courier.profile("Transport=smtp\nHost=127.0.0.1\nPort=1\nSecurity=none\nUser=ann\n"
                             "PasswordCommand=sleep 60\n")
        report, output = self.courier.app / "samples" / "sales_by_region.rpt", self.courier.folder / "out.pdf"
        for line in (["oxc", "-sched"], ["oxc"], ["oxc-mail", "check"],
                     ["oxc-report", "export", report, "-f", "pdf", "-o", output, "--user", "ann", "--password-stdin"]):
            with self.subTest(line=line[:2]):
                process = subprocess.Popen([self.courier.app / line[0], *line[1:]], stdin=subprocess.PIPE,
                                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                           env={**self.courier.environment(), "QT_QPA_PLATFORM": "offscreen"},
                                           preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_CORE, (hard, hard)))
                try:
                    self.courier.wait(lambda: core_bound(process.pid) == "0", what="bound on core dumps")
                    self.assertIsNone(process.poll())
                finally:
                    process.kill()
                    process.communicate()

    def test_kill_in_an_export_leaves_nothing_for_good(self):
        part = self.courier.app / "output" / ".oxc-part-999999999-abcdef"
        part.write_text("half a page")
        self.courier.schedule(Format="DHTML")
        self.courier.run_until_history()
        self.assertFalse(part.exists())

    def test_kills_at_random_moments_leave_nothing_half_done(self):
        """Each round the schedule is due; the process is killed somewhere in start-up, run, mail or record."""
        key = self.courier.schedule(Frequency="Daily", NextRun="2020-01-01")
        chance = random.Random(11)
        for _ in range(50):
            process = self.courier.start()
            time.sleep(chance.uniform(0.02, 0.7))
            process.kill()
            process.wait()
            check = sqlite3.connect(self.courier.database)
            self.assertEqual(check.execute("pragma integrity_check").fetchone(), ("ok",))
            check.close()
        runs = len(self.courier.history(key))
        moved = (time.mktime(time.strptime(self.courier.next_run(key), "%Y-%m-%d"))
                 - time.mktime(time.strptime("2020-01-01", "%Y-%m-%d"))) / 86400
        # Date and row are stored in one transaction.
        self.assertEqual(round(moved), runs)
        self.check_outbox(round(moved))
        # What was cut off is made up by the next process.
        self.courier.start()
        self.courier.wait(lambda: len(self.courier.history(key)) > runs, what="the run made up")
        self.courier.stop()

    def check_outbox(self, runs):
        mails = self.courier.mails()
        self.assertGreaterEqual(len(mails), runs)
        for mail in mails:
            name, _, data = attachment(mail)
            self.assertTrue(name.endswith(".pdf"))
            self.assertTrue(data.rstrip().endswith(b"%%EOF"))
        self.courier.start()
        self.courier.wait(lambda: len(self.courier.mails()) > len(mails), what="one more mail")
        self.courier.stop()
        self.assertEqual([f.name for f in self.courier.outbox.iterdir() if not f.name.endswith(".eml")], [])

    def test_other_programs_write_while_the_scheduler_runs(self):
        seconds = 60 if LONG else 6
        end = time.monotonic() + seconds
        key = self.courier.schedule(Frequency="Daily", NextRun="2010-01-01")
        self.courier.settings(Poll="0", AlertWho="boss@example.com")
        counts, errors = [0, 0], []

        def write(number):
            try:
                while time.monotonic() < end:
                    self.courier.sql("insert into clients values(?)", "client %d" % number)
                    counts[number] += 1
            except sqlite3.Error as error:
                errors.append(error)

        writers = [threading.Thread(target=write, args=(number,)) for number in range(2)]
        for writer in writers:
            writer.start()
        self.courier.start()
        for writer in writers:
            writer.join()
        self.courier.stop()
        self.assertEqual(errors, [])
        self.assertEqual(self.courier.sql("select count(*) from clients")[0][0], sum(counts))
        rows = self.courier.history(key)
        self.assertGreaterEqual(len(rows), 3)
        self.assertEqual({row[2] for row in rows}, {"Success"})
        self.assertEqual(self.courier.sql("pragma integrity_check"), [("ok",)])

    def test_two_schedulers_share_the_database(self):
        key = self.courier.schedule(Frequency="Daily", NextRun="2010-01-01")
        first = self.courier.start()
        self.courier.start()
        time.sleep(4)
        self.courier.stop()
        first.terminate()
        self.assertEqual(first.wait(5), 0)
        self.assertEqual({row[2] for row in self.courier.history(key)}, {"Success"})


if __name__ == "__main__":
    unittest.main()
