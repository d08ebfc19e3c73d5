// SPDX-License-Identifier: GPL-3.0-or-later
// Filters of data sets, data regions and groups (MS-RDL, Filter): how values compare, and what passes. The
// caller evaluates the expressions.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "rdl/api/filter_operators.h"
#include "rdl/format/format.h"
#include "rdl/values/value.h"

namespace rdl::expr {

inline bool Ranks(FilterOperator op) {
    return op >= FilterOperator::Top;
}
inline bool RanksFromTop(FilterOperator op) {
    return op == FilterOperator::Top || op == FilterOperator::TopPercent;
}
inline bool RanksByPercent(FilterOperator op) {
    return op == FilterOperator::TopPercent || op == FilterOperator::BottomPercent;
}

// How one filter compares values.
struct FilterRules {
    const Culture* culture = nullptr;
    bool caseSensitive = false;
    // Compares as Compare does. A constant in a report is a text: it is converted to the other side's kind,
    // first by the formats of the schema, then by those of the language.
    int Order(const Value& value, const Value& operand) const;
    // Null matches no pattern. Raises rdl::Error for a pattern without its closing bracket.
    bool IsLike(const Value& value, const Value& pattern) const;
};

// Returns the operator. Raises rdl::Error naming it if it is unknown or has the wrong number of values.
FilterOperator CheckedFilterOperator(const std::string& name, std::size_t operands);

// Tests one candidate. Operands, of which there are `operands`, are requested one by one and only as needed.
bool PassesFilter(FilterOperator op, const FilterRules& rules, const Value& value, std::size_t operands,
                  const std::function<Value(std::size_t)>& operand);

// Marks the largest (smallest) `wanted` values or percent of them; ties at the limit all pass. Raises
// rdl::Error if `wanted` is not a number or is negative.
std::vector<bool> RankFilter(FilterOperator op, const FilterRules& rules, const std::vector<Value>& values,
                             const Value& wanted);

}  // namespace rdl::expr
