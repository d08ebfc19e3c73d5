# SPDX-License-Identifier: GPL-3.0-or-later
"""Letters, forms, labels: documents whose parts have fixed places."""
from kit import (AFTER, BEFORE, REPEATED, at, box, boxes, data, e, edges, embedded, group, kind, member, name_of,
                 picture, png, rectangle, report, rule, t, tablix)
from tables import BOLD, GRID, HEAD, NUMBER, PAGES

MONEY = {**NUMBER, "Format": "N2"}
PEOPLE = [(f"{first} {last}", f"{n * 7 % 90 + 1} {street}", f"{40000 + n * 131} {town}") for n, (first, last, street, town) in
          enumerate((f, n, s, c) for f, n in zip("Ann Bo Cy Di Ed Fay Gus Hal Ida Jo Kim Lou Max".split(),
                    "Lee Dahl Roe Fox Orr Hart Berg Voss Lund Marsh Stone Reyes Bell".split())
                    for s, c in [("Mill Lane", "Norvale"), ("Quay Street", "Eastport")])]
LOGO = png(48, 24, lambda x, y: (31, 63 + 4 * y, 95 + 3 * x) if (x - 12) ** 2 + (y - 12) ** 2 < 120 or x > 26 else (255, 255, 255))
QUARTERS = png(40, 20, lambda x, y: ((220, 40, 40), (40, 160, 60), (40, 60, 200), (240, 200, 40))[(x >= 20) + 2 * (y >= 10)])


@kind
def invoice_two_taxes():
    """Lines with two tax rates, the taxes as a second table below, a box of totals at the right."""
    rows = [(n, f"Article {n} with a long description of what it is and does" if n % 4 == 0 else f"Article {n}",
             n % 5 + 1, 3.25 * n, 0.19 if n % 3 else 0.07) for n in range(1, 38)]
    amount = "Fields!Count.Value * Fields!Price.Value"
    lines = tablix("Lines", [1.2, 7.8, 2, 2.5, 3.5], [
        (0.6, boxes(["No", "Article", "Count", "Price", "Amount"], HEAD)),
        (0.6, [box("=Fields!No.Value", **GRID), box("=Fields!Article.Value", **GRID), box("=Fields!Count.Value", **NUMBER),
               box("=Fields!Price.Value", **MONEY), box(f"={amount}", **MONEY)]),
        (0.7, [(box("Net", TextAlign="Right", **BOLD), 4, 1), None, None, None, box(f"=Sum({amount})", **MONEY)])],
        [member(REPEATED), group("Line"), member(BEFORE)], top=5.4)
    taxes = tablix("Lines", [3, 3.5], [(0.6, [box('="Tax " & Format(Fields!Tax.Value, "P0")', **GRID),
                                             box(f"=Sum({amount} * Fields!Tax.Value)", **MONEY)]),
                                       (0.7, [box("To pay", **HEAD), box(f"=Sum({amount} * (1 + Fields!Tax.Value))",
                                                                         **{**MONEY, **HEAD})])],
                   [group("Tax", "=Fields!Tax.Value", sort=[("=Fields!Tax.Value", "Ascending")]), member(BEFORE)],
                   top=7.6, left=10.5)
    address = box("", at(1.6, 0, 2.4, 8), runs=[[(line, {}, "")] for line in ("Dahl & Sons", "14 Quay Street", "40131 Eastport")])
    small = box("Norvale Trading, 1 Mill Lane, 40000 Norvale", at(1.1, 0, 0.45, 8), FontSize="6.5pt", TextDecoration="Underline")
    return report([data("Lines", "No:Integer Article:String Count:Integer Price:Float Tax:Float", rows)],
                  [picture("Logo", at(0, 13, 1.6, 4)), small, address,
                   box("Invoice 2026-0417", at(4.2, 0, 0.9, 10), FontSize="16pt", FontWeight="Bold"),
                   box("4 November 2026", at(4.3, 11, 0.6, 6), TextAlign="Right"), lines, taxes,
                   box("Payable within 14 days. Thank you for your order.", at(9.4, 0, 0.6, 17))],
                  height=10.2, foot=PAGES, more=embedded(Logo=LOGO))


@kind
def labels_three_columns():
    """Address labels, three across, down each column; 24 fill a sheet."""
    label = rectangle([box("=Fields!Name.Value", at(0.7, 0.5, 0.6, 5.5), FontWeight="Bold"),
                       box("=Fields!Street.Value", at(1.3, 0.5, 0.6, 5.5)), box("=Fields!Town.Value", at(1.9, 0.5, 0.6, 5.5))],
                      borders=edges(All="#C0C0C0 Dotted 0.5pt"))
    table = tablix("People", [7], [(3.7, [label])], [group("Label")])
    return report([data("People", "Name:String Street:String Town:String", PEOPLE)], [table], width=7, height=3.7,
                  margins=(0, 0, 0.05, 0), page=t("Columns", 3) + t("ColumnSpacing", "0cm"))


@kind
def letter_with_markup():
    """A form letter for each customer on pages of its own; its text has markup, lists and a table of contents."""
    html = ("<p>Dear =NAME=,</p><p>thank you for <b>ten years</b> of <i>good work</i>. We <u>owe</u> you "
            "<font color=\"#B00020\">an answer</font>:</p><ul><li>prices stay until <b>June</b></li><li>orders above 500 are "
            "delivered <s>next week</s> on the next day</li><li>returns are free</li></ul><ol><li>first</li><li>second</li></ol>"
            "<h3>What is new</h3><p>" + "The new warehouse opens in spring and shortens every way. " * 6 + "</p>")
    letter = rectangle([
        box("=Fields!Name.Value & vbCrLf & Fields!Street.Value & vbCrLf & Fields!Town.Value", at(1, 0, 2, 8)),
        box("", at(5, 0, 2, 16), runs=[[(
            '="' + html.replace('"', '""').replace("=NAME=", '" & Fields!Name.Value & "') + '"', {}, t("MarkupType", "HTML"))]],
            FontSize="11pt"),
        box("Kind regards", at(9, 0, 0.6, 8), FontSize="11pt"),
        picture("Logo", at(9.8, 0, 1.2, 3))])
    table = tablix("People", [16], [(12, [letter])], [group("Letter", "=Fields!Name.Value & Fields!Street.Value", inside=e(
        "PageBreak", t("BreakLocation", "Between")))])
    return report([data("People", "Name:String Street:String Town:String", PEOPLE[:3])], [table], more=embedded(Logo=LOGO))


@kind
def price_list_pictures():
    """Articles with a picture from the data, one of the report and a note below the row."""
    rows = [(f"Article {n}", n * 3.5, png(30, 20, lambda x, y, n=n: (n * 25 % 256, x * 8, y * 12)), n % 3 == 0) for n in range(1, 13)]
    table = tablix("Articles", [3, 5, 3, 2], [
        (0.6, boxes(["Picture", "Name", "Price", "New"], HEAD)),
        (2, [picture("=Convert.FromBase64String(Fields!Picture.Value)", "", "Database", borders=edges(All="Gray Solid 0.5pt")),
             box("=Fields!Name.Value", VerticalAlign="Middle", **GRID), box("=Fields!Price.Value", VerticalAlign="Bottom", **MONEY),
             rectangle([picture("Logo", at(0.5, 0.25, 0.75, 1.5), extra=e("Visibility", t("Hidden", "=Not Fields!New.Value")))],
                       borders=edges(All="Gray Solid 0.5pt"))])], [member(REPEATED), group("Article")])
    return report([data("Articles", "Name:String Price:Float Picture:String New:Boolean", rows)], [table], foot=PAGES,
                  more=embedded(Logo=LOGO))


@kind
def form_over_background():
    """A preprinted form as the body's background picture; the fields are placed over it."""
    form = png(170, 120, lambda x, y: (200, 215, 235) if x % 170 in (0, 169) or y in (0, 20, 60, 119) or (20 < y < 60 and x == 85)
               else (250, 250, 240))
    fields = [(0.6, 0.5, 16, "Application for a permit", "14pt"), (2.4, 0.5, 7.5, "Ann Lee", "11pt"), (2.4, 9, 7.5, "17 Mill Lane", "11pt"),
              (6.4, 0.5, 16, "Two trees on the west side are to be cut before winter. " * 4, "10pt")]
    items = [box(text, at(top, left, 0.8, width), FontSize=size) for top, left, width, text, size in fields]
    frame = rectangle(items, at(0, 0, 12, 17), name="Form", BackgroundImage="")
    image = e("BackgroundImage", t("Source", "Embedded"), t("Value", "Form"), t("BackgroundRepeat", "Fit"))
    frame = frame.replace("<BackgroundImage></BackgroundImage>", image)
    return report([], [frame], height=12, more=embedded(Form=form))


@kind
def statement_line():
    """What the statement shows inside: the open items of one customer."""
    rows = [(f"{c}", f"Invoice {c}{n}", n * 10.5) for c in (1, 2, 3) for n in range(1, 4 + 20 * (c == 2))]
    table = tablix("Items", [5, 3], [
        (0.55, boxes(["Invoice", "Open"], BOLD)), (0.55, [box("=Fields!Invoice.Value", **GRID), box("=Fields!Open.Value", **MONEY)]),
        (0.55, [box("Sum", **BOLD), box("=Sum(Fields!Open.Value)", **{**MONEY, "FontWeight": "Bold"})])],
        [member(REPEATED), group("Item"), member(BEFORE)],
        extra=e("Filters", e("Filter", t("FilterExpression", "=Fields!Customer.Value"), t("Operator", "Equal"),
                             e("FilterValues", t("FilterValue", "=Parameters!Customer.Value")))))
    parameter = e("ReportParameters", e("ReportParameter", t("DataType", "String"), t("Prompt", "Customer"), Name="Customer"))
    return report([data("Items", "Customer:String Invoice:String Open:Float", rows)], [table], width=8, height=1.7,
                  parameters=parameter)


@kind
def statement_with_subreports():
    """A row for each customer with a subreport in a cell, beside a text, and a rule below."""
    rows = [("1", "Dahl & Sons"), ("2", "Fox Ltd"), ("3", "Marsh Bros")]
    inner = e("Subreport", t("ReportName", "statement_line"), e("Parameters", e("Parameter", t(
        "Value", "=Fields!Customer.Value"), Name="Customer")), Name="Lines")
    table = tablix("Customers", [5, 8, 3], [
        (0.7, boxes(["Customer", "Open items", "Signature"], HEAD)),
        (1.7, [box("=Fields!Name.Value", **BOLD), inner, box("", **GRID)])], [member(REPEATED), group("Customer")])
    return report([data("Customers", "Customer:String Name:String", rows)], [table], foot=PAGES)


@kind
def receipt_endless():
    """Narrow paper as long as the receipt needs: one page."""
    rows = [(f"Item {n}", n * 1.1) for n in range(1, 61)]
    table = tablix("Items", [4.4, 2], [
        (0.45, [box("=Fields!Name.Value", FontFamily="Liberation Mono", FontSize="8pt"),
                box("=Fields!Price.Value", FontFamily="Liberation Mono", FontSize="8pt", Format="N2", TextAlign="Right")]),
        (0.6, boxes(["Total", "=Sum(Fields!Price.Value)"], {"FontWeight": "Bold", "Format": "N2", "borders": edges(
            Top="Black Dashed 1pt")}, c1={"TextAlign": "Right"}))], [group("Item"), member(BEFORE)], top=1)
    return report([data("Items", "Name:String Price:Float", rows)],
                  [box("Corner Shop", at(0, 0, 0.8, 6.4), TextAlign="Center", FontSize="12pt", FontWeight="Bold"), table,
                   box("Thank you!", at(2.2, 0, 0.6, 6.4), TextAlign="Center")], width=6.4, height=2.9, paper=(7.2, 60),
                  margins=(0.4, 0.4, 0.4, 0.4))


@kind
def certificate_landscape():
    """A framed certificate with a double border and centred texts."""
    frame = rectangle([box("Certificate", at(2, 0, 2, 25), FontSize="40pt", FontFamily="Liberation Serif", TextAlign="Center"),
                       box("of quality", at(4.4, 0, 1, 25), FontSize="16pt", FontStyle="Italic", TextAlign="Center"),
                       box("", at(7, 2, 2, 21), runs=[[("This is to certify that ", {}, ""), ("batch 4711", {
                           "FontWeight": "Bold", "Color": "#B00020"}, ""), (" meets every demand of the order.", {}, "")]],
                           FontSize="14pt", TextAlign="Center"),
                       rule(14, 3, 0, 7), rule(14, 15, 0, 7), box("Inspector", at(14.1, 3, 0.6, 7), TextAlign="Center"),
                       box("Manager", at(14.1, 15, 0.6, 7), TextAlign="Center")],
                      at(0, 0, 17, 25), borders=edges(All="#1F3A5F Double 6pt"), BackgroundColor="#FFFDF4")
    return report([], [frame], width=25, height=17, paper=(29.7, 21), margins=(2.3, 2.3, 1.9, 1.9))


@kind
def images_three_sizings():
    """One picture fitted, in proportion, clipped and at its own size, each in a frame of 4 by 3."""
    items = []
    for i, sizing in enumerate(("Fit", "FitProportional", "Clip", "AutoSize")):
        items += [box(sizing, at(0, i * 4.2, 0.6, 4)), picture("Quarters", at(0.7, i * 4.2, 3, 4), sizing=sizing,
                                                               borders=edges(All="Black Solid 1pt"))]
    return report([], items, more=embedded(Quarters=QUARTERS))


@kind
def packing_list_map():
    """A document map of boxes and articles, bookmarks, links to them, page breaks at the end of each box."""
    rows = [(f"Box {b}", f"Article {b}{n}", n, b * 0.5) for b in (1, 2, 3) for n in range(1, 6)]
    table = tablix("Boxes", [6, 3, 3], [
        (0.8, [(box("=Fields!Box.Value", FontSize="13pt", extra=t("Bookmark", "=Fields!Box.Value"), **HEAD), 3, 1), None, None]),
        (0.6, [box("=Fields!Article.Value", **GRID), box("=Fields!Count.Value", **NUMBER), box("=Fields!Weight.Value", **MONEY)])],
        [group("Box", "=Fields!Box.Value", members=[member(AFTER), group("Article", inside=t(
            "DocumentMapLabel", "=Fields!Article.Value"))], inside=t("DocumentMapLabel", "=Fields!Box.Value") + e(
                "PageBreak", t("BreakLocation", "Between")))], top=1.2)
    jump = e("ActionInfo", e("Actions", e("Action", t("BookmarkLink", "Box 3"))))
    return report([data("Boxes", "Box:String Article:String Count:Integer Weight:Float", rows)],
                  [box("Go to box 3", at(0, 0, 0.6, 6), extra=jump, Color="Blue", TextDecoration="Underline"), table], foot=PAGES)


@kind
def long_text_over_pages():
    """Two long texts, one beside a short one, and justified paragraphs with indents."""
    long = " ".join(f"Sentence {n} of the agreement says what both sides owe." for n in range(1, 260))
    short = box("Margin note", at(0, 13, 1, 4), BackgroundColor="#FFF4D0")
    return report([], [box(long, at(0, 0, 1, 12.5), FontSize="10pt", TextAlign="Justify"), short,
                       box("After the text", at(1.5, 0, 0.6, 12.5), FontWeight="Bold", BackgroundColor="#E8F4D8")],
                  foot=PAGES)


@kind
def drilldown_hidden_details():
    """Groups whose details start hidden, one group open, with the signs of both states."""
    rows = [(g, f"{g} item {n}", n) for g in ("Fruit", "Roots", "Seeds") for n in range(1, 5)]
    table = tablix("Stock", [5, 5, 3], [
        (0.6, [box("=Fields!Kind.Value", name="KindName", **BOLD), box("", **GRID), box("=Sum(Fields!Count.Value)", **NUMBER)]),
        (0.6, [box("", **GRID), box("=Fields!Item.Value", **GRID), box("=Fields!Count.Value", **NUMBER)])],
        [group("Kind", "=Fields!Kind.Value", members=[member(AFTER), group("Item", None, e("Visibility", t(
            "Hidden", '=Fields!Kind.Value <> "Roots"'), t("ToggleItem", "KindName")))])])
    return report([data("Stock", "Kind:String Item:String Count:Integer", rows)], [table])


@kind
def top_ten_filter():
    """The ten largest of thirty, with a rank and a share of them."""
    rows = [(f"Town {n:02d}", n * 37 % 101) for n in range(1, 31)]
    filters = e("Filters", e("Filter", t("FilterExpression", "=Fields!Sales.Value"), t("Operator", "TopN"),
                             e("FilterValues", e("FilterValue", "10", DataType="Integer"))))
    table = tablix("Towns", [2, 5, 3, 3], [
        (0.6, boxes(["Rank", "Town", "Sales", "Share"], HEAD)),
        (0.6, [box("=RowNumber(Nothing)", **NUMBER), box("=Fields!Town.Value", **GRID), box("=Fields!Sales.Value", **NUMBER),
               box('=Fields!Sales.Value / Sum(Fields!Sales.Value, "Top")', **{**NUMBER, "Format": "P1"})])],
        [member(REPEATED), group("Town", sort=[("=Fields!Sales.Value", "Descending")])], extra=filters, name="Top")
    return report([data("Towns", "Town:String Sales:Integer", rows)], [table], form="2008/01")


@kind
def price_tags():
    """Tags four across by a matrix of rows and columns computed from the row's number, with a rotated shop name."""
    rows = [(n, f"Article {n}", n * 1.99) for n in range(14)]
    tag = rectangle([box("NORVALE", at(0.1, 0.05, 2.3, 0.6), WritingMode="Rotate270", TextAlign="Center", FontSize="7pt",
                         BackgroundColor="#1F3A5F", Color="White"),
                     box("=First(Fields!Name.Value)", at(0.2, 0.8, 0.6, 3)),
                     box("=First(Fields!Price.Value)", at(0.9, 0.8, 1.2, 3), FontSize="18pt", FontWeight="Bold", Format="N2")],
                    borders=edges(All="Black Solid 1pt"))
    table = tablix("Tags", [4], [(2.5, [tag])], [group("Down", "=Fields!No.Value \\ 4")], [group("Across", "=Fields!No.Value Mod 4")])
    return report([data("Tags", "No:Integer Name:String Price:Float", rows)], [table])


@kind
def shipping_labels():
    """A label for each parcel: an article number, a link and a parcel number as bar codes."""
    rows = [(n, f"40063813339{n}", f"Parcel {n}") for n in range(1, 5)]

    def code(symbology, value, where, more=()):
        properties = (("Symbology", symbology), ("Value", value), *more)
        return e("CustomReportItem", t("Type", "BarCode"), where, e("CustomProperties", *[
            e("CustomProperty", t("Name", "Barcode:" + name), t("Value", text)) for name, text in properties]),
            e("Style", t("FontSize", "8pt")), Name=name_of("Code"))
    label = rectangle([box("=First(Fields!Name.Value)", at(0.1, 0.2, 0.6, 6), FontWeight="Bold"),
                       code("EAN-13", "=First(Fields!Article.Value)", at(0.9, 0.2, 2.2, 5.5)),
                       code("Code128", "=First(Fields!Name.Value)", at(3.4, 0.2, 1.6, 7)),
                       code("QRCode", '="https://example.com/parcels/" & First(Fields!No.Value)', at(0.5, 7.5, 3.5, 3.5),
                            [("ErrorCorrection", "H")]),
                       code("DataMatrix", '="P" & First(Fields!No.Value)', at(0.5, 12, 2.5, 2.5))],
                      borders=edges(All="Black Solid 1pt"))
    table = tablix("Parcels", [16], [(5.4, [label])], [group("Parcel", "=Fields!No.Value")])
    return report([data("Parcels", "No:Integer Article:String Name:String", rows)], [table])


@kind
def dunning_2005():
    """A reminder in the form of 2005: a table with a header, a group, details and footers, and a list of demands."""
    rows = [(f"Customer {c}", f"2026-0{n}-15", n * 40.5 * c, n * 10) for c in (1, 2) for n in range(1, 5)]

    def old(value, **look):
        return e("Textbox", t("Value", value), t("CanGrow", "true"), e("Style", *[t(*pair) for pair in look.items()], e(
            "BorderStyle", t("Bottom", "Solid"))), Name=name_of("Old"))

    def old_rows(*values, **look):
        return e("TableRows", e("TableRow", t("Height", "0.6cm"), e("TableCells", *[e("TableCell", e("ReportItems", old(
            value, **look))) for value in values])))
    amount = "=Sum(Fields!Open.Value)"
    table = e("Table", t("DataSetName", "Open"), at(1.5, 0, 3, 12),
              e("Header", t("RepeatOnNewPage", "true"), old_rows("Due", "Days late", "Open", FontWeight="Bold")),
              e("TableColumns", *[e("TableColumn", t("Width", "4cm"))] * 3),
              e("TableGroups", e("TableGroup", e("Grouping", e("GroupExpressions", t("GroupExpression", "=Fields!Customer.Value")),
                                                 t("PageBreakAtEnd", "true"), Name="ByCustomer"),
                                 e("Header", old_rows("=Fields!Customer.Value", "", "", FontSize="14pt")),
                                 e("Footer", old_rows("Sum", "", amount, Format="N2")))),
              e("Details", old_rows("=Fields!Due.Value", '=Fields!Late.Value & IIf(Fields!Late.Value > 25, " !", "")', "=Fields!Open.Value",
                                    Format="N2", Color='=IIf(Fields!Late.Value > 25, "Red", "Black")')), Name="Demands")
    title = e("Textbox", t("Value", "Reminder"), at(0, 0, 1, 12), e("Style", t("FontSize", "18pt")), Name="Title")
    source = e("DataSources", e("DataSource", e("ConnectionProperties", t("DataProvider", "ENTERDATA"), t("ConnectString", "")), Name="Rows"))
    return ('<?xml version="1.0" encoding="utf-8"?><Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2005/01/reportdefinition">'
            + source + e("DataSets", data("Open", "Customer:String Due:String Open:Float Late:Integer", rows))
            + e("Body", e("ReportItems", title, table), t("Height", "5cm")) + t("Width", "12cm") + t("PageWidth", "21cm")
            + t("PageHeight", "29.7cm") + t("LeftMargin", "2cm") + t("TopMargin", "2cm") + "</Report>")
