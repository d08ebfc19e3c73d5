#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Measures a team's store on a PostgreSQL server that it starts: the poll over many schedules against a bare loop of libpq,
a Desktop folder over a connection with a delay, and runs a second with 1, 2 and 4 schedulers. Ends with 1 if a goal is missed.

usage: bench/store/store.py BUILD     the build folder, for example build/release"""

import os
import pathlib
import selectors
import socket
import subprocess
import sys
import threading
import time

TOP = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else TOP / "build" / "release").resolve()
os.environ["OXC_STAGE"] = str(BUILD / "stage")
sys.path.insert(0, str(TOP / "tests" / "e2e"))
from team import Member, TeamServer, store  # noqa: E402

SCHEDULES = 100_000
FOLDER = 5_000
DELAY = 0.010  # each way: an answer takes 20 ms longer
RUNS = 120


class DelayingProxy:
    """Passes bytes on after a delay, both ways."""

    def __init__(self, port):
        self.target = port
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.port = self.listener.getsockname()[1]
        threading.Thread(target=self.accept, daemon=True).start()

    def accept(self):
        while True:
            client, _ = self.listener.accept()
            server = socket.create_connection(("127.0.0.1", self.target))
            for one, other in ((client, server), (server, client)):
                one.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
                threading.Thread(target=self.carry, args=(one, other), daemon=True).start()

    @staticmethod
    def carry(source, sink):
        waiting = []
        selector = selectors.DefaultSelector()
        selector.register(source, selectors.EVENT_READ)
        ended = False
        while not ended or waiting:
            now = time.monotonic()
            while waiting and waiting[0][0] <= now:
                try:
                    sink.sendall(waiting.pop(0)[1])
                except OSError:
                    return
            pause = max(0, waiting[0][0] - time.monotonic()) if waiting else 1
            if ended:
                time.sleep(pause)
            elif selector.select(pause):
                try:
                    data = source.recv(1 << 16)
                except OSError:
                    data = b""
                ended = not data
                waiting.append((time.monotonic() + DELAY, data))
        try:
            sink.shutdown(socket.SHUT_WR)
        except OSError:
            pass


def fill(server, count, parent):
    server.rows("insert into Folders(FolderName, Parent) select 'Sales', 0 where not exists(select 1 from Folders)")
    # Ten folders with five folders each, for the tree.
    server.rows("insert into Folders(FolderName, Parent) select 'Branch ' || i, case when i <= 10 then 0 else 2 + i % 10 end "
                "from generate_series(1, 60) i where (select count(*) from Folders) = 1")
    server.rows(
        "insert into ReportScheduler(ReportTitle, Parent, Frequency, Format, StartDate, EndDate, RunAt, NextRun, SendTo, "
        "Message) select 'Sales of region ' || i, '%s', 'Monthly', 'Acrobat Format (PDF)', '2003-01-01', '3000-12-31', "
        "'08:30', '2999-01-01', 'ann@example.com;bob@example.com;', repeat('x', 200) from generate_series(1, %d) i" % (
            parent, count))
    server.rows("analyze")


def runs_a_second(server, schedulers):
    """Due schedules that a number of schedulers mail in a second."""
    server.fresh()
    members = [Member(server) for _ in range(schedulers)]
    try:
        for member in members:
            member.start()
        time.sleep(3)
        server.schedules(1, RUNS)
        start = time.monotonic()
        while server.rows("select count(*) from ReportHistory") != [(str(RUNS),)]:
            if time.monotonic() - start > 300:
                sys.exit("the runs do not end")
            time.sleep(0.05)
        return RUNS / (time.monotonic() - start)
    finally:
        for member in members:
            member.close()


def main():
    server = TeamServer()
    missed = False
    try:
        link = server.folder / "PressroomLive.dat"
        server.fresh()
        fill(server, SCHEDULES, "Desktop")
        store("link", "--to", server.connect(), str(link))
        missed |= subprocess.run([BUILD / "bench/store/bench_store_poll", link], check=False).returncode != 0
        fill(server, FOLDER, "Sales")
        store("link", "--to", "Host=127.0.0.1;Port=%d;Database=courier;Username=postgres" % DelayingProxy(server.port).port,
              str(link))
        missed |= subprocess.run([BUILD / "bench/store/bench_store_desktop", link], check=False).returncode != 0
        one = 0
        for schedulers in (1, 2, 4):
            rate = runs_a_second(server, schedulers)
            one = one or rate
            print("%d schedulers: %.1f runs a second, %.2f times one (on %d processors)" % (
                schedulers, rate, rate / one, os.cpu_count()), flush=True)
    finally:
        server.close()
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
