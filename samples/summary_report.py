# SPDX-License-Identifier: GPL-3.0-or-later
"""The year on one page: mark, key figures, best products and months."""
import base64

import logo
from rdl import (MIST, NAVY, RULE, SLATE, border, data_set, data_source, element, footer_with_pages, header_member,
                 line, member, page, parameter, place, report, row, tablix, text, textbox, title_property,
                 total_member)

HEAD = {"BackgroundColor": NAVY, "Color": "#FFFFFF", "FontWeight": "Bold", "FontSize": "8.5pt"}
LINE = {"FontSize": "8.5pt", "borders": border("BottomBorder", RULE, "0.5pt")}
# By the dates, which have an index: the year of each order would be computed for every order.
OF_THE_YEAR = "o.order_date between @Year || '-01-01' and @Year || '-12-31' and o.status <> 'returned'"


def _figure(number, left, label, value, form):
    """One key figure: a shaded card with the value above its label."""
    return element(
        "Rectangle", element(
            "ReportItems",
            textbox(f"Value{number}", value, place(0.25, 0.1, 0.9, 3.8), FontSize="15pt", FontWeight="Bold",
                    Color=NAVY, Format=form, TextAlign="Center", grow=False),
            textbox(f"Label{number}", label, place(1.15, 0.1, 0.55, 3.8), FontSize="8pt", Color=SLATE,
                    TextAlign="Center", grow=False)),
        text("KeepTogether", "true"), place(3.1, left, 1.9, 4),
        element("Style", border("TopBorder", NAVY, "2pt"), text("BackgroundColor", MIST)), Name=f"Card{number}")


def _products():
    rows = [
        row(0.6, [textbox("ProductHead1", "Best products", **HEAD),
                  textbox("ProductHead2", "Units", TextAlign="Right", **HEAD),
                  textbox("ProductHead3", "Revenue EUR", TextAlign="Right", **HEAD)]),
        row(0.55, [textbox("Product", "=Fields!product.Value", **LINE),
                   textbox("ProductUnits", "=Fields!units.Value", TextAlign="Right", Format="N0", **LINE),
                   textbox("ProductRevenue", "=Fields!revenue.Value", TextAlign="Right", Format="N0", **LINE)]),
    ]
    return tablix("ProductTable", "Products", [5.2, 1.5, 2.3], rows,
                  [header_member(), member(element("Group", Name="ProductRows"))], 6.2, 0)


def _months():
    total = {"FontSize": "8.5pt", "FontWeight": "Bold", "borders": border("TopBorder", NAVY)}
    rows = [
        row(0.6, [textbox("MonthHead1", "Month", **HEAD), textbox("MonthHead2", "Orders", TextAlign="Right", **HEAD),
                  textbox("MonthHead3", "Revenue EUR", TextAlign="Right", **HEAD)]),
        row(0.55, [textbox("Month", "=MonthName(Fields!month.Value)", **LINE),
                   textbox("MonthOrders", "=Fields!orders.Value", TextAlign="Right", Format="N0", **LINE),
                   textbox("MonthRevenue", "=Fields!revenue.Value", TextAlign="Right", Format="N0", **LINE)]),
        row(0.6, [textbox("YearLabel", "Year", **total),
                  textbox("YearOrders", "=Sum(Fields!orders.Value)", TextAlign="Right", Format="N0", **total),
                  textbox("YearRevenue", "=Sum(Fields!revenue.Value)", TextAlign="Right", Format="N0", **total)]),
    ]
    return tablix("MonthTable", "Months", [3.2, 1.6, 2.6], rows,
                  [header_member(), member(element("Group", Name="MonthRows")), total_member()], 6.2, 9.6)


def summary():
    given = {"@Year": "=Parameters!Year.Value"}
    products = f"""select p.name as product, sum(l.quantity) as units,
       sum(l.quantity * l.unit_price * (1 - l.discount)) as revenue
from orders o join order_lines l on l.order_id = o.order_id join products p on p.product_id = l.product_id
where {OF_THE_YEAR}
group by p.product_id order by revenue desc, p.name limit 12"""
    months = f"""select cast(strftime('%m', o.order_date) as integer) as month, count(distinct o.order_id) as orders,
       count(distinct o.customer_id) as customers, sum(l.quantity * l.unit_price * (1 - l.discount)) as revenue
from orders o join order_lines l on l.order_id = o.order_id
where {OF_THE_YEAR}
group by month order by month"""
    figures = [("Revenue in euro", '=Sum(Fields!revenue.Value, "Months")', "N0"),
               ("Orders", '=Sum(Fields!orders.Value, "Months")', "N0"),
               ("Average order in euro",
                '=Sum(Fields!revenue.Value, "Months") / Sum(Fields!orders.Value, "Months")', "N2"),
               ("Best month in euro", '=Max(Fields!revenue.Value, "Months")', "N0")]
    cards = [_figure(n + 1, n * 4.333, label, value, form) for n, (label, value, form) in enumerate(figures)]
    mark = element("Image", text("Source", "Embedded"), text("Value", "Mark"), text("Sizing", "FitProportional"),
                   place(0.1, 0, 2.2, 2.2), element("Style"), Name="MarkImage")
    items = [mark,
             textbox("Heading", '="Sales " & Parameters!Year.Value', place(0.2, 2.6, 1.1, 14.4), FontSize="22pt",
                     FontWeight="Bold", Color=NAVY),
             textbox("Slogan", "The year on one page", place(1.35, 2.6, 0.7, 14.4), FontSize="10pt", Color=SLATE),
             line("HeadingRule", 2.7, 0, 17, NAVY, "1.5pt"), *cards, _products(), _months()]
    body = element("Body", element("ReportItems", *items), text("Height", "14cm"))
    images = element("EmbeddedImages",
                     element("EmbeddedImage", text("MIMEType", "image/png"),
                             text("ImageData", base64.b64encode(logo.png()).decode("ascii")), Name="Mark"))
    years = [(str(year), str(year)) for year in (2024, 2025, 2026)]
    product_fields = [("product", "String"), ("units", "Int64"), ("revenue", "Double")]
    month_fields = [("month", "Int32"), ("orders", "Int64"), ("customers", "Int64"), ("revenue", "Double")]
    return report(
        "2016/01", text("Description", "Key figures of a year on one page"), text("Author", "Norvale Trading"),
        data_source(),
        element("DataSets", data_set("Products", products, product_fields, given),
                data_set("Months", months, month_fields, given)),
        element("ReportSections",
                element("ReportSection", body, text("Width", "17cm"), page("", footer_with_pages()))),
        element("ReportParameters", parameter("Year", "Integer", "Year", ["2025"], years)), images,
        title_property("Sales summary"), text("Language", "en-GB"))
