# SPDX-License-Identifier: GPL-3.0-or-later
"""What workbooks say of the text boxes of a report, as look_readers does of other formats. Borders are codes in the older one and
names in the newer one."""

import dataclasses
import re
import xml.etree.ElementTree as ET
import zipfile

import xlrd

from look_readers import R, Seen
from look_report import SIDES, Line

LINES = ("none", "thin", "medium", "dashed", "dotted", "thick", "double", "hair", "mediumDashed")
ACROSS = ("General", "Left", "Center", "Right", "Fill", "Justify")
UPRIGHT = ("Top", "Middle", "Bottom")


@dataclasses.dataclass
class SheetCell(Seen):
    indent: int = 0  # steps
    value: object = None


def sheet_place(range_, widths, heights):
    row, end_row, column, end_column = range_
    return (sum(widths[:column]), sum(heights[:row]), sum(widths[column:end_column]), sum(heights[row:end_row]))


def xls_boxes(path):
    book = xlrd.open_workbook(str(path), formatting_info=True)
    sheet = book.sheet_by_index(0)
    # A width is in 1/256 of a digit of the default font, seven pixels of 3/4 point, without five pixels between columns.
    widths = [sheet.colinfo_map[i].width / 256 * 7 * 0.75 if i in sheet.colinfo_map else 48 for i in range(sheet.ncols)]
    heights = [sheet.rowinfo_map[i].height / 20 if i in sheet.rowinfo_map else sheet.default_row_height / 20 for i in range(sheet.nrows)]
    merged = {(row, column): (row, end_row, column, end_column) for row, end_row, column, end_column in sheet.merged_cells}
    links = {(link.frowx, link.fcolx): link.url_or_path for link in sheet.hyperlink_list}

    def colour(index):
        rgb = book.colour_map.get(index)
        return "#%02x%02x%02x" % rgb if rgb else ""

    found = {}
    for row in range(sheet.nrows):
        for column in range(sheet.ncols):
            cell = sheet.cell(row, column)
            if cell.ctype in (xlrd.XL_CELL_EMPTY, xlrd.XL_CELL_BLANK):
                continue
            xf = book.xf_list[cell.xf_index]
            range_ = merged.get((row, column), (row, row + 1, column, column + 1))
            seen = SheetCell(place=sheet_place(range_, widths, heights), value=cell.value)
            corners = [book.xf_list[sheet.cell(y, x).xf_index].border for y, x in ((row, column), (range_[1] - 1, range_[3] - 1))]
            seen.borders = tuple(
                Line(0, LINES[getattr(border, side + "_line_style")], colour(getattr(border, side + "_colour_index")))
                if getattr(border, side + "_line_style") else None
                for side, border in zip(SIDES, (corners[0], corners[0], corners[1], corners[1])))
            seen.fill = colour(xf.background.pattern_colour_index) if xf.background.fill_pattern else ""
            font = book.font_list[xf.font_index]
            seen.font = (font.name, font.height / 20, font.weight >= 600, bool(font.italic),
                         "Underline" if font.underline_type else "LineThrough" if font.struck_out else "None")
            seen.colour = colour(font.colour_index)
            seen.align, seen.upright = ACROSS[xf.alignment.hor_align], UPRIGHT[xf.alignment.vert_align]
            seen.turn = {0: 0, 90: 270, 180: 90}[xf.alignment.rotation]
            seen.from_right = xf.alignment.text_direction == 2
            seen.indent = xf.alignment.indent_level
            seen.link = links.get((row, column), "")
            found[str(cell.value)] = seen
    return found


S = "{http://schemas.openxmlformats.org/spreadsheetml/2006/main}"


class _Xlsx:
    def __init__(self, path):
        with zipfile.ZipFile(path) as archive:
            self.sheet = ET.fromstring(archive.read("xl/worksheets/sheet1.xml"))
            self.styles = ET.fromstring(archive.read("xl/styles.xml"))
            names = archive.namelist()
            strings = ET.fromstring(archive.read("xl/sharedStrings.xml")) if "xl/sharedStrings.xml" in names else []
            relations = "xl/worksheets/_rels/sheet1.xml.rels"
            self.links = {relation.get("Id"): relation.get("Target") for relation in ET.fromstring(archive.read(relations))
                          } if relations in names else {}
        self.strings = ["".join(part.text or "" for part in entry.iter(S + "t")) for entry in strings]
        self.formats = list(self.styles.find(S + "cellXfs"))
        self.fonts, self.fills, self.borders = (list(self.styles.find(S + name)) for name in ("fonts", "fills", "borders"))

    @staticmethod
    def corner(name):
        letters, number = re.fullmatch(r"([A-Z]+)(\d+)", name).groups()
        column = 0
        for letter in letters:
            column = column * 26 + ord(letter) - 64
        return int(number) - 1, column - 1

    @staticmethod
    def colour(element):
        return "#" + element.get("rgb")[2:].lower() if element is not None and element.get("rgb") else "#000000"

    def read(self):
        widths = {}
        for column in self.sheet.iter(S + "col"):
            for i in range(int(column.get("min")) - 1, int(column.get("max"))):
                # As in the older workbook, with the five pixels.
                pixels = round(float(column.get("width")) * 7 + 5) - 5 if float(column.get("width")) >= 1 else float(column.get("width")) * 12
                widths[i] = pixels * 0.75
        widths = [widths[i] for i in range(len(widths))]
        rows = {int(row.get("r")) - 1: row for row in self.sheet.iter(S + "row")}
        heights = [float(rows[i].get("ht", 15)) if i in rows else 15 for i in range(max(rows) + 1)]
        merged = {}
        for entry in self.sheet.iter(S + "mergeCell"):
            (row, column), (end_row, end_column) = map(self.corner, entry.get("ref").split(":"))
            merged[row, column] = (row, end_row + 1, column, end_column + 1)
        links = {self.corner(link.get("ref").split(":")[0]): self.links[link.get(R + "id")] for link in self.sheet.iter(S + "hyperlink")
                 if link.get(R + "id")}
        cells = {self.corner(cell.get("r")): cell for cell in self.sheet.iter(S + "c")}
        found = {}
        for at, cell in cells.items():
            value = cell.find(S + "v")
            if value is None and cell.find(S + "is") is None:
                continue
            kind = cell.get("t")
            text = ("".join(part.text or "" for part in cell.iter(S + "t")) if kind == "inlineStr" else
                    self.strings[int(value.text)] if kind == "s" else value.text)
            range_ = merged.get(at, (at[0], at[0] + 1, at[1], at[1] + 1))
            seen = self.box(cell, cells[range_[1] - 1, range_[3] - 1])
            seen.place = sheet_place(range_, widths, heights)
            seen.link = links.get(at, "")
            seen.value = text if kind in ("s", "inlineStr") else float(text)
            found[text] = seen
        return found

    def box(self, cell, last):
        seen = SheetCell()
        xf = self.formats[int(cell.get("s", 0))]
        corners = [self.borders[int(self.formats[int(each.get("s", 0))].get("borderId"))] for each in (cell, last)]
        lines = [border.find(S + side) for side, border in zip(SIDES, (corners[0], corners[0], corners[1], corners[1]))]
        seen.borders = tuple(Line(0, line.get("style"), self.colour(line.find(S + "color"))) if line is not None and line.get("style") else None
                             for line in lines)
        fill = self.fills[int(xf.get("fillId"))].find(S + "patternFill")
        seen.fill = self.colour(fill.find(S + "fgColor")) if fill.get("patternType") == "solid" else ""
        font = self.fonts[int(xf.get("fontId"))]
        seen.font = (font.find(S + "name").get("val"), float(font.find(S + "sz").get("val")), font.find(S + "b") is not None,
                     font.find(S + "i") is not None, "Underline" if font.find(S + "u") is not None else
                     "LineThrough" if font.find(S + "strike") is not None else "None")
        seen.colour = self.colour(font.find(S + "color"))
        alignment = xf.find(S + "alignment")
        of = alignment.attrib if alignment is not None else {}
        seen.align = of.get("horizontal", "general").title()
        seen.upright = {"top": "Top", "center": "Middle", None: "Bottom", "bottom": "Bottom"}[of.get("vertical")]
        seen.turn = {"0": 0, "90": 270, "180": 90}[of.get("textRotation", "0")]
        seen.from_right = of.get("readingOrder") == "2"
        seen.indent = int(of.get("indent", 0))
        return seen


def xlsx_boxes(path):
    return _Xlsx(path).read()
