# SPDX-License-Identifier: GPL-3.0-or-later
"""Database servers that stop answering: a report on them ends in its time, whatever it was waiting for. Real servers
behind a proxy that falls silent, with the connection left open."""

import concurrent.futures
import re
import socket
import subprocess
import threading
import time
import unittest

from databases import MARIADB, PASSWORD, POSTGRES, MariaDb, Postgres, report
from harness import CourierTest

SECONDS = 3    # the data set's own time
LONGEST = 45   # for the connection and the query, on a busy machine


class FallsSilent:
    """Hands bytes on to a server until the client has sent `mark`, and from then on another `more` bytes of answer.
    No mark: nothing is handed on at all."""

    def __init__(self, server_port, mark=None, more=0):
        self.server_port, self.mark, self.more = server_port, mark, more
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.port = self.listener.getsockname()[1]
        self.open = []
        threading.Thread(target=self.accept, daemon=True).start()

    def accept(self):
        while True:
            try:
                client, _ = self.listener.accept()
            except OSError:
                return
            self.open.append(client)
            if self.mark is None:
                continue
            server = socket.create_connection(("127.0.0.1", self.server_port))
            self.open.append(server)
            silent = threading.Event()
            threading.Thread(target=self.questions, args=(client, server, silent), daemon=True).start()
            threading.Thread(target=self.answers, args=(server, client, silent), daemon=True).start()

    def questions(self, client, server, silent):
        try:
            while data := client.recv(65536):
                if re.search(self.mark, data, re.IGNORECASE):
                    silent.set()
                    if not self.more:
                        return
                server.sendall(data)
        except OSError:
            pass

    def answers(self, server, client, silent):
        left = self.more
        try:
            while data := server.recv(4096):
                if silent.is_set():
                    if left <= 0:
                        return
                    left -= len(data)
                client.sendall(data)
        except OSError:
            pass

    def close(self):
        self.listener.close()
        for each in self.open:
            each.close()


STAGES = {
    "at once": (None, 0),
    "after the logon": (rb"transaction", 0),
    "after the question": (rb"hush", 0),
    "within the rows": (rb"hush", 100000),
}
LATE = "the query took longer than %d seconds and was given up\n" % SECONDS


class SilentServers(CourierTest):
    def run_report(self, provider, connect, command, number):
        return self.export(report(provider, connect, command, ["hush"], timeout=SECONDS), number)

    def export(self, text, number):
        folder = self.courier.folder
        file, output = folder / ("%d.rpt" % number), folder / ("%d.pdf" % number)
        file.write_text(text)
        begin = time.monotonic()
        done = subprocess.run([str(self.courier.app / "oxc-report"), "export", str(file), "-f", "pdf", "-o", str(output),
                               "--user", "clerk", "--password", PASSWORD], capture_output=True, text=True, timeout=150,
                              env=self.courier.environment())
        return done, time.monotonic() - begin, output.exists()

    def expect(self, stage, done, seconds, written):
        self.assertEqual((done.returncode, done.stdout, written), (1, "", False), done.stderr)
        self.assertLess(seconds, LONGEST)
        self.assertEqual(done.stderr.count("\n"), 1, done.stderr)
        self.assertIn('Data set "Titles", data source "Books": ', done.stderr)
        if stage in ("after the question", "within the rows"):
            self.assertTrue(done.stderr.endswith('data source "Books": ' + LATE), done.stderr)
        else:
            self.assertRegex(done.stderr, "cannot be reached or has no such database: |does not answer any more\n")

    def servers(self):
        """Provider, port, connect string and a query of many rows, of each way to a server that this machine has."""
        if POSTGRES:
            server = Postgres()
            self.addCleanup(server.close)
            rows = "select repeat('x', 500) as hush from generate_series(1, 100000)"
            yield "PostgreSQL", server.port, "Host=127.0.0.1;Port=%d;Database=postgres", rows
            yield "ODBC", server.port, "Driver={PostgreSQL Unicode};Server=127.0.0.1;Port=%d;Database=postgres", rows
        if MARIADB:
            server = MariaDb()
            self.addCleanup(server.close)
            yield ("MySQL", server.port, "Server=127.0.0.1;Port=%d;Database=shop",
                   "select repeat('x', 500) as hush from seq_1_to_100000")

    @unittest.skipUnless(POSTGRES or MARIADB, "no database server here")
    def test_silence_at_any_moment_ends_the_run_in_its_time(self):
        runs = []
        with concurrent.futures.ThreadPoolExecutor(16) as pool:
            for provider, port, connect, command in self.servers():
                for stage, (mark, more) in STAGES.items():
                    proxy = FallsSilent(port, mark, more)
                    self.addCleanup(proxy.close)
                    runs.append((provider, stage,
                                 pool.submit(self.run_report, provider, connect % proxy.port, command, proxy.port)))
            nobody = FallsSilent(0)
            self.addCleanup(nobody.close)
            runs.append(("SQL", "at once", pool.submit(self.run_report, "SQL", "Data Source=127.0.0.1,%d" % nobody.port,
                                                       "select 1 as hush", nobody.port)))
            for provider, stage, run in runs:
                with self.subTest(provider=provider, stage=stage):
                    self.expect(stage, *run.result())

    @unittest.skipUnless(POSTGRES, "no PostgreSQL here")
    def test_silence_after_a_failed_query_ends_the_run_in_its_time(self):
        """The driver tells the server of a prepared statement that it has done with it, and waits for the answer."""
        server = Postgres()
        self.addCleanup(server.close)
        proxy = FallsSilent(server.port, rb"execute", more=1)
        self.addCleanup(proxy.close)
        text = report("PostgreSQL", "Host=127.0.0.1;Port=%d;Database=postgres" % proxy.port,
                      "select 1 / cast(@none as integer) as hush", ["hush"], [("@none", "none", "Integer", False)],
                      timeout=SECONDS)
        text = text.replace("</DataType>", "</DataType><DefaultValue><Values><Value>0</Value></Values></DefaultValue>")
        done, seconds, written = self.export(text, proxy.port)
        self.assertEqual((done.returncode, written), (1, False))
        self.assertIn("division by zero", done.stderr)
        self.assertLess(seconds, LONGEST)


if __name__ == "__main__":
    unittest.main()
