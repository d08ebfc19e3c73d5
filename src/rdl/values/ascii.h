// SPDX-License-Identifier: GPL-3.0-or-later
// ASCII-only case and classification for keywords, names and file formats. The C library's functions depend
// on the process locale: in a Turkish one the lower case of I is not i.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace rdl {

inline char AsciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

inline bool IsAsciiUpper(char c) {
    return c >= 'A' && c <= 'Z';
}

inline bool IsAsciiLetter(char c) {
    return IsAsciiUpper(c) || (c >= 'a' && c <= 'z');
}

inline bool IsAsciiDigit(char c) {
    return c >= '0' && c <= '9';
}

inline bool IsAsciiLetterOrDigit(char c) {
    return IsAsciiLetter(c) || IsAsciiDigit(c);
}

// Whether the byte may be part of a name in reports and databases. Every byte of a non-ASCII character counts
// as a letter.
inline bool IsNameByte(char c) {
    return IsAsciiLetterOrDigit(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

inline std::string LowerAscii(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), AsciiLower);
    return lower;
}

inline bool EqualNoCase(std::string_view left, std::string_view right) {  // folds ASCII only
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return AsciiLower(a) == AsciiLower(b); });
}

}  // namespace rdl
