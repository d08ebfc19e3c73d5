// A chart as a drawing.
#pragma once

#include <memory>

#include "rdl/layout/drawing/canvas.h"
#include "rdl/layout/drawing/chart/data.h"
#include "rdl/layout/drawing/drawing.h"

namespace rdl::layout {

std::shared_ptr<DrawingInstance> DrawChart(const ChartData& data, double width, double height);

// The parts of it. Each draws within its area.
void DrawPlot(const ChartData& data, const ChartAreaData& area, const Rect& room, Canvas& canvas);
void DrawPies(const ChartData& data, const ChartAreaData& area, const Rect& room, Canvas& canvas);
// Draws the legend at its side and takes its room from `room`.
void DrawLegend(const ChartData& data, const ChartLegendData& legend, Rect& room, Canvas& canvas);
// A symbol of a series in the legend or at a point.
void DrawShape(ChartShape shape, Spot center, double size, Color color, Canvas& canvas);

// The letters of a point's label where it lies on the point's own colour.
CharStyle InsideLetters(const ChartMark& mark);

bool IsRound(const ChartAreaData& area);  // pies and doughnuts

}  // namespace rdl::layout
