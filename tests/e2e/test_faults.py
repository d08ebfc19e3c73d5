# SPDX-License-Identifier: GPL-3.0-or-later
"""What the machine can lack while the scheduler runs: room, memory, descriptors, folders, the right time. Each test sees
what the user sees, then mends the machine, and every run is mailed once. docs/operations.md has a line for each."""

import datetime
import os
import re
import resource
import shutil
import signal
import time
import unittest

import disks
from harness import FAKETIME, CourierTest
from test_failures import table_report

REASON = ""


def setUpModule():
    global REASON
    REASON = disks.make_mounts_private()


class Faults(CourierTest):
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

    def disk(self, folder, **options):
        if REASON:
            self.skipTest(REASON)
        disk = disks.Disk(folder, **options)
        self.addCleanup(disk.close)
        return disk


class Database(Faults):
    def setUp(self):
        super().setUp()
        self.home = self.courier.folder / "home"
        self.courier.extra_environment["OXC_HOME"] = str(self.home)
        self.courier.database = self.home / "PressroomLive.dat"

    def move_in(self):
        """The folder holds what a scheduler needs."""
        self.home.mkdir(exist_ok=True)
        for name in ("Pressroom.dat", "PressroomLive.dat"):
            shutil.copy(self.courier.app / name, self.home)
        for name in ("Cache", "output"):
            (self.home / name).mkdir()

    def small_disk(self):
        disk = self.disk(self.home)
        self.move_in()
        return disk

    def idle(self):
        """A scheduler that polls; its schedule is due as soon as `make_due` is called."""
        key = self.courier.schedule(StartDate="2990-01-01")
        self.start()
        return key

    def make_due(self):
        self.courier.sql("update ReportScheduler set StartDate = '2000-01-01'")

    def test_little_room_under_the_database(self):
        disk = self.small_disk()
        self.start()
        disk.fill(leave=150)
        key = self.courier.schedule()
        words = 'The disk is full: the data file "%s" cannot be written' % self.courier.database
        self.assertEqual(self.failure(key), words)
        self.assertEqual(self.alert(), "An error occured in Schedchk. %s [61]" % words)
        self.assertEqual(self.reports(), [])
        disk.free()
        self.assert_mailed_once(key)

    def test_no_room_under_the_database(self):
        disk = self.small_disk()
        key = self.idle()
        disk.fill()
        self.ends('Run-time error "61":  The disk is full: the data file "%s" cannot be written'
                  % self.courier.database)
        disk.free()
        self.make_due()
        self.assert_mailed_once(key)

    def test_no_room_under_the_database_at_the_start(self):
        disk = self.small_disk()
        key = self.courier.schedule()
        disk.fill()
        self.courier.start()
        self.line("The start of the scheduler failed: nothing is polled until it is started again")
        self.assertIn('The disk is full: the data file "%s" cannot be written' % self.courier.database,
                      self.courier.said())
        disk.free()
        self.assertEqual(self.courier.schedule_command("status").returncode, 2)
        self.courier.stop()
        self.assert_mailed_once(key)

    def test_database_on_a_read_only_file_system(self):
        disk = self.small_disk()
        key = self.idle()
        disk.protect()
        self.ends('The data file "%s" is write-protected; its file system is read-only' % self.courier.database)
        disk.unprotect()
        self.make_due()
        self.assert_mailed_once(key)

    def test_application_folder_taken_away(self):
        self.move_in()
        key = self.idle()
        away = self.home.rename(self.courier.folder / "away")
        self.ends('Could not find the data file "%s"' % self.courier.database)
        self.assertFalse(self.home.exists())
        away.rename(self.home)
        self.make_due()
        self.assert_mailed_once(key)


class Folders(Faults):
    def test_full_outbox(self):
        outbox = self.disk(self.courier.outbox)
        outbox.fill()
        key = self.courier.schedule()
        self.courier.start()
        words = 'The outbox "%s" is full: No space left on device' % self.courier.outbox
        self.assertEqual(self.failure(key), words)
        self.line('An alert did not go out to "boss@example.com": ' + words)
        self.line("Your mailbox is over the limit or the Exchange Server is down! Sending mail failed")
        outbox.free()
        self.assert_mailed_once(key)

    def test_full_outbox_of_an_html_report(self):
        outbox = self.disk(self.courier.outbox)
        outbox.fill()
        key = self.courier.schedule(Format="DHTML")
        self.courier.start()
        self.line("Your mailbox is over the limit or the Exchange Server is down! Sending mail failed")
        self.line('The mail "Figures" did not go out: The outbox "%s" is full' % self.courier.outbox)
        self.assertEqual(self.courier.history(key), [])
        outbox.free()
        self.assert_mailed_once(key)

    def test_read_only_outbox(self):
        outbox = self.disk(self.courier.outbox)
        outbox.protect()
        key = self.courier.schedule()
        self.courier.start()
        words = 'The outbox "%s" cannot be written: Read-only file system' % self.courier.outbox
        self.assertEqual(self.failure(key), words)
        self.line('An alert did not go out to "boss@example.com": ' + words)
        outbox.unprotect()
        self.assert_mailed_once(key)

    def test_outbox_taken_away(self):
        self.courier.outbox.mkdir()
        self.start()
        self.courier.outbox.rmdir()
        self.assert_mailed_once(self.courier.schedule())

    def check_output(self, harm, mend, words):
        key = self.courier.schedule(Format="DHTML")
        harm()
        self.courier.start()
        description = self.failure(key)
        self.assertRegex(description, words)
        self.assertIn("An error occured in Schedchk. " + description, self.alert())
        mend()
        self.assert_mailed_once(key)

    def test_full_output_folder(self):
        disk = self.disk(self.courier.app / "output")
        self.check_output(disk.fill, disk.free, r'^Disk full: ".*/output/\w+\.htm"$')

    def test_read_only_output_folder(self):
        disk = self.disk(self.courier.app / "output")
        self.check_output(disk.protect, disk.unprotect,
                          r'^Path/File access error: ".*/output/\w+\.htm", Read-only file system$')

    def test_output_folder_taken_away(self):
        output = self.courier.app / "output"
        self.check_output(lambda: shutil.rmtree(output), output.mkdir, r'^Path not found: ".*/output/\w+\.htm"$')

    def check_package_folder(self, harm, mend, words):
        self.courier.start_ticking()
        self.courier.package([("Acrobat", "sales_by_region.rpt")], NextRunDate="2990-01-01")
        harm()
        self.courier.sql("update ReportBatch set NextRunDate = '%s'" % time.strftime("%Y-%m-%d"))
        path = self.courier.folder / "packages" / "sales_by_region.rpt.pdf"
        self.assertEqual(self.package_failure(), words % path)
        self.assertEqual(self.alert().rsplit(" ", 1)[0], "An error occured in BatchReport. " + words % path)
        mend()
        self.assert_package_mailed_once()

    def test_full_package_folder(self):
        disk = self.disk(self.courier.folder / "packages")
        self.check_package_folder(disk.fill, disk.free, 'Disk full: "%s"')

    def test_read_only_package_folder(self):
        disk = self.disk(self.courier.folder / "packages")
        self.check_package_folder(disk.protect, disk.unprotect,
                                  'Path/File access error: "%s", Read-only file system')

    def test_package_folder_taken_away(self):
        folder = self.courier.folder / "packages"
        folder.mkdir()
        self.check_package_folder(folder.rmdir, folder.mkdir, 'Path not found: "%s"')

    def check_temporary_folder(self, harm):
        folder = self.courier.folder / "tmp"
        self.courier.extra_environment["TMPDIR"] = str(folder)
        harm(folder)
        key = self.courier.schedule()
        self.courier.start()
        return key

    def test_full_temporary_folder(self):
        disk = self.disk(self.courier.folder / "tmp")
        key = self.check_temporary_folder(lambda folder: disk.fill())
        description = self.failure(key)
        self.assertRegex(description, r'^Disk full: ".*/tmp/oxbow-courier-export-\w+/Sales by region\.pdf"$')
        self.assertIn(description, self.alert())
        disk.free()
        self.assert_mailed_once(key)

    def test_read_only_temporary_folder(self):
        disk = self.disk(self.courier.folder / "tmp")
        self.assert_mailed_once(self.check_temporary_folder(lambda folder: disk.protect()))

    def test_temporary_folder_taken_away(self):
        self.assert_mailed_once(self.check_temporary_folder(lambda folder: None))

    def test_cached_report_taken_away(self):
        report = self.courier.app / "Cache" / "figures.rpt"
        shutil.copy(self.courier.app / "samples" / "sales_by_region.rpt", report)
        key = self.courier.schedule(report=report)
        away = report.rename(self.courier.folder / "figures.rpt")
        self.courier.start()
        self.assertIn("figures.rpt", self.failure(key))
        self.assertIn("figures.rpt", self.alert())
        away.rename(report)
        self.assert_mailed_once(key)



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
        """Enough for the poll and not for the run."""
        self.start()
        before = self.limit(resource.RLIMIT_AS, self.address_space() + (8 << 20))
        report = self.courier.folder / "greedy.rpt"
        report.write_text(table_report(self.courier.app / "samples" / "sales.db",
                                       "select length(hex(zeroblob(50000000))) as name"))
        key = self.courier.schedule(report=report)
        words = 'Data set "S", data source "D": there is not enough memory for the query'
        self.assertEqual(self.failure(key), words)
        self.assertIn(words, self.alert())
        self.limit(resource.RLIMIT_AS, before[0])
        self.assert_mailed_once(key)


class Clock(Faults):
    """The machine's clock is set while the scheduler runs."""

    def setUp(self):
        super().setUp()
        self.moment = self.courier.folder / "moment"
        self.courier.extra_environment.update(
            LD_PRELOAD=FAKETIME, FAKETIME_TIMESTAMP_FILE=str(self.moment), FAKETIME_NO_CACHE="1", TZ="Etc/UTC",
            FAKETIME_DONT_FAKE_MONOTONIC="1", DONT_FAKE_MONOTONIC="1")
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
