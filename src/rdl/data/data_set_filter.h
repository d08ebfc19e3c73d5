// SPDX-License-Identifier: GPL-3.0-or-later
// Filters of a data set (MS-RDL, Filter).
#pragma once

#include "rdl/data/load.h"

namespace rdl::data {

// Removes rows that do not pass, one filter after the other: TopN sees what the previous filters left. Ties
// at the limit of TopN and similar all stay. Raises rdl::Error for an unknown operator, a wrong number of
// values, or an expression that fails.
void ApplyFilters(const LoadRequest& request, const DataSet& dataSet, Table& table);

// Removes the rows that are not marked.
void KeepRows(Table& table, const std::vector<bool>& keep);

}  // namespace rdl::data
