// Keywords, names and file formats are compared and cut by these: the C library's functions ask the region
// that the process runs in, and in the Turkish one I is no i.
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

// Of a name as reports and databases write it: every character that is not ASCII counts as a letter.
inline bool IsNameByte(char c) {
    return IsAsciiLetterOrDigit(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

inline std::string LowerAscii(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), AsciiLower);
    return lower;
}

inline bool EqualNoCase(std::string_view left, std::string_view right) {  // ASCII letters only
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return AsciiLower(a) == AsciiLower(b); });
}

}  // namespace rdl
