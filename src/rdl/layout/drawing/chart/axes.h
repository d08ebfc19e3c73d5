// SPDX-License-Identifier: GPL-3.0-or-later
// Axes of a chart: evaluated properties, and scales over the series on each axis.
#pragma once

#include "rdl/layout/drawing/chart/data.h"
#include "rdl/layout/drawing/part_styles.h"
#include "rdl/layout/drawing/scale.h"

namespace rdl::layout {

constexpr double TickLength = 4, TickGap = 3;  // points: of a tick, and between what stands around an axis

ChartAreaData EvaluateArea(const ChartArea& area, const PartStyles& styles);

// The lower and upper end of a point's column or area on the value axis, after stacking.
struct ChartReach {
    double from = 0, to = 0;
    bool isSet = false;
};
// Indexed by row and category.
std::vector<std::vector<ChartReach>> StackRows(const ChartAreaData& area);

// Returns the scale of one value axis; `length` is that of the axis in points.
Scale ValueScale(const ChartAreaData& area, std::size_t axis,
                 const std::vector<std::vector<ChartReach>>& reaches, double length);
// Returns the scale of the category axis of a scatter chart; `isDate`: its numbers are days.
Scale NumberScale(const ChartAreaData& area, bool isDate, double length);

bool IsScattered(const ChartAreaData& area);
bool IsPercent(const ChartAreaData& area, std::size_t valueAxis);

enum class TickKind {
    Number,
    Share,  // of a stack, in hundredths
    Day
};
// Returns the label of a tick.
std::string TickText(const ChartAxisData& axis, const Scale& scale, double tick, TickKind kind,
                     const Culture& culture);

}  // namespace rdl::layout
