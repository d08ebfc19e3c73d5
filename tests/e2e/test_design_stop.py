# SPDX-License-Identifier: GPL-3.0-or-later
"""A query of the designer's dialogs that a server never ends is stopped, on the server too, and the next one runs."""

import subprocess
import time
import unittest

from databases import MARIADB, PASSWORD, POSTGRES, MariaDb, Postgres, report
from designer import DesignerTest

SOON = 30  # seconds, on a busy machine; the server's own limit is two minutes


class Stop(DesignerTest):
    def expect_stop(self, provider, connect, server, slow, running):
        """Runs the slow query of a data set, stops it, and runs another one; `running` asks the server for the first."""
        file = self.folder / "slow.rdl"
        file.write_text(report(provider, connect % server.port, slow, ["hush"]), "utf-8")
        main = self.start(str(file))
        self.wait(lambda: "slow.rdl" in self.title(main), "title of the file")
        self.keys("ctrl+alt+d")
        self.window("Data Set")
        self.keys("alt+q", "ctrl+Return")
        self.window("Query")
        self.wait(running, "slow query on the server", SOON)
        self.keys("Escape")
        self.wait(lambda: not self.query_windows(), "end of the box", SOON)
        self.wait(lambda: not running(), "end of the query on the server", SOON)
        self.keys("alt+q", "ctrl+a")
        self.type("select 42 as hush, 43 as answer")
        self.keys("ctrl+Return")
        time.sleep(1)
        self.keys("alt+q", "Tab", "Tab", "Return")  # from the rows Return is OK
        self.finish(main, file)

    def query_windows(self):
        return [one for one in self.display.windows(self.process.pid, "Query") if self.title(one) == "Query"]

    def finish(self, main, file):
        """Saves the report: its field is that of the query that ran last."""
        self.wait(lambda: not self.display.windows(self.process.pid, "Data Set"), "end of the dialog")
        self.display.focus(main)
        self.keys("ctrl+s")
        self.wait(lambda: "<DataField>answer</DataField>" in file.read_text("utf-8"), "saved field")
        self.quit()

    @unittest.skipUnless(POSTGRES, "no PostgreSQL server is installed")
    def test_a_query_of_postgresql_is_stopped(self):
        server = Postgres()
        self.addCleanup(server.close)

        def running():
            told = subprocess.run([*server.prefix, str(server.programs / "psql"), "-At", "-h", str(server.folder), "-p",
                                   str(server.port), "-U", "postgres", "-c",
                                   "select count(*) from pg_stat_activity where usename = 'clerk' and state = 'active'"],
                                  capture_output=True, text=True, check=True, cwd=server.folder)
            return int(told.stdout) > 0

        self.expect_stop("PostgreSQL", "Host=127.0.0.1;Port=%d;Database=postgres;Username=clerk;Password=" + PASSWORD,
                         server, "select pg_sleep(100) as hush", running)

    @unittest.skipUnless(MARIADB, "no MariaDB server is installed")
    def test_a_query_of_mariadb_is_stopped(self):
        server = MariaDb()
        self.addCleanup(server.close)

        def running():
            told = subprocess.run([*server.prefix, "mariadb", "--no-defaults", "--socket=%s/socket" % server.folder,
                                   "--user=root", "-N", "-e", "select count(*) from information_schema.processlist where "
                                   "user = 'clerk' and command in ('Query', 'Execute')"],
                                  capture_output=True, text=True, check=True, cwd=server.folder)
            return int(told.stdout) > 0

        self.expect_stop("MySQL", "Server=127.0.0.1;Port=%d;Database=shop;User ID=clerk;Password=" + PASSWORD, server,
                         "select benchmark(2000000000, md5('a')) as hush", running)
