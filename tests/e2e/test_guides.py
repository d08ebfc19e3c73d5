# SPDX-License-Identifier: GPL-3.0-or-later
"""Every block of commands in the guides is run, in its page's order, by a user at the first login on a machine where
the programs are installed. test_server_guides.py has the pages for people who run a scheduler for others."""

import datetime
import json
import os
import pathlib
import re
import subprocess
import time
import unittest

from databases import POSTGRES, Postgres
from editor import Display
from guide_pages import FENCED, PAGES, TOP, blocks, commands, name_of, unfenced_commands
from guide_reader import MINIMAL, GuideTest, blocks_of

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
        "courier oxc-mail set Transport=smtp Host=mail.example.com From='Reports <reports@example.com>'": "e2e.server_guides",
        "courier oxc-mail check": "e2e.server_guides",
        "courier oxc-schedule options set --alert boss@example.com": "e2e.server_guides",
        "sudo systemctl reload oxbow-courier": "e2e.server_guides",
        "courier oxc-schedule add /srv/reports/sales.rpt --to ann@example.com --weekly --at 07:30": "e2e.server_guides",
        "courier oxc-schedule status": "e2e.server_guides",
        "rm -f ~/.config/autostart/OXC.desktop": "packaging.service checks the unit's condition",
        "systemctl --user daemon-reload": "packaging.service checks the unit",
        "systemctl --user enable --now oxbow-courier": "packaging.service checks the unit",
        "loginctl enable-linger": "a command of the system",
        "journalctl -u oxbow-courier -o cat | jq -r 'select(.event == \"run-failed\") | "
        "[.time, .schedule, .title, .error] | @tsv'": "e2e.server_guides",
    },
}

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


class Guides(GuideTest):
    def test_each_page_with_commands_has_its_test(self):
        tests = "".join(path.read_text() for path in pathlib.Path(__file__).parent.glob("test_*guides.py"))
        tested = set(re.findall(r'(?:run_page|blocks_of)\("([^"]+)"', tests))
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

    def test_mail_server(self):
        server = self.serve_mail()
        (self.home / "password.txt").write_text("s3cret\n")
        said = self.run_page("docs/how-to/mail-server.md")
        self.assertEqual(said[1], "The password is stored.\n")
        self.assertIn("takes mail from reports@example.com", said[2])
        self.assertEqual([m["X-Envelope-To"] for m in server.messages()], ["ann@example.com"])
        self.assertIn("Alerts go to boss@example.com", said[3])
        self.assertIn("Transport=sendmail\n", said[4])

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
                   "-c", "create table orders(region text, customer text, amount numeric); "
                         "insert into orders values('North', 'Larch & Sons', 120.5), ('South', 'Costa', 99); "
                         "select pg_reload_conf()")
        self.words = {"-h db.example.com": "-q -h %s -p %d -U postgres" % (server.folder, server.port),
                      "Host=db.example.com;Port=5432": "Host=127.0.0.1;Port=%d" % server.port,
                      "/etc/odbcinst.ini": str(self.home / "odbcinst.ini")}
        self.stand_in("sudo", 'exec "$@"\n')
        drivers = "[Other]\nCommLog=1\n\n[PostgreSQL ANSI]\nCommLog=1\n\n[PostgreSQL Unicode]\nDebug=0\nCommLog=%d\nUsageCount=1\n"
        (self.home / "odbcinst.ini").write_text(drivers % 1)
        self.make_folder()
        self.run_block("oxc-mail set Transport=outbox From=a@example.com OutboxFolder=%s" % (self.application / "outbox"))
        self.run_page("docs/how-to/postgresql.md")
        text = self.run_block("pdftotext orders.pdf -")
        for words in ("Orders", "Larch & Sons", "120[.,]50", "219[.,]50"):
            self.assertRegex(text, words)
        report = (self.home / "orders.rdl").read_text()
        self.assertIn("<DataSourceReference>sales<", report)
        self.assertNotIn("Host=", report)
        self.assertEqual((self.home / "odbcinst.ini").read_text(), drivers.replace("ANSI]\nCommLog=1", "ANSI]\nCommLog=0") % 0)
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

    def test_new_report(self):
        self.make_folder()
        self.run_page("docs/how-to/new-report.md")
        self.assertIn("Orders of March", self.run_block("pdftotext orders.pdf -"))
        self.assertIn("<svg", (self.home / "orders.html").read_text())
        for name, text in (("customers", "Petit Import GmbH"), ("years", "Orders by Country and Year"),
                           ("labels", "Petit Import GmbH"), ("letters", "Your orders")):
            self.assertIn(text, self.run_block(f"oxc-report export {name}.rdl -f pdf -o {name}.pdf; pdftotext {name}.pdf -"))

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

    def test_types_of_parameters(self):
        said = re.search(r"The `type` of a parameter is(.*?)\.\s", (TOP / "docs/report-files.md").read_text(), re.S).group(1)
        types = {word: int(number) for number, words in re.findall(r"(\d+) for([^\d]*)", said)
                 for word in re.findall(r"`(\w+)`", words)}
        parameter = re.search(r"<ReportParameter .*?</ReportParameter>", MINIMAL, re.S).group()
        report = MINIMAL.replace(parameter, "".join(
            '<ReportParameter Name="%s"><DataType>%s</DataType><Prompt>p</Prompt></ReportParameter>' % (name, name) for name in types))
        (self.home / "types.rdl").write_text(report % "types")
        told = json.loads(self.run_block("oxc-report info types.rdl"))["parameters"]
        self.assertEqual({one["name"]: one["type"] for one in told}, types)
        self.assertEqual(set(types), {"Integer", "Float", "Boolean", "String", "DateTime"})

    def test_keys_of_the_designer(self):
        designer = TOP / "src/designer"
        window = designer / "window"
        menus = "".join(file.read_text() for file in [
            window / "design_menus.cpp", *sorted(window.glob("*_commands.cpp")), designer / "item_dialogs/format_menu.cpp",
            designer / "panes/table_menu.cpp"])
        table = (TOP / "src/designer/panes/table_menu.cpp").read_text()
        marks = {"BracketRight": "]", "BracketLeft": "[", "Plus": "+", "Minus": "-", "Equal": "=", "Greater": ">", "Less": "<"}
        keys = {"+".join([word.title() for word in re.findall("[A-Z]+(?= )", held)] + [marks.get(key, key)])
                for held, key in re.findall(r"QKeySequence\(((?:Qt::[A-Z]+ \| )*)Qt::Key_(\w+)\)", menus)}
        tools, = re.findall(r"(?s)Key Keys\[\] = \{(.*?)\};", menus)
        keys |= {"Ctrl+Alt+" + key for key in re.findall(r"Key_(\w)", tools) + re.findall(r"Key_(\w), BandKind", menus)}
        keys |= {"Ctrl+Shift+" + key for key in re.findall(r"keys\(Qt::Key_(\w)\)", menus)}
        keys |= {("Ctrl+Alt+Shift+" if held == "All" else "Ctrl+Alt+") + key
                 for held, key in re.findall(r"Keys\((\w+), Qt::Key_(\w+)\)", table)}
        self.assertGreater(len(keys), 45)
        keys -= {"Ctrl+="}  # the key of Ctrl++ where that one is typed with Shift
        guide = re.search(r"\n## Keys\n(.*?)\n## ", (TOP / "docs/designer.md").read_text(), re.S).group(1)
        said = set()
        for row in re.findall(r"(?m)^\| (\S*(?:Ctrl|F\d|Alt)[^|]*) \|", guide):
            held = ""
            for part in re.split(", | to ", row):
                held = part[:part.rindex("+", 0, -1) + 1] if "+" in part[:-1] else held
                said.add(part if part.startswith(held) or part in ("Delete", "F2") else held + part)
        usual = {"Ctrl+" + key for key in "NOSZXCVA"} | {"Ctrl+Shift+Z", "Delete", "F1", "Alt+1", "Alt+6"}
        self.assertEqual(said, keys | usual)

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
        self.editor = subprocess.Popen([self.tree / "usr/bin/oxc"], env={**self.environment(), "QT_QPA_PLATFORM": "xcb",
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
        self.stand_in("oxc", SCHEDULER % (self.tree / "usr/bin/oxc"))
        said = []
        for text in blocks_of("docs/tutorial.md"):
            if text == "oxc\n":
                self.schedule_in_the_wizard()
            else:
                said.append(self.run_block(text))
        self.assertIn("Sales by region", said[0])
        self.assertIn('"type": 7\n', said[0])
        self.assertIn("Success", said[3])
        mail, = self.mails()
        self.assertEqual((mail["To"], mail["Subject"]), ("ann@example.com", "Good morning"))
        self.assertRegex(said[3], r"\.eml\n$")
        tomorrow = (datetime.date.today() + datetime.timedelta(days=1)).isoformat()
        self.assertIn(tomorrow, said[4])
        self.assertEqual(json.loads(self.run_block("oxc-schedule list --json")), [])


if __name__ == "__main__":
    unittest.main()
