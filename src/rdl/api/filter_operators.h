// SPDX-License-Identifier: GPL-3.0-or-later
// The words by which filters of data sets, data regions and groups compare (MS-RDL, Operator).
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

#include "rdl/values/ascii.h"
#include "rdl/values/named.h"

namespace rdl {

enum class FilterOperator : std::uint8_t {
    Equal,
    NotEqual,
    Greater,
    GreaterOrEqual,
    Less,
    LessOrEqual,
    Like,
    In,
    Between,
    Top,  // from here on operators rank the candidates
    Bottom,
    TopPercent,
    BottomPercent,
};

struct FilterOperatorRow {
    std::string_view name;  // as in a report
    FilterOperator op;
};

// In the order in which they are offered.
inline constexpr FilterOperatorRow FilterOperators[] = {
    {"Equal", FilterOperator::Equal},
    {"NotEqual", FilterOperator::NotEqual},
    {"GreaterThan", FilterOperator::Greater},
    {"GreaterThanOrEqual", FilterOperator::GreaterOrEqual},
    {"LessThan", FilterOperator::Less},
    {"LessThanOrEqual", FilterOperator::LessOrEqual},
    {"Like", FilterOperator::Like},
    {"In", FilterOperator::In},
    {"Between", FilterOperator::Between},
    {"TopN", FilterOperator::Top},
    {"BottomN", FilterOperator::Bottom},
    {"TopPercent", FilterOperator::TopPercent},
    {"BottomPercent", FilterOperator::BottomPercent},
};
static_assert(NamesDiffer(FilterOperators));

// Returns the operator of the word, without regard to case; null if there is none.
inline const FilterOperatorRow* FindFilterOperator(std::string_view word) {
    const auto* const found =
        std::find_if(std::begin(FilterOperators), std::end(FilterOperators),
                     [word](const FilterOperatorRow& row) { return EqualNoCase(row.name, word); });
    return found == std::end(FilterOperators) ? nullptr : found;
}

// Returns how many values a filter has at least. One with In may have more, others have just these.
constexpr std::size_t FilterValuesNeeded(FilterOperator op) {
    return op == FilterOperator::Between ? 2 : 1;
}

}  // namespace rdl
