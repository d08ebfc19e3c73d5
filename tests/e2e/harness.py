# SPDX-License-Identifier: GPL-3.0-or-later
"""The staged program in an application folder of its own: schedules put in as rows, the scheduler run for real, its
mails read back."""

import email
import email.policy
import os
import pathlib
import re
import shutil
import signal
import sqlite3
import subprocess
import tempfile
import time
import unittest

STAGE = pathlib.Path(os.environ.get("OXC_STAGE", "build/release/stage")).resolve()
SUPPORT = pathlib.Path(__file__).resolve().parent.parent / "support"

MIME_TYPES = {
    "pdf": "application/pdf",
    "doc": "application/msword",
    "rtf": ("application/rtf", "text/rtf"),
    "docx": "application/vnd.openxmlformats-officedocument.wordprocessingml.document",
    "xls": "application/vnd.ms-excel",
    "xlsx": "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet",
    "htm": "text/html",
    "html": "text/html",
    "csv": "text/csv",
    "png": "image/png",
}


def another_time(**moment):
    """The environment of a program whose clocks are others, as `moment` sets them (FAKETIME=... or the like). Files keep
    their times: fontconfig would take its cache for outdated, read every font and write the cache again, which is then
    outdated for all other programs."""
    # Not by the wrapper `faketime`, whose semaphore may meet that of another process which was killed.
    return dict(moment, LD_PRELOAD="/usr/lib/x86_64-linux-gnu/faketime/libfaketime.so.1", NO_FAKE_STAT="1", TZ="Etc/UTC")


def another_clock(**moment):
    """The same for the wall clock alone: timers keep their pace."""
    return dict(another_time(**moment), FAKETIME_DONT_FAKE_MONOTONIC="1", DONT_FAKE_MONOTONIC="1")


def report_formats():
    """The words of the export formats, as the usage of oxc-report lists them."""
    usage = subprocess.run([STAGE / "oxc-report", "--help"], capture_output=True, text=True, check=True).stdout
    return re.search(r" -f ([a-z|]+) ", usage).group(1).split("|")


def link_or_copy(source, target):
    """A program is a link, as forty megabytes for each test are slow to copy; what a test may change is a copy."""
    if os.access(source, os.X_OK):
        try:
            return os.link(source, target)
        except OSError:
            pass  # on another file system
    return shutil.copy2(source, target)


def replace_program(source, target):
    """Not into the file that is there: that would be the stage's."""
    target.unlink()
    shutil.copy(source, target)


def system_path(path):
    """A machine's path as the system writes it."""
    return "Z:" + str(path).replace("/", "\\")


class Courier:
    """An application folder, settings, mail profile and outbox; gone with the test."""

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="oxc-e2e-"))
        self.app = self.folder / "app"
        shutil.copytree(STAGE, self.app, symlinks=True, copy_function=link_or_copy)
        self.outbox = self.folder / "outbox"
        self.config = self.folder / "config" / "oxbow-courier"
        self.config.mkdir(parents=True)
        self.database = self.app / "PressroomLive.dat"
        shutil.copy(self.app / "Pressroom.dat", self.database)
        self.process = None
        self.log = open(self.folder / "log", "w+b")
        self.extra_environment = {}
        self.profile("Transport=outbox\nOutboxFolder=%s\n" % self.outbox)
        self.settings(Poll="1", AlertWho="boss@example.com")

    def profile(self, text):
        (self.config / "mail.ini").write_text("[Profile]\nFrom=Reports <reports@example.com>\n" + text)

    def settings(self, **values):
        lines = ["Windows Registry Editor Version 5.00", "",
                 "[HKEY_LOCAL_MACHINE\\Software\\Norvale\\Oxbow Courier]", '"FirstRun"="False"']
        lines += ['"%s"="%s"' % (name, value) for name, value in values.items()]
        (self.config / "settings.reg").write_text("\n".join(lines) + "\n")

    def environment(self):
        environment = {k: v for k, v in os.environ.items()
                       if k not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "OXC_HOME")}
        environment.update(XDG_CONFIG_HOME=str(self.folder / "config"), XDG_DATA_HOME=str(self.folder / "data"),
                           HOME=str(self.folder), OXC_HOME=str(self.app))
        environment.update(self.extra_environment)
        return environment

    def write_days_year_first(self):
        """Whatever region the tests run in."""
        self.extra_environment.update(LC_ALL="C.UTF-8", LANGUAGE="")

    def start(self, prefix=(), arguments=("-sched",)):
        self.process = subprocess.Popen([*prefix, str(self.app / "oxc"), *arguments], stdout=self.log,
                                        stderr=subprocess.STDOUT, env=self.environment())
        return self.process

    def schedule_command(self, *arguments):
        """Runs oxc-schedule on the folder; returns the finished process."""
        return subprocess.run([str(self.app / "oxc-schedule"), *arguments], env=self.environment(),
                              capture_output=True, text=True, timeout=60, check=False)

    def start_ticking(self):
        """A scheduler past its start-up, where a failed package would have ended all polling."""
        self.start()
        # The first poll may be that of the start-up; rows inserted after it wait for a tick.
        for _ in range(2):
            key = self.package(MailBatch="F")
            self.wait(lambda: str(key) in [row[0] for row in self.package_history()], what="tick")
        self.sql("delete from ReportBatch")
        self.sql("delete from ReportBatchHstry")

    def stop(self):
        if self.process and self.process.poll() is None:
            self.process.send_signal(signal.SIGTERM)
            self.process.wait(10)

    def close(self):
        if self.process and self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        self.log.close()
        shutil.rmtree(self.folder, ignore_errors=True)

    def said(self):
        return (self.folder / "log").read_text(errors="replace")

    def sentences(self):
        """What was said besides the events of a scheduler, which have a level."""
        return re.sub(r"(?m)^[-\d]{10} [:\d]{8} (info|notice|error) [a-z-]+ .*\n", "", self.said())

    def sql(self, statement, *values):
        connection = sqlite3.connect(self.database, timeout=10)
        try:
            with connection:
                return connection.execute(statement, values).fetchall()
        finally:
            connection.close()

    def schedule(self, report="sales_by_region.rpt", **columns):
        """Puts a due schedule in; returns its key. The report is a sample's name or a path."""
        path = pathlib.Path(report)
        if not path.is_absolute():
            path = self.app / "samples" / report
        today = time.strftime("%Y-%m-%d")
        row = dict(SendTo="ann@example.com;", Subject="Figures", Message="Good morning", StartDate="2000-01-01",
                   EndDate="3000-12-31", RunAt="00:00", Frequency="Daily", NextRun=today, Client="NONE",
                   ReportPath=system_path(path), ReportTitle="Figures", SelectionForm="",
                   Format="Acrobat Format (PDF)", Parent="Desktop", OriginalPath=system_path(path), UserName="",
                   Password="", LoginReq="F")
        row.update(columns)
        names = ",".join("[%s]" % name for name in row)
        marks = ",".join("?" * len(row))
        self.sql("insert into ReportScheduler(%s) values(%s)" % (names, marks), *row.values())
        return self.sql("select max(ReportID) from ReportScheduler")[0][0]

    def parameters(self, key, *values):
        for number, value in enumerate(values, 1):
            self.sql("insert into ReportParameter values(?,?,?)", key, "P%d" % number, value)

    def package(self, reports=(), **columns):
        """Puts a due package in; returns its key. A report is (format word, sample's name or path, values)."""
        destination = self.folder / "packages"
        destination.mkdir(exist_ok=True)
        row = dict(ClientName="NONE", BatchName="Pack", Recipients="ann@example.com;bob@example.com;",
                   Frequency="Daily", RunTime="00:00", StartDate="2000-01-01", EndDate="3000-12-31",
                   NextRunDate=time.strftime("%Y-%m-%d"), Subject="Package", Message="Good morning",
                   Destination=system_path(destination) + "\\", MailBatch="T")
        row.update(columns)
        connection = sqlite3.connect(self.database, timeout=10)
        # Whole or not at all: a poll that falls between must not see half a package.
        with connection:
            marks = ",".join("?" * len(row))
            key = connection.execute("insert into ReportBatch(%s) values(%s)" % (",".join(row), marks),
                                     list(row.values())).lastrowid
            for number, (word, report, *values) in enumerate(reports, 1):
                self._package_report(connection, key, number, word, report, values)
        connection.close()
        return key

    def _package_report(self, connection, key, number, word, report, values):
        path = pathlib.Path(report)
        if not path.is_absolute():
            path = self.app / "samples" / report
        detail = connection.execute(
            "insert into ReportBatchDtls(ReportID, ReportTitle, ReportPath, ReportFormat) values(?,?,?,?)",
            (key, "%d>%s" % (number, path.name), system_path(path), word)).lastrowid
        for value in values:
            connection.execute("insert into ReportBatchPar(ReportID, DetailID, ParValue) values(?,?,?)",
                               (key, detail, value))

    def package_files(self):
        """Content by name of what packages left in their folder."""
        return {path.name: path.read_bytes() for path in sorted((self.folder / "packages").iterdir())}

    def package_history(self):
        return self.sql("select ReportID, LastRun, Success, ErrMsg from ReportBatchHstry order by rowid")

    def package_next_run(self, key):
        return self.sql("select NextRunDate from ReportBatch where ReportID = ?", key)[0][0]

    def history(self, key=None):
        rows = self.sql("select ReportID, LastRun, Status, ErrMsg from ReportHistory")
        return [row for row in rows if key is None or row[0] == key]

    def next_run(self, key):
        return self.sql("select NextRun from ReportScheduler where ReportID = ?", key)[0][0]

    def wait(self, condition, seconds=30, what="the expected state"):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            if condition():
                return
            if self.process and self.process.poll() is not None:
                if condition():
                    return
                raise AssertionError("the program ended with %s:\n%s" % (self.process.returncode, self.said()))
            time.sleep(0.05)
        raise AssertionError("no %s within %s s; history %s, of packages %s; said:\n%s" % (
            what, seconds, self.history(), self.package_history(), self.said()))

    def settle(self, seconds=10):
        """Waits until the program waits: its first thread sleeps, and has used no processor time for 0.2 s.

        A key that comes while a dialog closes goes to the window as it was before: on a busy machine that takes
        longer than any fixed pause."""
        end, still, before = time.monotonic() + seconds, 0, None
        while still < 4 and time.monotonic() < end:
            try:
                stat = pathlib.Path("/proc/%d/stat" % self.process.pid).read_text()
            except FileNotFoundError:
                return  # it has ended
            fields = stat.rpartition(")")[2].split()
            now = fields[11:13]  # user and system time
            still = still + 1 if fields[0] == "S" and now == before else 0
            before = now
            time.sleep(0.05)

    def run_until_history(self, count=1, seconds=30):
        self.start()
        self.wait(lambda: len(self.history()) >= count, seconds, "%d history rows" % count)
        self.stop()

    def run_until_package_history(self, count=1, seconds=60):
        """A row is written last of all: what it describes is there by then, but for the alert of a failure."""
        self.start()
        self.wait(lambda: len(self.package_history()) >= count, seconds, "%d history rows of packages" % count)
        self.stop()

    def mails(self):
        return read_mails(self.outbox)


def read_mails(folder):
    mails = []
    for path in sorted(pathlib.Path(folder).glob("*.eml")):
        with open(path, "rb") as file:
            mails.append(email.message_from_binary_file(file, policy=email.policy.default))
    return mails


def attachment(mail):
    parts = list(mail.iter_attachments())
    assert len(parts) == 1, parts
    return parts[0].get_filename(), parts[0].get_content_type(), parts[0].get_payload(decode=True)


def pdf_text(data):
    with tempfile.NamedTemporaryFile(suffix=".pdf") as file:
        file.write(data)
        file.flush()
        return subprocess.run(["pdftotext", "-layout", file.name, "-"], check=True, capture_output=True,
                              text=True).stdout


class CourierTest(unittest.TestCase):
    def setUp(self):
        self.courier = Courier()
        self.addCleanup(self.courier.close)
