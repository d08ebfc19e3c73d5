// SPDX-License-Identifier: GPL-3.0-or-later
// Charts in the form of 2003 and 2005: one type for all series, values in an order of their own (MS-RDL,
// Chart).
#pragma once

#include "designer/graphics/chart_parts.h"

namespace designer {

// What ReadChartDesign and PutChartDesign do for these charts.
ChartDesign ReadOlderChart(const Document& document, ElementId chart);
void PutOlderChart(Document& document, ElementId chart, ChartDesign design);

}  // namespace designer
