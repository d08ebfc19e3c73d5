# SPDX-License-Identifier: GPL-3.0-or-later
"""One report in which nothing is like its mirror image, in every format: place, size, colours, borders, letters and links of each
item are those that the report file says."""

import base64
import csv
import dataclasses
import pathlib
import re
import subprocess
import tempfile
import unittest
import zipfile

import look_readers
import look_report
import look_sheets
from harness import STAGE, report_formats
from look_pixels import DPI, SHARES, Pixels, near, offsets, over, rgb
from look_report import ABOVE, BELOW, BOXES, COLOURS, GLASS, HALF, LINK, MARGINS, NUMBER_COLUMN, NUMBERS, PICTURE, RULES, SIDES, Line
from look_readers import Seen

WHITE = (255, 255, 255)
LOOKS = [*BOXES, *look_report.cells(), ABOVE]
TEXT_DOCUMENTS = ("rtf", "doc", "docx")
SHEETS = ("xls", "xlsx")
READERS = {"html": look_readers.html_boxes, "rtf": look_readers.rtf_boxes, "doc": look_readers.rtf_boxes, "docx": look_readers.docx_boxes,
           "xls": look_sheets.xls_boxes, "xlsx": look_sheets.xlsx_boxes}
# Of places, in points. Columns of a sheet are whole parts of a digit, or whole pixels; in WordprocessingML a paragraph of a point
# is between two tables.
TOLERANCE = {"xls": 0.25, "xlsx": 1.6, "docx": 1.1}

# What a format cannot show, and what stands for it.
CANNOT = {
    ("inset", SHEETS): "a cell has no padding, only steps of indentation at one side",
    ("first", SHEETS): "a cell has no paragraphs",
    ("line", SHEETS): "a cell has no paragraphs",
    ("alpha", TEXT_DOCUMENTS + SHEETS): "colours have no alpha: they are those on white paper",
    ("width", SHEETS): "borders have four widths, which go with their styles",
    ("place of a picture", ("xls",)): "the reader of workbooks knows no pictures; the bytes are there",
    ("overlap", TEXT_DOCUMENTS + SHEETS): "cells do not overlap: the upper item is whole, the lower one gives way",
}


def cannot(what, form):
    return any(form in forms for name, forms in CANNOT if name == what)


def hex_of(colour):
    return "#%02x%02x%02x" % colour


def colour_in(form, colour):
    if not colour:
        return ""
    if cannot("alpha", form):
        return hex_of(over(colour, WHITE))
    return "#" + colour[3:] + colour[1:3] if len(colour) == 9 else colour


def line_in(form, line):
    if line is None or line.width == 0:
        return None
    if not cannot("width", form):
        return dataclasses.replace(line, colour=colour_in(form, line.colour))
    wide = line.width >= 1.5
    style = {"Solid": "medium" if wide else "thin", "Dashed": "mediumDashed" if wide else "dashed", "Double": "double",
             "Dotted": "dotted"}[line.style]
    return Line(0, style, colour_in(form, line.colour))


def aligned_in_a_sheet(look):
    """A cell with turned text aligns as its reader sees it."""
    if not look.turn:
        return look.align, look.upright
    along = {"Left": 0, "Center": 1, "Right": 2}[look.align]
    across = {"Top": 0, "Middle": 1, "Bottom": 2}[look.upright]
    if look.turn == 90:
        return ("Right", "Center", "Left")[across], ("Top", "Middle", "Bottom")[along]
    return ("Left", "Center", "Right")[across], ("Bottom", "Middle", "Top")[along]


def wanted(look, form):
    """What a reader of the format sees of a box."""
    left, right, hanging = look.indents
    before, after, height = look.spaces
    begin_moves = max(hanging, 0)  # the lines after the first
    padding = look.padding
    inset = [padding[0] + left, padding[1] + before, padding[2] + right, padding[3] + after]
    inset[2 if look.from_right else 0] += begin_moves
    seen = Seen(place=look.place, inset=tuple(inset), first=-hanging, borders=tuple(line_in(form, line) for line in look.borders),
                fill=colour_in(form, look.fill), font=(look.family, look.size, look.bold, look.italic, look.line),
                colour=colour_in(form, look.colour), align=look.align, upright=look.upright, turn=look.turn, from_right=look.from_right,
                line=height, link=look.link)
    if form in SHEETS:
        seen.align, seen.upright = aligned_in_a_sheet(look)
    return seen


class PlaceAndLook(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.keeper = tempfile.TemporaryDirectory(prefix="oxc-look-")
        cls.folder = pathlib.Path(cls.keeper.name)
        source = cls.folder / "look.rdl"
        source.write_text(look_report.report(), encoding="utf-8")
        for form in report_formats():
            more = ["--dpi", str(DPI)] if form == "png" else []
            done = subprocess.run([STAGE / "oxc-report", "export", source, "-f", form, *more, "-o", cls.folder / f"look.{form}"],
                                  capture_output=True, text=True)
            assert (done.returncode, done.stderr) == (0, ""), done.stderr
        cls.pages = {"pdf": Pixels.of_pdf(cls.folder / "look.pdf"), "png": Pixels.of_png(cls.folder / "look.png")}
        cls.boxes = {form: read(cls.folder / f"look.{form}") for form, read in READERS.items()}

    @classmethod
    def tearDownClass(cls):
        cls.keeper.cleanup()

    def test_every_format_is_read(self):
        self.assertEqual(set(report_formats()), {*READERS, *self.pages, "csv"})

    def test_boxes_look_as_the_report_says(self):
        for form, boxes in self.boxes.items():
            for look in LOOKS + ([] if form in SHEETS else look_report.numbers()):
                want, seen = wanted(look, form), boxes[look.text]
                for field in dataclasses.fields(Seen):
                    if cannot(field.name, form) or field.name == "layer":
                        continue
                    with self.subTest(format=form, box=look.text, field=field.name):
                        by = TOLERANCE.get(form, 0.03) if field.name == "place" else 0.03
                        self.alike(getattr(want, field.name), getattr(seen, field.name), by)

    def alike(self, want, seen, by):
        if isinstance(want, tuple) and want and isinstance(want[0], (int, float)):
            self.assertEqual(len(want), len(seen))
            if any(abs(a - b) > by for a, b in zip(want, seen)):
                self.assertEqual(want, seen)
        else:
            self.assertEqual(want, seen)

    def test_pages_have_the_borders_of_each_side(self):
        for form, page in self.pages.items():
            for look in LOOKS:
                for side, line in zip(SIDES, look.borders):
                    if line is None:
                        continue
                    with self.subTest(format=form, box=look.text, side=side):
                        found, share = page.side(look.place, side, line)
                        self.assertEqual(found, offsets(line))
                        self.assertAlmostEqual(share, SHARES[line.style], delta=0.06)

    def test_pages_have_the_fills(self):
        for form, page in self.pages.items():
            for look in LOOKS:
                x, y, width, height = look.place
                with self.subTest(format=form, box=look.text):
                    corner = page.at(x + width - 4.5, y + height - 6.5)
                    self.same_colour(corner, over(look.fill, WHITE) if look.fill else WHITE)

    def test_letters_begin_where_the_padding_and_indents_end(self):
        for form, page in self.pages.items():
            for look in LOOKS:
                with self.subTest(format=form, box=look.text):
                    self.check_ink(page, look)

    def check_ink(self, page, look):
        ground = over(look.fill, WHITE) if look.fill else WHITE
        x, y, width, height = look.place
        inner = (x + 4, y + 4, width - 8, height - 8) if any(look.borders) else look.place
        ink = page.ink(inner, over(look.colour, ground), 12)
        self.assertIsNotNone(ink)
        room = (ink[0] - x, ink[1] - y, x + width - ink[2], y + height - ink[3])
        inset = wanted(look, "pdf").inset
        # Which sides of the box the first line begins at and is aligned to.
        start = {"Left": 0, "Right": 2, "Justify": 0}.get(look.align)
        first = {"Top": 1, "Bottom": 3}.get(look.upright)
        turned = {0: (0, 1, 2, 3), 90: (1, 2, 3, 0), 270: (3, 0, 1, 2)}[look.turn]
        moves = min(-look.indents[2], 0)  # of the line that begins nearest to the edge
        if start is not None:
            self.within(room[turned[start]] - inset[turned[start]] - moves, -0.3, 1.4)
        if first is not None:
            self.within(room[turned[first]] - inset[turned[first]], 0.2, 0.62 * max(look.size, look.spaces[2] * 0.8))

    def within(self, value, least, most):
        self.assertTrue(least <= value <= most, f"{value} is not from {least} to {most}")

    def test_a_picture_is_neither_turned_nor_mirrored(self):
        left, top, width, height = PICTURE
        for form, page in self.pages.items():
            for i, colour in enumerate(COLOURS):
                x, y = left + (i % 2 + 0.5) * width / 2, top + (i // 2 + 0.5) * height / 3
                covered = x > GLASS[0] and y > GLASS[1]
                with self.subTest(format=form, part=i):
                    self.same_colour(page.at(x, y), over(HALF, colour) if covered else colour)

    def test_a_picture_is_stored_as_it_is_with_its_size(self):
        bytes_, (_, _, width, height) = base64.b64decode(look_report.PIXELS), PICTURE
        page = (self.folder / "look.html").read_text(encoding="utf-8")
        style = re.search(r'<img class="(\w+)" src="data:image/png;base64,' + re.escape(look_report.PIXELS), page).group(1)
        self.assertRegex(page, rf"\.{style}\{{display:block;width:{width}pt;height:{height}pt;[^}}]*object-fit:fill;\}}")
        for form in ("rtf", "doc"):
            source = (self.folder / f"look.{form}").read_text(encoding="ascii")
            twips = rf"\\picw2\\pich3\\picwgoal{width * 20}\\pichgoal{height * 20}\s"
            self.assertEqual(bytes.fromhex(re.search(twips + r"([0-9a-f\s]+)\}", source).group(1)), bytes_)
        size = f'<a:ext cx="{width * 12700}" cy="{height * 12700}"/>'  # EMU
        for form, image, drawing in (("docx", "word/media/image1.png", "word/document.xml"),
                                     ("xlsx", "xl/media/image1.png", "xl/drawings/drawing1.xml")):
            with zipfile.ZipFile(self.folder / f"look.{form}") as archive:
                self.assertEqual(archive.read(image), bytes_)
                self.assertEqual(archive.read(drawing).decode().count(size), 1)
        self.assertIn(bytes_, (self.folder / "look.xls").read_bytes())

    def same_colour(self, seen, want):
        """But for what rounding does where colours are mixed."""
        self.assertTrue(near(seen, want, 2), f"{hex_of(seen)} is not {hex_of(want)}")

    def test_half_of_what_is_below_is_seen_through_a_box(self):
        x, y, width, height = GLASS
        for form, page in self.pages.items():
            with self.subTest(format=form):
                self.same_colour(page.at(x + width - 5, y + height - 5), over(HALF, WHITE))

    def test_the_higher_item_is_above(self):
        for form, page in self.pages.items():
            with self.subTest(format=form):
                self.assertEqual(page.at(155, 475), rgb(ABOVE.fill))
                self.assertEqual(page.at(155, 485), rgb(BELOW.fill))

    def test_the_higher_item_is_above_in_a_browser(self):
        boxes = self.boxes["html"]
        self.assertGreater(boxes["Above"].layer, boxes["Below"].layer)
        self.assertEqual(boxes["Below"].place, BELOW.place)

    def test_what_gives_way_keeps_its_other_edges(self):
        """A cell of a text document or a sheet begins where the upper item ends."""
        left = ABOVE.place[0] + ABOVE.place[2]
        x, y, width, height = BELOW.place
        for form in TEXT_DOCUMENTS + SHEETS:
            with self.subTest(format=form):
                self.alike((left, y, x + width - left, height), self.boxes[form]["Below"].place, TOLERANCE.get(form, 0.03))

    def test_a_line_without_width_is_not_drawn(self):
        for form, page in self.pages.items():
            for left, top, width, line in RULES:
                with self.subTest(format=form, width=line.width):
                    found, share = page.side((left, top, width, 0), "top", line)
                    self.assertEqual(found, offsets(line))
                    self.assertAlmostEqual(share, SHARES[line.style] if found else 0, delta=0.06)

    def test_a_link_is_as_large_as_its_box(self):
        unpacked = subprocess.run(["qpdf", "--qdf", "--object-streams=disable", self.folder / "look.pdf", "-"], check=True,
                                  capture_output=True).stdout.decode("latin-1")
        found = set()
        for annotation in re.findall(r"<<(?:(?!endobj).)*?/Subtype /Link.*?endobj", unpacked, re.DOTALL):
            corners = re.search(r"/Rect \[\s*([-\d. \n]+?)\s*\]", annotation).group(1).split()
            address = re.search(r"/URI \((.*?)\)", annotation).group(1)
            found.add((*(round(float(each), 1) for each in corners), address))
        want = set()
        for look in LOOKS:
            if look.link:
                x, y, width, height = look.place
                left, bottom = MARGINS[0] + x, look_report.PAGE[1] - MARGINS[1] - y - height
                want.add((left, bottom, left + width, bottom + height, LINK))
        self.assertEqual(found, want)

    def test_numbers_are_whole_in_workbooks(self):
        for form in SHEETS:
            column = sorted((seen.place[1], seen.value) for seen in self.boxes[form].values()
                            if abs(seen.place[0] - NUMBER_COLUMN[0]) < 2 and seen.place[1] > NUMBER_COLUMN[1] - 2)
            with self.subTest(format=form):
                self.assertEqual([value for _, value in column], [value for _, _, value in NUMBERS])

    def test_numbers_are_texts_elsewhere(self):
        texts = [text for _, text, _ in NUMBERS]
        with open(self.folder / "look.csv", encoding="utf-8-sig", newline="") as file:
            self.assertEqual(list(csv.reader(file))[1][:len(texts)], texts)
        shown = subprocess.run(["pdftotext", "-raw", self.folder / "look.pdf", "-"], check=True, capture_output=True).stdout.decode()
        for form in ("html", *TEXT_DOCUMENTS):
            with self.subTest(format=form):
                self.assertEqual([text for text in texts if text not in self.boxes[form]], [])
        self.assertEqual([text for text in texts if text not in shown.splitlines()], [])


if __name__ == "__main__":
    unittest.main()
