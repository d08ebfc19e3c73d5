# SPDX-License-Identifier: GPL-3.0-or-later
"""packaging/install, with stubs in the place of Debian's programs: what it installs, and what it leaves alone."""

import os
import pathlib
import subprocess
import tempfile
import unittest

SOURCES = pathlib.Path(os.environ["OXC_SOURCES"])
# Each notes how it is called. What is installed already stands in the file `installed`, as dpkg-query lists it.
STUB = '#!/bin/sh\necho "$(basename "$0") $*" >> "%s/calls"\n'
DPKG_QUERY = '#!/bin/bash\nif [ $# -gt 3 ]; then grep -q "^install ok installed $4 " "%s/installed" && ' \
             'echo "install ok installed"; else cut -d " " -f 1-3,5- "%s/installed"; fi\n'


class InstallPackages(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        for name in ("apt-get", "debconf-set-selections", "tee", "chmod", "rm", "systemctl"):
            self.program(name, STUB % self.folder)
        self.program("id", "#!/bin/sh\necho 0\n")
        self.program("dpkg-query", DPKG_QUERY % (self.folder, self.folder))

    def program(self, name, text):
        path = self.folder / name
        path.write_text(text)
        path.chmod(0o755)

    def install(self, *installed):
        """Runs it where these packages are installed, each with what it provides; returns output and calls."""
        (self.folder / "installed").write_text("".join("install ok installed %s %s\n" % one for one in installed))
        done = subprocess.run([SOURCES / "packaging" / "install", "test"], capture_output=True, text=True, check=False,
                              env={**os.environ, "PATH": "%s:%s" % (self.folder, os.environ["PATH"])})
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        calls = self.folder / "calls"
        return done.stdout, calls.read_text().splitlines() if calls.exists() else []

    def packages(self):
        listed = subprocess.run([SOURCES / "packaging" / "install", "--list", "test"], capture_output=True, text=True,
                                check=True).stdout.split()
        return [(name, "") for name in listed]

    def installation(self, calls):
        return [call for call in calls if call.startswith("apt-get install ")][0].split()

    def test_missing_packages_are_installed_without_a_question_and_none_is_removed(self):
        _, calls = self.install()
        words = self.installation(calls)
        self.assertIn("postfix", words)
        self.assertIn("--no-remove", words)
        self.assertIn("-y", words)
        self.assertIn("debconf-set-selections ", calls)
        self.assertLess(calls.index("debconf-set-selections "), calls.index(" ".join(words)))

    def test_mail_server_of_the_machine_stays(self):
        said, calls = self.install(("exim4-daemon-light", "default-mta, mail-transport-agent"))
        self.assertIn("Postfix is not installed, as this machine has another mail server; its tests are skipped", said)
        self.assertNotIn("postfix", self.installation(calls))
        self.assertNotIn("debconf-set-selections ", calls)

    def test_nothing_is_done_when_nothing_is_missing(self):
        _, calls = self.install(*self.packages())
        self.assertEqual(calls, [])


if __name__ == "__main__":
    unittest.main()
