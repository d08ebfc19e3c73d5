# SPDX-License-Identifier: GPL-3.0-or-later
"""What the disk can lack while the scheduler runs: room, writing, a folder. Each test sees what the user sees, then mends
the disk, and every run is mailed once. docs/operations.md has a line for each."""

import shutil
import time
import unittest

import disks
from faults import Faults

REASON = ""


def setUpModule():
    global REASON
    REASON = disks.make_mounts_private()


class DiskFaults(Faults):
    def disk(self, folder, **options):
        if REASON:
            self.skipTest(REASON)
        disk = disks.Disk(folder, **options)
        self.addCleanup(disk.close)
        return disk


class Database(DiskFaults):
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


class Folders(DiskFaults):
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

    def test_report_of_a_package_taken_away_at_the_start(self):
        report = self.courier.folder / "figures.rpt"
        self.courier.package([("Acrobat", report)])
        self.courier.start()
        self.line("Polling has stopped, as the first poll of the packages failed: nothing is polled until the scheduler is "
                  "started again")
        self.assertIn("figures.rpt", self.package_failure())
        self.assertIn("figures.rpt", self.alert())
        time.sleep(2)
        self.assertEqual(self.courier.schedule_command("status", "--critical", "1").returncode, 2)
        self.courier.stop()
        shutil.copy(self.courier.app / "samples" / "sales_by_region.rpt", report)
        self.courier.start()
        self.assert_package_mailed_once()

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

if __name__ == "__main__":
    unittest.main()
