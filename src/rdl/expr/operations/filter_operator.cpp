// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/operations/filter_operator.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "rdl/expr/operations/compare.h"
#include "rdl/expr/operations/convert.h"
#include "rdl/expr/operations/operators.h"
#include "rdl/values/ascii.h"
#include "rdl/values/characters.h"
#include "rdl/values/error.h"

namespace rdl::expr {
namespace {

using Op = FilterOperator;

constexpr std::size_t MostOperands = 100'000;

// As the schema writes it: a point, no separators.
bool ReadPlainNumber(std::string_view text, double& number) {
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    return failure == std::errc() && end == text.data() + text.size();
}

// Converts the text to the kind of `model`; returns it unchanged if that fails.
Value ReadAs(const Value& operand, Kind model, const Culture& culture) {
    const std::string_view text = operand.AsText();
    double number = 0;
    std::int64_t ticks = 0;
    bool truth = false;
    switch (model) {
        case Kind::Decimal:
            if (const auto exact = Decimal::OfText(text)) {
                return Value::Decimal(*exact);
            }
            [[fallthrough]];
        case Kind::Integer:
        case Kind::Real:
            return ReadPlainNumber(text, number) || ToDouble(operand, culture, number) ? Value::Real(number)
                                                                                       : operand;
        case Kind::DateTime:
            return ParseDateTime(text, FindCulture(""), ticks) || ParseDateTime(text, culture, ticks)
                       ? Value::DateTime(ticks)
                       : operand;
        case Kind::Boolean:
            return ToBoolean(operand, truth) ? Value::Boolean(truth) : operand;
        default:
            return operand;
    }
}

std::string Shown(const Value& value, const Culture& culture) {
    return value.IsText() ? "\"" + std::string(value.AsText()) + "\"" : ToText(value, culture);
}

// Returns which of the two is larger; a missing value is the least. Raises rdl::Error for values that cannot
// be compared, such as a number and a text that is none: every row would pass, or no row.
int Larger(const FilterRules& rules, const Value& value, const Value& operand) {
    const Value& text = value.IsText() ? value : operand;
    const Value& model = value.IsText() ? operand : value;
    if (text.IsText() && !text.AsText().empty() && !model.IsText() && !model.IsNull() &&
        ReadAs(text, model.kind(), *rules.culture).IsText()) {
        throw Error("a filter cannot compare " + Shown(value, *rules.culture) + " with " +
                    Shown(operand, *rules.culture));
    }
    return rules.Order(value, operand);
}

bool EqualsAny(const FilterRules& rules, const Value& value, const Value& operand) {
    if (operand.kind() != Kind::List) {
        return rules.Order(value, operand) == 0;
    }
    return std::any_of(operand.AsList().begin(), operand.AsList().end(),
                       [&](const Value& one) { return rules.Order(value, one) == 0; });
}

// Marks the `count` first values; equal ones at the border all stay.
std::vector<bool> MarkFirst(const std::vector<Value>& values, std::size_t count,
                            const std::function<bool(const Value&, const Value&)>& before) {
    std::vector<bool> marks(values.size());
    if (count == 0) {
        return marks;
    }
    std::vector<Value> ranked = values;
    const auto border = ranked.begin() + static_cast<std::ptrdiff_t>(count - 1);
    std::nth_element(ranked.begin(), border, ranked.end(), before);
    for (std::size_t i = 0; i < values.size(); ++i) {
        marks[i] = !before(*border, values[i]);
    }
    return marks;
}

}  // namespace

int FilterRules::Order(const Value& value, const Value& operand) const {
    if (value.IsText() && operand.IsText()) {
        return caseSensitive ? value.AsText().compare(operand.AsText()) : Compare(value, operand);
    }
    if (value.IsText()) {  // as JSON, XML and SQLite have dates
        return Compare(ReadAs(value, operand.kind(), *culture), operand);
    }
    return Compare(value, operand.IsText() ? ReadAs(operand, value.kind(), *culture) : operand);
}

bool FilterRules::IsLike(const Value& value, const Value& pattern) const {
    const std::string text = ToText(value, *culture), form = ToText(pattern, *culture);
    bool valid = true;
    const bool matches = caseSensitive ? MatchesVisualBasicLike(text, form, valid)
                                       : MatchesVisualBasicLike(Lower(text), Lower(form), valid);
    if (!valid) {
        throw Error("the pattern of a filter lacks a closing bracket");
    }
    return matches && !value.IsNull();
}

FilterOperator CheckedFilterOperator(const std::string& name, std::size_t operands) {
    const FilterOperatorRow* const known = FindFilterOperator(name);
    if (!known) {
        throw Error("a filter has the unknown operator \"" + name + "\"");
    }
    const std::size_t least = FilterValuesNeeded(known->op);
    if (operands < least || operands > (known->op == Op::In ? MostOperands : least)) {
        throw Error("a filter with " + name + " has " + std::to_string(operands) + " values");
    }
    return known->op;
}

bool PassesFilter(FilterOperator op, const FilterRules& rules, const Value& value, std::size_t operands,
                  const std::function<Value(std::size_t)>& operand) {
    const Value first = operand(0);
    switch (op) {
        case Op::Equal:
            return rules.Order(value, first) == 0;
        case Op::NotEqual:
            return rules.Order(value, first) != 0;
        case Op::Less:
            return Larger(rules, value, first) < 0;
        case Op::LessOrEqual:
            return Larger(rules, value, first) <= 0;
        case Op::Greater:
            return Larger(rules, value, first) > 0;
        case Op::GreaterOrEqual:
            return Larger(rules, value, first) >= 0;
        case Op::Like:
            return rules.IsLike(value, first);
        case Op::In: {
            bool found = EqualsAny(rules, value, first);
            for (std::size_t i = 1; i < operands && !found; ++i) {
                found = EqualsAny(rules, value, operand(i));
            }
            return found;
        }
        case Op::Between:
            return Larger(rules, value, first) >= 0 && Larger(rules, value, operand(1)) <= 0;
        default:
            return true;
    }
}

std::vector<bool> RankFilter(FilterOperator op, const FilterRules& rules, const std::vector<Value>& values,
                             const Value& wanted) {
    double number = 0;
    const bool isNumber = wanted.IsText() && ReadPlainNumber(wanted.AsText(), number);
    if ((!isNumber && !ToDouble(wanted, *rules.culture, number)) || !(number >= 0)) {
        throw Error("a filter by the first or last few needs a number that is not negative");
    }
    const auto all = static_cast<double>(values.size());
    // 7 percent of 100 are 7, whatever the rounding error of the division.
    number = RanksByPercent(op) ? std::ceil(all * number / 100 - 1e-9) : std::floor(number);
    const std::size_t count = number >= all ? values.size() : static_cast<std::size_t>(number);
    const bool fromTop = RanksFromTop(op);
    return MarkFirst(values, count, [&](const Value& left, const Value& right) {
        return fromTop ? rules.Order(left, right) > 0 : rules.Order(left, right) < 0;
    });
}

}  // namespace rdl::expr
