"""A report on a real PostgreSQL: the schedule's user and password are what its tables are logged on with."""

import glob
import os
import pathlib
import shutil
import socket
import subprocess
import tempfile
import unittest

from harness import CourierTest, attachment, pdf_text

PROGRAMS = sorted(glob.glob("/usr/lib/postgresql/*/bin"))

REPORT = """<?xml version="1.0" encoding="utf-8"?>
<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition">
  <DataSources><DataSource Name="Books"><ConnectionProperties><DataProvider>PostgreSQL</DataProvider>
    <ConnectString>Host=127.0.0.1;Port=%d;Database=postgres</ConnectString></ConnectionProperties></DataSource>
  </DataSources>
  <DataSets><DataSet Name="Titles"><Query><DataSourceName>Books</DataSourceName>
    <CommandText>select title, copies from titles where copies &gt; @Least order by title</CommandText>
    <QueryParameters><QueryParameter Name="@Least"><Value>=Parameters!Least.Value</Value></QueryParameter>
    </QueryParameters></Query>
    <Fields><Field Name="title"><DataField>title</DataField></Field>
      <Field Name="copies"><DataField>copies</DataField></Field></Fields></DataSet></DataSets>
  <ReportParameters><ReportParameter Name="Least"><DataType>Integer</DataType>
    <DefaultValue><Values><Value>0</Value></Values></DefaultValue><Prompt>Least</Prompt></ReportParameter>
  </ReportParameters>
  <ReportSections><ReportSection><Body><ReportItems><Tablix Name="T">
    <TablixBody><TablixColumns><TablixColumn><Width>3in</Width></TablixColumn></TablixColumns>
      <TablixRows><TablixRow><Height>0.25in</Height><TablixCells><TablixCell><CellContents><Textbox Name="C">
        <Paragraphs><Paragraph><TextRuns><TextRun><Value>=Fields!title.Value &amp; ": " &amp; Fields!copies.Value</Value>
        </TextRun></TextRuns></Paragraph></Paragraphs></Textbox></CellContents></TablixCell></TablixCells></TablixRow>
      </TablixRows></TablixBody>
    <TablixColumnHierarchy><TablixMembers><TablixMember/></TablixMembers></TablixColumnHierarchy>
    <TablixRowHierarchy><TablixMembers><TablixMember><Group Name="Details"/></TablixMember></TablixMembers>
    </TablixRowHierarchy><DataSetName>Titles</DataSetName><Height>0.25in</Height><Width>3in</Width></Tablix>
  </ReportItems><Height>1in</Height></Body><Width>5in</Width><Page/></ReportSection></ReportSections>
</Report>
"""


class Postgres:
    """A server of its own in a temporary folder, with a table that only `clerk` may read."""

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="oxc-pg-"))
        self.prefix = []
        if os.geteuid() == 0:  # the server refuses to run as root
            shutil.chown(self.folder, "postgres", "postgres")
            self.prefix = ["runuser", "-u", "postgres", "--"]
        data = self.folder / "data"
        self.run("initdb", "-D", data, "-U", "postgres", "-A", "trust")
        # Only the clerk has to give a password.
        (data / "pg_hba.conf").write_text("host all clerk 127.0.0.1/32 scram-sha-256\nlocal all postgres trust\n")
        self.start(data)
        self.sql("create role clerk login password 'it is open'; create table titles(title text, copies int);"
                 "insert into titles values('Emma', 3), ('Ulysses', 1), ('Beowulf', 7); grant select on titles to clerk")

    def start(self, data, tries=5):
        """On a free port; another program may take it in between, so more than one is tried."""
        with socket.socket() as probe:
            probe.bind(("127.0.0.1", 0))
            self.port = probe.getsockname()[1]
        try:
            self.run("pg_ctl", "-D", data, "-w", "-l", self.folder / "log", "-o",
                     "-p %d -k %s -c listen_addresses=127.0.0.1 -c fsync=off" % (self.port, self.folder), "start")
        except subprocess.CalledProcessError:
            if tries == 0:
                raise AssertionError((self.folder / "log").read_text())
            self.start(data, tries - 1)

    def run(self, program, *arguments):
        subprocess.run([*self.prefix, str(pathlib.Path(PROGRAMS[-1]) / program), *map(str, arguments)], check=True,
                       stdout=subprocess.DEVNULL, cwd=self.folder)

    def sql(self, statements):
        self.run("psql", "-q", "-h", self.folder, "-p", self.port, "-U", "postgres", "-v", "ON_ERROR_STOP=1", "-c",
                 statements)

    def close(self):
        self.run("pg_ctl", "-D", self.folder / "data", "-m", "immediate", "stop")
        shutil.rmtree(self.folder, ignore_errors=True)


@unittest.skipUnless(PROGRAMS, "no PostgreSQL server here")
class Logon(CourierTest):
    @classmethod
    def setUpClass(cls):
        cls.server = Postgres()
        cls.addClassCleanup(cls.server.close)

    def run_as(self, user, password, login="T", **columns):
        report = self.courier.folder / "titles.rpt"
        report.write_text(REPORT % self.server.port)
        key = self.courier.schedule(report=report, UserName=user, Password=password, LoginReq=login, **columns)
        self.courier.start()
        # A failure's row comes before its alert.
        self.courier.wait(lambda: self.courier.history(key) and self.courier.mails(), what="history row and mail")
        self.courier.stop()
        return self.courier.history(key)[0]

    def assert_refused(self, row):
        self.assertEqual(row[2], "Failure")
        self.assertNotIn("'", row[3])
        self.assertIn("Books", row[3])
        alert = self.courier.mails()[0]
        self.assertEqual(alert["Subject"], "Pressroom Error")

    def test_user_and_password_open_the_table(self):
        self.assertEqual(self.run_as("clerk", "it is open")[2:], ("Success", "None"))
        text = pdf_text(attachment(self.courier.mails()[0])[2])
        self.assertEqual(text.split("\n")[:3], ["Beowulf: 7", "Emma: 3", "Ulysses: 1"], text)

    def test_formula_filters_what_the_query_gives(self):
        self.run_as("clerk", "it is open", SelectionForm="{Titles.copies} > 2 and not ({title} startswith 'B')")
        text = pdf_text(attachment(self.courier.mails()[0])[2])
        self.assertEqual(text.split(), ["Emma:", "3"])

    def test_wrong_password_is_a_failure_that_names_the_source_and_no_secret(self):
        row = self.run_as("clerk", "open sesame")
        self.assert_refused(row)
        self.assertNotIn("sesame", row[3])

    def test_no_logon_without_the_flag(self):
        self.assert_refused(self.run_as("clerk", "it is open", login="F"))


if __name__ == "__main__":
    unittest.main()
