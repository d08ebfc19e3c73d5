# SPDX-License-Identifier: GPL-3.0-or-later
"""`oxc-report new`: reports of databases and CSV files run at once, and their sums are those of the database."""

import csv
import os
import pathlib
import sqlite3
import stat
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as xml

from databases import PASSWORD, POSTGRES, Postgres
from harness import STAGE, pdf_text

ORDERS = """select r.name as Region, c.country as Country, c.company as Customer, o.order_id as OrderID,
    o.order_date as OrderDate, sum(l.quantity) as Pieces, sum(l.quantity * l.unit_price * (1 - l.discount)) as Amount
    from orders o join customers c using (customer_id) join regions r using (region_id)
    join order_lines l using (order_id) where o.order_date between '2025-01-01' and '2025-06-30' group by o.order_id"""


class NewReports(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="oxc-new-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.sales = STAGE / "samples" / "sales.db"
        self.database = sqlite3.connect(self.sales)
        self.addCleanup(self.database.close)

    def run_program(self, *arguments, variables=None, **more):
        environment = {**os.environ, "OXC_HOME": str(self.folder / "home"), "LC_ALL": "C.UTF-8", **(variables or {})}
        return subprocess.run([STAGE / "oxc-report", *arguments], cwd=self.folder, env=environment, text=True,
                              capture_output=True, timeout=120, **more)

    def make(self, *arguments, source=None):
        done = self.run_program("new", "-o", "made.rdl", "--force", "--data-source", source or f"sqlite:{self.sales}",
                                *arguments)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))

    def export(self, word, *options):
        done = self.run_program("export", "made.rdl", "-f", word, "-o", "made." + word, *options)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return (self.folder / ("made." + word)).read_bytes()

    def rows(self):
        """The records of the first table that has several."""
        text = self.export("csv", "--unformatted").decode("utf-8-sig")
        table = max(text.split("\r\n\r\n"), key=len)
        return list(csv.DictReader(table.splitlines()))

    def refuse(self, code, *arguments):
        done = self.run_program("new", *arguments)
        self.assertEqual((done.returncode, done.stdout, done.stderr.count("\n")), (code, "", 1), done.stderr)
        return done.stderr.removeprefix("oxc-report: ").rstrip("\n")

    def test_a_database_without_a_query_names_the_option_and_the_tables(self):
        tables = ", ".join(name for name, in self.database.execute(
            "select name from sqlite_master where type in ('table', 'view') and name not like 'sqlite%' order by name"))
        self.assertEqual(self.refuse(1, "-o", "a.rdl", "--data-source", str(self.sales)),
                         'The database needs a query: --query "select * from TABLE"; its tables are ' + tables)
        self.assertIn("oxc-report new -o FILE", self.run_program("new", "--help").stdout)

    def test_sums_are_those_of_the_database(self):
        for layout in ("table", "blocked"):
            self.make("--query", ORDERS, "--layout", layout, "--group", "Region,Country", "--sum", "Pieces",
                      "--sum", "Amount")
            rows = self.rows()
            for level, names in (("Region", ["Region"]), ("Country", ["Region", "Country"])):
                told = {tuple(row[name + "_Group"] for name in names):
                        (int(row[f"Pieces_{level}_Total"]), float(row[f"Amount_{level}_Total"])) for row in rows}
                keys = ", ".join(names)
                known = {tuple(row[:-2]): row[-2:] for row in self.database.execute(
                    f"select {keys}, sum(Pieces), sum(Amount) from ({ORDERS}) group by {keys}")}
                self.assertEqual(told.keys(), known.keys())
                for key, (pieces, amount) in told.items():
                    self.assertEqual(pieces, known[key][0])
                    self.assertAlmostEqual(amount, known[key][1], 6)
            pieces, amount = self.database.execute(f"select sum(Pieces), sum(Amount) from ({ORDERS})").fetchone()
            self.assertEqual({row["Pieces_Total"] for row in rows}, {str(pieces)})
            self.assertEqual({round(float(row["Amount_Total"]), 4) for row in rows}, {round(amount, 4)})
            self.assertEqual(len(rows), len(self.database.execute(ORDERS).fetchall()))

    def test_a_matrix_has_the_sums_of_the_database(self):
        self.make("--query", ORDERS, "--layout", "matrix", "--rows", "Region", "--cols", "OrderDate", "--values",
                  "Pieces", "--landscape")
        told = {(row["Region_Row"], row["OrderDate_Column"]): row["Pieces"] for row in self.rows() if row.get("Pieces")}
        known = {(region, day): str(pieces) for region, day, pieces in self.database.execute(
            f"select Region, OrderDate, sum(Pieces) from ({ORDERS}) group by 1, 2")}
        self.assertEqual({key: told.get(key) for key in known}, known)

    def test_every_layout_gives_pages_in_the_paper(self):
        people = "select company, contact, street, postal_code || ' ' || city as place, country from customers"
        for layout, paper, query, more in (
                ("table", "a4", ORDERS, ["--group", "Region", "--sum", "Amount", "--chart", "column"]),
                ("blocked", "letter", ORDERS, ["--group", "Region", "--sum", "Amount", "--chart", "pie"]),
                ("matrix", "a4", ORDERS, ["--rows", "Country", "--cols", "Region", "--values", "Amount"]),
                ("labels", "letter", people, []),
                ("letter", "a4", people, ["--group", "company,street,place", "--columns", "contact"])):
            self.make("--query", query, "--layout", layout, "--page", paper, *more)
            text = pdf_text(self.export("pdf"))
            self.assertNotIn("#Error", text)
            self.assertIn("Gagnon Foods s.r.o." if query == people or layout != "matrix" else "Czechia", text)
            info = subprocess.run(["pdfinfo", self.folder / "made.pdf"], capture_output=True, text=True, check=True).stdout
            self.assertIn("(A4)" if paper == "a4" else "(letter)", info)
            pages = int(info.split("Pages:")[1].split()[0])
            # No page holds what was too wide for the one before.
            wanted = {"labels": -(-self.count(people) // 30), "letter": self.count(people)}.get(layout)
            self.assertEqual(pages, wanted or text.count("Page "), layout)

    def count(self, query):
        return self.database.execute(f"select count(*) from ({query})").fetchone()[0]

    def test_a_csv_file_alone_is_enough(self):
        (self.folder / "big orders.csv").write_text("Order,Day,Sum\n1,2025-03-01,1234.5\n2,2025-03-09,0.25\n")
        done = self.run_program("new", "-o", "big_orders.rdl", "--data-source", "big orders.csv")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.folder.joinpath("big_orders.rdl").rename(self.folder / "made.rdl")
        self.assertEqual(self.export("csv").decode("utf-8-sig"),
                         "Order,Day,Sum\r\n1,3/1/2025,\"1,234.50\"\r\n2,3/9/2025,0.25\r\n")
        tree = xml.parse(self.folder / "made.rdl").getroot()
        self.assertEqual(tree.tag, "{http://schemas.microsoft.com/sqlserver/reporting/2016/01/reportdefinition}Report")
        names = [one.attrib["Name"] for one in tree.iter() if "Name" in one.attrib and not one.tag.endswith("Field")]
        self.assertEqual(sorted(names), sorted(set(names)))
        done = self.run_program("info", "made.rdl")
        self.assertIn('"title": "Big orders"', done.stdout)

    def test_a_file_elsewhere_has_its_full_path(self):
        (self.folder / "here").mkdir()
        (self.folder / "there").mkdir()
        (self.folder / "there" / "a.csv").write_text("a,b\n1,2\n")
        for output, name in (("here/x.rdl", str(self.folder / "there" / "a.csv")), ("x.rdl", "there/a.csv"),
                             ("there/x.rdl", "a.csv")):
            done = self.run_program("new", "-o", output, "--data-source", "there/a.csv")
            self.assertEqual((done.returncode, done.stderr), (0, ""))
            self.assertIn(f"<ConnectString>Data Source={name}</ConnectString>", (self.folder / output).read_text())
            self.assertEqual(self.run_program("export", output, "-f", "csv", "-o", "x.csv").returncode, 0)

    def test_a_file_that_exists_is_kept_without_force(self):
        (self.folder / "a.csv").write_text("a,b\n1,2\n")
        (self.folder / "made.rdl").write_text("precious")
        self.assertEqual(self.refuse(1, "-o", "made.rdl", "--data-source", "a.csv"),
                         '"made.rdl" exists: --force replaces it')
        self.refuse(1, "-o", "made.rdl", "--data-source", "a.csv", "--force", "--sum", "c")
        self.assertEqual((self.folder / "made.rdl").read_text(), "precious")
        self.make(source="a.csv")
        self.assertIn("<Report ", (self.folder / "made.rdl").read_text())
        self.assertEqual(sorted(path.name for path in self.folder.iterdir()), ["a.csv", "made.rdl"])

    def test_refusals_are_one_line_that_names_value_and_choice(self):
        (self.folder / "a.csv").write_text("a,b\n1,2\n")
        self.assertEqual(self.refuse(1, "-o", "x.rdl", "--data-source", "a.csv", "--group", "c"),
                         'The query has no column "c"; it has "a", "b"')
        self.assertEqual(self.refuse(2, "-o", "x.rdl", "--data-source", "a.csv", "--theme", "neon"),
                         '"neon" is no theme: plain, ocean, forest, slate or ember (see oxc-report --help)')
        self.assertEqual(self.refuse(1, "-o", "x.rdl", "--data-source", "a.data"),
                         "The provider of the data source is not known by the name of its file: the extensions are "
                         ".csv, .txt, .tsv, .json, .xml, .db, .db3, .sqlite, .sqlite3; else --data-source needs "
                         "PROVIDER:CONNECT STRING")
        self.assertEqual(self.refuse(1, "-o", "x.rdl", "--data-source", f"sqlite:{self.sales}", "--query",
                                     "delete from orders"),
                         "the query does more than read, which a report may not (not authorized)")
        self.assertFalse((self.folder / "x.rdl").exists())

    def test_names_and_values_of_any_kind_are_shown(self):
        (self.folder / "a.csv").write_text('=1+1,"a, b",<&>,é ü\n=2+2,"{?x}",]]>,"tab\there"\n')
        self.make("--columns", "a, b", "--columns", "=1+1,<&>,é ü", source="a.csv")
        text = pdf_text(self.export("pdf"))
        for word in ("=1+1", "A, b", "<&>", "=2+2", "{?x}", "]]>"):
            self.assertIn(word, text)

    def test_a_report_with_a_password_is_for_its_owner(self):
        (self.folder / "a.csv").write_text("a,b\n1,2\n")
        for connect, mode in (("Data Source=a.csv", 0o644), ("Data Source=a.csv;Password=secret", 0o600)):
            done = self.run_program("new", "-o", f"{mode}.rdl", "--data-source", "csv:" + connect, umask=0o022)
            self.assertEqual((done.returncode, done.stderr), (0, ""))
            self.assertEqual(stat.S_IMODE((self.folder / f"{mode}.rdl").stat().st_mode), mode)

    @unittest.skipUnless(POSTGRES, "PostgreSQL is not installed")
    def test_a_server_gives_types_and_rows(self):
        server = Postgres()
        self.addCleanup(server.close)
        server.sql("""create table paid(customer text, day date, at timestamp, amount numeric(10, 2), pieces int, open boolean);
                      insert into paid values ('Berg', '2025-03-01', '2025-03-01 10:30', 1200.10, 2, true),
                                              ('Dahl', '2025-03-04', '2025-03-04 08:00', 0.20, 1500, false);
                      grant select on paid to clerk""")
        connect = "Host=127.0.0.1;Port=%d;Database=postgres" % server.port
        source = ["--data-source", "Till=PostgreSQL;" + connect, "--query", "select * from paid order by day"]
        secret = {"OXC_REPORT_PASSWORD": PASSWORD}
        done = self.run_program("new", "-o", "made.rdl", *source, "--user", "clerk", "--sum", "amount", variables=secret)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        text = (self.folder / "made.rdl").read_text()
        self.assertIn('<DataSource Name="Till">', text)
        self.assertIn(f"<ConnectString>{connect}</ConnectString>", text)
        done = self.run_program("export", "made.rdl", "-f", "csv", "-o", "made.csv", "--user", "clerk", variables=secret)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertEqual((self.folder / "made.csv").read_text("utf-8-sig").splitlines(),
                         ["customer,day,at,amount,pieces,open,amount_Total",
                          'Berg,3/1/2025,3/1/2025 10:30 AM,"1,200.10",2,True,"1,200.30"',
                          'Dahl,3/4/2025,3/4/2025 8:00 AM,0.20,"1,500",False,"1,200.30"'])

    def test_user_and_password_are_not_written(self):
        (self.folder / "a.csv").write_text("a,b\n1,2\n")
        done = self.run_program("new", "-o", "made.rdl", "--data-source", "a.csv", "--user", "ann", "--password-stdin",
                                input="open sesame\n")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        text = (self.folder / "made.rdl").read_text()
        self.assertNotIn("ann", text)
        self.assertNotIn("sesame", text)


if __name__ == "__main__":
    unittest.main()
