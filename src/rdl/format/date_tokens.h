// SPDX-License-Identifier: GPL-3.0-or-later
// Splits date and time patterns into tokens and writes them in .NET's syntax.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace rdl {

// A run of one pattern letter ("dd"), or literal text without its quotation marks.
struct DateToken {
    char letter = 0;  // 0: literal text
    std::string text;
};
using DateTokens = std::vector<DateToken>;

// Reads a pattern in Qt's syntax and returns tokens with .NET's specifiers: t is AM/PM, H an hour of 24.
// Years get four digits; time zones are dropped.
DateTokens ReadDateTokens(std::string_view pattern);
// Returns the pattern of the tokens. Literal text is quoted if it contains format specifiers.
std::string PatternOf(const DateTokens& tokens);

// Returns only the tokens whose specifiers are in `kept` (names of weekdays do not count as days). Literal
// text next to a dropped token is dropped with it.
DateTokens OnlyLetters(const DateTokens& tokens, std::string_view kept);

}  // namespace rdl
