// SPDX-License-Identifier: GPL-3.0-or-later
// Conversions between kinds of values, and the comparison operators. A conversion that fails returns false;
// NoConversion() makes the error value for it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "rdl/format/format.h"
#include "rdl/values/value.h"

namespace rdl::expr {

inline constexpr std::int64_t MaxTicks = 3'155'378'975'999'999'999;  // last tick of the year 9999
inline constexpr std::size_t MaxText = 4u << 20;                     // limit of a computed text, in bytes

// Converts any kind to a number: Null is 0, True is -1, a text is parsed by the culture.
bool ToNumber(const Value& value, const Culture& culture, Value& number);
// A Real gives its first 15 digits. Also returns false for a number that is too large for a Decimal.
bool ToDecimal(const Value& value, const Culture& culture, Decimal& result);
// Rounds half to even.
bool ToInteger(const Value& value, const Culture& culture, std::int64_t& result);
bool ToDateTime(const Value& value, const Culture& culture, std::int64_t& ticks);
bool ToDouble(const Value& value, const Culture& culture, double& result);
bool ToBoolean(const Value& value, const Culture& culture, bool& result);
// The same by the invariant culture, as visibility needs it.
bool ToBoolean(const Value& value, bool& result);
// The text of concatenation and CStr: a date at midnight without its time, a date of year 1 as a time only.
std::string TextOf(const Value& value, const Culture& culture);
// Returns false if the rounded number does not fit into 64 bits.
bool RoundToInteger(double number, std::int64_t& result);
double RoundHalfEven(double number);

Value NoConversion(const Value& value, std::string_view toWhat);
// Returns the text, or an error value if it exceeds MaxText.
Value MakeText(std::string_view text);

enum class Comparison : std::uint8_t { Equal, NotEqual, Less, LessEqual, Greater, GreaterEqual };
// The comparison operators: a Decimal beside a Real compares as a double, texts compare by character and
// case, Nothing equals 0 and "", operands of different kinds are converted.
Value CompareAs(Comparison comparison, const Value& left, const Value& right, const Culture& culture);

}  // namespace rdl::expr
