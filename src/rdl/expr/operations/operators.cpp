// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/operations/operators.h"

#include <cmath>
#include <limits>
#include <optional>

#include "rdl/expr/operations/convert.h"

namespace rdl::expr {
namespace {

const char* const Overflow = "Arithmetic overflow";
const char* const DivisionByZero = "Division by zero";

Value MoveTicks(Kind kind, std::int64_t left, std::int64_t right) {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(left, right, &sum) ||
        (kind == Kind::DateTime && (sum < 0 || sum > MaxTicks))) {
        return Value::Error("A date or time span lies outside its range");
    }
    return kind == Kind::DateTime ? Value::DateTime(sum) : Value::TimeSpan(sum);
}

bool IsTicks(const Value& value) {
    return value.kind() == Kind::DateTime || value.kind() == Kind::TimeSpan;
}

// What is neither error nor number becomes a number; false with the error in `left`.
bool Numbers(Value& left, Value& right, const Culture& culture) {
    for (Value* value : {&left, &right}) {
        if (value->IsError()) {
            left = *value;
            return false;
        }
    }
    for (Value* value : {&left, &right}) {
        if (!value->IsNumber() && !ToNumber(*value, culture, *value)) {
            left = NoConversion(*value, "a number");
            return false;
        }
    }
    return true;
}

using WholeOperation = bool (*)(std::int64_t, std::int64_t, std::int64_t&);
using DecimalOperation = std::optional<Decimal> (*)(const Decimal&, const Decimal&);
using RealOperation = double (*)(double, double);

// Whether the result is a Decimal: one of the numbers is, and none is a Real.
bool AreDecimals(const Value& left, const Value& right) {
    return left.kind() != Kind::Real && right.kind() != Kind::Real &&
           (left.kind() == Kind::Decimal || right.kind() == Kind::Decimal);
}

Value OfDecimal(const std::optional<Decimal>& result) {
    return result ? Value::Decimal(*result) : Value::Error(Overflow);
}

Value Arithmetic(const Value& left, const Value& right, const Culture& culture, WholeOperation whole,
                 DecimalOperation decimal, RealOperation real) {
    Value l = left;
    Value r = right;
    if (!Numbers(l, r, culture)) {
        return l;
    }
    if (l.kind() == Kind::Real || r.kind() == Kind::Real) {
        return Value::Real(real(l.AsDouble(), r.AsDouble()));
    }
    if (AreDecimals(l, r)) {
        return OfDecimal(decimal(l.AsDecimal(), r.AsDecimal()));
    }
    std::int64_t result = 0;
    return whole(l.AsInteger(), r.AsInteger(), result) ? Value::Integer(result) : Value::Error(Overflow);
}

// Both as whole numbers, for the operators that know no fraction; false with the error in `error`.
bool Wholes(const Value& left, const Value& right, const Culture& culture, std::int64_t& l, std::int64_t& r,
            Value& error) {
    Value a = left;
    Value b = right;
    if (!Numbers(a, b, culture)) {
        error = a;
        return false;
    }
    if (!ToInteger(a, culture, l) || !ToInteger(b, culture, r)) {
        error = Value::Error(Overflow);
        return false;
    }
    return true;
}

enum class Logic { And, Or, Xor };

Value Combine(Logic logic, const Value& left, const Value& right, const Culture& culture) {
    if (left.IsError() || right.IsError()) {
        return left.IsError() ? left : right;
    }
    if (left.kind() == Kind::Boolean || right.kind() == Kind::Boolean || (left.IsNull() && right.IsNull())) {
        bool l = false;
        bool r = false;
        if (!ToBoolean(left, culture, l) || !ToBoolean(right, culture, r)) {
            return NoConversion(ToBoolean(left, culture, l) ? right : left, "a Boolean");
        }
        return Value::Boolean(logic == Logic::And ? l && r : logic == Logic::Or ? l || r : l != r);
    }
    std::int64_t l = 0;
    std::int64_t r = 0;
    Value error;
    if (!Wholes(left, right, culture, l, r, error)) {
        return error;
    }
    return Value::Integer(logic == Logic::And ? l & r : logic == Logic::Or ? l | r : l ^ r);
}

}  // namespace

Value Add(const Value& left, const Value& right, const Culture& culture) {
    if (left.IsError() || right.IsError()) {
        return left.IsError() ? left : right;
    }
    if (left.IsText() || right.IsText()) {
        const Value& text = left.IsText() ? left : right;
        const Value& other = left.IsText() ? right : left;
        double number = 0;
        if (!other.IsNumber() || !ParseNumber(text.AsText(), culture, number)) {
            return Concatenate(left, right, culture);
        }
        return Value::Real(number + other.AsDouble());
    }
    if (IsTicks(left) || IsTicks(right)) {
        const bool date = left.kind() == Kind::DateTime || right.kind() == Kind::DateTime;
        if ((IsTicks(left) || left.IsNull()) && (IsTicks(right) || right.IsNull()) &&
            !(left.kind() == Kind::DateTime && right.kind() == Kind::DateTime)) {
            return MoveTicks(date ? Kind::DateTime : Kind::TimeSpan, left.IsNull() ? 0 : left.AsTicks(),
                             right.IsNull() ? 0 : right.AsTicks());
        }
    }
    return Arithmetic(
        left, right, culture,
        [](std::int64_t a, std::int64_t b, std::int64_t& c) { return !__builtin_add_overflow(a, b, &c); },
        rdl::Add, [](double a, double b) { return a + b; });
}

Value Subtract(const Value& left, const Value& right, const Culture& culture) {
    if (IsTicks(left) && (IsTicks(right) || right.IsNull())) {
        const std::int64_t ticks = right.IsNull() ? 0 : right.AsTicks();
        const bool dates = left.kind() == right.kind() || right.IsNull();
        if (dates) {
            return left.kind() == Kind::DateTime && right.IsNull()
                       ? left
                       : MoveTicks(Kind::TimeSpan, left.AsTicks(), -ticks);
        }
        if (left.kind() == Kind::DateTime && ticks != std::numeric_limits<std::int64_t>::min()) {
            return MoveTicks(Kind::DateTime, left.AsTicks(), -ticks);
        }
    }
    return Arithmetic(
        left, right, culture,
        [](std::int64_t a, std::int64_t b, std::int64_t& c) { return !__builtin_sub_overflow(a, b, &c); },
        rdl::Subtract, [](double a, double b) { return a - b; });
}

Value Multiply(const Value& left, const Value& right, const Culture& culture) {
    return Arithmetic(
        left, right, culture,
        [](std::int64_t a, std::int64_t b, std::int64_t& c) { return !__builtin_mul_overflow(a, b, &c); },
        rdl::Multiply, [](double a, double b) { return a * b; });
}

Value Divide(const Value& left, const Value& right, const Culture& culture) {
    Value l = left;
    Value r = right;
    if (!Numbers(l, r, culture)) {
        return l;
    }
    if (AreDecimals(l, r)) {
        const Decimal divisor = r.AsDecimal();
        return divisor.IsZero() ? Value::Error(DivisionByZero)
                                : OfDecimal(rdl::Divide(l.AsDecimal(), divisor));
    }
    return Value::Real(l.AsDouble() / r.AsDouble());
}

Value DivideWhole(const Value& left, const Value& right, const Culture& culture) {
    std::int64_t l = 0;
    std::int64_t r = 0;
    Value error;
    if (!Wholes(left, right, culture, l, r, error)) {
        return error;
    }
    if (r == 0) {
        return Value::Error(DivisionByZero);
    }
    if (r == -1) {
        return Negate(Value::Integer(l), culture);
    }
    return Value::Integer(l / r);
}

Value Modulo(const Value& left, const Value& right, const Culture& culture) {
    Value l = left;
    Value r = right;
    if (!Numbers(l, r, culture)) {
        return l;
    }
    if (l.kind() == Kind::Real || r.kind() == Kind::Real) {
        return Value::Real(std::fmod(l.AsDouble(), r.AsDouble()));
    }
    if (AreDecimals(l, r)) {
        const Decimal divisor = r.AsDecimal();
        return divisor.IsZero() ? Value::Error(DivisionByZero)
                                : Value::Decimal(Remainder(l.AsDecimal(), divisor));
    }
    if (r.AsInteger() == 0) {
        return Value::Error(DivisionByZero);
    }
    return Value::Integer(r.AsInteger() == -1 ? 0 : l.AsInteger() % r.AsInteger());
}

Value Power(const Value& left, const Value& right, const Culture& culture) {
    Value l = left;
    Value r = right;
    return Numbers(l, r, culture) ? Value::Real(std::pow(l.AsDouble(), r.AsDouble())) : l;
}

Value Concatenate(const Value& left, const Value& right, const Culture& culture) {
    if (left.IsError() || right.IsError()) {
        return left.IsError() ? left : right;
    }
    return MakeText(TextOf(left, culture) + TextOf(right, culture));
}

Value ShiftLeft(const Value& left, const Value& right, const Culture& culture) {
    std::int64_t l = 0;
    std::int64_t r = 0;
    Value error;
    return Wholes(left, right, culture, l, r, error)
               ? Value::Integer(static_cast<std::int64_t>(static_cast<std::uint64_t>(l) << (r & 63)))
               : error;
}

Value ShiftRight(const Value& left, const Value& right, const Culture& culture) {
    std::int64_t l = 0;
    std::int64_t r = 0;
    Value error;
    return Wholes(left, right, culture, l, r, error) ? Value::Integer(l >> (r & 63)) : error;
}

Value And(const Value& left, const Value& right, const Culture& culture) {
    return Combine(Logic::And, left, right, culture);
}
Value Or(const Value& left, const Value& right, const Culture& culture) {
    return Combine(Logic::Or, left, right, culture);
}
Value Xor(const Value& left, const Value& right, const Culture& culture) {
    return Combine(Logic::Xor, left, right, culture);
}

Value Not(const Value& value, const Culture& culture) {
    if (value.IsError()) {
        return value;
    }
    bool truth = false;
    if (value.kind() == Kind::Boolean || value.IsNull() || value.IsText()) {
        return ToBoolean(value, culture, truth) ? Value::Boolean(!truth) : NoConversion(value, "a Boolean");
    }
    std::int64_t number = 0;
    return ToInteger(value, culture, number) ? Value::Integer(~number) : NoConversion(value, "a number");
}

Value Negate(const Value& value, const Culture& culture) {
    if (value.kind() == Kind::TimeSpan && value.AsTicks() != std::numeric_limits<std::int64_t>::min()) {
        return Value::TimeSpan(-value.AsTicks());
    }
    if (value.kind() == Kind::Real) {
        return Value::Real(-value.AsReal());
    }
    if (value.kind() == Kind::Decimal) {
        return Value::Decimal(-value.AsDecimal());
    }
    return Subtract(Value::Integer(0), value, culture);
}

Value Like(const Value& left, const Value& right, const Culture& culture) {
    if (left.IsError() || right.IsError()) {
        return left.IsError() ? left : right;
    }
    bool valid = true;
    const bool matches = MatchesVisualBasicLike(TextOf(left, culture), TextOf(right, culture), valid);
    return valid ? Value::Boolean(matches) : Value::Error("The pattern of Like has no closing bracket");
}

Value Is(const Value& left, const Value& right, const Culture& culture) {
    if (left.IsNull() || right.IsNull()) {
        return left.IsError() || right.IsError() ? (left.IsError() ? left : right)
                                                 : Value::Boolean(left.IsNull() && right.IsNull());
    }
    return Equal(left, right, culture);
}

Value IsNot(const Value& left, const Value& right, const Culture& culture) {
    const Value is = Is(left, right, culture);
    return is.kind() == Kind::Boolean ? Value::Boolean(!is.AsBoolean()) : is;
}

Value Equal(const Value& left, const Value& right, const Culture& culture) {
    return CompareAs(Comparison::Equal, left, right, culture);
}
Value NotEqual(const Value& left, const Value& right, const Culture& culture) {
    return CompareAs(Comparison::NotEqual, left, right, culture);
}
Value Less(const Value& left, const Value& right, const Culture& culture) {
    return CompareAs(Comparison::Less, left, right, culture);
}
Value LessEqual(const Value& left, const Value& right, const Culture& culture) {
    return CompareAs(Comparison::LessEqual, left, right, culture);
}
Value Greater(const Value& left, const Value& right, const Culture& culture) {
    return CompareAs(Comparison::Greater, left, right, culture);
}
Value GreaterEqual(const Value& left, const Value& right, const Culture& culture) {
    return CompareAs(Comparison::GreaterEqual, left, right, culture);
}

}  // namespace rdl::expr
