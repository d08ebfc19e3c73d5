// SPDX-License-Identifier: GPL-3.0-or-later
// Characters and encodings of XML files (XML 1.0, sections 2.2 and 4.3.3).
#pragma once

#include <string>
#include <string_view>

namespace rdl::xml {

// Whether XML 1.0 allows the character (production Char).
constexpr bool IsXmlCharacter(char32_t character) {
    return character >= 0x20 ? character < 0xD800 || (character >= 0xE000 && character < 0xFFFE) ||
                                   (character >= 0x10000 && character <= 0x10FFFF)
                             : character == '\t' || character == '\n' || character == '\r';
}

// Returns the encoding that the declaration at the beginning of a file names. Empty if there is no
// declaration, if it names none, or if it names one of wider units than a byte: it was readable as bytes, so
// such a name is wrong.
std::string DeclaredEncoding(std::string_view bytes);

// Returns the name of an encoding for an error text: cut, in quotes, and with ? for what such names do not
// have.
std::string QuotedEncoding(std::string_view name);

}  // namespace rdl::xml
