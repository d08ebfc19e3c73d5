# SPDX-License-Identifier: GPL-3.0-or-later
"""The newcomer's command: what it prints is what it left, and a second time works like the first."""

import contextlib
import os
import pathlib
import re
import shutil
import sqlite3
import subprocess
import tempfile
import threading
import time
import unittest

from harness import STAGE, pdf_text

TOP = pathlib.Path(__file__).resolve().parents[2]
# Stands in for sqlite3: of the counts of the history it answers the first, and fails three times then.
STUB = """#!/bin/sh
case "$*" in
*"count(*) from ReportHistory"*)
    echo x >>'{count}'
    asked=$(wc -l <'{count}')
    if [ "$asked" -gt 1 ] && [ "$asked" -lt 5 ]; then
        echo "Error: in prepare, database is locked (5)" >&2
        exit 1
    fi ;;
esac
exec '{real}' "$@"
"""


@unittest.skipUnless(STAGE == (TOP / "build" / "release" / "stage").resolve(),
                     "the script runs what the release preset built")
class RunScript(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="oxc-run-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.demo = self.folder / "demo"

    def start(self, *arguments, place=None, **variables):
        environment = {k: v for k, v in os.environ.items() if k not in ("DISPLAY", "WAYLAND_DISPLAY")}
        environment["HOME"] = str(self.folder / "home")
        environment.update(variables)
        return subprocess.run([str(TOP / "run"), "--no-install", "--no-build", *arguments], cwd=place or self.folder,
                              capture_output=True, text=True, env=environment, timeout=120)

    def run_script(self, *arguments, **variables):
        result = self.start("--folder", str(self.demo), *arguments, **variables)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        return result.stdout

    def mails(self):
        return list((self.demo / "data" / "oxbow-courier" / "outbox").glob("*.eml"))

    def mode(self, *names):
        return self.demo.joinpath(*names).stat().st_mode & 0o777

    def database(self):
        return self.demo / "app" / "PressroomLive.dat"

    @contextlib.contextmanager
    def locked_for(self, seconds):
        """Nobody else reads or writes the database in the meantime."""
        is_locked = threading.Event()

        def hold():
            connection = sqlite3.connect(self.database(), isolation_level=None)
            connection.execute("pragma locking_mode=exclusive")
            connection.execute("begin exclusive")
            is_locked.set()
            time.sleep(seconds)
            connection.close()

        thread = threading.Thread(target=hold)
        thread.start()
        try:
            self.assertTrue(is_locked.wait(30))
            yield
        finally:
            thread.join()

    def check_output(self, text):
        self.assertRegex(text, r"Success\s+None")
        message = pathlib.Path(re.search(r"^Mail:\s+(.*)$", text, re.M).group(1))
        self.assertTrue(message.is_file())
        attached = pathlib.Path(re.search(r"^Attachment:\s+(.*)$", text, re.M).group(1))
        self.assertIn("Sales", pdf_text(attached.read_bytes()))
        self.assertIn("--editor", text)
        self.assertIn("oxc-mail", text)

    def test_runs_twice_and_stays_in_its_folder(self):
        self.check_output(self.run_script())
        self.check_output(self.run_script())
        self.assertEqual([entry.name for entry in self.folder.iterdir()], ["demo"])

    def test_each_time_mails_once(self):
        for count in (1, 2, 3):
            self.check_output(self.run_script())
            self.assertEqual(len(self.mails()), count)

    def test_platform_of_windows_does_not_matter(self):
        self.check_output(self.run_script(QT_QPA_PLATFORM="xcb"))

    def test_scheduler_left_running_is_stopped_by_the_next(self):
        first = re.search(r"process (\d+)", self.run_script("--keep-running")).group(1)
        try:
            self.assertIn("process %s) is stopped" % first, self.run_script())
            self.assertFalse(pathlib.Path("/proc", first).exists())
        finally:
            subprocess.run(["kill", first], stderr=subprocess.DEVNULL, check=False)
        self.assertEqual(len(self.mails()), 2)

    def test_what_is_made_is_for_its_owner(self):
        self.run_script()
        for names in ((), ("app",), ("app", "PressroomLive.dat"), ("config", "oxbow-courier", "mail.ini"), ("data",)):
            self.assertEqual(self.mode(*names) & 0o077, 0, names)

    def test_folder_that_is_there_keeps_its_mode(self):
        self.demo.mkdir()
        self.demo.chmod(0o755)
        self.run_script()
        self.assertEqual(self.mode(), 0o755)
        self.assertEqual(self.mode("app", "PressroomLive.dat"), 0o600)

    def test_database_that_is_there_is_for_its_owner(self):
        self.run_script()
        for suffix in ("", "-wal", "-shm"):
            path = pathlib.Path(str(self.database()) + suffix)
            path.touch()
            path.chmod(0o644)
        self.run_script()
        for path in self.database().parent.glob("PressroomLive.dat*"):
            self.assertEqual(path.stat().st_mode & 0o777, 0o600, path.name)

    def test_busy_database_is_waited_for(self):
        self.run_script()
        with self.locked_for(4):
            result = self.start("--folder", str(self.demo))
        self.assertEqual((result.returncode, result.stderr), (0, ""), result.stdout)
        self.check_output(result.stdout)

    def test_query_that_fails_is_no_run(self):
        """The first answers of the database while the script waits are that it is locked."""
        tools = self.folder / "tools"
        tools.mkdir()
        stub = tools / "sqlite3"
        stub.write_text(STUB.format(real=shutil.which("sqlite3"), count=self.folder / "count"))
        stub.chmod(0o755)
        result = self.start("--folder", str(self.demo), PATH="%s:%s" % (tools, os.environ["PATH"]))
        self.assertEqual((result.returncode, result.stderr), (0, ""), result.stdout)
        self.check_output(result.stdout)
        self.assertGreater(len((self.folder / "count").read_text().splitlines()), 4)

    def test_folder_of_any_name(self):
        for name in ("a b", "a;b", "50% off", "it's", "-x", "\u00fcml\u00e4ut", "a=b", 'say "hi"', "$HOME", "a*b", "#;"):
            with self.subTest(name=name):
                self.demo = self.folder / name
                result = self.start("--folder", name)
                self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
                self.check_output(result.stdout)
                self.assertEqual(len(self.mails()), 1)

    def test_folder_that_the_system_cannot_name_is_refused(self):
        for name in ("a\\b", "a\tb", "a\nb", "ab\n", "a\rb", "\x01", "a\x7f"):
            with self.subTest(name=name):
                result = self.start("--folder", name)
                self.assertEqual((result.returncode, result.stdout), (2, ""))
                self.assertEqual(result.stderr,
                                 "./run: no backslash and no control character can stand in the folder's name\n")
                self.assertEqual(list(self.folder.iterdir()), [])

    def test_folder_in_one_that_the_system_cannot_name_is_refused(self):
        odd = self.folder / "a\tb"
        odd.mkdir()
        (self.folder / "link").symlink_to(odd)
        for place, name in ((odd, "demo"), (self.folder, "link/demo")):
            with self.subTest(name=name):
                result = self.start("--folder", name, place=place)
                self.assertEqual((result.returncode, result.stdout), (2, ""), result.stderr)
                self.assertIn("no control character", result.stderr)
                self.assertEqual(list(odd.iterdir()), [])

    def test_help(self):
        self.assertIn("usage: ./run", self.run_script("--help"))


if __name__ == "__main__":
    unittest.main()
