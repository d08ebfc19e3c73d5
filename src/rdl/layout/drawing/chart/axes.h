// Axes of a chart: their properties worked out, and their scales over the series that stand on them.
#pragma once

#include "rdl/layout/drawing/chart/data.h"
#include "rdl/layout/drawing/part_styles.h"
#include "rdl/layout/drawing/scale.h"

namespace rdl::layout {

ChartAreaData EvaluateArea(const ChartArea& area, const PartStyles& styles);

// The lower and upper end of a point's column or area on the value axis, stacked as its series says.
struct ChartReach {
    double from = 0, to = 0;
    bool isSet = false;
};
// By row and category.
std::vector<std::vector<ChartReach>> StackRows(const ChartAreaData& area);

// The values of one value axis of an area; `room` is its length in points.
Scale ValueScale(const ChartAreaData& area, std::size_t axis,
                 const std::vector<std::vector<ChartReach>>& reaches, double room);
// Of scattered points: the numbers along the category axis.
Scale NumberScale(const ChartAreaData& area, bool dates, double room);

bool IsScattered(const ChartAreaData& area);
bool IsPercent(const ChartAreaData& area, std::size_t valueAxis);

// The text at a tick.
std::string TickText(const ChartAxisData& axis, const Scale& scale, double tick, bool percent, bool date,
                     const Culture& culture);

}  // namespace rdl::layout
