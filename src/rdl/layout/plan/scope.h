// SPDX-License-Identifier: GPL-3.0-or-later
// A position in the groups of a data region.
#pragma once

#include <cstdint>

namespace rdl::layout {

class Region;

// The scope of an expression: an instance of a row group, of a column group, of both (a matrix cell), of none
// (the region itself), or outside all regions.
struct Scope {
    const Region* region = nullptr;
    int rowGroup = -1, columnGroup = -1;
    std::uint32_t row = 0, column = 0;  // instances
    bool operator==(const Scope&) const = default;
};

}  // namespace rdl::layout
