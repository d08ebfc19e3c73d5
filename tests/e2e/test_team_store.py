# SPDX-License-Identifier: GPL-3.0-or-later
"""A store on a PostgreSQL server that several schedulers and editors share: each due run is mailed once, whoever dies."""

import collections
import os
import pathlib
import random
import sqlite3
import threading
import time
import unittest

from databases import PASSWORD
from harness import STAGE, Courier, system_path
from team import TeamTest, run_store, store

LONG = bool(os.environ.get("OXC_LONG_TESTS"))

def columns(connection):
    """The columns of each table, also of that of the last keys; each with whether it holds whole numbers."""
    tables = [name for name, in connection.execute("select name from sqlite_master where type = 'table' order by name")]
    return {table: [(column[1], column[2].upper() == "INTEGER") for column in connection.execute("pragma table_info(%s)" % table)]
            for table in tables}


def fill(connection):
    """Puts a row into each table that has a value of its own in every column."""
    value = 100
    for table, described in columns(connection).items():
        if table != "sqlite_sequence":
            values = []
            for name, is_number in described:
                value += 1
                values.append(value if is_number else "%s %d" % (name, value))
            connection.execute("insert into %s values(%s)" % (table, ",".join("?" * len(values))), values)


def all_rows(file):
    connection = sqlite3.connect(file)
    rows = {table: connection.execute("select * from %s order by rowid" % table).fetchall() for table in columns(connection)}
    connection.close()
    rows["sqlite_sequence"].sort()
    return rows


class TeamStore(TeamTest):
    def setUp(self):
        super().setUp()
        self.report = self.server.report()

    def schedules(self, first, count):
        self.server.schedules(first, count)

    def packages(self, first, count):
        destination = self.server.folder / "packages"
        destination.mkdir(exist_ok=True)
        os.chmod(destination, 0o777)
        self.server.rows(
            "with made as (insert into ReportBatch(ClientName, BatchName, Recipients, Frequency, RunTime, StartDate, EndDate, "
            "NextRunDate, Subject, Message, Destination, MailBatch) select 'NONE', 'Pack', 'ann@example.com;', 'Daily', "
            "'00:00', '2000-01-01', '3000-12-31', '%s', 'Run P' || i, '', '%s\\', 'T' from generate_series(%d, %d) i returning "
            "ReportID) insert into ReportBatchDtls(ReportID, ReportTitle, ReportPath, ReportFormat) select ReportID, "
            "'1>figures' || ReportID || '.rdl', '%s', 'Acrobat Format (PDF)' from made" % (
                time.strftime("%Y-%m-%d"), system_path(destination), first, first + count - 1, system_path(self.report)))

    def due(self):
        today = time.strftime("%Y-%m-%d")
        return int(self.server.rows(
            "select (select count(*) from ReportScheduler where NextRun = '%s') + "
            "(select count(*) from ReportBatch where NextRunDate = '%s')" % (today, today))[0][0])

    def wait(self, condition, seconds, what):
        end = time.monotonic() + seconds
        while not condition():
            self.assertLess(time.monotonic(), end, what + "\n" + "\n".join(member.said() for member in self.members))
            time.sleep(0.1)

    def mailed(self):
        return collections.Counter(subject for member in self.members for subject in member.subjects())

    def test_store_is_made_linked_tried_and_left(self):
        courier = Courier()
        self.members.append(courier)
        courier.schedule()
        connect = self.server.connect()
        environment = courier.environment()
        self.assertIn("rows to the store", store("copy", "--from", str(courier.database), "--to", connect))
        store("link", "--to", connect, environment=environment)
        self.assertEqual(os.stat(courier.database).st_mode & 0o777, 0o600)
        self.assertTrue(courier.database.read_text().startswith("Oxbow Courier store link 1\nProvider=PostgreSQL\n"))
        checked = store("check", environment=environment)
        self.assertIn("Store: version 1\nRights: an editor\n", checked)
        self.assertIn("ReportScheduler: 1 rows\n", checked)
        self.assertIn("Rights: a scheduler\n", store("check", self.server.connect(user="sched")))
        self.assertIn("Rights: an editor\n", store("check", self.server.connect(user="ed")))
        listed = courier.schedule_command("list")
        self.assertIn("Figures", listed.stdout, listed.stderr)
        store("backup", "-o", str(courier.folder / "kept.dat"), environment=environment)
        self.assertEqual(all_rows(courier.folder / "kept.dat")["ReportScheduler"],
                         all_rows(courier.app / "PressroomLive.dat.embedded")["ReportScheduler"])
        store("unlink", environment=environment)
        self.assertEqual(len(courier.sql("select * from ReportScheduler")), 1)

    def test_password_comes_from_a_command_or_from_the_users_file(self):
        store("create", "--to", self.server.connect(), "--editor", "clerk")
        courier = Courier()
        self.members.append(courier)
        courier.database.unlink()
        environment = courier.environment()
        connect = self.server.connect(user="clerk")
        refused = run_store("link", "--to", connect, environment=environment)
        self.assertEqual(refused.returncode, 1)
        self.assertIn("fe_sendauth: no password supplied", refused.stderr)
        self.assertFalse(courier.database.exists())
        store("link", "--to", connect, "--password-command", "echo '%s'" % PASSWORD, environment=environment)
        self.assertNotIn("Password=", courier.database.read_text())
        self.assertIn("Rights: an editor\n", store("check", environment=environment))
        wrong = run_store("link", "--to", connect, "--password-command", "exit 3", environment=environment)
        self.assertEqual(wrong.stderr, "oxc-store: The store cannot be reached: \"courier\" on 127.0.0.1; "
                                       "PasswordCommand failed with exit code 3\n")
        loud = run_store("link", "--to", connect, "--password-command", "echo 'no key' >&2; exit 3", environment=environment)
        self.assertTrue(loud.stderr.endswith("; PasswordCommand failed with exit code 3: no key\n"), loud.stderr)
        both = run_store("link", "--to", connect + ";Password=x", "--password-command", "pass", environment=environment)
        self.assertEqual((both.returncode, both.stderr), (
            2, "oxc-store: --to has a password already, beside --password-command (see oxc-store --help)\n"))
        lines = run_store("link", "--to", connect, "--password-command", "pass\nHost=other", environment=environment)
        self.assertEqual((lines.returncode, lines.stderr), (
            2, "oxc-store: the value of --password-command holds a control character (see oxc-store --help)\n"))
        self.assertIn("Rights: an editor\n", store("check", environment=environment))
        courier.database.chmod(0o640)
        seen = run_store("check", environment=environment)
        self.assertIn("has a PasswordCommand and the mode 0640; only its owner may read and write it: chmod 600", seen.stderr)
        courier.database.chmod(0o600)
        (courier.folder / ".pgpass").write_text("*:*:*:clerk:%s\n" % PASSWORD)
        (courier.folder / ".pgpass").chmod(0o600)
        store("link", "--to", connect, environment=environment)
        self.assertIn("Rights: an editor\n", store("check", environment=environment))

    def test_certificate_of_the_server_is_verified(self):
        certificate = pathlib.Path(self.server.folder) / "trusted.crt"
        certificate.write_bytes(self.server.encrypt().read_bytes())
        connect = self.server.connect().replace("127.0.0.1", "localhost")

        def checked(words):
            done = run_store("check", connect + words)
            return done.stdout or done.stderr

        self.wait(lambda: "Connection: encrypted" in checked(";SSL Mode=Require"), 30, "encryption")
        self.assertIn("Connection: encrypted", checked(";SSL Mode=VerifyFull;SSL Root Cert=%s" % certificate))
        self.assertIn("certificate verify failed", checked(";SSL Mode=VerifyFull"))
        self.assertIn("does not match host name", run_store(
            "check", self.server.connect() + ";SSL Mode=verify-full;SSL Root Cert=%s" % certificate).stderr)
        self.assertIn("Connection: not encrypted", checked(";SSL Mode=disable"))

    def test_database_in_use_is_not_moved_away(self):
        courier = Courier()
        self.members.append(courier)
        courier.schedule()
        reader = sqlite3.connect(courier.database)
        reader.execute("select * from ReportScheduler").fetchall()
        refused = run_store("link", "--to", self.server.connect(), environment=courier.environment())
        self.assertEqual((refused.returncode, refused.stdout), (1, ""))
        self.assertIn("Not linked: another program has the file", refused.stderr)
        self.assertEqual(len(courier.sql("select * from ReportScheduler")), 1)
        reader.close()
        store("link", "--to", self.server.connect(), environment=courier.environment())

    def test_scheduler_may_not_define_anything(self):
        self.schedules(1, 1)
        member = self.member()
        done = member.schedule_command("remove", "Figures")
        self.assertEqual(done.returncode, 1)
        self.assertIn("The user has no right to this; permission denied for table", done.stderr)
        self.assertEqual(self.due(), 1)

    def test_ten_thousand_schedules_come_back_as_they_were(self):
        file = pathlib.Path(self.empty_folder()) / "PressroomLive.dat"
        connection = sqlite3.connect(file)
        with open(STAGE / "Pressroom.dat", "rb") as blank:
            file.write_bytes(blank.read())
        fill(connection)
        connection.executemany(
            "insert into ReportScheduler(ReportTitle, ReportPath, Message, StartDate, Password) values(?,?,?,?,?)",
            (("It's \u00d6 %d" % i, "Z:\\r\\%d.rpt" % i, None if i % 3 else "a\nb\\'", "2000-01-01", "")
             for i in range(10_000)))
        connection.executemany("insert into ReportParameter values(?,?,?)", ((i % 7, "p%d" % i, "") for i in range(10_000)))
        connection.execute("insert into ReportBatch(BatchName) values('Pack')")
        connection.execute("insert into ReportBatchHstry(ReportID, LastRun) values('', '07/03/2002,14:05:09')")
        connection.execute("insert into Folders(FolderName, Parent) values('F', 0)")
        connection.execute("delete from ReportScheduler where ReportID > (select max(ReportID) - 10 from ReportScheduler)")
        connection.commit()
        connection.close()
        store("copy", "--from", str(file), "--to", self.server.connect())
        back = file.with_name("back.dat")
        store("copy", "--from", self.server.connect(), "--to", str(back))
        self.assertEqual(all_rows(back), all_rows(file))
        refused = run_store("copy", "--from", str(file), "--to", self.server.connect())
        self.assertEqual(refused.returncode, 1)
        self.assertIn("already has rows, in the table ReportScheduler", refused.stderr)

    def test_copy_arrives_whole_or_not_at_all(self):
        file = pathlib.Path(self.empty_folder()) / "PressroomLive.dat"
        file.write_bytes((STAGE / "Pressroom.dat").read_bytes())
        connection = sqlite3.connect(file)
        connection.execute("insert into Folders(FolderName, Parent) values('F', 0)")
        connection.execute("insert into ReportHistory(ReportID, Status) values(1, 'Success'), ('none', 'Success')")
        connection.commit()
        connection.close()
        refused = run_store("copy", "--from", str(file), "--to", self.server.connect())
        self.assertEqual(refused.stderr,
                         "oxc-store: Not copied: rows 1 to 2 of the table ReportHistory; The value does not suit its column; "
                         "invalid input syntax for type bigint: \"none\"\n")
        self.assertEqual(self.server.rows("select count(*) from Folders"), [("0",)])
        self.assertEqual(self.server.rows("select count(*) from ReportHistory"), [("0",)])

    def empty_folder(self):
        folder = self.server.folder / "files"
        folder.mkdir(exist_ok=True)
        for file in folder.iterdir():
            file.unlink()
        return folder

    def test_three_schedulers_mail_each_run_once(self):
        count, packages = (300, 20) if LONG else (60, 6)
        self.schedules(1, count)
        self.packages(1, packages)
        for _ in range(3):
            self.member().start()
        self.wait(lambda: self.due() == 0, 300, "every run")
        for member in self.members:
            member.stop()
        expected = ["Run %d" % i for i in range(1, count + 1)] + ["Run P%d" % i for i in range(1, packages + 1)]
        self.assertEqual(self.mailed(), collections.Counter(expected))
        self.assertTrue(all(member.subjects() for member in self.members), "one scheduler had nothing to do")
        self.assertEqual(self.server.rows("select Status, count(*) from ReportHistory group by 1"),
                         [("Success", str(count))])

    def test_killed_scheduler_loses_no_run(self):
        random.seed(7)
        rounds, count = (50, 12) if LONG else (5, 12)
        for _ in range(3):
            self.member().start()
        twice = 0
        for number in range(rounds):
            first = number * count + 1
            self.schedules(first, count)
            time.sleep(random.uniform(0.2, 2.5))
            victim = random.choice(self.members)
            victim.process.kill()
            victim.process.wait()
            self.wait(lambda: self.due() == 0, 120, "the runs of the killed scheduler")
            mailed = self.mailed()
            copies = [mailed["Run %d" % i] for i in range(first, first + count)]
            self.assertGreaterEqual(min(copies), 1, copies)
            # The run that was under way, whose mail was out before its record.
            self.assertLessEqual(sum(copies) - count, 1, copies)
            twice += sum(copies) - count
            victim.start()
        print("%d rounds: %d runs were mailed twice, none was lost" % (rounds, twice))

    def test_schedulers_wait_for_a_server_that_stops(self):
        for _ in range(2):
            self.member().start()
        self.schedules(1, 4)
        self.wait(lambda: self.due() == 0, 60, "the runs before the stop")
        self.schedules(5, 20)
        time.sleep(1)
        late = self.member()
        self.server.stop("fast")
        self.addCleanup(self.server.ensure)
        time.sleep(20 if LONG else 5)
        for member in self.members[:2]:
            self.assertIsNone(member.process.poll(), member.said())
        late.start()
        time.sleep(2)
        self.assertIsNone(late.process.poll(), late.said())
        self.assertIn("The scheduler waits for its store. The store cannot be reached: \"courier\" on 127.0.0.1; ",
                      late.said())
        self.server.launch()
        self.wait(lambda: self.due() == 0, 120, "the runs after the stop")
        self.wait(lambda: "The scheduler has its store again." in late.said(), 30, "the line of the end")
        mailed = self.mailed()
        self.assertEqual({i for i in range(1, 25) if not mailed["Run %d" % i]}, set())
        self.assertLessEqual(sum(mailed["Run %d" % i] for i in range(1, 25)), 26)

    def test_report_of_one_machine_runs_on_another(self):
        editor = self.member("ed")
        done = editor.schedule_command("add", str(editor.app / "samples" / "sales_by_region.rpt"), "--to", "ann@example.com",
                                       "--daily", "--at", "00:00", "--subject", "Shared")
        self.assertEqual(done.returncode, 0, done.stderr)
        editor.close()
        self.members.remove(editor)
        member = self.member()
        member.start()
        self.wait(lambda: member.subjects() == ["Shared"], 60, "the mail")
        self.assertEqual((member.app / "Cache" / "sales_by_region.rpt").read_bytes(),
                         (STAGE / "samples" / "sales_by_region.rpt").read_bytes())

    def test_commands_and_schedulers_meet_without_an_error(self):
        self.schedules(1, 200 if LONG else 20)
        for _ in range(3):
            self.member().start()
        editors = [self.member("ed") for _ in range(2)]
        end = time.monotonic() + (120 if LONG else 10)
        refused, made = [], []

        def edit(number, editor):
            report = str(editor.app / "samples" / "sales_by_region.rpt")
            before = "F%d.0" % number
            commands = [("folder", "add", before)]
            for step in range(1, 10_000):
                if time.monotonic() > end:
                    return
                title, after = "E%d.%d" % (number, step), "F%d.%d" % (number, step)
                commands += [("add", report, "--to", "ann@example.com", "--daily", "--at", "00:00", "--title", title,
                              "--subject", title, "--folder", before),
                             ("folder", "rename", before, after), ("set", title, "--message", "Changed"),
                             ("list", "--folder", after)]
                made.append(title)
                for command in commands:
                    done = editor.schedule_command(*command)
                    if done.returncode != 0:
                        refused.append((command, done.stderr))
                before, commands = after, []

        threads = [threading.Thread(target=edit, args=pair) for pair in enumerate(editors)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(refused, [])
        self.wait(lambda: self.due() == 0, 120, "every run")
        self.assertEqual(self.server.rows("select ErrMsg from ReportHistory where Status <> 'Success'"), [])
        self.assertEqual([member.sentences() for member in self.members[:3]], ["", "", ""])
        mailed = self.mailed()
        self.assertEqual({title: mailed[title] for title in made}, dict.fromkeys(made, 1))
        self.assertEqual(self.server.rows("select count(distinct Parent) from ReportScheduler where Parent like 'F%'"), [("2",)])

    def test_status_shows_who_holds_what(self):
        member = self.member()
        self.schedules(1, 1)
        self.server.slow_down()
        member.start()
        held = []
        self.wait(lambda: held.append(member.schedule_command("status").stdout) or "Under way" in held[-1], 30, "a claim")
        host = os.uname().nodename
        self.assertIn("Under way: schedule 1, by courier %s %d\n" % (host, member.process.pid), held[-1])
