# SPDX-License-Identifier: GPL-3.0-or-later
"""Reports on real database servers: PostgreSQL, MariaDB, and both of ODBC's ways to ask one. What a value becomes, how
parameters reach the server, and what the program says when the server will not."""

import datetime
import pathlib
import sqlite3
import struct
import subprocess
import threading
import time
import unittest
import zlib

from databases import MARIADB, PASSWORD, POSTGRES, MariaDb, Postgres, free_port, report
from harness import CourierTest, pdf_text


def png(width, height):
    """A picture of one colour."""
    def part(name, body):
        return struct.pack(">I", len(body)) + name + body + struct.pack(">I", zlib.crc32(name + body))
    rows = b"".join(b"\0" + b"\x20\x60\xa0" * width for _ in range(height))
    return (b"\x89PNG\r\n\x1a\n" + part(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)) +
            part(b"IDAT", zlib.compress(rows)) + part(b"IEND", b""))


class DatabaseTest(CourierTest):
    """Runs reports by oxc-report, as the user clerk unless told otherwise."""

    provider = connect = None

    def export(self, text, *arguments, password=PASSWORD, kind="pdf"):
        self.file = self.courier.folder / "books.rpt"
        self.file.write_text(text)
        self.output = self.courier.folder / ("books." + kind)
        self.output.unlink(missing_ok=True)
        logon = ["--user", "clerk", "--password", password] if password is not None else []
        return subprocess.run([str(self.courier.app / "oxc-report"), "export", str(self.file), "-f", kind, "-o",
                               str(self.output), *logon, *arguments], capture_output=True, text=True, timeout=120,
                              env=self.courier.environment())

    def rows(self, command, fields, *arguments, **options):
        logon = {"password": options.pop("password")} if "password" in options else {}
        done = self.export(report(self.provider, self.connect, command, fields, **options), *arguments, **logon)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return pdf_text(self.output.read_bytes()).split("\n")[:-1]

    def failure(self, command, fields=("title",), *arguments, password=PASSWORD, connect=None, **options):
        done = self.export(report(self.provider, connect or self.connect, command, fields, **options), *arguments,
                           password=password)
        self.assertEqual((done.returncode, done.stdout), (1, ""), done.stderr)
        self.assertEqual(done.stderr.count("\n"), 1, done.stderr)
        self.assertNotIn("'", done.stderr)
        self.assertFalse(self.output.exists())
        self.assertIn('Data set "Titles", data source "Books": ', done.stderr)
        return done.stderr


class ServerTests:
    """What every server must do; a class below says which server and how it writes things."""

    TITLES = "select title from titles where copies > %s order by title"

    def test_named_parameters_are_bound(self):
        for mark in ("@Least", ":Least"):
            self.assertEqual(self.rows(self.TITLES % mark, ["title"], "-p", "Least=2",
                                       parameters=[(mark, "Least", "Integer", False)]), ["Beowulf", "Emma"])

    def test_marks_are_bound_in_their_order(self):
        self.assertEqual(self.rows("select title from titles where copies > ? and title < ? order by title", ["title"],
                                   "-p", "Least=2", "-p", "Until=C",
                                   parameters=[("?", "Least", "Integer", False), ("?", "Until", "String", False)]),
                         ["Beowulf"])

    def test_value_is_never_a_part_of_the_statement(self):
        self.assertEqual(self.rows("select title from titles where title = @T or title = 'Emma'", ["title"], "-p",
                                   "T=x' or '1'='1", parameters=[("@T", "T", "String", False)]), ["Emma"])

    def test_comment_with_a_mark_does_not_disturb_parameters(self):
        self.assertEqual(self.rows("select title -- it's @Least ?\nfrom titles /* don't */ where copies > @Least",
                                   ["title"], "-p", "Least=3", parameters=[("@Least", "Least", "Integer", False)]),
                         ["Beowulf"])

    def test_multi_value_parameter_is_a_list(self):
        self.assertEqual(self.rows("select title from titles where title in (@Which) order by title", ["title"], "-p",
                                   "Which=Emma", "-p", "Which=Ulysses",
                                   parameters=[("@Which", "Which", "String", True)]), ["Emma", "Ulysses"])

    NO_DAY = "@Day is null"

    def test_dates_booleans_and_nulls_are_bound(self):
        self.assertEqual(self.rows("select word from kinds where day = @Day and yes = @Yes", ["word"], "-p",
                                   "Day=2024-02-29", "-p", "Yes=True",
                                   parameters=[("@Day", "Day", "DateTime", False), ("@Yes", "Yes", "Boolean", False)]),
                         ["Zoë 東京 🙂"])
        self.assertEqual(self.rows("select id from kinds where day = @Day or (%s and day is null)" % self.NO_DAY, ["id"],
                                   parameters=[("@Day", "Day", "DateTime", False)]), ["2"])

    def test_values_have_their_types(self):
        fields = ["id", "price", "day", "moment", "clock", "yes", "word"]
        rows = self.rows("select %s from kinds order by id" % ", ".join(fields), fields, typed={"yes": "System.Boolean"})
        self.assertEqual(rows, ["2||||||", "9007199254740993|1234567.89|2/29/2024|2/29/2024 1:05:09 PM|13:05:09|"
                                           "True|Zoë 東京 🙂"])

    def test_moment_that_a_clock_change_leaves_out_is_itself(self):
        self.courier.extra_environment = {"TZ": "Europe/Berlin"}
        self.assertEqual(self.rows("select moment from gaps where moment = @Moment", ["moment"], "-p",
                                   "Moment=2024-03-31 02:30:00",
                                   parameters=[("@Moment", "Moment", "DateTime", False)]), ["3/31/2024 2:30:00 AM"])

    def test_decimals_are_added_up_as_they_are_written(self):
        text = report(self.provider, self.connect, "select cents from coins", ["cents"])
        text = text.replace("=Fields!cents.Value", "=Sum(Fields!cents.Value, &quot;Titles&quot;)")
        self.assertEqual(self.export(text).returncode, 0)
        self.assertEqual(pdf_text(self.output.read_bytes()).split("\n")[0], "0.30")

    def test_decimals_keep_all_their_digits(self):
        rows = self.rows("select amount from sums where amount is not null order by 1", ["amount"])
        self.assertEqual([row.strip() for row in rows], ["0.1000000000", "123456789012345678.0123456789"])

    def test_decimal_finds_its_equal(self):
        text = report(self.provider, self.connect, "select amount from sums where amount = @Amount", ["amount"],
                      parameters=[("@Amount", "Amount", "String", False)])
        text = text.replace("=Parameters!Amount.Value", "=CDec(Parameters!Amount.Value)")
        for amount in ("0.1000000000", "123456789012345678.0123456789"):
            done = self.export(text, "-p", "Amount=" + amount)
            self.assertEqual((done.returncode, done.stderr), (0, ""))
            self.assertEqual(pdf_text(self.output.read_bytes()).split("\n")[0].strip(), amount)

    def test_picture_in_a_table_is_drawn(self):
        text = report(self.provider, self.connect, "select picture from kinds where picture is not null", ["picture"])
        before, rest = text.split('<Textbox Name="C">')
        after = rest.split("</Textbox>")[1]
        done = self.export(before + '<Image Name="C"><Source>Database</Source><Value>=Fields!picture.Value</Value>'
                           "<MIMEType>image/png</MIMEType></Image>" + after)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        listed = subprocess.run(["pdfimages", "-list", str(self.output)], check=True, capture_output=True, text=True)
        self.assertEqual(listed.stdout.split("\n")[2].split()[3:5], ["7", "5"])

    def test_table_is_read_directly(self):
        self.assertEqual(sorted(self.rows("titles", ["title"], command_type="TableDirect")),
                         ["Beowulf", "Emma", "Ulysses"])

    def test_wrong_password_is_told_without_it(self):
        said = self.failure("select title from titles", password="open sesame")
        self.assertIn('the logon of the user "clerk" was refused', said)
        self.assertNotIn("sesame", said)

    def test_server_that_is_down_is_named(self):
        said = self.failure("select title from titles", connect=self.connect_to(free_port()))
        self.assertIn('the server "127.0.0.1" cannot be reached', said)

    def test_encryption_that_is_asked_for_is_not_given_up(self):
        for mode in self.SSL_MODES:
            said = self.failure("select title from titles", connect=self.connect + ";SSL Mode=" + mode)
            self.assertRegex(said, "(?i)ssl", mode)
        self.assertIn('the SSL mode "Sometimes" cannot be used here',
                      self.failure("select title from titles", connect=self.connect + ";SslMode=Sometimes"))

    def test_missing_table_and_wrong_statement_are_told_apart(self):
        self.assertIn("a table is missing: ", self.failure("select title from nowhere"))
        self.assertIn("the query is wrong: ", self.failure("select title frm titles where"))

    def test_report_only_reads(self):
        self.server.sql("grant insert on %s to %s" % self.grantee)
        said = self.failure("insert into titles values('Mine', 1)")
        self.assertIn('a report only reads: the query begins with "insert"', said)
        self.assertEqual(len(self.rows("select title from titles", ["title"])), 3)

    def test_second_statement_is_refused(self):
        self.assertIn("the query is more than one statement", self.failure("select title from titles; select 1"))

    def test_query_ends_with_its_time(self):
        began = time.monotonic()
        said = self.failure(self.SLOW % 30, ["id"], timeout=1)
        self.assertLess(time.monotonic() - began, 10)
        self.assertIn("the query took longer than 1 second", said)


@unittest.skipUnless(POSTGRES, "no PostgreSQL server here")
class OnPostgres(ServerTests, DatabaseTest):
    provider = "PostgreSQL"
    grantee = ("titles", "clerk")
    SLOW = "select 1 as id, pg_sleep(%d)"
    SSL_MODES = ("Require", "VerifyFull", "verify-ca")

    @classmethod
    def setUpClass(cls):
        cls.server = Postgres()
        cls.addClassCleanup(cls.server.close)
        cls.connect = cls.connect_to(cls.server.port)
        cls.server.sql(
            "create table titles(title text, copies int);"
            "insert into titles values('Emma', 3), ('Ulysses', 1), ('Beowulf', 7);"
            "create table gaps(moment timestamp); insert into gaps values('2024-03-31 02:30:00');"
            "create table coins(cents numeric(10,2)); insert into coins values(0.1), (0.2);"
            "create table sums(amount numeric(28,10), cash money);"
            "insert into sums values(0.1, 1234.5), (123456789012345678.0123456789, -5.25), (null, null);"
            "create table kinds(id bigint, price numeric(12,2), day date, moment timestamp, clock time, yes boolean,"
            " word text, picture bytea, big numeric(20,0), zoned timestamptz, json jsonb);"
            "insert into kinds values(9007199254740993, 1234567.89, '2024-02-29', '2024-02-29 13:05:09', '13:05:09',"
            " true, 'Zoë 東京 🙂', '\\x%s', 9007199254740995, '2024-02-29 13:05:09+00', '{\"a\": 1}'),"
            " (2, null, null, null, null, null, null, null, null, null, null);"
            "create function above(low int) returns table(title text) language sql as"
            " 'select t.title from titles t where t.copies > low order by 1';"
            "grant select on titles, coins, gaps, kinds, sums to clerk" % png(7, 5).hex())

    @staticmethod
    def connect_to(port):
        return "Host=127.0.0.1;Port=%d;Database=postgres" % port

    def test_own_types_are_shown_as_the_server_writes_them(self):
        # The server gives a moment in the zone of the machine that asks.
        moment = datetime.datetime(2024, 2, 29, 13, 5, 9, tzinfo=datetime.timezone.utc).astimezone()
        shown = f"2/{moment.day}/2024 {moment.hour % 12 or 12}:{moment:%M:%S %p}"
        self.assertEqual(self.rows("select big, zoned, json from kinds where big is not null", ["big", "zoned", "json"]),
                         ['9007199254740995|' + shown + '|{"a": 1}'])

    def test_money_is_a_decimal(self):
        text = report(self.provider, self.connect, "select cash from sums where cash is not null", ["cash"])
        text = text.replace("=Fields!cash.Value", "=Sum(Fields!cash.Value, &quot;Titles&quot;)")
        self.assertEqual(self.export(text).returncode, 0)
        self.assertEqual(pdf_text(self.output.read_bytes()).split("\n")[0], self.CASH)

    CASH = "1229.25"

    def test_function_is_a_stored_procedure(self):
        self.assertEqual(self.rows("above", ["title"], "-p", "Least=2", command_type="StoredProcedure",
                                   parameters=[("@low", "Least", "Integer", False)]), ["Beowulf", "Emma"])

    def test_server_that_goes_in_the_middle_is_told(self):
        threading.Timer(1.5, lambda: self.server.sql(
            "select pg_terminate_backend(pid) from pg_stat_activity where usename = 'clerk'")).start()
        said = self.failure("select 1 as id, pg_sleep(0.1) from generate_series(1, 300)", ["id"])
        self.assertIn("the connection to the server was lost: ", said)

    def test_search_path_of_the_connect_string_is_used(self):
        self.server.sql("create schema if not exists other; create table if not exists other.only_there(title text);"
                        "grant usage on schema other to clerk; grant select on other.only_there to clerk")
        self.assertIn("a table is missing", self.failure("select title from only_there"))
        self.connect = self.connect + ";Search Path=other"
        self.assertEqual(self.rows("select count(*) as title from only_there", ["title"]), ["0"])

    def test_logon_in_the_connect_string_serves_as_well(self):
        connect = self.connect + ";Username=clerk;Password=" + PASSWORD
        done = self.export(report(self.provider, connect, "select title from titles order by 1", ["title"]), password=None)
        self.assertEqual((done.returncode, done.stderr), (0, ""))


@unittest.skipUnless(MARIADB, "no MariaDB server here")
class OnMariaDb(ServerTests, DatabaseTest):
    provider = "MySQL"
    grantee = ("shop.titles", "clerk@'127.0.0.1'")
    SLOW = "select 1 as id, sleep(%d) from titles"
    SSL_MODES = ("Required", "VerifyFull")

    @classmethod
    def setUpClass(cls):
        cls.server = MariaDb()
        cls.addClassCleanup(cls.server.close)
        cls.connect = cls.connect_to(cls.server.port)
        cls.server.sql(
            "create table titles(title varchar(40), copies int);"
            "insert into titles values('Emma', 3), ('Ulysses', 1), ('Beowulf', 7);"
            "create table gaps(moment datetime); insert into gaps values('2024-03-31 02:30:00');"
            "create table coins(cents decimal(10,2)); insert into coins values(0.1), (0.2);"
            "create table sums(amount decimal(28,10));"
            "insert into sums values(0.1), (123456789012345678.0123456789), (null);"
            "create table kinds(id bigint, price decimal(12,2), day date, moment datetime, clock time, yes boolean,"
            " word text, picture blob, big decimal(20,0), counted bigint unsigned, kind enum('a','b'), since year);"
            "set names utf8mb4;"
            "insert into kinds values(9007199254740993, 1234567.89, '2024-02-29', '2024-02-29 13:05:09', '13:05:09',"
            " true, 'Zoë 東京 🙂', x'%s', 9007199254740995, 42, 'b', 2024),"
            " (2, null, null, null, null, null, null, null, null, null, null, null);"
            "create procedure above(low int) select title from titles where copies > low order by 1" % png(7, 5).hex())

    @staticmethod
    def connect_to(port):
        return "Server=127.0.0.1;Port=%d;Database=shop" % port

    def test_own_types_are_shown_as_the_server_writes_them(self):
        self.assertEqual(self.rows("select big, counted, kind, since from kinds where big is not null",
                                   ["big", "counted", "kind", "since"]), ["9007199254740995|42|b|2024"])

    def test_procedure_is_called(self):
        self.assertEqual(self.rows("above", ["title"], "-p", "Least=2", command_type="StoredProcedure",
                                   parameters=[("@low", "Least", "Integer", False)]), ["Beowulf", "Emma"])

    def test_mariadb_is_another_name_of_it(self):
        self.provider = "MariaDB"
        self.assertEqual(self.rows("select title from titles where copies = 7", ["title"]), ["Beowulf"])

    def test_server_that_goes_in_the_middle_is_told(self):
        threading.Timer(1.5, self.kill_clerk).start()
        said = self.failure("select 1 as id, sleep(5) from titles", ["id"])
        self.assertIn("the connection to the server was lost: ", said)

    def kill_clerk(self):
        self.server.sql("kill user clerk@'127.0.0.1'")


def has_driver(name):
    """Whether the machine's list of ODBC drivers has it."""
    try:
        return "[%s]" % name in pathlib.Path("/etc/odbcinst.ini").read_text()
    except OSError:
        return False


@unittest.skipUnless(POSTGRES and has_driver("PostgreSQL Unicode"), "no ODBC driver of PostgreSQL here")
class OnOdbcServer(OnPostgres):
    """The same server and the same reports, asked through the driver manager."""

    provider = "ODBC"

    @staticmethod
    def connect_to(port):
        return "Driver={PostgreSQL Unicode};Server=127.0.0.1;Port=%d;Database=postgres" % port

    def test_search_path_of_the_connect_string_is_used(self):
        self.skipTest("a word of the other provider")

    # Each mark is a parameter of its own there, and this one has no type unless it is cast.
    NO_DAY = "cast(@Day as date) is null"

    def test_encryption_that_is_asked_for_is_not_given_up(self):
        said = self.failure("select title from titles", connect=self.connect + ";SSLmode=require")
        self.assertRegex(said, "(?i)ssl")

    def test_server_that_is_down_is_named(self):
        said = self.failure("select title from titles", connect=self.connect_to(free_port()))
        self.assertIn('the server "127.0.0.1" by the ODBC driver "PostgreSQL Unicode" cannot be reached', said)


@unittest.skipUnless(has_driver("SQLite3"), "no ODBC driver of SQLite here")
class OnOdbcFile(DatabaseTest):
    provider = "ODBC"

    def setUp(self):
        super().setUp()
        self.database = self.courier.folder / "titles.db"
        connection = sqlite3.connect(self.database)
        connection.executescript("create table titles(title text, copies integer, since date, price real);"
                                 "insert into titles values('Emma', 3, '2024-02-29', 1.5), ('Zoë', 1, null, null)")
        connection.close()
        self.connect = "Driver={SQLite3};Database=%s" % self.database

    def test_driver_is_named_in_the_connect_string(self):
        self.assertEqual(self.rows("select title, copies, price from titles where copies >= ? order by copies",
                                   ["title", "copies", "price"], "-p", "Least=1", password=None,
                                   parameters=[("?", "Least", "Integer", False)]), ["Zoë|1|", "Emma|3|1.5"])

    def test_data_source_of_the_machine_is_named_by_its_name(self):
        ini = self.courier.folder / "odbc.ini"
        ini.write_text("[Books]\nDriver=SQLite3\nDatabase=%s\n" % self.database)
        self.courier.extra_environment = {"ODBCINI": str(ini)}
        self.connect = "DSN=Books"
        self.assertEqual(self.rows("select title from titles order by 1", ["title"], password=None), ["Emma", "Zoë"])
        said = self.failure("select title from titles", connect="DSN=Nowhere", password=None)
        self.assertIn('the ODBC data source "Nowhere" cannot be reached', said)

    def test_report_only_reads(self):
        self.assertIn('a report only reads: the query begins with "delete"',
                      self.failure("delete from titles", password=None))

    def test_driver_that_is_not_installed_is_named_with_those_that_are(self):
        said = self.failure("select 1", connect="Driver={Wonder};Server=db", password=None)
        self.assertIn('the ODBC driver "Wonder" is not installed; there are: ', said)
        self.assertIn("SQLite3", said)

    def test_connect_string_cannot_load_a_library(self):
        for connect in (self.connect + ";LoadExt=/tmp/x.so", "Driver=/tmp/x.so;Database=x"):
            self.failure("select 1 as title", connect=connect, password=None)


@unittest.skipUnless(has_driver("FreeTDS"), "no ODBC driver of SQL Server here")
class OnSqlServer(DatabaseTest):
    """No server can be had: what the driver that is here makes of the connect strings of others."""

    provider = "SQL"

    def test_refused_connection_names_server_and_driver(self):
        for form in ("Data Source=127.0.0.1,%d;Initial Catalog=sales;User ID=sa;Password=it is open",
                     "Server=tcp:127.0.0.1,%d;Database=sales;Integrated Security=true;Encrypt=true",
                     "Data Source=127.0.0.1\\SALES,%d;Initial Catalog=sales;Integrated Security=SSPI"):
            said = self.failure("select 1", connect=form % free_port(), password=None)
            self.assertRegex(said, r'the server "127.0.0.1(\\SALES)?" by the ODBC driver "FreeTDS" cannot be reached')
            self.assertNotIn("it is open", said)

    def test_ole_db_provider_of_it_is_the_same_server(self):
        self.provider = "OLEDB"
        said = self.failure("select 1", password=None, connect=(
            "Provider=SQLOLEDB.1;Data Source=127.0.0.1,%d;Initial Catalog=sales" % free_port()))
        self.assertIn('the server "127.0.0.1" by the ODBC driver "FreeTDS" cannot be reached', said)

    def test_machine_without_a_driver_is_told(self):
        self.courier.extra_environment = {"ODBCSYSINI": str(self.courier.folder)}
        self.assertIn("no ODBC driver for SQL Server is installed (FreeTDS is one)",
                      self.failure("select 1", connect="Data Source=db", password=None))


if __name__ == "__main__":
    unittest.main()
