# SPDX-License-Identifier: GPL-3.0-or-later
"""A report in which nothing is like its mirror image, and what each of its items looks like. Lengths are points."""

import dataclasses
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "reports"))
from kit import SCHEMA, data, e, embedded, member, png, t, tablix  # noqa: E402

SIDES = ("left", "top", "right", "bottom")
PAGE = (600, 800)
MARGINS = (20, 30, 40, 50)  # in the order of SIDES
BODY = (540, 715)


@dataclasses.dataclass(frozen=True)
class Line:
    width: float
    style: str
    colour: str


@dataclasses.dataclass(frozen=True)
class Look:
    """A text box. What is left out is what a report file means by leaving it out."""
    text: str
    place: tuple  # left, top, width, height in the body
    padding: tuple = (0, 0, 0, 0)
    borders: tuple = (None, None, None, None)
    fill: str = ""
    family: str = "Liberation Sans"
    size: float = 10
    bold: bool = False
    italic: bool = False
    line: str = "None"  # TextDecoration
    colour: str = "#000000"
    align: str = "Left"
    upright: str = "Top"  # VerticalAlign
    turn: int = 0  # degrees clockwise
    from_right: bool = False
    indents: tuple = (0, 0, 0)  # left, right, hanging
    spaces: tuple = (0, 0, 0)  # before, after, height of a line
    link: str = ""
    format: str = ""
    value: str = ""  # expression; the text if it is empty
    z: int = 0


LEFT, TOP, RIGHT, BOTTOM = (Line(1, "Solid", "#123456"), Line(2, "Dashed", "#e01020"), Line(3, "Double", "#2060c0"),
                            Line(4, "Dotted", "#10a040"))
FOUR = (LEFT, TOP, RIGHT, BOTTOM)
PADDING = (3, 5, 7, 11)
HALF = "#80ff0000"
LINK = "https://example.com/a?b=1&c=2"

BOXES = [
    Look("Corner", (10, 10, 150, 40), PADDING, FOUR, "#fff0c8", "Liberation Serif", 11, True, False, "Underline", "#803010"),
    Look("Middle", (10, 60, 150, 40), PADDING, FOUR[1:] + FOUR[:1], "#c8f0ff", "Liberation Mono", 8, False, True, "LineThrough",
         "#103080", "Center", "Middle"),
    Look("Far", (10, 110, 150, 40), PADDING, FOUR[2:] + FOUR[:2], HALF, size=12.5, colour="#80804020", align="Right", upright="Bottom"),
    Look("justified words go from one edge to the other edge and on", (10, 160, 150, 40), PADDING, align="Justify"),
    Look("Indented words go on for a few more lines than one", (10, 210, 150, 75), PADDING, FOUR, "#e0ffe0",
         indents=(12, 20, 9), spaces=(4, 6, 17)),
    Look("Outdented words go on for a few more lines than one", (170, 210, 150, 75), PADDING, FOUR, "#ffe0e0",
         indents=(12, 20, -9), spaces=(4, 6, 17)),
    Look("Downwards", (340, 10, 40, 90), PADDING, FOUR, "#e0e0ff", turn=90),
    Look("Upwards", (390, 10, 40, 90), PADDING, FOUR, "#ffe0ff", turn=270),
    Look("Foot", (440, 10, 40, 90), PADDING, FOUR, "#e0e0ff", turn=90, align="Right", upright="Bottom"),
    Look("Crown", (490, 10, 40, 90), PADDING, FOUR, "#ffe0ff", turn=270, align="Right", upright="Bottom"),
    Look("\u05e9\u05dc\u05d5\u05dd", (340, 110, 100, 30), PADDING, FOUR, "#f0f0f0", from_right=True, align="Right"),
    Look("\u05d0\u05d1 \u05d2\u05d3\u05d4 \u05d5\u05d6\u05d7 \u05d8\u05d9\u05db \u05dc\u05de\u05e0", (340, 150, 100, 50), PADDING,
         from_right=True, align="Right", indents=(12, 20, 9)),
    Look("Linked", (460, 110, 60, 15), link=LINK, colour="#0000ff"),
    Look("Plain", (460, 130, 60, 15)),
]
# The expression, the text, and what a workbook has: the text where a cell's number is not exact or has another meaning.
NUMBERS = (
    ("=CLng(536870912)", "536870912", 536870912.0),
    ("=CLng(536870913)", "536870913", 536870913.0),
    ("=CLng(2147483648)", "2147483648", 2147483648.0),
    ("=CLng(-2147483648)", "-2147483648", -2147483648.0),
    ("=CLng(123456789012345)", "123456789012345", 123456789012345.0),
    ("=CLng(1234567890123456)", "1234567890123456", "1234567890123456"),
    ("=CLng(12345678901234567)", "12345678901234567", "12345678901234567"),
    ("=CDbl(0.1)", "0.1", 0.1),
    ("=CDbl(1e300)", "1E+300", 1e300),
    ("=CDbl(-0.0)", "0", 0.0),
    ("=DateSerial(1900,2,28)", "1900-02-28 00:00:00", "1900-02-28 00:00:00"),  # workbooks have a day after it that never was
    ("=DateSerial(1900,3,1)", "1900-03-01 00:00:00", 61.0),
    ('=CDate("2099-12-31 23:59:59")', "2099-12-31 23:59:59", 73050 + 86399 / 86400),
)


def numbers():
    """The boxes of the numbers."""
    x, y, width, height = NUMBER_COLUMN
    return [Look(text, (x, y + i * height, width, height), value=value, format="yyyy-MM-dd HH:mm:ss" if "Date" in value else "")
            for i, (value, text, _) in enumerate(NUMBERS)]


def pt(value):
    return f"{value:g}pt"


def borders(look):
    return "".join(e(side.title() + "Border", t("Color", line.colour), t("Style", line.style), t("Width", pt(line.width)))
                   for side, line in zip(SIDES, look.borders) if line)


def box(look, name):
    run = e("TextRun", t("Value", look.value or look.text), e(
        "Style", t("FontFamily", look.family), t("FontSize", pt(look.size)), t("FontWeight", "Bold") if look.bold else "",
        t("FontStyle", "Italic") if look.italic else "", t("TextDecoration", look.line), t("Color", look.colour),
        t("Format", look.format) if look.format else "", t("Language", "en-US")))
    left, right, hanging = look.indents
    before, after, height = look.spaces
    paragraph = e("Paragraph", e("TextRuns", run), *[
        t(tag, pt(value)) for tag, value in (("LeftIndent", left), ("RightIndent", right), ("HangingIndent", hanging),
                                             ("SpaceBefore", before), ("SpaceAfter", after)) if value],
        e("Style", t("TextAlign", look.align), t("LineHeight", pt(height)) if height else ""))
    x, y, width, height = look.place
    action = e("ActionInfo", e("Actions", e("Action", t("Hyperlink", look.link)))) if look.link else ""
    return e("Textbox", t("KeepTogether", "true"), e("Paragraphs", paragraph), action, t("Top", pt(y)), t("Left", pt(x)), t("Height", pt(height)),
             t("Width", pt(width)), t("ZIndex", look.z) if look.z else "", e(
                 "Style", borders(look), t("BackgroundColor", look.fill) if look.fill else "", t("VerticalAlign", look.upright),
                 *[t("Padding" + side.title(), pt(value)) for side, value in zip(SIDES, look.padding)],
                 t("Direction", "RTL") if look.from_right else "",
                 t("WritingMode", {90: "Vertical", 270: "Rotate270"}[look.turn]) if look.turn else ""), Name=name)


# A table whose cells span in both directions, as (box, columns, rows); None where another one spans.
TABLE = (10, 300)
WIDTHS, HEIGHTS = (50, 70, 90), (40, 45, 50)
CELLS = (
    ((Look("Wide", (), PADDING, fill="#d0ffd0", align="Center", upright="Middle"), 2, 1), None,
     (Look("Tall", (), PADDING, fill="#ffd0d0", align="Right", upright="Bottom"), 1, 2)),
    ((Look("a", (), colour="#a00000"), 1, 1), (Look("b", (), colour="#0000a0", link=LINK), 1, 1), None),
    ((Look("Lone", (), PADDING, FOUR, "#d0d0ff"), 1, 1),
     (Look("Last of all the words in it", (), PADDING, indents=(0, 25, 0), spaces=(0, 0, 21)), 2, 1), None),
)
PICTURE, GLASS = (10, 450, 40, 60), (30, 470, 40, 60)
COLOURS = ((255, 0, 0), (0, 255, 0), (0, 0, 255), (255, 255, 0), (0, 255, 255), (64, 64, 64))  # two a row
PIXELS = png(2, 3, lambda x, y: COLOURS[2 * y + x])
ABOVE = Look("Above", (100, 450, 60, 30), fill="#00c0c0", z=2)
BELOW = Look("Below", (130, 465, 60, 30), fill="#c0c000", align="Right", upright="Bottom", z=1)
RULES = ((10, 540, 200, Line(2.5, "Dashed", "#aa5500")), (10, 550, 200, Line(0, "Dashed", "#0055aa")))
NUMBER_COLUMN = (350, 530, 170, 14)  # the place of the first number


def cells():
    """The boxes of the table with their places."""
    for y, row in enumerate(CELLS):
        for x, cell in enumerate(row):
            if cell:
                look, across, down = cell
                yield dataclasses.replace(look, place=(TABLE[0] + sum(WIDTHS[:x]), TABLE[1] + sum(HEIGHTS[:y]),
                                                       sum(WIDTHS[x:x + across]), sum(HEIGHTS[y:y + down])))


def rule(name, left, top, width, line):
    return e("Line", t("Top", pt(top)), t("Left", pt(left)), t("Width", pt(width)), t("Height", "0pt"), e("Style", e(
        "Border", t("Color", line.colour), t("Style", line.style), t("Width", pt(line.width)))), Name=name)


def report():
    table = tablix("Rows", [width / 72 * 2.54 for width in WIDTHS], [
        (height / 72 * 2.54, [cell and (box(dataclasses.replace(cell[0], place=(0, 0, 10, 10)), f"Cell{y}{x}"), *cell[1:])
                              for x, cell in enumerate(row)]) for y, (height, row) in enumerate(zip(HEIGHTS, CELLS))],
        [member() for _ in HEIGHTS], where="".join(t(tag, pt(value)) for tag, value in (
            ("Top", TABLE[1]), ("Left", TABLE[0]), ("Height", sum(HEIGHTS)), ("Width", sum(WIDTHS)))), name="Spans")
    left, top, wide, high = PICTURE
    picture = e("Image", t("Source", "Embedded"), t("Value", "Six"), t("Sizing", "Fit"), t("Top", pt(top)), t("Left", pt(left)),
                t("Height", pt(high)), t("Width", pt(wide)), e("Style"), Name="Picture")
    items = [*[box(look, f"Box{i}") for i, look in enumerate(BOXES)], table, box(ABOVE, "Upper"), box(BELOW, "Lower"),
             box(Look("", GLASS, fill=HALF, z=1), "Glass"), picture, *[rule(f"Rule{i}", *each) for i, each in enumerate(RULES)],
             *[box(look, f"Number{i}") for i, look in enumerate(numbers())]]
    source = e("DataSources", e("DataSource", e("ConnectionProperties", t("DataProvider", "ENTERDATA"), t("ConnectString", "")), Name="Rows"))
    page = e("Page", t("PageHeight", pt(PAGE[1])), t("PageWidth", pt(PAGE[0])),
             *[t(side.title() + "Margin", pt(margin)) for side, margin in zip(SIDES, MARGINS)])
    return ('<?xml version="1.0" encoding="utf-8"?>\n' + e("Report", source, e("DataSets", data("Rows", "Item:String", [["one"]])), e(
        "ReportSections", e("ReportSection", e("Body", e("ReportItems", *items), t("Height", pt(BODY[1]))), t("Width", pt(BODY[0])), page)),
        embedded(Six=PIXELS), xmlns=SCHEMA.format("2010/01")) + "\n")
