// The language's conversions between kinds of value, and its comparison. A conversion that is not possible
// says false; NoConversion() makes the error that is shown for it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "rdl/format/format.h"
#include "rdl/values/value.h"

namespace rdl::expr {

inline constexpr std::int64_t MaxTicks = 3'155'378'975'999'999'999;  // the last moment of the year 9999
inline constexpr std::size_t MaxText = 4u << 20;                     // bytes of any text that is computed

// Integer or Real out of any kind: nothing is 0, True is -1, a text is read by the culture.
bool ToNumber(const Value& value, const Culture& culture, Value& number);
// Rounds halves to the even neighbour.
bool ToInteger(const Value& value, const Culture& culture, std::int64_t& result);
bool ToDateTime(const Value& value, const Culture& culture, std::int64_t& ticks);
bool ToDouble(const Value& value, const Culture& culture, double& result);
bool ToBoolean(const Value& value, const Culture& culture, bool& result);
// By the rules of the invariant culture: truth for visibility.
bool ToBoolean(const Value& value, bool& result);
// As concatenation and CStr write: a date at midnight without its time, a date of year 1 as time only.
std::string TextOf(const Value& value, const Culture& culture);
// A number that is a whole one and fits becomes that.
bool RoundToInteger(double number, std::int64_t& result);
double RoundHalfEven(double number);

Value NoConversion(const Value& value, std::string_view toWhat);
// The text, or an error when it is longer than any text may be.
Value MakeText(std::string_view text);

enum class Comparison : std::uint8_t { Equal, NotEqual, Less, LessEqual, Greater, GreaterEqual };
// The comparison operators: texts by character and case, nothing equals 0 and "", kinds are converted.
Value CompareAs(Comparison comparison, const Value& left, const Value& right, const Culture& culture);

}  // namespace rdl::expr
