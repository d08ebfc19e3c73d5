// Text by characters: what the language's text functions count, cut and change the case of.
// Everything takes UTF-8; a byte that is none stands for U+FFFD.
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
// `count` characters from `start` (from 0); what lies behind the end is left out.
std::string_view Slice(std::string_view text, std::size_t start, std::size_t count);
// The number of characters in front of a byte.
std::size_t CharacterIndex(std::string_view text, std::size_t byte);
// The byte that a character begins at; the text's size behind its end.
std::size_t ByteIndex(std::string_view text, std::size_t character);

char32_t Upper(char32_t character);
char32_t Lower(char32_t character);
bool IsSpace(char32_t character);
bool IsLetter(char32_t character);
std::string Upper(std::string_view text);
std::string Lower(std::string_view text);

// Less than, equal to or greater than 0: by character, without regard to case.
int CompareNoCase(std::string_view left, std::string_view right);

}  // namespace rdl::expr
