# SPDX-License-Identifier: GPL-3.0-or-later
"""The mail server on loopback, started and read by a test."""

import pathlib
import socket
import subprocess
import sys

from harness import SUPPORT, CourierTest, read_mails

# What the box says when the server or the mailbox takes nothing.
MAILBOX = "Your mailbox is over the limit or the Exchange Server is down! Sending mail failed"


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class Server:
    def __init__(self, folder, *arguments, port=0):
        self.folder = pathlib.Path(folder)
        self.process = subprocess.Popen([sys.executable, str(SUPPORT / "smtp_server.py"), "--port", str(port),
                                         *arguments, str(folder)], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.port = int(self.process.stdout.readline())

    def close(self):
        self.process.kill()
        self.process.wait()
        self.process.stdin.close()
        self.process.stdout.close()

    def messages(self):
        return read_mails(self.folder)

    def reports(self):
        return [m for m in self.messages() if m["Subject"] == "Figures"]

    def alerts(self):
        return [m for m in self.messages() if m["Subject"] == "Pressroom Error"]


class MailTest(CourierTest):
    def serve(self, *arguments, port=0, name="mail"):
        server = Server(self.courier.folder / name, *arguments, port=port)
        self.addCleanup(server.close)
        return server

    def use(self, port, security="none", more=""):
        self.courier.profile("Transport=smtp\nHost=127.0.0.1\nPort=%d\nSecurity=%s\nTimeout=2\n%s"
                             % (port, security, more))
