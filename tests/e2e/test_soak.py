# SPDX-License-Identifier: GPL-3.0-or-later
"""The soak of bench/soak still runs, for some seconds of its hours."""

import os
import pathlib
import subprocess
import unittest

from harness import STAGE

SOAK = pathlib.Path(__file__).resolve().parent.parent.parent / "bench" / "soak" / "run"


@unittest.skipIf("ASAN_OPTIONS" in os.environ, "the sanitizers keep memory of their own")
class Soak(unittest.TestCase):
    def test_hundred_polls_are_flat_and_mail_every_run(self):
        # Slowly, as the scheduler waits ten seconds of its clock for a locked database.
        done = subprocess.run([SOAK, "--polls", "150", "--due", "5", "--every", "50", "--speed", "10", STAGE],
                              capture_output=True, text=True, timeout=300, check=False)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        self.assertRegex(done.stdout, r"(?m)^1\d\d polls, (10|15) runs, \1 mails in \d+ s: flat$")


if __name__ == "__main__":
    unittest.main()
