// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphics/chart_elements.h"

#include <algorithm>

#include "designer/document/xml_text.h"
#include "designer/tables/tablix_shape.h"
#include "platform/base/ascii.h"

namespace designer {
namespace {

constexpr std::string_view GridXml =
    "<ChartMajorGridLines><Enabled>True</Enabled><Style><Border><Color>#dddddd</Color><Style>Solid</Style>"
    "</Border></Style></ChartMajorGridLines>";

}  // namespace

std::string SeriesXml(const ChartDesign& design, const ChartValue& value, const std::string& name) {
    std::string values;
    for (const std::string& one : ValueNamesOf(design)) {
        const auto found = value.values.find(one);
        values += found == value.values.end() ? std::string() : LeafOf(one, found->second);
    }
    const bool isPart = SameAscii(design.type, "Shape");
    const std::string label =
        !design.showsLabels ? std::string()
                            : ElementXml("ChartDataLabel", "<Style />" +
                                                               (isPart ? LeafOf("Label", "#PERCENT{P0}")
                                                                       : LeafOf("UseValueAsLabel", "true")) +
                                                               LeafOf("Visible", "true"));
    const bool hasMarkers = SameAscii(design.type, "Line");
    return "<ChartSeries Name=\"" + EscapedValue(name, '"') + "\">" +
           ElementXml("ChartDataPoints",
                      ElementXml("ChartDataPoint",
                                 ElementXml("ChartDataPointValues", values) + label +
                                     (hasMarkers ? ElementXml("ChartMarker", LeafOf("Type", "Circle"))
                                                 : std::string()))) +
           LeafOf("Type", design.type) + LeafOf("Subtype", design.subtype) + "<Style /></ChartSeries>";
}

// Series names need not differ from those of items.
std::string SeriesName(const Document& document, ElementId chart, std::size_t number) {
    std::vector<std::string> taken;
    if (chart != NoElement) {
        for (const ElementId id :
             ChildrenNamed(document, chart, "ChartData/ChartSeriesCollection", "ChartSeries")) {
            taken.push_back(document.Attribute(id, "Name").value_or(""));
        }
    }
    std::string name;
    do {
        name = "Series" + std::to_string(number++);
    } while (std::find(taken.begin(), taken.end(), name) != taken.end());
    return name;
}

std::string AxisXml(ChartAxis axis, const ChartDesign& design) {
    const bool isValue = axis == ChartAxis::Values;
    const std::string& title = isValue ? design.valueTitle : design.categoryTitle;
    return "<ChartAxis Name=\"Primary\"><Style><FontSize>8pt</FontSize>" +
           (isValue ? LeafOf("Format", "N0") : std::string()) + "</Style>" +
           (title.empty() ? std::string()
                          : ElementXml("ChartAxisTitle", LeafOf("Caption", title) +
                                                             "<Style><FontSize>8pt</FontSize></Style>")) +
           (isValue ? std::string(GridXml) : std::string()) +
           // The first bar is at the top.
           (!isValue && SameAscii(design.type, "Bar") ? LeafOf("Reverse", "true") : std::string()) +
           "</ChartAxis>";
}

std::string AreasXml(const ChartDesign& design) {
    return "<ChartAreas><ChartArea Name=\"Default\"><ChartCategoryAxes>" +
           AxisXml(ChartAxis::Categories, design) + "</ChartCategoryAxes><ChartValueAxes>" +
           AxisXml(ChartAxis::Values, design) + "</ChartValueAxes><Style /></ChartArea></ChartAreas>";
}

std::string LegendXml(const std::string& position) {
    return "<ChartLegend Name=\"Default\"><Style><FontSize>8pt</FontSize></Style>" +
           LeafOf("Position", position) + "</ChartLegend>";
}

std::string TitleXml(const std::string& caption) {
    return "<ChartTitle Name=\"Default\">" + LeafOf("Caption", caption) +
           "<Style><FontSize>11pt</FontSize><FontWeight>Bold</FontWeight></Style></ChartTitle>";
}

}  // namespace designer
