// SPDX-License-Identifier: GPL-3.0-or-later
// A gauge panel prepared for evaluation.
#pragma once

#include <memory>
#include <vector>

#include "rdl/definition/gauge.h"
#include "rdl/layout/plan/plan.h"
#include "rdl/layout/plan/scope.h"

namespace rdl::layout {

// Its properties are resolved when it is drawn, as those of charts are. Definition and programs must outlive
// the plan.
struct GaugePlan {
    const GaugePanel* definition = nullptr;
    // Null for a panel in a region's cell without its own groups, filters and sorts. Its expressions then
    // share the scope and aggregates of the cell.
    std::unique_ptr<TablixPlan> data;
    const Programs* programs = nullptr;

    // The range of an indicator's values within its scope, cached for the panels of the next rows.
    struct Reach {
        const Region* region = nullptr;
        std::uint32_t regionId = 0;
        Scope within;
        double low = 0, high = 0;
        bool any = false;
    };
    std::vector<Reach> reaches;  // by item
};

}  // namespace rdl::layout
