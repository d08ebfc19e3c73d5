# SPDX-License-Identifier: GPL-3.0-or-later
"""Backups that are taken while the scheduler runs: whole, and as good as the original when they are put back."""

import shutil
import sqlite3
import subprocess
import unittest

from harness import CourierTest


def rows_of(path):
    """All that the database holds, as statements."""
    connection = sqlite3.connect(path)
    try:
        return list(connection.iterdump())
    finally:
        connection.close()


class Backup(CourierTest):
    def setUp(self):
        super().setUp()
        self.courier.settings(Poll="0", AlertWho="boss@example.com")

    def busy_scheduler(self):
        """One that has years of days to make up, each with a date and a history row."""
        self.courier.schedule(NextRun="2015-01-01", Format="DHTML")
        self.courier.schedule(NextRun="2015-01-01")
        self.courier.start()
        self.courier.wait(lambda: len(self.courier.history()) >= 2, what="first runs")

    def sqlite3(self, command):
        subprocess.run(["sqlite3", self.courier.database, ".timeout 10000", command], check=True, timeout=60)

    def assert_whole(self, backup):
        """Each run moved its date and left its row, or did neither."""
        connection = sqlite3.connect(backup)
        try:
            self.assertEqual(connection.execute("pragma integrity_check").fetchall(), [("ok",)])
            days = connection.execute("select sum(julianday(NextRun) - julianday('2015-01-01')) from ReportScheduler"
                                      ).fetchone()[0]
            rows = connection.execute("select count(*) from ReportHistory where Status = 'Success'").fetchone()[0]
        finally:
            connection.close()
        self.assertEqual(round(days), rows)
        return rows

    def test_backup_beside_a_running_scheduler_is_whole_and_restores_the_same_rows(self):
        self.busy_scheduler()
        counts = []
        for number in range(10):
            backup = self.courier.folder / ("backup%d.dat" % number)
            self.sqlite3(".backup '%s'" % backup if number % 2 == 0 else "vacuum into '%s'" % backup)
            counts.append(self.assert_whole(backup))
            before = len(self.courier.history())
            self.courier.wait(lambda: len(self.courier.history()) > before, what="one more run")
        self.assertEqual(counts, sorted(counts))
        self.assertGreater(counts[-1], counts[0])
        self.courier.stop()
        # The last but one is of the other kind: both are put back.
        for number in (8, 9):
            backup = self.courier.folder / ("backup%d.dat" % number)
            for name in ("-wal", "-shm"):
                self.courier.database.with_name(self.courier.database.name + name).unlink(missing_ok=True)
            for name in ("PressroomLive.delivered", "PressroomLive.begun"):
                (self.courier.app / name).unlink(missing_ok=True)
            shutil.copy(backup, self.courier.database)
            self.assertEqual(rows_of(self.courier.database), rows_of(backup))
            runs = len(self.courier.history())
            self.courier.start()
            self.courier.wait(lambda: len(self.courier.history()) > runs, what="the next run")
            self.courier.stop()
            self.assert_whole(self.courier.database)

    def test_export_beside_a_running_scheduler_makes_the_same_items_elsewhere(self):
        report = str(self.courier.app / "samples" / "sales_by_region.rpt")
        self.courier.start()
        for arguments in (("folder", "add", "Finance"),
                          ("add", report, "--title", "Sales", "--folder", "Finance", "--to", "ann@example.com", "--at",
                           "00:00", "-p", "Year=2024"),
                          ("package", "add", "Month", "--report", report, "--to", "ann@example.com", "--at", "00:00",
                           "--output", str(self.courier.folder))):
            made = self.courier.schedule_command(*arguments)
            self.assertEqual(made.returncode, 0, made.stderr)
        self.courier.wait(self.courier.history, what="run")
        exported = self.courier.folder / "export.json"
        self.assertEqual(self.courier.schedule_command("export", "--with-passwords", str(exported)).returncode, 0)
        self.courier.stop()
        # Another user, for whom the first command makes the database.
        self.courier.extra_environment.update(OXC_HOME=str(self.courier.folder / "elsewhere"),
                                              XDG_CONFIG_HOME=str(self.courier.folder / "other config"))
        (self.courier.folder / "elsewhere" / "Cache").mkdir(parents=True)
        shutil.copy(self.courier.app / "Pressroom.dat", self.courier.folder / "elsewhere")
        imported = self.courier.schedule_command("import", str(exported))
        self.assertEqual(imported.returncode, 0, imported.stderr)
        again = self.courier.schedule_command("export", "--with-passwords")
        self.assertEqual(again.stdout, exported.read_text())


if __name__ == "__main__":
    unittest.main()
