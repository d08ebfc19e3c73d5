// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the element Chart in both forms of the schema (MS-RDL, Chart). Raises rdl::Error for what cannot be
// drawn.
#pragma once

#include "rdl/definition/chart.h"
#include "rdl/definition/item_reader.h"

namespace rdl {

ItemPtr ReadChart(Context& context, const XmlElement& element, Extent container);

// The parts that differ between the forms: series, categories, points, areas, legends and titles.
void ReadNewerChart(Context& context, const XmlElement& element, Chart& chart);
void ReadOlderChart(Context& context, const XmlElement& element, Chart& chart);  // 2003 and 2005

// Sets the kind of a series from a type and subtype of the newer schemas. Raises rdl::Error for a type that
// cannot be drawn.
void SetChartType(Context& context, const XmlElement& element, const std::string& where, std::string type,
                  const std::string& subtype, ChartSeries& series);

struct ChartType {
    std::string_view type, subtype;
};
// Returns the types that can be drawn.
std::vector<ChartType> ChartTypes();

// Returns the children `name` of a collection element; empty if `collection` is null. The document owns them.
std::vector<const XmlElement*> ChildrenNamed(const XmlElement* collection, std::string_view name);

}  // namespace rdl
