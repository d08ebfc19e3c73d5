// Upper case for any letter of UTF-8 text, whatever locale the process runs under.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// A letter of a text and the number of its bytes. A byte that is no UTF-8 is a letter by itself, with the
// code NoLetter plus the byte, which no letter has.
struct Letter {
    char32_t code;
    std::size_t length;
};
inline constexpr char32_t NoLetter = 0x110000;

Letter LetterAt(std::string_view text, std::size_t at);
// Undoes LetterAt, byte for byte.
void AppendLetter(std::string& text, char32_t code);

// The one-letter upper case; a letter without one (and a byte that is no UTF-8) stays as it is.
std::string UpperLetters(std::string_view text);

// Below, at or above zero as `left` sorts before, with or behind `right`, without regard to case.
int CompareLetters(std::string_view left, std::string_view right);

inline bool SameLetters(std::string_view left, std::string_view right) {
    return CompareLetters(left, right) == 0;
}

// Whether the text is like the pattern, without regard to case: % stands for any letters, _ for one. A
// wildcard behind the letter `escape` stands for itself; NoLetter for none.
bool LikeLetters(std::string_view text, std::string_view pattern, char32_t escape = NoLetter);
