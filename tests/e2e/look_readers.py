# SPDX-License-Identifier: GPL-3.0-or-later
"""What each format says of the text boxes of a report: place, borders, colours, letters. A reader returns a dictionary of Seen
by text. Lengths are points, places are left, top, width and height in the body, colours are #rrggbb or #rrggbbaa."""

import collections
import dataclasses
import re
import xml.etree.ElementTree as ET
import zipfile

import html5lib

from look_report import SIDES, Line


@dataclasses.dataclass
class Seen:
    place: tuple = None
    inset: tuple = None  # from the box's edges to its lines: padding, indents and the space around a paragraph
    first: float = 0  # of the first line, from where the others begin
    borders: tuple = (None, None, None, None)
    fill: str = ""
    font: tuple = None  # family, size, bold, italic, line
    colour: str = ""
    align: str = "Left"
    upright: str = "Top"
    turn: int = 0
    from_right: bool = False
    line: float = 0  # its height; 0: that of the font
    link: str = ""
    layer: int = 0  # of boxes that overlap, the one with more is above


def points(css):
    return 0.0 if css in ("0", "", None) else float(css.removesuffix("pt"))


# HTML

class _Html:
    BORDERS = {"solid": "Solid", "dashed": "Dashed", "dotted": "Dotted", "double": "Double"}

    def __init__(self, path):
        self.tree = html5lib.parse(path.read_bytes(), namespaceHTMLElements=False)
        self.parents = {child: parent for parent in self.tree.iter() for child in parent}
        self.rules = dict(re.findall(r"^\.(\w+)\{(.*)\}$", self.tree.findtext("head/style"), re.MULTILINE))

    def css(self, element):
        declared = ";".join(self.rules.get(name, "") for name in element.get("class", "").split())
        return dict(part.split(":", 1) for part in declared.split(";") if part)

    @staticmethod
    def tracks(template):
        return [points(part) for part in re.sub(r"minmax\(([^,]*),auto\)", r"\1", template).split()]

    def grid_place(self, element, css):
        """Relative to the grid, which begins where the body does."""
        grid = self.css(self.parents[element])
        found = []
        for way in ("column", "row"):
            tracks = self.tracks(grid[f"grid-template-{way}s"])
            begin, end = map(int, css[f"grid-{way}"].split("/"))
            found.append((sum(tracks[:begin - 1]), sum(tracks[begin - 1:end - 1])))
        (left, width), (top, height) = found
        return left, top, width, height

    def cell_place(self, element):
        """By the table's columns and the heights of its rows; cells that span move the others aside."""
        table = element
        while table.tag != "table":
            table = self.parents[table]
        left, top, _, _ = self.grid_place(self.parents[table], self.css(self.parents[table]))
        widths = [points(self.css(column)["width"]) for column in table.iter("col")]
        rows = list(table.iter("tr"))
        heights = [points(self.css(row)["height"]) for row in rows]
        taken = set()
        for y, row in enumerate(rows):
            x = 0
            for cell in row:
                while (x, y) in taken:
                    x += 1
                across, down = int(cell.get("colspan", 1)), int(cell.get("rowspan", 1))
                taken |= {(x + i, y + j) for i in range(across) for j in range(down)}
                if cell is element:
                    return (left + sum(widths[:x]), top + sum(heights[:y]), sum(widths[x:x + across]), sum(heights[y:y + down]))
        return None

    def box(self, element):
        css = self.css(element)
        seen = Seen(place=self.cell_place(element) if element.tag in ("td", "th") else self.grid_place(element, css))
        top, right, bottom, left = map(points, css["padding"].split())
        paragraph = element.find("div")
        inner = self.css(paragraph) if paragraph is not None else {}
        margin = {side: points(inner.get(f"margin-{side}")) for side in SIDES}
        seen.inset = (left + margin["left"], top + margin["top"], right + margin["right"], bottom + margin["bottom"])
        seen.first = points(inner.get("text-indent"))
        seen.line = points(inner.get("line-height"))
        seen.borders = tuple(self.border(css.get(f"border-{side}") or css.get("border")) for side in SIDES)
        seen.fill = css.get("background-color", "")
        seen.font = (css["font-family"].split('"')[1], points(css["font-size"]), css.get("font-weight") == "bold",
                     css.get("font-style") == "italic", {"underline": "Underline", "line-through": "LineThrough"}.get(
                         css.get("text-decoration"), "None"))
        seen.colour = css["color"]
        seen.align = css["text-align"].title()
        seen.upright = ({"top": "Top", "middle": "Middle", "bottom": "Bottom"}[css["vertical-align"]] if element.tag in ("td", "th") else
                        {None: "Top", "center": "Middle", "flex-end": "Bottom"}[css.get("justify-content")])
        seen.from_right = css.get("direction") == "rtl"
        seen.layer = int(css.get("z-index", 0))
        link = next(element.iter("a"), None)
        seen.link = link.get("href") if link is not None else ""
        if css.get("writing-mode") == "vertical-rl":
            seen.turn = 90
        if css.get("transform") == "rotate(180deg)":  # the whole box, with its edges; those of a cell are the table's
            seen.turn = (seen.turn + 180) % 360
            seen.inset = seen.inset[2:] + seen.inset[:2]
            if element.tag == "div":
                seen.borders = seen.borders[2:] + seen.borders[:2]
        return seen

    def border(self, css):
        if not css:
            return None
        width, style, colour = css.split()
        return Line(points(width), self.BORDERS[style], colour)


def html_boxes(path):
    page = _Html(path)
    found = {}
    for element in (each for each in page.tree.iter() if each.tag in ("div", "td", "th")):
        text = "".join(element.itertext()).strip()
        # The innermost element that has text of its own.
        if text and "font-family" in page.css(element):
            found[text] = page.box(element)
    return found


# What text documents are made of: rows of cells, which become boxes.

@dataclasses.dataclass
class Cell:
    left: float
    right: float
    merge: str = ""  # First, Continued
    seen: Seen = None
    text: str = ""


class Grid:
    """The rows of a document one below the other."""

    def __init__(self):
        self.top = 0
        self.open = {}  # by the left edge: the cell that continues below
        self.boxes = {}

    def blank(self, height):
        self.top += height

    def row(self, height, cells):
        for cell in cells:
            if cell.merge == "Continued":
                box = self.open[cell.left]
                x, y, width, tall = box.place
                box.place = (x, y, width, tall + height)
            elif cell.text:
                cell.seen.place = (cell.left, self.top, cell.right - cell.left, height)
                self.boxes[cell.text] = cell.seen
            if cell.merge == "First":
                cell.seen.place = (cell.left, self.top, cell.right - cell.left, height)
                self.open[cell.left] = cell.seen
        self.top += height


def turned_inset(before_line, before, after_line, after, turn):
    """Insets left, top, right and bottom of lines turned clockwise: in upright text lines begin at the left, paragraphs at the top."""
    upright = (before_line, before, after_line, after)
    return {0: upright, 90: (after, before_line, before, after_line), 270: (before, after_line, after, before_line)}[turn]


# RTF

class _Rtf:
    TOKEN = re.compile(r"\\u(-?\d+)\?|\\([a-zA-Z]+)(-?\d+)? ?|\\(.)|([{}])|([^\\{}\n]+)")
    BORDERS = {"brdrs": "Solid", "brdrdash": "Dashed", "brdrdot": "Dotted", "brdrdb": "Double"}
    SIDES = {"clbrdrl": 0, "clbrdrt": 1, "clbrdrr": 2, "clbrdrb": 3}
    SILENT = ("fonttbl", "colortbl", "info", "pict", "fldinst")

    def __init__(self, path):
        self.source = path.read_text(encoding="ascii")
        self.fonts = dict(re.findall(r"\{\\f(\d+)\\fnil\\fcharset0 ([^;]*);\}", self.source))
        table = re.search(r"\{\\colortbl;(.*?)\}", self.source).group(1)
        self.colours = [""] + ["#%02x%02x%02x" % tuple(map(int, re.findall(r"\d+", entry))) for entry in table.split(";")[:-1]]
        self.grid = Grid()
        self.read()

    def read(self):
        depth, silent, self.cells, self.texts, self.height = 0, None, [], [], 0
        self.paragraph, self.text, self.link = {}, "", ""
        for unicode, word, number, _, brace, plain in (match.groups() for match in self.TOKEN.finditer(self.source)):
            if brace == "{":
                depth += 1
            elif brace == "}":
                silent = None if silent == depth else silent
                depth -= 1
            elif word in self.SILENT and silent is None:
                silent = depth
            elif silent is not None:
                if plain and plain.startswith("HYPERLINK"):
                    self.link = plain.split('"')[1]
            elif unicode:
                self.text += chr(int(unicode) % 65536)
            elif plain:
                self.text += plain
            elif word:
                self.word(word, int(number or 0), number)

    def word(self, word, number, given):
        if word == "trowd":
            self.cells, self.edge, self.cell = [], 0, Seen()
            self.merge, self.side = "", None
        elif word == "trleft":
            self.edge = number / 20
        elif word == "trrh":
            self.height = abs(number) / 20
        elif word in self.SIDES:
            self.side = self.SIDES[word]
        elif word in self.BORDERS:
            self.border = self.BORDERS[word]
        elif word == "brdrw":
            self.width = number / 20
        elif word == "brdrcf":
            lines = list(self.cell.borders)
            lines[self.side] = Line(self.width * (3 if self.border == "Double" else 1), self.border, self.colours[number])
            self.cell.borders = tuple(lines)
        elif word.startswith("clvertal"):
            self.cell.upright = {"t": "Top", "c": "Middle", "b": "Bottom"}[word[-1]]
        elif word in ("cltxtbrl", "cltxbtlr"):
            self.cell.turn = 90 if word == "cltxtbrl" else 270
        elif word == "clcbpat":
            self.cell.fill = self.colours[number]
        elif word in ("clvmgf", "clvmrg"):
            self.merge = "First" if word == "clvmgf" else "Continued"
        elif word == "cellx":
            self.cells.append(Cell(self.edge, number / 20, self.merge, self.cell))
            self.edge, self.cell, self.merge = number / 20, Seen(), ""
        elif word == "pard":
            self.paragraph, self.link = {}, ""
        elif word == "cell":
            self.texts.append((self.text, self.paragraph, self.link))
            self.text = ""
        elif word == "row":
            for cell, (text, paragraph, link) in zip(self.cells, self.texts, strict=True):
                cell.text = text
                self.fill_in(cell.seen, paragraph, link)
            self.grid.row(self.height, self.cells)
            self.texts = []
        elif word == "par" and "intbl" not in self.paragraph:
            self.grid.blank(abs(self.paragraph.get("sl", 0)) / 20)
        else:
            self.paragraph[word] = number if given else 1

    def fill_in(self, seen, words, link):
        of = collections.defaultdict(int, words)
        seen.inset = turned_inset(*(of[word] / 20 for word in ("li", "sb", "ri", "sa")), seen.turn)
        seen.first, seen.line, seen.link = of["fi"] / 20, abs(of["sl"]) / 20, link
        seen.align = {"ql": "Left", "qc": "Center", "qr": "Right", "qj": "Justify"}[next((w for w in words if w in ("ql", "qc", "qr", "qj")), "ql")]
        seen.from_right = "rtlpar" in words
        seen.font = (self.fonts.get(str(of["f"])), of["fs"] / 2, "b" in words, "i" in words,
                     "Underline" if "ul" in words else "LineThrough" if "strike" in words else "None")
        seen.colour = self.colours[of["cf"]]


def rtf_boxes(path):
    return _Rtf(path).grid.boxes


# WordprocessingML

W = "{http://schemas.openxmlformats.org/wordprocessingml/2006/main}"
R = "{http://schemas.openxmlformats.org/officeDocument/2006/relationships}"


class _Docx:
    BORDERS = {"single": "Solid", "dashed": "Dashed", "dotted": "Dotted", "double": "Double"}

    def __init__(self, path):
        with zipfile.ZipFile(path) as archive:
            self.document = ET.fromstring(archive.read("word/document.xml"))
            styles = ET.fromstring(archive.read("word/styles.xml"))
            relations = ET.fromstring(archive.read("word/_rels/document.xml.rels"))
        self.styles = {style.get(W + "styleId"): style for style in styles.iter(W + "style")}
        self.links = {relation.get("Id"): relation.get("Target") for relation in relations}
        self.grid = Grid()
        for block in self.document.find(W + "body"):
            if block.tag == W + "p":
                spacing = block.find(f"{W}pPr/{W}spacing")
                self.grid.blank(int(spacing.get(W + "line")) / 20 if spacing is not None else 0)
            elif block.tag == W + "tbl":
                self.table(block)

    def table(self, table):
        left = int(table.find(f"{W}tblPr/{W}tblInd").get(W + "w")) / 20
        widths = [int(column.get(W + "w")) / 20 for column in table.iter(W + "gridCol")]
        for row in table.findall(W + "tr"):
            height = int(row.find(f"{W}trPr/{W}trHeight").get(W + "val")) / 20
            before = row.find(f"{W}trPr/{W}gridBefore")
            column = int(before.get(W + "val")) if before is not None else 0
            cells = []
            for cell in row.findall(W + "tc"):
                look = cell.find(W + "tcPr")
                span = look.find(W + "gridSpan")
                span = int(span.get(W + "val")) if span is not None else 1
                merge = look.find(W + "vMerge")
                merge = "" if merge is None else "First" if merge.get(W + "val") == "restart" else "Continued"
                text = "".join(part.text or "" for part in cell.iter(W + "t"))
                cells.append(Cell(left + sum(widths[:column]), left + sum(widths[:column + span]), merge, self.box(cell, look), text))
                column += span
            self.grid.row(height, cells)

    def box(self, cell, look):
        seen = Seen()
        seen.turn = {None: 0, "tbRl": 90, "btLr": 270}[self.value(look, "textDirection")]
        seen.upright = {None: "Top", "center": "Middle", "bottom": "Bottom"}[self.value(look, "vAlign")]
        fill = look.find(W + "shd")
        seen.fill = "#" + fill.get(W + "fill").lower() if fill is not None else ""
        seen.borders = tuple(self.border(look.find(f"{W}tcBorders/{W}{side}")) for side in SIDES)
        paragraph = cell.find(W + "p")
        style = self.styles.get(self.value(paragraph.find(W + "pPr"), "pStyle"))
        own = paragraph.find(W + "pPr") if style is None else style.find(W + "pPr")
        letters = paragraph.find(f"{W}r/{W}rPr") if style is None else style.find(W + "rPr")
        if letters is None or letters.find(W + "rFonts") is None:
            return seen  # room without a text
        indent, spacing = own.find(W + "ind"), own.find(W + "spacing")
        seen.from_right = own.find(W + "bidi") is not None
        length = lambda element, name: int(element.get(W + name, 0)) / 20 if element is not None else 0
        sides = (length(indent, "left"), length(indent, "right"))
        begin, end = sides[::-1] if seen.from_right else sides  # in such a paragraph left is where its lines begin
        seen.inset = turned_inset(begin, length(spacing, "before"), end, length(spacing, "after"), seen.turn)
        seen.first = length(indent, "firstLine") - length(indent, "hanging")
        seen.line = length(spacing, "line")
        align = self.value(own, "jc")
        if seen.from_right:
            align = {"left": "right", "right": "left"}.get(align, align)
        seen.align = {"left": "Left", "center": "Center", "right": "Right", "both": "Justify"}[align]
        seen.font = (letters.find(W + "rFonts").get(W + "ascii"), int(self.value(letters, "sz")) / 2, letters.find(W + "b") is not None,
                     letters.find(W + "i") is not None, "Underline" if letters.find(W + "u") is not None else
                     "LineThrough" if letters.find(W + "strike") is not None else "None")
        seen.colour = "#" + self.value(letters, "color").lower()
        link = next(paragraph.iter(W + "hyperlink"), None)
        seen.link = self.links[link.get(R + "id")] if link is not None else ""
        return seen

    @staticmethod
    def value(element, name):
        found = element.find(W + name)
        return found.get(W + "val") if found is not None else None

    def border(self, line):
        if line is None:
            return None
        style = self.BORDERS[line.get(W + "val")]
        return Line(int(line.get(W + "sz")) / 8 * (3 if style == "Double" else 1), style, "#" + line.get(W + "color").lower())


def docx_boxes(path):
    return _Docx(path).grid.boxes
