// The area of a chart with axes: where its values and categories lie on the page.
#pragma once

#include <string>
#include <vector>

#include "rdl/layout/drawing/canvas.h"
#include "rdl/layout/drawing/chart/axes.h"

namespace rdl::layout {

// The texts along an axis, made to fit.
struct ChartTickLabels {
    std::vector<std::string> texts;  // by tick or category
    double degrees = 0;
    std::size_t every = 1;  // so many share one text, or they would touch
    double thick = 0;       // room across the axis
};

struct ChartPlot {
    const ChartData& data;
    const ChartAreaData& area;
    Canvas& canvas;
    Rect inside;             // between the axes
    bool swapped = false;    // bars: categories go upwards
    bool scattered = false;  // numbers along the category axis, in `numbers`
    bool dates = false;      // and these are days
    bool margin = true;      // half a category before the first and behind the last
    Scale numbers = {};
    std::vector<Scale> values = {};  // by value axis
    std::vector<std::vector<ChartReach>> reaches = {};
    // Set by PlaceAxes.
    ChartTickLabels categoryLabels = {};
    std::vector<ChartTickLabels> valueLabels = {};

    std::size_t CategoryCount() const { return data.categories.size(); }
    // Along the category axis, 0 to 1.
    double CategoryShare(double category) const;
    double CategoryWidth() const;  // share of one category
    double Across(const ChartMark& mark, std::size_t category) const;
    // Along the value axis; what a logarithmic scale has no place for lies at its low end.
    double ValueShare(std::size_t axis, double value) const;
    bool IsShown(std::size_t valueAxis) const;
    // The spot by shares of both axes.
    Spot At(double category, double value, std::size_t valueAxis = 0) const;
};

void DrawColumns(const ChartPlot& plot);  // and areas
void DrawLines(const ChartPlot& plot);    // and points
void DrawLabels(const ChartPlot& plot);   // of the points
// The rectangle of a column.
Rect ColumnOf(const ChartPlot& plot, std::size_t row, std::size_t category);
// Grid lines and stripes, which lie below the marks.
void DrawGrid(const ChartPlot& plot);
// Lines, ticks, labels and titles of the axes around the plot.
void DrawAxes(const ChartPlot& plot);
// The room that the axes need: the plot's `inside` is set to what is left of `room`.
void PlaceAxes(ChartPlot& plot, const Rect& room);

}  // namespace rdl::layout
