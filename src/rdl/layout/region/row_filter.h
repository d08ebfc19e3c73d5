// Filters and sorts of data regions and groups.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "rdl/layout/region/evaluator.h"

namespace rdl::layout {

// Leaves those candidates that pass, in their order. `enter` puts the evaluator at a candidate. Raises
// rdl::Error when an expression of the filter fails.
// `owner` is what an error names: the region or group that filters.
void ApplyFilter(const FilterPlan& filter, const std::string& owner, std::vector<std::uint32_t>& candidates,
                 Evaluator& evaluator, const std::function<void(std::uint32_t)>& enter);

// Puts the candidates in order; equal ones keep theirs. Raises rdl::Error when an expression fails.
void ApplySort(const std::vector<SortPlan>& sorts, const std::string& owner,
               std::vector<std::uint32_t>& candidates, Evaluator& evaluator,
               const std::function<void(std::uint32_t)>& enter);

}  // namespace rdl::layout
