# SPDX-License-Identifier: GPL-3.0-or-later
"""Elements of report files as text, short enough for over forty reports. Lengths are centimetres."""
import itertools
import struct
import zlib
from base64 import b64encode
from xml.sax.saxutils import escape

SCHEMA = "http://schemas.microsoft.com/sqlserver/reporting/{}/reportdefinition"
RUN = ("FontFamily", "FontSize", "FontWeight", "FontStyle", "TextDecoration", "Format", "Color", "Language")
PARAGRAPH = ("TextAlign", "LineHeight")
LINE = ("Color", "Style", "Width")
_numbers = itertools.count(1)
REPORTS = {}


def e(name, *content, **attributes):
    marks = "".join(f' {key}="{escape(value)}"' for key, value in attributes.items())
    return f"<{name}{marks}>{''.join(part for part in content if part)}</{name}>"


def t(name, value):
    return e(name, escape(str(value)))


def cm(value):
    return f"{value:.3f}".rstrip("0").rstrip(".") + "cm"


def at(top=0, left=0, height=None, width=None):
    return "".join(t(name, cm(value)) for name, value in
                   (("Top", top), ("Left", left), ("Height", height), ("Width", width)) if value is not None)


def name_of(kind):
    """A name for an item that nothing refers to."""
    return f"{kind}{next(_numbers)}"


def kind(build):
    """Marks a function that gives the text of a report; its name becomes the file's."""
    def numbered():
        global _numbers
        _numbers = itertools.count(1)
        return build()
    REPORTS[build.__name__] = numbered
    return numbered


def edges(**lines):
    """Borders as text: edges(Bottom="Black Solid 1pt")."""
    out = ""
    for edge, line in lines.items():
        tag = "Border" if edge == "All" else edge + "Border"
        out += e(tag, *[t(*pair) for pair in zip(LINE, line.split())])
    return out


def style(names, values, borders=""):
    return e("Style", borders, *[t(name, values[name]) for name in values if names(name)])


def box(value, where="", name=None, extra="", grow=True, runs=None, borders="", **look):
    """A text box. `runs` replaces the value: a list of paragraphs, each a list of (value, look, extra)."""
    look = {"FontFamily": "Liberation Sans", "FontSize": "9pt", "PaddingLeft": "2pt", "PaddingRight": "2pt",
            "PaddingTop": "2pt", "PaddingBottom": "2pt", **look}
    paragraphs = []
    for paragraph in runs or [[(value, {}, "")]]:
        parts = [e("TextRun", t("Value", text), more, style(RUN.__contains__, {**look, **own}))
                 for text, own, more in paragraph]
        paragraphs.append(e("Paragraph", e("TextRuns", *parts), style(PARAGRAPH.__contains__, look)))
    return e("Textbox", t("CanGrow", "true") if grow else "", t("KeepTogether", "true"),
             e("Paragraphs", *paragraphs), extra, where,
             style(lambda key: key not in RUN + PARAGRAPH, look, borders), Name=name or name_of("Text"))


def rectangle(items, where="", extra="", borders="", name=None, **look):
    return e("Rectangle", e("ReportItems", *items), extra, where, style(lambda _: True, look, borders),
             Name=name or name_of("Box"))


def rule(top, left, height, width, colour="Black", weight="1pt"):
    return e("Line", at(top, left, height, width), e("Style", edges(All=f"{colour} Solid {weight}")),
             Name=name_of("Rule"))


def picture(value, where="", source="Embedded", sizing="FitProportional", extra="", borders=""):
    kind = t("MIMEType", "image/png") if source == "Database" else ""
    return e("Image", t("Source", source), t("Value", value), kind, t("Sizing", sizing), extra, where,
             e("Style", borders), Name=name_of("Picture"))


def png(width, height, colour_at):
    """A PNG as base64; colour_at(x, y) gives red, green and blue."""
    rows = b"".join(b"\0" + b"".join(bytes(colour_at(x, y)) for x in range(width)) for y in range(height))

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    data = (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))
    return b64encode(data).decode()


def embedded(**pictures):
    return e("EmbeddedImages", *[e("EmbeddedImage", t("MIMEType", "image/png"), t("ImageData", data), Name=name)
                                 for name, data in pictures.items()])


def cell(item):
    """A cell is an item, an item with its column span and row span, or None where another one spans."""
    if item is None:
        return e("TablixCell")
    item, columns, rows = item if isinstance(item, tuple) else (item, 1, 1)
    spans = (t("ColSpan", columns) if columns > 1 else "") + (t("RowSpan", rows) if rows > 1 else "")
    return e("TablixCell", e("CellContents", item, spans))


def header(size, item):
    return e("TablixHeader", t("Size", cm(size)), e("CellContents", item))


def member(*content, head=None, members=()):
    return e("TablixMember", header(*head) if head else "", *content,
             e("TablixMembers", *members) if members else "")


def group(name, by=None, *content, head=None, members=(), sort=None, inside=""):
    """A dynamic member; without `by` its details. `inside` is for the group itself: page breaks, filters, parent."""
    keys = e("GroupExpressions", *[t("GroupExpression", key) for key in ([by] if isinstance(by, str) else by)]) if by else ""
    sorts = e("SortExpressions", *[e("SortExpression", t("Value", key), t("Direction", direction))
                                   for key, direction in sort]) if sort else ""
    return e("TablixMember", e("Group", keys, inside, Name=name), sorts, header(*head) if head else "", *content,
             e("TablixMembers", *members) if members else "")


REPEATED = t("KeepWithGroup", "After") + t("RepeatOnNewPage", "true")
AFTER, BEFORE = t("KeepWithGroup", "After"), t("KeepWithGroup", "Before")


def tablix(data, widths, rows, down, across=None, corner=None, top=0, left=0, extra="", name=None, where=None, **look):
    """rows: (height, cells). corner: rows of cells as in the body."""
    corner = e("TablixCorner", e("TablixCornerRows", *[e("TablixCornerRow", *[
        cell(item).replace("TablixCell>", "TablixCornerCell>") for item in row]) for row in corner])) if corner else ""
    across = across if across is not None else [member() for _ in widths]
    return e("Tablix", corner,
             e("TablixBody", e("TablixColumns", *[e("TablixColumn", t("Width", cm(width))) for width in widths]),
               e("TablixRows", *[e("TablixRow", t("Height", cm(height)), e("TablixCells", *map(cell, cells)))
                                 for height, cells in rows])),
             e("TablixColumnHierarchy", e("TablixMembers", *across)),
             e("TablixRowHierarchy", e("TablixMembers", *down)), t("DataSetName", data) if data else "", extra,
             where if where is not None else at(top, left, sum(row[0] for row in rows), sum(widths)),
             style(lambda _: True, look), Name=name or name_of("Table"))


def boxes(values, base=None, **by_column):
    """A text box for each value, with a common look; c2=dict(...) adds to that of the third."""
    return [box(value, **{**(base or {}), **by_column.get(f"c{i}", {})}) for i, value in enumerate(values)]


def data(name, fields, rows, extra="", more_fields=""):
    """A data set with its rows. fields: "Item:String Amount:Float"."""
    pairs = [field.split(":") for field in fields.split()]
    content = e("Query", e("XmlData", e("Data", *[e("Row", *[
        t(pair[0], value) for pair, value in zip(pairs, row) if value is not None]) for row in rows])), e(
            "ElementPath", "Data{}/Row{" + ",".join(f"{n}({k})" for n, k in pairs) + "}"))
    return e("DataSet", e("Query", t("DataSourceName", "Rows"), t("CommandText", content)),
             e("Fields", *[e("Field", t("DataField", n), Name=n) for n, _ in pairs], more_fields), extra, Name=name)


def section(name, height, *items, first="true", last="true"):
    return e(name, t("Height", cm(height)), t("PrintOnFirstPage", first), t("PrintOnLastPage", last),
             e("ReportItems", *items))


def report(sets, items, width=17, height=5, paper=(21, 29.7), margins=(2, 2, 1.5, 1.5), head="", foot="", page="",
           form="2010/01", more="", look="", break_="", parameters=""):
    """margins: left, right, top, bottom."""
    source = e("DataSources", e("DataSource", e("ConnectionProperties", t("DataProvider", "ENTERDATA"),
                                                t("ConnectString", "")), Name="Rows"))
    body = e("Body", e("ReportItems", *items), t("Height", cm(height)), look)
    page = e("Page", head, foot, t("PageHeight", cm(paper[1])), t("PageWidth", cm(paper[0])),
             *[t(side + "Margin", cm(value)) for side, value in zip(("Left", "Right", "Top", "Bottom"), margins)], page)
    sets = source + e("DataSets", *sets) if sets else ""
    inner = body + t("Width", cm(width)) + page
    if form != "2008/01":
        inner = e("ReportSections", e("ReportSection", inner))
    text = (f'<?xml version="1.0" encoding="utf-8"?>\n<Report xmlns="{SCHEMA.format(form)}">' + sets + inner
            + parameters + more + "</Report>\n")
    return text.replace("><", ">\n<")
