# SPDX-License-Identifier: GPL-3.0-or-later
"""The editor as a process on a display: its first start, what it purges, that it never polls, and its end."""

import datetime
import re
import time
import unittest

from desk_session import PICTURES
from editor import EditorTest
from harness import system_path

TODAY = datetime.date.today()
KEY = r"HKEY_LOCAL_MACHINE\Software\Norvale\Oxbow Courier"
AUTOSTART = r"HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Run"


def read_settings(path):
    """Values by key and name, in the order of the file."""
    text = path.read_text()
    assert text.startswith("Windows Registry Editor Version 5.00\n"), text
    keys = {}
    for line in text.splitlines():
        if re.fullmatch(r"\[.*\]", line):
            values = keys.setdefault(line[1:-1], {})
        elif line.startswith('"'):
            name, value = re.fullmatch(r'"(.*?)"="(.*)"', line).groups()
            values[name] = re.sub(r"\\(.)", r"\1", value)
    return keys


class FirstStart(EditorTest):
    def setUp(self):
        super().setUp()
        self.forget_settings()
        self.config = self.courier.folder / "config"

    def expected(self):
        app = system_path(self.courier.app)
        return {"Poll": "15", "Path": app, "Output": app + "\\Output\\", "AlertWho": "", "DefPath": app,
                "FirstRun": "False"}

    def test_settings_database_and_autostart_are_made(self):
        self.courier.database.unlink()
        self.open_editor()
        settings = read_settings(self.config / "oxbow-courier" / "settings.reg")
        self.assertEqual(list(settings[KEY].items()), list(self.expected().items()))
        self.assertEqual(settings[AUTOSTART], {"OXC": '"%s\\oxc.exe" -sched' % system_path(self.courier.app)})
        tables = self.courier.sql("select name from sqlite_master where type = 'table' and name not like 'sqlite%'")
        self.assertLessEqual({"ReportScheduler", "ReportBatch", "ReportHistory", "ReportBatchHstry", "Folders"},
                             {name for (name,) in tables})
        entry = (self.config / "autostart" / "OXC.desktop").read_text().splitlines()
        self.assertEqual(entry[0], "[Desktop Entry]")
        (start,) = [line for line in entry if line.startswith("Exec=")]
        self.assertRegex(start, r"^Exec=env (L[A-Z_]+=\S+ )+" + re.escape("%s -sched" % (self.courier.app / "oxc")) + "$")
        self.assertEqual(self.courier.said().count("encountred"), 0)

    def test_what_may_hold_passwords_is_private(self):
        self.courier.database.unlink()
        self.open_editor()
        for path in (self.config / "oxbow-courier" / "settings.reg", self.courier.database):
            self.assertEqual(path.stat().st_mode & 0o777, 0o600, path)

    def test_live_file_that_is_there_is_left_as_it_is(self):
        self.courier.sql("insert into Folders(FolderName, Parent) values('Mine', 0)")
        before = self.courier.database.stat().st_ino
        self.open_editor()
        self.assertEqual(self.courier.sql("select FolderName from Folders"), [("Mine",)])
        self.assertEqual(self.courier.database.stat().st_ino, before)
        self.assertTrue((self.config / "oxbow-courier" / "settings.reg").exists())

    def test_second_start_changes_no_setting(self):
        self.open_editor()
        self.courier.stop()
        path = self.config / "oxbow-courier" / "settings.reg"
        path.write_text(path.read_text().replace('"Poll"="15"', '"Poll"="40"'))
        self.open_editor()
        self.assertEqual(read_settings(path)[KEY], {**self.expected(), "Poll": "40"})

    def test_editor_without_a_display_says_so(self):
        self.courier.extra_environment = {}
        process = self.courier.start(arguments=())
        self.assertEqual(process.wait(10), 1)
        self.assertIn("the editor needs a display", self.courier.said())


class UnderAWindowManager(EditorTest):
    def setUp(self):
        super().setUp()
        manager = self.display.start_window_manager()
        self.addCleanup(manager.wait)
        self.addCleanup(manager.terminate)

    def windows(self):
        return self.display.windows(self.courier.process.pid)

    def test_splash_is_painted_while_it_stands(self):
        self.courier.start(arguments=())
        self.courier.wait(self.windows, 10, "the splash")
        (splash,) = self.windows()
        most = 0
        for _ in range(100):
            colours = len(set(self.display.pixels(splash)))
            if self.windows() != [splash]:
                break
            most = max(most, colours)
        self.assertGreater(most, 50, "colours")

    def open_about(self):
        window = self.open_editor()
        self.courier.wait(lambda: self.windows() == [window], 10, "the end of the splash")
        time.sleep(0.5)
        self.display.key("alt+h")
        self.courier.wait(lambda: len(self.windows()) == 2, 5, "the menu")
        self.display.key("Return")
        time.sleep(0.5)
        if PICTURES:
            self.display.screenshot(PICTURES + "/about.png")
        self.assertEqual(len(self.windows()), 2, "the main window and the box")

    def test_a_key_closes_the_about_box(self):
        self.open_about()
        self.display.key("x")
        self.courier.wait(lambda: len(self.windows()) == 1, 5, "the end of the box")
        self.assertIsNone(self.courier.process.poll())


class Purge(EditorTest):
    def insert(self, days):
        """A row of either table, each in its own form of the moment."""
        day = (TODAY - datetime.timedelta(days=days)).isoformat()
        self.courier.sql("insert into ReportHistory values(?, ?, 'Success', 'None')", days, day + " 23:59:59")
        self.courier.sql("insert into ReportBatchHstry values(?, ?, 'T', null)", str(days), day + ",23:59:59")

    def left(self):
        return (sorted(row[0] for row in self.courier.history()),
                sorted(int(row[0]) for row in self.courier.package_history()))

    def test_start_of_the_editor_takes_rows_of_31_days_and_keeps_30(self):
        for days in (0, 29, 30, 31, 32, 400):
            self.insert(days)
        self.open_editor()
        self.courier.wait(lambda: self.left() == ([0, 29, 30], [0, 29, 30]), what="purge")

    def test_start_of_the_scheduler_purges_nothing(self):
        self.insert(400)
        self.courier.schedule()
        self.courier.start()
        self.courier.wait(lambda: len(self.courier.history()) == 2, what="run")
        self.courier.stop()
        self.assertEqual(self.left()[1], [400])

    def test_moment_that_is_no_date_is_shown_and_the_editor_stays(self):
        self.courier.sql("insert into ReportHistory values(1, 'soon', 'Success', 'None')")
        self.open_editor()
        pid = self.courier.process.pid
        self.courier.wait(lambda: len(self.main_windows()) == 2, what="box")
        # The box bears the application's title, as the main window does, and is the smaller one.
        box = min(self.main_windows(), key=self.display.size)
        self.display.focus(box)
        self.display.key("Return")
        self.courier.wait(lambda: len(self.display.windows(pid)) == 1, what="end of the box")
        self.assertIsNone(self.courier.process.poll())


class Life(EditorTest):
    def test_editor_never_polls(self):
        key = self.courier.schedule()
        package = self.courier.package(MailBatch="F")
        self.open_editor()
        time.sleep(4)
        self.assertEqual(self.courier.history(key), [])
        self.assertEqual(self.courier.package_history(), [])
        self.assertEqual(self.courier.package_next_run(package), TODAY.isoformat())

    def test_close_box_ends_the_process_at_once_with_all_its_windows(self):
        window = self.open_editor()
        self.display.key("alt+f", "s")
        self.display.key("alt+f", "s")
        pid = self.courier.process.pid
        self.display.close_box(window)
        self.assertEqual(self.courier.process.wait(5), 0)
        self.assertEqual(self.display.windows(pid), [])

    def test_two_editors_live_side_by_side(self):
        self.open_editor()
        first = self.courier.process
        self.addCleanup(lambda: (first.kill(), first.wait()))
        self.open_editor()
        self.assertIsNone(first.poll())


if __name__ == "__main__":
    unittest.main()
