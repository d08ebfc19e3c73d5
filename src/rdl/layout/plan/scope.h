// SPDX-License-Identifier: GPL-3.0-or-later
// A position in the groups of a data region.
#pragma once

#include <cstdint>

namespace rdl::layout {

class Region;

// A hierarchy of a region: its rows, or its columns.
enum class TableAxis { Rows, Columns };

inline TableAxis Across(TableAxis axis) {
    return axis == TableAxis::Rows ? TableAxis::Columns : TableAxis::Rows;
}

// The scope of an expression: an instance of a row group, of a column group, of both (a matrix cell), of none
// (the region itself), or outside all regions.
struct Scope {
    const Region* region = nullptr;
    int rowGroup = -1, columnGroup = -1;
    std::uint32_t row = 0, column = 0;  // instances

    // Returns the scope of one group's instance, with every instance of the other axis.
    static Scope Of(const Region* region, TableAxis axis, int group, std::uint32_t instance) {
        Scope scope{region};
        scope.Group(axis) = group;
        scope.Instance(axis) = instance;
        return scope;
    }
    // Returns the axis of the group, that of the rows if both have one.
    TableAxis GroupAxis() const { return rowGroup >= 0 ? TableAxis::Rows : TableAxis::Columns; }
    int& Group(TableAxis axis) { return axis == TableAxis::Rows ? rowGroup : columnGroup; }
    int Group(TableAxis axis) const { return axis == TableAxis::Rows ? rowGroup : columnGroup; }
    std::uint32_t& Instance(TableAxis axis) { return axis == TableAxis::Rows ? row : column; }
    std::uint32_t Instance(TableAxis axis) const { return axis == TableAxis::Rows ? row : column; }
    bool operator==(const Scope&) const = default;
};

}  // namespace rdl::layout
