# SPDX-License-Identifier: GPL-3.0-or-later
"""The units of an installation, as systemd's own tools judge them without a running systemd."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

from usage import BUILD, TOP

CMAKE = os.environ.get("OXC_CMAKE", "cmake")
ANALYZE = shutil.which("systemd-analyze")
UNIT = "oxbow-courier.service"


@unittest.skipUnless(ANALYZE, "systemd-analyze is not installed (package systemd)")
class Units(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = pathlib.Path(tempfile.mkdtemp(prefix="oxc-units-"))
        cls.addClassCleanup(shutil.rmtree, folder, ignore_errors=True)
        cls.prefix = folder / "opt" / "oxbow 100% courier"
        subprocess.run([CMAKE, "--install", BUILD, "--prefix", cls.prefix], check=True, capture_output=True)
        cls.runtime = folder / "runtime"
        cls.runtime.mkdir(mode=0o700)

    def analyze(self, *arguments):
        environment = {**os.environ, "XDG_RUNTIME_DIR": str(self.runtime), "SYSTEMD_COLORS": "0", "SYSTEMD_PAGER": ""}
        result = subprocess.run([ANALYZE, *arguments], capture_output=True, text=True, env=environment, timeout=120)
        return result.returncode, result.stdout + result.stderr

    def text(self, kind):
        return (self.prefix / "lib" / "systemd" / kind / UNIT).read_text()

    def test_units_are_valid(self):
        for kind in ("system", "user"):
            unit = self.prefix / "lib" / "systemd" / kind / UNIT
            self.assertEqual(self.analyze("verify", "--man=no", "--" + kind, unit), (0, ""), kind)

    def test_they_start_the_installed_program(self):
        for kind in ("system", "user"):
            command = re.search(r"^ExecStart=(.*)$", self.text(kind), re.MULTILINE).group(1)
            self.assertEqual(command.replace("%%", "%"), '"%s" -sched' % (self.prefix / "bin" / "oxc"))
            self.assertNotIn("@", re.sub("@system-service|@privileged|@resources", "", self.text(kind)))

    def test_the_systems_service_is_shut_off(self):
        unit = self.prefix / "lib" / "systemd" / "system" / UNIT
        code, said = self.analyze("security", "--offline=true", "--threshold=30", unit)
        exposure = float(re.search(r"Overall exposure level for \S+: ([\d.]+)", said).group(1))
        self.assertLess(exposure, 3.0)
        self.assertEqual(code, 0, said)

    def test_user_and_folders_are_those_of_the_unit(self):
        unit = self.text("system")
        user = re.search(r"^User=(.*)$", unit, re.MULTILINE).group(1)
        sysusers = (self.prefix / "lib" / "sysusers.d" / "oxbow-courier.conf").read_text()
        self.assertIn('u %s - "Oxbow Courier scheduler" /var/lib/%s\n' % (user, user), sysusers)
        tmpfiles = (self.prefix / "lib" / "tmpfiles.d" / "oxbow-courier.conf").read_text()
        folders = {re.search(r"^ReadWritePaths=(.*)$", unit, re.MULTILINE).group(1),
                   "/var/lib/" + re.search(r"^StateDirectory=(.*)$", unit, re.MULTILINE).group(1)}
        self.assertEqual(set(re.findall(rf"^d (\S+) 0700 {user} {user} -$", tmpfiles, re.MULTILINE)), folders)

    @unittest.skipUnless(shutil.which("systemd-sysusers") and os.getuid() == 0, "only root may make users of a tree")
    def test_sysusers_and_tmpfiles_make_them(self):
        with tempfile.TemporaryDirectory(prefix="oxc-root-") as root:
            for part, tool in (("sysusers.d", "systemd-sysusers"), ("tmpfiles.d", "systemd-tmpfiles")):
                target = pathlib.Path(root, "usr", "lib", part)
                target.mkdir(parents=True)
                shutil.copy(self.prefix / "lib" / part / "oxbow-courier.conf", target)
            pathlib.Path(root, "etc").mkdir()
            subprocess.run(["systemd-sysusers", "--root=" + root], check=True, capture_output=True)
            subprocess.run(["systemd-tmpfiles", "--create", "--root=" + root], check=True, capture_output=True)
            account = re.search(r"^oxbow-courier:x:(\d+):\d+:Oxbow Courier scheduler:/var/lib/oxbow-courier:(.*)$",
                                pathlib.Path(root, "etc", "passwd").read_text(), re.MULTILINE)
            self.assertTrue(account.group(2).endswith("nologin"), account.group())
            for name in ("etc/oxbow-courier", "var/lib/oxbow-courier"):
                made = pathlib.Path(root, name).stat()
                self.assertEqual((oct(made.st_mode & 0o7777), made.st_uid), ("0o700", int(account.group(1))), name)


    def test_the_guide_has_their_exposure(self):
        if "systemd 252 " not in self.analyze("--version")[1]:
            self.skipTest("other versions of systemd count otherwise")
        told = {}
        for kind in ("system", "user"):
            _, said = self.analyze("security", "--offline=true", self.prefix / "lib" / "systemd" / kind / UNIT)
            told[kind] = re.search(r"Overall exposure level for \S+: ([\d.]+)", said).group(1)
        guide = " ".join((TOP / "docs" / "service.md").read_text().split())
        self.assertIn("systemd 252 gives the system's unit an exposure of %(system)s and the user's unit %(user)s, of 10." % told,
                      guide)


class Guide(unittest.TestCase):
    def test_the_guide_lists_the_events_of_the_sources(self):
        guide = (TOP / "docs" / "service.md").read_text()
        listed = set(re.findall(r"`([a-z-]+)`", "".join(re.findall(r"^\| (`.*?) \| (?:info|notice|error|warning)", guide,
                                                                   re.MULTILINE))))
        written = set()
        for path in (TOP / "src").rglob("*.cpp"):
            text = path.read_text()
            written |= set(re.findall(r'journal::Level::\w+,\s*"([a-z-]+)"', text))
            written |= set(re.findall(r'"((?:run|package|poll)-[a-z-]+)"', text) if path.name == "RunLog.cpp" else [])
        self.assertEqual(listed, written)


if __name__ == "__main__":
    unittest.main()
