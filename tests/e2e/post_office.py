# SPDX-License-Identifier: GPL-3.0-or-later
"""A post office on loopback, made of the servers that many users have: Postfix takes mail after STARTTLS and a login
and hands it to Dovecot, which keeps the mailboxes and gives them out by IMAP. All of its files are in one folder."""

import email
import email.policy
import imaplib
import os
import pathlib
import pwd
import shutil
import socket
import subprocess
import sys
import tempfile
import time

from databases import free_port
from harness import SUPPORT

sys.path.insert(0, str(SUPPORT))
from smtp_server import make_certificate  # noqa: E402

SENDER = "reports@example.com"
MAILBOXES = ("ann@example.com", "bob@example.com")
PASSWORD = "open sesame"

POSTFIX = pathlib.Path("/usr/lib/postfix/sbin/master")
DOVECOT = pathlib.Path("/usr/sbin/dovecot")
LMTP = pathlib.Path("/usr/lib/dovecot/lmtp")
IMAP = pathlib.Path("/usr/lib/dovecot/imap")


def what_is_missing():
    """Why there can be no post office here, or an empty text."""
    for program, package in ((POSTFIX, "postfix"), (DOVECOT, "dovecot-core"), (LMTP, "dovecot-lmtpd"),
                             (IMAP, "dovecot-imapd")):
        if not program.exists():
            return "needs the Debian package " + package
    # It changes to users of its own for each of its parts.
    return "" if os.geteuid() == 0 else "Postfix starts as root alone"


class PostOffice:
    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="oxc-post-"))
        self.folder.chmod(0o755)
        self.processes = []
        make_certificate(self.folder, "127.0.0.1")
        self.authority = self.folder / "ca.pem"
        self.start()

    def start(self, tries=5):
        """A free port may be taken before a server has it."""
        self.port, self.lmtp, self.auth, self.imap = (free_port() for _ in range(4))
        try:
            self.start_dovecot()
            self.start_postfix()
        except TimeoutError:
            said = self.said()
            self.stop()
            if tries == 0:
                raise AssertionError(said)
            self.start(tries - 1)

    def said(self):
        return "".join(path.read_text(errors="replace") for path in sorted(self.folder.glob("*.log")))

    def start_dovecot(self):
        mail = self.folder / "mail"
        mail.mkdir(exist_ok=True)
        shutil.chown(mail, "nobody")
        (self.folder / "users").write_text("".join("%s:{PLAIN}%s\n" % (name, PASSWORD)
                                                   for name in (SENDER, *MAILBOXES)))
        nobody = pwd.getpwnam("nobody")
        configuration = self.folder / "dovecot.conf"
        configuration.write_text("""
base_dir = {folder}/run
state_dir = {folder}/run
log_path = {folder}/dovecot.log
protocols = imap lmtp
listen = 127.0.0.1
ssl = no
disable_plaintext_auth = no
mail_location = maildir:{folder}/mail/%u
first_valid_uid = 1
passdb {{
  driver = passwd-file
  args = username_format=%u {folder}/users
}}
userdb {{
  driver = static
  args = uid={uid} gid={gid} home={folder}/mail/%u
}}
service auth {{
  inet_listener {{
    address = 127.0.0.1
    port = {auth}
  }}
}}
service lmtp {{
  inet_listener lmtp {{
    address = 127.0.0.1
    port = {lmtp}
  }}
}}
service imap-login {{
  chroot =
  inet_listener imap {{
    port = {imap}
  }}
  inet_listener imaps {{
    port = 0
  }}
}}
service anvil {{
  chroot =
}}
""".format(folder=self.folder, uid=nobody.pw_uid, gid=nobody.pw_gid, auth=self.auth, lmtp=self.lmtp,
           imap=self.imap))
        self.launch(DOVECOT, "-F", "-c", configuration)
        for port in (self.auth, self.lmtp, self.imap):
            self.wait_for(port)

    def start_postfix(self):
        for name in ("postfix", "queue", "data"):
            (self.folder / name).mkdir(exist_ok=True)
        shutil.chown(self.folder / "data", "postfix")
        (self.folder / "postfix" / "main.cf").write_text("""
compatibility_level = 3.6
queue_directory = {folder}/queue
data_directory = {folder}/data
maillog_file = {folder}/postfix.log
maillog_file_prefixes = {folder}
inet_interfaces = 127.0.0.1
inet_protocols = ipv4
myhostname = post.example.com
mynetworks =
mydestination =
local_recipient_maps =
alias_maps =
alias_database =
virtual_mailbox_domains = example.com
virtual_mailbox_maps = inline:{{ {mailboxes} }}
virtual_transport = lmtp:inet:127.0.0.1:{lmtp}
smtpd_tls_security_level = encrypt
smtpd_tls_cert_file = {folder}/server.pem
smtpd_tls_key_file = {folder}/server.key
smtpd_tls_auth_only = yes
smtpd_sasl_auth_enable = yes
smtpd_sasl_type = dovecot
smtpd_sasl_path = inet:127.0.0.1:{auth}
smtpd_relay_restrictions = permit_sasl_authenticated, reject
smtpd_recipient_restrictions = reject_unauth_destination, permit_sasl_authenticated, reject
queue_minfree = 0
mailbox_size_limit = 0
virtual_mailbox_limit = 0
""".format(folder=self.folder, lmtp=self.lmtp, auth=self.auth,
           mailboxes=", ".join("{ %s = yes }" % name for name in MAILBOXES)))
        (self.folder / "postfix" / "master.cf").write_text("".join(
            " ".join(line) + "\n" for line in [
                ("127.0.0.1:%d" % self.port, "inet", "n - n - - smtpd"),
                ("cleanup", "unix", "n - n - 0 cleanup"),
                ("qmgr", "unix", "n - n 300 1 qmgr"),
                ("tlsmgr", "unix", "- - n 1000? 1 tlsmgr"),
                ("rewrite", "unix", "- - n - - trivial-rewrite"),
                ("proxymap", "unix", "- - n - - proxymap"),
                ("bounce", "unix", "- - n - 0 bounce"),
                ("defer", "unix", "- - n - 0 bounce"),
                ("trace", "unix", "- - n - 0 bounce"),
                ("flush", "unix", "n - n 1000? 0 flush"),
                ("error", "unix", "- - n - - error"),
                ("retry", "unix", "- - n - - error"),
                ("lmtp", "unix", "- - n - - lmtp"),
                ("anvil", "unix", "- - n - 1 anvil"),
                ("scache", "unix", "- - n - 1 scache"),
                ("postlog", "unix-dgram", "n - n - 1 postlogd")]))
        configuration = self.folder / "postfix"
        # Makes the folders of the queue.
        subprocess.run(["/usr/sbin/postfix", "-c", configuration, "check"], check=True, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)
        self.launch(POSTFIX, "-d", "-c", configuration, MAIL_CONFIG=str(configuration))
        self.wait_for(self.port)

    def launch(self, program, *arguments, **environment):
        with open(self.folder / (program.name + ".out.log"), "ab") as log:
            self.processes.append(subprocess.Popen([program, *arguments], stdin=subprocess.DEVNULL, stdout=log,
                                                   stderr=log, env={**os.environ, **environment},
                                                   start_new_session=True))

    def wait_for(self, port):
        end = time.monotonic() + 20
        while time.monotonic() < end and self.processes[-1].poll() is None:
            try:
                socket.create_connection(("127.0.0.1", port), 5).close()
                return
            except OSError:
                time.sleep(0.05)
        raise TimeoutError

    def stop(self):
        for process in reversed(self.processes):
            process.terminate()
            try:
                process.wait(20)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        self.processes = []

    def close(self):
        self.stop()
        shutil.rmtree(self.folder, ignore_errors=True)

    def mailbox(self, name):
        """The messages that the owner of the mailbox reads, in the order in which they came."""
        with imaplib.IMAP4("127.0.0.1", self.imap, timeout=20) as connection:
            connection.login(name, PASSWORD)
            connection.select("INBOX", readonly=True)
            numbers = connection.search(None, "ALL")[1][0].split()
            return [email.message_from_bytes(connection.fetch(number, "(RFC822)")[1][0][1],
                                             policy=email.policy.default) for number in numbers]
