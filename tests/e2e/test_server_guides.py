# SPDX-License-Identifier: GPL-3.0-or-later
"""The guides of who runs a scheduler for others: service, backup, move, monitoring. Their commands are run in their pages'
order, for a user's scheduler and for the system's service, whose folders, users and units are those of the test."""

import datetime
import json
import re
import shutil
import subprocess
import time
import unittest

from guide_pages import TOP, blocks
from guide_reader import MINIMAL, GuideTest, blocks_of


class ServerGuides(GuideTest):
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

        self.run_block("cp .local/share/oxbow-courier/samples/summary.rpt own.rpt; cat > old.vcf; "
                       "oxc-mail set VCard=~/old.vcf; mkdir -p reports moved; cp own.rpt reports; cp own.rpt moved; "
                       "oxc-schedule add reports/own.rpt --to 'Ann Berg' --at 07:00 --title Own; "
                       "oxc-schedule options set --alert boss@example.com --poll 20",
                       said="BEGIN:VCARD\nVERSION:3.0\nFN:Ann Berg\nEMAIL:ann@example.com\nEND:VCARD\n")
        self.words.update({"/home/ann/reports/": "%s/reports/" % self.home, "/srv/reports/": "%s/moved/" % self.home})
        self.assertIn("boss@example.com", self.run_block(export))
        self.assertEqual((self.home / "courier.json").stat().st_mode & 0o777, 0o600)
        self.run_block("mv old.vcf contacts.vcf; mv ~/.config/oxbow-courier/mail.ini .; rm -r .config reports .local/share/oxbow-courier/PressroomLive.*")
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
                       "echo link > sales.rds; echo page > output/page.htm; echo former > PressroomLive.dat.embedded")
        stored = self.run_block("oxc-schedule list --json")
        backup, small, store, restore, backup_service, restore_service, export = blocks_of("docs/how-to/backup.md")
        kept = {path: path.read_bytes() for place in (".local", ".config") for path in (self.home / place).rglob("*")
                if path.is_file() and not path.name.startswith("PressroomLive.")}
        kept[self.application / "PressroomLive.dat.embedded"] = b"former\n"
        self.assertIn(self.home / ".config/autostart/OXC.desktop", kept)
        self.assertEqual(self.run_block(backup), "ok\n")
        self.run_block(small)
        for name in ("pressroom.dat", "files.tar.gz", "small.dat"):
            self.assertEqual((self.home / "backup" / name).stat().st_mode & 0o777, 0o600, name)
        self.assertRegex(self.run_block(store), r"^Copied \d+ rows to the file ")
        copied, = (self.home / "backup").glob("*/Cache/summary.rpt")
        self.assertEqual(copied.read_bytes(), (self.application / "Cache" / "summary.rpt").read_bytes())
        self.run_block(export)
        self.assertIn(json.loads(stored)[0]["title"], (self.home / "backup" / "schedules.json").read_text())
        # A new machine, where nothing was started yet.
        shutil.rmtree(self.home / ".local")
        shutil.rmtree(self.home / ".config")
        self.run_block(restore)
        self.assertEqual(self.run_block("oxc-schedule list --json"), stored)
        self.assertEqual({path.name for path in self.application.glob("PressroomLive.*") if ".dat-" not in path.name},
                         {"PressroomLive.dat", "PressroomLive.dat.embedded"})
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

    def poll_until(self, condition):
        """Runs the scheduler, with a poll each second, until the rows of the history, as (title, status), are so."""
        scheduler = subprocess.Popen([self.tree / "usr/bin/oxc", "-sched"], env=self.environment(), stderr=subprocess.DEVNULL)
        try:
            for _ in range(200):
                rows = [(row["title"], row["status"]) for row in json.loads(self.run_block("oxc-schedule history --json"))]
                if condition(rows):
                    return
                time.sleep(0.1)
            self.fail(rows)
        finally:
            scheduler.terminate()
            self.assertEqual(scheduler.wait(20), 0)

    def test_schedule_that_fails_in_every_poll(self):
        self.make_folder()
        self.run_block("oxc-mail set Transport=outbox From=a@example.com; oxc-schedule options set --poll 1 --alert "
                       "boss@example.com; for n in First Sales Last; do cp .local/share/oxbow-courier/samples/summary.rpt $n.rpt; "
                       "oxc-schedule add $n.rpt --to ann@example.com --at 00:00 --title $n; done; "
                       "rm .local/share/oxbow-courier/Cache/Sales.rpt")
        for variable in ("", "OXC_REPORT_MEMORY=2G ", "OXC_REPORT_FOLDERS=here "):
            self.run_block(variable + "oxc-schedule run Sales || [ $? = 1 ]")
        on_demand = json.loads(self.run_block("oxc-schedule history --json"))
        self.assertEqual([row["status"] for row in on_demand], ["", "", ""])
        self.assertEqual({re.match("[A-Z_]+", row["error"])[0] for row in on_demand}, {"F", "OXC_REPORT_MEMORY", "OXC_REPORT_FOLDERS"})
        self.assertEqual(self.mails(), [])

        aside, back = blocks_of("docs/operations.md")
        self.poll_until(lambda rows: rows.count(("Sales", "Failure")) >= 3)
        rows = [(row["title"], row["status"]) for row in json.loads(self.run_block("oxc-schedule history --json"))]
        self.assertEqual(set(rows), {("First", "Success"), ("Sales", "Failure"), ("Sales", "")})
        self.assertEqual([mail["To"] for mail in self.mails()].count("boss@example.com"), rows.count(("Sales", "Failure")))

        self.run_block(aside)
        for name in ("all.json", "aside.json"):
            self.assertEqual((self.home / name).stat().st_mode & 0o777, 0o600, name)
        self.poll_until(lambda rows: ("Last", "Success") in rows)
        self.run_block(back)
        tomorrow = (datetime.date.today() + datetime.timedelta(days=1)).isoformat()
        listed = {row["title"]: row["next"] for row in json.loads(self.run_block("oxc-schedule list --json"))}
        self.assertEqual(listed, dict.fromkeys(("First", "Sales", "Last"), tomorrow))

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

    def test_monitoring(self):
        self.make_folder()
        self.serve_the_system()
        self.fill_the_service()
        said = self.run_page("docs/how-to/monitoring.md")
        self.assertIn("Last poll: none", said[0])
        self.assertIn("Stored: 0 schedules", said[0])
        self.assertIn("Stored: 1 schedules", said[1])
        metrics = (self.home / "oxbow-courier.prom").read_text()
        self.assertIn("oxc_status 2\n", metrics)
        self.assertNotIn("oxc_last_poll_age_seconds", metrics)  # as the table of alerts says

    def test_lines_of_crontabs(self):
        self.serve_the_system()
        self.fill_the_service()
        self.make_folder()
        self.stand_in("runuser", 'shift 3\nexec "$@"\n')
        self.words = {"/var/lib/prometheus/node-exporter": str(self.home), **self.words}
        lines = [text for kind, text in blocks(TOP / "docs/how-to/monitoring.md") if not kind]
        own, service, mail = (re.fullmatch(r"(?:\*/15|\*)(?: \*){4} (?:root )?(.*)\n", line).group(1) for line in lines)
        for line, items in ((own, 0), (service, 1)):
            self.run_block("set +e; " + line)
            self.assertIn('oxc_items{kind="schedule"} %d\n' % items, (self.home / "courier.prom").read_text())
        self.assertEqual(self.run_block(mail), "Oxbow Courier: status 2\n")


if __name__ == "__main__":
    unittest.main()
