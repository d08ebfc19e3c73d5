// Upper case for any letter of UTF-8 text, whatever locale the process runs under.
#pragma once

#include <string>
#include <string_view>

// The one-letter upper case; a letter without one (and a byte that is no UTF-8) stays as it is.
std::string UpperLetters(std::string_view text);

// Below, at or above zero as `left` sorts before, with or behind `right`, without regard to case.
int CompareLetters(std::string_view left, std::string_view right);

inline bool SameLetters(std::string_view left, std::string_view right) {
    return CompareLetters(left, right) == 0;
}
