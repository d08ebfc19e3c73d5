// SPDX-License-Identifier: GPL-3.0-or-later
// Draws a chart.
#pragma once

#include <memory>

#include "rdl/layout/drawing/canvas.h"
#include "rdl/layout/drawing/chart/data.h"
#include "rdl/layout/drawing/drawing.h"

namespace rdl::layout {

constexpr Color AreaAlpha = 0xB0000000;  // areas that lie over each other let the lower one be seen

std::shared_ptr<DrawingInstance> DrawChart(const ChartData& data, double width, double height);

// Returns a row for each point: its categories, outermost first, its series and its values. Empty for a
// chart that shows a message.
DrawingData DataOf(const ChartData& data);
// Each draws one part within its area.
void DrawPlot(const ChartData& data, const ChartAreaData& area, const Rect& available, Canvas& canvas);
void DrawPies(const ChartData& data, const ChartAreaData& area, const Rect& available, Canvas& canvas);
void DrawPolar(const ChartData& data, const ChartAreaData& area, const Rect& available, Canvas& canvas);
void DrawFunnels(const ChartData& data, const ChartAreaData& area, const Rect& available,
                 Canvas& canvas);  // and pyramids
void DrawTreeMap(const ChartData& data, const ChartAreaData& area, const Rect& available, Canvas& canvas);
void DrawSunburst(const ChartData& data, const ChartAreaData& area, const Rect& available, Canvas& canvas);
// Draws a title at the side that its position begins with and subtracts its space from `available`; a title
// that has no room is omitted.
void DrawTitle(const ChartCaption& title, Rect& available, Canvas& canvas);
// Draws the legend at its side and subtracts its space from `available`. An ellipsis replaces the entries
// that do not fit.
void DrawLegend(const ChartData& data, const ChartLegendData& legend, Rect& available, Canvas& canvas);
// Draws the symbol of a series, in the legend or at a point.
void DrawShape(ChartShape shape, Spot center, double size, Color color, Canvas& canvas);

}  // namespace rdl::layout
