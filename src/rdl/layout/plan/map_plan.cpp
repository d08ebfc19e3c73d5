// SPDX-License-Identifier: GPL-3.0-or-later
// Members of Planner: maps.
#include "rdl/layout/plan/map_plan.h"

namespace rdl::layout {

std::unique_ptr<MapPlan> Planner::MapOf(const Map& map) {
    auto plan = std::make_unique<MapPlan>();
    plan->definition = &map;
    plan->programs = &m_programs;
    for (const auto& region : map.regions) {
        plan->regions.push_back(Region(*region));
    }
    plan->kept.resize(map.layers.size());
    return plan;
}

}  // namespace rdl::layout
