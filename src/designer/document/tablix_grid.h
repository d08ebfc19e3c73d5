// SPDX-License-Identifier: GPL-3.0-or-later
// Rows, columns and cells of a table, matrix or Tablix as its definition has them, with one instance of each
// group (MS-RDL, Tablix; for the schemas before 2008 Table and Matrix).
#pragma once

#include <cstddef>
#include <vector>

#include "designer/document/document.h"

namespace designer {

// In points, y downwards.
struct Rect {
    double left = 0, top = 0, width = 0, height = 0;
    double Right() const { return left + width; }
    double Bottom() const { return top + height; }
};

// A column or row of the body. `element` has the size as its child Width or Height.
struct GridTrack {
    ElementId element = NoElement;
    double begin = 0, size = 0;  // from the region's left or top
};

struct GridCell {
    enum class Part { Corner, ColumnHeader, RowHeader, Body };
    Part part = Part::Body;
    ElementId element = NoElement;  // TablixCell, TablixHeader, TablixCornerCell, TableCell, MatrixCell, ...
    ElementId item = NoElement;     // the report item in it, if there is one
    Rect place;                     // from the region's top left corner
    std::size_t row = 0, column = 0, rowSpan = 1, columnSpan = 1;  // of a body cell, by the tracks
};

struct TablixGrid {
    std::vector<GridTrack> columns, rows;  // of the body
    std::vector<GridCell> cells;           // those that are written, in the order of the file by parts
    double headerWidth = 0;                // of all row headers
    double headerHeight = 0;               // of all column headers
    double width = 0, height = 0;
};

// Whether elements of this name have a grid.
bool HasGrid(std::string_view element);

// Whether the columns of the region go from right to left: the first one is on the right (MS-RDL,
// LayoutDirection).
bool IsMirrored(const Document& document, ElementId region);

// Returns the grid of a Tablix, Table or Matrix. What is missing or no size counts as 0; cells that no column
// or row is for are left out.
TablixGrid GridOf(const Document& document, ElementId region);

}  // namespace designer
