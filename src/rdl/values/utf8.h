// SPDX-License-Identifier: GPL-3.0-or-later
// UTF-8 that may be malformed: data sources and report files give any bytes. Each byte that is not part of a
// well-formed character counts as one character, U+FFFD; surrogates and overlong forms are malformed.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace rdl {

inline constexpr char32_t ReplacementCharacter = 0xFFFD;

// NextCharacter for a character that is not ASCII.
char32_t NextLongCharacter(std::string_view text, std::size_t& at);

// Returns the character at `at`, which must lie within the text, and moves `at` after it. A malformed byte
// moves it by one; U+FFFD itself has three bytes.
inline char32_t NextCharacter(std::string_view text, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    if (lead < 0x80) {
        ++at;
        return lead;
    }
    return NextLongCharacter(text, at);
}

// Whether the byte continues a character, so that a text must not be cut before it.
inline bool IsContinuationByte(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

inline constexpr std::size_t LongestUtf8 = 4;

// Writes the character, at most LongestUtf8 bytes, and returns the end.
char* PutUtf8(char32_t character, char* to);

inline void AppendUtf8(char32_t character, std::string& text) {
    if (character < 0x80) {
        text += static_cast<char>(character);
        return;
    }
    char bytes[LongestUtf8];
    text.append(bytes, PutUtf8(character, bytes));
}

std::u32string ToUtf32(std::string_view text);
std::string ToUtf8(std::u32string_view characters);

std::size_t CharacterCount(std::string_view text);
// Returns the number of characters before a byte offset.
std::size_t CharacterIndex(std::string_view text, std::size_t byte);
// Returns the byte offset of a character; the text's size if the index is after the end.
std::size_t ByteIndex(std::string_view text, std::size_t character);
// Returns `count` characters from index `start`; the end of the text limits both.
std::string_view Slice(std::string_view text, std::size_t start, std::size_t count);
// Returns at most `bytes` bytes from the beginning, cut between two characters.
std::string_view WholeCharacters(std::string_view text, std::size_t bytes);

}  // namespace rdl
