// SPDX-License-Identifier: GPL-3.0-or-later
// Groups, totals, columns and rows of a Matrix, as reports had them before 2008 (MS-RDL, Matrix). All are
// edits of the step that is open, and raise EditError.
#pragma once

#include "designer/document/document.h"
#include "designer/document/tablix_grid.h"
#include "designer/tables/groups.h"

namespace designer {

// Adds a group around a DynamicRows or DynamicColumns element, or within it, and returns its own one. Its
// value stands in a header of its own. The XML is that of a Grouping with its Sorting.
ElementId AddMatrixGroup(Document& document, ElementId member, GroupPlace place, const NewGroup& group,
                         const std::string& groupingXml);

// Deletes a group with its header. Refuses the only group of its side.
void DeleteMatrixGroup(Document& document, ElementId member);

// Adds a total before or after a group: the cells of a total have the same expressions over more rows.
void AddMatrixTotal(Document& document, ElementId member, Side side);

// Returns the text box of the heading of a cell's column or row if that has no text yet; else NoElement.
ElementId EmptyMatrixHeading(const Document& document, const TablixGrid& grid, const GridCell& cell);

// Columns and rows are numbered as in TablixGrid. All of them are within all groups of their side; several
// have a heading each.

// Adds a column or row beside another one and returns its number.
std::size_t AddMatrixTrack(Document& document, ElementId matrix, Axis axis, std::size_t track, Side side);
void DeleteMatrixTracks(Document& document, ElementId matrix, Axis axis, std::size_t first,
                        std::size_t count);
// Moves a track; `to` is its number afterwards.
void MoveMatrixTrack(Document& document, ElementId matrix, Axis axis, std::size_t from, std::size_t to);

}  // namespace designer
