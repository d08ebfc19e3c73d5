# SPDX-License-Identifier: GPL-3.0-or-later
"""The designer's wizard by keys alone, from data to a saved report whose sums are those of the data."""

import csv
import os
import sqlite3
import subprocess
import time
import unittest

from databases import MARIADB, PASSWORD, POSTGRES, MariaDb, Postgres
from designer import PICTURES, DesignerTest
from harness import STAGE

ORDERS = ("select r.name as Region, c.company as Customer, sum(l.quantity) as Pieces, "
          "sum(l.quantity * l.unit_price) as Amount from orders o join customers c using (customer_id) "
          "join regions r using (region_id) join order_lines l using (order_id) group by 1, 2")


class Wizard(DesignerTest):
    def picture(self, name):
        if PICTURES:
            time.sleep(0.5)
            self.display.screenshot(f"{PICTURES}/wizard_{name}.png")

    def open_wizard(self):
        main = self.start()
        self.keys("ctrl+shift+n")
        return main, self.window("New Report From Data: Data source")

    def wait_for_report(self, main):
        self.wait(lambda: not self.display.windows(self.process.pid, "New Report From Data"), "end of the wizard")
        self.wait(lambda: self.title(main).startswith("New Report*"), "new report that is not saved")
        self.display.focus(main)

    def save(self, main):
        """Saves the report that the wizard has made, and returns its file."""
        self.wait_for_report(main)
        self.picture("done")
        self.keys("ctrl+s")
        self.window("Save Report As")
        file = self.folder / "made.rdl"
        self.type(str(file))
        self.keys("Return")
        self.wait(file.exists, "saved file")
        self.wait(lambda: self.title(main).startswith("made.rdl -"), "title of the saved file")
        self.quit()
        return file

    def rows(self, report):
        target = self.folder / "made.csv"
        subprocess.run([STAGE / "oxc-report", "export", report, "-f", "csv", "-o", target, "--unformatted"], check=True,
                       env={**os.environ, "OXC_HOME": str(self.folder / "home"), "LC_ALL": "C.UTF-8"}, timeout=120)
        table = max(target.read_text("utf-8-sig").split("\n\n"), key=len)
        return list(csv.DictReader(table.splitlines()))

    def test_a_query_becomes_a_grouped_report_with_totals_and_a_chart(self):
        main, _ = self.open_wizard()
        sales = STAGE / "samples" / "sales.db"
        self.keys("alt+i")
        self.type(str(sales))
        self.picture("source")
        self.go_on("Rows")
        self.keys("alt+q")
        self.type(ORDERS)
        self.keys("ctrl+Return")
        self.picture("query")
        self.go_on("Layout")
        self.picture("layout")
        self.go_on("Columns")
        self.add("r", "g")
        self.add("p", "t")
        self.add("a", "t")
        self.picture("columns")
        self.go_on("Look")
        self.type("Sales by region")
        self.keys("alt+c")
        self.type("Col")
        self.keys("alt+m")
        self.type("Oc")
        self.picture("look")
        self.keys("alt+f")
        report = self.save(main)
        text = report.read_text("utf-8")
        self.assertIn("<Value>Sales by region</Value>", text)
        self.assertEqual(text.count("<Chart Name="), 1)
        database = sqlite3.connect(sales)
        self.addCleanup(database.close)
        told = {row["Region_Group"]: (int(row["Pieces_Region_Total"]), round(float(row["Amount_Region_Total"]), 4))
                for row in self.rows(report)}
        known = {region: (pieces, round(amount, 4)) for region, pieces, amount in database.execute(
            f"select Region, sum(Pieces), sum(Amount) from ({ORDERS}) group by 1")}
        self.assertEqual(told, known)

    def test_a_csv_file_becomes_a_report(self):
        data = self.folder / "orders.csv"
        data.write_text("Region,Customer,Amount\nNorth,Berg,120.50\nNorth,Dahl,80.25\nSouth,Costa,99.00\n")
        main, _ = self.open_wizard()
        self.type("CSV")
        self.keys("alt+i")
        self.type(str(data))
        for page in ("Rows", "Layout", "Columns"):
            self.go_on(page)
        self.add("r", "g")
        self.add("a", "t")
        self.go_on("Look")
        self.keys("alt+f")
        report = self.save(main)
        self.assertIn("<Value>Orders</Value>", report.read_text("utf-8"))
        rows = self.rows(report)
        self.assertEqual([row["Customer"] for row in rows], ["Berg", "Dahl", "Costa"])
        totals = {row["Region_Group"]: float(row["Amount_Region_Total"]) for row in rows}
        self.assertEqual(totals, {"North": 200.75, "South": 99.0})

    def make_from_server(self, kind, server, database, table, picture):
        """Logs on to the server with the password that is wrong first, and makes a report of the table."""
        main, _ = self.open_wizard()
        self.type(kind)
        for line, text in (("s", "127.0.0.1"), ("o", str(server.port)), ("d", database), ("u", "clerk"), ("w", "wrong")):
            self.keys("alt+" + line)
            self.type(text)
        self.keys("alt+n")
        time.sleep(2)
        self.picture(picture + "_wrong")
        self.assertTrue(self.display.windows(self.process.pid, "New Report From Data: Data source"))
        self.keys("alt+w", "ctrl+a")
        self.type(PASSWORD)
        self.go_on("Rows")
        self.type(table)
        self.picture(picture + "_tables")
        for page in ("Layout", "Columns", "Look"):
            self.go_on(page)
        self.picture(picture + "_look")
        self.keys("alt+f")
        self.wait_for_report(main)
        self.keys("F5")
        self.wait_for_preview(server)
        self.picture(picture + "_preview")
        self.keys("F7")
        report = self.save(main).read_text("utf-8")
        self.assertNotIn(PASSWORD, report)
        self.assertNotIn("clerk", report)
        return report

    def wait_for_preview(self, server):
        """The preview reads the table once more, with the logon of the wizard."""
        if not isinstance(server, Postgres):
            return
        def was_read():
            try:
                server.sql("""do $$ begin if (select seq_scan < 2 from pg_stat_user_tables where relname = 'Paid by day')
                              then raise exception 'not yet'; end if; end $$""")
                return True
            except subprocess.CalledProcessError:
                return False
        self.wait(was_read, "second reading of the table")

    @unittest.skipUnless(POSTGRES, "PostgreSQL is not installed")
    def test_a_table_of_postgresql_becomes_a_report(self):
        server = Postgres()
        self.addCleanup(server.close)
        server.sql("""create schema till; create table till."Paid by day"(customer text, amount numeric(10, 2));
                      insert into till."Paid by day" values ('Berg', 1200.10);
                      grant usage on schema till to clerk; grant select on till."Paid by day" to clerk""")
        report = self.make_from_server("Postgre", server, "postgres", "till", "postgresql")
        self.assertIn(f"<ConnectString>Host=127.0.0.1;Port={server.port};Database=postgres</ConnectString>", report)
        self.assertIn('<CommandText>select * from "till"."Paid by day"</CommandText>', report)
        self.assertIn("<Value>Paid by day</Value>", report)

    @unittest.skipUnless(MARIADB, "MariaDB is not installed")
    def test_a_table_of_mariadb_becomes_a_report(self):
        server = MariaDb()
        self.addCleanup(server.close)
        server.sql("create table `Paid by day`(customer text, amount numeric(10, 2)); "
                   "insert into `Paid by day` values ('Berg', 1200.10)")
        report = self.make_from_server("MySQL", server, "shop", "Paid", "mariadb")
        self.assertIn(f"<ConnectString>Server=127.0.0.1;Port={server.port};Database=shop</ConnectString>", report)
        self.assertIn("<CommandText>select * from `Paid by day`</CommandText>", report)

    def test_what_is_wrong_is_told_and_escape_leaves_no_report(self):
        main, _ = self.open_wizard()
        self.keys("alt+n")
        time.sleep(1)
        self.picture("wrong")
        self.assertTrue(self.display.windows(self.process.pid, "New Report From Data: Data source"))
        self.keys("Escape")
        self.wait(lambda: not self.display.windows(self.process.pid, "New Report From Data"), "end of the wizard")
        self.assertTrue(self.title(main).startswith("New Report -"))
        self.display.focus(main)
        self.quit()


if __name__ == "__main__":
    unittest.main()
