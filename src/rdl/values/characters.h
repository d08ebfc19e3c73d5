// SPDX-License-Identifier: GPL-3.0-or-later
// Case and kinds of Unicode characters, as expressions, filters and formulas have them. Nothing depends on
// the process locale. ascii.h is for keywords and names, utf8.h for bytes and characters.
#pragma once

#include <string>
#include <string_view>

namespace rdl {

char32_t Upper(char32_t character);
char32_t Lower(char32_t character);
bool IsSpace(char32_t character);
bool IsLetter(char32_t character);
// By character: the result has as many characters as the text. A malformed byte becomes U+FFFD.
std::string Upper(std::string_view text);
std::string Lower(std::string_view text);
std::u32string Lower(std::u32string text);

// Compares by character, without regard to case. Returns a number less than, equal to or greater than 0.
int CompareNoCase(std::string_view left, std::string_view right);

}  // namespace rdl
