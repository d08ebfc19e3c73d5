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


@unittest.skipUnless(STAGE == TOP / "build" / "release" / "stage", "the script runs what the release preset built")
class RunScript(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="oxc-run-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)

    def run_script(self, *arguments):
        environment = {k: v for k, v in os.environ.items() if k not in ("DISPLAY", "WAYLAND_DISPLAY")}
        environment["HOME"] = str(self.folder / "home")
        result = subprocess.run([str(TOP / "run"), "--no-install", "--no-build", "--folder",
                                 str(self.folder / "demo"), *arguments],
                                capture_output=True, text=True, env=environment, timeout=120)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        return result.stdout

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

    def test_help(self):
        self.assertIn("usage: ./run", self.run_script("--help"))


if __name__ == "__main__":
    unittest.main()
