// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/region/row_filter.h"

#include <algorithm>
#include <numeric>

#include "rdl/expr/operations/compare.h"
#include "rdl/expr/operations/filter_operator.h"
#include "rdl/values/error.h"

namespace rdl::layout {
namespace {

Value Checked(const Property& property, const std::string& owner, Evaluator& evaluator,
              const char* what = "a filter") {
    Value value = property.Get(evaluator);
    if (value.IsError()) {
        throw Error(owner + ": " + what + " cannot be computed: " + std::string(value.AsText()));
    }
    return value;
}

expr::FilterRules RulesOf(Evaluator& evaluator) {
    return {&evaluator.CurrentCulture(), evaluator.ComparesByCase()};
}

void KeepRanked(const FilterPlan& filter, const std::string& owner, std::vector<std::uint32_t>& candidates,
                Evaluator& evaluator, const std::function<void(std::uint32_t)>& enter) {
    if (candidates.empty()) {
        return;
    }
    std::vector<Value> values;
    values.reserve(candidates.size());
    for (const std::uint32_t candidate : candidates) {
        enter(candidate);
        values.push_back(Checked(filter.expression, owner, evaluator));
    }
    const std::vector<bool> keep = expr::RankFilter(filter.op, RulesOf(evaluator), values,
                                                    Checked(filter.values.front(), owner, evaluator));
    std::size_t kept = 0;
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        if (keep[i]) {
            candidates[kept++] = candidates[i];
        }
    }
    candidates.resize(kept);
}

}  // namespace

void ApplyFilter(const FilterPlan& filter, const std::string& owner, std::vector<std::uint32_t>& candidates,
                 Evaluator& evaluator, const std::function<void(std::uint32_t)>& enter) {
    if (expr::Ranks(filter.op)) {
        KeepRanked(filter, owner, candidates, evaluator, enter);
        return;
    }
    const auto operand = [&](std::size_t index) { return Checked(filter.values[index], owner, evaluator); };
    std::erase_if(candidates, [&](std::uint32_t candidate) {
        enter(candidate);
        return !expr::PassesFilter(filter.op, RulesOf(evaluator),
                                   Checked(filter.expression, owner, evaluator), filter.values.size(),
                                   operand);
    });
}

void ApplySort(const std::vector<SortPlan>& sorts, const std::string& owner,
               std::vector<std::uint32_t>& candidates, Evaluator& evaluator,
               const std::function<void(std::uint32_t)>& enter) {
    if (sorts.empty() || candidates.size() < 2) {
        return;
    }
    const std::size_t width = sorts.size();
    std::vector<Value> keys;
    keys.reserve(candidates.size() * width);
    for (const std::uint32_t candidate : candidates) {
        enter(candidate);
        for (const SortPlan& sort : sorts) {
            keys.push_back(Checked(sort.value, owner, evaluator, "a sort"));
        }
    }
    std::vector<std::uint32_t> order(candidates.size());
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(), [&](std::uint32_t left, std::uint32_t right) {
        for (std::size_t i = 0; i < width; ++i) {
            const int difference = expr::Compare(keys[left * width + i], keys[right * width + i]);
            if (difference != 0) {
                return sorts[i].descending ? difference > 0 : difference < 0;
            }
        }
        return false;
    });
    std::vector<std::uint32_t> sorted;
    sorted.reserve(order.size());
    for (const std::uint32_t index : order) {
        sorted.push_back(candidates[index]);
    }
    candidates.swap(sorted);
}

}  // namespace rdl::layout
