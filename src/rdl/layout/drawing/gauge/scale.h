// SPDX-License-Identifier: GPL-3.0-or-later
// A gauge scale: values, band, ranges, ticks, labels and pointers along a track.
#pragma once

#include "rdl/layout/drawing/gauge/kit.h"
#include "rdl/layout/drawing/scale.h"

namespace rdl::layout {

struct GaugeAxis {
    const GaugeScale& definition;
    GaugeTrack track;
    Scale scale = {};

    double ShareOf(double value) const;  // position on the scale, 0 to 1
};

GaugeAxis MakeAxis(const GaugeScale& definition, const GaugeTrack& track, const GaugeKit& kit);
// Draws everything but the pointers.
void DrawScale(const GaugeAxis& axis, const GaugeKit& kit);
void DrawPointers(const GaugeAxis& axis, const GaugeKit& kit);
// Returns the colour that the range around `value` sets in `property`; Transparent if there is none.
Color RangeColor(const GaugeAxis& axis, std::string_view property, double value, const GaugeKit& kit);

// Returns the alternative text: "87, 0 to 100" for each pointer.
std::string DescribeScale(const GaugeAxis& axis, const GaugeKit& kit);

}  // namespace rdl::layout
