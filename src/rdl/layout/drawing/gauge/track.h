// Where a gauge's scale runs: around a circle or along a line. Ticks, ranges and pointers are drawn by their
// share of the way and their distance from it, and look alike on both.
#pragma once

#include <vector>

#include "rdl/layout/drawing/canvas.h"

namespace rdl::layout {

struct GaugeTrack {
    double unit = 0;   // points that are 100 percent of the parts' sizes
    double width = 0;  // of the scale's own band
    bool reversed = false;

    bool round = false;
    Spot center;
    double radius = 0, first = 0, sweep = 0;  // radians clockwise from the top

    Spot from, to;           // of a straight one
    Spot outwards = {0, 1};  // of length 1

    // The place at a share of the way, so many points outwards of the scale's middle.
    Spot At(double share, double distance) const;
    // The direction outwards there, in radians clockwise from upwards.
    double Direction(double share) const;
    double Length() const;
    // A band between two shares, from one distance to another at each of its ends.
    std::vector<PathOp::Segment> Band(double begin, double end, double beginInner, double beginOuter,
                                      double endInner, double endOuter) const;
};

// Where something of that thickness lies that is placed Inside, Outside or across the scale's band.
struct GaugePlace {
    double inner = 0, outer = 0;
};
enum class GaugePlacement { Inside, Outside, Cross };
GaugePlace PlaceBeside(const GaugeTrack& track, GaugePlacement placement, double distance, double thick);

}  // namespace rdl::layout
