// Patterns of dates and times taken apart, and put together as .NET writes them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace rdl {

// A run of one pattern letter ("dd"), or the text between two of them without its quotation marks.
struct DateToken {
    char letter = 0;  // 0: a text
    std::string text;
};
using DateTokens = std::vector<DateToken>;

// Of a pattern as Qt writes it, with letters of .NET: t is the half of the day, H an hour without one. Years
// have four digits; zones are left out.
DateTokens ReadDateTokens(std::string_view pattern);
// Texts are quoted where a pattern's letters stand in them.
std::string PatternOf(const DateTokens& tokens);

// A date with the letters of `kept` only; days of the week are no day. The texts that stood beside a letter
// go with it.
DateTokens OnlyLetters(const DateTokens& tokens, std::string_view kept);

}  // namespace rdl
