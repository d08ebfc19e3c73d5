// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>
#include <optional>

#include "rdl/expr/operations/compare.h"
#include "rdl/expr/operations/convert.h"
#include "rdl/formula/formula.h"
#include "rdl/formula/node.h"
#include "rdl/values/characters.h"
#include "rdl/values/utf8.h"

namespace rdl::formula {
namespace {

const char* const DividesByZero = "it divides by zero";
const char* const TooLarge = "a number is too large";

Value Truth(bool truth) {
    return Value::Boolean(truth);
}

Value NoTruth(const Value& value) {
    return value.IsError() ? value
                           : Value::Error("a value is used as a condition that is neither true nor false");
}

// Evaluates And and Or. `decisive` is the value that decides the chain. Null decides nothing, and is the
// result if no value decides.
Value EvaluateChain(const Node& node, Inputs& inputs, bool decisive) {
    bool unknown = false;
    for (const NodePtr& child : node.children) {
        Value value = EvaluateNode(*child, inputs);
        if (value.IsNull()) {
            unknown = true;
        } else if (value.kind() != Kind::Boolean) {
            return NoTruth(value);
        } else if (value.AsBoolean() == decisive) {
            return value;
        }
    }
    return unknown ? Value() : Truth(!decisive);
}

Value EvaluateXor(const Node& node, Inputs& inputs) {
    bool odd = false;
    for (const NodePtr& child : node.children) {
        Value value = EvaluateNode(*child, inputs);
        if (value.kind() != Kind::Boolean) {
            return value.IsNull() ? value : NoTruth(value);
        }
        odd = odd != value.AsBoolean();
    }
    return Truth(odd);
}

Value EvaluateNot(const Node& node, Inputs& inputs) {
    Value value = EvaluateNode(*node.children[0], inputs);
    if (value.kind() != Kind::Boolean) {
        return value.IsNull() ? value : NoTruth(value);
    }
    return Truth(!value.AsBoolean());
}

bool SameSort(const Value& left, const Value& right) {
    return left.kind() == right.kind() || (left.IsNumber() && right.IsNumber());
}

// A text beside a number or a date is read as one; false when that cannot be done.
bool Fit(Value& value, const Value& model, const Culture& culture) {
    std::int64_t ticks = 0;
    double number = 0;
    if (model.kind() == Kind::DateTime && value.IsText() && ParseDateTime(value.AsText(), culture, ticks)) {
        value = Value::DateTime(ticks);
        return true;
    }
    if (model.IsNumber() && value.IsText() && ParseNumber(value.AsText(), culture, number)) {
        value = Value::Real(number);
        return true;
    }
    if (model.kind() == Kind::Boolean && value.IsNumber()) {
        value = Truth(value.AsDouble() != 0);
        return true;
    }
    return false;
}

// Below, equal to or above 0; false in `comparable` when the kinds do not go together.
int CompareValues(Value left, Value right, const Culture& culture, bool& comparable) {
    comparable = SameSort(left, right) || Fit(left, right, culture) || Fit(right, left, culture);
    if (!comparable) {
        return 0;
    }
    return left.IsText() ? CompareNoCase(left.AsText(), right.AsText()) : expr::Compare(left, right);
}

bool Holds(NodeKind kind, int order) {
    switch (kind) {
        case NodeKind::Equal:
            return order == 0;
        case NodeKind::NotEqual:
            return order != 0;
        case NodeKind::Less:
            return order < 0;
        case NodeKind::LessOrEqual:
            return order <= 0;
        case NodeKind::Greater:
            return order > 0;
        default:
            return order >= 0;
    }
}

Value CompareTwo(NodeKind kind, const Value& left, const Value& right, const Culture& culture) {
    if (left.IsError() || left.IsNull()) {
        return left;
    }
    if (right.IsError() || right.IsNull()) {
        return right;
    }
    bool comparable = false;
    const int order = CompareValues(left, right, culture, comparable);
    if (!comparable) {
        return Value::Error("\"" + expr::TextOf(left, culture).substr(0, 40) +
                            "\" cannot be compared with \"" + expr::TextOf(right, culture).substr(0, 40) +
                            "\"");
    }
    return Truth(Holds(kind, order));
}

// One test against one value or, when that is a list, against any of its values.
template <typename Test>
Value AnyOf(const Value& value, Test test) {
    if (value.kind() != Kind::List) {
        return test(value);
    }
    bool unknown = false;
    for (const Value& one : value.AsList()) {
        Value result = test(one);
        if (result.IsError() || (result.kind() == Kind::Boolean && result.AsBoolean())) {
            return result;
        }
        unknown = unknown || result.IsNull();
    }
    return unknown ? Value() : Truth(false);
}

Value EvaluateComparison(const Node& node, Inputs& inputs) {
    Value left = EvaluateNode(*node.children[0], inputs);
    Value right = EvaluateNode(*node.children[1], inputs);
    const Culture& culture = inputs.CurrentCulture();
    if (node.kind == NodeKind::NotEqual && (left.kind() == Kind::List || right.kind() == Kind::List)) {
        // Unequal to a list is unequal to all of it.
        Value equal = AnyOf(right, [&](const Value& r) {
            return AnyOf(left, [&](const Value& l) { return CompareTwo(NodeKind::Equal, l, r, culture); });
        });
        return equal.kind() == Kind::Boolean ? Truth(!equal.AsBoolean()) : equal;
    }
    return AnyOf(right, [&](const Value& r) {
        return AnyOf(left, [&](const Value& l) { return CompareTwo(node.kind, l, r, culture); });
    });
}

Value InRange(const Node& range, const Value& value, Inputs& inputs) {
    const Culture& culture = inputs.CurrentCulture();
    Value above =
        CompareTwo(NodeKind::GreaterOrEqual, value, EvaluateNode(*range.children[0], inputs), culture);
    if (above.kind() != Kind::Boolean || !above.AsBoolean()) {
        return above;
    }
    return CompareTwo(NodeKind::LessOrEqual, value, EvaluateNode(*range.children[1], inputs), culture);
}

Value TextTest(NodeKind kind, const Value& left, const Value& right, const Culture& culture) {
    if (right.IsNull() || right.IsError()) {
        return right;
    }
    const std::string text = expr::TextOf(left, culture), pattern = expr::TextOf(right, culture);
    if (kind == NodeKind::Like) {
        return Truth(MatchesFormulaLike(text, pattern));
    }
    const std::size_t length = CharacterCount(pattern);
    return Truth(CompareNoCase(Slice(text, 0, length), pattern) == 0);
}

// In, Like and StartsWith: left against the elements of a choice.
Value EvaluateChoice(const Node& node, Inputs& inputs) {
    Value left = EvaluateNode(*node.children[0], inputs);
    if (left.IsNull() || left.IsError()) {
        return left;
    }
    const Culture& culture = inputs.CurrentCulture();
    bool unknown = false;
    for (const NodePtr& element : node.children[1]->children) {
        Value result = element->kind == NodeKind::Range
                           ? InRange(*element, left, inputs)
                           : AnyOf(EvaluateNode(*element, inputs), [&](const Value& right) {
                                 return node.kind == NodeKind::In
                                            ? CompareTwo(NodeKind::Equal, left, right, culture)
                                            : TextTest(node.kind, left, right, culture);
                             });
        if (result.IsError() || (result.kind() == Kind::Boolean && result.AsBoolean())) {
            return result;
        }
        unknown = unknown || result.IsNull();
    }
    return unknown ? Value() : Truth(false);
}

Value WholeArithmetic(NodeKind kind, std::int64_t left, std::int64_t right, bool& done) {
    std::int64_t result = 0;
    switch (kind) {
        case NodeKind::Add:
            done = !__builtin_add_overflow(left, right, &result);
            break;
        case NodeKind::Subtract:
            done = !__builtin_sub_overflow(left, right, &result);
            break;
        case NodeKind::Multiply:
            done = !__builtin_mul_overflow(left, right, &result);
            break;
        default:
            done = false;
    }
    return Value::Integer(result);
}

Value DecimalArithmetic(NodeKind kind, const Decimal& left, const Decimal& right, bool& done) {
    std::optional<Decimal> result;
    done = true;
    switch (kind) {
        case NodeKind::Add:
            result = Add(left, right);
            break;
        case NodeKind::Subtract:
            result = Subtract(left, right);
            break;
        case NodeKind::Multiply:
            result = Multiply(left, right);
            break;
        case NodeKind::Divide:
            if (right.IsZero()) {
                return Value::Error(DividesByZero);
            }
            result = Divide(left, right);
            break;
        default:
            done = false;
    }
    return result ? Value::Decimal(*result) : Value::Error(TooLarge);
}

Value WholeOf(double number) {
    const double whole = std::trunc(number);
    return std::abs(whole) < 9e15 ? Value::Integer(static_cast<std::int64_t>(whole)) : Value::Real(whole);
}

Value NumberArithmetic(NodeKind kind, const Value& left, const Value& right) {
    if (left.kind() == Kind::Integer && right.kind() == Kind::Integer) {
        bool done = false;
        Value whole = WholeArithmetic(kind, left.AsInteger(), right.AsInteger(), done);
        if (done) {
            return whole;
        }
    }
    if (left.kind() != Kind::Real && right.kind() != Kind::Real &&
        (left.kind() == Kind::Decimal || right.kind() == Kind::Decimal)) {
        bool done = false;
        Value exact = DecimalArithmetic(kind, left.AsDecimal(), right.AsDecimal(), done);
        if (done) {
            return exact;
        }
    }
    const double l = left.AsDouble(), r = right.AsDouble();
    const bool divides =
        kind == NodeKind::Divide || kind == NodeKind::DivideWhole || kind == NodeKind::Modulo;
    if (divides && (r == 0 || (kind != NodeKind::Divide && std::round(r) == 0))) {
        return Value::Error(DividesByZero);
    }
    double result = 0;
    switch (kind) {
        case NodeKind::Add:
            result = l + r;
            break;
        case NodeKind::Subtract:
            result = l - r;
            break;
        case NodeKind::Multiply:
            result = l * r;
            break;
        case NodeKind::Divide:
            result = l / r;
            break;
        case NodeKind::DivideWhole:
            return WholeOf(std::round(l) / std::round(r));
        case NodeKind::Modulo:
            return WholeOf(std::fmod(std::round(l), std::round(r)));
        default:
            result = std::pow(l, r);
    }
    return std::isfinite(result) ? Value::Real(result) : Value::Error(TooLarge);
}

Value AddDays(const Value& date, double days) {
    const double ticks = static_cast<double>(date.AsTicks()) + days * static_cast<double>(TicksPerDay);
    if (!(ticks >= 0) || ticks > static_cast<double>(expr::MaxTicks)) {
        return Value::Error("a date lies outside the calendar");
    }
    const auto whole = std::floor(days);
    const auto rest = static_cast<std::int64_t>(std::llround((days - whole) * 86'400)) * TicksPerSecond;
    return Value::DateTime(date.AsTicks() + static_cast<std::int64_t>(whole) * TicksPerDay + rest);
}

Value DateArithmetic(NodeKind kind, const Value& left, const Value& right) {
    const bool leftDate = left.kind() == Kind::DateTime, rightDate = right.kind() == Kind::DateTime;
    if (kind == NodeKind::Subtract && leftDate && rightDate) {
        const std::int64_t ticks = left.AsTicks() - right.AsTicks();
        return ticks % TicksPerDay == 0
                   ? Value::Integer(ticks / TicksPerDay)
                   : Value::Real(static_cast<double>(ticks) / static_cast<double>(TicksPerDay));
    }
    if (leftDate && right.IsNumber() && (kind == NodeKind::Add || kind == NodeKind::Subtract)) {
        return AddDays(left, kind == NodeKind::Add ? right.AsDouble() : -right.AsDouble());
    }
    if (rightDate && left.IsNumber() && kind == NodeKind::Add) {
        return AddDays(right, left.AsDouble());
    }
    return Value::Error("dates are not calculated with in this way");
}

Value Join(const Value& left, const Value& right, const Culture& culture) {
    std::string text = expr::TextOf(left, culture);
    text += expr::TextOf(right, culture);
    return expr::MakeText(text);
}

Value EvaluateArithmetic(const Node& node, Inputs& inputs) {
    Value left = EvaluateNode(*node.children[0], inputs);
    Value right = EvaluateNode(*node.children[1], inputs);
    if (left.IsError() || left.IsNull()) {
        return left;
    }
    if (right.IsError() || right.IsNull()) {
        return right;
    }
    const Culture& culture = inputs.CurrentCulture();
    if (node.kind == NodeKind::Concatenate ||
        (node.kind == NodeKind::Add && left.IsText() && right.IsText())) {
        return Join(left, right, culture);
    }
    if (left.kind() == Kind::DateTime || right.kind() == Kind::DateTime) {
        return DateArithmetic(node.kind, left, right);
    }
    Value l = left, r = right;
    if ((!l.IsNumber() && !Fit(l, Value::Integer(0), culture)) ||
        (!r.IsNumber() && !Fit(r, Value::Integer(0), culture))) {
        return Value::Error("a value is calculated with that is no number");
    }
    return NumberArithmetic(node.kind, l, r);
}

Value EvaluateNegate(const Node& node, Inputs& inputs) {
    Value value = EvaluateNode(*node.children[0], inputs);
    if (value.IsError() || value.IsNull()) {
        return value;
    }
    return value.IsNumber() ? NumberArithmetic(NodeKind::Subtract, Value::Integer(0), value)
                            : Value::Error("a value with a minus is no number");
}

Value EvaluateIf(const Node& node, Inputs& inputs) {
    Value condition = EvaluateNode(*node.children[0], inputs);
    if (condition.kind() != Kind::Boolean && !condition.IsNull()) {
        return NoTruth(condition);
    }
    const bool truth = !condition.IsNull() && condition.AsBoolean();
    return EvaluateNode(*node.children[truth ? 1 : 2], inputs);
}

Value EvaluateCall(const Node& node, Inputs& inputs) {
    std::vector<Value> arguments;
    arguments.reserve(node.children.size());
    for (const NodePtr& child : node.children) {
        arguments.push_back(EvaluateNode(*child, inputs));
    }
    return CallFunction(*node.function, arguments, inputs);
}

}  // namespace

Value EvaluateNode(const Node& node, Inputs& inputs) {
    switch (node.kind) {
        case NodeKind::Constant:
            return node.value;
        case NodeKind::Field:
            return inputs.Field(node.index);
        case NodeKind::Parameter:
            return inputs.Parameter(node.index);
        case NodeKind::Call:
            return EvaluateCall(node, inputs);
        case NodeKind::And:
            return EvaluateChain(node, inputs, false);
        case NodeKind::Or:
            return EvaluateChain(node, inputs, true);
        case NodeKind::Xor:
            return EvaluateXor(node, inputs);
        case NodeKind::Not:
            return EvaluateNot(node, inputs);
        case NodeKind::Equal:
        case NodeKind::NotEqual:
        case NodeKind::Less:
        case NodeKind::LessOrEqual:
        case NodeKind::Greater:
        case NodeKind::GreaterOrEqual:
            return EvaluateComparison(node, inputs);
        case NodeKind::In:
        case NodeKind::Like:
        case NodeKind::StartsWith:
            return EvaluateChoice(node, inputs);
        case NodeKind::IsNull: {
            Value value = EvaluateNode(*node.children[0], inputs);
            return value.IsError() ? value : Truth(value.IsNull());
        }
        case NodeKind::Negate:
            return EvaluateNegate(node, inputs);
        case NodeKind::If:
            return EvaluateIf(node, inputs);
        case NodeKind::Choice:
        case NodeKind::Range:
            return Value::Error("a range stands outside of a list");
        default:
            return EvaluateArithmetic(node, inputs);
    }
}

}  // namespace rdl::formula
