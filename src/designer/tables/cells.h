// SPDX-License-Identifier: GPL-3.0-or-later
// Cells of a table, matrix or Tablix: merged, split, and filled with fields. Each function is one step of the
// document and raises EditError for what cannot be done.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "designer/document/document.h"

namespace designer {

// Merges cells of one row of the body into the first of them; what the others say is joined to its text.
// Refuses cells with other items than text boxes, and those of different column groups.
void MergeCells(Document& document, ElementId region, std::size_t row, std::size_t firstColumn,
                std::size_t count);

// Makes a merged cell of the body as many cells as it spans; the new ones are empty.
void SplitCell(Document& document, ElementId region, std::size_t row, std::size_t column);

// Shows the field in a cell or header: its value where there is one row of data, else the sum of a number. If
// the head of a details column is empty, it gets the name of the field. `cell` is one of TablixGrid.
void PutField(Document& document, ElementId region, ElementId cell, std::string_view field);

// Adds a column with this number, which shows the field, and its head. Returns the number.
std::size_t AddFieldColumn(Document& document, ElementId region, std::size_t at, std::string_view field);

}  // namespace designer
