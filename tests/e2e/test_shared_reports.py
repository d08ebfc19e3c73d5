# SPDX-License-Identifier: GPL-3.0-or-later
"""Report files that other people wrote: each says in every format what its data say."""

import collections
import datetime
import os
import pathlib
import re
import shutil
import sqlite3
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree

from harness import report_formats
from report_texts import docx_text, html_rows, html_text, pdf_pages, rtf_text, squeezed, xls_rows

PROGRAM = pathlib.Path(os.environ.get("OXC_STAGE", "build/release/stage")).resolve() / "oxc-report"
SHARED = pathlib.Path(__file__).resolve().parents[3] / "shared" / "rdl"
NORTHWIND = SHARED / "northwindEF.db"
MAGIC = {"pdf": b"%PDF-1.7", "rtf": b"{\\rtf1", "doc": b"{\\rtf1", "xls": b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1",
         "html": b"<!DOCTYPE html>", "csv": b"\xef\xbb\xbf", "xlsx": b"PK\x03\x04", "docx": b"PK\x03\x04", "png": b"\x89PNG\r\n\x1a\n"}


def local(element):
    return element.tag.rpartition("}")[2]


def inline_rows(report, number=0):
    """The rows that a report holds itself, as a list of dicts."""
    root = xml.etree.ElementTree.parse(SHARED / report).getroot()
    sets = [element for element in root.iter() if local(element) == "DataSet"]
    holder = sets[number]
    for element in holder.iter():
        if local(element) == "CommandText":
            holder = xml.etree.ElementTree.fromstring(element.text)
    return [{local(cell): (cell.text or "").strip() for cell in row} for row in holder.iter() if local(row) == "Row"]


def timeless(rtf):
    """Without the second in which it was made."""
    return re.sub(rb"\\creatim[^}]*", b"", rtf.read_bytes())


@unittest.skipUnless(SHARED.is_dir(), "the shared report files are not beside the project")
class SharedReport(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="oxc-shared-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)

    def run_report(self, report, output, arguments=()):
        environment = {name: value for name, value in os.environ.items() if name not in ("DISPLAY", "OXC_HOME")}
        return subprocess.run([str(PROGRAM), "export", str(SHARED / report), "-f", output.suffix[1:], "-o", str(output),
                               *arguments], capture_output=True, text=True, timeout=60, env=environment)

    def export(self, report, *arguments, database=False):
        """All formats; returns the files by format."""
        if database:
            arguments += ("--data-source", "DS1=SQLITE;Data Source=%s" % NORTHWIND)
        files = {}
        self.assertEqual(sorted(MAGIC), sorted(report_formats()))
        for name, magic in MAGIC.items():
            files[name] = self.folder / ("out." + name)
            done = self.run_report(report, files[name], arguments)
            self.assertEqual((done.returncode, done.stderr), (0, ""), name)
            self.assertEqual(files[name].read_bytes()[:len(magic)], magic)
        checked = subprocess.run(["qpdf", "--check", str(files["pdf"])], capture_output=True, text=True)
        self.assertEqual(checked.returncode, 0, checked.stdout + checked.stderr)
        self.assertEqual(timeless(files["doc"]), timeless(files["rtf"]))
        self.pages = pdf_pages(files["pdf"])
        self.texts = {"pdf": "".join(self.pages), "html": html_text(files["html"]), "rtf": rtf_text(files["rtf"]), "docx": docx_text(files["docx"]),
                      "xls": "\n".join("\n".join(row) for row in xls_rows(files["xls"]))}
        for text in self.texts.values():
            self.assertNotIn("#Error", text)
        return files

    def assert_fails(self, message, report, *arguments):
        output = self.folder / "out.pdf"
        done = self.run_report(report, output, arguments)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (1, "", "oxc-report: %s\n" % message))
        self.assertFalse(output.exists())

    def assert_texts(self, words):
        """Each is found in every format, whatever the line breaks."""
        for name, text in self.texts.items():
            joined = squeezed(text)
            for word in words:
                self.assertIn(squeezed(word), joined, name)

    def assert_rows(self, files, rows, typed=None):
        """Rows in this order: cell by cell where a format has cells. Typed: as a workbook shows the same."""
        self.assert_in_order([[" ".join(cell.split()) for cell in row] for row in rows], html_rows(files["html"]))
        filled = [[" ".join(cell.split()) for cell in row if cell.strip()] for row in typed or rows]
        self.assert_in_order(filled, xls_rows(files["xls"]))
        text = squeezed(self.texts["rtf"])
        place = 0
        for row in rows:
            found = text.find(squeezed("".join(row)), place)
            self.assertGreaterEqual(found, 0, row)
            place = found
        joined = squeezed(self.texts["pdf"])
        for row in rows:
            for cell in row:
                self.assertIn(squeezed(cell), joined)

    def assert_in_order(self, wanted, rows):
        rest = iter(rows)
        for row in wanted:
            self.assertTrue(any(found == row for found in rest), "%s is not in its place among %s" % (row, rows[:40]))

    def northwind(self, statement):
        connection = sqlite3.connect(NORTHWIND)
        try:
            return connection.execute(statement).fetchall()
        finally:
            connection.close()


def texts(row):
    return ["" if cell is None else str(cell) for cell in row]


def dates_as_shown(row, columns, form):
    cells = texts(row)
    for column in columns:
        date = datetime.datetime.fromisoformat(cells[column])
        cells[column] = form(date)
    return cells


def american(date):
    hour = "%d:%02d:%02d %s" % (date.hour % 12 or 12, date.minute, date.second, "AM" if date.hour < 12 else "PM")
    return "%d/%d/%d %s" % (date.month, date.day, date.year, hour)


class Northwind(SharedReport):
    def test_suppliers_stand_row_by_row(self):
        rows = self.northwind("select SupplierID, CompanyName, ContactName, ContactTitle, Address, City, Region, "
                              "PostalCode, Country, Phone, Fax, HomePage from Suppliers")
        self.assertEqual(len(rows), 29)
        files = self.export("SuppliersStyled.rdl", database=True)
        self.assert_rows(files, [texts(row) for row in rows])

    def test_contacts_fill_three_columns_of_a_page_in_order(self):
        rows = self.northwind("select ContactName, Phone from Customers order by 1")
        self.assertEqual(len(rows), 91)
        files = self.export("TableThreeColumns.rdl", database=True)
        self.assert_rows(files, [texts(row) for row in rows])
        self.assertEqual(len(self.pages), 1)

    def test_employees_with_every_kind_of_column(self):
        columns = ("EmployeeID, LastName, FirstName, Title, TitleOfCourtesy, BirthDate, HireDate, Address, City, Region, "
                   "PostalCode, Country, HomePhone, Extension, 'System.Byte[]', Notes, PhotoPath")
        rows = self.northwind("select %s from Employees" % columns)
        files = self.export("SimpleTest1.rdl", database=True)
        shown = [dates_as_shown(row, (5, 6), american) for row in rows]
        typed = [dates_as_shown(row, (5, 6), lambda date: date.strftime("%Y/%m/%d")) for row in rows]
        self.assert_rows(files, shown, typed)
        self.assertIn("1 of %d" % len(self.pages), self.pages[0])
        self.assertIn("%d of %d" % (len(self.pages), len(self.pages)), self.pages[-1])

    def test_functions_trim_and_concatenate(self):
        rows = self.northwind("select EmployeeID, trim(LastName), FirstName, Title, TitleOfCourtesy, BirthDate, HireDate, "
                              "Address, City, Region from Employees")
        files = self.export("functions.rdl", database=True)
        typed = [dates_as_shown(row, (5, 6), lambda date: date.strftime("%Y/%m/%d")) for row in rows]
        # On the sheet the text that stands beside the table is in the row of its height.
        typed[0].append("Hello World")
        self.assert_rows(files, [dates_as_shown(row, (5, 6), american) for row in rows], typed)
        self.assert_texts(["Simple Test", "Hello World", "1 of 1"])

    def test_a_chart_stands_beside_its_table(self):
        rows = self.northwind("select EmployeeID, LastName, FirstName, Title, TitleOfCourtesy, Country, Region "
                              "from Employees")
        files = self.export("chart.rdl", database=True)
        self.assert_rows(files, [texts(row) for row in rows])
        for word in ["Country Region Chart", "USA", "UK", "City"]:
            self.assertIn(word, self.texts["pdf"])
        # As many people in the United States as the axis ends with.
        most = self.northwind("select max(n) from (select count(City) n from Employees group by Country, Region)")[0][0]
        self.assertIn(str(most), self.texts["pdf"].split("Country Region Chart")[-1].split())
        self.assertIn("<svg", files["html"].read_text(encoding="utf-8"))

    def test_a_list_stands_at_its_places(self):
        rows = self.northwind("select EmployeeID, LastName, FirstName from Employees")
        files = self.export("ListReport.rdl", database=True)
        words = [[str(number), last, first, first + " " + last] for number, last, first in rows]
        self.assert_in_order([[" ".join(row)] for row in words], html_rows(files["html"]))
        self.assert_in_order([part for row in words for part in (row[:3], row[3:])], xls_rows(files["xls"]))
        for name in ("pdf", "rtf"):
            text = squeezed(self.texts[name])
            places = [text.find(squeezed("".join(row))) for row in words]
            self.assertEqual(sorted(places), places, name)
            self.assertGreater(places[0], 0, name)
        self.assertIn("http://www.google.com/search?q=" + rows[0][1], files["html"].read_text(encoding="utf-8"))

    def test_a_parameter_without_a_default_is_asked_for(self):
        source = "DS1=SQLITE;Data Source=%s" % NORTHWIND
        self.assert_fails('Parameter "TestParam1" has no value and no default', "SimpleTest3WithParameters.rdl",
                          "--data-source", source)

    def test_a_parameter_is_given_and_customers_stand_in_a_list(self):
        rows = self.northwind("select CustomerID, CompanyName, ContactName, ContactTitle, Address, City, Region, "
                              "PostalCode, Country, Phone, Fax from Customers")
        files = self.export("SimpleTest3WithParameters.rdl", "-p", "TestParam1=Greetings", database=True)
        self.assert_in_order([[" ".join(" ".join(texts(row)).split())] for row in rows], html_rows(files["html"]))
        for name in ("pdf", "rtf", "xls"):
            text = squeezed(self.texts[name])
            for row in rows:
                for cell in texts(row):
                    self.assertIn(squeezed(cell), text, name)

    def test_a_table_that_is_missing_is_named(self):
        self.assert_fails('Data set "Data", data source "DS1": a table is missing: no such table: Order Details',
                          "DrilldownTwoLevel.rdl", "--data-source", "DS1=SQLITE;Data Source=%s" % NORTHWIND)

    def test_a_drilldown_begins_with_its_companies(self):
        changed = self.folder / "Drilldown.rdl"
        text = (SHARED / "DrilldownTwoLevel.rdl").read_text(encoding="utf-8-sig")
        changed.write_text(text.replace('"Order Details"', "OrderDetails"), encoding="utf-8")
        rows = self.northwind("SELECT CompanyName, ProductName FROM Customers, Orders, OrderDetails od, Products WHERE "
                              "Customers.CustomerID = Orders.CustomerID and Orders.OrderID = od.OrderID and "
                              "od.ProductID = Products.ProductID")
        files = self.export(changed, database=True)
        self.assert_rows(files, [[name] for name in dict.fromkeys(row[0] for row in rows)])
        for product in {row[1] for row in rows}:
            self.assertNotIn(squeezed(product), squeezed(self.texts["pdf"]))


class Inline(SharedReport):
    def test_an_organization_is_counted_and_summed_down_its_tree(self):
        people = {row["EmployeeID"]: row for row in inline_rows("EmployeeOrg.rdl")}
        below = collections.defaultdict(list)
        for row in people.values():
            below[row["ManagerID"] if row["ManagerID"] in people else None].append(row)

        def tree(row, level):
            lines = [line for lower in sorted(below[row["EmployeeID"]], key=lambda each: each["EmployeeName"])
                     for line in tree(lower, level + 1)]
            salaries = int(row["Salary"]) + sum(int(people[line[4]]["Salary"]) for line in lines)
            return [(row["EmployeeName"], level, 1 + len(lines), salaries, row["EmployeeID"])] + lines

        rows = [line for top in below[None] for line in tree(top, 1)]
        self.assertEqual(len(rows), len(people))
        files = self.export("EmployeeOrg.rdl")
        self.assert_rows(files, [[name, str(level), str(count), "$" + format(salary, ",")]
                                 for name, level, count, salary, _ in rows],
                         [[name, str(level), str(count), str(salary)] for name, level, count, salary, _ in rows])

    def test_matrices_sum_by_both_ways_and_in_total(self):
        rows = inline_rows("MatrixExample.rdl")
        total = collections.Counter()
        for row in rows:
            for region in (row["Region"], ""):
                for state in (row["State"], ""):
                    for year in (row["Year"], ""):
                        for quarter in (row["Qtr"], ""):
                            total[region, state, year, quarter] += int(row["Sales"])
        years = list(dict.fromkeys(row["Year"] for row in rows))
        quarters = list(dict.fromkeys(row["Qtr"] for row in rows))
        regions = list(dict.fromkeys(row["Region"] for row in rows))
        first = [["Region\\Year"] + ["%s = %d" % (year, total["", "", year, ""]) for year in years] +
                 ["Column Grand Total"]]
        first += [[region or "Grand Total"] + [str(total[region, "", year, ""]) for year in years + [""]]
                  for region in regions + [""]]
        columns = [(year, quarter) for year in years for quarter in quarters + [""]] + [("", "")]
        second = [(["Total"] if not state else [region, state] if number == 0 else [state]) +
                  [str(total[region, state, *column]) for column in columns]
                  for region in regions
                  for number, state in enumerate(
                      list(dict.fromkeys(row["State"] for row in rows if row["Region"] == region)) + [""])]
        second.append(["Total %d" % total["", "", "", ""]] + [str(total["", "", *column]) for column in columns])
        self.assert_rows(self.export("MatrixExample.rdl"), first + second)

    def test_an_invoice_adds_up(self):
        rows = inline_rows("Invoice.rdl")
        self.assertEqual(len(rows), 10)
        company = [row for row in inline_rows("Invoice.rdl", 1) if row["Name"] == "Contoso Suites"][0]
        files = self.export("Invoice.rdl", "-p", "Company=Contoso Suites")
        total = sum(float(row["Amount"]) for row in rows)
        items = [[row[name] for name in ("Item", "Description", "Quantity", "SalesUnitTxt", "SalesPrice", "Discount")] +
                 [format(float(row["Amount"]), ",.2f")] for row in rows]
        for item in items:
            self.assertIn([" ".join(cell.split()) for cell in item], html_rows(files["html"]))
        for name, text in self.texts.items():
            for item in items:
                for cell in item[:6]:
                    self.assertIn(squeezed(cell), squeezed(text), name)
        self.assert_texts([company["Phone"], company["City"], "Payment terms: " + company["PaymTermDescription"]])
        for name in ("pdf", "html", "rtf"):
            self.assertIn(format(total * 0.04, ",.2f"), self.texts[name])
            self.assertIn(format(total * 1.04, ",.2f"), self.texts[name])

    def test_a_value_that_the_report_does_not_allow(self):
        self.assert_fails('Parameter "Names": "Nobody" is not one of the values that the report allows', "Labels.rdl",
                          "-p", "Names=Nobody")

    def test_labels_stand_in_the_order_of_their_rows(self):
        rows = inline_rows("Labels.rdl")
        self.assertEqual(len(rows), 90)
        files = self.export("Labels.rdl", "-p", "Names=" + rows[0]["FullName"], "-p", "Names=" + rows[5]["FullName"])
        columns = ("FirstName", "MiddleName", "LastName", "AddressLine1", "AddressLine2", "City", "StateProvinceCode",
                   "PostalCode", "Country")
        labels = [squeezed("".join(row[name] for name in columns)) for row in rows]
        for name, text in self.texts.items():
            joined = squeezed(text)
            place = 0
            for label in labels:
                found = joined.find(label, place)
                self.assertGreaterEqual(found, 0, (name, label))
                place = found + len(label)
        self.assertTrue(files)

    def test_a_transcript_writes_its_dates_out(self):
        rows = inline_rows("Transcript.rdl", 1)
        files = self.export("Transcript.rdl")

        def long_date(text):
            date = datetime.datetime.strptime(text, "%m/%d/%Y")
            return date.strftime("%A, %B ") + "%d, %d" % (date.day, date.year)

        self.assert_rows(files, [[row["Number"], row["Description"], long_date(row["Date"])] for row in rows])
        latest = max(rows, key=lambda row: datetime.datetime.strptime(row["Date"], "%m/%d/%Y"))
        self.assert_texts([long_date(latest["Date"]), rows[0]["UserId"], rows[0]["UserName"].upper()])


class FilesOfRows(SharedReport):
    """Reports whose rows stand in a file that is not with them: an error without it, and the rows of ours with one."""

    def with_rows(self, report, data, rows):
        for name in (report, data):
            self.addCleanup(lambda path=self.folder / name: path.unlink(missing_ok=True))
        shutil.copy(SHARED / report, self.folder / report)
        root = xml.etree.ElementTree.Element("Rows")
        for row in rows:
            element = xml.etree.ElementTree.SubElement(root, "Row")
            for name, value in row.items():
                xml.etree.ElementTree.SubElement(element, name).text = str(value)
        xml.etree.ElementTree.ElementTree(root).write(self.folder / data, encoding="utf-8", xml_declaration=True)
        return self.export(self.folder / report)

    def test_a_file_that_is_missing_is_named(self):
        for report, data in (("ChartExampleColumn.rdl", "SalesData.xml"), ("ChartExamplePie.rdl", "SalesData.xml"),
                             ("WorldFacts.rdl", "WorldFacts.xml"), ("TableThreeColumns.rdl", "Contacts.xml")):
            if not (SHARED / data).exists():
                self.assert_fails('Data set "Data": the file "%s" does not exist' % (SHARED / data), report)

    def test_countries_are_counted_by_continent(self):
        rows = [dict(Code=code, Name=name, Continent=continent, Region=continent + " area", Population=people,
                     IndepYear=year, IndependenceYear=year, SurfaceArea=area)
                for code, name, continent, people, year, area in (
                    ("AND", "Andorra", "Europe", 78000, 1278, 468), ("CHN", "China", "Asia", 1277558000, -1523, 9572900),
                    ("ARE", "Emirates", "Asia", 2441000, 1971, 83600), ("GIB", "Gibraltar", "Europe", 25000, 0, 6))]
        self.with_rows("WorldFacts.rdl", "WorldFacts.xml", rows)
        self.assert_texts([row["Name"] for row in rows])
        self.assert_texts(["1523 BC", "1278", "1971", "2 continents.  4 countries.",
                           "Count of countries in Europe = 2", "Count of countries in Asia = 2"])
        for name in ("pdf", "html", "rtf"):
            digits = self.texts[name].replace(",", "")
            self.assertIn(str(sum(row["Population"] for row in rows)), digits)
            self.assertIn(str(sum(row["SurfaceArea"] for row in rows)), digits)

    def test_charts_and_a_matrix_of_sales(self):
        rows = [dict(Category=category, Year=year, Sales=sales)
                for category, year, sales in (("Bikes", 2001, 120), ("Bikes", 2002, 180), ("Helmets", 2001, 35),
                                              ("Helmets", 2002, 41.5), ("Helmets", 2002, 8.5))]
        for report in ("ChartExampleColumn.rdl", "ChartExamplePie.rdl"):
            with self.subTest(report):
                files = self.with_rows(report, "SalesData.xml", rows)
                self.assert_texts(["Bikes", "Helmets", "2001", "2002"])
                self.assertIn("<svg", files["html"].read_text(encoding="utf-8"))
                for value in (120, 180, 35, 50):
                    self.assertIn(str(value), self.texts["xls"])


if __name__ == "__main__":
    unittest.main()
