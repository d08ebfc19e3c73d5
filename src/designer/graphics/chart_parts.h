// SPDX-License-Identifier: GPL-3.0-or-later
// What a chart shows and how, as its dialog has it (MS-RDL, Chart, in all schemas).
#pragma once

#include <map>
#include <string>
#include <vector>

#include "designer/document/document.h"
#include "designer/graphics/chart_groups.h"
#include "designer/graphics/chart_types.h"

namespace designer {

struct ChartValue {
    ElementId series = NoElement;  // the ChartSeries; NoElement: a new one
    // The same value in the further leaves of the series groups.
    std::vector<ElementId> copies = {};
    std::string label = {};                          // in the legend; a text or an expression
    std::map<std::string, std::string> values = {};  // expressions by the names of ValueNamesOf
    bool operator==(const ChartValue&) const = default;
};

struct ChartDesign {
    // Of the first series, with the words of 2008 and later.
    std::string type = {}, subtype = {};
    std::string dataSet = {};
    std::vector<ChartValue> values = {};
    std::vector<ChartGroup> categories = {}, series = {};  // the outermost group first
    std::string title = {}, categoryTitle = {}, valueTitle = {};
    std::string legend = {};  // its position; empty: none is shown
    std::string palette = {};
    bool showsLabels = false;
    // Groups that the lists above do not have, such as one by two expressions. They stay as they are.
    bool hasOtherGroups = false;
    bool operator==(const ChartDesign&) const = default;
};

// Whether the chart can be read: it is of the form of its schema.
bool HasChartDesign(const Document& document, ElementId chart);
// Whether the chart is of the form of 2003 and 2005: its groups are not beside each other.
bool IsOlderChart(const Document& document, ElementId chart);
ChartDesign ReadChartDesign(const Document& document, ElementId chart);

// Writes what differs from the chart as it is, as one step; all else of the chart stays. A value that the
// type of chart needs and the design lacks gets the expression of one that it has.
void PutChartDesign(Document& document, ElementId chart, ChartDesign design);

// Returns the type in the gallery; null if it is none of these.
const ChartType* TypeOf(const ChartDesign& design);
// Returns the names of the values that a series of the chart has.
std::vector<std::string> ValueNamesOf(const ChartDesign& design);
// Gives values that the type needs and that are missing the expression of one that is there: in new values,
// and in all if `isOtherType`.
void CompleteValues(ChartDesign& design, bool isOtherType);

// Returns the children of a new Chart as InsertXml takes them, without its data set.
std::string NewChartContent(const Document& document, const ChartDesign& design);

}  // namespace designer
