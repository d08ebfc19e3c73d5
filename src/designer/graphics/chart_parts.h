// SPDX-License-Identifier: GPL-3.0-or-later
// What a chart shows and how, as its dialog has it (MS-RDL, Chart, in the schemas since 2008).
#pragma once

#include <map>
#include <string>
#include <vector>

#include "designer/document/document.h"

namespace designer {

struct ChartValue {
    ElementId series = NoElement;                    // the ChartSeries; NoElement: a new one
    std::string label = {};                          // in the legend; a text or an expression
    std::map<std::string, std::string> values = {};  // expressions by the names of ValueNamesOf
    bool operator==(const ChartValue&) const = default;
};

struct ChartGroup {
    ElementId member = NoElement;  // the ChartMember; NoElement: a new one
    std::string expression = {};
    bool operator==(const ChartGroup&) const = default;
};

struct ChartDesign {
    std::string type = {}, subtype = {};  // of the first series
    std::string dataSet = {};
    std::vector<ChartValue> values = {};
    std::vector<ChartGroup> categories = {}, series = {};  // the outermost group first
    std::string title = {}, categoryTitle = {}, valueTitle = {};
    std::string legend = {};  // its position; empty: none is shown
    std::string palette = {};
    bool showsLabels = false;
    // Groups that the lists above do not have, such as two beside each other. They stay as they are.
    bool hasOtherGroups = false;
    bool operator==(const ChartDesign&) const = default;
};

// Whether the chart is of the form that this reads: that of 2008 and later.
bool HasChartDesign(const Document& document, ElementId chart);
ChartDesign ReadChartDesign(const Document& document, ElementId chart);

// Writes what differs from the chart as it is, as one step; all else of the chart stays. Values that the type
// of chart needs and that are missing become those that are there.
void PutChartDesign(Document& document, ElementId chart, ChartDesign design);

// Returns the children of a new Chart as InsertXml takes them, without its data set.
std::string NewChartContent(const Document& document, const ChartDesign& design);

}  // namespace designer
