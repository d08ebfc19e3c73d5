// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphics/chart_types.h"

#include <algorithm>
#include <sstream>

#include "platform/base/ascii.h"

namespace designer {
namespace {

constexpr std::string_view One = "Y";

constexpr ChartType Types[] = {
    {"Column", "Plain", "Columns", One, true, "Column", "Plain"},
    {"Column", "Stacked", "Stacked columns", One, true, "Column", "Stacked"},
    {"Column", "PercentStacked", "Columns, 100 %", One, true, "Column", "PercentStacked"},
    {"Bar", "Plain", "Bars", One, true, "Bar", "Plain"},
    {"Bar", "Stacked", "Stacked bars", One, true, "Bar", "Stacked"},
    {"Bar", "PercentStacked", "Bars, 100 %", One, true, "Bar", "PercentStacked"},
    {"Line", "Plain", "Lines", One, true, "Line", "Plain"},
    {"Line", "Smooth", "Smooth lines", One, true, "Line", "Smooth"},
    {"Line", "Stepped", "Stepped lines", One},
    {"Area", "Plain", "Areas", One, true, "Area", "Plain"},
    {"Area", "Stacked", "Stacked areas", One, true, "Area", "Stacked"},
    {"Area", "PercentStacked", "Areas, 100 %", One, true, "Area", "PercentStacked"},
    {"Shape", "Pie", "Pie", One, false, "Pie", "Plain"},
    {"Shape", "ExplodedPie", "Exploded pie", One, false, "Pie", "Exploded"},
    {"Shape", "Doughnut", "Doughnut", One, false, "Doughnut", "Plain"},
    {"Shape", "Funnel", "Funnel", One, false},
    {"Shape", "Pyramid", "Pyramid", One, false},
    {"Shape", "TreeMap", "Tree map", One, false},
    {"Shape", "Sunburst", "Sunburst", One, false},
    {"Polar", "Radar", "Radar", One, false},
    {"Scatter", "Plain", "Points", "X Y", true, "Scatter", "Plain"},
    {"Scatter", "Line", "Joined points", "X Y", true, "Scatter", "Line"},
    {"Scatter", "Bubble", "Bubbles", "X Y Size", true, "Bubble", "Plain"},
    {"Range", "Plain", "Range", "High Low"},
    {"Range", "Column", "Range of columns", "High Low"},
    {"Range", "Stock", "Stock prices", "High Low Start End", true, "Stock", "OpenHighLowClose"},
    {"Range", "Candlestick", "Candlesticks", "High Low Start End", true, "Stock", "Candlestick"},
    {"Range", "ErrorBar", "Error bars", "Y High Low"},
    {"Range", "BoxPlot", "Boxes", "High Low Start End Median Mean"},
};

}  // namespace

std::span<const ChartType> ChartTypes() {
    return Types;
}

const ChartType* FindChartType(std::string_view type, std::string_view subtype) {
    const std::string_view wanted = type.empty() ? Types[0].type : type;
    for (const ChartType& row : Types) {
        if (SameAscii(row.type, wanted) && (subtype.empty() || SameAscii(row.subtype, subtype))) {
            return &row;
        }
    }
    return nullptr;
}

const ChartType* FindOlderChartType(std::string_view type, std::string_view subtype) {
    for (const ChartType& row : Types) {
        if (!row.olderType.empty() && SameAscii(row.olderType, type) &&
            (subtype.empty() || SameAscii(row.olderSubtype, subtype))) {
            return &row;
        }
    }
    return nullptr;
}

std::vector<std::string> ValueNamesOf(const ChartType* type) {
    std::istringstream words{std::string(type ? type->values : One)};
    std::vector<std::string> names;
    for (std::string word; words >> word;) {
        names.push_back(word);
    }
    return names;
}

std::string_view TitleOfValue(std::string_view name) {
    return name == "Y" ? "Value" : name == "Start" ? "Open" : name == "End" ? "Close" : name;
}

}  // namespace designer
