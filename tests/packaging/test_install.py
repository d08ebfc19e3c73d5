# SPDX-License-Identifier: GPL-3.0-or-later
"""What `cmake --install` leaves, and that the programs work from there: with DESTDIR, and under another prefix."""

import os
import pathlib
import re
import shutil
import stat
import subprocess
import tempfile
import unittest

from usage import BUILD, PROGRAMS

CMAKE = os.environ.get("OXC_CMAKE", "cmake")
DOCS = pathlib.Path(__file__).resolve().parent.parent.parent / "docs"
SHARE = "share/oxbow-courier/"
SAMPLES = ("invoice.rpt", "order_list.rpt", "sales.db", "sales_by_region.rpt", "sales_charts.rpt", "summary.rpt",
           "targets.rpt")
# Every file besides those of single programs.
FILES = {
    "lib/systemd/system/oxbow-courier.service",
    "lib/systemd/user/oxbow-courier.service",
    "lib/sysusers.d/oxbow-courier.conf",
    "lib/tmpfiles.d/oxbow-courier.conf",
    "share/applications/org.oxbowcourier.design.desktop",
    "share/applications/org.oxbowcourier.oxc.desktop",
    *("share/doc/oxbow-courier/" + str(guide.relative_to(DOCS)) for guide in DOCS.rglob("*.*")
      if guide.suffix in (".md", ".png", ".svg")),
    "share/icons/hicolor/scalable/apps/oxbow-courier.svg",
    "share/man/man5/oxbow-courier-mail.5",
    "share/man/man5/oxbow-courier-reports.5",
    "share/man/man5/oxbow-courier-settings.5",
    "share/metainfo/org.oxbowcourier.oxc.metainfo.xml",
    "share/mime/packages/oxbow-courier.xml",
    SHARE + "Oxbow Courier.chm",
    SHARE + "Pressroom.dat",
    SHARE + "back.avi",
    *(SHARE + "samples/" + name for name in SAMPLES),
    *(f"share/icons/hicolor/{size}x{size}/apps/oxbow-courier.png" for size in (16, 22, 24, 32, 48, 64, 128, 256)),
}


def install(*arguments, **variables):
    # The administrator's umask does not decide who can read.
    subprocess.run([CMAKE, "--install", BUILD, *arguments], check=True, capture_output=True, umask=0o077,
                   env={**os.environ, **variables})


class Installed(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp(prefix="oxc-install-"))
        cls.addClassCleanup(shutil.rmtree, cls.folder, ignore_errors=True)
        cls.root = cls.folder / "root"
        install("--prefix", "/usr", DESTDIR=str(cls.root))
        cls.prefix = cls.root / "usr"

    def setUp(self):
        self.home = pathlib.Path(tempfile.mkdtemp(dir=self.folder))
        self.application = self.home / ".local" / "share" / "oxbow-courier"

    def environment(self):
        """A user's at the first login, without a display."""
        foreign = ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "OXC_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME")
        return {**{name: value for name, value in os.environ.items() if name not in foreign}, "HOME": str(self.home)}

    def run_program(self, name, *arguments, prefix=None, **variables):
        return subprocess.run([(prefix or self.prefix) / "bin" / name, *arguments], capture_output=True, text=True,
                              env={**self.environment(), **variables}, timeout=120, cwd=self.home)

    def export(self, report, **places):
        out = self.home / "out.pdf"
        result = self.run_program("oxc-report", "export", str(report), "-f", "pdf", "-o", str(out), **places)
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "", ""))
        text = subprocess.run(["pdftotext", out, "-"], check=True, capture_output=True, text=True).stdout
        self.assertTrue(text.startswith("Sales by region\n"), text[:100])

    def start_scheduler(self):
        """Starts it for the first time, and ends it once it has made what it needs."""
        with open(self.home / "log", "w+b") as log:
            process = subprocess.Popen([self.prefix / "bin" / "oxc", "-sched"], stdout=log, stderr=log,
                                       env=self.environment())
            settings = self.home / ".config" / "oxbow-courier" / "settings.reg"
            try:
                for _ in range(600):
                    if " notice start " in (self.home / "log").read_text():
                        self.assertIn('"FirstRun"="False"', settings.read_text())
                        break
                    self.assertIsNone(process.poll(), (self.home / "log").read_text())
                    try:
                        process.wait(0.1)
                    except subprocess.TimeoutExpired:
                        pass
            finally:
                process.terminate()
                code = process.wait(30)
        said = (self.home / "log").read_text()
        self.assertEqual(code, 0, said)
        # Its begin and its end, and no complaint.
        self.assertRegex(said, r"^\S+ \S+ notice start [^\n]*\n\S+ \S+ notice stop reason=SIGTERM\n$")

    def test_every_file_is_in_its_place_and_nothing_else(self):
        found = {str(path.relative_to(self.prefix)) for path in self.prefix.rglob("*") if not path.is_dir()}
        expected = FILES | {f"bin/{name}" for name in PROGRAMS} | {f"share/man/man1/{name}.1" for name in PROGRAMS}
        expected |= {f"share/bash-completion/completions/{name}" for name in PROGRAMS}
        self.assertEqual(found, expected)
        self.assertEqual({path.name for path in self.root.iterdir()}, {"usr"})

    def test_every_program_of_the_stage_is_installed(self):
        staged = {path.name for path in (BUILD / "stage").iterdir() if path.is_file() and os.access(path, os.X_OK)}
        self.assertEqual(staged, set(PROGRAMS))

    def test_only_programs_can_be_run_and_nobody_else_can_write(self):
        for path in self.prefix.rglob("*"):
            mode = stat.S_IMODE(path.stat().st_mode)
            usual = 0o755 if path.is_dir() or path.parent.name == "bin" else 0o644
            self.assertEqual(oct(mode), oct(usual), path)

    def test_no_file_names_the_folder_of_the_build(self):
        for path in (self.prefix / "bin").iterdir():
            said = subprocess.run(["readelf", "-d", path], check=True, capture_output=True, text=True).stdout
            self.assertNotRegex(said, "RPATH|RUNPATH", path)
        for path in self.prefix.rglob("*"):
            if path.is_file() and path.parent.name != "bin":
                self.assertNotIn(str(BUILD).encode(), path.read_bytes(), path)

    def test_programs_say_their_version(self):
        for name in PROGRAMS:
            if name == "oxc":
                continue  # whatever stands on its command line means the scheduler
            result = self.run_program(name, "--version")
            self.assertEqual(result.returncode, 0, result.stderr)
            self.assertRegex(result.stdout, rf"^{name} \d+\.\d+\.\d+\n$")
        self.assertFalse(self.application.exists())

    def test_a_sample_is_exported_from_where_it_is_installed(self):
        self.export(self.prefix / SHARE / "samples" / "sales_by_region.rpt")

    def test_reports_are_exported_without_a_home(self):
        # Nobody can make a folder there, root either.
        self.export(self.prefix / SHARE / "samples" / "sales_by_region.rpt", HOME="/proc/nowhere")

    def test_the_first_start_makes_the_application_folder(self):
        self.start_scheduler()
        # The signal may come in the middle of a poll, with an unfinished file.
        names = {str(path.relative_to(self.application)) for path in self.application.rglob("*")
                 if not path.name.startswith(".oxc-part-")}
        # What lives with a scheduler only.
        names -= {"PressroomLive.polled", "PressroomLive.running", "PressroomLive.dat-wal", "PressroomLive.dat-shm"}
        self.assertEqual(names, {"Cache", "output", "samples", "Oxbow Courier.chm", "Pressroom.dat",
                                 "PressroomLive.dat", "back.avi", *("samples/" + name for name in SAMPLES)})
        for path in (self.application, *(self.application / name for name in ("Cache", "output", "samples"))):
            self.assertEqual(oct(stat.S_IMODE(path.stat().st_mode)), oct(0o700), path)
        self.assertEqual(oct(stat.S_IMODE((self.application / "PressroomLive.dat").stat().st_mode)), oct(0o600))
        self.export(self.application / "samples" / "sales_by_region.rpt")

    def test_the_desktop_starts_the_installed_program(self):
        self.start_scheduler()
        entry = (self.home / ".config" / "autostart" / "OXC.desktop").read_text()
        command = re.search(r"^Exec=(.*)$", entry, re.MULTILINE).group(1)
        self.assertIn(str(self.prefix / "bin" / "oxc"), command)
        self.assertNotIn("OXC_HOME", command)

    def test_an_application_folder_that_is_there_stays(self):
        self.start_scheduler()
        kept = self.application / "samples" / "sales_by_region.rpt"
        kept.write_text("mine")
        shutil.rmtree(self.home / ".config")
        self.start_scheduler()
        self.assertEqual(kept.read_text(), "mine")

    def test_another_prefix_serves_as_well(self):
        prefix = self.folder / "opt" / "oxbow courier"
        install("--prefix", str(prefix))
        found = sorted(str(path.relative_to(prefix)) for path in prefix.rglob("*"))
        self.assertEqual(found, sorted(str(path.relative_to(self.prefix)) for path in self.prefix.rglob("*")))
        moved = self.folder / "moved"
        prefix.rename(moved)
        result = self.run_program("oxc-report", "info", str(moved / SHARE / "samples" / "invoice.rpt"), prefix=moved)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertTrue((self.application / "Pressroom.dat").exists())


if __name__ == "__main__":
    unittest.main()
