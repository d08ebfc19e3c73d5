// SPDX-License-Identifier: GPL-3.0-or-later
// The leaves of a data region's hierarchy with data: a chart's series and categories.
#pragma once

#include <cstdint>
#include <vector>

#include "rdl/layout/region/region.h"

namespace rdl::layout {

// A leaf with its group instance, and the members on the path to it.
struct Leaf {
    int leaf = 0, group = -1;
    std::uint32_t instance = 0;
    struct Step {
        int member;
        std::uint32_t instance;
        int group;
        bool alone;  // has no siblings
    };
    std::vector<Step> path;
};

// Returns the leaves in display order.
std::vector<Leaf> LeavesOf(const Region& region, TableAxis axis);

}  // namespace rdl::layout
