# SPDX-License-Identifier: GPL-3.0-or-later
"""The list of skipped tests names each with its reason, whichever framework it comes from."""

import os
import pathlib
import subprocess
import tempfile
import unittest

SOURCES = pathlib.Path(os.environ["OXC_SOURCES"])
LOG = """1/2 Testing: files_test
[ RUN      ] Files.Quick
[       OK ] Files.Quick (0 ms)
[ RUN      ] Files.BusyFile
/a/files_test.cpp:12: Skipped
takes ten seconds
[  SKIPPED ] Files.BusyFile (0 ms)
[ RUN      ] Files.NoReason
/a/files_test.cpp:20: Skipped

2/2 Testing: e2e.mail
test_one (test_mail.Mail.test_one) ... ok
test_two (test_mail.Mail.test_two) ... skipped 'no "server" here'
test_three (test_mail.Mail.test_three)
What it is about. ... skipped "the server's own"
Ran 3 tests in 0.200s
"""


class ListSkips(unittest.TestCase):
    def list(self, log):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "Testing" / "Temporary" / "LastTest.log"
            path.parent.mkdir(parents=True)
            path.write_text(log)
            return subprocess.run([SOURCES / "tests" / "list_skips", folder], capture_output=True, text=True,
                                  check=True).stdout

    def test_each_skip_has_its_reason(self):
        self.assertEqual(self.list(LOG), "cases: 6, skipped: 4\n"
                         "  Files.BusyFile: takes ten seconds\n"
                         "  Files.NoReason: no reason given\n"
                         "  e2e.mail.test_two: no \"server\" here\n"
                         "  e2e.mail.test_three: the server's own\n")

    def test_no_skip_is_said_too(self):
        self.assertEqual(self.list("1/1 Testing: a_test\n[ RUN      ] A.B\n[       OK ] A.B (0 ms)\n"), "cases: 1, skipped: 0\n")


if __name__ == "__main__":
    unittest.main()
