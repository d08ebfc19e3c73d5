// The filters of a data set.
#pragma once

#include "rdl/data/load.h"

namespace rdl::data {

// Drops the rows that a filter does not let through, filter by filter in their order: TopN sees what the
// filters before it left. Equal values at the border of TopN and its like all stay. Raises rdl::Error for an
// operator that does not exist, a wrong number of values, and an expression that gives an error.
void ApplyFilters(const LoadRequest& request, const DataSet& dataSet, Table& table);

// Keeps the marked rows.
void KeepRows(Table& table, const std::vector<bool>& keep);

}  // namespace rdl::data
