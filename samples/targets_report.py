# SPDX-License-Identifier: GPL-3.0-or-later
"""Where the year stands against its targets: indicators and small gauges in a table, a dial and a linear gauge."""
from charts_report import AMBER, OF_THE_YEAR, REVENUE, TEAL, letters
from rdl import (MIST, NAVY, RULE, SLATE, data_set, data_source, element, footer_with_pages, header_member, line,
                 member, page, parameter, place, report, row, tablix, text, textbox, title_property)

RED, GREEN = "#C8473B", "#3C9D5B"
GROWTH = "1.05"  # the target is the year before and so much more
ACHIEVED = "=Fields!revenue.Value / Fields!target.Value"
ALL_ACHIEVED = '=Sum(Fields!revenue.Value, "Targets") / Sum(Fields!target.Value, "Targets") * 100'


def _fill(colour, *more):
    return element("Style", text("BackgroundColor", colour), *more)


def _value(name, value):
    return element(name, text("Value", value))


def _range(name, start, end, width, colour, placement="Inside", distance=0):
    return element("ScaleRange", _fill(colour), _value("StartValue", start), _value("EndValue", end),
                   text("StartWidth", width), text("EndWidth", width), text("DistanceFromScale", distance),
                   text("Placement", placement), Name=name)


def _hidden(name):
    return element(name, text("Hidden", "true"))


def _state(name, start, end, colour, icon):
    ends = [_value("StartValue", start) if start else "", _value("EndValue", end) if end else ""]
    return element("IndicatorState", *ends, text("Color", colour), text("ScaleFactor", "0.8"),
                   text("IndicatorStyle", icon), Name=name)


def _panel(name, content, where="", *more):
    return element("GaugePanel", content, where, *more, Name=name)


def _arrow():
    states = [_state("Behind", "", "0.95", RED, "ArrowDown"), _state("Near", "0.95", "1", AMBER, "ArrowSide"),
              _state("Reached", "1", "", GREEN, "ArrowUp")]
    return _panel("Arrow", element("StateIndicators", element(
        "StateIndicator", _value("GaugeInputValue", ACHIEVED), text("TransformationType", "None"),
        element("IndicatorStates", *states), Name="ArrowIndicator")))


def _share():
    """Compared with the other regions: percentages between the smallest and the largest revenue."""
    names = ("None", "One", "Two", "Three", "All")
    states = [_state(f"{name}Filled", str(20 * i), str(20 * i + 20), NAVY, f"Quarters{name}Filled")
              for i, name in enumerate(names)]
    return _panel("Share", element("StateIndicators", element(
        "StateIndicator", _value("GaugeInputValue", "=Fields!revenue.Value"),
        text("TransformationType", "Percentage"), text("TransformationScope", "TargetTable"),
        element("IndicatorStates", *states), Name="ShareIndicator")))


def _bullet():
    bar = element("LinearPointer", _fill(NAVY), _value("GaugeInputValue", "=Fields!revenue.Value"),
                  text("Type", "Bar"), text("Placement", "Cross"), text("Width", "28"), Name="Revenue")
    mark = element("LinearPointer", _fill(RED), _value("GaugeInputValue", "=Fields!target.Value"),
                   text("Type", "Marker"), text("MarkerStyle", "Rectangle"), text("Placement", "Cross"),
                   text("MarkerLength", "70"), text("Width", "8"), Name="Target")
    scale = element("LinearScale", element("GaugePointers", bar, mark),
                    element("ScaleRanges", _range("Band", "0", '=Max(Fields!target.Value, "Targets") * 1.15', "56",
                                                  MIST, "Cross")),
                    _hidden("ScaleLabels"), _hidden("GaugeMajorTickMarks"), _hidden("GaugeMinorTickMarks"),
                    _value("MaximumValue", '=Max(Fields!target.Value, "Targets") * 1.15'),
                    text("StartMargin", "2"), text("EndMargin", "2"), text("Width", "0"), Name="Scale")
    return _panel("Bullet", element("LinearGauges", element(
        "LinearGauge", element("GaugeScales", scale), text("Orientation", "Horizontal"), Name="Gauge")))


def _table():
    head = {"FontWeight": "Bold", "Color": "#FFFFFF", "BackgroundColor": NAVY, "VerticalAlign": "Middle"}
    body = {"VerticalAlign": "Middle", "grow": False}
    right = {**body, "TextAlign": "Right"}
    titles = [("Region", "Left"), ("Revenue", "Right"), ("Target", "Right"), ("Achieved", "Right"), ("", "Center"),
              ("Against the target", "Left"), ("Size", "Center")]
    header = row(0.7, [textbox(f"Head{i}", title, TextAlign=align, **head) for i, (title, align) in enumerate(titles)])
    detail = row(0.8, [
        textbox("RegionName", "=Fields!region.Value", **body),
        textbox("RegionRevenue", "=Fields!revenue.Value", Format="N0", **right),
        textbox("RegionTarget", "=Fields!target.Value", Format="N0", **right),
        textbox("RegionAchieved", ACHIEVED, Format="P0", **right), _arrow(), _bullet(), _share()])
    rows = [header_member(), member(element("Group", Name="Regions"))]
    return tablix("TargetTable", "Targets", [3.6, 2.5, 2.5, 2, 1, 4.2, 1.2], [header, detail], rows, 2.6, 0)


def _dial():
    needle = element("RadialPointer", element("PointerCap", _fill(SLATE), text("Width", "14")), _fill(NAVY),
                     _value("GaugeInputValue", ALL_ACHIEVED), text("Type", "Needle"),
                     text("NeedleStyle", "Tapered"), text("Width", "7"), Name="Needle")
    ranges = [_range("Behind", "50", "95", "14", RED), _range("Near", "95", "100", "14", AMBER),
              _range("Reached", "100", "150", "14", GREEN)]
    scale = element(
        "RadialScale", element("GaugePointers", needle), element("ScaleRanges", *ranges),
        element("ScaleLabels", letters("7pt", Format="0\\%"), text("Placement", "Outside")),
        element("GaugeMajorTickMarks", _fill(SLATE), text("Length", "6"), text("Width", "1"),
                text("Placement", "Outside")), _hidden("GaugeMinorTickMarks"),
        _value("MinimumValue", "50"), _value("MaximumValue", "150"), text("Interval", "10"), text("Radius", "40"),
        text("StartAngle", "60"), text("SweepAngle", "240"), text("Width", "0"), Name="Scale")
    gauge = element("RadialGauge", element("GaugeScales", scale), text("Height", "92"), text("Width", "100"),
                    text("PivotY", "54"), Name="Dial")
    label = element("GaugeLabel", element("Style", text("FontFamily", "Arial"), text("FontSize", "11pt"),
                                          text("FontWeight", "Bold"), text("Color", NAVY), text("TextAlign", "Center")),
                    text("Text", f'="Of the target: " & FormatNumber({ALL_ACHIEVED[1:]}, 0) & " %"'),
                    text("ResizeMode", "None"), text("Top", "90"), text("Left", "0"), text("Height", "10"),
                    text("Width", "100"), Name="DialLabel")
    return _panel("DialPanel", element("RadialGauges", gauge) + element("GaugeLabels", label),
                  place(5, 0, 8, 8), text("DataSetName", "Targets"),
                  text("ToolTip", ALL_ACHIEVED.replace("=", '="Of the target: " & FormatNumber(', 1) + ', 0) & " %"'))


def _shipping():
    tube = element("LinearPointer", _fill(TEAL), _value("GaugeInputValue", "=Sum(Fields!days.Value)"),
                   element("Thermometer", text("BulbSize", "40"), text("BulbOffset", "2")), text("Type", "Thermometer"),
                   text("Width", "10"), Name="Days")
    scale = element(
        "LinearScale", element("GaugePointers", tube),
        element("ScaleLabels", letters("8pt"), text("Placement", "Inside"), text("DistanceFromScale", "3")),
        element("GaugeMajorTickMarks", _fill(SLATE), text("Length", "4"), text("Width", "0.4"),
                text("Placement", "Inside"), text("DistanceFromScale", "6")), _hidden("GaugeMinorTickMarks"),
        _value("MaximumValue", "10"), text("Interval", "2"), text("StartMargin", "24"), text("EndMargin", "6"),
        text("Position", "55"), text("Width", "0"), Name="Scale")
    gauge = element("LinearGauge", element("GaugeScales", scale), text("Orientation", "Vertical"), text("Top", "0"),
                    text("Height", "90"), text("Width", "100"), Name="Shipping")
    label = element("GaugeLabel", element("Style", text("FontFamily", "Arial"), text("FontSize", "11pt"),
                                          text("FontWeight", "Bold"), text("Color", NAVY), text("TextAlign", "Center")),
                    text("Text", '="Days to ship: " & FormatNumber(Sum(Fields!days.Value), 1)'),
                    text("ResizeMode", "None"), text("Top", "90"), text("Left", "0"), text("Height", "10"),
                    text("Width", "100"), Name="ShippingLabel")
    return _panel("ShippingPanel", element("LinearGauges", gauge) + element("GaugeLabels", label),
                  place(5, 9, 8, 8), text("DataSetName", "Shipping"))


def targets():
    given = {"@Year": "=Parameters!Year.Value"}
    lines = "from orders o join order_lines l on l.order_id = o.order_id"
    regions = f"""with sold as (select c.region_id as region_id, cast(strftime('%Y', o.order_date) as integer) as year,
       {REVENUE}
{lines} join customers c on c.customer_id = o.customer_id where o.status <> 'returned' group by 1, 2)
select r.name as region, now.revenue as revenue, past.revenue * {GROWTH} as target
from regions r join sold now on now.region_id = r.region_id and now.year = @Year
join sold past on past.region_id = r.region_id and past.year = @Year - 1
order by now.revenue desc, r.name"""
    shipping = f"""select avg(julianday(o.ship_date) - julianday(o.order_date)) as days
from orders o where o.ship_date is not null and {OF_THE_YEAR}"""
    items = [textbox("Heading", '="Targets " & Parameters!Year.Value', place(0.2, 0, 1.1, 17), FontSize="22pt",
                     FontWeight="Bold", Color=NAVY, PaddingLeft="0pt"),
             textbox("Slogan", "Each region against the year before and five percent more", place(1.3, 0, 0.7, 17),
                     FontSize="10pt", Color=SLATE, PaddingLeft="0pt"),
             line("HeadingRule", 2.2, 0, 17, NAVY, "1.5pt"), _table(), line("GaugeRule", 4.6, 0, 17, RULE), _dial(),
             _shipping()]
    body = element("Body", element("ReportItems", *items), text("Height", "13.2cm"))
    years = [(str(year), str(year)) for year in (2025, 2026)]
    return report(
        "2016/01", text("Description", "Revenue against targets"), text("Author", "Norvale Trading"), data_source(),
        element("DataSets",
                data_set("Targets", regions, [("region", "String"), ("revenue", "Double"), ("target", "Double")],
                         given),
                data_set("Shipping", shipping, [("days", "Double")], given)),
        element("ReportSections",
                element("ReportSection", body, text("Width", "17cm"), page("", footer_with_pages()))),
        element("ReportParameters", parameter("Year", "Integer", "Year", ["2025"], years)),
        title_property("Sales targets"), text("Language", "en-GB"))
