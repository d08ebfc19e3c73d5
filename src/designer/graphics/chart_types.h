// SPDX-License-Identifier: GPL-3.0-or-later
// The types of charts that a user chooses from (MS-RDL, ChartSeries, Type and Subtype; ChartDataPointValues).
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace designer {

struct ChartType {
    std::string_view type, subtype;
    std::string_view title;   // for users
    std::string_view values;  // what a point has, separated by blanks: "High Low"
    bool hasAxes = true;
    // The words of 2003 and 2005; empty if charts of these years cannot have the type.
    std::string_view olderType = {}, olderSubtype = {};
};

// Returns all of them in the order of the gallery.
std::span<const ChartType> ChartTypes();

// Returns the type with these words, in any case; an empty subtype is the first one of the type. Null if the
// gallery does not have it.
const ChartType* FindChartType(std::string_view type, std::string_view subtype);

// The same by the words of 2003 and 2005.
const ChartType* FindOlderChartType(std::string_view type, std::string_view subtype);

// Returns the names of the values of a point of the type: those of "Y" for null.
std::vector<std::string> ValueNamesOf(const ChartType* type);
// Returns what users call such a value: "Open" for Start.
std::string_view TitleOfValue(std::string_view name);

}  // namespace designer
