// SPDX-License-Identifier: GPL-3.0-or-later
// The path of a gauge's scale: an arc or a line. Ticks, ranges and pointers have a position along the path, 0
// to 1, and a distance from it in points: so drawing does not depend on the shape.
#pragma once

#include <vector>

#include "rdl/layout/drawing/canvas.h"

namespace rdl::layout {

struct GaugeTrack {
    double unit = 0;   // points for 100 percent of the parts' sizes
    double width = 0;  // width of the scale's band
    bool reversed = false;

    bool round = false;
    Spot center;
    double radius = 0, first = 0, sweep = 0;  // radians clockwise from the top

    Spot from, to;           // ends of a linear track
    Spot outwards = {0, 1};  // unit vector

    // Returns the point at a position, `distance` points outwards from the scale's middle.
    Spot At(double share, double distance) const;
    // Returns the outward direction at a position, in radians clockwise from upwards.
    double Direction(double share) const;
    double Length() const;
    // Returns the outline of a band between two positions, with inner and outer distances at each end.
    std::vector<PathOp::Segment> Band(double begin, double end, double beginInner, double beginOuter,
                                      double endInner, double endOuter) const;
};

// Returns the distances of a part of this thickness placed Inside, Outside or across the scale's band.
struct GaugePlace {
    double inner = 0, outer = 0;
};
enum class GaugePlacement { Inside, Outside, Cross };
GaugePlace PlaceBeside(const GaugeTrack& track, GaugePlacement placement, double distance, double thick);

}  // namespace rdl::layout
