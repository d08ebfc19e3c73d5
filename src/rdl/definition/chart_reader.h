// Charts of both forms of the schema.
#pragma once

#include "rdl/definition/chart.h"
#include "rdl/definition/item_reader.h"

namespace rdl {

ItemPtr ReadChart(Context& context, const XmlElement& element, Extent container);

// The parts that the forms have of their own: series, categories, points, areas, legends and titles.
void ReadNewerChart(Context& context, const XmlElement& element, Chart& chart);
void ReadOlderChart(Context& context, const XmlElement& element, Chart& chart);  // 2003 and 2005

// The series of a type and subtype of the newer schemas. Fails for what cannot be drawn.
void SetChartType(Context& context, const XmlElement& element, const std::string& where, std::string type,
                  const std::string& subtype, ChartSeries& series);

// The children of that name of a collection element, which may be missing.
std::vector<const XmlElement*> ChildrenNamed(const XmlElement* collection, std::string_view name);

}  // namespace rdl
