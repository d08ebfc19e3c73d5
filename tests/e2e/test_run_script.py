"""The newcomer's command: what it prints is what it left, and a second time works like the first."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

from harness import STAGE, pdf_text

TOP = pathlib.Path(__file__).resolve().parents[2]


@unittest.skipUnless(STAGE == (TOP / "build" / "release" / "stage").resolve(),
                     "the script runs what the release preset built")
class RunScript(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="oxc-run-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.demo = self.folder / "demo"

    def start(self, *arguments, **variables):
        environment = {k: v for k, v in os.environ.items() if k not in ("DISPLAY", "WAYLAND_DISPLAY")}
        environment["HOME"] = str(self.folder / "home")
        environment.update(variables)
        return subprocess.run([str(TOP / "run"), "--no-install", "--no-build", *arguments], cwd=self.folder,
                              capture_output=True, text=True, env=environment, timeout=120)

    def run_script(self, *arguments, **variables):
        result = self.start("--folder", str(self.demo), *arguments, **variables)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        return result.stdout

    def mails(self):
        return list((self.demo / "data" / "oxbow-courier" / "outbox").glob("*.eml"))

    def mode(self, *names):
        return self.demo.joinpath(*names).stat().st_mode & 0o777

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

    def test_folder_of_any_name(self):
        for name in ("a b", "a;b", "50% off", "it's", "-x", "\u00fcml\u00e4ut", "a=b", 'say "hi"', "$HOME", "a*b", "#;"):
            with self.subTest(name=name):
                self.demo = self.folder / name
                result = self.start("--folder", name)
                self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
                self.check_output(result.stdout)
                self.assertEqual(len(self.mails()), 1)

    def test_folder_that_the_system_cannot_name_is_refused(self):
        result = self.start("--folder", "a\\b")
        self.assertEqual((result.returncode, result.stdout, result.stderr),
                         (2, "", "./run: no backslash and no line end can stand in the folder's name\n"))
        self.assertEqual(list(self.folder.iterdir()), [])

    def test_help(self):
        self.assertIn("usage: ./run", self.run_script("--help"))


if __name__ == "__main__":
    unittest.main()
