// SPDX-License-Identifier: GPL-3.0-or-later
// Collections of small elements as rows of a table: what a region or group is sorted by, the expressions of a
// group, its variables (MS-RDL, SortExpressions, GroupExpressions and Variables; in the schemas before 2008
// Sorting).
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "designer/expressions/row_table.h"

namespace designer {

struct ElementList {
    struct Cell {
        std::string_view path;          // from the element; "@Name" is an attribute; empty: its own text
        std::string_view missing = {};  // the value that holds when it is not there, and is not written
    };
    std::string_view collection, element;
    std::vector<Cell> cells;
};

ElementList SortList(const Document& document);  // expression and direction
ElementList GroupExpressionList();
ElementList VariableList();  // name and value

std::vector<RowTable::Row> RowsOf(const Document& document, ElementId owner, const ElementList& list);
// Makes these the rows of the owner. What has not changed is not touched. Edits of the step that is open.
void PutRows(Document& document, ElementId owner, const ElementList& list,
             const std::vector<RowTable::Row>& rows);

}  // namespace designer
