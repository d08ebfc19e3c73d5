// A scale of a gauge: its values, band, ranges, ticks, labels and pointers along a track.
#pragma once

#include "rdl/layout/drawing/gauge/kit.h"
#include "rdl/layout/drawing/scale.h"

namespace rdl::layout {

struct GaugeAxis {
    const GaugeScale& definition;
    GaugeTrack track;
    Scale scale = {};

    double ShareOf(double value) const;  // within the scale
};

GaugeAxis MakeAxis(const GaugeScale& definition, const GaugeTrack& track, const GaugeKit& kit);
// Everything but the pointers.
void DrawScale(const GaugeAxis& axis, const GaugeKit& kit);
void DrawPointers(const GaugeAxis& axis, const GaugeKit& kit);
// The colour that a range gives to what stands within it, by the name of the property; Transparent for none.
Color RangeColor(const GaugeAxis& axis, std::string_view property, double value, const GaugeKit& kit);

// "87, 0 to 100" for each pointer, for those who cannot see it.
std::string DescribeScale(const GaugeAxis& axis, const GaugeKit& kit);

}  // namespace rdl::layout
