// SPDX-License-Identifier: GPL-3.0-or-later
// ASCII case and classes for keywords, names and file formats, whatever the process locale: in a Turkish one
// the lower case of I is not i. The programs around the engine have their own in platform/base/ascii.h.
#pragma once

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>

namespace rdl {

inline char AsciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

inline char AsciiUpper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
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

// Space, tab, line feed, vertical tab, form feed and carriage return.
inline bool IsAsciiSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// Returns the value of a hexadecimal digit of either case; -1 for any other byte.
inline int HexDigitValue(char c) {
    const char lower = AsciiLower(c);
    return IsAsciiDigit(c) ? c - '0' : lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// The hexadecimal digits.
inline constexpr std::string_view HexDigits = "0123456789ABCDEF", SmallHexDigits = "0123456789abcdef";

// Appends the two hexadecimal digits of a byte.
inline void AppendHexByte(char byte, std::string& out, std::string_view digits = HexDigits) {
    const auto code = static_cast<unsigned char>(byte);
    out += digits[code >> 4];
    out += digits[code & 15];
}

// Returns the text with %XX in place of every byte that `isPlain` rejects.
template <typename IsPlain>
std::string PercentEncoded(std::string_view text, IsPlain isPlain, std::string_view digits = HexDigits) {
    std::string encoded;
    for (const char c : text) {
        if (isPlain(c)) {
            encoded += c;
        } else {
            encoded += '%';
            AppendHexByte(c, encoded, digits);
        }
    }
    return encoded;
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

inline std::string UpperAscii(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), AsciiUpper);
    return upper;
}

inline bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// Returns the text without ASCII white space at both ends, as a view into it.
inline std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsAsciiSpace(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsAsciiSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

// Whether the text is one of `texts`, byte for byte.
inline bool IsOneOf(std::string_view text, std::initializer_list<std::string_view> texts) {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

inline bool EqualNoCase(std::string_view left, std::string_view right) {  // folds ASCII only
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return AsciiLower(a) == AsciiLower(b); });
}

}  // namespace rdl
