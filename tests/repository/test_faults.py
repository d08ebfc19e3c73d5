# SPDX-License-Identifier: GPL-3.0-or-later
"""The list of faults fits the sources: an entry whose text is gone would no longer be tried."""
import os
import subprocess
import unittest


class Faults(unittest.TestCase):
    def test_every_entry_is_found_once(self):
        done = subprocess.run([os.path.join(os.environ["OXC_SOURCES"], "tests", "faults", "run"), "--list"],
                              capture_output=True, text=True)
        stale = [line for line in done.stdout.splitlines() if " stale " in line]
        self.assertEqual((stale, done.returncode, done.stderr), ([], 0, ""))


if __name__ == "__main__":
    unittest.main()
