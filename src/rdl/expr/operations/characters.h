// SPDX-License-Identifier: GPL-3.0-or-later
// Character-based operations on UTF-8 for the text functions. A malformed byte counts as U+FFFD.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "rdl/values/ascii.h"

namespace rdl::expr {

bool IsAscii(std::string_view text);
std::u32string Decode(std::string_view text);
void Append(std::string& text, char32_t character);
std::string Encode(std::u32string_view characters);

std::size_t CharacterCount(std::string_view text);
// Returns `count` characters from index `start`; the end of the text limits both.
std::string_view Slice(std::string_view text, std::size_t start, std::size_t count);
// Returns the number of characters before a byte offset.
std::size_t CharacterIndex(std::string_view text, std::size_t byte);
// Returns the byte offset of a character; the text's size if the index is after the end.
std::size_t ByteIndex(std::string_view text, std::size_t character);

char32_t Upper(char32_t character);
char32_t Lower(char32_t character);
bool IsSpace(char32_t character);
bool IsLetter(char32_t character);
std::string Upper(std::string_view text);
std::string Lower(std::string_view text);

// Compares by character, without regard to case. Returns a number less than, equal to or greater than 0.
int CompareNoCase(std::string_view left, std::string_view right);

}  // namespace rdl::expr
