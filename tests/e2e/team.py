# SPDX-License-Identifier: GPL-3.0-or-later
"""A PostgreSQL server with a team's store, and application folders that are linked to it."""

import os
import subprocess
import threading
import time
import unittest

from databases import POSTGRES, Postgres, report
from harness import STAGE, Courier, system_path

REPORT = """<?xml version="1.0" encoding="utf-8"?>
<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition"><ReportSections><ReportSection>
<Body><ReportItems><Textbox Name="T"><Paragraphs><Paragraph><TextRuns><TextRun><Value>Figures</Value></TextRun></TextRuns>
</Paragraph></Paragraphs><Height>1in</Height><Width>3in</Width></Textbox></ReportItems><Height>1in</Height></Body>
<Width>3in</Width><Page><PageHeight>3in</PageHeight><PageWidth>4in</PageWidth></Page></ReportSection></ReportSections></Report>
"""


class TeamServer(Postgres):
    def __init__(self):
        os.environ["PGOPTIONS"] = "-c client_min_messages=warning"
        super().__init__(locale="C.UTF-8", trusts_loopback=True)
        self.sql("create role ed login")
        self.sql("create role sched login")

    def connect(self, database="courier", user="postgres"):
        return "Host=127.0.0.1;Port=%d;Database=%s;Username=%s" % (self.port, database, user)

    def fresh(self, database="courier"):
        """A store without rows."""
        self.sql("drop database if exists %s with (force)" % database)
        self.sql("create database %s" % database)
        store("create", "--to", self.connect(database), "--editor", "ed", "--scheduler", "sched")

    def rows(self, select, database="courier"):
        output = subprocess.run(
            [*self.prefix, str(self.programs / "psql"), "-AtqF", "|", "-h", str(self.folder), "-p", str(self.port), "-U",
             "postgres", "-d", database, "-v", "ON_ERROR_STOP=1", "-c", "set search_path = oxbow_courier, public; " + select],
            stdout=subprocess.PIPE, text=True, check=True, cwd=self.folder).stdout
        return [tuple(line.split("|")) for line in output.splitlines()]

    def report(self):
        """A report without data, for any number of schedules. Returns its file."""
        return self.put_report(REPORT)

    def put_report(self, text):
        """Replaces the file in one step, as a scheduler may be reading it."""
        file = self.folder / "figures.rdl"
        written = self.folder / ("figures.%d" % threading.get_ident())
        written.write_text(text)
        return written.replace(file)

    def slow_down(self):
        """Gives the report of the schedules a query of a second, so that their runs are seen under way."""
        self.put_report(report("PostgreSQL", self.connect(user="sched"), "select 1 as n from pg_sleep(1)", ["n"]))

    def schedules(self, first, count, parent="Desktop"):
        """Puts due schedules of that report in, each with its number for a subject."""
        self.rows(
            "insert into ReportScheduler(SendTo, Subject, Message, StartDate, EndDate, RunAt, Frequency, NextRun, Client, "
            "ReportPath, ReportTitle, SelectionForm, Format, Parent, LoginReq) select 'ann@example.com;', 'Run ' || i, '', "
            "'2000-01-01', '3000-12-31', '00:00', 'Daily', '%s', 'NONE', '%s', 'Figures', '', 'Acrobat Format (PDF)', "
            "'%s', 'F' from generate_series(%d, %d) i" % (
                time.strftime("%Y-%m-%d"), system_path(self.report()), parent, first, first + count - 1))

    def ensure(self):
        """Starts the server again if a test left it stopped."""
        if not (self.folder / "data" / "postmaster.pid").exists():
            self.launch()

    def encrypt(self):
        """Makes a certificate for localhost and uses it; gives the certificate's file."""
        data = self.folder / "data"
        self.run("openssl", "req", "-new", "-x509", "-days", "2", "-nodes", "-subj", "/CN=localhost", "-addext",
                 "subjectAltName=DNS:localhost", "-out", data / "server.crt", "-keyout", data / "server.key",
                 stderr=subprocess.DEVNULL)
        self.run("chmod", "600", data / "server.key")
        self.sql("alter system set ssl = on")
        self.sql("select pg_reload_conf()")
        return data / "server.crt"

    def stop(self, mode="immediate"):
        self.run(self.programs / "pg_ctl", "-D", self.folder / "data", "-m", mode, "stop")


def run_store(*arguments, environment=None):
    """Runs oxc-store; gives the finished process."""
    return subprocess.run([str(STAGE / "oxc-store"), *arguments], capture_output=True, text=True, timeout=300, check=False,
                          env=environment)


def store(*arguments, environment=None):
    """Runs oxc-store, which succeeds; gives what it printed."""
    done = run_store(*arguments, environment=environment)
    if done.returncode != 0:
        raise AssertionError("oxc-store ended with %d: %s" % (done.returncode, done.stderr))
    return done.stdout


class Member(Courier):
    """An application folder whose data file is a link to the server's store."""

    def __init__(self, server, user="sched"):
        super().__init__()
        self.server = server
        self.database.unlink()
        store("link", "--to", server.connect(user=user), str(self.database))

    def sql(self, statement, *values):
        """The rows as texts. The data file is no database here."""
        if values:
            raise ValueError("values are part of a statement for the server")
        return self.server.rows(statement)

    def subjects(self):
        return [mail["Subject"] for mail in self.mails()]


@unittest.skipUnless(POSTGRES, "no PostgreSQL server is installed")
class TeamTest(unittest.TestCase):
    """One server for all tests of a class, with a fresh store for each."""

    @classmethod
    def setUpClass(cls):
        cls.server = TeamServer()

    @classmethod
    def tearDownClass(cls):
        cls.server.close()

    def setUp(self):
        self.server.fresh()
        self.members = []
        self.addCleanup(lambda: [member.close() for member in self.members])

    def member(self, user="sched"):
        self.members.append(Member(self.server, user))
        return self.members[-1]
