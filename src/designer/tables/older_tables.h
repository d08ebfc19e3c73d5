// SPDX-License-Identifier: GPL-3.0-or-later
// Columns and rows of a Table, as reports had them before 2008 (MS-RDL, Table). Rows are numbered as in
// TablixGrid. All are edits of the step that is open, and raise EditError.
#pragma once

#include <cstddef>

#include "designer/document/document.h"
#include "designer/tables/tracks.h"

namespace designer {

// Whether the row is in a group or is one of the details.
bool IsInTableGroup(const Document& document, ElementId table, std::size_t row);

// Adds a column that has the number `at` afterwards, and returns it.
std::size_t AddTableColumn(Document& document, ElementId table, std::size_t at);

// Adds a row beside another one, inside in the same band, outside in the header or footer around it. Returns
// its number.
std::size_t AddTableRow(Document& document, ElementId table, std::size_t row, Side side, GroupSide groupSide);

// Adds a row like another one to the header or footer of what is around the Details or a TableGroup. Returns
// its number.
std::size_t AddRowAround(Document& document, ElementId table, ElementId member, std::size_t like, Side side);

// Adds a header and a footer to a TableGroup, each with an empty row.
void AddTableBands(Document& document, ElementId table, ElementId group, bool hasHeader, bool hasFooter);

void DeleteTableColumns(Document& document, ElementId table, std::size_t first, std::size_t count);
// A band that is left without rows goes too.
void DeleteTableRows(Document& document, ElementId table, std::size_t first, std::size_t count);

void MoveTableColumn(Document& document, ElementId table, std::size_t from, std::size_t to);
// Refuses a place in another band.
void MoveTableRow(Document& document, ElementId table, std::size_t from, std::size_t to);

}  // namespace designer
