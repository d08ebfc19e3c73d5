// SPDX-License-Identifier: GPL-3.0-or-later
// Texts of anybody in a line of a log or on a terminal.
#pragma once

#include <string>
#include <string_view>

// Returns the text as one line that a terminal only shows. The control characters of ISO/IEC 6429, the second
// set (U+0080 to U+009F) too, the separators of lines and paragraphs (U+2028, U+2029) and the characters that
// turn the direction of what follows (U+202A to U+202E, U+2066 to U+2069) become blanks: with those a title
// could show another one's words. A byte that is not UTF-8 becomes U+FFFD: a terminal could take it for a
// control character.
std::string OnOneLine(std::string_view text);

// Returns true for a character that OnOneLine replaces with a blank.
constexpr bool BreaksLine(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || (code >= 0x2028 && code <= 0x202E) ||
           (code >= 0x2066 && code <= 0x2069);
}
