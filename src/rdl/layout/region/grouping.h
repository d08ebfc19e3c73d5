// SPDX-License-Identifier: GPL-3.0-or-later
// Builds a data region: filters, sorts and groups its rows.
#pragma once

#include <memory>

#include "rdl/layout/region/evaluator.h"

namespace rdl::layout {

// The rows are those of `outer` if it has the same data set, else all of the data set. Raises rdl::Error if a
// filter or a sort fails. Time is linear in rows times depth of groups, plus sorting.
std::shared_ptr<Region> BuildRegion(const TablixPlan& plan, const Scope& outer, Evaluator& evaluator);

}  // namespace rdl::layout
