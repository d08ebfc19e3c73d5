// SPDX-License-Identifier: GPL-3.0-or-later
// Helpers for texts whose syntax is ASCII. Bytes of other characters belong to no class and never change. The
// report engine is a library of its own and has its own helpers in rdl/values/ascii.h.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

constexpr bool IsControl(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

inline bool HasControls(std::string_view text) {
    return std::any_of(text.begin(), text.end(), IsControl);
}

constexpr bool IsAsciiDigit(char c) {
    return c >= '0' && c <= '9';
}

constexpr bool IsAsciiLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

constexpr bool IsAsciiLetterOrDigit(char c) {
    return IsAsciiLetter(c) || IsAsciiDigit(c);
}

inline constexpr std::string_view HexDigits = "0123456789ABCDEF", SmallHexDigits = "0123456789abcdef";

// Appends the two hexadecimal digits of a byte.
inline void AppendHexByte(unsigned char byte, std::string& text, std::string_view digits = HexDigits) {
    text += digits[byte >> 4U];
    text += digits[byte & 15U];
}

// Returns true for a character of atext (RFC 5322, section 3.2.3), which names and addresses may hold
// unquoted.
constexpr bool IsAtomCharacter(char c) {
    constexpr std::string_view Marks = "!#$%&'*+-/=?^_`{|}~";
    return IsAsciiLetterOrDigit(c) || Marks.find(c) != std::string_view::npos;
}

// Changes only A to Z.
constexpr char ToLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
inline std::string ToLower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        c = ToLower(c);
    }
    return lower;
}

// Changes only a to z.
inline std::string ToUpper(std::string_view text) {
    std::string upper(text);
    for (char& c : upper) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return upper;
}

// Returns true if the texts are equal without regard to the case of A to Z.
constexpr bool SameAscii(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char one, char other) { return ToLower(one) == ToLower(other); });
}

// Removes these characters at both ends; by default blanks, tabs and line ends. rdl::Trimmed also removes
// vertical tabs and form feeds.
constexpr std::string_view Trim(std::string_view text, std::string_view blanks = " \t\r\n") {
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// Replaces control characters with blanks, so that a text stays on one line.
inline std::string WithoutControls(std::string_view text) {
    std::string clean(text);
    std::replace_if(clean.begin(), clean.end(), IsControl, ' ');
    return clean;
}
