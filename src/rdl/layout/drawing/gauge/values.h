// SPDX-License-Identifier: GPL-3.0-or-later
// The numeric values of a gauge panel.
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
    // Enters the panel's scope; the caller restores the evaluator's place.
    GaugeValues(GaugePlan& plan, PropertyReader& reader);

    // Applies the formula to the values of all groups, then multiplier and addend. nullopt if there is no
    // number.
    std::optional<double> Of(const GaugeValue& value) const;
    // Returns the number that an indicator's states compare with: its value, or its position between minimum
    // and maximum in percent. Without these the smallest and largest value of its scope apply.
    std::optional<double> OfIndicator(std::size_t item) const;

    const PartStyles& Styles() const { return m_styles; }

 private:
    std::vector<double> All(const Expr& source) const;
    const GaugePlan::Reach& ReachOf(std::size_t item) const;

    GaugePlan& m_plan;
    PropertyReader& m_reader;
    PartStyles m_styles;
    Scope m_around;                    // the scope around the panel
    std::shared_ptr<Region> m_region;  // null if the panel shares the scope around it
    std::vector<Leaf> m_groups;
};

}  // namespace rdl::layout
