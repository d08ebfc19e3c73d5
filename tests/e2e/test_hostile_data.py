# SPDX-License-Identifier: GPL-3.0-or-later
"""What a report may not do with its data sources: write, hand out files of this machine, or read the program's own
files."""

import os
import pathlib
import sqlite3
import unittest

from databases import report
from rogue_servers import FileThief
from test_databases import DatabaseTest, has_driver


class ThievingServer(DatabaseTest):
    provider = "MySQL"

    def setUp(self):
        super().setUp()
        self.secret = self.courier.folder / "config" / "oxbow-courier" / "mail.ini"
        self.secret.parent.mkdir(parents=True, exist_ok=True)
        self.secret.write_text("[Mail]\nPassword=open sesame\n")

    def ask(self, command, polite):
        thief = FileThief(self.secret, polite)
        self.addCleanup(thief.close)
        said = self.failure(command, connect="Server=127.0.0.1;Port=%d;Database=shop" % thief.port)
        self.assertEqual(thief.stolen, [])
        return said, thief

    def test_load_data_is_not_even_sent(self):
        for command in ("LOAD DATA LOCAL INFILE '%s' INTO TABLE t" % self.secret,
                        "/* it reads */ load data local infile '%s' into table t" % self.secret,
                        "/*!load data local infile '%s' into table t*/" % self.secret,
                        "/*M!100000 load data local infile '%s' into table t*/" % self.secret):
            said, thief = self.ask(command, True)
            self.assertIn("a report only reads", said)
            self.assertEqual([one for one in thief.statements if b"load" in one.lower()], [])

    def test_file_is_not_handed_out_whatever_is_answered_so(self):
        for polite in (False, True):
            thief = self.ask("select title from titles", polite)[1]
            self.assertNotEqual(thief.statements, [])


class OwnFiles(DatabaseTest):
    """The configuration folder, both databases and mails that wait are no report's data, whatever leads to them."""

    REFUSED = "belongs to the program, and no report may read it"

    def setUp(self):
        super().setUp()
        self.config = self.courier.folder / "config" / "oxbow-courier"
        self.config.mkdir(parents=True, exist_ok=True)
        (self.config / "mail.ini").write_text("[Mail]\nPassword=open sesame\n")
        self.live = self.courier.app / "PressroomLive.dat"
        if not self.live.exists():
            sqlite3.connect(self.live).executescript("create table a(title text); insert into a values('x')")
        for suffix in ("-wal", "-shm"):
            pathlib.Path(str(self.live) + suffix).touch()

    def refused(self, provider, connect, command):
        self.provider = provider
        said = self.failure(command, connect=connect, password=None)
        self.assertIn(self.REFUSED, said, connect)
        self.assertNotIn("sesame", said)

    def test_text_files_are_refused(self):
        for file in ("mail.ini", "settings.reg"):
            (self.config / file).touch()
            for provider, command in (("CSV", ""), ("TXT", ""), ("XML", "A/B"), ("JSON", "$.a")):
                self.refused(provider, "file=%s" % (self.config / file), command)
        self.refused("CSV", str(self.config), "select * from mail.ini")

    def test_what_opens_a_server_is_refused(self):
        (self.courier.folder / ".postgresql").mkdir()
        for name in (".pgpass", ".postgresql/postgresql.key"):
            (self.courier.folder / name).write_text("*:*:*:*:open sesame\n")
            self.refused("TXT", "file=%s" % (self.courier.folder / name), "")

    def test_databases_are_refused(self):
        for name in ("PressroomLive.dat", "PressroomLive.dat-wal", "PressroomLive.dat-shm", "Pressroom.dat"):
            file = str(self.courier.app / name)
            for path in (file, "Z:" + file.replace("/", "\\"), file.upper(), name,
                         str(self.courier.app / "samples" / ".." / name)):
                self.refused("SQLITE", "Data Source=" + path, "select title from a")
                self.refused("CSV", "file=" + path, "")

    def test_mails_that_wait_are_refused(self):
        for folder in (self.courier.app / "outbox", self.courier.folder / "data" / "oxbow-courier" / "outbox"):
            folder.mkdir(parents=True)
            mail = folder / "20261122-1.eml"
            mail.write_text("Subject: Salaries\n")
            self.refused("CSV", "file=%s" % mail, "")
            link = self.courier.folder / ("link-" + folder.parent.name)
            os.link(mail, link)
            self.refused("CSV", "file=%s" % link, "")

    def test_links_do_not_lead_there(self):
        self.link = self.courier.folder / "link"
        for link in (os.symlink, os.link):
            for target in (self.config / "mail.ini", self.live):
                self.link.unlink(missing_ok=True)
                link(target, self.link)
                self.refused("CSV", "file=%s" % self.link, "")
                self.refused("SQLITE", "Data Source=%s" % self.link, "select title from a")
        folder = self.courier.folder / "inner"
        folder.symlink_to(self.config, target_is_directory=True)
        self.refused("CSV", "file=%s/mail.ini" % folder, "")
        folder.unlink()
        folder.symlink_to(self.courier.folder / "config", target_is_directory=True)
        self.refused("CSV", "file=%s/oxbow-courier/mail.ini" % folder, "")

    def test_live_database_that_is_a_link_is_refused_by_both_names(self):
        elsewhere = self.courier.folder / "elsewhere.db"
        self.live.rename(elsewhere)
        self.live.symlink_to(elsewhere)
        for path in (self.live, elsewhere):
            self.refused("SQLITE", "Data Source=%s" % path, "select title from a")
        wal = pathlib.Path(str(elsewhere) + "-wal")
        wal.touch()
        self.refused("CSV", "file=%s" % wal, "")

    def test_odbc_driver_does_not_open_them(self):
        if not has_driver("SQLite3"):
            self.skipTest("no ODBC driver of SQLite here")
        self.refused("ODBC", "Driver={SQLite3};Database=%s" % self.live, "select title from a")
        said = self.failure("select title from a", password=None,
                            connect="Driver={SQLite3};Database=file:%s?mode=ro" % self.live)
        self.assertIn('"Database" of the connect string is an address; give the file', said)

    def test_what_the_system_makes_up_is_no_file(self):
        for file in ("/proc/self/environ", "/proc/self/fd/0", "/proc/self/root/proc/self/status", "/dev/stdin",
                     "/sys/kernel/uevent_seqnum"):
            if os.path.exists(file):
                self.provider = "CSV"
                said = self.failure("", connect="file=" + file, password=None)
                self.assertRegex(said, "is no file on a disk|does not exist")

    def test_shared_files_images_and_subreports_are_refused(self):
        beside = self.courier.folder
        (beside / "S.rds").symlink_to(self.config / "mail.ini")
        text = report("CSV", "x", "", ["title"])
        shared = text.replace("<ConnectionProperties><DataProvider>CSV</DataProvider>\n    <ConnectString>x"
                              "</ConnectString></ConnectionProperties>", "<DataSourceReference>S</DataSourceReference>")
        self.assertNotEqual(shared, text)
        inner = report("ENTERDATA", "", "<Query><XmlData><R><title>a</title></R></XmlData></Query>", ["title"])
        before, rest = inner.split('<Textbox Name="C">')
        after = rest.split("</Textbox>")[1]
        image = before + ('<Image Name="C"><Source>External</Source><Value>%s</Value></Image>' %
                          (self.config / "mail.ini")) + after
        subreport = before + ('<Subreport Name="C"><ReportName>mail.ini</ReportName></Subreport>') + after
        (beside / "mail.ini").symlink_to(self.config / "mail.ini")
        for one in (shared, image, subreport):
            done = self.export(one, password=None)
            self.assertEqual(done.returncode, 1, done.stderr)
            self.assertIn(self.REFUSED, done.stderr)


if __name__ == "__main__":
    unittest.main()
