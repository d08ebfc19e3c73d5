// SPDX-License-Identifier: GPL-3.0-or-later
// What new parts of a chart are written as, in the form of 2008 and later (MS-RDL, Chart). Each function
// ...Xml returns one element, as InsertXml takes it.
#pragma once

#include <string>

#include "designer/graphics/chart_parts.h"

namespace designer {

std::string SeriesXml(const ChartDesign& design, const ChartValue& value, const std::string& name);
// Returns a name that no series of the chart has, with this number or a larger one; `chart` may be NoElement.
std::string SeriesName(const Document& document, ElementId chart, std::size_t number);
enum class ChartAxis { Categories, Values };
std::string AxisXml(ChartAxis axis, const ChartDesign& design);
std::string AreasXml(const ChartDesign& design);
std::string LegendXml(const std::string& position);
std::string TitleXml(const std::string& caption);

}  // namespace designer
