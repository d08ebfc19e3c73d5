// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/operations/convert.h"

#include <charconv>
#include <cmath>

#include "rdl/expr/operations/compare.h"
#include "rdl/values/ascii.h"
#include "rdl/values/utf8.h"

namespace rdl::expr {
namespace {

constexpr std::int64_t TicksOf1899 = 599'264'352'000'000'000;  // 1899-12-30

const char* KindName(Kind kind) {
    switch (kind) {
        case Kind::Null:
            return "nothing";
        case Kind::Boolean:
            return "a Boolean";
        case Kind::Integer:
        case Kind::Real:
        case Kind::Decimal:
            return "a number";
        case Kind::DateTime:
            return "a date";
        case Kind::TimeSpan:
            return "a time span";
        case Kind::Text:
            return "text";
        case Kind::Bytes:
            return "binary data";
        case Kind::List:
            return "a list";
        case Kind::Error:
            return "an error";
        case Kind::Object:
            return "an object";
    }
    return "a value";
}

int Sign(double difference) {
    return difference < 0 ? -1 : difference > 0 ? 1 : 0;
}

// Returns whether `comparison` holds for the order -1, 0 or 1. The caller handles NaN.
bool Holds(Comparison comparison, int order) {
    switch (comparison) {
        case Comparison::Equal:
            return order == 0;
        case Comparison::NotEqual:
            return order != 0;
        case Comparison::Less:
            return order < 0;
        case Comparison::LessEqual:
            return order <= 0;
        case Comparison::Greater:
            return order > 0;
        case Comparison::GreaterEqual:
            return order >= 0;
    }
    return false;
}

Value CompareNumbers(Comparison comparison, const Value& left, const Value& right) {
    if (left.kind() == Kind::Integer && right.kind() == Kind::Integer) {
        const std::int64_t l = left.AsInteger();
        const std::int64_t r = right.AsInteger();
        return Value::Boolean(Holds(comparison, l < r ? -1 : l > r ? 1 : 0));
    }
    if (left.kind() != Kind::Real && right.kind() != Kind::Real) {
        return Value::Boolean(Holds(comparison, Compare(left, right)));
    }
    const double l = left.AsDouble();
    const double r = right.AsDouble();
    if (std::isnan(l) || std::isnan(r)) {
        return Value::Boolean(comparison == Comparison::NotEqual);
    }
    return Value::Boolean(Holds(comparison, l == r ? 0 : Sign(l < r ? -1.0 : 1.0)));
}

Value CompareTicks(Comparison comparison, std::int64_t left, std::int64_t right) {
    return Value::Boolean(Holds(comparison, left < right ? -1 : left > right ? 1 : 0));
}

Value CompareDates(Comparison comparison, const Value& left, const Value& right, const Culture& culture) {
    std::int64_t l = 0;
    std::int64_t r = 0;
    if (!ToDateTime(left, culture, l)) {
        return NoConversion(left, "a date");
    }
    if (!ToDateTime(right, culture, r)) {
        return NoConversion(right, "a date");
    }
    return CompareTicks(comparison, l, r);
}

// Nothing takes the kind of the other side.
Value LikeOther(const Value& other) {
    switch (other.kind()) {
        case Kind::Text:
            return Value::Text("");
        case Kind::DateTime:
            return Value::DateTime(0);
        case Kind::TimeSpan:
            return Value::TimeSpan(0);
        case Kind::Boolean:
            return Value::Boolean(false);
        default:
            return Value::Integer(0);
    }
}

bool ParseBoolean(std::string_view text, bool& result) {
    if (EqualNoCase(text, "true")) {
        result = true;
        return true;
    }
    result = false;
    return EqualNoCase(text, "false");
}

// "&HFF", "&O17"
bool ParseBased(std::string_view text, std::int64_t& number) {
    if (text.size() < 3 || text[0] != '&') {
        return false;
    }
    const char letter = AsciiLower(text[1]);
    const int base = letter == 'h' ? 16 : letter == 'o' ? 8 : 0;
    const char* end = text.data() + text.size();
    return base != 0 && text[2] != '-' && std::from_chars(text.data() + 2, end, number, base).ptr == end;
}

}  // namespace

Value NoConversion(const Value& value, std::string_view toWhat) {
    std::string why = "Conversion from ";
    why += KindName(value.kind());
    if (value.IsText()) {
        why += " \"" + std::string(Slice(value.AsText(), 0, 40)) + "\"";
    }
    why += " to ";
    why += toWhat;
    why += " is not possible";
    for (char& c : why) {
        c = c == '\'' ? '"' : c;
    }
    return Value::Error(why);
}

Value MakeText(std::string_view text) {
    return text.size() > MaxText ? Value::Error("A text becomes too long") : Value::Text(text);
}

double RoundHalfEven(double number) {
    const double floor = std::floor(number);
    const double rest = number - floor;
    if (rest != 0.5) {
        return rest < 0.5 ? floor : floor + 1;
    }
    return std::fmod(floor, 2) == 0 ? floor : floor + 1;
}

bool RoundToInteger(double number, std::int64_t& result) {
    const double rounded = RoundHalfEven(number);
    if (!(rounded >= -9223372036854775808.0 && rounded < 9223372036854775808.0)) {
        return false;
    }
    result = static_cast<std::int64_t>(rounded);
    return true;
}

bool ToNumber(const Value& value, const Culture& culture, Value& number) {
    switch (value.kind()) {
        case Kind::Null:
            number = Value::Integer(0);
            return true;
        case Kind::Boolean:
            number = Value::Integer(value.AsBoolean() ? -1 : 0);
            return true;
        case Kind::Integer:
        case Kind::Real:
        case Kind::Decimal:
            number = value;
            return true;
        case Kind::Text: {
            double parsed = 0;
            std::int64_t based = 0;
            if (ParseBased(value.AsText(), based)) {
                number = Value::Integer(based);
                return true;
            }
            if (!ParseNumber(value.AsText(), culture, parsed)) {
                return false;
            }
            number = Value::Real(parsed);
            return true;
        }
        default:
            return false;
    }
}

bool ToDouble(const Value& value, const Culture& culture, double& result) {
    if (value.IsNumber()) {
        result = value.AsDouble();
        return true;
    }
    Value number;
    if (!ToNumber(value, culture, number)) {
        return false;
    }
    result = number.AsDouble();
    return true;
}

bool ToDecimal(const Value& value, const Culture& culture, Decimal& result) {
    Decimal parsed;
    if (value.IsText() && ParseNumber(value.AsText(), culture, parsed)) {
        result = parsed;
        return true;
    }
    Value number;
    if (!ToNumber(value, culture, number)) {
        return false;
    }
    if (number.kind() == Kind::Real) {
        const auto decimal = Decimal::OfDouble(number.AsReal());
        result = decimal.value_or(Decimal());
        return decimal.has_value();
    }
    result = number.AsDecimal();
    return true;
}

bool ToInteger(const Value& value, const Culture& culture, std::int64_t& result) {
    if (value.kind() == Kind::Integer) {
        result = value.AsInteger();
        return true;
    }
    if (value.kind() == Kind::Decimal) {
        const auto whole = value.AsDecimal().Rounded(0, Rounding::HalfEven).ToInteger();
        result = whole.value_or(0);
        return whole.has_value();
    }
    double number = 0;
    return ToDouble(value, culture, number) && RoundToInteger(number, result);
}

bool ToDateTime(const Value& value, const Culture& culture, std::int64_t& ticks) {
    switch (value.kind()) {
        case Kind::Null:
            ticks = 0;
            return true;
        case Kind::DateTime:
            ticks = value.AsTicks();
            return true;
        case Kind::Text:
            return ParseDateTime(value.AsText(), culture, ticks);
        default:
            return false;
    }
}

bool ToBoolean(const Value& value, const Culture& culture, bool& result) {
    switch (value.kind()) {
        case Kind::Null:
            result = false;
            return true;
        case Kind::Boolean:
            result = value.AsBoolean();
            return true;
        case Kind::Integer:
            result = value.AsInteger() != 0;
            return true;
        case Kind::Real:
            result = value.AsReal() != 0;
            return true;
        case Kind::Decimal:
            result = !value.AsDecimal().IsZero();
            return true;
        case Kind::Text: {
            if (ParseBoolean(value.AsText(), result)) {
                return true;
            }
            double number = 0;
            if (!ParseNumber(value.AsText(), culture, number)) {
                return false;
            }
            result = number != 0;
            return true;
        }
        default:
            return false;
    }
}

bool ToBoolean(const Value& value, bool& result) {
    return ToBoolean(value, FindCulture(""), result);
}

std::string TextOf(const Value& value, const Culture& culture) {
    if (value.IsText()) {
        return std::string(value.AsText());
    }
    if (value.kind() == Kind::DateTime) {
        const std::int64_t ticks = value.AsTicks();
        const std::int64_t day = ticks - ticks % TicksPerDay;
        if (day == 0 || day == TicksOf1899) {
            return FormatValue(value, "T", culture);
        }
        if (day == ticks) {
            return FormatValue(value, "d", culture);
        }
    }
    return ToText(value, culture);
}

Value CompareAs(Comparison comparison, const Value& left, const Value& right, const Culture& culture) {
    if (left.IsNumber() && right.IsNumber()) {
        return CompareNumbers(comparison, left, right);
    }
    if (left.IsError() || right.IsError()) {
        return left.IsError() ? left : right;
    }
    if (left.IsNull() != right.IsNull()) {
        return left.IsNull() ? CompareAs(comparison, LikeOther(right), right, culture)
                             : CompareAs(comparison, left, LikeOther(left), culture);
    }
    const Kind l = left.kind();
    const Kind r = right.kind();
    if (l == Kind::Text && r == Kind::Text) {
        return Value::Boolean(Holds(comparison, left.AsText().compare(right.AsText())));
    }
    if (l == Kind::DateTime || r == Kind::DateTime) {
        return CompareDates(comparison, left, right, culture);
    }
    if (l == Kind::TimeSpan && r == Kind::TimeSpan) {
        return CompareTicks(comparison, left.AsTicks(), right.AsTicks());
    }
    if ((l == Kind::Boolean && r == Kind::Text) || (l == Kind::Text && r == Kind::Boolean)) {
        bool a = false;
        bool b = false;
        if (!ToBoolean(left, culture, a) || !ToBoolean(right, culture, b)) {
            return NoConversion(l == Kind::Text ? left : right, "a Boolean");
        }
        return CompareTicks(comparison, a ? -1 : 0, b ? -1 : 0);
    }
    Value a;
    Value b;
    if (!ToNumber(left, culture, a)) {
        return NoConversion(left, r == Kind::Text ? "text" : "a number");
    }
    if (!ToNumber(right, culture, b)) {
        return NoConversion(right, "a number");
    }
    return CompareNumbers(comparison, a, b);
}

}  // namespace rdl::expr
