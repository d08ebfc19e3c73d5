# SPDX-License-Identifier: GPL-3.0-or-later
"""The scheduler as a service: what it tells its service manager, its signals, its stop and its log."""

import ctypes
import json
import os
import pathlib
import re
import shutil
import signal
import socket
import subprocess
import tempfile
import time
import unittest

from harness import CourierTest
from mail_server import MailTest
from service_manager import UNITS, Manager, unit_command, unit_environment, unit_values

DATED = r"\d{4}-\d\d-\d\d \d\d:\d\d:\d\d "


def calls_of(group):
    """The names of the calls in a group of systemd's, and of a single call itself."""
    if not group.startswith("@"):
        return {group}
    said = subprocess.run(["systemd-analyze", "syscall-filter", group], capture_output=True, text=True,
                          check=True).stdout
    names = [line.strip() for line in said.splitlines()[1:] if line.strip() and "#" not in line]
    return set().union(*(calls_of(name) for name in names))


class ServiceTest(CourierTest):
    """A scheduler under a manager of the test's own, in text unless the arguments say otherwise."""

    def setUp(self):
        super().setUp()
        self.manager = Manager(self.courier.folder)
        self.addCleanup(self.manager.close)
        self.courier.extra_environment["NOTIFY_SOCKET"] = self.manager.path
        self.courier.settings(Poll="15", AlertWho="boss@example.com")

    def start(self, *arguments, watchdog=None, ready=True):
        if watchdog:
            self.courier.extra_environment["WATCHDOG_USEC"] = str(int(watchdog * 1e6))
        process = self.courier.start(arguments=("-sched", *arguments))
        if ready:
            self.courier.wait(lambda: "READY=1" in self.manager.lines(), what="READY=1")
        return process

    def events(self, name):
        """The facts of every event of this name, in text."""
        return re.findall(rf"^{DATED}\w+ {name}(?: (.*))?$", self.courier.said(), re.MULTILINE)

    def wait_for_event(self, name, count=1):
        self.courier.wait(lambda: len(self.events(name)) >= count, what="event " + name)
        return self.events(name)[count - 1]


class Notifications(ServiceTest):
    def test_ready_comes_after_the_first_poll_and_stopping_at_the_end(self):
        key = self.courier.schedule()
        process = self.start()
        lines = self.manager.lines()
        self.assertEqual([row[2] for row in self.courier.history(key)], ["Success"])
        self.assertEqual(self.manager.statuses()[0], 'Running schedule %d "Figures"' % key)
        self.assertRegex(self.manager.statuses()[1],
                         r"^Waiting; the last poll ended [\d:]{8}; since the start 1 delivered, 0 failed$")
        self.assertLess(lines.index("EXTEND_TIMEOUT_USEC=14400000000"), lines.index("READY=1"))
        self.assertNotIn("STOPPING=1", lines)
        process.terminate()
        self.assertEqual(process.wait(5), 0)
        self.courier.wait(lambda: self.manager.lines()[-1] == "STOPPING=1", what="STOPPING=1")

    def test_the_loop_feeds_the_watchdog_at_half_its_time(self):
        process = self.start(watchdog=1)
        time.sleep(3)
        moments = self.manager.moments("WATCHDOG=1")
        self.assertIn(len(moments), range(4, 8), moments)
        self.assertLess(max(late - early for early, late in zip(moments, moments[1:])), 1)
        # A loop that does not turn shows no life.
        process.send_signal(signal.SIGSTOP)
        time.sleep(0.2)
        fed = len(self.manager.moments("WATCHDOG=1"))
        time.sleep(2)
        self.assertEqual(len(self.manager.moments("WATCHDOG=1")), fed)
        process.send_signal(signal.SIGCONT)
        self.courier.wait(lambda: len(self.manager.moments("WATCHDOG=1")) > fed, what="sign of life")
        self.courier.stop()

    def test_a_run_that_yields_shows_life(self):
        # Each page has a pause of up to a second before its mail.
        keys = [self.courier.schedule(Format="DHTML", NextRun="2999-01-01") for _ in range(4)]
        self.start(watchdog=0.1)
        self.courier.sql("update ReportScheduler set NextRun = '2026-01-01'")
        self.courier.settings(Poll="0", AlertWho="boss@example.com")
        self.courier.process.send_signal(signal.SIGHUP)
        self.courier.wait(lambda: "WATCHDOG_USEC=100000" in self.manager.lines(), what="end of a poll")
        begin = self.manager.moments('STATUS=Running schedule %d "Figures"' % keys[0])[0]
        end = self.manager.moments("WATCHDOG_USEC=100000")[0]
        self.assertGreater(end - begin, 2)
        during = [moment for moment in self.manager.moments("WATCHDOG=1") if begin < moment < end]
        self.assertGreater(len(during), (end - begin) / 0.1)
        self.courier.stop()

    def test_a_run_may_take_longer_than_the_watchdog_waits(self):
        self.start(watchdog=0.4)
        lines = self.manager.lines()
        self.assertNotIn("WATCHDOG_USEC=14400000000", lines)
        self.courier.settings(Poll="0", AlertWho="boss@example.com")
        self.courier.process.send_signal(signal.SIGHUP)
        key = self.courier.schedule()
        self.courier.wait(lambda: self.courier.history(key), what="history row")
        self.courier.wait(lambda: "WATCHDOG_USEC=400000" in self.manager.lines(), what="usual watchdog")
        lines = self.manager.lines()
        self.assertLess(lines.index("WATCHDOG_USEC=14400000000"), lines.index("WATCHDOG_USEC=400000"))
        self.courier.stop()

    def test_a_socket_without_a_file(self):
        name = "oxc-test-%d" % os.getpid()
        with socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM) as listener:
            listener.bind("\0" + name)
            listener.settimeout(30)
            self.courier.extra_environment["NOTIFY_SOCKET"] = "@" + name
            self.start(ready=False)
            while listener.recv(4096) != b"READY=1":
                pass
        self.courier.stop()

    def test_polling_that_has_stopped_asks_for_a_new_start(self):
        self.courier.package([("Acrobat", "/nowhere/gone.rpt")], BatchName="Month end")
        process = self.start(ready=False)
        self.courier.wait(lambda: "WATCHDOG=trigger" in self.manager.lines(), what="WATCHDOG=trigger")
        self.assertNotIn("READY=1", self.manager.lines())
        said = self.courier.said()
        self.assertIn("Polling has stopped, as the first poll of the packages failed", said)
        self.assertRegex(self.events("run-failed")[0],
                         r'^package=1 title="Month end" outcome=error routine=BatchReport error="File not found.*" '
                         r"number=53 seconds=\d+\.\d{3}$")
        self.assertIsNone(process.poll())
        self.courier.stop()

    def test_an_end_by_an_error_names_the_schedule_that_was_running(self):
        self.start()
        self.courier.sql("drop table ReportHistory")
        self.courier.settings(Poll="0", AlertWho="boss@example.com")
        self.courier.process.send_signal(signal.SIGHUP)
        key = self.courier.schedule(ReportPath="Z:\\nowhere\\gone.rpt")
        self.assertEqual(self.courier.process.wait(30), 1)
        self.assertRegex(self.events("stop")[0],
                         r'^schedule=%d title=Figures reason="run-time error" number=-2147217865$' % key)


class Signals(ServiceTest):
    def test_sighup_reads_interval_and_alert_address_again(self):
        self.start()
        self.courier.settings(Poll="1", AlertWho="chief@example.com")
        self.courier.process.send_signal(signal.SIGHUP)
        self.assertEqual(self.wait_for_event("settings-read"), "poll=1 alert=chief@example.com")
        key = self.courier.schedule(ReportPath="Z:\\nowhere\\gone.rpt")
        # Far earlier than the fifteen seconds of the start.
        self.courier.wait(lambda: self.courier.history(key), 8, "history row")
        self.courier.wait(self.courier.mails, what="alert")
        self.assertEqual(self.courier.mails()[0]["To"], "chief@example.com")
        lines = self.manager.lines()
        reloading = next(number for number, line in enumerate(lines) if line == "RELOADING=1")
        self.assertRegex(lines[reloading + 1], r"^MONOTONIC_USEC=\d+$")
        self.assertEqual(lines[reloading + 2], "READY=1")
        self.courier.stop()

    def test_settings_that_cannot_be_taken_leave_those_that_are(self):
        self.start()
        self.courier.settings(Poll="often", AlertWho="chief@example.com")
        self.courier.process.send_signal(signal.SIGHUP)
        self.assertEqual(self.wait_for_event("settings-kept"), 'error="Type mismatch" number=13')
        self.courier.wait(lambda: self.manager.lines().count("READY=1") == 2, what="READY after the reading")
        self.courier.settings(Poll="1", AlertWho="boss@example.com")
        self.courier.process.send_signal(signal.SIGHUP)
        self.wait_for_event("settings-read")
        self.courier.stop()

    def test_settings_that_are_damaged_or_gone_leave_those_that_are(self):
        self.start()
        file = self.courier.config / "settings.reg"
        whole = file.read_text()
        for number, (text, what) in enumerate((("garbage[[[", "damaged"), (whole[:len(whole) // 2], "damaged"),
                                               (None, "missing or empty")), 1):
            file.unlink() if text is None else file.write_text(text)
            self.courier.process.send_signal(signal.SIGHUP)
            self.assertEqual(self.wait_for_event("settings-kept", number),
                             'error="The settings file \\"%s\\" is %s" number=75' % (file, what))
        self.assertEqual(self.events("settings-read"), [])
        self.courier.settings(Poll="1", AlertWho="boss@example.com")
        self.courier.process.send_signal(signal.SIGHUP)
        self.assertEqual(self.wait_for_event("settings-read"), "poll=1 alert=boss@example.com")
        self.courier.stop()

    def test_a_run_that_was_cut_off_is_named_at_the_next_start(self):
        # Its page has a pause of up to a second before its mail.
        keys = [self.courier.schedule(Format="DHTML") for _ in range(3)]
        self.start(ready=False)
        running = 'STATUS=Running schedule %d "Figures"' % keys[1]
        self.courier.wait(lambda: running in self.manager.lines(), what=running)
        self.courier.process.kill()
        self.courier.process.wait()
        self.start()
        self.assertEqual(self.events("run-cut-off"), ["schedule=%d title=Figures outcome=unknown" % keys[1]])
        self.assertEqual([row[2] for row in self.courier.history(keys[1])], ["Success"])
        self.assertFalse((self.courier.app / "PressroomLive.underway").exists())
        self.courier.stop()

    def test_sigusr1_writes_the_state(self):
        self.courier.write_days_year_first()
        done = self.courier.schedule()
        self.courier.schedule(ReportTitle="Month end", RunAt="07:30", NextRun="2999-01-31")
        self.start()
        self.courier.process.send_signal(signal.SIGUSR1)
        self.assertRegex(
            self.wait_for_event("state"),
            r'^since="[\d-]{10} [\d:]{8}" delivered=1 failed=0 last-poll="[\d-]{10} [\d:]{8}" '
            r'last-poll-seconds=\d+\.\d{3} next-due="%s 00:00:00" next-schedule=%d next-title=Figures outbox=1$'
            % (self.courier.next_run(done), done))
        self.courier.stop()

    def test_sigusr1_is_answered_in_the_middle_of_a_run(self):
        key = self.courier.schedule(Format="DHTML", ReportTitle="Slow page")
        self.start(ready=False)
        self.courier.wait(lambda: self.manager.statuses() == ['Running schedule %d "Slow page"' % key], what="run")
        self.courier.process.send_signal(signal.SIGUSR1)
        self.assertRegex(self.wait_for_event("state"),
                         r'^schedule=%d title="Slow page" since="[^"]+" delivered=0 failed=0 running=schedule '
                         r"running-seconds=\d+\.\d{3}$" % key)
        self.courier.stop()


class Stop(MailTest, ServiceTest):
    def mail_under_way(self, delay, **columns):
        """A scheduler whose report is with a server that answers after `delay` seconds."""
        server = self.serve("--mode", "late-data", "--delay", str(delay))
        self.use(server.port)
        key = self.courier.schedule(**columns)
        self.start(ready=False)
        talk = server.folder / "talk.log"
        self.courier.wait(lambda: talk.exists() and "DATA begun" in talk.read_text(), what="mail under way")
        time.sleep(0.3)
        return server, key

    def test_a_mail_under_way_is_delivered_and_recorded(self):
        server, key = self.mail_under_way(4)
        other = self.courier.schedule(ReportTitle="The next one")
        begin = time.monotonic()
        self.courier.process.terminate()
        self.assertEqual(self.courier.process.wait(30), 0)
        self.assertGreater(time.monotonic() - begin, 2)
        self.assertEqual(len(server.reports()), 1)
        self.assertEqual([row[2:] for row in self.courier.history(key)], [("Success", "None")])
        self.assertGreater(self.courier.next_run(key), time.strftime("%Y-%m-%d"))
        # The rest of the poll is for the next start.
        self.assertEqual(self.courier.history(other), [])
        self.assertEqual(self.wait_for_event("stopping"), "schedule=%d title=Figures reason=SIGTERM waits-for=mail "
                         "seconds=30.000" % key)
        self.assertEqual(self.wait_for_event("stop"), 'reason="the mail is recorded"')
        self.assertEqual(self.manager.lines().count("STOPPING=1"), 2)
        self.assertIn("Finishing a mail", self.manager.statuses())

    def test_a_page_that_the_system_mails_itself(self):
        server, key = self.mail_under_way(3, Format="DHTML")
        self.courier.process.terminate()
        self.assertEqual(self.courier.process.wait(30), 0)
        self.assertEqual(len(server.reports()), 1)
        self.assertEqual([row[2] for row in self.courier.history(key)], ["Success"])

    def test_a_package_under_way(self):
        server = self.serve("--mode", "late-data", "--delay", "3")
        self.use(server.port)
        key = self.courier.package([("Acrobat", "sales_by_region.rpt")])
        self.start(ready=False)
        talk = server.folder / "talk.log"
        self.courier.wait(lambda: talk.exists() and "DATA begun" in talk.read_text(), what="mail under way")
        self.courier.process.terminate()
        self.assertEqual(self.courier.process.wait(30), 0)
        self.assertEqual(len(server.messages()), 1)
        self.assertEqual([(row[0], row[3]) for row in self.courier.package_history()], [(str(key), None)])
        self.assertGreater(self.courier.package_next_run(key), time.strftime("%Y-%m-%d"))

    def test_the_alert_about_a_failed_run_is_finished(self):
        server = self.serve("--mode", "late-data", "--delay", "3")
        self.use(server.port)
        key = self.courier.schedule(ReportPath="Z:\\nowhere\\gone.rpt")
        self.start(ready=False)
        talk = server.folder / "talk.log"
        self.courier.wait(lambda: talk.exists() and "DATA begun" in talk.read_text(), what="alert under way")
        self.courier.process.terminate()
        self.assertEqual(self.courier.process.wait(30), 0)
        self.assertEqual(len(server.alerts()), 1)
        self.assertEqual([row[2] for row in self.courier.history(key)], ["Failure"])

    def test_a_mail_that_fails_has_its_row_and_its_alert(self):
        server = self.serve("--mode", "late-data", "--delay", "60")
        self.use(server.port, more="")
        key = self.courier.schedule()
        self.start(ready=False)
        talk = server.folder / "talk.log"
        self.courier.wait(lambda: talk.exists() and "DATA begun" in talk.read_text(), what="mail under way")
        self.courier.process.terminate()
        time.sleep(0.3)
        self.courier.profile("Transport=outbox\nOutboxFolder=%s\n" % self.courier.outbox)
        server.process.kill()
        self.assertEqual(self.courier.process.wait(30), 0)
        self.assertEqual([row[2] for row in self.courier.history(key)], ["Failure"])
        self.assertEqual([mail["Subject"] for mail in self.courier.mails()], ["Pressroom Error"])
        self.assertEqual(self.courier.next_run(key), time.strftime("%Y-%m-%d"))

    def test_a_second_signal_ends_it_at_once(self):
        server, key = self.mail_under_way(20)
        self.courier.process.terminate()
        time.sleep(0.5)
        self.assertIsNone(self.courier.process.poll())
        begin = time.monotonic()
        self.courier.process.terminate()
        self.assertEqual(self.courier.process.wait(5), 0)
        self.assertLess(time.monotonic() - begin, 1)
        self.assertEqual(self.courier.history(key), [])
        self.assertEqual(self.events("stop")[0].split("reason=")[1], '"second signal"')
        self.assertEqual(server.messages(), [])

    def test_a_server_that_does_not_answer_has_thirty_seconds(self):
        server, key = self.mail_under_way(90)
        begin = time.monotonic()
        self.courier.process.terminate()
        self.assertEqual(self.courier.process.wait(40), 0)
        self.assertAlmostEqual(time.monotonic() - begin, 30, delta=2)
        self.assertEqual(self.courier.history(key), [])
        self.assertIn("the mail took too long", self.courier.said())

    def test_a_run_that_sends_nothing_ends_at_once(self):
        # The page's pause of a second comes before its mail.
        self.courier.schedule(Format="DHTML")
        self.start(ready=False)
        self.courier.wait(lambda: any(self.courier.app.glob("output/*.htm")), what="page")
        begin = time.monotonic()
        self.courier.process.send_signal(signal.SIGINT)
        self.assertEqual(self.courier.process.wait(5), 0)
        self.assertLess(time.monotonic() - begin, 0.5)
        self.assertEqual(self.courier.history(), [])
        self.assertEqual(self.courier.mails(), [])
        self.assertRegex(self.events("stop")[0], "reason=SIGINT$")


class Log(ServiceTest):
    def objects(self):
        return [json.loads(line) for line in self.courier.said().splitlines()]

    def test_json_is_one_object_a_line(self):
        self.courier.profile("Transport=smtp\nHost=127.0.0.1\nPort=1\nSecurity=none\nTimeout=2\n")
        lost = self.courier.schedule(ReportTitle="Gr\u00fc\u00dfe \"n\u00f6rdlich\"", ReportPath="Z:\\nowhere\\gone.rpt")
        self.start("--log-format=json")
        self.courier.profile("Transport=outbox\nOutboxFolder=%s\n" % self.courier.outbox)
        self.courier.sql("delete from ReportScheduler")
        key = self.courier.schedule()
        self.courier.settings(Poll="0", AlertWho="boss@example.com")
        self.courier.process.send_signal(signal.SIGHUP)
        self.courier.wait(lambda: self.courier.history(key), what="history row")
        self.courier.stop()
        objects = self.objects()
        for one in objects:
            self.assertRegex(one["time"], r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d[+-]\d\d:\d\d$")
            self.assertIn(one["level"], ("error", "warning", "notice", "info"))
        found = {one["event"]: one for one in objects}
        self.assertEqual(found["start"]["poll"], 15)
        self.assertEqual(found["start"]["folder"], str(self.courier.app))
        failed = found["run-failed"]
        self.assertEqual((failed["schedule"], failed["title"], failed["number"], failed["level"]),
                         (lost, "Gr\u00fc\u00dfe \"n\u00f6rdlich\"", 53, "error"))
        self.assertEqual(found["alert-lost"]["to"], "boss@example.com")
        self.assertTrue(found["alert-lost"]["text"].startswith('An alert did not go out to "boss@example.com": '))
        self.assertEqual(found["mail-sent"]["schedule"], key)
        self.assertEqual((found["mail-sent"]["subject"], found["mail-sent"]["recipients"]), ("Figures", 1))
        self.assertEqual(found["run-done"]["outcome"], "delivered")
        self.assertIsInstance(found["run-done"]["seconds"], float)
        self.assertEqual(found["stop"]["reason"], "SIGTERM")

    def test_text_has_a_line_for_each_event(self):
        key = self.courier.schedule()
        self.start(watchdog=60)
        self.courier.stop()
        said = re.sub(rf"^{DATED}", "", self.courier.said(), flags=re.MULTILINE)
        said = re.sub(r"seconds=\d\.\d{3}$", "seconds=-", said, flags=re.MULTILINE)
        version = subprocess.run([self.courier.app / "oxc-schedule", "--version"], capture_output=True, text=True,
                                 check=True).stdout.split()[1]
        self.assertEqual(said.splitlines(), [
            "notice start version=%s folder=%s poll=15 alert=boss@example.com" % (version, self.courier.app),
            "info mail-sent schedule=%d title=Figures subject=Figures recipients=1 seconds=-" % key,
            "info run-done schedule=%d title=Figures outcome=delivered seconds=-" % key,
            "info watchdog seconds=60.000",
            "notice stop reason=SIGTERM"])

    def test_an_unknown_format_is_reported_and_the_log_is_text(self):
        self.start("--log-format", "xml")
        self.assertIn('The log format "xml" is not known: text or json. The log is text\n', self.courier.said())
        self.assertTrue(self.events("start"))
        self.courier.stop()


class SystemUnit(ServiceTest):
    def test_its_command_and_environment_keep_everything_in_its_folders(self):
        """The folders of the unit, moved below the test's own."""
        root = self.courier.folder / "root"
        places = {name: str(root) + value for name, value in unit_environment("system.service.in").items()}
        self.assertEqual({name: value[len(str(root)):] for name, value in places.items()},
                         {"XDG_CONFIG_HOME": "/etc", "XDG_DATA_HOME": "/var/lib",
                          "XDG_CACHE_HOME": "/var/cache/oxbow-courier"})
        for name in ("etc/oxbow-courier", "var/lib/oxbow-courier", "var/cache/oxbow-courier"):
            (root / name).mkdir(parents=True, mode=0o700)
        # An installation: programs and what application folders are made from.
        prefix = self.courier.folder / "usr"
        shutil.copytree(self.courier.app, prefix / "share" / "oxbow-courier",
                        ignore=shutil.ignore_patterns("oxc*", "PressroomLive*", "Cache", "output"))
        (prefix / "bin").mkdir()
        shutil.copy(self.courier.app / "oxc", prefix / "bin")
        environment = {"PATH": "/usr/bin:/bin", "HOME": str(root / "var/lib/oxbow-courier"),
                       "NOTIFY_SOCKET": self.manager.path, **places}
        process = subprocess.Popen(unit_command("system.service.in", prefix / "bin" / "oxc"), env=environment,
                                   stdout=self.courier.log, stderr=subprocess.STDOUT, umask=0o077)
        self.courier.process = process
        self.courier.wait(lambda: "READY=1" in self.manager.lines(), what="READY=1")
        process.terminate()
        self.assertEqual(process.wait(5), 0)
        settings = root / "etc/oxbow-courier/settings.reg"
        self.assertEqual(oct(settings.stat().st_mode & 0o777), "0o600")
        self.assertIn('"FirstRun"="False"', settings.read_text())
        self.assertTrue((root / "var/lib/oxbow-courier/PressroomLive.dat").exists())
        # No entry for a desktop: it would start a second scheduler.
        self.assertEqual(sorted(path.name for path in (root / "etc").iterdir()), ["oxbow-courier"])

    def allow_what_the_unit_allows(self):
        """The bounds of the unit that a process can set for itself."""
        no_new_privileges, memory_deny_write_execute = 38, 65
        library = ctypes.CDLL(None)
        library.prctl(no_new_privileges, 1, 0, 0, 0)
        library.prctl(memory_deny_write_execute, 1, 0, 0, 0)  # a kernel before 6.3 does not know it

    @unittest.skipUnless(shutil.which("strace"), "strace is not installed")
    @unittest.skipUnless(shutil.which("systemd-analyze"), "systemd-analyze is not installed (package systemd)")
    def test_runs_need_no_call_of_the_kernel_that_it_forbids(self):
        allowed = calls_of("@default")
        for line in unit_values("system.service.in", "SystemCallFilter"):
            named = set().union(*(calls_of(name) for name in line.lstrip("~").split()))
            allowed = allowed - (named - calls_of("@default")) if line.startswith("~") else allowed | named
        keys = [self.courier.schedule(Format=word) for word in ("Acrobat Format (PDF)", "DHTML", "Excel")]
        self.courier.package([("Acrobat", "sales_by_region.rpt")])
        trace = self.courier.folder / "trace"
        self.courier.process = subprocess.Popen(
            ["strace", "-D", "-f", "-qq", "-o", trace, self.courier.app / "oxc", "-sched"], stdout=self.courier.log,
            stderr=subprocess.STDOUT, env=self.courier.environment(), preexec_fn=self.allow_what_the_unit_allows)
        self.courier.wait(lambda: self.courier.package_history(), 120, "history row")
        self.assertEqual([(row[0], row[2]) for row in self.courier.history()], [(key, "Success") for key in keys])
        self.assertEqual([row[3] for row in self.courier.package_history()], [None])
        self.courier.process.kill()
        self.courier.process.wait()
        made = set(re.findall(r"^\d+ +(\w+)\(", trace.read_text(errors="replace"), re.MULTILINE))
        self.assertIn("execve", made)
        # Its failure has no effect: files of the service's user belong to it anyway.
        self.assertEqual(made - allowed - {"fchown"}, set())

    def test_times_fit_the_program(self):
        for name in ("system.service.in", "user.service.in"):
            self.assertGreater(int(unit_values(name, "TimeoutStopSec")[0]), 30)
            self.assertGreaterEqual(int(unit_values(name, "WatchdogSec")[0]), 60)
            self.assertEqual(unit_values(name, "Type"), ["notify"])


if __name__ == "__main__":
    unittest.main()
