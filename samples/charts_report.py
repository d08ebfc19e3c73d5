# SPDX-License-Identifier: GPL-3.0-or-later
"""The year in pictures: months with two axes, regions as bars, categories as a doughnut."""
from rdl import (NAVY, SLATE, data_set, data_source, element, footer_with_pages, line, page, parameter, place, report,
                 text, textbox, title_property)

# By the dates, which have an index: the year of each order would be computed for every order.
OF_THE_YEAR = "o.order_date between @Year || '-01-01' and @Year || '-12-31' and o.status <> 'returned'"
REVENUE = "sum(l.quantity * l.unit_price * (1 - l.discount)) as revenue"
AMBER, TEAL = "#E9A23B", "#38A3A5"


def letters(size, colour=SLATE, **more):
    return element("Style", *[text(name, value) for name, value in more.items()], text("FontFamily", "Arial"),
                   text("FontSize", size), text("Color", colour))


def _group(name, expression):
    return element("ChartMember",
                   element("Group", element("GroupExpressions", text("GroupExpression", expression)), Name=name),
                   text("Label", expression))


def _series(name, value, kind, subtype, *more, label="", colour=""):
    point = element("ChartDataPoint", element("ChartDataPointValues", text("Y", value)), label,
                    element("Style", text("Color", colour)) if colour else "")
    return element("ChartSeries", element("ChartDataPoints", point), text("Type", kind), text("Subtype", subtype),
                   element("Style", text("Color", colour)) if colour else "", *more, Name=name)


def _label(source, form="", colour=""):
    return element("ChartDataLabel", element("Style", text("FontSize", "8pt"), text("Format", form) if form else "",
                                             text("Color", colour) if colour else ""),
                   text("Label", source), text("Visible", "true"))


def _axis(name, *content, title="", form=""):
    caption = element("ChartAxisTitle", text("Caption", title), letters("8pt")) if title else ""
    return element("ChartAxis", letters("8pt", **({"Format": form} if form else {})), caption, *content, Name=name)


def _chart(name, data_name, title, categories, series_members, series, axes, legend, where):
    category_axes, value_axes = axes
    area = element("ChartArea", element("ChartCategoryAxes", category_axes),
                   element("ChartValueAxes", *value_axes), Name="Default")
    return element(
        "Chart", element("ChartCategoryHierarchy", element("ChartMembers", categories)),
        element("ChartSeriesHierarchy", element("ChartMembers", *series_members)),
        element("ChartData", element("ChartSeriesCollection", *series)), element("ChartAreas", area),
        element("ChartLegends", element("ChartLegend", letters("8pt"), text("Position", legend), Name="Legend"))
        if legend else "",
        element("ChartTitles", element("ChartTitle", text("Caption", title),
                                       letters("11pt", NAVY, FontWeight="Bold"), Name="Title")),
        text("Palette", "Pacific"),
        element("ChartNoDataMessage", text("Caption", "No orders in this year"), letters("10pt"), Name="NoData"),
        text("DataSetName", data_name), where, Name=name)


def _months():
    members = [element("ChartMember", text("Label", label)) for label in ("Revenue", "Orders")]
    series = [_series("Revenue", "=Sum(Fields!revenue.Value)", "Column", "Plain", colour=NAVY),
              _series("Orders", "=Sum(Fields!orders.Value)", "Line", "Plain",
                      element("ChartMarker", text("Type", "Circle"), text("Size", "5pt")),
                      text("ValueAxisName", "Secondary"), colour=AMBER)]
    values = [_axis("Primary", element("ChartMajorGridLines"), title="Revenue in euro", form="N0"),
              _axis("Secondary", title="Orders", form="N0")]
    return _chart("MonthChart", "Months", "Revenue and orders by month",
                  _group("Month", "=MonthName(Fields!month.Value, True)"), members, series,
                  (_axis("Primary"), values), "BottomCenter", place(2.6, 0, 8.4, 17))


def _regions():
    series = [_series("RegionRevenue", "=Sum(Fields!revenue.Value)", "Bar", "Plain", colour=TEAL,
                      label=_label("=Sum(Fields!revenue.Value)", "N0"))]
    values = [_axis("Primary", element("ChartMajorGridLines"), form="#,##0,K")]
    return _chart("RegionChart", "Regions", "Revenue by region", _group("Region", "=Fields!region.Value"),
                  [element("ChartMember", text("Label", "Revenue"))], series, (_axis("Primary"), values), "",
                  place(11.4, 0, 7.6, 9.2))


def _categories():
    series = [_series("CategoryRevenue", "=Sum(Fields!revenue.Value)", "Shape", "Doughnut",
                      label=_label("#PERCENT{P0}"))]
    return _chart("CategoryChart", "Categories", "Revenue by category", _group("Category", "=Fields!category.Value"),
                  [element("ChartMember", text("Label", "Revenue"))], series,
                  (_axis("Primary"), [_axis("Primary")]), "BottomCenter", place(11.4, 9.6, 7.6, 7.4))


def charts():
    given = {"@Year": "=Parameters!Year.Value"}
    lines = "from orders o join order_lines l on l.order_id = o.order_id"
    months = f"""select cast(strftime('%m', o.order_date) as integer) as month, count(distinct o.order_id) as orders,
       {REVENUE}
{lines} where {OF_THE_YEAR} group by month order by month"""
    regions = f"""select r.name as region, {REVENUE}
{lines} join customers c on c.customer_id = o.customer_id join regions r on r.region_id = c.region_id
where {OF_THE_YEAR} group by r.region_id order by revenue, r.name"""
    categories = f"""select p.category as category, {REVENUE}
{lines} join products p on p.product_id = l.product_id
where {OF_THE_YEAR} group by p.category order by revenue desc, p.category"""
    items = [textbox("Heading", '="Sales " & Parameters!Year.Value', place(0.2, 0, 1.1, 17), FontSize="22pt",
                     FontWeight="Bold", Color=NAVY, PaddingLeft="0pt"),
             textbox("Slogan", "The year in pictures", place(1.3, 0, 0.7, 17), FontSize="10pt", Color=SLATE,
                     PaddingLeft="0pt"),
             line("HeadingRule", 2.2, 0, 17, NAVY, "1.5pt"), _months(), _regions(), _categories()]
    body = element("Body", element("ReportItems", *items), text("Height", "19.2cm"))
    years = [(str(year), str(year)) for year in (2024, 2025, 2026)]
    return report(
        "2016/01", text("Description", "Charts of a year"), text("Author", "Norvale Trading"), data_source(),
        element("DataSets",
                data_set("Months", months, [("month", "Int32"), ("orders", "Int64"), ("revenue", "Double")], given),
                data_set("Regions", regions, [("region", "String"), ("revenue", "Double")], given),
                data_set("Categories", categories, [("category", "String"), ("revenue", "Double")], given)),
        element("ReportSections",
                element("ReportSection", body, text("Width", "17cm"), page("", footer_with_pages()))),
        element("ReportParameters", parameter("Year", "Integer", "Year", ["2025"], years)),
        title_property("Sales charts"), text("Language", "en-GB"))
