// Dates and time spans by format strings, standard and custom. Each appends to `out`.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "rdl/format/format.h"

namespace rdl {

// False when the format is none that a date has: a single letter that is not a standard one, or digit places.
bool FormatDateTime(std::int64_t ticks, std::string_view format, const Culture& culture, std::string& out);
void AppendDatePattern(std::int64_t ticks, std::string_view pattern, const Culture& culture,
                       std::string& out);

// The pattern that a standard letter stands for; false: none. `invariant` patterns take no culture.
bool StandardDatePattern(char letter, const Culture& culture, std::string& pattern, bool& invariant);

// False likewise.
bool FormatTimeSpan(std::int64_t ticks, std::string_view format, const Culture& culture, std::string& out);

// For both: `value` with at least `width` digits.
void AppendPadded(std::int64_t value, int width, std::string& out);
// The first `digits` of the seven digits of a fraction of a second; `trim` leaves out trailing zeros.
void AppendFraction(int fraction, int digits, bool trim, std::string& out);
// The literal at `i` (quoted, escaped) appended; its length, 0 when there is none.
std::size_t AppendPatternLiteral(std::string_view pattern, std::size_t i, std::string& out);
// How often the character at `i` stands there in a row.
std::size_t RepeatCount(std::string_view pattern, std::size_t i);

}  // namespace rdl
