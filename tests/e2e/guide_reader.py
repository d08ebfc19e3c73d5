# SPDX-License-Identifier: GPL-3.0-or-later
"""The reader of a guide: a user at the first login on a machine where the programs are installed. Names that stand for the
reader's own servers and folders are those that the test makes."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

from editor import write_program
from guide_pages import TOP, commands
from harness import STAGE, read_mails
from mail_server import Server

MINIMAL = """<?xml version="1.0" encoding="utf-8"?>
<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2016/01/reportdefinition">
  <ReportSections><ReportSection><Body><ReportItems>
    <Textbox Name="T"><Height>1cm</Height><Width>9cm</Width><Paragraphs><Paragraph><TextRuns><TextRun>
      <Value>%s</Value></TextRun></TextRuns></Paragraph></Paragraphs></Textbox>
  </ReportItems><Height>2cm</Height></Body><Width>10cm</Width><Page/></ReportSection></ReportSections>
  <ReportParameters><ReportParameter Name="Region"><DataType>String</DataType><Prompt>Region</Prompt>
    <DefaultValue><Values><Value>East</Value></Values></DefaultValue></ReportParameter></ReportParameters>
</Report>
"""


def blocks_of(name):
    return commands(TOP / name)


class GuideTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.tree = pathlib.Path(tempfile.mkdtemp(prefix="oxc-guides-"))
        cls.addClassCleanup(shutil.rmtree, cls.tree, ignore_errors=True)
        subprocess.run([os.environ.get("OXC_CMAKE", "cmake"), "--install", STAGE.parent, "--prefix", cls.tree / "usr"],
                       check=True, capture_output=True)

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="oxc-guide-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.home = self.folder / "home"
        self.home.mkdir()
        self.application = self.home / ".local" / "share" / "oxbow-courier"
        self.words = {}

    def environment(self):
        foreign = ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "OXC_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME")
        return {**{name: value for name, value in os.environ.items() if name not in foreign}, "HOME": str(self.home),
                "PATH": "%s:%s:%s" % (self.folder / "bin", self.tree / "usr" / "bin", os.environ["PATH"])}

    def stand_in(self, name, text):
        (self.folder / "bin").mkdir(exist_ok=True)
        write_program(self.folder / "bin" / name, text)

    def run_block(self, text, said="", folder=None):
        for word, own in self.words.items():
            text = text.replace(word, own)
        result = subprocess.run(["bash", "-euo", "pipefail", "-c", text], env=self.environment(), input=said,
                                capture_output=True, text=True, timeout=120, cwd=folder or self.home)
        self.assertEqual(result.returncode, 0, text + result.stdout + result.stderr)
        return result.stdout

    def make_folder(self):
        """The application folder, as a first use leaves it."""
        self.run_block("oxc-schedule init")

    def mails(self):
        return read_mails(self.application / "outbox")

    def serve_mail(self, login=("--user", "reports@example.com", "--password", "s3cret")):
        ca = self.folder / "mail"
        server = Server(ca, "--security", "starttls", "--certificate-name", "127.0.0.1", *login)
        self.addCleanup(server.close)
        self.words["Host=mail.example.com"] = "Host=127.0.0.1 Port=%d CAFile=%s" % (server.port, ca / "ca.pem")
        return server

    def run_page(self, name, said="", folder=None):
        return [self.run_block(text, said, folder) for text in blocks_of(name)]

    def serve_the_system(self):
        """Folders, users and units of the system's service are those of the test; systemctl writes down what it is told."""
        self.system = self.folder / "system"
        for name in ("etc", "root", "var/lib"):
            (self.system / name).mkdir(parents=True)
        self.words.update({"/var/lib": "%s/var/lib" % self.system, "=/etc": "=%s/etc" % self.system, "-C /": "-C %s" % self.system,
                           "/root/": "%s/root/" % self.system, "chown oxbow-courier:": "chown %d" % os.getuid()})
        self.stand_in("sudo", '[ "$1" != -u ] || shift 2\nexec "$@"\n')
        self.stand_in("systemctl", 'echo "$@" >> %s/said\n' % self.system)

    def fill_the_service(self, title="Figures"):
        self.run_block("export XDG_CONFIG_HOME=/etc XDG_DATA_HOME=/var/lib; oxc-schedule init; oxc-mail set Transport=outbox "
                       "From=a@example.com; cd /var/lib/oxbow-courier; oxc-schedule add samples/summary.rpt --to ann@example.com "
                       "--at 07:00 --title %s; echo link > sales.rds" % title)

    def empty_the_service(self):
        """As an installation that has just started leaves it: with a database of its own."""
        for name in ("etc", "var/lib"):
            shutil.rmtree(self.system / name / "oxbow-courier")
        self.fill_the_service("Foreign")
        (self.system / "var/lib/oxbow-courier/sales.rds").unlink()
