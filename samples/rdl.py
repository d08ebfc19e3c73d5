# SPDX-License-Identifier: GPL-3.0-or-later
"""The building blocks that the sample reports share: elements of RDL as text."""
from xml.sax.saxutils import escape

SCHEMA = "http://schemas.microsoft.com/sqlserver/reporting/{}/reportdefinition"
NAVY, SLATE, MIST, RULE = "#1F3A5F", "#5B6B7F", "#EEF2F6", "#C5CED8"

STYLE_ORDER = ["BackgroundColor", "FontFamily", "FontSize", "FontWeight", "FontStyle", "Format", "TextAlign",
               "VerticalAlign", "Color", "PaddingLeft", "PaddingRight", "PaddingTop", "PaddingBottom"]


def element(name, *content, **attributes):
    marks = "".join(f' {key}="{escape(value)}"' for key, value in attributes.items())
    inner = "".join(part for part in content if part)
    return f"<{name}{marks}>{inner}</{name}>" if inner else f"<{name}{marks} />"


def text(name, value):
    return element(name, escape(str(value)))


def cm(value):
    return f"{value:.4f}".rstrip("0").rstrip(".") + "cm"


def place(top=0, left=0, height=None, width=None):
    return (text("Top", cm(top)) + text("Left", cm(left)) + (text("Height", cm(height)) if height is not None else "")
            + (text("Width", cm(width)) if width is not None else ""))


def border(edge, colour, width="0.75pt"):
    return element(edge, text("Color", colour), text("Style", "Solid"), text("Width", width))


def split_style(style):
    """What belongs to the run, to the paragraph and to the box."""
    run_names = {"FontFamily", "FontSize", "FontWeight", "FontStyle", "Format", "Color"}
    parts = {"run": "", "paragraph": "", "box": style.get("borders", "")}
    for name in STYLE_ORDER:
        if name in style:
            part = "run" if name in run_names else "paragraph" if name == "TextAlign" else "box"
            parts[part] += text(name, style[name])
    return parts


def textbox(name, value, where="", grow=True, **style):
    """A text box of the forms from 2008 on. `where` is place(...), empty inside a cell."""
    style = {"FontFamily": "Arial", "FontSize": "9pt", "PaddingLeft": "3pt", "PaddingRight": "3pt",
             "PaddingTop": "2pt", "PaddingBottom": "2pt", **style}
    parts = split_style(style)
    run = element("TextRun", text("Value", value), element("Style", parts["run"]))
    paragraph = element("Paragraph", element("TextRuns", run), element("Style", parts["paragraph"]))
    return element("Textbox", text("CanGrow", "true") if grow else "", text("KeepTogether", "true"),
                   element("Paragraphs", paragraph), where, element("Style", parts["box"]), Name=name)


def line(name, top, left, width, colour=RULE, weight="0.75pt"):
    return element("Line", place(top, left, 0, width),
                   element("Style", element("Border", text("Color", colour), text("Style", "Solid"),
                                            text("Width", weight))), Name=name)


def cell(item):
    return element("TablixCell", element("CellContents", item))


def row(height, items):
    return element("TablixRow", text("Height", cm(height)), element("TablixCells", *[cell(item) for item in items]))


def member(*content):
    return element("TablixMember", *content)


def header_member():
    return member(text("KeepWithGroup", "After"), text("RepeatOnNewPage", "true"), text("KeepTogether", "true"))


def total_member():
    return member(text("KeepWithGroup", "Before"), text("KeepTogether", "true"))


def tablix(name, data_set, widths, rows, members, top, left):
    body = element("TablixBody",
                   element("TablixColumns", *[element("TablixColumn", text("Width", cm(width))) for width in widths]),
                   element("TablixRows", *rows))
    columns = element("TablixColumnHierarchy", element("TablixMembers", *[member() for _ in widths]))
    return element("Tablix", body, columns,
                   element("TablixRowHierarchy", element("TablixMembers", *members)),
                   text("RepeatColumnHeaders", "true"), text("DataSetName", data_set),
                   place(top, left, 0.6 * len(rows), sum(widths)), Name=name)


def field(name, type_name, column=None):
    return element("Field", text("DataField", column or name), f"<rd:TypeName>System.{type_name}</rd:TypeName>",
                   Name=name)


def data_set(name, query, fields, parameters=None):
    given = [element("QueryParameter", text("Value", value), Name=key) for key, value in (parameters or {}).items()]
    return element("DataSet",
                   element("Query", text("DataSourceName", "Sales"),
                           element("QueryParameters", *given) if given else "", text("CommandText", query)),
                   element("Fields", *[field(*one) for one in fields]), Name=name)


def data_source():
    return element("DataSources",
                   element("DataSource",
                           element("ConnectionProperties", text("DataProvider", "SQLITE"),
                                   text("ConnectString", "Data Source=sales.db")), Name="Sales"))


def parameter(name, kind, prompt, defaults, valid=None):
    values = [element("ParameterValue", text("Value", value), text("Label", label)) for value, label in valid or []]
    return element("ReportParameter", text("DataType", kind),
                   element("DefaultValue", element("Values", *[text("Value", value) for value in defaults])),
                   text("Prompt", prompt),
                   element("ValidValues", element("ParameterValues", *values)) if values else "", Name=name)


def title_property(title):
    return element("CustomProperties",
                   element("CustomProperty", text("Name", "Title"), text("Value", title)))


def page(header, footer):
    """A4 upright with margins of 2 cm at the sides."""
    return element("Page", header, footer, text("PageHeight", "29.7cm"), text("PageWidth", "21cm"),
                   text("LeftMargin", "2cm"), text("RightMargin", "2cm"), text("TopMargin", "1.5cm"),
                   text("BottomMargin", "1.5cm"))


def page_section(name, height, *items):
    return element(name, text("Height", cm(height)), text("PrintOnFirstPage", "true"), text("PrintOnLastPage", "true"),
                   element("ReportItems", *items))


def footer_with_pages():
    muted = {"FontSize": "8pt", "Color": SLATE, "grow": False}
    return page_section(
        "PageFooter", 0.9, line("FooterRule", 0.1, 0, 17),
        textbox("FooterLeft", "Norvale Trading · Sales", place(0.2, 0, 0.6, 8), PaddingLeft="0pt", **muted),
        textbox("FooterPages", '="Page " & Globals!PageNumber & " of " & Globals!TotalPages', place(0.2, 9, 0.6, 8),
                TextAlign="Right", PaddingRight="0pt", **muted))


def report(form, *content):
    attributes = f'xmlns="{SCHEMA.format(form)}" xmlns:rd="http://schemas.microsoft.com/SQLServer/reporting/reportdesigner"'
    return f'<?xml version="1.0" encoding="utf-8"?>\n<Report {attributes}>' + "".join(content).replace(
        "><", ">\n<") + "</Report>\n"
