// SPDX-License-Identifier: GPL-3.0-or-later
// Formats dates and time spans by .NET format strings, standard and custom. Ticks are 100 ns. Each function
// appends to `out`.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "rdl/format/format.h"

namespace rdl {

// Returns false if `format` is not a date format: an unknown single letter, or digit placeholders.
bool FormatDateTime(std::int64_t ticks, std::string_view format, const Culture& culture, std::string& out);
void AppendDatePattern(std::int64_t ticks, std::string_view pattern, const Culture& culture,
                       std::string& out);

// Sets `pattern` to the pattern of a standard format letter; returns false if there is none. Sets `invariant`
// if the pattern uses the invariant culture.
bool StandardDatePattern(char letter, const Culture& culture, std::string& pattern, bool& invariant);

// Returns false if `format` is not a time span format.
bool FormatTimeSpan(std::int64_t ticks, std::string_view format, const Culture& culture, std::string& out);

// Appends `value` with at least `width` digits.
void AppendPadded(std::int64_t value, int width, std::string& out);
enum class TrailingZeros { Keep, Drop };
// Appends the first `digits` of the seven digits of a second's fraction.
void AppendFraction(int fraction, int digits, TrailingZeros zeros, std::string& out);
// Appends the quoted or escaped literal at `i`. Returns its length in the pattern, 0 if there is none.
std::size_t AppendPatternLiteral(std::string_view pattern, std::size_t i, std::string& out);
// Returns how often the character at `i` repeats from there.
std::size_t RepeatCount(std::string_view pattern, std::size_t i);

}  // namespace rdl
