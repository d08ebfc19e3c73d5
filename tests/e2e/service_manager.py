# SPDX-License-Identifier: GPL-3.0-or-later
"""A service manager for one process: it starts the command of a unit and listens to what the process tells it."""

import os
import pathlib
import re
import shlex
import socket
import threading
import time

UNITS = pathlib.Path(__file__).resolve().parents[2] / "packaging" / "systemd"


def unit_values(name, key):
    """The values of a key in a unit, in its order."""
    return re.findall(rf"^{key}=(.*)$", (UNITS / name).read_text(), re.MULTILINE)


def unit_command(name, program):
    return shlex.split(unit_values(name, "ExecStart")[0].replace("@OXC_PROGRAM@", str(program)))


def unit_environment(name):
    return dict(word.split("=", 1) for line in unit_values(name, "Environment") for word in line.split())


class Manager:
    """`messages` has every datagram with the moment of its arrival."""

    def __init__(self, folder):
        self.path = str(pathlib.Path(folder) / "notify")
        self.messages = []
        self.socket = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
        self.socket.bind(self.path)
        self.thread = threading.Thread(target=self._listen, daemon=True)
        self.thread.start()

    def _listen(self):
        while True:
            text = self.socket.recv(4096).decode()
            if text == "end":
                return
            self.messages.append((time.monotonic(), text))

    def close(self):
        with socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM) as sender:
            sender.sendto(b"end", self.path)
        self.thread.join()
        self.socket.close()
        os.unlink(self.path)

    def lines(self):
        return [line for _, text in list(self.messages) for line in text.split("\n")]

    def moments(self, line):
        return [moment for moment, text in list(self.messages) if line in text.split("\n")]

    def statuses(self):
        return [line[len("STATUS="):] for line in self.lines() if line.startswith("STATUS=")]
