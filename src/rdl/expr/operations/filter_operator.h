// What the filters of data sets, data regions and groups are: the operators, how values are compared, and
// what each lets through. How values are reached is the caller's affair.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/format/format.h"
#include "rdl/values/value.h"

namespace rdl::expr {

enum class FilterOperator : std::uint8_t {
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    Like,
    In,
    Between,
    Top,  // from here on candidates are ranked among each other
    Bottom,
    TopPercent,
    BottomPercent,
};

std::optional<FilterOperator> FindFilterOperator(std::string_view name);

inline bool Ranks(FilterOperator op) {
    return op >= FilterOperator::Top;
}
inline bool RanksFromTop(FilterOperator op) {
    return op == FilterOperator::Top || op == FilterOperator::TopPercent;
}
inline bool RanksByPercent(FilterOperator op) {
    return op == FilterOperator::TopPercent || op == FilterOperator::BottomPercent;
}

// How the values of one filter are compared.
struct FilterRules {
    const Culture* culture = nullptr;
    bool caseSensitive = false;
    // As Compare. A constant in a report is a text: it is compared as what the other side is, read as the
    // schema writes numbers and dates, else as the language does.
    int Order(const Value& value, const Value& operand) const;
    // Null is like nothing. Raises rdl::Error for a pattern without its closing bracket.
    bool IsLike(const Value& value, const Value& pattern) const;
};

// Raises rdl::Error naming the operator when it does not exist or has another number of values.
FilterOperator CheckedFilterOperator(const std::string& name, std::size_t operands);

// A filter that looks at one candidate at a time. Operands are asked for one by one and only as far as they
// are needed; `operands`: how many the filter has.
bool PassesFilter(FilterOperator op, const FilterRules& rules, const Value& value, std::size_t operands,
                  const std::function<Value(std::size_t)>& operand);

// A filter that ranks: marks the largest (smallest) `wanted` values, or so many in a hundred; equal ones at
// the border all stay. Raises rdl::Error when `wanted` is no number or below 0.
std::vector<bool> RankFilter(FilterOperator op, const FilterRules& rules, const std::vector<Value>& values,
                             const Value& wanted);

}  // namespace rdl::expr
