// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/chart_reader.h"

#include "rdl/definition/group_reader.h"
#include "rdl/definition/regions.h"

namespace rdl {
namespace {

constexpr std::size_t MostSeries = 200, MostPoints = 1000;  // of a definition

struct Type {
    std::string_view type, subtype;
    ChartKind kind;
    ChartStack stack;
    ChartCurve curve;
    bool exploded, joined;
    bool range = false;
};

constexpr auto None = ChartStack::None;
constexpr auto Straight = ChartCurve::Straight;
constexpr auto Smooth = ChartCurve::Smooth;

// What can be drawn. The first row of a type is its default.
constexpr Type Types[] = {
    {"Column", "Plain", ChartKind::Column, None, Straight, false, false},
    {"Column", "Stacked", ChartKind::Column, ChartStack::Stacked, Straight, false, false},
    {"Column", "PercentStacked", ChartKind::Column, ChartStack::Percent, Straight, false, false},
    {"Bar", "Plain", ChartKind::Bar, None, Straight, false, false},
    {"Bar", "Stacked", ChartKind::Bar, ChartStack::Stacked, Straight, false, false},
    {"Bar", "PercentStacked", ChartKind::Bar, ChartStack::Percent, Straight, false, false},
    {"Line", "Plain", ChartKind::Line, None, Straight, false, false},
    {"Line", "Smooth", ChartKind::Line, None, Smooth, false, false},
    {"Line", "Stepped", ChartKind::Line, None, ChartCurve::Stepped, false, false},
    {"Area", "Plain", ChartKind::Area, None, Straight, false, false},
    {"Area", "Smooth", ChartKind::Area, None, Smooth, false, false},
    {"Area", "Stacked", ChartKind::Area, ChartStack::Stacked, Straight, false, false},
    {"Area", "PercentStacked", ChartKind::Area, ChartStack::Percent, Straight, false, false},
    {"Shape", "Pie", ChartKind::Pie, None, Straight, false, false},
    {"Shape", "Plain", ChartKind::Pie, None, Straight, false, false},
    {"Shape", "ExplodedPie", ChartKind::Pie, None, Straight, true, false},
    {"Shape", "CalloutPie", ChartKind::Pie, None, Straight, false, false},
    {"Shape", "Doughnut", ChartKind::Doughnut, None, Straight, false, false},
    {"Shape", "ExplodedDoughnut", ChartKind::Doughnut, None, Straight, true, false},
    {"Pie", "Plain", ChartKind::Pie, None, Straight, false, false},
    {"Pie", "Exploded", ChartKind::Pie, None, Straight, true, false},
    {"Doughnut", "Plain", ChartKind::Doughnut, None, Straight, false, false},
    {"Doughnut", "Exploded", ChartKind::Doughnut, None, Straight, true, false},
    {"Scatter", "Plain", ChartKind::Scatter, None, Straight, false, false},
    {"Scatter", "Line", ChartKind::Scatter, None, Straight, false, true},
    {"Scatter", "SmoothLine", ChartKind::Scatter, None, Smooth, false, true},
    {"Scatter", "Bubble", ChartKind::Bubble, None, Straight, false, false},
    {"Bubble", "Plain", ChartKind::Bubble, None, Straight, false, false},
    {"Range", "Plain", ChartKind::Area, None, Straight, false, false, true},
    {"Range", "Smooth", ChartKind::Area, None, Smooth, false, false, true},
    {"Range", "Column", ChartKind::Column, None, Straight, false, false, true},
    {"Range", "Bar", ChartKind::Bar, None, Straight, false, false, true},
    {"Range", "Stock", ChartKind::Stock, None, Straight, false, false, true},
    {"Range", "Candlestick", ChartKind::Candlestick, None, Straight, false, false, true},
    {"Range", "ErrorBar", ChartKind::ErrorBar, None, Straight, false, false, true},
    {"Range", "BoxPlot", ChartKind::BoxPlot, None, Straight, false, false, true},
    {"Stock", "HighLowClose", ChartKind::Stock, None, Straight, false, false, true},
    {"Stock", "OpenHighLowClose", ChartKind::Stock, None, Straight, false, false, true},
    {"Stock", "Candlestick", ChartKind::Candlestick, None, Straight, false, false, true},
    {"Polar", "Plain", ChartKind::Polar, None, Straight, false, false},
    {"Polar", "Radar", ChartKind::Radar, None, Straight, false, false},
    {"Shape", "Funnel", ChartKind::Funnel, None, Straight, false, false},
    {"Shape", "Pyramid", ChartKind::Pyramid, None, Straight, false, false},
    {"Shape", "TreeMap", ChartKind::TreeMap, None, Straight, false, false},
    {"Shape", "Sunburst", ChartKind::Sunburst, None, Straight, false, false},
};

// One area has one system of coordinates.
void CheckMixture(Context& context, const XmlElement& element, const std::string& where, const Chart& chart) {
    for (const ChartSeries& one : chart.series) {
        for (const ChartSeries& other : chart.series) {
            if (one.area == other.area && FrameOf(one) != FrameOf(other)) {
                context.Fail(
                    element, where,
                    "its series \"" + one.name + "\" and \"" + other.name + "\" cannot be drawn in one area");
            }
        }
    }
}

void CheckAreas(Context& context, const XmlElement& element, const std::string& where, Chart& chart) {
    if (chart.areas.empty()) {
        chart.areas.emplace_back();
    }
    for (ChartArea& area : chart.areas) {
        for (auto* axes : {&area.categoryAxes, &area.valueAxes}) {
            if (axes->empty()) {
                axes->emplace_back();
            }
        }
    }
    for (ChartSeries& series : chart.series) {
        if (series.area.empty()) {
            series.area = chart.areas.front().name;
        }
        bool known = false;
        for (const ChartArea& area : chart.areas) {
            known = known || area.name == series.area;
        }
        if (!known) {
            context.Fail(element, where,
                         "its series \"" + series.name + "\" names the area \"" + series.area +
                             "\", which it does not have");
        }
    }
}

// Completes the chart's data region: empty cells, one for each pair of leaves of its hierarchies.
void FinishRegion(Context& context, const XmlElement& element, const std::string& where, Chart& chart) {
    Tablix& data = chart.data;
    for (auto* members : {&data.rowMembers, &data.columnMembers}) {
        if (members->empty()) {
            members->emplace_back();
        }
    }
    chart.seriesLabels.resize(std::max<std::size_t>(chart.seriesLabels.size(), 1));
    chart.categoryLabels.resize(std::max<std::size_t>(chart.categoryLabels.size(), 1));
    const std::size_t rows = LeafCount(data.rowMembers), columns = LeafCount(data.columnMembers);
    if (chart.series.empty() || chart.series.size() != rows) {
        context.Fail(element, where,
                     "its data has " + std::to_string(chart.series.size()) +
                         " series, but its series groups have " + std::to_string(rows));
    }
    if (rows > MostSeries || columns > MostPoints) {
        context.Fail(element, where,
                     "it has more than " + std::to_string(MostSeries) + " series or " +
                         std::to_string(MostPoints) + " points in one");
    }
    for (const ChartSeries& series : chart.series) {
        if (series.points.size() != columns) {
            context.Fail(element, where,
                         "its series \"" + series.name + "\" has " + std::to_string(series.points.size()) +
                             " data points, but its category groups have " + std::to_string(columns));
        }
    }
    data.columnWidths.assign(columns, 0);
    data.rows.resize(rows);
}

}  // namespace

std::vector<ChartType> ChartTypes() {
    std::vector<ChartType> types;
    for (const Type& row : Types) {
        types.push_back({row.type, row.subtype});
    }
    return types;
}

std::vector<const XmlElement*> ChildrenNamed(const XmlElement* collection, std::string_view name) {
    std::vector<const XmlElement*> children;
    if (collection) {
        for (const XmlElement& child : collection->children) {
            if (child.name == name) {
                children.push_back(&child);
            }
        }
    }
    return children;
}

void SetChartType(Context& context, const XmlElement& element, const std::string& where, std::string type,
                  const std::string& subtype, ChartSeries& series) {
    if (type.empty()) {
        type = "Column";
    }
    for (const Type& row : Types) {
        if (EqualNoCase(row.type, type) && (subtype.empty() || EqualNoCase(row.subtype, subtype))) {
            series.kind = row.kind;
            series.stack = row.stack;
            series.curve = row.curve;
            series.exploded = row.exploded;
            series.joined = row.joined;
            series.range = row.range;
            return;
        }
    }
    context.Fail(element, where,
                 "a chart of the type " + type + (subtype.empty() ? "" : " " + subtype) + " cannot be drawn");
}

ItemPtr ReadChart(Context& context, const XmlElement& element, Extent container) {
    auto chart = std::make_unique<Chart>();
    ReadBasics(context, element, *chart, container);
    const std::string where = PlaceOf(element);
    Tablix& data = chart->data;
    data.name = chart->name;
    data.place = chart->place;
    data.dataSetName = element.ChildText("DataSetName");
    data.filters = ReadFilters(context, element, where);
    data.sorts = ReadSorts(context, element, where);
    chart->palette = context.ChildExpr(element, "Palette", where);
    if (element.Child("ChartSeriesHierarchy") || element.Child("ChartCategoryHierarchy") ||
        element.Child("ChartAreas")) {
        ReadNewerChart(context, element, *chart);
    } else {
        ReadOlderChart(context, element, *chart);
    }
    FinishRegion(context, element, where, *chart);
    CheckAreas(context, element, where, *chart);
    CheckMixture(context, element, where, *chart);
    return chart;
}

}  // namespace rdl
