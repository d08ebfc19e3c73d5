// SPDX-License-Identifier: GPL-3.0-or-later
// Where items go when they are aligned, distributed or given the same size. All lengths are points from the
// top left corner of the surface, on which the bands of the report are below each other.
#pragma once

#include <vector>

#include "designer/document/document.h"
#include "designer/document/tablix_grid.h"

namespace designer {

struct Placement {
    ElementId id = NoElement;
    Rect place;
};

enum class Arrangement {
    AlignLeft,
    AlignCentre,
    AlignRight,
    AlignTop,
    AlignMiddle,
    AlignBottom,
    SameWidth,
    SameHeight,
    SameSize,
    DistributeAcross,  // equal gaps from left to right
    DistributeDown,
};

// Returns how many items the arrangement needs at least.
std::size_t LeastItems(Arrangement arrangement);

// Returns the items with their new places. The last one keeps its place and gives edge or size to the others;
// of those that are distributed the two outer ones stay.
std::vector<Placement> Arranged(std::vector<Placement> items, Arrangement arrangement);

// Returns the smallest area around all of them; empty without items.
Rect AreaOf(const std::vector<Placement>& items);

}  // namespace designer
