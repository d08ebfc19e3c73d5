// What the filters of data sets and of data regions have in common: the operators and what each lets through.
// How values are reached and compared is the caller's affair.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/rdl/value.h"

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

// A filter that looks at one candidate at a time. Operands are asked for one by one and only as far as they
// are needed.
class FilterTest {
 public:
    virtual ~FilterTest() = default;
    // For an operator that does not rank; `operands`: how many the filter has, two for Between, else at least
    // one.
    bool Passes(FilterOperator op, const Value& value, std::size_t operands);

 protected:
    virtual Value Operand(std::size_t index) = 0;
    virtual int Order(const Value& value, const Value& operand) = 0;  // as Compare
    virtual bool IsLike(const Value& value, const Value& pattern) = 0;

 private:
    bool IsOneOf(const Value& value, const Value& operand);
};

using ValueOrder = std::function<int(const Value& left, const Value& right)>;

// Marks the `count` largest (smallest) values, which are no more than there are; equal ones at the border all
// stay.
std::vector<bool> MarkExtremes(const std::vector<Value>& values, std::size_t count, bool largest,
                               const ValueOrder& order);

}  // namespace rdl::expr
