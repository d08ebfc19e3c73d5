// SPDX-License-Identifier: GPL-3.0-or-later
// The plot of polar and radar charts: categories or angles around a centre, values outwards. Angles are
// radians clockwise from the top.
#pragma once

#include <string>
#include <vector>

#include "rdl/layout/drawing/canvas.h"
#include "rdl/layout/drawing/chart/axes.h"

namespace rdl::layout {

struct CirclePlot {
    const ChartData& data;
    const ChartAreaData& area;
    Canvas& canvas;
    Rect available = {};
    Spot center = {};
    double radius = 0;
    bool polygon = false;   // grid lines have corners at the spokes
    bool numbered = false;  // the points have angles in degrees, by `numbers`; else categories
    Scale numbers = {};
    std::vector<std::vector<ChartReach>> reaches = {};
    std::vector<Scale> values = {};       // by value axis
    std::vector<double> spokes = {};      // angles of the categories or ticks
    std::vector<std::string> names = {};  // of the spokes
    std::size_t every = 1;                // names and spokes that are drawn: every n-th

    double AngleOf(const ChartMark& mark, std::size_t category) const;
    // Returns the distance from the centre as a fraction of the radius.
    double ShareOf(std::size_t valueAxis, double value) const;
    Spot At(double angle, double share) const { return OnCircle(center, radius * share, angle); }
    Spot SpotOf(std::size_t row, std::size_t category) const;
    // Returns a closed grid line at a fraction of the radius.
    std::vector<PathOp::Segment> Outline(double share) const;
};

// Places the plot in the room: centre, radius, spokes and scales.
void PlaceCircle(CirclePlot& plot, const Rect& available);
// Draws background, stripes and grid lines, before the series.
void DrawCircleGrid(const CirclePlot& plot);
// Draws the outline, the names around it and the value axes, which go from the centre to the top.
void DrawCircleAxes(const CirclePlot& plot);

}  // namespace rdl::layout
