# SPDX-License-Identifier: GPL-3.0-or-later
"""An invoice in the form of 2005: a letter with address, a table of lines, VAT and the bank's details."""
from rdl import NAVY, RULE, SLATE, cm, data_set, data_source, element, parameter, place, report, text, title_property

NET = "Sum(Fields!amount.Value)"
VAT_RATE = 'IIf(First(Fields!country.Value, "Head") = "Germany", 0.19, 0)'


def _box(name, value, where="", edges=None, **style):
    """A text box of that form has its value and its whole style in itself."""
    style = {"FontFamily": "Arial", "FontSize": "9.5pt", "PaddingLeft": "2pt", "PaddingRight": "2pt",
             "PaddingTop": "2pt", "PaddingBottom": "2pt", **style}
    lines = ""
    for part, setting in (("BorderColor", NAVY), ("BorderStyle", "Solid"), ("BorderWidth", "0.75pt")):
        lines += element(part, *[text(edge, setting) for edge in edges or []]) if edges else ""
    return element("Textbox", where, text("CanGrow", "true"), text("Value", value),
                   element("Style", lines, *[text(key, setting) for key, setting in style.items()]), Name=name)


def _row(height, boxes):
    return element("TableRow", text("Height", cm(height)),
                   element("TableCells", *[element("TableCell", element("ReportItems", box)) for box in boxes]))


def _sum_row(name, label, value, **style):
    blank = [_box(f"{name}Blank{number}", "") for number in range(3)]
    return _row(0.6, blank + [_box(f"{name}Label", label, **style),
                              _box(f"{name}Value", value, TextAlign="Right", Format="N2", **style)])


def _lines():
    head = {"FontWeight": "Bold", "Color": NAVY, "edges": ["Bottom"]}
    right = {"TextAlign": "Right"}
    header = element("Header", element("TableRows", _row(0.65, [
        _box("HeadPosition", "Pos.", **head), _box("HeadItem", "Article", **head),
        _box("HeadQuantity", "Quantity", **right, **head), _box("HeadPrice", "Price", **right, **head),
        _box("HeadAmount", "Amount EUR", **right, **head)])), text("RepeatOnNewPage", "true"))
    article = '=Fields!product.Value & IIf(Fields!discount.Value > 0, " (less " & ' \
              'Format(Fields!discount.Value, "P0") & ")", "")'
    details = element("Details", element("TableRows", _row(0.6, [
        _box("Position", "=Fields!line_no.Value"), _box("Item", article),
        _box("Quantity", "=Fields!quantity.Value", Format="N0", **right),
        _box("Price", "=Fields!unit_price.Value", Format="N2", **right),
        _box("Amount", "=Fields!amount.Value", Format="N2", **right)])))
    vat_label = f'="VAT " & Format({VAT_RATE}, "P0")'
    footer = element("Footer", element(
        "TableRows", _sum_row("Net", "Net", f"={NET}", edges=["Top"]),
        _sum_row("Vat", vat_label, f"={NET} * {VAT_RATE}"),
        _sum_row("Gross", "Amount due", f"={NET} * (1 + {VAT_RATE})", FontWeight="Bold", Color=NAVY,
                 edges=["Top", "Bottom"])))
    columns = element("TableColumns", *[element("TableColumn", text("Width", cm(width)))
                                        for width in (1.2, 8.2, 2, 2.8, 2.8)])
    return element("Table", text("DataSetName", "Lines"), place(9.2, 0, 3.1, 17), columns, header, details, footer,
                   Name="LineTable")


def _head(expression):
    return f'=First(Fields!{expression}.Value, "Head")'


def _letter():
    first = 'First(Fields!{}.Value, "Head")'
    address = " & vbCrLf & ".join(first.format(name) for name in ("company", "contact", "street"))
    place_line = f'{first.format("postal_code")} & " " & {first.format("city")}'
    info = [("Invoice no.", _head("order_id"), ""), ("Date", _head("order_date"), "d MMMM yyyy"),
            ("Customer no.", _head("customer_id"), ""),
            ("Your VAT no.", f'=IIf(IsNothing({first.format("vat_id")}), "–", {first.format("vat_id")})', "")]
    items = [
        _box("House", "Norvale Trading", place(0, 0, 1, 9), FontSize="18pt", FontWeight="Bold", Color=NAVY),
        _box("Sender", "Norvale Trading · Quay Street 12 · 23552 Lübeck", place(2.6, 0, 0.5, 9), FontSize="7pt",
             Color=SLATE),
        _box("Address", f'={address} & vbCrLf & {place_line} & vbCrLf & UCase({first.format("country")})',
             place(3.1, 0, 2.8, 9), FontSize="10.5pt"),
        _box("InvoiceTitle", '="Invoice " & ' + first.format("order_id"), place(7, 0, 0.9, 17), FontSize="15pt",
             FontWeight="Bold", Color=NAVY),
        _box("Opening", "Thank you for your order. We have delivered the following goods:", place(8, 0, 0.7, 17)),
        _lines(),
        _box("Closing", '="Please pay within 30 days, until " & Format(DateAdd("d", 30, '
             + first.format("order_date") + '), "d MMMM yyyy") & ", naming the invoice number."',
             place(12.8, 0, 0.7, 17)),
        _box("Greeting", '="Kind regards" & vbCrLf & "Norvale Trading"', place(13.8, 0, 1.1, 17)),
    ]
    for number, (label, value, form) in enumerate(info):
        top = 3.1 + number * 0.6
        items.append(_box(f"InfoLabel{number + 1}", label, place(top, 10.6, 0.55, 2.8), Color=SLATE))
        style = {"Format": form} if form else {}
        items.append(_box(f"InfoValue{number + 1}", value, place(top, 13.4, 0.55, 3.6), TextAlign="Right", **style))
    return element("Body", element("ReportItems", *items), text("Height", "15cm"))


def _bank_footer():
    columns = [('="Norvale Trading" & vbCrLf & "Quay Street 12" & vbCrLf & "23552 Lübeck"', 0, "Left"),
               ('="Hansa Commerce Bank" & vbCrLf & "IBAN DE02 1203 0000 0000 2020 51" & vbCrLf & "BIC BYLADEM1001"',
                5.6, "Left"),
               ('="VAT no. DE 123456789" & vbCrLf & "Page " & Globals!PageNumber & " of " & Globals!TotalPages',
                11.6, "Right")]
    boxes = [_box(f"Bank{number + 1}", value, place(0.25, left, 1.4, 5.4), FontSize="7.5pt", Color=SLATE,
                  TextAlign=align) for number, (value, left, align) in enumerate(columns)]
    rule = element("Line", place(0.1, 0, 0, 17),
                   element("Style", element("BorderColor", text("Default", RULE)),
                           element("BorderStyle", text("Default", "Solid"))), Name="BankRule")
    return element("PageFooter", text("Height", "1.8cm"), text("PrintOnFirstPage", "true"),
                   text("PrintOnLastPage", "true"), element("ReportItems", rule, *boxes))


def invoice():
    head = """select o.order_id, o.order_date, c.customer_id, c.company, c.contact, c.street, c.postal_code, c.city,
       c.country, c.vat_id
from orders o join customers c on c.customer_id = o.customer_id
where o.order_id = @OrderID"""
    lines = """select l.line_no, p.name as product, l.quantity, l.unit_price, l.discount,
       round(l.quantity * l.unit_price * (1 - l.discount), 2) as amount
from order_lines l join products p on p.product_id = l.product_id
where l.order_id = @OrderID
order by l.line_no"""
    given = {"@OrderID": "=Parameters!OrderID.Value"}
    head_fields = [("order_id", "Int64"), ("order_date", "DateTime"), ("customer_id", "Int64"), ("company", "String"),
                   ("contact", "String"), ("street", "String"), ("postal_code", "String"), ("city", "String"),
                   ("country", "String"), ("vat_id", "String")]
    line_fields = [("line_no", "Int64"), ("product", "String"), ("quantity", "Int64"), ("unit_price", "Double"),
                   ("discount", "Double"), ("amount", "Double")]
    sizes = "".join(text(name, value) for name, value in (
        ("PageHeight", "29.7cm"), ("PageWidth", "21cm"), ("LeftMargin", "2cm"), ("RightMargin", "2cm"),
        ("TopMargin", "2cm"), ("BottomMargin", "1.5cm")))
    return report(
        "2005/01", text("Description", "The invoice of one order"), text("Author", "Norvale Trading"), sizes,
        data_source(),
        element("DataSets", data_set("Head", head, head_fields, given), data_set("Lines", lines, line_fields, given)),
        element("ReportParameters", parameter("OrderID", "Integer", "Order number", ["10042"])),
        title_property("Invoice"), text("Width", "17cm"), _letter(), _bank_footer(), text("Language", "en-GB"))
