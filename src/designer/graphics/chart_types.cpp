// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphics/chart_types.h"

#include <algorithm>
#include <sstream>

#include "platform/base/ascii.h"

namespace designer {
namespace {

constexpr std::string_view One = "Y";

constexpr ChartType Types[] = {
    {"Column", "Plain", "Columns", One},
    {"Column", "Stacked", "Stacked columns", One},
    {"Column", "PercentStacked", "Columns, 100 %", One},
    {"Bar", "Plain", "Bars", One},
    {"Bar", "Stacked", "Stacked bars", One},
    {"Bar", "PercentStacked", "Bars, 100 %", One},
    {"Line", "Plain", "Lines", One},
    {"Line", "Smooth", "Smooth lines", One},
    {"Line", "Stepped", "Stepped lines", One},
    {"Area", "Plain", "Areas", One},
    {"Area", "Stacked", "Stacked areas", One},
    {"Area", "PercentStacked", "Areas, 100 %", One},
    {"Shape", "Pie", "Pie", One, false},
    {"Shape", "ExplodedPie", "Exploded pie", One, false},
    {"Shape", "Doughnut", "Doughnut", One, false},
    {"Shape", "Funnel", "Funnel", One, false},
    {"Shape", "Pyramid", "Pyramid", One, false},
    {"Shape", "TreeMap", "Tree map", One, false},
    {"Shape", "Sunburst", "Sunburst", One, false},
    {"Polar", "Radar", "Radar", One, false},
    {"Scatter", "Plain", "Points", "X Y"},
    {"Scatter", "Line", "Joined points", "X Y"},
    {"Scatter", "Bubble", "Bubbles", "X Y Size"},
    {"Range", "Plain", "Range", "High Low"},
    {"Range", "Column", "Range of columns", "High Low"},
    {"Range", "Stock", "Stock prices", "High Low Start End"},
    {"Range", "Candlestick", "Candlesticks", "High Low Start End"},
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
