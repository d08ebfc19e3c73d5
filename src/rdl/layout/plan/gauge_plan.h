// A gauge panel made ready for running.
#pragma once

#include <memory>
#include <vector>

#include "rdl/definition/gauge.h"
#include "rdl/layout/plan/plan.h"
#include "rdl/layout/plan/scope.h"

namespace rdl::layout {

// Its properties are compiled when it is drawn, as those of charts are.
struct GaugePlan {
    const GaugePanel* definition = nullptr;
    // Null for a panel that stands in a region's cell and asks for nothing of its own: no group, filter or
    // sort. Its expressions then share the cell's scope, and the aggregates of it.
    std::unique_ptr<TablixPlan> data;
    const Programs* programs = nullptr;

    // The smallest and largest value of an indicator within its scope, kept for the panels of the next rows.
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
