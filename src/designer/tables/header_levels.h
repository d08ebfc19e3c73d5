// SPDX-License-Identifier: GPL-3.0-or-later
// Levels of headers on one side of a region: all of its tracks have the same ones (MS-RDL, TablixHeader; in a
// Matrix RowGrouping and ColumnGrouping).
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "designer/document/document.h"
#include "designer/document/tablix_grid.h"
#include "designer/tables/tablix_shape.h"

namespace designer {

// Gives every track a header after its first `level` ones, and the corner a place for it. The member
// `except`, and what is in it, has it already. `points` is the size of the headers. An edit of the step that
// is open.
void InsertHeaderLevel(Document& document, ElementId region, Axis axis, std::size_t level, double points,
                       ElementId except);

// Returns the levels of the row headers from left to right, for Axis::Columns, or those of the column headers
// from the top. They have no element of their own.
std::vector<GridTrack> HeaderTracksOf(const TablixGrid& grid, Axis axis);

// Sets the width of a level of row headers, or the height of one of column headers, in points; a header over
// several levels grows with it. One step.
void SetHeaderSize(Document& document, ElementId region, Axis axis, std::size_t level, double points,
                   const std::string& step = {});

}  // namespace designer
