// SPDX-License-Identifier: GPL-3.0-or-later
// New charts, gauges, indicators, bar codes and subreports (MS-RDL, Chart, GaugePanel, CustomReportItem and
// Subreport). Each runs as it is inserted.
#pragma once

#include <string>
#include <string_view>

#include "designer/document/document.h"
#include "designer/document/report_items.h"
#include "designer/graphics/chart_types.h"

namespace designer {

enum class NewGraphic { Chart, Gauge, Indicator, BarCode, Subreport };

// What the user has chosen for the item.
struct GraphicChoice {
    const ChartType* chart = nullptr;  // null: columns
    std::string dataSet = {};          // empty: the first one of the report
    std::string report = {};           // the file of a subreport, as the report names it
};

// Inserts the item at the place of the band, and returns it. A chart shows the first field that is no number
// and the sum of the first number, or the number of rows; gauge and indicator the average of the first number
// on a scale up to the largest one. Raises EditError for what the schema or the band cannot have, and if
// there is no data set to show.
ElementId InsertGraphic(Document& document, const ReportBand& band, const Rect& place, NewGraphic kind,
                        const GraphicChoice& choice);

// Returns the categories, series and values of a new chart of the type over the data set, and how it is
// drawn: the children of Chart that come before its data set.
std::string ChartContent(const Document& document, const ChartType& type, const std::string& dataSet);

}  // namespace designer
