// SPDX-License-Identifier: GPL-3.0-or-later
// The plot area of a chart with axes: maps values and categories to points on the page.
#pragma once

#include <string>
#include <vector>

#include "rdl/layout/drawing/canvas.h"
#include "rdl/layout/drawing/chart/axes.h"

namespace rdl::layout {

// The labels along an axis, arranged to fit.
struct ChartTickLabels {
    std::vector<std::string> texts;  // by tick or category
    double degrees = 0;
    std::size_t every = 1;  // draws every n-th label, so that labels do not overlap
    double thick = 0;       // space across the axis, in points
};

struct ChartPlot {
    const ChartData& data;
    const ChartAreaData& area;
    Canvas& canvas;
    Rect inside;             // the area between the axes
    bool swapped = false;    // for bars: categories go upwards
    bool scattered = false;  // the category axis has numbers, in `numbers`
    bool dates = false;      // the numbers are days
    bool margin = true;      // half a category before the first and after the last
    Scale numbers = {};
    std::vector<Scale> values = {};  // by value axis
    std::vector<std::vector<ChartReach>> reaches = {};
    // Set by PlaceAxes.
    Rect available = {};  // of the plot with its axes
    bool bare = false;    // the axes would leave no room: the plot has none
    ChartTickLabels categoryLabels = {};
    std::vector<ChartTickLabels> valueLabels = {};

    std::size_t CategoryCount() const { return data.categories.size(); }
    // Returns the position on the category axis, 0 to 1.
    double CategoryShare(double category) const;
    double CategoryWidth() const;  // fraction of the axis
    double Across(const ChartMark& mark, std::size_t category) const;
    // Returns the position on the value axis, 0 to 1; the low end for values that a logarithmic scale cannot
    // show.
    double ValueShare(std::size_t axis, double value) const;
    double HeldShare(std::size_t axis, double value) const;  // the same within the plot
    bool IsShown(std::size_t valueAxis) const;
    // Returns the point for positions on both axes.
    Spot At(double category, double value, std::size_t valueAxis = 0) const;
};

// Returns the pieces of a line between gaps, as indices of its marks.
std::vector<std::vector<std::size_t>> PiecesOf(const ChartRow& row);

void DrawColumns(const ChartPlot& plot);  // and areas
void DrawLines(const ChartPlot& plot);    // and points
void DrawSpans(const ChartPlot& plot);    // stocks, candlesticks, errors and boxes
void DrawLabels(const ChartPlot& plot);   // labels of the points
// Returns the rectangle of a column, or of what reaches from a low to a high value.
Rect ColumnOf(const ChartPlot& plot, std::size_t row, std::size_t category);
// Draws grid lines and stripes, before the marks.
void DrawGrid(const ChartPlot& plot);
// Draws lines, ticks, labels and titles of the axes.
void DrawAxes(const ChartPlot& plot);
// Computes the space of the axes: sets `inside` to the rest of `available`, or to all of it if the rest would
// be too small.
void PlaceAxes(ChartPlot& plot, const Rect& available);

}  // namespace rdl::layout
