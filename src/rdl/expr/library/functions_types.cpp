// SPDX-License-Identifier: GPL-3.0-or-later
// Static members of the number types: Integer.Parse, Decimal.Round, Convert.ToInt32 with a base ...
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

#include "rdl/expr/library/functions.h"
#include "rdl/expr/library/objects.h"
#include "rdl/expr/operations/convert.h"
#include "rdl/expr/operations/operators.h"
#include "rdl/values/ascii.h"
#include "rdl/values/characters.h"
#include "rdl/values/utf8.h"

namespace rdl::expr {
namespace {

Value TooLarge() {
    return Value::Error("A number is too large for its type");
}

// Digits with a sign in front and nothing else, unlike what CInt reads.
Value ParseWhole(std::string_view text, std::int64_t least, double most) {
    const std::string_view whole = Trimmed(text);
    const std::string_view digits = whole.substr(!whole.empty() && whole[0] == '+' ? 1 : 0);
    std::int64_t number = 0;
    const auto [end, fault] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (fault == std::errc::result_out_of_range) {
        return TooLarge();
    }
    if (fault != std::errc() || end != digits.data() + digits.size() || (digits != whole && number < 0)) {
        return NoConversion(Value::Text(text), "a whole number");
    }
    return number < least || static_cast<double>(number) > most ? TooLarge() : Value::Integer(number);
}

template <typename T>
constexpr std::int64_t Least() {
    return std::is_signed_v<T> ? static_cast<std::int64_t>(std::numeric_limits<T>::min()) : 0;
}
template <typename T>
constexpr double Most() {
    return static_cast<double>(std::numeric_limits<T>::max());
}

Value Missing() {
    return Value::Error("Nothing cannot be parsed");
}

template <typename T>
Value Parse(const Call& call) {
    return call[0].IsNull() ? Missing() : ParseWhole(call.Text(0), Least<T>(), Most<T>());
}

Value ParseReal(const Call& call) {
    double number = 0;
    if (call[0].IsNull()) {
        return Missing();
    }
    const Culture& culture = CultureOf(call, call.count() - 1);
    return ParseNumber(call.Text(0), culture, number) ? Value::Real(number)
                                                      : NoConversion(call[0], "a number");
}

Value ParseDecimal(const Call& call) {
    if (call[0].IsNull()) {
        return Missing();
    }
    const std::string text = call.Text(0);
    const Culture& culture = CultureOf(call, call.count() - 1);
    Decimal number;
    if (ParseNumber(text, culture, number)) {
        return Value::Decimal(number);
    }
    double large = 0;
    return ParseNumber(text, culture, large) ? TooLarge() : NoConversion(call[0], "a number");
}

Value ParseBoolean(const Call& call) {
    const std::string text = LowerAscii(Trimmed(call.Text(0)));
    return text == "true" || text == "false" ? Value::Boolean(text == "true")
                                             : NoConversion(Value::Text(call.Text(0)), "a Boolean");
}

// Convert.ToX(value), (text, base): True counts as 1 where CInt counts it as -1, and a text holds digits
// only.
template <typename T>
Value ToWhole(const Call& call) {
    if (call[0].kind() == Kind::Boolean) {
        return Value::Integer(call[0].AsBoolean() ? 1 : 0);
    }
    if (call[0].IsText() && call.count() > 1 && call[1].IsNumber()) {
        std::int64_t base = 0;
        call.Integer(1, base);
        if (base != 2 && base != 8 && base != 10 && base != 16) {
            return Value::Error("Numbers are written to the base 2, 8, 10 or 16");
        }
        std::string_view text = call[0].AsText();
        if (base == 16 && text.size() > 2 && text[0] == '0' && AsciiLower(text[1]) == 'x') {
            text.remove_prefix(2);
        }
        std::uint64_t number = 0;
        const auto [end, fault] =
            std::from_chars(text.data(), text.data() + text.size(), number, static_cast<int>(base));
        if (fault != std::errc() || end != text.data() + text.size()) {
            return NoConversion(call[0], "a whole number");
        }
        if (number > std::numeric_limits<std::make_unsigned_t<T>>::max()) {
            return TooLarge();
        }
        return Value::Integer(static_cast<std::int64_t>(static_cast<T>(number)));
    }
    if (call[0].IsText()) {
        return ParseWhole(call[0].AsText(), Least<T>(), Most<T>());
    }
    std::int64_t number = 0;
    if (!call.Integer(0, number)) {
        return call.error;
    }
    return number < Least<T>() || static_cast<double>(number) > Most<T>() ? TooLarge()
                                                                          : Value::Integer(number);
}

Value ToReal(const Call& call) {
    if (call[0].kind() == Kind::Boolean) {
        return Value::Real(call[0].AsBoolean() ? 1 : 0);
    }
    if (call[0].IsText()) {
        return ParseReal(call);
    }
    double number = 0;
    return call.Number(0, number) ? Value::Real(number) : call.error;
}

Value ToExact(const Call& call) {
    if (call[0].kind() == Kind::Boolean) {
        return Value::Decimal(Decimal::OfInteger(call[0].AsBoolean() ? 1 : 0));
    }
    if (call[0].IsText()) {
        return ParseDecimal(call);
    }
    Decimal number;
    return call.Exact(0, number) ? Value::Decimal(number) : call.error;
}

// A code gives its character; a text must be one.
Value ToChar(const Call& call) {
    if (call[0].IsNumber()) {
        return FindFunction("chrw")->function(call);
    }
    const std::string text = call.Text(0);
    return CharacterCount(text) == 1 ? Value::Text(text) : NoConversion(call[0], "a character");
}

// Convert.ToString(value [, base or culture])
Value ToStringOf(const Call& call) {
    if (call[0].kind() == Kind::List) {
        return NoConversion(call[0], "text");
    }
    std::int64_t base = 0;
    if (!call[0].IsNumber() || !call[1].IsNumber()) {
        const Culture& culture = CultureOf(call, 1);
        return MakeText(call[0].kind() == Kind::DateTime ? FormatValue(call[0], "G", culture)
                                                         : TextOf(call[0], culture));
    }
    call.Integer(1, base);
    if (base == 10) {
        return MakeText(call.Text(0));
    }
    if (base != 2 && base != 8 && base != 16) {
        return Value::Error("Numbers are written to the base 2, 8, 10 or 16");
    }
    const Value text = InBase(call, base == 2 ? 1 : base == 8 ? 3 : 4);
    return text.IsText() ? Value::Text(Lower(text.AsText())) : text;
}

// Numbers of any type as decimal ones.
template <Operator Operation>
Value Apply(const Call& call) {
    Decimal left, right;
    if (!call.Exact(0, left) || !call.Exact(1, right)) {
        return call.error;
    }
    return Operation(Value::Decimal(left), Value::Decimal(right), call.culture());
}
Value NegateNumber(const Call& call) {
    Decimal number;
    return call.Exact(0, number) ? Value::Decimal(-number) : call.error;
}

// Toward zero, unlike CInt.
template <typename T>
Value CutTo(const Call& call) {
    Decimal number;
    if (!call.Exact(0, number)) {
        return call.error;
    }
    const auto whole = number.Rounded(0, Rounding::TowardsZero).ToInteger();
    return whole && *whole >= std::numeric_limits<T>::min() && *whole <= std::numeric_limits<T>::max()
               ? Value::Integer(*whole)
               : TooLarge();
}

Value CompareNumbers(const Call& call) {
    Value less = Less(call[0], call[1], call.culture());
    const Value more = Greater(call[0], call[1], call.culture());
    if (less.IsError()) {
        return less;
    }
    return Value::Integer(less.AsBoolean() ? -1 : more.AsBoolean() ? 1 : 0);
}

Value AreEqual(const Call& call) {
    if (call[0].IsNull() != call[1].IsNull()) {
        return Value::Boolean(false);
    }
    return Equal(call[0], call[1], call.culture());
}

constexpr FunctionInfo functions[] = {
    {"integer.parse", 1, 3, Parse<std::int32_t>},
    {"int32.parse", 1, 3, Parse<std::int32_t>},
    {"long.parse", 1, 3, Parse<std::int64_t>},
    {"int64.parse", 1, 3, Parse<std::int64_t>},
    {"short.parse", 1, 3, Parse<std::int16_t>},
    {"int16.parse", 1, 3, Parse<std::int16_t>},
    {"byte.parse", 1, 3, Parse<std::uint8_t>},
    {"double.parse", 1, 3, ParseReal},
    {"single.parse", 1, 3, ParseReal},
    {"decimal.parse", 1, 3, ParseDecimal},
    {"boolean.parse", 1, 1, ParseBoolean},
    {"convert.toint16", 1, 2, ToWhole<std::int16_t>},
    {"convert.toint32", 1, 2, ToWhole<std::int32_t>},
    {"convert.toint64", 1, 2, ToWhole<std::int64_t>},
    {"convert.touint16", 1, 2, ToWhole<std::uint16_t>},
    {"convert.touint32", 1, 2, ToWhole<std::uint32_t>},
    {"convert.touint64", 1, 2, ToWhole<std::uint64_t>},
    {"convert.tobyte", 1, 2, ToWhole<std::uint8_t>},
    {"convert.tosbyte", 1, 2, ToWhole<std::int8_t>},
    {"convert.todouble", 1, 2, ToReal},
    {"convert.tosingle", 1, 2, ToReal},
    {"convert.todecimal", 1, 2, ToExact},
    {"convert.tochar", 1, 1, ToChar},
    {"convert.tostring", 1, 2, ToStringOf},
    {"decimal.add", 2, 2, Apply<Add>},
    {"decimal.subtract", 2, 2, Apply<Subtract>},
    {"decimal.multiply", 2, 2, Apply<Multiply>},
    {"decimal.divide", 2, 2, Apply<Divide>},
    {"decimal.remainder", 2, 2, Apply<Modulo>},
    {"decimal.negate", 1, 1, NegateNumber},
    {"decimal.compare", 2, 2, CompareNumbers},
    {"decimal.toint32", 1, 1, CutTo<std::int32_t>},
    {"decimal.toint64", 1, 1, CutTo<std::int64_t>},
    {"decimal.todouble", 1, 1, ToReal},
    {"new.decimal", 0, 1, ToExact},
    {"datetime.compare", 2, 2, CompareNumbers},
    {"date.compare", 2, 2, CompareNumbers},
    {"timespan.compare", 2, 2, CompareNumbers},
    {"datetime.equals", 2, 2, AreEqual},
    {"object.equals", 2, 2, AreEqual},
};
static_assert(NamesDiffer(functions));

}  // namespace

std::span<const FunctionInfo> TypeFunctions() {
    return functions;
}

}  // namespace rdl::expr
