// SPDX-License-Identifier: GPL-3.0-or-later
// A chart's definition (MS-RDL, Chart). Series and categories are the rows and columns of a data region, so
// grouping, sorting, filters and scopes work as in every region; cells are the data points. Both forms of the
// schema (2003 and 2005; 2008 and later) are converted to this one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "rdl/definition/model.h"

namespace rdl {

enum class ChartKind {
    Column,
    Bar,
    Line,
    Area,
    Pie,
    Doughnut,
    Scatter,
    Bubble,
    Stock,
    Candlestick,
    ErrorBar,
    BoxPlot,
    Polar,
    Radar,
    Funnel,
    Pyramid,
    TreeMap,
    Sunburst
};
enum class ChartStack { None, Stacked, Percent };
enum class ChartCurve { Straight, Smooth, Stepped };

struct ChartText {  // a title of the chart, an axis or a legend
    Expr caption, position, hidden;
    Style style;
};

struct ChartLabel {
    Expr visible, text, useValue, position;
    Expr rotation;  // degrees clockwise
    Style style;
    bool isSet = false;
};

struct ChartMarker {
    Expr type, size;
    Style style;
};

struct ChartPoint {
    Expr x, y, high, low, start, end, mean, median, size, axisLabel;
    Style style;
    ChartLabel label;
    ChartMarker marker;
};

// The custom attributes of a series that are understood.
inline constexpr std::string_view ChartAttributeNames[] = {
    "AreaDrawingStyle", "BoxPlotShowAverage", "BoxPlotShowMedian",    "DoughnutRadius",
    "ErrorBarStyle",    "FunnelLabelStyle",   "FunnelMinPointHeight", "FunnelNeckHeight",
    "FunnelNeckWidth",  "FunnelPointGap",     "FunnelStyle",          "LabelValueType",
    "OpenCloseStyle",   "PieLabelStyle",      "PointWidth",           "PolarDrawingStyle",
    "PriceDownColor",   "PriceUpColor",       "PyramidLabelStyle",    "PyramidMinPointHeight",
    "PyramidPointGap",  "PyramidValueType",   "RadarDrawingStyle",    "ShowOpenClose"};

struct ChartAttribute {
    std::string_view name;  // of ChartAttributeNames
    Expr value;
};

struct ChartSeries {  // as defined; grouping creates several series from it
    std::string name;
    ChartKind kind = ChartKind::Column;
    ChartStack stack = ChartStack::None;
    ChartCurve curve = ChartCurve::Straight;
    bool exploded = false;           // Pie and Doughnut
    bool joined = false;             // Scatter: a line from point to point
    bool range = false;              // points reach from a low to a high value
    std::vector<ChartPoint> points;  // one for each leaf of the categories
    Style style;                     // default of the points
    ChartLabel label;
    ChartMarker marker;
    Expr hidden, legendText, hiddenInLegend;
    std::string area, valueAxis;  // by name
    std::vector<ChartAttribute> attributes;

    // Returns the value of a custom attribute; unset if the series does not have it.
    const Expr& Attribute(std::string_view wanted) const {
        static const Expr unset;
        for (const ChartAttribute& attribute : attributes) {
            if (attribute.name == wanted) {
                return attribute.value;
            }
        }
        return unset;
    }
};

// What the points of an area are placed in. An area has one of them.
enum class ChartFrame { Axes, LevelAxes, Circle, Pie, Funnel, Pyramid, TreeMap, Sunburst };

inline ChartFrame FrameOf(const ChartSeries& series) {
    switch (series.kind) {
        case ChartKind::Bar:
            return ChartFrame::LevelAxes;
        case ChartKind::Polar:
        case ChartKind::Radar:
            return ChartFrame::Circle;
        case ChartKind::Pie:
        case ChartKind::Doughnut:
            return ChartFrame::Pie;
        case ChartKind::Funnel:
            return ChartFrame::Funnel;
        case ChartKind::Pyramid:
            return ChartFrame::Pyramid;
        case ChartKind::TreeMap:
            return ChartFrame::TreeMap;
        case ChartKind::Sunburst:
            return ChartFrame::Sunburst;
        default:
            return ChartFrame::Axes;
    }
}

// Whether the categories share a whole and have the colours of the palette.
inline bool HasSlices(const ChartSeries& series) {
    return FrameOf(series) >= ChartFrame::Pie;
}

// Whether the slices are nested by the groups of the chart.
inline bool IsTree(const ChartSeries& series) {
    return FrameOf(series) >= ChartFrame::TreeMap;
}

// Whether a point is a line from its low to its high value.
inline bool IsSpan(const ChartSeries& series) {
    return series.kind >= ChartKind::Stock && series.kind <= ChartKind::BoxPlot;
}

struct ChartLines {  // grid lines or tick marks
    Expr enabled, interval;
    std::string type;  // of tick marks: None, Inside, Outside, Cross
    Style style;
    bool isSet = false;
};

struct ChartAxis {
    std::string name;
    Expr visible, hideLabels, minimum, maximum, interval, crossAt, logScale, logBase, reverse, margin,
        includeZero, angle, interlaced, interlacedColor, location;
    ChartText title;
    ChartLines majorGrid, minorGrid, majorTicks, minorTicks;
    Style style;
};

struct ChartArea {
    std::string name;
    std::vector<ChartAxis> categoryAxes, valueAxes;  // the primary one first; at least one of each
    Style style;
    Expr hidden;
};

struct ChartLegend {
    Expr hidden, position, layout;
    ChartText title;
    Style style;
};

struct Chart : ReportItem {
    Chart() : ReportItem(ItemKind::Chart) {}
    // Rows are the series hierarchy, columns the category hierarchy.
    Tablix data;
    std::vector<Expr> seriesLabels, categoryLabels;  // by member in preorder
    std::vector<ChartSeries> series;                 // one for each leaf row
    std::vector<ChartArea> areas;                    // at least one
    std::vector<ChartLegend> legends;
    std::vector<ChartText> titles;
    ChartText noData;
    Expr palette;
    std::vector<Expr> customColors;
};

// Visits every property of a chart that may be an expression, except those of its data region.
template <typename Visit>
class ChartWalk {
 public:
    explicit ChartWalk(const Visit& visit) : m_visit(visit) {}

    void Go(const Chart& chart) {
        Each(chart.seriesLabels);
        Each(chart.categoryLabels);
        for (const ChartSeries& series : chart.series) {
            Series(series);
        }
        for (const ChartArea& area : chart.areas) {
            Styles(area.style);
            m_visit(area.hidden);
            for (const auto* axes : {&area.categoryAxes, &area.valueAxes}) {
                for (const ChartAxis& axis : *axes) {
                    Axis(axis);
                }
            }
        }
        for (const ChartLegend& legend : chart.legends) {
            All(legend.hidden, legend.position, legend.layout);
            Text(legend.title);
            Styles(legend.style);
        }
        for (const ChartText& title : chart.titles) {
            Text(title);
        }
        Text(chart.noData);
        m_visit(chart.palette);
        Each(chart.customColors);
    }

 private:
    template <typename... Rest>
    void All(const Rest&... values) {
        (m_visit(values), ...);
    }
    void Each(const std::vector<Expr>& values) {
        for (const Expr& value : values) {
            m_visit(value);
        }
    }
    void Styles(const Style& style) {
        for (const auto& [name, value] : style.properties) {
            m_visit(value);
        }
    }
    void Text(const ChartText& text) {
        All(text.caption, text.position, text.hidden);
        Styles(text.style);
    }
    void Label(const ChartLabel& label) {
        All(label.visible, label.text, label.useValue, label.position, label.rotation);
        Styles(label.style);
    }
    void Marker(const ChartMarker& marker) {
        All(marker.type, marker.size);
        Styles(marker.style);
    }
    void Series(const ChartSeries& series) {
        for (const ChartPoint& point : series.points) {
            All(point.x, point.y, point.high, point.low, point.start, point.end, point.mean, point.median,
                point.size, point.axisLabel);
            Styles(point.style);
            Label(point.label);
            Marker(point.marker);
        }
        Styles(series.style);
        Label(series.label);
        Marker(series.marker);
        All(series.hidden, series.legendText, series.hiddenInLegend);
        for (const ChartAttribute& attribute : series.attributes) {
            m_visit(attribute.value);
        }
    }
    void Lines(const ChartLines& lines) {
        All(lines.enabled, lines.interval);
        Styles(lines.style);
    }
    void Axis(const ChartAxis& axis) {
        All(axis.visible, axis.hideLabels, axis.minimum, axis.maximum, axis.interval, axis.crossAt,
            axis.logScale, axis.logBase, axis.reverse, axis.margin, axis.includeZero, axis.angle,
            axis.interlaced, axis.interlacedColor, axis.location);
        Text(axis.title);
        Lines(axis.majorGrid);
        Lines(axis.minorGrid);
        Lines(axis.majorTicks);
        Lines(axis.minorTicks);
        Styles(axis.style);
    }

    const Visit& m_visit;
};

}  // namespace rdl
