#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""A mail server on loopback for tests, that behaves as badly as it is told.

Prints its port on standard output as the first line, then serves until its standard input ends or it is
killed. Every message that it has taken is a file 0001.eml, 0002.eml ... in the folder, with the sender and
the recipients in front as X-Envelope-From and X-Envelope-To. Every command is a line of talk.log there.
"""
import argparse
import asyncio
import os
import ssl
import subprocess
import sys

from aiosmtpd.smtp import SMTP, AuthResult

MODES = {
    "accept": "takes every message",
    "reject-recipient": "550 to every recipient, or to the one given by --recipient",
    "defer-recipient": "450 to every recipient, or to the one given by --recipient",
    "full-recipient": "452 to every recipient, or to the one given by --recipient",
    "full-message": "552 to the content",
    "dangerous-message": "552 5.7.0 to the content, which is no word on the mailbox",
    "reject-sender": "550 to MAIL FROM",
    "reject-message": "554 in two lines to the content",
    "later": "451 to the content",
    "odd-greeting": "greets with 320",
    "odd-recipient": "350 to every recipient, or to the one given by --recipient",
    "odd-start": "250 instead of 354 to DATA",
    "odd-message": "354 once more to the content",
    "other-success": "takes the content and says 251",
    "drop-greeting": "closes instead of a greeting",
    "drop-data": "closes after the first line of the content",
    "drop-after-data": "takes the content, says 250 and closes at QUIT without an answer",
    "hang": "accepts the connection and never says a word",
    "hang-data": "never answers the content",
    "late-data": "takes the content and says 250 after --delay seconds",
    "lose-answer": "takes the content and closes without an answer",
    "hang-quit": "takes the content, says 250 and never answers QUIT",
    "greet-421": "greets with 421",
    "greet-554": "greets with 554",
}


class Mailbox:
    def __init__(self, options):
        self.options = options
        self.count = 0
        self.log = open(os.path.join(options.folder, "talk.log"), "a", buffering=1)

    def store(self, session, envelope):
        self.count += 1
        name = os.path.join(self.options.folder, "%04d.eml" % self.count)
        head = "X-Envelope-Hello: %s\r\nX-Envelope-From: %s\r\nX-Envelope-To: %s\r\n" % (
            session.host_name, envelope.mail_from, ", ".join(envelope.rcpt_tos))
        with open(name + ".part", "wb") as file:
            file.write(head.encode() + envelope.original_content)
        os.rename(name + ".part", name)


class Handler:
    def __init__(self, mailbox):
        self.mailbox = mailbox
        self.options = mailbox.options

    async def handle_MAIL(self, server, session, envelope, address, mail_options):
        if self.options.mode == "reject-sender":
            return "550 5.7.1 sender not welcome"
        envelope.mail_from = address
        return "250 OK"

    async def handle_RCPT(self, server, session, envelope, address, rcpt_options):
        answers = {"reject-recipient": "550 5.1.1 nobody's here by that name",
                   "defer-recipient": "450 4.7.1 greylisted",
                   "full-recipient": "452 4.2.2 mailbox is full",
                   "odd-recipient": "350 what of it"}
        if self.options.mode in answers and self.options.recipient in ("", address):
            return answers[self.options.mode]
        envelope.rcpt_tos.append(address)
        return "250 OK"

    async def handle_DATA(self, server, session, envelope):
        mode = self.options.mode
        if mode == "full-message":
            return "552 5.2.2 over quota"
        if mode == "dangerous-message":
            return "552 5.7.0 blocked"
        if mode == "reject-message":
            return "554-5.6.0 content\r\n554 5.6.0 refused"
        if mode == "later":
            return "451 4.3.0 try later"
        if mode == "odd-message":
            return "354 go on"
        if mode == "hang-data":
            await asyncio.sleep(3600)
        if mode == "late-data":
            await asyncio.sleep(self.options.delay)
        self.mailbox.store(session, envelope)
        if mode == "lose-answer":
            server.transport.abort()
        return "251 OK" if mode == "other-success" else "250 OK"


class Server(SMTP):
    def __init__(self, handler, **arguments):
        super().__init__(handler, **arguments)
        self.options = handler.options
        self.talk = handler.mailbox.log

    def connection_made(self, transport):
        mode = self.options.mode
        if mode in ("drop-greeting", "hang", "greet-421", "greet-554", "odd-greeting"):
            if mode == "greet-421":
                transport.write(b"421 4.3.2 closing for the night\r\n")
            elif mode == "greet-554":
                transport.write(b"554 5.3.2 no mail here\r\n")
            elif mode == "odd-greeting":
                transport.write(b"320 who is there\r\n")
            if mode != "hang":
                transport.close()
            self.transport = None
            self.silent = transport
            return
        super().connection_made(transport)

    def data_received(self, data):
        if getattr(self, "silent", None) is None:
            super().data_received(data)

    def eof_received(self):
        return False if getattr(self, "silent", None) else super().eof_received()

    def connection_lost(self, error):
        if getattr(self, "silent", None) is None:
            super().connection_lost(error)

    async def _call_handler_hook(self, command, *args):
        self.talk.write("%s %s\n" % (command, " ".join(str(arg) for arg in args)))
        return await super()._call_handler_hook(command, *args)

    async def smtp_DATA(self, arg):
        self.talk.write("DATA begun\n")
        if self.options.mode == "odd-start":
            await self.push("250 OK")
            return
        if self.options.mode == "drop-data":
            await self.push("354 go on")
            await self._reader.readline()
            self.transport.abort()
            return
        await super().smtp_DATA(arg)

    async def smtp_QUIT(self, arg):
        if self.options.mode == "drop-after-data":
            self.transport.abort()
            return
        if self.options.mode == "hang-quit":
            await asyncio.sleep(3600)
        await super().smtp_QUIT(arg)


def make_certificate(folder, name):
    """A certificate authority in ca.pem, and a server certificate for `name` made by it."""
    def openssl(*arguments):
        subprocess.run(("openssl",) + arguments, cwd=folder, check=True, capture_output=True)

    openssl("req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-keyout",
            "ca.key", "-out", "ca.pem", "-days", "2", "-subj", "/CN=Test authority")
    openssl("req", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-keyout", "server.key",
            "-out", "server.csr", "-subj", "/CN=" + name)
    kind = "IP" if name.replace(".", "").isdigit() else "DNS"
    with open(os.path.join(folder, "server.ext"), "w") as file:
        file.write("subjectAltName=%s:%s\n" % (kind, name))
    openssl("x509", "-req", "-in", "server.csr", "-CA", "ca.pem", "-CAkey", "ca.key", "-CAcreateserial",
            "-out", "server.pem", "-days", "2", "-extfile", "server.ext")


def tls_context(options):
    make_certificate(options.folder, options.certificate_name)
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(os.path.join(options.folder, "server.pem"),
                            os.path.join(options.folder, "server.key"))
    return context


def read_options():
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter,
        epilog="modes:\n" + "\n".join("  %-17s %s" % mode for mode in MODES.items()))
    parser.add_argument("folder", help="where messages, talk.log and certificates go; made when missing")
    parser.add_argument("--mode", choices=MODES, default="accept", metavar="MODE", help="see below")
    parser.add_argument("--port", type=int, default=0, help="0 (the default): a free one")
    parser.add_argument("--recipient", default="", help="the one that is refused")
    parser.add_argument("--delay", type=float, default=0, help="seconds, for late-data")
    parser.add_argument("--security", choices=("none", "starttls", "tls"), default="none")
    parser.add_argument("--certificate-name", default="127.0.0.1",
                        help="what the certificate is for; its authority is ca.pem in the folder")
    parser.add_argument("--user", default="", help="with --password: a login is required")
    parser.add_argument("--password", default="")
    return parser.parse_args()


def server_arguments(options):
    def check(server, session, envelope, mechanism, data):
        good = (data.login.decode(), data.password.decode()) == (options.user, options.password)
        return AuthResult(success=good, handled=False)

    arguments = {"hostname": "localhost", "data_size_limit": 0}
    if options.user:
        arguments.update(auth_required=True, auth_require_tls=False, authenticator=check)
    return arguments


async def serve(options):
    os.makedirs(options.folder, exist_ok=True)
    mailbox = Mailbox(options)
    arguments = server_arguments(options)
    context = tls_context(options) if options.security != "none" else None
    if options.security == "starttls":
        arguments.update(tls_context=context, require_starttls=True)
    loop = asyncio.get_running_loop()
    server = await loop.create_server(
        lambda: Server(Handler(mailbox), loop=loop, **arguments), "127.0.0.1", options.port,
        ssl=context if options.security == "tls" else None)
    print(server.sockets[0].getsockname()[1], flush=True)
    await loop.run_in_executor(None, sys.stdin.read)
    os._exit(0)


if __name__ == "__main__":
    import logging
    import warnings
    warnings.simplefilter("ignore")
    logging.disable(logging.CRITICAL)
    asyncio.run(serve(read_options()))
