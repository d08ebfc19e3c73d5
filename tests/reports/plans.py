# SPDX-License-Identifier: GPL-3.0-or-later
"""Dashboards, plans and lists: charts, gauges, bars by cells, spans of every kind."""
from documents import MONEY, PEOPLE
from kit import (BEFORE, REPEATED, at, box, boxes, data, e, edges, group, kind, member, name_of, rectangle, report,
                 rule, section, t, tablix)
from tables import BOLD, GRID, HEAD, NUMBER, PAGES

MONTHS = [(region, month, (month * 17 + len(region) * 29) % 83 + 5) for region in ("North", "South", "East") for month in range(1, 13)]
MONTH_FIELDS = "Region:String Month:Integer Amount:Integer"


def chart(kind_of, category, value, where="", data_set=None, axes=True, title=None, colour="SteelBlue", more=""):
    visible = t("Visible", "True" if axes else "False")
    axis = "".join(e(name, e("ChartAxis", visible, more if name == "ChartValueAxes" else "", Name="Primary"))
                   for name in ("ChartCategoryAxes", "ChartValueAxes"))
    categories = e("ChartMember", e("Group", e("GroupExpressions", t("GroupExpression", category)), Name=name_of("Category")), t("Label", category))
    series = e("ChartSeries", e("ChartDataPoints", e("ChartDataPoint", e("ChartDataPointValues", t("Y", value)),
                                                     e("Style", t("Color", colour)))), t("Type", kind_of),
               t("ValueAxisName", "Primary"), t("CategoryAxisName", "Primary"), t("ChartAreaName", "Area"), Name="Series")
    titles = e("ChartTitles", e("ChartTitle", t("Caption", title), Name="Title")) if title else ""
    return e("Chart", e("ChartCategoryHierarchy", e("ChartMembers", categories)),
             e("ChartSeriesHierarchy", e("ChartMembers", e("ChartMember", t("Label", "Series")))),
             e("ChartData", e("ChartSeriesCollection", series)), e("ChartAreas", e("ChartArea", axis, Name="Area")), titles,
             t("DataSetName", data_set) if data_set else "", where, Name=name_of("Chart"))


def dial(value, most, where=""):
    pointer = e("RadialPointer", e("GaugeInputValue", t("Value", value)), Name="Needle")
    scale = e("RadialScale", e("GaugePointers", pointer), e("MinimumValue", t("Value", 0)), e("MaximumValue", t("Value", most)), Name="Scale")
    return e("GaugePanel", e("RadialGauges", e("RadialGauge", e("GaugeScales", scale), Name="Dial")), t("DataSetName", "Sales"), where,
             Name=name_of("Gauge"))


@kind
def dashboard():
    """Charts and gauges side by side over a table whose height is not known before."""
    table = tablix("Sales", [3, 3], [(0.6, boxes(["Region", "Amount"], HEAD)),
                                     (0.6, [box("=Fields!Region.Value", **GRID), box("=Sum(Fields!Amount.Value)", **NUMBER)])],
                   [member(REPEATED), group("Region", "=Fields!Region.Value")], top=7)
    return report([data("Sales", MONTH_FIELDS, MONTHS)], [
        box("Dashboard", at(0, 0, 0.8, 17), FontSize="14pt", **HEAD),
        chart("Column", "=Fields!Month.Value", "=Sum(Fields!Amount.Value)", at(1, 0, 5.5, 8), "Sales", title="By month"),
        chart("Shape", "=Fields!Region.Value", "=Sum(Fields!Amount.Value)", at(1, 8.2, 5.5, 4.5), "Sales", title="By region", colour=""),
        dial("=Avg(Fields!Amount.Value)", 100, at(1, 13, 4, 4)), table,
        box("Below the charts", at(7, 8, 0.6, 6), BackgroundColor="#E8F4D8")], height=8.4, form="2016/01")


@kind
def sales_sparklines():
    """A line, a bar and an indicator in the cells of each region."""
    icon = e("GaugePanel", e("StateIndicators", e("StateIndicator", e("GaugeInputValue", t("Value", "=Sum(Fields!Amount.Value)")),
             t("TransformationType", "None"), e("IndicatorStates", *[e(
                 "IndicatorState", e("StartValue", t("Value", low)), e("EndValue", t("Value", high)), t("Color", colour),
                 t("IndicatorStyle", style), Name=style) for low, high, colour, style in (
                     (0, 500, "Red", "ArrowDown"), (500, 9999, "Green", "ArrowUp"))]), Name="State")), Name="Icon")
    table = tablix("Sales", [3, 3, 5, 4, 1.5], [
        (0.6, boxes(["Region", "Sum", "Months", "Sum as a bar", "State"], HEAD)),
        (1.2, [box("=Fields!Region.Value", **BOLD), box("=Sum(Fields!Amount.Value)", **NUMBER),
               chart("Line", "=Fields!Month.Value", "=Sum(Fields!Amount.Value)", axes=False),
               chart("Bar", "=Fields!Region.Value", "=Sum(Fields!Amount.Value)", axes=False, colour="Orange",
                     more=t("Minimum", "0") + t("Maximum", "900")), icon])],
        [member(REPEATED), group("Region", "=Fields!Region.Value")])
    return report([data("Sales", MONTH_FIELDS, MONTHS)], [table])


@kind
def spanning_boxes():
    """Rectangles, charts and pictures of text as headers of groups: each beside all rows of its group."""
    label = rectangle([box("=Fields!Region.Value", at(0.1, 0.1, 0.6, 3), FontWeight="Bold"),
                       box('="Sum " & Sum(Fields!Amount.Value)', at(0.8, 0.1, 0.6, 3))],
                      borders=edges(All="#909090 Solid 0.5pt"), BackgroundColor="#E8F4D8")
    line = chart("Line", "=Fields!Month.Value", "=Sum(Fields!Amount.Value)", axes=False)
    table = tablix("Sales", [3, 3], [(0.6, [box("=MonthName(Fields!Month.Value)", **GRID), box("=Sum(Fields!Amount.Value)", **NUMBER)])],
                   [group("Region", "=Fields!Region.Value", head=(3.4, label), members=[member(head=(4, line), members=[
                       group("Month", "=Fields!Month.Value")])])])
    return report([data("Sales", MONTH_FIELDS, [row for row in MONTHS if row[0] != "East" or row[1] < 3])], [table,
                  box("After the table", at(0.8, 0, 0.6, 13), BackgroundColor="#FFF4D0")])


@kind
def gantt_by_cells():
    """Bars of a plan: a matrix whose cells are coloured between begin and end."""
    tasks = [("Survey", 1, 4), ("Design", 3, 9), ("Build", 8, 19), ("Test", 15, 22), ("Hand over", 22, 24)]
    rows = [(n, task, week, first, last) for n, (task, first, last) in enumerate(tasks) for week in range(1, 25)]
    table = tablix("Plan", [0.5], [(0.7, [box("", BackgroundColor=
                   "=IIf(First(Fields!Week.Value) >= First(Fields!From.Value) And First(Fields!Week.Value) <= First(Fields!Until.Value), "
                   "\"#1F3A5F\", Nothing)", borders=edges(All="#D0D0D0 Solid 0.25pt"))])],
                   [group("Task", "=Fields!No.Value", head=(3.5, box("=Fields!Task.Value", **GRID)))],
                   [group("Week", "=Fields!Week.Value", head=(0.6, box("=Fields!Week.Value", FontSize="6pt", TextAlign="Center", **{
                       **HEAD, "PaddingLeft": "0pt", "PaddingRight": "0pt"})))], [[box("Week", **HEAD)]])
    return report([data("Plan", "No:Integer Task:String Week:Integer From:Integer Until:Integer", rows)], [table])


@kind
def balance_sheet():
    """Two sides beside each other, indented levels, double rules under the totals."""
    assets = [("Assets", 0, None), ("Fixed", 1, None), ("Land", 2, 1200), ("Machines", 2, 800.5), ("Current", 1, None), ("Stock", 2, 300),
              ("Cash", 2, 99.5)]
    debts = [("Equity and debts", 0, None), ("Equity", 1, 1500), ("Debts", 1, None), ("Bank", 2, 700), ("Suppliers", 2, 200)]

    def side(name, left):
        look = {"borders": edges(Bottom="#D0D0D0 Solid 0.25pt")}
        return tablix(name, [5.6, 2.6], [
            (0.6, [box("=Fields!Name.Value", PaddingLeft="=(2 + 12 * Fields!Level.Value) & \"pt\"",
                       FontWeight="=IIf(Fields!Level.Value = 0, \"Bold\", \"Normal\")", **look),
                   box("=Fields!Amount.Value", Format="#,##0.00;(#,##0.00)", TextAlign="Right", **look)]),
            (0.7, [box("Total", FontWeight="Bold"), box("=Sum(Fields!Amount.Value)", FontWeight="Bold", Format="N2", TextAlign="Right",
                       borders=edges(Top="Black Solid 0.5pt", Bottom="Black Double 2.25pt"))])], [group(name + "Line"), member(BEFORE)],
            left=left)
    fields = "Name:String Level:Integer Amount:Float"
    return report([data("Assets", fields, assets), data("Debts", fields, debts)], [side("Assets", 0), side("Debts", 8.8)])


@kind
def timetable():
    """Trains by stops with texts that span columns, hidden duplicates, and stripes of rows."""
    rows = [(f"R{line}", stop, f"{hour:02d}:{(line * 7 + n * 9) % 60:02d}") for line in (1, 2) for n, stop in enumerate(
        ["Harbour", "Market", "Old Town", "Castle", "Airport"]) for hour in range(6, 15)]
    table = tablix("Times", [1.2], [(0.6, [box("=First(Fields!Time.Value)", TextAlign="Center", BackgroundColor=
                   '=IIf(RunningValue(Fields!Stop.Value, CountDistinct, "Line") Mod 2, "White", "#EEF2F6")', **GRID)])],
                   [group("Line", "=Fields!Line.Value", head=(1.2, box("=Fields!Line.Value", TextAlign="Center", VerticalAlign="Middle",
                                                                      FontSize="14pt", **BOLD)), members=[
                       group("Stop", "=Fields!Stop.Value", head=(3, box("=Fields!Stop.Value", **GRID)), sort=[("=First(Fields!Time.Value)", "Ascending")])])],
                   [group("Hour", "=Left(Fields!Time.Value, 2)", head=(0.6, box('=Left(Fields!Time.Value, 2) & " h"', **HEAD)))],
                   [[(box("Monday to Friday", **HEAD), 2, 1), None]])
    return report([data("Times", "Line:String Stop:String Time:String", rows)], [table], form="2008/01")


@kind
def seating_plan():
    """Tables as a list in a matrix of two columns, each with a list of its guests in the cell."""
    rows = [(n // 5, name) for n, (name, _, _) in enumerate(PEOPLE)]
    guests = tablix("", [6], [(0.5, [box("=Fields!Name.Value")])], [group("Guest")], where=at(0.8, 0.3, 0.5, 6))
    seat = rectangle([box('="Table " & (First(Fields!Table.Value) + 1)', at(0.1, 0.1, 0.6, 6.3), **HEAD), guests],
                     borders=edges(All="#1F3A5F Solid 1.5pt"))
    table = tablix("Guests", [6.6], [(1.6, [seat])], [group("Down", "=Fields!Table.Value \\ 2")], [group("Across", "=Fields!Table.Value Mod 2")])
    return report([data("Guests", "Table:Integer Name:String", rows)], [table])


@kind
def timesheet_groups_foot():
    """Hours by person and week; each person begins a page, and the signature line is at the foot of every page."""
    rows = [(person, f"2026-03-{day:02d}", 7.5 + day % 3 * 0.25) for person in ("Ann Lee", "Bo Dahl") for day in range(2, 30) if day % 7 not in (0, 1)]
    table = tablix("Hours", [4, 3, 3], [
        (0.7, [(box("=Fields!Person.Value", FontSize="13pt", FontWeight="Bold"), 3, 1), None, None]),
        (0.6, boxes(["Day", "Weekday", "Hours"], HEAD)),
        (0.55, [box("=Fields!Day.Value", Format="yyyy-MM-dd", **GRID), box('=Format(Fields!Day.Value, "dddd")', **GRID),
                box("=Fields!Hours.Value", **MONEY)]),
        (0.6, [(box('="Week " & DatePart("ww", Fields!Day.Value, 2, 2)', TextAlign="Right", **BOLD), 2, 1), None,
               box("=Sum(Fields!Hours.Value)", **{**MONEY, "FontWeight": "Bold"})]),
        (0.6, [(box("Sum", TextAlign="Right", **HEAD), 2, 1), None, box("=Sum(Fields!Hours.Value)", **{**MONEY, **HEAD})])],
        [group("Person", "=Fields!Person.Value", inside=e("PageBreak", t("BreakLocation", "Between")), members=[
            member(REPEATED), member(REPEATED),
            group("Week", '=DatePart("ww", Fields!Day.Value, 2, 2)', members=[group("Day"), member(BEFORE)]), member(BEFORE)])])
    foot = section("PageFooter", 2, rule(1, 0, 0, 6), box("Signature", at(1.1, 0, 0.6, 6)),
                   box('="Page " & Globals!PageNumber', at(1.1, 8, 0.6, 6)))
    return report([data("Hours", "Person:String Day:Date Hours:Float", rows)], [table], foot=foot)


@kind
def tickets():
    """Tickets with a stub that is turned, a dashed line to tear and a number; five on a page."""
    stub = rectangle([box('="No " & Format(Fields!No.Value, "0000")', at(0.1, 0.1, 4.6, 1), WritingMode="Vertical", TextAlign="Center", FontWeight="Bold"),
                      box("=Fields!Name.Value", at(0.1, 1.2, 4.6, 1), WritingMode="Vertical", FontSize="7pt")], at(0.1, 12.6, 4.8, 2.4),
                     borders=edges(Left="Black Dashed 1pt"))
    ticket = rectangle([box("Harbour concert", at(0.3, 0.3, 1, 12), FontSize="20pt"), box("Row 4 · Seat 11", at(1.6, 0.3, 0.6, 6)),
                        box("12.50", at(3.6, 9, 0.9, 3), TextAlign="Right", FontSize="16pt"), stub], borders=edges(All="Black Solid 1pt"),
                       BackgroundColor="#FFFDF4")
    table = tablix("People", [15.2], [(5, [ticket])], [group("Ticket")])
    return report([data("People", "No:Integer Name:String", [(n, person[0]) for n, person in enumerate(PEOPLE[:7])])], [table])


@kind
def conditional_formats():
    """Colours, weights, borders and visibility by the values; stripes by row numbers; a text in each state."""
    rows = [(f"Order {n}", n * 7 % 11 - 4, n % 4 != 0) for n in range(1, 16)]
    look = {"BackgroundColor": '=IIf(RowNumber(Nothing) Mod 2, "White", "#EEF2F6")'}
    table = tablix("Orders", [5, 3, 3], [(0.6, boxes(["Order", "Change", "State"], HEAD)), (0.6, [
        box("=Fields!Order.Value", **look),
        box("=Fields!Change.Value", Color='=Switch(Fields!Change.Value < 0, "Red", Fields!Change.Value > 3, "Green", True, "Black")',
            FontWeight='=IIf(Abs(Fields!Change.Value) > 3, "Bold", "Normal")', Format="+0;-0;0", TextAlign="Right", **look),
        box('=IIf(Fields!Done.Value, "done", "open")', TextDecoration='=IIf(Fields!Done.Value, "LineThrough", "None")', **look)])],
        [member(REPEATED), group("Order", None, e("Visibility", t("Hidden", "=Fields!Change.Value = 0")))])
    return report([data("Orders", "Order:String Change:Integer Done:Boolean", rows)], [table], form="2016/01")


@kind
def multi_value_parameters():
    """The chosen regions in the heading and as the filter of the table."""
    parameter = e("ReportParameters", e("ReportParameter", t("DataType", "String"), e("DefaultValue", e("Values", t("Value", "North"), t(
        "Value", "East"))), t("Prompt", "Regions"), t("MultiValue", "true"), Name="Regions"))
    table = tablix("Sales", [4, 3], [(0.6, boxes(["Region", "Amount"], HEAD)), (0.6, [
        box("=Fields!Region.Value", **GRID), box("=Sum(Fields!Amount.Value)", **NUMBER)])],
        [member(REPEATED), group("Region", "=Fields!Region.Value")], top=1, extra=e("Filters", e("Filter", t(
            "FilterExpression", "=Fields!Region.Value"), t("Operator", "In"), e("FilterValues", t("FilterValue", "=Parameters!Regions.Value")))))
    return report([data("Sales", MONTH_FIELDS, MONTHS)], [box('="Regions: " & Join(Parameters!Regions.Value, ", ")', at(0, 0, 0.7, 12)), table],
                  parameters=parameter)


@kind
def envelope():
    """A sender in small type, a stamp box, the address low on the right; paper 22 by 11."""
    return report([], [box("Norvale Trading · 1 Mill Lane · 40000 Norvale", at(0, 0, 0.5, 9), FontSize="7pt"),
                       box("Stamp", at(0, 16.5, 2.4, 3), TextAlign="Center", VerticalAlign="Middle", borders=edges(All="Gray Dashed 1pt")),
                       box("", at(5, 10, 3, 9), runs=[[("Fox Ltd", {"FontWeight": "Bold"}, "")], [("8 Quay Street", {}, "")], [("40262 Eastport", {}, "")]],
                           FontSize="12pt")], width=20, height=8.5, paper=(22, 11), margins=(1, 1, 1, 1))


@kind
def survey_form():
    """Questions with boxes to tick, numbered, kept whole at the ends of pages; an area to write in."""
    rows = [(n, f"How satisfied are you with point {n}? " + "Please think of the last year. " * (n % 3)) for n in range(1, 25)]
    tick = [rectangle([box("", at(0.2, 0.35, 0.5, 0.5), borders=edges(All="Black Solid 0.75pt"), grow=False)]) for _ in range(5)]
    table = tablix("Questions", [1, 9.5, 1.2, 1.2, 1.2, 1.2, 1.2], [
        (0.7, boxes(["No", "Question", "++", "+", "o", "-", "--"], HEAD)),
        (0.9, [box("=Fields!No.Value", **GRID), box("=Fields!Text.Value", **GRID), *tick])], [member(REPEATED), group("Question")])
    return report([data("Questions", "No:Integer Text:String", rows)], [table, box(
        "What else?", at(1.8, 0, 3, 16.5), borders=edges(All="Black Solid 0.75pt"))], foot=PAGES)


def shape(element, name, vector):
    return e(element, t("VectorData", vector), e("MapFields", e("MapField", t("Name", "NAME"), t("Value", name))))


def bound(region, field):
    return t("MapDataRegionName", region) + e("MapBindingFieldPairs", e(
        "MapBindingFieldPair", t("FieldName", "NAME"), t("BindingExpression", field)))


def ring(*corners):
    return ", ".join(f"{x} {y}" for x, y in (*corners, corners[0]))


@kind
def sales_map():
    """Regions coloured by their sales, a river, and towns sized by theirs."""
    islands = [("North", f"MULTIPOLYGON ((({ring((2, 54), (6, 55.5), (11, 54.5), (10, 51), (5, 50.5), (2.5, 52))})), "
                         f"(({ring((0.2, 55), (1.4, 55.4), (1.2, 54.2))})))"),
               ("South", f"POLYGON (({ring((5, 50.5), (10, 51), (12, 47.5), (8, 46), (4, 47))}), "
                         f"({ring((5.6, 49), (7.1, 49.2), (6.6, 49.9), (5.8, 49.7))}))"),
               ("East", f"POLYGON (({ring((10, 51), (11, 54.5), (15, 54), (16.5, 50.5), (14, 47.2), (12, 47.5))}))"),
               ("Lake", f"POLYGON (({ring((5.6, 49), (7.1, 49.2), (6.6, 49.9), (5.8, 49.7))}))")]
    sales = [("North", 412), ("South", 95), ("South", 130), ("East", 560)]
    towns = [("Aalto", 8, "POINT (4.5 52)"), ("Cove", 20, "POINT (12.5 49.5)"), ("Port", 3, "POINT (5.5 48)"), ("Hill", 12, "POINT (9.5 47.5)")]
    colours = e("MapColorRangeRule", t("DataValue", "=Sum(Fields!Amount.Value)"), t("DistributionType", "EqualInterval"), t("BucketCount", 3),
                t("StartColor", "#FFF3C4"), t("MiddleColor", "#F0A040"), t("EndColor", "#A02010"), t("LegendName", "Sales"),
                t("LegendText", "#FROMVALUE{N0} to #TOVALUE{N0}"), t("ShowInColorScale", "true"))
    regions = e("MapPolygonLayer", e("MapPolygonTemplate", t("Label", "#NAME"), e("Style", t("BackgroundColor", "#B0D8F0"), t("FontSize", "9pt"))),
                e("MapPolygonRules", colours), e("MapPolygons", *[shape("MapPolygon", *island) for island in islands]),
                bound("Regions", "=Fields!Region.Value"), Name="RegionLayer")
    river = e("MapLineLayer", e("MapLineTemplate", e("Style", t("Color", "#3070C0")), t("Width", "2pt"), t("Label", "#NAME")),
              e("MapLines", shape("MapLine", "Long River", "LINESTRING (6.8 49.6, 8 50, 9.6 50.6, 9.4 52, 8.6 53, 8.2 55.2)")), Name="RiverLayer")
    sizes = e("MapSizeRule", t("DataValue", "=Sum(Fields!Size.Value)"), t("StartSize", "4pt"), t("EndSize", "14pt"), t("BucketCount", 3),
              t("LegendName", "Towns"))
    places = e("MapPointLayer", e("MapMarkerTemplate", e("Style", t("BackgroundColor", "#306030")), t("Label", "#Town"), t("LabelPlacement", "Right")),
               e("MapPointRules", sizes), e("MapSpatialDataSet", t("DataSetName", "Towns"), t("SpatialField", "Place"),
                                            e("MapFieldNames", t("MapFieldName", "Town"))), Name="TownLayer")
    region = e("MapDataRegion", e("MapMember", e("Group", e("GroupExpressions", t("GroupExpression", "=Fields!Region.Value")), Name="ByRegion")),
               t("DataSetName", "Sales"), Name="Regions")
    frame = e("Style", e("Border", t("Color", "Gray"), t("Style", "Solid")), t("BackgroundColor", "White"))
    grid = e("Style", e("Border", t("Color", "Silver"), t("Style", "Dotted")))
    viewport = e("MapViewport", t("MapCoordinateSystem", "Geographic"), t("MapProjection", "Mercator"), e("MapMeridians", grid, t("Interval", 5)),
                 e("MapParallels", grid, t("Interval", 5)), e("Style", e("Border", t("Color", "Gray"), t("Style", "Solid")), t("BackgroundColor", "#EEF6FC")))
    legends = e("MapLegends", *[e("MapLegend", frame, t("Position", position), e("MapLegendTitle", t("Caption", name), e("Style", t("FontWeight", "Bold"))),
                                  Name=name) for name, position in (("Sales", "RightTop"), ("Towns", "LeftBottom"))])
    title = e("MapTitles", e("MapTitle", t("Text", "Sales by region and town"), t("DockOutsideViewport", "true"),
                             e("Style", t("FontSize", "14pt"), t("FontWeight", "Bold")), Name="Title"))
    scale = e("MapColorScale", t("DockOutsideViewport", "true"), e("MapColorScaleTitle", t("Caption", "Amount")))
    chart_of_all = e("Map", e("MapDataRegions", region), viewport, e("MapLayers", e("MapTileLayer", t("TileStyle", "Road"), Name="Tiles"), regions, river, places),
                     legends, title, e("MapDistanceScale", t("Position", "BottomRight")), scale, e("Style", e("Border", t("Color", "Black"), t("Style", "Solid"))),
                     at(1, 0, 13, 17), Name="SalesMap")
    return report([data("Sales", "Region:String Amount:Integer", sales), data("Towns", "Town:String Size:Integer Place:String", towns)], [
        box("Where we sell", at(0, 0, 0.8, 17), FontSize="14pt", **HEAD), chart_of_all,
        box("Below the map", at(14.4, 0, 0.6, 6), BackgroundColor="#E8F4D8")], height=15.2, form="2016/01")
