// SPDX-License-Identifier: GPL-3.0-or-later
// Characters, references to them and encodings of XML files (XML 1.0, sections 2.2, 4.1, 4.3.3 and 4.6).
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace rdl::xml {

// Whether XML 1.0 allows the character (production Char).
constexpr bool IsXmlCharacter(char32_t character) {
    return character >= 0x20 ? character < 0xD800 || (character >= 0xE000 && character < 0xFFFE) ||
                                   (character >= 0x10000 && character <= 0x10FFFF)
                             : character == '\t' || character == '\n' || character == '\r';
}

// Bytes, with & and ;: of a reference to a character or to an entity that XML has itself.
inline constexpr std::size_t LongestReference = 16;

// Returns the character that a reference stands for, without its & and ;. nullopt if it names an entity that
// is not predefined, or a character that XML does not have.
std::optional<char32_t> ReferredCharacter(std::string_view reference);

// Returns the encoding that the declaration at the beginning of a file names. Empty if there is no
// declaration, if it names none, or if it names one of wider units than a byte: it was readable as bytes, so
// such a name is wrong.
std::string DeclaredEncoding(std::string_view bytes);

// Returns the name of an encoding for an error text: cut, in quotes, and with ? for what such names do not
// have.
std::string QuotedEncoding(std::string_view name);

}  // namespace rdl::xml
