// SPDX-License-Identifier: GPL-3.0-or-later
// Where the pointer's moves stop: at edges and centres of other items, else at the grid. Lengths are points
// from the corner of a band.
#pragma once

#include <vector>

#include "designer/document/tablix_grid.h"

namespace designer {

// A line that is shown where an edge has snapped.
struct SnapLine {
    bool isUpright = false;
    double at = 0;              // x of an upright line, else y
    double begin = 0, end = 0;  // y of an upright line, else x
};

struct Snapped {
    double dx = 0, dy = 0;
    std::vector<SnapLine> lines;
};

// Which edges of the area follow the pointer.
struct MovingEdges {
    bool left = true, top = true, right = true, bottom = true;
};

struct SnapRules {
    double grid = 0;   // step in points; 0: no grid
    double reach = 0;  // how far an edge of another item is felt, in points; 0: not at all
};

// Returns how far the area moves when the pointer has moved by dx and dy: near those, such that an edge that
// moves is at an edge or centre of `others`, or at the grid. `area` is where it was before the move.
Snapped Snap(const Rect& area, double dx, double dy, const MovingEdges& edges,
             const std::vector<Rect>& others, const SnapRules& rules);

}  // namespace designer
