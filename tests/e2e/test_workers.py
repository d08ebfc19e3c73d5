# SPDX-License-Identifier: GPL-3.0-or-later
"""Reports run in a process of their own. Whatever ends it costs one run: a row, an alert, and the next poll goes on."""

import os
import pathlib
import shutil
import signal
import time
import unittest

from editor import write_program
from harness import Courier, CourierTest, replace_program

FAULTY = os.environ.get("OXC_FAULTY_WORKER", "")
CRASHED = "The report process was ended by signal 6 (Aborted) while it "


def children(process):
    """The processes that a program has started, with their states."""
    found = {}
    for task in pathlib.Path("/proc/%d/task" % process.pid).iterdir():
        for child in (task / "children").read_text().split():
            found[int(child)] = pathlib.Path("/proc/%s/stat" % child).read_text().rsplit(")", 1)[1].split()[0]
    return found


def is_gone(pid):
    try:
        return pathlib.Path("/proc/%d/stat" % pid).read_text().rsplit(")", 1)[1].split()[0] == "Z"
    except OSError:
        return True


class Workers(CourierTest):
    def setUp(self):
        super().setUp()
        # The machine's own words are compared, too.
        self.courier.write_days_year_first()

    def mails_of(self, courier=None):
        """The reports and the alerts in the outbox."""
        mails = (courier or self.courier).mails()
        return ([mail for mail in mails if mail["Subject"] != "Pressroom Error"],
                [mail for mail in mails if mail["Subject"] == "Pressroom Error"])

    def be_faulty(self, fault, courier=None):
        """The next report process, and no other, has the fault."""
        courier = courier or self.courier
        if not FAULTY:
            self.skipTest("OXC_FAULTY_WORKER names no program")
        replace_program(FAULTY, courier.app / "oxc-report")
        once = courier.folder / "once"
        once.touch()
        courier.extra_environment.update(OXC_TEST_FAULT=fault, OXC_TEST_FAULT_ONCE=str(once))

    def rows_of(self, key):
        return [row[2:] for row in self.courier.history(key)]

    def assert_one_failure(self, key, text):
        """A failure, then the run: one alert, one mail, nothing left."""
        courier = self.courier
        courier.wait(lambda: len(courier.history(key)) >= 2, what="second row")
        self.assertEqual(self.rows_of(key), [("Failure", text), ("Success", "None")])
        reports, alerts = self.mails_of()
        self.assertEqual(len(reports), 1)
        self.assertEqual([mail.get_content().strip() for mail in alerts],
                         ["An error occured in Schedchk. %s [-2147206456]" % text])
        self.assertNotIn("Z", children(courier.process).values())


class Crashes(Workers):
    def crash_at(self, operation, words, **columns):
        with self.subTest(operation):
            courier = self.courier = Courier()
            self.addCleanup(courier.close)
            self.be_faulty(operation + ":Crash")
            report = courier.app / "samples" / "summary.rpt"
            key = courier.schedule(report, **columns)
            courier.start()
            self.assert_one_failure(key, CRASHED + words + ("" if words == "started" else ' the report "%s"' % report))
            courier.close()

    def test_each_operation_of_a_run(self):
        for operation, words, columns in (
                ("Begin", "started", {}), ("Open", "opened", {}),
                ("LogOn", "prepared", {"LoginReq": "T", "UserName": "ann", "Password": "secret"}),
                ("SetSwitches", "prepared", {}), ("SetFormula", "prepared", {"SelectionForm": "1 = 1"}),
                ("SetExcelOptions", "prepared", {"Format": "Excel"}), ("Write", "ran", {}),
                ("Write", "ran", {"Format": "HTML"})):
            self.crash_at(operation, words, **columns)

    def test_package_whose_second_report_crashes_is_mailed_once(self):
        courier = self.courier
        courier.start_ticking()
        courier.stop()
        self.be_faulty("SetHtmlOptions:Crash")
        report = courier.app / "samples" / "sales_by_region.rpt"
        courier.start()
        time.sleep(1.5)  # past the first poll, whose failure would end polling
        courier.package([("MS Word", "sales_by_region.rpt"), ("HTML", "sales_by_region.rpt")])
        courier.wait(lambda: len(courier.package_history()) >= 2, what="second row")
        failure, success = courier.package_history()
        self.assertEqual(failure[2:], ("T", CRASHED + 'prepared the report "%s"' % report))
        self.assertEqual(success[2:], ("T", None))
        reports, alerts = self.mails_of()
        self.assertEqual((len(reports), len(alerts)), (1, 1))
        self.assertEqual(len(list(reports[0].iter_attachments())), 2)
        self.assertEqual(len(courier.package_files()), 2)

    def test_run_on_demand_is_told(self):
        self.courier.schedule()
        self.be_faulty("Write:Segmentation")
        done = self.courier.schedule_command("run", "Figures")
        self.assertEqual(done.returncode, 1)
        self.assertIn("The report process was ended by signal 11 (Segmentation fault) while it ran the report \"",
                      done.stderr)
        self.assertEqual(done.stderr.count("\n"), 1)
        self.assertEqual(self.mails_of()[0], [])
        done = self.courier.schedule_command("run", "Figures")
        self.assertEqual((done.returncode, len(self.mails_of()[0])), (0, 1), done.stderr)


class Limits(Workers):
    def test_report_that_takes_all_memory_fails_and_others_run(self):
        courier = self.courier
        courier.extra_environment["OXC_REPORT_MEMORY"] = "512"
        report = courier.folder / "large.rpt"
        (courier.folder / "empty.db").touch()
        report.write_text("""<Report><DataSources><DataSource Name="db"><ConnectionProperties><DataProvider>SQLITE
            </DataProvider><ConnectString>Data Source=empty.db</ConnectString></ConnectionProperties></DataSource>
            </DataSources><DataSets><DataSet Name="d"><Query><DataSourceName>db</DataSourceName><CommandText>select
            hex(zeroblob(100000000)) as Name</CommandText></Query><Fields><Field Name="Name"><DataField>Name</DataField>
            </Field></Fields></DataSet></DataSets><Width>4in</Width><Body><Height>1in</Height><ReportItems>
            <Textbox Name="t"><Value>=First(Fields!Name.Value, "d") &amp; First(Fields!Name.Value, "d")</Value></Textbox>
            </ReportItems></Body></Report>""")
        good = courier.schedule()
        bad = courier.schedule(report)
        courier.start()
        courier.wait(lambda: courier.history(bad), what="row of the large report")
        self.assertEqual(self.rows_of(bad)[0],
                         ("Failure", 'Data set "d", data source "db": there is not enough memory for the query'))
        courier.sql("delete from ReportScheduler where ReportID = ?", bad)
        later = courier.schedule()
        courier.wait(lambda: courier.history(later), what="row of the next schedule")
        self.assertEqual(self.rows_of(good) + self.rows_of(later), [("Success", "None")] * 2)

    def test_folders_of_reports_are_the_only_ones_they_read(self):
        courier = self.courier
        for folder in ("data", "tmp"):
            (courier.folder / folder).mkdir()
        courier.extra_environment["TMPDIR"] = str(courier.folder / "tmp")
        courier.extra_environment["OXC_REPORT_FOLDERS"] = str(courier.folder / "data")
        for name in ("data/a.rpt", "b.rpt"):
            shutil.copy(courier.app / "samples" / "sales_by_region.rpt", courier.folder / name)
        keys = [courier.schedule(courier.folder / "data" / "a.rpt"), courier.schedule(courier.folder / "b.rpt")]
        courier.start()
        courier.wait(lambda: all(courier.history(key) for key in keys), what="rows")
        self.assertEqual(self.rows_of(keys[0]), [("Success", "None")])
        if "no Landlock" in courier.said():
            self.skipTest("the kernel has no Landlock")
        self.assertEqual(self.rows_of(keys[1])[0], ("Failure", "b.rpt cannot be read: Permission denied"))


class Lives(Workers):
    def worker(self):
        [(pid, state)] = children(self.courier.process).items()
        self.assertNotEqual(state, "Z")
        return pid

    def run_one(self):
        key = self.courier.schedule()
        self.courier.wait(lambda: self.courier.history(key), what="row")
        self.assertEqual(self.rows_of(key), [("Success", "None")])

    def test_none_starts_while_nothing_is_due(self):
        self.courier.schedule(NextRun="2999-01-01")
        self.courier.start()
        time.sleep(3)
        self.assertEqual(children(self.courier.process), {})

    def test_one_serves_run_after_run(self):
        self.courier.start()
        self.run_one()
        worker = self.worker()
        descriptors = lambda: len(os.listdir("/proc/%d/fd" % self.courier.process.pid))
        before = descriptors()
        for _ in range(3):
            self.run_one()
            self.assertEqual(self.worker(), worker)
        # A poll that is under way holds some.
        self.courier.wait(lambda: descriptors() <= before, what="the former number of descriptors")

    def test_one_that_is_killed_between_runs_is_not_missed(self):
        self.courier.start()
        self.run_one()
        worker = self.worker()
        os.kill(worker, signal.SIGKILL)
        self.run_one()
        self.assertNotEqual(self.worker(), worker)
        self.assertEqual(self.mails_of()[1], [])

    def test_it_ends_with_its_scheduler(self):
        for how in (signal.SIGKILL, signal.SIGTERM):
            self.courier.start()
            self.run_one()
            worker = self.worker()
            self.courier.process.send_signal(how)
            self.courier.process.wait(10)
            end = time.monotonic() + 5
            while not is_gone(worker):
                self.assertLess(time.monotonic(), end)
                time.sleep(0.05)

    def test_two_schedulers_have_two(self):
        other = Courier()
        self.addCleanup(other.close)
        self.courier.start()
        other.start()
        self.run_one()
        key = other.schedule()
        other.wait(lambda: other.history(key), what="row")
        os.kill(self.worker(), signal.SIGKILL)
        again = other.schedule()
        other.wait(lambda: other.history(again), what="row")
        self.run_one()
        self.assertEqual([row[2] for row in other.history()], ["Success"] * 2)
        self.assertEqual((len(self.mails_of()[0]), len(self.mails_of(other)[0])), (2, 2))

    def test_program_that_is_missing_is_named(self):
        program = self.courier.app / "oxc-report"
        program.rename(self.courier.folder / "away")
        key = self.courier.schedule()
        self.courier.start()
        self.courier.wait(lambda: self.courier.history(key), what="row")
        (self.courier.folder / "away").rename(program)
        self.courier.wait(lambda: self.rows_of(key)[-1][0] == "Success", what="run")
        text = 'The report program "%s" cannot be started: No such file or directory' % program
        self.assertEqual(self.rows_of(key)[0], ("Failure", text))
        self.assertEqual(len(self.mails_of()[0]), 1)

    def test_program_of_another_version_is_named(self):
        program = self.courier.app / "oxc-report"
        program.unlink()
        write_program(program, "exit 2\n")
        key = self.courier.schedule()
        self.courier.start()
        self.courier.wait(lambda: self.courier.history(key), what="row")
        self.assertRegex(self.rows_of(key)[0][1], '^The report program "%s" is not of this version \\(.*\\): install both '
                                                  'together and start this program again$' % program)


if __name__ == "__main__":
    unittest.main()
