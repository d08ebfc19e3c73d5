// SPDX-License-Identifier: GPL-3.0-or-later
// The filters of a data set, a region or a group (MS-RDL, Filters).
#pragma once

#include <string>
#include <vector>

#include "designer/document/document.h"
#include "designer/model/element_rows.h"

namespace designer {

struct RowFilter {
    int place = NewRow;  // among the filters in the file
    std::string expression, comparison = "Equal";
    std::vector<std::string> values = {};
    bool operator==(const RowFilter&) const = default;
};

std::vector<RowFilter> FiltersOf(const Document& document, ElementId owner);
// Makes these the filters of the element. Those that have not changed are not touched. Edits of the step that
// is open.
void PutFilters(Document& document, ElementId owner, const std::vector<RowFilter>& filters);

}  // namespace designer
