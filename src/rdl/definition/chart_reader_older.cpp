// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "rdl/definition/chart_reader.h"
#include "rdl/definition/group_reader.h"
#include "rdl/definition/style_reader.h"

namespace rdl {
namespace {

Expr Constant(const std::string& text) {
    Expr constant;
    constant.source = text;
    return constant;
}

class OlderReader {
 public:
    OlderReader(Context& context, const XmlElement& element, Chart& chart)
        : m_context(context), m_element(element), m_where(PlaceOf(element)), m_chart(chart) {}

    void Read() {
        m_chart.data.rowMembers = Hierarchy("SeriesGrouping", m_chart.seriesLabels);
        m_chart.data.columnMembers = Hierarchy("CategoryGrouping", m_chart.categoryLabels);
        for (const XmlElement* series : ChildrenNamed(m_element.Child("ChartData"), "ChartSeries")) {
            m_chart.series.push_back(Series(*series));
        }
        ReadArea();
        ReadLegend();
        if (const XmlElement* title = m_element.Child("Title")) {
            m_chart.titles.push_back(Text(*title));
        }
        m_chart.noData.caption = Of(m_element, m_element.Child("NoRowsMessage") ? "NoRowsMessage" : "NoRows");
    }

 private:
    Expr Of(const XmlElement& element, std::string_view name) {
        return m_context.ChildExpr(element, name, PropertyOf(m_where, element.name));
    }

    // Groupings stand in a list, each within the one before it.
    std::vector<TablixMember> Hierarchy(const std::string& kind, std::vector<Expr>& labels) {
        return Level(ChildrenNamed(m_element.Child(kind + "s"), kind), 0, labels);
    }

    std::vector<TablixMember> Level(const std::vector<const XmlElement*>& groupings, std::size_t level,
                                    std::vector<Expr>& labels) {
        std::vector<TablixMember> members;
        if (level >= groupings.size()) {
            return members;
        }
        for (const XmlElement& child : groupings[level]->children) {
            if (child.name == "DynamicSeries" || child.name == "DynamicCategories") {
                TablixMember& member = members.emplace_back();
                if (const XmlElement* grouping = child.Child("Grouping")) {
                    member.group = ReadGroup(m_context, *grouping);
                }
                member.sorts = ReadSorts(m_context, child, m_where);
                labels.push_back(Of(child, "Label"));
                member.members = Level(groupings, level + 1, labels);
            } else if (child.name == "StaticSeries" || child.name == "StaticCategories") {
                for (const XmlElement* one : ChildrenNamed(&child, "StaticMember")) {
                    labels.push_back(Of(*one, "Label"));
                    members.emplace_back().members = Level(groupings, level + 1, labels);
                }
            }
        }
        return members;
    }

    ChartSeries Series(const XmlElement& element) {
        ChartSeries series;
        series.name = "series " + std::to_string(m_chart.series.size() + 1);
        const bool isLine = EqualNoCase(element.ChildText("PlotType"), "Line") &&
                            EqualNoCase(m_element.ChildText("Type"), "Column");
        SetChartType(m_context, element, m_where, isLine ? "Line" : m_element.ChildText("Type"),
                     isLine ? "" : m_element.ChildText("Subtype"), series);
        for (const XmlElement* point : ChildrenNamed(element.Child("DataPoints"), "DataPoint")) {
            series.points.push_back(Point(*point, series));
        }
        const int width = m_context.Number(m_element, "PointWidth", m_where, 0, 10'000, 0);
        if (width > 0) {
            const int hundredths = std::min(width, 200);
            series.attributes.push_back({"PointWidth", Constant(std::to_string(hundredths / 100) +
                                                                (hundredths % 100 < 10 ? ".0" : ".") +
                                                                std::to_string(hundredths % 100))});
        }
        return series;
    }

    ChartPoint Point(const XmlElement& element, const ChartSeries& series) {
        ChartPoint point;
        std::vector<Expr> values;
        for (const XmlElement* value : ChildrenNamed(element.Child("DataValues"), "DataValue")) {
            values.push_back(Of(*value, "Value"));
        }
        values.resize(std::max<std::size_t>(values.size(), 4));
        if (series.kind == ChartKind::Scatter || series.kind == ChartKind::Bubble) {
            point.x = values[0];
            point.y = values[1];
            point.size = values[2];
        } else if (IsSpan(series)) {
            // High, low, close; with an opening value: high, low, open, close.
            const bool opens = !EqualNoCase(m_element.ChildText("Subtype"), "HighLowClose") &&
                               !m_element.ChildText("Subtype").empty();
            point.high = values[0];
            point.low = values[1];
            point.start = opens ? values[2] : Expr();
            point.end = values[opens ? 3 : 2];
        } else {
            point.y = values[0];
        }
        point.style = ReadStyle(m_context, element, m_where + ", DataPoint");
        if (const XmlElement* label = element.Child("DataLabel")) {
            point.label.isSet = true;
            point.label.visible = Of(*label, "Visible");
            point.label.text = Of(*label, "Value");
            if (!point.label.text.IsSet()) {
                point.label.useValue = Constant("true");
            }
            point.label.position = Of(*label, "Position");
            point.label.rotation = Of(*label, "Rotation");
            point.label.style = ReadStyle(m_context, *label, m_where + ", DataLabel");
        }
        if (const XmlElement* marker = element.Child("Marker")) {
            point.marker.type = Of(*marker, "Type");
            point.marker.size = Of(*marker, "Size");
            point.marker.style = ReadStyle(m_context, *marker, m_where + ", Marker");
        }
        return point;
    }

    ChartText Text(const XmlElement& element) {
        ChartText text;
        text.caption = Of(element, "Caption");
        text.position = Of(element, "Position");
        text.style = ReadStyle(m_context, element, PropertyOf(m_where, element.name));
        return text;
    }

    void ReadArea() {
        ChartArea& area = m_chart.areas.emplace_back();
        if (const XmlElement* plot = m_element.Child("PlotArea")) {
            area.style = ReadStyle(m_context, *plot, m_where + ", PlotArea");
        }
        area.categoryAxes.push_back(Axis("CategoryAxis"));
        area.valueAxes.push_back(Axis("ValueAxis"));
    }

    // In the older schemas an axis that is absent, or has no Visible, is hidden.
    ChartAxis Axis(std::string_view name) {
        ChartAxis axis;
        const XmlElement* element = m_element.Find({name, "Axis"});
        if (!element) {
            axis.visible = Constant("false");
            axis.majorGrid.enabled = Constant("false");
            return axis;
        }
        axis.visible = Of(*element, "Visible");
        if (!axis.visible.IsSet()) {
            axis.visible = Constant("false");
        }
        axis.minimum = Of(*element, "Min");
        axis.maximum = Of(*element, "Max");
        axis.interval = Of(*element, "MajorInterval");
        axis.crossAt = Of(*element, "CrossAt");
        axis.logScale = Of(*element, "LogScale");
        axis.reverse = Of(*element, "Reverse");
        axis.margin = Of(*element, "Margin");
        axis.interlaced = Of(*element, "Interlaced");
        if (const XmlElement* title = element->Child("Title")) {
            axis.title = Text(*title);
        }
        axis.majorGrid = Grid(element->Child("MajorGridLines"));
        axis.minorGrid = Grid(element->Child("MinorGridLines"));
        axis.minorGrid.interval = Of(*element, "MinorInterval");
        axis.majorTicks = Ticks(*element, "MajorTickMarks");
        axis.minorTicks = Ticks(*element, "MinorTickMarks");
        axis.style = ReadStyle(m_context, *element, m_where + ", " + std::string(name));
        return axis;
    }

    ChartLines Grid(const XmlElement* element) {
        ChartLines lines;
        lines.isSet = true;
        lines.enabled = Constant("false");
        if (element) {
            if (const Expr shown = Of(*element, "ShowGridLines"); shown.IsSet()) {
                lines.enabled = shown;
            }
            lines.style = ReadStyle(m_context, *element, PropertyOf(m_where, element->name));
        }
        return lines;
    }

    static ChartLines Ticks(const XmlElement& axis, std::string_view name) {
        ChartLines ticks;
        ticks.isSet = true;
        ticks.type = axis.ChildText(name);
        ticks.enabled = Constant(ticks.type.empty() || EqualNoCase(ticks.type, "None") ? "false" : "true");
        return ticks;
    }

    void ReadLegend() {
        const XmlElement* element = m_element.Child("Legend");
        const std::string where = m_where + ", Legend";
        if (!element || !m_context.Flag(*element, "Visible", where)) {
            return;
        }
        ChartLegend& legend = m_chart.legends.emplace_back();
        legend.position = Of(*element, "Position");
        legend.layout = Of(*element, "Layout");
        legend.style = ReadStyle(m_context, *element, where);
    }

    Context& m_context;
    const XmlElement& m_element;
    const std::string m_where;
    Chart& m_chart;
};

}  // namespace

void ReadOlderChart(Context& context, const XmlElement& element, Chart& chart) {
    OlderReader(context, element, chart).Read();
}

}  // namespace rdl
