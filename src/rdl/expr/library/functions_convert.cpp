// SPDX-License-Identifier: GPL-3.0-or-later
// Conversion and inspection: CInt, CStr, Hex, IsNothing, Convert.ToInt32 ...
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

#include "rdl/expr/library/functions.h"
#include "rdl/expr/operations/convert.h"
#include "rdl/values/ascii.h"
#include "rdl/values/utf8.h"

namespace rdl::expr {
namespace {

Value Whole(const Call& call, double least, double most) {
    double number = 0;
    if (!call.Number(0, number)) {
        return call.error;
    }
    std::int64_t whole = 0;
    if (!ToInteger(call[0], call.culture(), whole) || static_cast<double>(whole) < least ||
        static_cast<double>(whole) > most) {
        return Value::Error("A number is too large for its type");
    }
    return Value::Integer(whole);
}

template <typename T>
Value To(const Call& call) {
    return Whole(call, static_cast<double>(std::numeric_limits<T>::min()),
                 static_cast<double>(std::numeric_limits<T>::max()));
}

Value CDbl(const Call& call) {
    double number = 0;
    return call.Number(0, number) ? Value::Real(number) : call.error;
}

Value CDec(const Call& call) {
    Decimal number;
    return call.Exact(0, number) ? Value::Decimal(number) : call.error;
}

Value CSng(const Call& call) {
    double number = 0;
    if (!call.Number(0, number)) {
        return call.error;
    }
    // Converts by way of the text, so that 0.1 is shown as 0.1.
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, static_cast<float>(number)).ptr;
    double result = 0;
    return std::from_chars(text, end, result).ec == std::errc() ? Value::Real(result)
                                                                : Value::Real(static_cast<float>(number));
}

Value CStr(const Call& call) {
    if (call[0].kind() == Kind::List) {
        return NoConversion(call[0], "text");
    }
    return MakeText(call.Text(0));
}

Value CChar(const Call& call) {
    return Value::Text(Slice(call.Text(0), 0, 1));
}

Value CBool(const Call& call) {
    bool truth = false;
    return call.Truth(0, truth) ? Value::Boolean(truth) : call.error;
}

Value CDate(const Call& call) {
    std::int64_t ticks = 0;
    return call.Date(0, ticks) ? Value::DateTime(ticks) : call.error;
}

Value CObj(const Call& call) {
    return call[0];
}

Value Hex(const Call& call) {
    return InBase(call, 4);
}
Value Oct(const Call& call) {
    return InBase(call, 3);
}

// Always with a point, and with a blank where a minus would stand.
Value Str(const Call& call) {
    Value number;
    if (!ToNumber(call[0], call.culture(), number)) {
        return NoConversion(call[0], "a number");
    }
    const std::string text = ToText(number, FindCulture(""));
    return Value::Text(text.empty() || text[0] != '-' ? " " + text : text);
}

// The number that a text begins with, blanks skipped; &H and &O numbers too. Never an error.
Value Val(const Call& call) {
    std::string text;
    for (const char c : call.Text(0)) {
        if (!IsAsciiSpace(c)) {
            text += c;
        }
    }
    if (text.size() > 2 && text[0] == '&' && (AsciiLower(text[1]) == 'h' || AsciiLower(text[1]) == 'o')) {
        std::int64_t number = 0;
        std::from_chars(text.data() + 2, text.data() + text.size(), number,
                        AsciiLower(text[1]) == 'h' ? 16 : 8);
        return Value::Real(static_cast<double>(number));
    }
    const std::size_t start = !text.empty() && text[0] == '+' ? 1 : 0;
    if (text.size() > start && AsciiLower(text[start]) != 'i' && AsciiLower(text[start]) != 'n') {
        const std::size_t sign = text[start] == '-' ? start + 1 : start;
        double number = 0;
        if (sign < text.size() && (text[sign] == '.' || IsAsciiDigit(text[sign]))) {
            std::from_chars(text.data() + start, text.data() + text.size(), number);
        }
        return Value::Real(number);
    }
    return Value::Real(0);
}

Value IsNothing(const Call& call) {
    return Value::Boolean(call[0].IsNull());
}
Value IsError(const Call& call) {
    return Value::Boolean(call[0].IsError());
}
Value IsArray(const Call& call) {
    return Value::Boolean(call[0].kind() == Kind::List);
}

Value IsNumeric(const Call& call) {
    const Value& value = call[0];
    Value number;
    return Value::Boolean(value.IsNumber() || value.kind() == Kind::Boolean ||
                          (value.IsText() && ToNumber(value, call.culture(), number)));
}

Value IsDate(const Call& call) {
    std::int64_t ticks = 0;
    const bool text = call[0].IsText() && ToDateTime(call[0], call.culture(), ticks);
    return Value::Boolean(text || call[0].kind() == Kind::DateTime);
}

Value TypeName(const Call& call) {
    switch (call[0].kind()) {
        case Kind::Null:
            return Value::Text("Nothing");
        case Kind::Boolean:
            return Value::Text("Boolean");
        case Kind::Integer: {
            const std::int64_t n = call[0].AsInteger();
            const bool narrow = n >= std::numeric_limits<std::int32_t>::min() &&
                                n <= std::numeric_limits<std::int32_t>::max();
            return Value::Text(narrow ? "Integer" : "Long");
        }
        case Kind::Real:
            return Value::Text("Double");
        case Kind::Decimal:
            return Value::Text("Decimal");
        case Kind::DateTime:
            return Value::Text("Date");
        case Kind::TimeSpan:
            return Value::Text("TimeSpan");
        case Kind::Text:
            return Value::Text("String");
        case Kind::Bytes:
            return Value::Text("Byte()");
        case Kind::Object: {
            const std::string_view full = call[0].AsObject().TypeName();
            return Value::Text(full.substr(full.rfind('.') + 1));
        }
        default:
            return Value::Text("Object()");
    }
}

constexpr FunctionInfo functions[] = {
    {"cint", 1, 1, To<std::int32_t>},
    {"clng", 1, 1, To<std::int64_t>},
    {"cshort", 1, 1, To<std::int16_t>},
    {"cbyte", 1, 1, To<std::uint8_t>},
    {"csbyte", 1, 1, To<std::int8_t>},
    {"cushort", 1, 1, To<std::uint16_t>},
    {"cuint", 1, 1, To<std::uint32_t>},
    {"culng", 1, 1, To<std::uint64_t>},
    {"cdbl", 1, 1, CDbl},
    {"csng", 1, 1, CSng},
    {"cdec", 1, 1, CDec},
    {"cstr", 1, 1, CStr},
    {"cchar", 1, 1, CChar},
    {"cbool", 1, 1, CBool},
    {"cdate", 1, 1, CDate},
    {"cobj", 1, 1, CObj},
    {"cvar", 1, 1, CObj},
    {"hex", 1, 1, Hex},
    {"oct", 1, 1, Oct},
    {"str", 1, 1, Str},
    {"val", 1, 1, Val},
    {"isnothing", 1, 1, IsNothing},
    {"isdbnull", 1, 1, IsNothing},
    {"isnull", 1, 1, IsNothing},
    {"iserror", 1, 1, IsError, true},
    {"isarray", 1, 1, IsArray},
    {"isnumeric", 1, 1, IsNumeric},
    {"isdate", 1, 1, IsDate},
    {"typename", 1, 1, TypeName},
    {"convert.toboolean", 1, 1, CBool},
    {"convert.isdbnull", 1, 1, IsNothing},
};
static_assert(NamesDiffer(functions));

}  // namespace

Value InBase(const Call& call, unsigned bits) {
    std::int64_t number = 0;
    if (!call.Integer(0, number)) {
        return call.error;
    }
    // A negative Integer shows its 32 bits, a negative Long its 64.
    const bool narrow = number < 0 && number >= std::numeric_limits<std::int32_t>::min();
    auto rest = narrow ? static_cast<std::uint64_t>(static_cast<std::uint32_t>(number))
                       : static_cast<std::uint64_t>(number);
    std::string text;
    do {
        text.insert(text.begin(), HexDigits[rest & ((1u << bits) - 1)]);
        rest >>= bits;
    } while (rest != 0);
    return Value::Text(text);
}

std::span<const FunctionInfo> ConvertFunctions() {
    return functions;
}

}  // namespace rdl::expr
