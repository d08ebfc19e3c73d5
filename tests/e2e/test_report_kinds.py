# SPDX-License-Identifier: GPL-3.0-or-later
"""Kinds of reports in every format: pages, texts, and the places of what depends on the layout."""

import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

from harness import STAGE, report_formats
from report_texts import docx_text, html_text, pdf_pages, rtf_text, squeezed, xls_rows

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "reports"))
from make_reports import write_all  # noqa: E402

# Report: pages of the PDF, texts that are in every format.
KINDS = {
    "balance_sheet": (1, ["Machines", "Equity and debts", "Suppliers"]),
    "calendar_month": (1, ["W18", "Audit", "Payday"]),
    "certificate_landscape": (1, ["Certificate", "batch 4711", "Inspector"]),
    "charts_around_a_centre": (1, ["Around a centre"]),
    "charts_of_a_whole": (1, ["Of a whole"]),
    "charts_of_spans": (1, ["From low to high", "Too small for axes:"]),
    "columns_with_groups": (1, ["Abel", "Hvila", "1972"]),
    "conditional_formats": (1, ["Order 15", "+6", "-4", "open"]),
    "cross_three_levels": (1, ["Region", "1,110", "459"]),
    "dashboard": (1, ["Dashboard", "553", "537", "Below the charts"]),
    "drilldown_hidden_details": (1, ["Fruit", "Roots item 4", "Seeds"]),
    "dunning_2005": (2, ["Reminder", "Customer 2", "2026-04-15", "40 !", "810.00"]),
    "envelope": (1, ["Stamp", "Fox Ltd", "40262 Eastport"]),
    "form_over_background": (1, ["Application for a permit", "17 Mill Lane"]),
    "gantt_by_cells": (1, ["Survey", "Hand over"]),
    "images_three_sizings": (1, ["FitProportional", "Clip", "AutoSize"]),
    "inventory_page_names": (5, ["Store Aalto", "Part 070", "Total Cove", "All stores"]),
    "invoice_two_taxes": (2, ["Invoice 2026-0417", "Article 37", "Tax 19", "To pay"]),
    "keep_together_blocks": (5, ["Customer 5", "Order 54", "Total Order 54", "140"]),
    "labels_three_columns": (2, ["Ann Lee", "43275 Eastport", "Max Bell"]),
    "ledger_running_balance": (4, ["Account 1200", "Voucher 345", "Balance of 1300"]),
    "letter_with_markup": (3, ["Dear Bo Dahl", "ten years", "What is new", "Kind regards"]),
    "long_text_over_pages": (4, ["Sentence 1 of", "Sentence 259 of", "Margin note", "After the text"]),
    "multi_value_parameters": (1, ["Regions: North, East", "553", "537"]),
    "nested_boxes_grow": (2, ["Case 9", "Answer 9", "Below 9", "248"]),
    "org_chart": (1, ["Mia Holt", "Max Bell", "People"]),
    "packing_list_map": (3, ["Go to box 3", "Box 3", "Article 35"]),
    "price_list_pictures": (1, ["Article 12", "42.00"]),
    "price_tags": (1, ["Article 13", "25.87", "NORVALE"]),
    "receipt_endless": (1, ["Corner Shop", "Item 60", "2,013.00", "Thank you!"]),
    "rotated_headings": (1, ["Workshop", "Accounting of projects", "Ed Orr"]),
    "rtl_price_table": (1, ["A-100", "12.50", "35.65"]),
    "sales_map": (1, ["Where we sell", "Below the map"]),
    "sales_sparklines": (1, ["North", "553", "Sum as a bar"]),
    "seating_plan": (1, ["Table 6", "Hal Voss", "Max Bell"]),
    "shipping_labels": (1, ["Parcel 1", "Parcel 4"]),
    "spanning_boxes": (1, ["Sum 127", "September", "After the table"]),
    "spans_over_pages": (4, ["Zone 2", "Route 1b", "Stop 62", "1,953"]),
    "statement_with_subreports": (1, ["Fox Ltd", "Invoice 223", "Signature", "63.00"]),
    "stock_2005": (1, ["Prices of March"]),
    "survey_form": (1, ["point 24?", "What else?"]),
    "tickets": (2, ["Harbour concert", "No 0006", "Di Fox"]),
    "timesheet_groups_foot": (2, ["Bo Dahl", "Week 13", "Signature"]),
    "timetable": (1, ["R2", "Castle", "14 h"]),
    "top_ten_filter": (1, ["Town 30", "11.7 %"]),
    "wide_table_pages": (4, ["Product 40", "2026-06", "4,029"]),
}
PARTS = {"statement_line"}  # shown by others


class ReportKinds(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder_object = tempfile.TemporaryDirectory()
        cls.folder = pathlib.Path(cls.folder_object.name)
        write_all(cls.folder)

    @classmethod
    def tearDownClass(cls):
        cls.folder_object.cleanup()

    def export(self, name, form):
        out = self.folder / f"{name}.{form}"
        if not out.exists():
            # Pictures at half of their usual size, as nothing is read from them.
            options = ["--dpi", "48"] if form == "png" else []
            done = subprocess.run([STAGE / "oxc-report", "export", self.folder / f"{name}.rdl", "-f", form, "-o", out, *options],
                                  capture_output=True, text=True)
            self.assertEqual((done.returncode, done.stderr), (0, ""), f"{name} {form}")
        return out

    def words(self, name):
        """The words of each page of the PDF as (text, left, top, right, bottom), in points."""
        boxes = subprocess.run(["pdftotext", "-bbox", self.export(name, "pdf"), "-"], check=True, capture_output=True).stdout.decode()
        return [[(text, *map(float, place)) for *place, text in re.findall(
            r'<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">(.*?)</word>', page)]
            for page in boxes.split("<page ")[1:]]

    def word(self, name, text, page=0, which=0):
        return [word for word in self.words(name)[page] if word[0] == text][which]

    def colours(self, name, x):
        """The colours of the first page of the PDF from top to bottom, x points from the left: a pixel for each point."""
        picture = subprocess.run(["pdftoppm", "-r", "72", "-l", "1", self.export(name, "pdf")], check=True, capture_output=True).stdout
        _, size, _, pixels = picture.split(b"\n", 3)
        width, height = map(int, size.split())
        return [tuple(pixels[3 * (width * y + x):][:3]) for y in range(height)]

    def test_every_report_is_listed(self):
        made = {file.stem for file in self.folder.glob("*.rdl")}
        self.assertEqual(made, set(KINDS) | PARTS)

    def test_every_format_has_the_texts(self):
        def workbook_text(path):
            """With the numbers as the report shows them, which a workbook has without their format."""
            text = " ".join(" ".join(row) for row in xls_rows(path))
            numbers = [float(number) for number in re.findall(r"-?\d+(?:\.\d+)?", text)]
            return text + " ".join(f" {number:,.2f} {number:,.0f} {number:+.0f} {100 * number:.1f} %" for number in numbers)

        readers = {"pdf": lambda path: "".join(pdf_pages(path)), "html": html_text, "rtf": rtf_text, "doc": rtf_text, "docx": docx_text,
                   "xls": workbook_text}
        for name, (pages, texts) in KINDS.items():
            for form in report_formats():
                with self.subTest(report=name, format=form):
                    path = self.export(name, form)
                    if form == "pdf":
                        self.assertEqual(len(pdf_pages(path)), pages)
                    if form not in readers:
                        continue  # it came out; other tests read these formats
                    found = squeezed(readers[form](path))
                    self.assertEqual([text for text in texts if squeezed(text) not in found], [])

    def test_bar_codes_are_read_by_a_scanner(self):
        page = self.folder / "labels.png"
        for form in ("pdf", "png"):
            if form == "pdf":
                subprocess.run(["pdftoppm", "-r", "200", "-png", "-singlefile", self.export("shipping_labels", "pdf"),
                                page.with_suffix("")], check=True)
            else:
                subprocess.run([STAGE / "oxc-report", "export", self.folder / "shipping_labels.rdl", "-f", "png", "--dpi", "200",
                                "-o", page], check=True)
            with self.subTest(form):
                read = subprocess.run(["zbarimg", "-q", page], check=True, capture_output=True, text=True).stdout.split("\n")
                wanted = [f"{kind}:{value}" for n in range(1, 5) for kind, value in (
                    ("EAN-13", ("4006381333917", "4006381333924", "4006381333931", "4006381333948")[n - 1]),
                    ("CODE-128", f"Parcel {n}"), ("QR-Code", f"https://example.com/parcels/{n}"))]
                self.assertEqual(sorted(filter(None, read)), sorted(wanted))

    def test_totals_of_the_cross_table_are_at_the_end_of_each_direction(self):
        words = self.words("cross_three_levels")[0]
        last = max(words, key=lambda word: (word[2], word[3]) if word[0] != "Page" and word[2] < 500 else (0, 0))
        self.assertEqual(last[0], "1,110")

    def test_a_map_has_its_regions_legends_and_scales(self):
        words = [word[0] for word in self.words("sales_map")[0]]
        for text in ("North", "South", "East", "Lake", "River", "Aalto", "Cove", "448", "560", "Amount", "200", "km", "5°E"):
            self.assertIn(text, words)
        east = self.word("sales_map", "East")
        column = self.colours("sales_map", int(east[1]) - 8)
        self.assertEqual(column[int(east[2])], (0xA0, 0x20, 0x10))  # the most, so the last colour

    def test_groups_have_pages_names_and_numbers_of_their_own(self):
        feet = [page.strip().split("\n")[-1] for page in pdf_pages(self.export("inventory_page_names", "pdf"))]
        self.assertEqual(feet, ["Page 1 of 2 Aalto", "Page 2 of 2 Aalto", "Page 1 of 1 Bruk", "Page 1 of 2 Cove", "Page 2 of 2 Cove"])

    def test_balances_run_in_the_account_and_over_all(self):
        rows = [line for page in pdf_pages(self.export("ledger_running_balance", "pdf")) for line in page.split("\n")]
        self.assertIn("02.01.2026 Voucher 201 37,25 37,25 1.932,25", rows)
        self.assertEqual(sum(line == "Account 1200" for line in rows), 2)  # again on the page on which it continues

    def test_columns_repeat_the_heading_of_the_group_that_continues(self):
        initials = [(word[0], word[1]) for word in self.words("columns_with_groups")[0] if len(word[0]) == 1 and word[0] in "CF"]
        self.assertEqual([initial for initial, _ in initials], ["C", "F", "C", "F"])
        self.assertEqual(len({left for _, left in initials}), 3)

    def test_row_headers_are_on_each_page_of_a_wide_table(self):
        self.assertEqual({round(self.word("wide_table_pages", "Product", page)[1]) for page in range(4)}, {59})

    def test_levels_are_indented(self):
        lefts = [self.word("org_chart", name)[1] for name in ("Mia", "Tom", "Leo", "Jon", "Max")]
        self.assertEqual([round(b - a) for a, b in zip(lefts, lefts[1:])], [15, 15, 15, 15])

    def test_the_first_column_of_a_table_from_right_to_left_is_at_the_right(self):
        self.assertLess(self.word("rtl_price_table", "12.50")[3], self.word("rtl_price_table", "A-100")[1])

    def test_a_turned_name_is_one_line_beside_its_rows(self):
        _, left, top, right, bottom = self.word("rotated_headings", "Workshop")
        self.assertGreater(bottom - top, 3 * (right - left))

    def test_rectangles_of_a_row_are_equally_high(self):
        # The last table has one guest, its neighbour has five.
        ends = []
        for table in (4, 5):
            colours = self.colours("seating_plan", round(self.word("seating_plan", "Table", which=table)[3]) + 60)
            ends.append(max(y for y, colour in enumerate(colours) if colour != (255, 255, 255)))
        self.assertEqual(ends[0], ends[1])

    def test_days_of_the_weekend_are_coloured(self):
        for day, colour in (("25", (255, 255, 255)), ("30", (244, 236, 236))):
            _, left, top, _, bottom = self.word("calendar_month", day)
            self.assertEqual(self.colours("calendar_month", int(left) - 20)[round(top + bottom) // 2], colour)

    def test_a_rectangle_beside_rows_does_not_part_them(self):
        tops = [self.word("spanning_boxes", month)[2] for month in ("January", "February", "March")]
        self.assertAlmostEqual(tops[1] - tops[0], tops[2] - tops[1], delta=0.1)

    def test_orders_are_not_parted(self):
        for page in pdf_pages(self.export("keep_together_blocks", "pdf")):
            orders = re.findall(r"^Order (\d+)", page, re.MULTILINE)
            self.assertEqual(orders, re.findall(r"Total Order (\d+)", page))

    def test_names_stand_around_a_radar(self):
        places = {text: (left, top) for text, left, top, right, _ in reversed(self.words("charts_around_a_centre")[0])
                  if right < 290 and top < 260}
        around = ("Service", "Price", "Speed", "Comfort", "Range")
        self.assertEqual(sorted(around, key=places.get), list(around))
        self.assertEqual(sorted(("Speed", "Range", "Comfort"), key=lambda name: places[name][1]), ["Speed", "Range", "Comfort"])
        for pair in (("Service", "Range"), ("Price", "Comfort")):
            self.assertAlmostEqual(places[pair[0]][1], places[pair[1]][1], delta=0.1)

    def test_tiles_have_the_colour_of_their_outermost_group(self):
        for name, colour in (("Pears", (65, 140, 240)), ("Beets", (65, 140, 240)), ("Carrots", (252, 180, 65)), ("Plums", (252, 180, 65))):
            _, left, _, _, bottom = self.word("charts_of_a_whole", name)
            self.assertEqual(self.colours("charts_of_a_whole", round(left) + 10)[round(bottom) + 10], colour, name)

    def test_a_chart_too_small_for_its_title_has_its_columns(self):
        self.assertNotIn("Hidden", [word[0] for word in self.words("charts_of_spans")[0]])
        _, _, top, right, _ = self.word("charts_of_spans", "axes:")
        column = self.colours("charts_of_spans", round(right) + 50)
        self.assertIn((65, 140, 240), column[round(top) - 5:round(top) + 25])

    def test_pictures_have_the_sizes_of_their_sizings(self):
        listed = subprocess.run(["pdfimages", "-list", self.export("images_three_sizings", "pdf")], check=True, capture_output=True, text=True)
        rates = [line.split()[12] for line in listed.stdout.splitlines()[2:]]
        self.assertEqual(rates, ["25", "25", "96", "96"])


if __name__ == "__main__":
    unittest.main()
