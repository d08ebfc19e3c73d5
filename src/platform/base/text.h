// SPDX-License-Identifier: GPL-3.0-or-later
// UTF-8 text: upper case, comparison and patterns without regard to case, independent of the locale of the
// process.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// One character of a text and the number of its bytes. A byte that is not valid UTF-8 is a character of its
// own with the code NoCharacter plus the byte, which no character has, so that AppendCharacter restores every
// text byte for byte. A report only shows its texts: rdl/values/utf8.h reads such a byte as U+FFFD.
struct Character {
    char32_t code;
    std::size_t length;
};
inline constexpr char32_t NoCharacter = 0x110000;
// Stands for what cannot be read, where only whole characters are allowed.
inline constexpr char32_t ReplacementCharacter = 0xFFFD;

// Returns the character at the byte offset `at`, which must be less than the size of the text.
Character CharacterAt(std::string_view text, std::size_t at);
// Returns the number of characters.
std::size_t CountCharacters(std::string_view text);
// Returns the first `count` characters, or the whole text if it has fewer.
std::string_view FirstCharacters(std::string_view text, std::size_t count);
// Returns as many whole characters as fit into this number of bytes.
std::string_view CutText(std::string_view text, std::size_t bytes);
// The reverse of CharacterAt, byte for byte.
void AppendCharacter(std::string& text, char32_t code);

bool IsUtf8(std::string_view text);
// Returns the text with U+FFFD in place of every byte that is not UTF-8.
std::string ValidUtf8(std::string_view text);

// Returns the text in upper case. A character whose upper case is more than one character, and a byte that is
// not UTF-8, stays unchanged.
std::string UpperText(std::string_view text);

// Returns a number below, at or above zero as `left` sorts before, with or after `right`, without regard to
// case.
int CompareText(std::string_view left, std::string_view right);

// Returns true if the text has the piece anywhere, byte by byte.
inline bool Contains(std::string_view text, std::string_view piece) {
    return text.find(piece) != std::string_view::npos;
}

inline bool SameText(std::string_view left, std::string_view right) {
    return CompareText(left, right) == 0;
}

// Returns true if the text matches the pattern, without regard to case: % stands for any number of
// characters, _ for one. After the character `escape` a wildcard stands for itself; NoCharacter means no
// escape character.
bool LikeText(std::string_view text, std::string_view pattern, char32_t escape = NoCharacter);
