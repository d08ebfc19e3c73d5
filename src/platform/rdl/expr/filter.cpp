#include "platform/rdl/expr/filter.h"

#include <algorithm>

#include "platform/rdl/expr/characters.h"

namespace rdl::expr {
namespace {

using Op = FilterOperator;

struct OperatorName {
    std::string_view name;
    Op op;
};

constexpr OperatorName Operators[] = {
    {"Equal", Op::Equal},
    {"NotEqual", Op::NotEqual},
    {"LessThan", Op::Less},
    {"LessThanOrEqual", Op::LessOrEqual},
    {"GreaterThan", Op::Greater},
    {"GreaterThanOrEqual", Op::GreaterOrEqual},
    {"Like", Op::Like},
    {"In", Op::In},
    {"Between", Op::Between},
    {"TopN", Op::Top},
    {"BottomN", Op::Bottom},
    {"TopPercent", Op::TopPercent},
    {"BottomPercent", Op::BottomPercent},
};

}  // namespace

std::optional<FilterOperator> FindFilterOperator(std::string_view name) {
    for (const OperatorName& known : Operators) {
        if (CompareNoCase(known.name, name) == 0) {
            return known.op;
        }
    }
    return std::nullopt;
}

bool FilterTest::IsOneOf(const Value& value, const Value& operand) {
    if (operand.kind() != Kind::List) {
        return Order(value, operand) == 0;
    }
    return std::any_of(operand.AsList().begin(), operand.AsList().end(),
                       [&](const Value& one) { return Order(value, one) == 0; });
}

bool FilterTest::Passes(FilterOperator op, const Value& value, std::size_t operands) {
    const Value operand = Operand(0);
    switch (op) {
        case Op::Equal:
            return Order(value, operand) == 0;
        case Op::NotEqual:
            return Order(value, operand) != 0;
        case Op::Less:
            return Order(value, operand) < 0;
        case Op::LessOrEqual:
            return Order(value, operand) <= 0;
        case Op::Greater:
            return Order(value, operand) > 0;
        case Op::GreaterOrEqual:
            return Order(value, operand) >= 0;
        case Op::Like:
            return IsLike(value, operand);
        case Op::In: {
            bool found = IsOneOf(value, operand);
            for (std::size_t i = 1; i < operands && !found; ++i) {
                found = IsOneOf(value, Operand(i));
            }
            return found;
        }
        case Op::Between:
            return Order(value, operand) >= 0 && Order(value, Operand(1)) <= 0;
        default:
            return true;
    }
}

std::vector<bool> MarkExtremes(const std::vector<Value>& values, std::size_t count, bool largest,
                               const ValueOrder& order) {
    std::vector<bool> marks(values.size());
    if (count == 0) {
        return marks;
    }
    const auto before = [&](const Value& left, const Value& right) {
        return largest ? order(left, right) > 0 : order(left, right) < 0;
    };
    std::vector<Value> ranked = values;
    const auto border = ranked.begin() + static_cast<std::ptrdiff_t>(count - 1);
    std::nth_element(ranked.begin(), border, ranked.end(), before);
    for (std::size_t i = 0; i < values.size(); ++i) {
        marks[i] = !before(*border, values[i]);
    }
    return marks;
}

}  // namespace rdl::expr
