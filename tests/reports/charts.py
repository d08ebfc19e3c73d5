# SPDX-License-Identifier: GPL-3.0-or-later
"""A page for each family of charts."""
from kit import at, box, data, e, kind, name_of, report, t
from tables import HEAD

WHEEL = [(team, skill, (len(team) * 7 + i * 23) % 60 + 40) for team in ("Blue", "Crimson")
         for i, skill in enumerate(("Speed", "Range", "Comfort", "Price", "Service"))]
STEPS = [("Visitors", 1000), ("Enquiries", 420), ("Offers", 260), ("Orders", 90)]
STOCK = [(land, kind_of, item, (len(item) * 37 + len(kind_of) * 11) % 90 + 10) for land, kind_of, item in (
    ("Norvale", "Fruit", "Apples"), ("Norvale", "Fruit", "Pears"), ("Norvale", "Roots", "Beets"),
    ("Eastport", "Fruit", "Plums"), ("Eastport", "Roots", "Carrots"), ("Eastport", "Roots", "Swedes"))]
PRICES = [(f"2026-03-{day:02d}", 45 + day * 5 % 9, 42 + day * 7 % 13) for day in range(2, 12)]
DAYS = [(day, max(first, last) + 2 + first % 4, min(first, last) - 1 - last % 5, first, last) for day, first, last in PRICES]


def groups(*keys):
    """Groups within each other, the first one outermost."""
    inner = groups(*keys[1:]) if len(keys) > 1 else ""
    return e("ChartMembers", e("ChartMember", e("Group", e("GroupExpressions", t("GroupExpression", keys[0])), Name=name_of("Group")), inner))


def drawing(types, values, data_set, title, where, categories, series=(), label="", custom=(), legend=True, axis=""):
    """types: "Polar Radar". values: dict of the point's elements."""
    kind_of, subtype = types.split()
    label = e("ChartDataLabel", t("Label", label), t("Visible", "true")) if label else ""
    attributes = e("CustomProperties", *[e("CustomProperty", t("Name", name), t("Value", value)) for name, value in custom]) if custom else ""
    point = e("ChartDataPoint", e("ChartDataPointValues", *[t(*pair) for pair in values.items()]), label)
    row = e("ChartSeries", e("ChartDataPoints", point), t("Type", kind_of), t("Subtype", subtype), attributes, Name="Series")
    grid = e("ChartMajorGridLines", t("Enabled", "True"))
    axes = "".join(e(name, e("ChartAxis", grid, more, Name="Primary")) for name, more in (("ChartCategoryAxes", ""), ("ChartValueAxes", axis)))
    return e("Chart", e("ChartCategoryHierarchy", groups(*categories)),
             e("ChartSeriesHierarchy", groups(*series) if series else e("ChartMembers", e("ChartMember"))),
             e("ChartData", e("ChartSeriesCollection", row)), e("ChartAreas", e("ChartArea", axes, Name="Area")),
             e("ChartLegends", e("ChartLegend", t("Position", "BottomCenter"), Name="Legend")) if legend else "",
             e("ChartTitles", e("ChartTitle", t("Caption", title), Name="Title")), t("DataSetName", data_set), where, Name=name_of("Chart"))


def field(name):
    return f"=Fields!{name}.Value"


def total(name):
    return f"=Sum(Fields!{name}.Value)"


@kind
def charts_around_a_centre():
    """Polar and radar charts, with circles and with corners."""
    wheel = data("Wheel", "Team:String Skill:String Mark:Integer", WHEEL)
    angles = data("Wind", "Angle:Integer Force:Integer", [(angle, 30 + angle * 7 % 50) for angle in range(0, 361, 15)])
    mark = {"Y": total("Mark")}
    return report([wheel, angles], [
        box("Around a centre", at(0, 0, 0.8, 17), **HEAD),
        drawing("Polar Radar", mark, "Wheel", "Teams", at(1, 0, 7, 8.2), [field("Skill")], [field("Team")]),
        drawing("Polar Radar", mark, "Wheel", "Lines and corners", at(1, 8.6, 7, 8.2), [field("Skill")], [field("Team")],
                custom=[("RadarDrawingStyle", "Line"), ("AreaDrawingStyle", "Polygon")]),
        drawing("Polar Plain", {"X": total("Angle"), "Y": total("Force")}, "Wind", "Wind by angle", at(8.4, 0, 7, 8.2), [field("Angle")],
                legend=False),
        drawing("Polar Plain", mark, "Wheel", "Points", at(8.4, 8.6, 7, 8.2), [field("Skill")], [field("Team")],
                custom=[("PolarDrawingStyle", "Marker")], label="#VALY")], height=16)


@kind
def charts_of_a_whole():
    """Funnels, pyramids, tree maps and sunbursts."""
    sets = [data("Steps", "Step:String People:Integer", STEPS), data("Stock", "Land:String Kind:String Item:String Boxes:Integer", STOCK)]
    people, stored = {"Y": total("People")}, {"Y": total("Boxes")}
    levels = [field("Land"), field("Kind"), field("Item")]
    return report(sets, [
        box("Of a whole", at(0, 0, 0.8, 17), **HEAD),
        drawing("Shape Funnel", people, "Steps", "Funnel", at(1, 0, 7, 8.2), [field("Step")], label="#VALY", custom=[("FunnelPointGap", "2")]),
        drawing("Shape Pyramid", people, "Steps", "Pyramid", at(1, 8.6, 7, 8.2), [field("Step")], label="#PERCENT{P0}",
                custom=[("PyramidLabelStyle", "Outside"), ("PyramidValueType", "Surface")]),
        drawing("Shape TreeMap", stored, "Stock", "Tree map", at(8.4, 0, 7, 8.2), levels),
        drawing("Shape Sunburst", stored, "Stock", "Sunburst", at(8.4, 8.6, 7, 8.2), levels)], height=16)


@kind
def charts_of_spans():
    """Stocks, candlesticks, errors and boxes, and one too small for axes."""
    sets = [data("Prices", "Day:String High:Integer Low:Integer Open:Integer Close:Integer", DAYS)]
    prices = {"High": total("High"), "Low": total("Low"), "Start": total("Open"), "End": total("Close")}
    axis = t("Minimum", "30")
    day = ["=Right(Fields!Day.Value, 2)"]

    def of_prices(types, values, title, where, **more):
        return drawing(types, values, "Prices", title, where, day, legend=False, axis=axis, **more)
    return report(sets, [
        box("From low to high", at(0, 0, 0.8, 17), **HEAD),
        of_prices("Range Stock", prices, "Stock", at(1, 0, 5.5, 8.2)),
        of_prices("Range Candlestick", prices, "Candlesticks", at(1, 8.6, 5.5, 8.2), custom=[("PriceUpColor", "Lime"), ("PriceDownColor", "Red")]),
        of_prices("Range ErrorBar", {"Y": total("Close"), "High": total("High"), "Low": total("Low")}, "Errors", at(6.9, 0, 5.5, 8.2)),
        of_prices("Range BoxPlot", {**prices, "Median": "=Avg(Fields!Open.Value + Fields!Close.Value) / 2", "Mean": "=Avg(Fields!High.Value + Fields!Low.Value) / 2"}, "Boxes",
                  at(6.9, 8.6, 5.5, 8.2)),
        box("Too small for axes:", at(12.8, 0, 0.6, 4)),
        of_prices("Column Plain", {"Y": total("High")}, "Hidden title", at(12.7, 4, 0.9, 2))], height=14)


@kind
def stock_2005():
    """Prices in the form of 2005."""
    def prices(subtype, names, top):
        points = e("DataPoint", e("DataValues", *[e("DataValue", t("Value", total(name))) for name in names]))
        by_day = e("CategoryGroupings", e("CategoryGrouping", e("DynamicCategories", e(
            "Grouping", e("GroupExpressions", t("GroupExpression", field("Day"))), Name=name_of("Day")), t("Label", "=Right(Fields!Day.Value, 2)"))))
        axes = "".join(e(name, e("Axis", t("Visible", "true"), t("Min", "30") if name == "ValueAxis" else "")) for name in ("CategoryAxis", "ValueAxis"))
        return e("Chart", t("Type", "Stock"), t("Subtype", subtype), t("DataSetName", "Prices"), by_day,
                 e("ChartData", e("ChartSeries", e("DataPoints", points))), axes, e("Title", t("Caption", subtype)), at(top, 0, 5, 12),
                 Name=name_of("Prices"))
    title = e("Textbox", t("Value", "Prices of March"), at(15.6, 0, 0.6, 12), Name="Title")
    charts = [title, prices("HighLowClose", ("High", "Low", "Close"), 0), prices("OpenHighLowClose", ("High", "Low", "Open", "Close"), 5.2),
              prices("Candlestick", ("High", "Low", "Open", "Close"), 10.4)]
    source = e("DataSources", e("DataSource", e("ConnectionProperties", t("DataProvider", "ENTERDATA"), t("ConnectString", "")), Name="Rows"))
    return ('<?xml version="1.0" encoding="utf-8"?><Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2005/01/reportdefinition">'
            + source + e("DataSets", data("Prices", "Day:String High:Integer Low:Integer Open:Integer Close:Integer", DAYS))
            + e("Body", e("ReportItems", *charts), t("Height", "16.5cm")) + t("Width", "12cm") + t("PageWidth", "21cm")
            + t("PageHeight", "29.7cm") + t("LeftMargin", "2cm") + t("TopMargin", "2cm") + "</Report>")
