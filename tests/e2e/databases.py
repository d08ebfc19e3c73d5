# SPDX-License-Identifier: GPL-3.0-or-later
"""Database servers for tests: each in a temporary folder of its own, on loopback, with the user `clerk`, whose password
is PASSWORD and who may read and no more. And reports that show what a query of theirs gives."""

import glob
import os
import pathlib
import shutil
import socket
import subprocess
import tempfile
import time
from xml.sax.saxutils import escape

PASSWORD = "it is open"

POSTGRES = sorted(glob.glob("/usr/lib/postgresql/*/bin"))
MARIADB = shutil.which("mariadbd", path="/usr/sbin:/usr/bin") and shutil.which("mariadb-install-db")


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def folder_in_memory():
    """Where files are written and deleted fastest: a server makes a thousand of them, and 300 for each database. None if
    there is little room."""
    memory = "/dev/shm"
    has_room = os.access(memory, os.W_OK) and shutil.disk_usage(memory).free > 2 << 30
    return memory if has_room else None


class Server:
    """What both servers have in common: neither runs as root, and a free port may be taken before they are up."""

    def __init__(self, user, within=None):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="oxc-db-", dir=within))
        self.prefix = []
        if os.geteuid() == 0:
            shutil.chown(self.folder, user)
            self.prefix = ["runuser", "-u", user, "--"]

    def run(self, program, *arguments, **options):
        # Their words are compared, whatever region the tests run in.
        subprocess.run([*self.prefix, str(program), *map(str, arguments)], check=True, stdout=subprocess.DEVNULL,
                       cwd=self.folder, env=dict(os.environ, LC_ALL="C.UTF-8", LANGUAGE=""), **options)

    def start(self, tries=5):
        self.port = free_port()
        try:
            self.launch()
        except (subprocess.CalledProcessError, TimeoutError):
            if tries == 0:
                raise AssertionError((self.folder / "log").read_text())
            self.start(tries - 1)

    def close(self):
        self.stop()
        shutil.rmtree(self.folder, ignore_errors=True)


class Postgres(Server):
    def __init__(self, locale="C", trusts_loopback=False):
        super().__init__("postgres", folder_in_memory())
        self.programs = pathlib.Path(POSTGRES[-1])
        self.run(self.programs / "initdb", "-D", self.folder / "data", "-U", "postgres", "-A", "trust", "-E", "UTF8",
                 "--no-sync", "--locale=" + locale)
        # Only the clerk has to give a password.
        (self.folder / "data" / "pg_hba.conf").write_text(
            "host all clerk 127.0.0.1/32 scram-sha-256\nlocal all postgres trust\n" +
            ("host all all 127.0.0.1/32 trust\n" if trusts_loopback else ""))
        self.start()
        self.sql("create role clerk login password '%s'" % PASSWORD)

    def launch(self):
        self.run(self.programs / "pg_ctl", "-D", self.folder / "data", "-w", "-l", self.folder / "log", "-o",
                 "-p %d -k %s -c listen_addresses=127.0.0.1 -c fsync=off" % (self.port, self.folder), "start")

    def sql(self, statements):
        self.run(self.programs / "psql", "-q", "-h", self.folder, "-p", self.port, "-U", "postgres", "-v",
                 "ON_ERROR_STOP=1", "-c", statements)

    def stop(self):
        self.run(self.programs / "pg_ctl", "-D", self.folder / "data", "-m", "immediate", "stop")


class MariaDb(Server):
    def __init__(self):
        super().__init__("nobody")
        self.process = None
        self.install()
        self.start()
        self.sql("create database shop character set utf8mb4; create user clerk@'127.0.0.1' identified by '%s';"
                 "grant select, execute on shop.* to clerk@'127.0.0.1'" % PASSWORD, database="mysql")

    def install(self, tries=3):
        """Makes the data folder. On a busy machine the server's own script fails now and then, and leaves half of one."""
        try:
            self.run(MARIADB, "--no-defaults", "--datadir=%s/data" % self.folder, "--skip-test-db", "--skip-name-resolve",
                     "--auth-root-authentication-method=normal", stderr=subprocess.DEVNULL)
        except subprocess.CalledProcessError:
            if tries == 1:
                raise
            shutil.rmtree(self.folder / "data", ignore_errors=True)
            self.install(tries - 1)

    def launch(self):
        with open(self.folder / "log", "wb") as log:
            self.process = subprocess.Popen(
                [*self.prefix, shutil.which("mariadbd", path="/usr/sbin:/usr/bin"), "--no-defaults",
                 "--datadir=%s/data" % self.folder, "--port=%d" % self.port, "--bind-address=127.0.0.1",
                 "--socket=%s/socket" % self.folder, "--pid-file=%s/pid" % self.folder, "--skip-name-resolve",
                 "--innodb-flush-log-at-trx-commit=0"], cwd=self.folder, stdout=log, stderr=log)
        end = time.monotonic() + 30
        while time.monotonic() < end and self.process.poll() is None:
            if (self.folder / "socket").exists():
                return
            time.sleep(0.05)
        self.stop()
        raise TimeoutError

    def sql(self, statements, database="shop"):
        self.run("mariadb", "--no-defaults", "--socket=%s/socket" % self.folder, "--user=root", "--database", database,
                 input=statements.encode())

    def stop(self):
        if self.process.poll() is None:
            # As root the server runs below runuser, which passes the signal on.
            self.process.terminate()
            self.process.wait(30)


def report(provider, connect_string, command, fields, parameters=(), command_type="Text", timeout=0, typed=None):
    """A report whose one table shows each row as a line, its values parted by |.

    `parameters` are (name in the query, name in the report, type, whether several); `typed` gives fields a type.
    """
    query = "".join('<QueryParameter Name="%s"><Value>=Parameters!%s.Value</Value></QueryParameter>' % (mark, name)
                    for mark, name, *_ in parameters)
    own = "".join('<ReportParameter Name="%s"><DataType>%s</DataType><MultiValue>%s</MultiValue><Nullable>%s</Nullable>'
                  '</ReportParameter>' % (name, kind, str(several).lower(), str(not several).lower())
                  for _, name, kind, several in parameters)
    columns = "".join('<Field Name="%s"><DataField>%s</DataField>%s</Field>' % (
        name, name, "<TypeName>%s</TypeName>" % typed[name] if typed and name in typed else "") for name in fields)
    line = ' & "|" & '.join("Fields!%s.Value" % name for name in fields)
    return """<?xml version="1.0" encoding="utf-8"?>
<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition">
  <DataSources><DataSource Name="Books"><ConnectionProperties><DataProvider>%s</DataProvider>
    <ConnectString>%s</ConnectString></ConnectionProperties></DataSource></DataSources>
  <DataSets><DataSet Name="Titles"><Query><DataSourceName>Books</DataSourceName><CommandType>%s</CommandType>
    <CommandText>%s</CommandText>%s<Timeout>%d</Timeout></Query><Fields>%s</Fields></DataSet></DataSets>
  %s
  <ReportSections><ReportSection><Body><ReportItems><Tablix Name="T">
    <TablixBody><TablixColumns><TablixColumn><Width>18in</Width></TablixColumn></TablixColumns>
      <TablixRows><TablixRow><Height>0.25in</Height><TablixCells><TablixCell><CellContents><Textbox Name="C">
        <Paragraphs><Paragraph><TextRuns><TextRun><Value>%s</Value></TextRun></TextRuns></Paragraph></Paragraphs>
      </Textbox></CellContents></TablixCell></TablixCells></TablixRow></TablixRows></TablixBody>
    <TablixColumnHierarchy><TablixMembers><TablixMember/></TablixMembers></TablixColumnHierarchy>
    <TablixRowHierarchy><TablixMembers><TablixMember><Group Name="Details"/></TablixMember></TablixMembers>
    </TablixRowHierarchy><DataSetName>Titles</DataSetName><Height>0.25in</Height><Width>18in</Width></Tablix>
  </ReportItems><Height>1in</Height></Body><Width>18in</Width>
  <Page><PageWidth>18in</PageWidth><PageHeight>11in</PageHeight></Page></ReportSection></ReportSections>
</Report>
""" % (provider, escape(connect_string), command_type, escape(command),
       "<QueryParameters>%s</QueryParameters>" % query if query else "", timeout, columns,
       "<ReportParameters>%s</ReportParameters>" % own if own else "", escape("=" + line))
