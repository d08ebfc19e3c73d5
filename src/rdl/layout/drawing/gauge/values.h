// The numbers of a gauge panel at a place in the data.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "rdl/layout/drawing/part_styles.h"
#include "rdl/layout/plan/gauge_plan.h"
#include "rdl/layout/region/leaves.h"

namespace rdl::layout {

class GaugeValues {
 public:
    // Enters the panel's own scope; the caller puts the evaluator's place back.
    GaugeValues(GaugePlan& plan, PropertyReader& reader);

    // The formula over the values of all groups, multiplied and added to; nothing without a number.
    std::optional<double> Of(const GaugeValue& value) const;
    // What an indicator's states are compared with: its value, or where it lies between the minimum and the
    // maximum in percent. Those that are not given are the smallest and largest of its scope.
    std::optional<double> OfIndicator(std::size_t item) const;

    const PartStyles& Styles() const { return m_styles; }

 private:
    std::vector<double> All(const Expr& source) const;
    const GaugePlan::Reach& ReachOf(std::size_t item) const;

    GaugePlan& m_plan;
    PropertyReader& m_reader;
    PartStyles m_styles;
    Scope m_around;                    // of the panel
    std::shared_ptr<Region> m_region;  // null when the panel shares the scope around it
    std::vector<Leaf> m_groups;
};

}  // namespace rdl::layout
