// A gauge panel as a drawing.
#pragma once

#include <memory>

#include "rdl/layout/drawing/drawing.h"
#include "rdl/layout/drawing/gauge/kit.h"

namespace rdl::layout {

// At the current place of `reader`, which is left as it was.
std::shared_ptr<DrawingInstance> DrawGaugePanel(GaugePlan& plan, PropertyReader& reader, double width,
                                                double height);

// The parts of it. Each draws one item within its area and gives its words for those who cannot see it.
std::string DrawGauge(const GaugeItem& gauge, const Rect& area, const GaugeKit& kit);
// What a frame is around: a dial's widest scale, for frames that are cut as it is.
struct FrameShape {
    bool round = false;
    Spot pivot;
    double radius = 0, first = 0, sweep = 0;  // 0: no scale
};
void DrawFrame(const GaugeFrame& frame, const Rect& area, const FrameShape& around, const GaugeKit& kit);
std::string DrawStateIndicator(const GaugeItem& indicator, std::optional<double> value, const Rect& area,
                               const GaugeKit& kit, PropertyReader& reader);
std::string DrawNumericIndicator(const GaugeItem& indicator, const Rect& area, const GaugeKit& kit);

// Where each of the panel's items lies: where it says, or beside the others.
std::vector<Rect> ArrangeGauges(const GaugePanel& panel, double width, double height, const GaugeKit& kit);

}  // namespace rdl::layout
