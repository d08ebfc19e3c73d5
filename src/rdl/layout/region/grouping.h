// Makes a data region over its rows: filters, sorts and groups them.
#pragma once

#include <memory>

#include "rdl/layout/region/evaluator.h"

namespace rdl::layout {

// The region's rows are those of `outer` when it has the same data set, else all of the data set's. Raises
// rdl::Error when a filter fails. Time grows with the number of rows and the depth of groups, plus sorting.
std::shared_ptr<Region> BuildRegion(const TablixPlan& plan, const Scope& outer, Evaluator& evaluator);

}  // namespace rdl::layout
