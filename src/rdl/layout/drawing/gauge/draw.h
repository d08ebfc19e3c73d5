// SPDX-License-Identifier: GPL-3.0-or-later
// Draws a gauge panel.
#pragma once

#include <memory>

#include "rdl/layout/drawing/drawing.h"
#include "rdl/layout/drawing/gauge/kit.h"

namespace rdl::layout {

// Evaluates at the current place of `reader` and restores that place. Width and height are points.
std::shared_ptr<DrawingInstance> DrawGaugePanel(GaugePlan& plan, PropertyReader& reader, double width,
                                                double height);

// Each draws one item within its area and returns its alternative text.
std::string DrawGauge(const GaugeItem& gauge, const Rect& area, const GaugeKit& kit);
// The content of a frame: a dial's widest scale, for frames cut to its shape.
struct FrameShape {
    bool round = false;
    Spot pivot;
    double radius = 0, first = 0, sweep = 0;  // radians; radius 0: no scale
};
void DrawFrame(const GaugeFrame& frame, const Rect& area, const FrameShape& around, const GaugeKit& kit);
std::string DrawStateIndicator(const GaugeItem& indicator, std::optional<double> value, const Rect& area,
                               const GaugeKit& kit, PropertyReader& reader);
std::string DrawNumericIndicator(const GaugeItem& indicator, const Rect& area, const GaugeKit& kit);

// Returns the areas of the panel's items: as defined, or side by side.
std::vector<Rect> ArrangeGauges(const GaugePanel& panel, double width, double height, const GaugeKit& kit);

}  // namespace rdl::layout
