# SPDX-License-Identifier: GPL-3.0-or-later
"""Every block of commands in the guides is run, in its page's order, by a user at the first login on a machine where
the programs are installed. Names that stand for the reader's own servers are those of servers that the test starts."""

import datetime
import json
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import time
import unittest

from databases import PASSWORD, POSTGRES, Postgres
from editor import Display, write_program
from guide_pages import FENCED, PAGES, TOP, blocks, commands, name_of, unfenced_commands
from harness import STAGE, read_mails
from mail_server import Server

# Pages whose commands build and install as root, and what runs each of these.
ELSEWHERE = {
    "README.md": {
        "./run": "e2e.run_script",
        "./test": "it runs this test",
        "sudo cmake --install build/release": "packaging.install, with --prefix",
    },
    "docs/install.md": {
        "./run": "e2e.run_script",
        "sudo cmake --install build/release": "packaging.install, with --prefix",
        "DESTDIR=/tmp/tree cmake --install build/release --prefix /usr": "packaging.install",
        "./package": "packaging/in_chroot",
        "sudo apt install ./build/package/oxbow-courier_*.deb": "packaging/in_chroot",
        "sudo apt install ./build/package/*.deb": "packaging/in_chroot",
        "cp -R /usr/local/share/oxbow-courier/samples /usr/local/share/oxbow-courier/*.chm "
        "~/.local/share/oxbow-courier/": "packaging.install",
        "sudo xargs -d '\\n' rm -f < build/release/install_manifest.txt": "packaging.install",
        "sudo apt purge oxbow-courier oxbow-courier-scheduler": "packaging/in_chroot",
    },
    "docs/service.md": {
        "sudo systemd-sysusers && sudo systemd-tmpfiles --create": "packaging/in_chroot, by the package",
        "sudo systemctl daemon-reload && sudo systemctl enable --now oxbow-courier": "packaging.service checks the unit",
        'courier() { sudo -u oxbow-courier env XDG_CONFIG_HOME=/etc XDG_DATA_HOME=/var/lib "$@"; }': "test_service",
        "courier oxc-mail set Transport=smtp Host=mail.example.com From='Reports <reports@example.com>'": "test_service",
        "courier oxc-mail check": "test_service",
        "courier oxc-schedule options set --alert boss@example.com": "test_service",
        "sudo systemctl reload oxbow-courier": "test_service",
        "courier oxc-schedule add /srv/reports/sales.rpt --to ann@example.com --weekly --at 07:30": "test_service",
        "courier oxc-schedule status": "test_service",
        "rm -f ~/.config/autostart/OXC.desktop": "packaging.service checks the unit's condition",
        "systemctl --user daemon-reload": "packaging.service checks the unit",
        "systemctl --user enable --now oxbow-courier": "packaging.service checks the unit",
        "loginctl enable-linger": "a command of the system",
        "journalctl -u oxbow-courier -o cat | jq -r 'select(.event == \"run-failed\") | "
        "[.time, .schedule, .title, .error] | @tsv'": "test_log_lines_are_filtered",
    },
}

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

ORDERS = """<?xml version="1.0" encoding="utf-8"?>
<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2016/01/reportdefinition">
  <CustomProperties><CustomProperty><Name>Title</Name><Value>Orders</Value></CustomProperty></CustomProperties>
  <DataSources><DataSource Name="sales"><DataSourceReference>sales</DataSourceReference></DataSource></DataSources>
  <DataSets><DataSet Name="Orders"><Query><DataSourceName>sales</DataSourceName>
    <CommandText>select customer from orders</CommandText></Query>
    <Fields><Field Name="customer"><DataField>customer</DataField></Field></Fields></DataSet></DataSets>
  <ReportSections><ReportSection><Body><ReportItems>
    <Textbox Name="T"><Height>1cm</Height><Width>9cm</Width><Paragraphs><Paragraph><TextRuns><TextRun>
      <Value>=First(Fields!customer.Value, "Orders")</Value></TextRun></TextRuns></Paragraph></Paragraphs></Textbox>
  </ReportItems><Height>2cm</Height></Body><Width>10cm</Width><Page/></ReportSection></ReportSections>
</Report>
"""

# The scheduler of the guides runs until the reader presses Ctrl+C: here until the history has a row.
SCHEDULER = """
%s "$@" & scheduler=$!
for i in $(seq 300); do
    [ "$(oxc-schedule history --json | tr -d '[:space:]')" = "[]" ] || break
    sleep 0.1
done
kill -INT $scheduler
wait $scheduler
"""


def headings(page):
    """As links name them: in lower case, without marks, with hyphens for blanks."""
    lines = re.findall(r"(?m)^#+ (.*)$", FENCED.sub("", page.read_text()))
    return [re.sub(r"[^\w -]", "", line.lower()).replace(" ", "-") for line in lines]


def blocks_of(name):
    return commands(TOP / name)


def setUpModule():
    global TREE
    TREE = pathlib.Path(tempfile.mkdtemp(prefix="oxc-guides-"))
    unittest.addModuleCleanup(shutil.rmtree, TREE, ignore_errors=True)
    subprocess.run([os.environ.get("OXC_CMAKE", "cmake"), "--install", STAGE.parent, "--prefix", TREE / "usr"],
                   check=True, capture_output=True)


class GuideTest(unittest.TestCase):
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
                "PATH": "%s:%s:%s" % (self.folder / "bin", TREE / "usr" / "bin", os.environ["PATH"])}

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


class Guides(GuideTest):
    def test_each_page_with_commands_has_its_test(self):
        tested = set(re.findall(r'(?:run_page|blocks_of)\("([^"]+)"', pathlib.Path(__file__).read_text()))
        self.assertEqual({name_of(page) for page in PAGES if commands(page)}, tested | set(ELSEWHERE))

    def test_commands_that_other_tests_run_are_those(self):
        for page, lines in ELSEWHERE.items():
            found = [re.sub(r" +#.*", "", line) for text in blocks_of(page) for line in text.splitlines()]
            self.assertEqual(set(found), set(lines), page)

    def test_links_lead_somewhere(self):
        for page in PAGES:
            for link, place in re.findall(r"\]\(([^)#:]*)(?:#([^)]*))?\)", page.read_text()):
                target = page.parent / link if link else page
                self.assertTrue(target.exists(), "%s: %s" % (name_of(page), link))
                if place:
                    self.assertIn(place, headings(target), "%s: %s" % (name_of(page), link))

    def test_commands_stand_in_blocks_that_say_so(self):
        for page in PAGES:
            self.assertEqual(unfenced_commands(page), [], name_of(page))
            for kind, text in blocks(page):
                # An outline of a usage has brackets, and a message its colon.
                if kind != "sh" and "[--" not in text:
                    self.assertNotRegex(text, r"(?m)^\$? ?(oxc(-\w+)?|sudo|cd|psql|tar) ", name_of(page))

    def run_page(self, name, said="", folder=None):
        return [self.run_block(text, said, folder) for text in blocks_of(name)]

    def test_mail_server(self):
        server = self.serve_mail()
        (self.home / "password.txt").write_text("s3cret\n")
        said = self.run_page("docs/how-to/mail-server.md")
        self.assertEqual(said[1], "The password is stored.\n")
        self.assertIn("takes mail from reports@example.com", said[2])
        self.assertEqual([m["X-Envelope-To"] for m in server.messages()], ["ann@example.com"])
        self.assertIn("Transport=sendmail\n", said[3])

    def test_mail_profile(self):
        server = self.serve_mail()
        self.words["User=reports"] = "User=reports@example.com"
        said, = self.run_page("docs/mail.md", said="s3cret\n")
        self.assertIn("The password is stored.\n", said)
        self.assertEqual([m["Subject"] for m in server.messages()], ["Test message"])

    @unittest.skipUnless(POSTGRES, "PostgreSQL is not installed")
    def test_postgresql(self):
        server = Postgres()
        self.addCleanup(server.close)
        server.sql("drop role clerk")
        server.sql("create database sales")
        (server.folder / "data" / "pg_hba.conf").write_text(
            "host all courier 127.0.0.1/32 scram-sha-256\nlocal all postgres trust\n")
        server.run(server.programs / "psql", "-q", "-h", server.folder, "-p", server.port, "-U", "postgres", "-d", "sales",
                   "-c", "create table orders(customer text); insert into orders values('Larch & Sons'); "
                         "select pg_reload_conf()")
        self.words = {"-h db.example.com": "-q -h %s -p %d -U postgres" % (server.folder, server.port),
                      "Host=db.example.com;Port=5432": "Host=127.0.0.1;Port=%d" % server.port}
        self.make_folder()
        self.run_block("oxc-mail set Transport=outbox From=a@example.com OutboxFolder=%s" % (self.application / "outbox"))
        (self.home / "orders.rdl").write_text(ORDERS)
        self.run_page("docs/how-to/postgresql.md")
        text = self.run_block("pdftotext orders.pdf -")
        self.assertEqual(text.strip(), "Larch & Sons")
        self.assertEqual([m["To"] for m in self.mails()], ["ann@example.com"])

    @unittest.skipUnless(POSTGRES, "PostgreSQL is not installed")
    def test_team_store(self):
        server = Postgres(locale="C.UTF-8", trusts_loopback=True)
        self.addCleanup(server.close)
        roles, = [text for kind, text in blocks(TOP / "docs/team-store.md") if kind == "sql"]
        for statement in roles.split(";\n"):
            if statement.strip():
                server.sql(statement)
        self.stand_in("pass", "echo unused\n")
        self.words = {"Host=db;": "Host=127.0.0.1;Port=%d;" % server.port}
        self.make_folder()
        self.run_block("oxc-mail set Transport=outbox From=a@example.com; oxc-schedule add "
                       "~/.local/share/oxbow-courier/samples/summary.rpt --to ann@example.com --at 07:00 --title Shared")
        create, link = self.run_page("docs/team-store.md")
        self.assertIn("rows to the store", create)
        self.assertIn("Rights: a scheduler", link)
        self.assertIn("Shared", self.run_block("oxc-schedule list"))
        self.assertTrue((self.application / "PressroomLive.dat").read_text().startswith("Oxbow Courier store link 1\n"))

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

    def test_move(self):
        self.make_folder()
        self.serve_the_system()
        self.run_block("oxc-mail set Transport=outbox From=a@example.com; oxc-schedule add "
                       "~/.local/share/oxbow-courier/samples/summary.rpt --to ann@example.com --at 07:00 --title Figures; "
                       "echo link > ~/.local/share/oxbow-courier/sales.rds")
        pack, unpack, pack_service, unpack_service, export, profile, imported, options = blocks_of("docs/how-to/move.md")
        entry = self.home / ".config" / "autostart" / "OXC.desktop"
        started = entry.read_text()
        self.run_block(pack)
        self.assertEqual((self.home / "courier.tar.gz").stat().st_mode & 0o777, 0o600)
        shutil.rmtree(self.home / ".local")
        shutil.rmtree(self.home / ".config")
        self.make_folder()
        entry.unlink()
        listed = self.run_block(unpack)
        self.assertIn("Figures", listed)
        self.assertEqual(entry.read_text(), started)
        self.assertEqual((self.application / "sales.rds").read_text(), "link\n")

        self.fill_the_service()
        self.run_block(pack_service)
        self.assertEqual((self.system / "root/courier.tar.gz").stat().st_mode & 0o777, 0o600)
        self.empty_the_service()
        listed = self.run_block(unpack_service)
        self.assertIn("Figures", listed)
        self.assertNotIn("Foreign", listed)
        self.assertEqual((self.system / "said").read_text(),
                         "disable --now oxbow-courier\nstop oxbow-courier\nstart oxbow-courier\n")

        self.run_block("cp .local/share/oxbow-courier/samples/summary.rpt own.rpt; cat > contacts.vcf; "
                       "oxc-mail set VCard=~/contacts.vcf; mkdir -p reports moved; cp own.rpt reports; cp own.rpt moved; "
                       "oxc-schedule add reports/own.rpt --to 'Ann Berg' --at 07:00 --title Own; "
                       "oxc-schedule options set --alert boss@example.com --poll 20",
                       said="BEGIN:VCARD\nVERSION:3.0\nFN:Ann Berg\nEMAIL:ann@example.com\nEND:VCARD\n")
        self.words.update({"/home/ann/reports/": "%s/reports/" % self.home, "/srv/reports/": "%s/moved/" % self.home})
        self.assertIn("boss@example.com", self.run_block(export))
        self.assertEqual((self.home / "courier.json").stat().st_mode & 0o777, 0o600)
        self.run_block("mv ~/.config/oxbow-courier/mail.ini .; rm -r .config reports .local/share/oxbow-courier/PressroomLive.*")
        self.run_block(profile)
        said = self.run_block(imported)
        self.assertRegex(said, r"(?m)^add .*Own")
        self.assertEqual((self.home / "courier.json").stat().st_mode & 0o777, 0o600)
        self.run_block(options)
        self.assertIn("%s/moved/own.rpt" % self.home, self.run_block("oxc-schedule show Own; oxc-schedule options show"))

    def test_backup(self):
        self.make_folder()
        self.serve_the_system()
        self.run_block("oxc-mail set Transport=outbox From=a@example.com; cd ~/.local/share/oxbow-courier; oxc-schedule add "
                       "samples/summary.rpt --to ann@example.com --at 07:00; oxc-mail test bob@example.com; "
                       "echo link > sales.rds; echo page > output/page.htm")
        stored = self.run_block("oxc-schedule list --json")
        backup, small, restore, backup_service, restore_service, export = blocks_of("docs/how-to/backup.md")
        kept = {path: path.read_bytes() for place in (".local", ".config") for path in (self.home / place).rglob("*")
                if path.is_file() and not path.name.startswith("PressroomLive.")}
        self.assertIn(self.home / ".config/autostart/OXC.desktop", kept)
        self.assertEqual(self.run_block(backup), "ok\n")
        self.run_block(small)
        for name in ("pressroom.dat", "files.tar.gz", "small.dat"):
            self.assertEqual((self.home / "backup" / name).stat().st_mode & 0o777, 0o600, name)
        self.run_block(export)
        self.assertIn(json.loads(stored)[0]["title"], (self.home / "backup" / "schedules.json").read_text())
        # A new machine, where nothing was started yet.
        shutil.rmtree(self.home / ".local")
        shutil.rmtree(self.home / ".config")
        self.run_block(restore)
        self.assertEqual(self.run_block("oxc-schedule list --json"), stored)
        for path, content in kept.items():
            self.assertEqual(path.read_bytes(), content, path)

        self.fill_the_service()
        self.assertEqual(self.run_block(backup_service), "ok\n")
        self.assertEqual((self.system / "root/backup/files.tar.gz").stat().st_mode & 0o777, 0o600)
        self.empty_the_service()
        due = self.run_block(restore_service)
        self.assertIn("Figures", due)
        self.assertNotIn("Foreign", due)
        self.assertEqual((self.system / "var/lib/oxbow-courier/sales.rds").read_text(), "link\n")
        self.assertEqual((self.system / "said").read_text(), "stop oxbow-courier\nstart oxbow-courier\n")

    def test_service(self):
        self.serve_mail(login=())
        self.serve_the_system()
        (self.home / "sales.rpt").write_text(MINIMAL % "sales")
        # Before its first poll a scheduler is critical.
        self.words.update({"/srv/reports": str(self.home), "oxc-schedule status": "oxc-schedule status || [ $? = 2 ]"})
        self.run_block("courier() { sudo -u oxbow-courier env XDG_CONFIG_HOME=/etc XDG_DATA_HOME=/var/lib \"$@\"; }; "
                       "courier oxc-schedule init; courier oxc-schedule options show | grep -x 'On error alert: *nobody'")
        said = self.run_block(blocks_of("docs/service.md")[1])
        self.assertIn("takes mail from reports@example.com", said)
        self.assertIn("Stored: 1 schedules, 0 packages.", said)
        self.assertIn('"AlertWho"="boss@example.com"', (self.system / "etc/oxbow-courier/settings.reg").read_text())
        self.assertEqual((self.system / "said").read_text(), "reload oxbow-courier\n")

    def test_log_lines_are_filtered(self):
        self.make_folder()
        self.run_block("oxc-mail set Transport=outbox From=a@example.com; oxc-schedule add "
                       "~/.local/share/oxbow-courier/samples/summary.rpt --to ann@example.com --at 00:00 --title 'A b'; "
                       "rm ~/.local/share/oxbow-courier/Cache/summary.rpt")
        self.stand_in("journalctl", """
            oxc -sched --log-format json 2>&1 & scheduler=$!
            for i in $(seq 200); do
                [ "$(oxc-schedule history --json | tr -d '[:space:]')" = "[]" ] || break
                sleep 0.1
            done
            kill $scheduler
            wait $scheduler
            """)
        said = self.run_block(blocks_of("docs/service.md")[-1])
        self.assertRegex(said, r"^\d{4}-\d\d-\d\dT\S+\t1\tA b\tFile not found: .*summary.rpt")

    def test_new_report(self):
        self.make_folder()
        self.run_page("docs/how-to/new-report.md")
        self.assertIn("Orders of March", self.run_block("pdftotext orders.pdf -"))
        self.assertIn("<svg", (self.home / "orders.html").read_text())
        for name, text in (("customers", "Petit Import GmbH"), ("years", "Orders by Country and Year"),
                           ("labels", "Petit Import GmbH"), ("letters", "Your orders")):
            self.assertIn(text, self.run_block(f"oxc-report export {name}.rdl -f pdf -o {name}.pdf; pdftotext {name}.pdf -"))

    def test_monitoring(self):
        self.make_folder()
        said = self.run_page("docs/how-to/monitoring.md")
        self.assertIn("Last poll: none", said[0])
        self.assertIn("oxc_status 2\n", (self.home / "oxbow-courier.prom").read_text())

    def test_schedules(self):
        self.make_folder()
        for name in ("sales", "stock"):
            (self.home / (name + ".rpt")).write_text(MINIMAL % name)
        reports = self.folder / "reports"
        reports.mkdir()
        self.words["/srv/reports"] = str(reports)
        self.run_block("oxc-schedule folder add Finance")
        self.run_page("docs/schedule.md")
        schedule, = json.loads(self.run_block("oxc-schedule list --json"))
        self.assertEqual((schedule["title"], schedule["folder"], schedule["at"]), ("sales", "Finance", "07:30"))
        package = json.loads(self.run_block("oxc-schedule package show 'Month end' --json"))
        self.assertIn("East", json.dumps(package))

    def test_report_files(self):
        self.make_folder()
        self.words["/srv/sales.db"] = str(self.application / "samples" / "sales.db")
        self.run_page("docs/report-files.md", folder=self.application)
        for name in ("regions.pdf", "north.xls", "summary.png", "orders.csv", "10042.pdf", "orders.html"):
            self.assertGreater((self.application / name).stat().st_size, 500, name)

    # The tutorial's steps in the windows, as its text has them

    def window(self, title):
        windows = []
        for _ in range(100):
            windows = self.display.windows(self.editor.pid, "^%s$" % title)
            if windows:
                break
            time.sleep(0.1)
        self.assertTrue(windows, title)
        time.sleep(0.4)
        return windows[0]

    def keys(self, *keys):
        self.display.key(*keys)
        time.sleep(0.4)

    def type(self, text):
        self.display.run("xdotool", "type", "--delay", "40", text)

    def picture(self, name, window):
        """For docs/pictures, when OXC_PICTURES names a folder."""
        if os.environ.get("OXC_PICTURES"):
            time.sleep(0.5)
            self.display.run("import", "-silent", "-frame", "-window", str(window),
                             str(pathlib.Path(os.environ["OXC_PICTURES"]) / (name + ".png")))

    def schedule_in_the_wizard(self):
        self.display = Display("1000x700")
        self.addCleanup(self.display.close)
        manager = self.display.start_window_manager()
        self.addCleanup(manager.wait)
        self.addCleanup(manager.kill)
        self.editor = subprocess.Popen([TREE / "usr/bin/oxc"], env={**self.environment(), "QT_QPA_PLATFORM": "xcb",
                                                                    "DISPLAY": self.display.name})
        self.addCleanup(self.editor.wait)
        self.addCleanup(self.editor.kill)
        main = self.window("Oxbow Courier")
        time.sleep(3)  # the splash window
        self.display.click(main, 75, 122)  # Desktop in the tree
        time.sleep(0.4)
        self.display.click(main, 45, 80)  # New Folder
        time.sleep(1)
        self.type("Sales")
        self.keys("Return")
        time.sleep(1)
        self.picture("editor", main)
        self.keys("alt+t", "Return")
        wizard = self.window("Schedule Report Wizard")
        self.keys("alt+n")
        self.keys("space")
        self.window("Select the report to schedule...")
        self.type(str(self.application / "samples" / "sales_by_region.rpt"))
        self.keys("Return")
        self.keys("Tab", "Tab", "Tab", "alt+Down", "Down", "Return")
        self.picture("wizard-report", wizard)
        self.keys("alt+n")
        self.keys(*["Tab"] * 6)  # through the parts of both dates
        self.type("0000")
        self.picture("wizard-time", wizard)
        self.keys("alt+n")
        self.type("ann@example.com")
        self.keys("Tab")
        self.type("Good morning")
        self.picture("wizard-mail", wizard)
        self.keys("alt+n")
        self.keys("Tab", "Down", "alt+e")
        self.window("Add Report Parameters")
        self.keys("Return")
        self.picture("wizard-values", wizard)
        self.keys("alt+n")
        self.keys("alt+f")
        self.keys("alt+F4")
        self.editor.wait(20)

    def test_tutorial(self):
        self.stand_in("oxc", SCHEDULER % (TREE / "usr/bin/oxc"))
        said = []
        for text in blocks_of("docs/tutorial.md"):
            if text == "oxc\n":
                self.schedule_in_the_wizard()
            else:
                said.append(self.run_block(text))
        self.assertIn("Sales by region", said[0])
        self.assertIn("Success", said[3])
        mail, = self.mails()
        self.assertEqual((mail["To"], mail["Subject"]), ("ann@example.com", "Good morning"))
        self.assertRegex(said[3], r"\.eml\n$")
        tomorrow = (datetime.date.today() + datetime.timedelta(days=1)).isoformat()
        self.assertIn(tomorrow, said[4])
        self.assertEqual(json.loads(self.run_block("oxc-schedule list --json")), [])


if __name__ == "__main__":
    unittest.main()
