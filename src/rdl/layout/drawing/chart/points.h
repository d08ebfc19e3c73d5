// SPDX-License-Identifier: GPL-3.0-or-later
// Evaluates series and points of a chart at the evaluator's current place.
#pragma once

#include "rdl/layout/drawing/chart/data.h"
#include "rdl/layout/drawing/part_styles.h"

namespace rdl::layout {

// Returns the custom attributes of a series; their defaults for those that are not set.
ChartLook EvaluateLook(const ChartSeries& series, const PartStyles& styles);

// Whether the border of the series is the line that it is drawn with.
bool IsStroked(const ChartSeries& series);
// Returns the line of a series. It has the series' colour, whatever colour borders have.
Border StrokeOf(const Style& style, Color color, const PartStyles& styles);

// Returns a point of `row`, whose definition, colour, border and look are set. The mark has no colour unless
// the point sets one. `place`: its category.
ChartMark EvaluateMark(const ChartRow& row, const ChartPoint& point, std::size_t place,
                       const PartStyles& styles, const Culture& culture);

}  // namespace rdl::layout
