// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/chart_reader.h"
#include "rdl/definition/group_reader.h"
#include "rdl/definition/style_reader.h"

namespace rdl {
namespace {

class NewerReader {
 public:
    NewerReader(Context& context, const XmlElement& element, Chart& chart)
        : m_context(context), m_element(element), m_where(PlaceOf(element)), m_chart(chart) {}

    void Read() {
        m_chart.data.rowMembers =
            Members(m_element.Find({"ChartSeriesHierarchy", "ChartMembers"}), m_chart.seriesLabels);
        m_chart.data.columnMembers =
            Members(m_element.Find({"ChartCategoryHierarchy", "ChartMembers"}), m_chart.categoryLabels);
        ReadData();
        for (const XmlElement* area : ChildrenNamed(m_element.Child("ChartAreas"), "ChartArea")) {
            m_chart.areas.push_back(Area(*area));
        }
        for (const XmlElement* legend : ChildrenNamed(m_element.Child("ChartLegends"), "ChartLegend")) {
            m_chart.legends.push_back(Legend(*legend));
        }
        for (const XmlElement* title : ChildrenNamed(m_element.Child("ChartTitles"), "ChartTitle")) {
            m_chart.titles.push_back(Text(*title));
        }
        if (const XmlElement* message = m_element.Child("ChartNoDataMessage")) {
            m_chart.noData = Text(*message);
        }
        for (const XmlElement* color :
             ChildrenNamed(m_element.Child("ChartCustomPaletteColors"), "ChartCustomPaletteColor")) {
            m_chart.customColors.push_back(m_context.MakeExpr(*color, m_where + ", custom colour"));
        }
    }

 private:
    Expr Of(const XmlElement& element, std::string_view name) {
        return m_context.ChildExpr(element, name, PropertyOf(m_where, element.name));
    }

    std::vector<TablixMember> Members(const XmlElement* collection, std::vector<Expr>& labels) {
        std::vector<TablixMember> members;
        for (const XmlElement* element : ChildrenNamed(collection, "ChartMember")) {
            TablixMember member;
            if (const XmlElement* group = element->Child("Group")) {
                member.group = ReadGroup(m_context, *group);
            }
            member.sorts = ReadSorts(m_context, *element, m_where);
            labels.push_back(Of(*element, "Label"));
            member.members = Members(element->Child("ChartMembers"), labels);
            members.push_back(std::move(member));
        }
        return members;
    }

    void ReadData() {
        const XmlElement* data = m_element.Child("ChartData");
        if (data && data->Child("ChartDerivedSeriesCollection")) {
            m_context.Fail(*data, m_where, "a series derived from another cannot be drawn");
        }
        const XmlElement* collection = data ? data->Child("ChartSeriesCollection") : nullptr;
        for (const XmlElement* series : ChildrenNamed(collection, "ChartSeries")) {
            m_chart.series.push_back(Series(*series));
        }
    }

    ChartSeries Series(const XmlElement& element) {
        ChartSeries series;
        series.name = element.AttributeOf("Name");
        SetChartType(m_context, element, m_where + ", " + PlaceOf(element), element.ChildText("Type"),
                     element.ChildText("Subtype"), series);
        const XmlElement* points = element.Child("ChartDataPoints");
        for (const XmlElement* point : ChildrenNamed(points, "ChartDataPoint")) {
            series.points.push_back(Point(*point));
        }
        series.style = ReadStyle(m_context, element, m_where + ", " + PlaceOf(element));
        series.label = Label(element.Child("ChartDataLabel"));
        series.marker = Marker(element.Child("ChartMarker"));
        series.hidden = Of(element, "Hidden");
        if (const XmlElement* legend = element.Child("ChartItemInLegend")) {
            series.legendText = Of(*legend, "LegendText");
            series.hiddenInLegend = Of(*legend, "Hidden");
        }
        series.area = element.ChildText("ChartAreaName");
        series.valueAxis = element.ChildText("ValueAxisName");
        ReadAttributes(element, series);
        return series;
    }

    void ReadAttributes(const XmlElement& element, ChartSeries& series) {
        for (const XmlElement* property :
             ChildrenNamed(element.Child("CustomProperties"), "CustomProperty")) {
            const std::string name = property->ChildText("Name");
            for (const std::string_view known : ChartAttributeNames) {
                if (name == known) {
                    series.attributes.push_back({known, Of(*property, "Value")});
                }
            }
        }
    }

    ChartPoint Point(const XmlElement& element) {
        ChartPoint point;
        if (const XmlElement* values = element.Child("ChartDataPointValues")) {
            point.x = Of(*values, "X");
            point.y = Of(*values, values->Child("Y") ? "Y" : "High");
            point.high = Of(*values, values->Child("High") ? "High" : "Y");
            point.low = Of(*values, "Low");
            point.start = Of(*values, "Start");
            point.end = Of(*values, "End");
            point.mean = Of(*values, "Mean");
            point.median = Of(*values, "Median");
            point.size = Of(*values, "Size");
        }
        point.axisLabel = Of(element, "AxisLabel");
        point.style = ReadStyle(m_context, element, m_where + ", ChartDataPoint");
        point.label = Label(element.Child("ChartDataLabel"));
        point.marker = Marker(element.Child("ChartMarker"));
        return point;
    }

    ChartLabel Label(const XmlElement* element) {
        ChartLabel label;
        if (element) {
            label.isSet = true;
            label.visible = Of(*element, "Visible");
            label.text = Of(*element, "Label");
            label.useValue = Of(*element, "UseValueAsLabel");
            label.position = Of(*element, "Position");
            label.rotation = Of(*element, "Rotation");
            label.style = ReadStyle(m_context, *element, m_where + ", ChartDataLabel");
        }
        return label;
    }

    ChartMarker Marker(const XmlElement* element) {
        ChartMarker marker;
        if (element) {
            marker.type = Of(*element, "Type");
            marker.size = Of(*element, "Size");
            marker.style = ReadStyle(m_context, *element, m_where + ", ChartMarker");
        }
        return marker;
    }

    ChartText Text(const XmlElement& element) {
        ChartText text;
        text.caption = Of(element, "Caption");
        text.position = Of(element, "Position");
        text.hidden = Of(element, "Hidden");
        text.style = ReadStyle(m_context, element, m_where + ", " + PlaceOf(element));
        return text;
    }

    ChartLegend Legend(const XmlElement& element) {
        ChartLegend legend;
        legend.hidden = Of(element, "Hidden");
        legend.position = Of(element, "Position");
        legend.layout = Of(element, "Layout");
        if (const XmlElement* title = element.Child("ChartLegendTitle")) {
            legend.title = Text(*title);
        }
        legend.style = ReadStyle(m_context, element, m_where + ", " + PlaceOf(element));
        return legend;
    }

    ChartArea Area(const XmlElement& element) {
        ChartArea area;
        area.name = element.AttributeOf("Name");
        area.hidden = Of(element, "Hidden");
        area.style = ReadStyle(m_context, element, m_where + ", " + PlaceOf(element));
        for (const XmlElement* axis : ChildrenNamed(element.Child("ChartCategoryAxes"), "ChartAxis")) {
            area.categoryAxes.push_back(Axis(*axis));
        }
        for (const XmlElement* axis : ChildrenNamed(element.Child("ChartValueAxes"), "ChartAxis")) {
            area.valueAxes.push_back(Axis(*axis));
        }
        return area;
    }

    ChartAxis Axis(const XmlElement& element) {
        ChartAxis axis;
        axis.name = element.AttributeOf("Name");
        axis.visible = Of(element, "Visible");
        axis.hideLabels = Of(element, "HideLabels");
        axis.minimum = Of(element, "Minimum");
        axis.maximum = Of(element, "Maximum");
        axis.interval = Of(element, "Interval");
        axis.crossAt = Of(element, "CrossAt");
        axis.logScale = Of(element, "LogScale");
        axis.logBase = Of(element, "LogBase");
        axis.reverse = Of(element, "Reverse");
        axis.margin = Of(element, "Margin");
        axis.includeZero = Of(element, "IncludeZero");
        axis.angle = Of(element, "Angle");
        axis.interlaced = Of(element, "Interlaced");
        axis.interlacedColor = Of(element, "InterlacedColor");
        axis.location = Of(element, "Location");
        if (const XmlElement* title = element.Child("ChartAxisTitle")) {
            axis.title = Text(*title);
        }
        axis.majorGrid = Lines(element.Child("ChartMajorGridLines"));
        axis.minorGrid = Lines(element.Child("ChartMinorGridLines"));
        axis.majorTicks = Lines(element.Child("ChartMajorTickMarks"));
        axis.minorTicks = Lines(element.Child("ChartMinorTickMarks"));
        axis.style = ReadStyle(m_context, element, m_where + ", " + PlaceOf(element));
        return axis;
    }

    ChartLines Lines(const XmlElement* element) {
        ChartLines lines;
        if (element) {
            lines.isSet = true;
            lines.enabled = Of(*element, "Enabled");
            lines.interval = Of(*element, "Interval");
            lines.type = element->ChildText("Type");
            lines.style = ReadStyle(m_context, *element, PropertyOf(m_where, element->name));
        }
        return lines;
    }

    Context& m_context;
    const XmlElement& m_element;
    const std::string m_where;
    Chart& m_chart;
};

}  // namespace

void ReadNewerChart(Context& context, const XmlElement& element, Chart& chart) {
    NewerReader(context, element, chart).Read();
}

}  // namespace rdl
