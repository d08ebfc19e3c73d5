// SPDX-License-Identifier: GPL-3.0-or-later
// Filters and sorts of data regions and groups.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "rdl/layout/region/evaluator.h"

namespace rdl::layout {

// Keeps the candidates that pass, in their order. `enter` moves the evaluator to a candidate; `owner` names
// the region or group in errors. Raises rdl::Error if an expression of the filter fails.
void ApplyFilter(const FilterPlan& filter, const std::string& owner, std::vector<std::uint32_t>& candidates,
                 Evaluator& evaluator, const std::function<void(std::uint32_t)>& enter);

// Sorts the candidates; the sort is stable. Raises rdl::Error if an expression fails.
void ApplySort(const std::vector<SortPlan>& sorts, const std::string& owner,
               std::vector<std::uint32_t>& candidates, Evaluator& evaluator,
               const std::function<void(std::uint32_t)>& enter);

}  // namespace rdl::layout
