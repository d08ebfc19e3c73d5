// SPDX-License-Identifier: GPL-3.0-or-later
// The properties of tables, rows and cells (ECMA-376 Part 1, 17.4).
#pragma once

#include <string>
#include <vector>

#include "rdl/writers/common/flow_row.h"

namespace rdl::writers {

// The columns of a table: its edges in twips, each farther right than the one before.
class DocxColumns {
 public:
    // `lines` are the edges in points, ascending.
    explicit DocxColumns(const std::vector<double>& lines);
    // Returns the width of a cell in twips.
    int Width(const FlowCell& cell) const { return m_edges[cell.endColumn] - m_edges[cell.firstColumn]; }
    // Appends the beginning of the table: its properties and its grid.
    void AppendTable(bool rightToLeft, std::string& out) const;

 private:
    std::vector<int> m_edges;
};

void AppendRowProperties(const FlowRow& row, std::string& out);
void AppendCellProperties(const FlowCell& cell, const DocxColumns& columns, std::string& out);

}  // namespace rdl::writers
