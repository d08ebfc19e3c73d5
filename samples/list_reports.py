# SPDX-License-Identifier: GPL-3.0-or-later
"""Sales by region (grouped, with totals and shares) and the order list (many pages)."""
from rdl import (MIST, NAVY, RULE, SLATE, border, data_set, data_source, element, footer_with_pages, header_member, line,
                 member, page, page_section, parameter, place, report, row, tablix, text, textbox, title_property,
                 total_member)

REVENUE = "sum(l.quantity * l.unit_price * (1 - l.discount))"


def _cells(prefix, values, base, formats=None):
    """One text box for each value; all but those that begin a row stand to the right when they have a format."""
    items = []
    for number, value in enumerate(values):
        style = dict(base)
        if formats and formats[number]:
            style["TextAlign"] = "Right"
            if formats[number] != "right":
                style["Format"] = formats[number]
        items.append(textbox(f"{prefix}{number + 1}", value, **style))
    return items


HEAD = {"BackgroundColor": NAVY, "Color": "#FFFFFF", "FontWeight": "Bold", "VerticalAlign": "Middle"}


def _banner(title, subtitle):
    return page_section(
        "PageHeader", 2,
        textbox("Banner", title, place(0, 0, 0.9, 17), FontSize="17pt", FontWeight="Bold", Color=NAVY,
                PaddingLeft="0pt"),
        textbox("Subtitle", subtitle, place(0.95, 0, 0.6, 17), FontSize="9pt", Color=SLATE, PaddingLeft="0pt"),
        line("BannerRule", 1.7, 0, 17, NAVY, "1.5pt"))


def sales_by_region():
    formats = ["", "N0", "N0", "N2", "P1"]
    head_formats = ["", "right", "right", "right", "right"]
    sums = ["=Sum(Fields!orders.Value)", "=Sum(Fields!units.Value)", "=Sum(Fields!revenue.Value)",
            '=Sum(Fields!revenue.Value) / Sum(Fields!revenue.Value, "ByCustomer")']
    region = {"BackgroundColor": MIST, "FontWeight": "Bold", "Color": NAVY, "borders": border("BottomBorder", NAVY)}
    country = {"borders": border("BottomBorder", RULE, "0.5pt")}
    subtotal = {"FontWeight": "Bold", "PaddingBottom": "8pt"}
    total = {"FontWeight": "Bold", "BackgroundColor": NAVY, "Color": "#FFFFFF"}
    rows = [
        row(0.7, _cells("Head", ["Country", "Orders", "Units", "Revenue EUR", "Share"], HEAD, head_formats)),
        row(0.65, _cells("Region", ["=Fields!region.Value", "", "", "", ""], region)),
        row(0.6, _cells("Country", ["=Fields!country.Value"] + sums, {**country}, formats)),
        row(0.7, _cells("Subtotal", ['="Total " & Fields!region.Value'] + sums, subtotal, formats)),
        row(0.75, _cells("Total", ["All regions"] + sums, total, formats)),
    ]

    def group(name, field_name, *content):
        return member(element("Group", element("GroupExpressions",
                                               text("GroupExpression", f"=Fields!{field_name}.Value")), Name=name),
                      element("SortExpressions",
                              element("SortExpression", text("Value", f"=Fields!{field_name}.Value"))), *content)

    members = [header_member(),
               group("RegionGroup", "region", element("TablixMembers", member(text("KeepWithGroup", "After")),
                                                      group("CountryGroup", "country"), total_member())),
               total_member()]
    query = f"""select r.name as region, c.country, c.company, count(distinct o.order_id) as orders,
       sum(l.quantity) as units, {REVENUE} as revenue
from orders o join customers c on c.customer_id = o.customer_id join regions r on r.region_id = c.region_id
     join order_lines l on l.order_id = o.order_id
where o.order_date between @Year || '-01-01' and @Year || '-12-31' and o.status <> 'returned'
group by r.name, c.country, c.company
order by r.name, c.country, c.company"""
    fields = [("region", "String"), ("country", "String"), ("company", "String"), ("orders", "Int64"),
              ("units", "Int64"), ("revenue", "Double")]
    body = element("Body", element("ReportItems", tablix("SalesTable", "ByCustomer", [6.2, 2.2, 2.4, 3.8, 2.4], rows,
                                                         members, 0.2, 0)), text("Height", "4cm"))
    years = [(str(year), str(year)) for year in (2024, 2025, 2026)]
    return report(
        "2016/01", text("Description", "Revenue of a year by region and country, with its share of the whole"),
        text("Author", "Norvale Trading"), data_source(),
        element("DataSets", data_set("ByCustomer", query, fields, {"@Year": "=Parameters!Year.Value"})),
        element("ReportSections",
                element("ReportSection", body, text("Width", "17cm"),
                        page(_banner("Sales by region", '="Orders placed in " & Parameters!Year.Value & '
                                                        '", returns left out; amounts in euro without VAT"'),
                             footer_with_pages()))),
        element("ReportParameters", parameter("Year", "Integer", "Year", ["2025"], years)),
        title_property("Sales by region"), text("Language", "en-GB"))


def order_list():
    formats = ["", "dd MMM yyyy", "", "", "N0", "N2"]
    values = ["=Fields!order_id.Value", "=Fields!order_date.Value", "=Fields!company.Value", "=Fields!place.Value",
              "=Fields!lines.Value", "=Fields!total.Value"]
    ledger = {"FontSize": "8.5pt", "borders": border("BottomBorder", RULE, "0.5pt"),
              "BackgroundColor": f'=IIf(RowNumber(Nothing) Mod 2 = 0, "{MIST}", "#FFFFFF")'}
    total = {"FontWeight": "Bold", "borders": border("TopBorder", NAVY, "1pt")}
    heads = ["Order", "Date", "Customer", "City, country", "Lines", "Total EUR"]
    rows = [
        row(0.7, _cells("Head", heads, HEAD, ["", "right", "", "", "right", "right"])),
        row(0.55, _cells("Cell", values, ledger, formats)),
        row(0.7, _cells("Sum", ['=CountRows() & " orders"', "", "", "", "=Sum(Fields!lines.Value)",
                                "=Sum(Fields!total.Value)"], total, ["", "", "", "", "N0", "N2"])),
    ]
    members = [header_member(), member(element("Group", Name="Details")), total_member()]
    query = """select o.order_id, o.order_date, c.company, c.city || ', ' || c.country as place, count(*) as lines,
       sum(l.quantity * l.unit_price * (1 - l.discount)) as total
from orders o join customers c on c.customer_id = o.customer_id join order_lines l on l.order_id = o.order_id
where o.order_date >= @FromDate and o.order_date <= @UntilDate
group by o.order_id
order by o.order_date, o.order_id"""
    fields = [("order_id", "Int64"), ("order_date", "DateTime"), ("company", "String"), ("place", "String"),
              ("lines", "Int64"), ("total", "Double")]
    body = element("Body", element("ReportItems", tablix("OrderTable", "Orders", [1.6, 2.4, 5.2, 4.4, 1.2, 2.2], rows,
                                                         members, 0.1, 0)), text("Height", "3cm"))
    period = ('="From " & Format(Parameters!FromDate.Value, "d MMMM yyyy") & " to " & '
              'Format(Parameters!UntilDate.Value, "d MMMM yyyy")')
    given = {"@FromDate": "=Parameters!FromDate.Value", "@UntilDate": "=Parameters!UntilDate.Value"}
    return report(
        "2008/01", text("Description", "Every order of a period with its customer and total"),
        text("Author", "Norvale Trading"), data_source(),
        element("DataSets", data_set("Orders", query, fields, given)), body,
        element("ReportParameters", parameter("FromDate", "DateTime", "From", ["2024-01-01"]),
                parameter("UntilDate", "DateTime", "Until", ["2026-12-31"])),
        title_property("Order list"), text("Width", "17cm"),
        page(_banner("Order list", period), footer_with_pages()), text("Language", "en-GB"))
