# SPDX-License-Identifier: GPL-3.0-or-later
"""What oxc-report writes, read by other people's programs: they take it without a complaint and see the same."""

import collections
import csv
import pathlib
import re
import shutil
import sqlite3
import subprocess
import tempfile
import unicodedata
import unittest

import html5lib
import xlrd

from harness import STAGE, report_formats

SAMPLES = ("invoice", "order_list", "sales_by_region", "sales_charts", "summary", "targets")


def run(*words):
    return subprocess.run([str(word) for word in words], capture_output=True, text=True)


def words_of(pdf):
    text = unicodedata.normalize("NFKC", run("pdftotext", "-layout", pdf, "-").stdout)
    return collections.Counter(text.split())


def differences(found, wanted):
    """The first few keys whose values differ: unittest takes hours to set tables of thousands of lines side by side."""
    keys = [key for key in sorted(found.keys() | wanted.keys()) if found.get(key) != wanted.get(key)]
    return {key: (found.get(key), wanted.get(key)) for key in keys[:5]}


class Readers(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.keeper = tempfile.TemporaryDirectory(prefix="oxc-readers-")
        cls.folder = pathlib.Path(cls.keeper.name)
        cls.trees = {}
        for sample in SAMPLES:
            for format in report_formats():
                done = run(STAGE / "oxc-report", "export", STAGE / "samples" / (sample + ".rpt"), "-f", format, "-o",
                           cls.folder / (sample + "." + format))
                assert done.returncode == 0, done.stderr

    @classmethod
    def tearDownClass(cls):
        cls.keeper.cleanup()

    def each(self, format, check):
        for sample in SAMPLES:
            with self.subTest(sample):
                check(self.folder / (sample + "." + format))

    def test_pdf_is_sound_and_has_its_fonts_in_it(self):
        def check(pdf):
            checked = run("qpdf", "--check", pdf)
            self.assertEqual(checked.returncode, 0, checked.stdout + checked.stderr)
            self.assertNotIn("WARNING", checked.stdout + checked.stderr)
            fonts = run("pdffonts", pdf).stdout.splitlines()[2:]
            self.assertTrue(fonts)
            for font in fonts:
                self.assertRegex(font, r"^[A-Z]{6}\+.* yes yes yes ")
        self.each("pdf", check)

    def test_pdf_is_titled(self):
        self.each("pdf", lambda pdf: self.assertRegex(run("pdfinfo", pdf).stdout, r"Title: +\S"))

    def test_html_is_valid(self):
        def check(page):
            checked = run("tidy", "-quiet", "-errors", "--drop-empty-elements", "no", page)
            self.assertEqual((checked.returncode, checked.stderr), (0, ""))
            parser, _ = self.parsed(page)
            self.assertEqual(parser.errors, [])
        self.each("html", check)

    @classmethod
    def parsed(cls, page):
        """The parser and the tree of a page, which is read once."""
        if page not in cls.trees:
            parser = html5lib.HTMLParser(namespaceHTMLElements=False)
            cls.trees[page] = (parser, parser.parse(page.read_bytes()))
        return cls.trees[page]

    def test_html_is_one_file_that_runs_nothing(self):
        def check(page):
            _, tree = self.parsed(page)
            self.assertTrue(tree.get("lang"))
            self.assertTrue(tree.findtext("head/title"))
            self.assertEqual([*tree.iter("script"), *tree.iter("link"), *tree.iter("iframe")], [])
            for element in tree.iter():
                self.assertEqual([name for name in element.attrib if str(name).startswith("on")], [])
                if element.tag == "img":
                    self.assertTrue(element.get("src").startswith("data:image/"))
                    self.assertIsNotNone(element.get("alt"))
        self.each("html", check)

    def test_html_tables_tell_their_headings(self):
        _, tree = self.parsed(self.folder / "order_list.html")
        headings = ["".join(cell.itertext()).strip() for cell in tree.iter("th") if cell.get("scope") == "col"]
        self.assertEqual(headings, ["Order", "Date", "Customer", "City, country", "Lines", "Total EUR"])

    def test_a_word_processor_reads_rtf_as_the_pdf_says(self):
        self.check_text_document("rtf")

    def test_a_word_processor_reads_docx_as_the_pdf_says(self):
        self.check_text_document("docx")

    def converted(self, format):
        """The folder of the PDFs that a word processor makes of a format; one start of it for both formats."""
        if not (self.folder / "converted").exists():
            files = []
            for each in ("rtf", "docx"):
                for sample in SAMPLES:
                    # Both become a PDF of their own name.
                    files.append(shutil.copy(self.folder / (sample + "." + each),
                                             self.folder / (sample + "-" + each + "." + each)))
            done = run("soffice", "--headless", "-env:UserInstallation=file://" + str(self.folder / "profile"),
                       "--convert-to", "pdf", "--outdir", self.folder / "converted", *files)
            self.assertEqual(done.returncode, 0, done.stderr)
        return {sample: self.folder / "converted" / (sample + "-" + format + ".pdf") for sample in SAMPLES}

    def check_text_document(self, format):
        read = self.converted(format)
        for sample in ("invoice", "sales_by_region", "summary"):
            with self.subTest(sample):
                self.assertEqual(differences(words_of(read[sample]), words_of(self.folder / (sample + ".pdf"))), {})
        # Pages break elsewhere, and so the texts of their margins and headings are not as many.
        amounts = [collections.Counter({word: count for word, count in words_of(pdf).items()
                                        if re.fullmatch(r"[\d,]+\.\d\d", word)})
                   for pdf in (read["order_list"], self.folder / "order_list.pdf")]
        self.assertGreater(len(amounts[0]), 1000)
        self.assertEqual(differences(*amounts), {})

    @staticmethod
    def rounded(cell):
        """The newer workbook has 16 digits of a number, the older one its bits."""
        try:
            return f"{float(cell):.14g}"
        except ValueError:
            return cell

    def test_a_spreadsheet_reads_both_workbooks_alike(self):
        def cells(workbook):
            read = self.folder / (workbook.name + ".csv")
            # Numbers with a point, whatever the region of the test.
            done = run("env", "LC_ALL=C.UTF-8", "ssconvert", "--export-type=Gnumeric_stf:stf_csv", workbook, read)
            self.assertEqual(done.returncode, 0, done.stderr)
            # Empty rows and columns at the edges are or are not part of what it takes for the sheet.
            rows = [[self.rounded(cell) for cell in row if cell] for row in csv.reader(read.read_text().splitlines())]
            return [tuple(row) for row in rows if row]
        for sample in SAMPLES:
            with self.subTest(sample):
                older, newer = (cells(self.folder / (sample + extension)) for extension in (".xls", ".xlsx"))
                self.assertEqual(differences(dict(enumerate(newer)), dict(enumerate(older))), {})

    def test_png_is_as_large_as_the_page(self):
        def check(picture):
            size = run("identify", "-format", "%w x %h", picture).stdout
            points = re.search(r"Page size: +([\d.]+) x ([\d.]+)", run("pdfinfo", picture.with_suffix(".pdf")).stdout)
            self.assertEqual(size, " x ".join(str(round(float(side) / 72 * 96)) for side in points.groups()))
        self.each("png", check)

    def test_csv_has_the_orders(self):
        with open(self.folder / "order_list.csv", encoding="utf-8-sig", newline="") as file:
            rows = list(csv.DictReader(file))
        with sqlite3.connect(STAGE / "samples" / "sales.db") as database:
            wanted = {str(key): str(lines) for key, lines in database.execute(
                "select order_id, count(*) from order_lines group by order_id")}
        self.assertEqual(differences({row["Cell1"]: row["Cell5"] for row in rows}, wanted), {})

    def test_workbook_has_the_orders_as_numbers_and_dates(self):
        book = xlrd.open_workbook(str(self.folder / "order_list.xls"), formatting_info=True)
        orders = {}
        for sheet in book.sheets():
            for row in range(sheet.nrows):
                cells = [cell for cell in sheet.row(row) if cell.ctype not in (xlrd.XL_CELL_EMPTY, xlrd.XL_CELL_BLANK)]
                if len(cells) == 6 and cells[0].ctype == xlrd.XL_CELL_NUMBER:
                    self.assertEqual(cells[1].ctype, xlrd.XL_CELL_DATE)
                    orders[int(cells[0].value)] = (xlrd.xldate_as_datetime(cells[1].value, book.datemode).date(),
                                                   cells[4].value)
        database = sqlite3.connect(STAGE / "samples" / "sales.db")
        wanted = {key: (date[:10], lines) for key, date, lines in database.execute(
            "select order_id, order_date, count(*) from orders join order_lines using (order_id) group by order_id")}
        self.assertEqual(differences({key: (str(date), lines) for key, (date, lines) in orders.items()}, wanted), {})


if __name__ == "__main__":
    unittest.main()
