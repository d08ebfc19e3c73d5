// The leaves of a data region's hierarchy with data in: what a chart's series and categories are made of.
#pragma once

#include <cstdint>
#include <vector>

#include "rdl/layout/region/region.h"

namespace rdl::layout {

// A leaf of a hierarchy with the instance that it stands in, and the labels on the way to it.
struct Leaf {
    int leaf = 0, group = -1;
    std::uint32_t instance = 0;
    struct Step {
        int member;
        std::uint32_t instance;
        int group;
        bool alone;  // among its siblings
    };
    std::vector<Step> path;
};

// In the order of display.
std::vector<Leaf> LeavesOf(const Region& region, bool isRows);

}  // namespace rdl::layout
