// SPDX-License-Identifier: GPL-3.0-or-later
// Helpers for texts whose syntax is ASCII.
#pragma once

#include <string>
#include <string_view>

inline bool IsControl(char letter) {
    return static_cast<unsigned char>(letter) < 0x20 || letter == 0x7F;
}

inline bool HasControls(std::string_view text) {
    for (const char letter : text) {
        if (IsControl(letter)) {
            return true;
        }
    }
    return false;
}

inline bool IsAsciiLetterOrDigit(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
           (letter >= '0' && letter <= '9');
}

// Returns true for a character of atext (RFC 5322, section 3.2.3), which names and addresses may hold
// unquoted.
inline bool IsAtomCharacter(char letter) {
    constexpr std::string_view Marks = "!#$%&'*+-/=?^_`{|}~";
    return IsAsciiLetterOrDigit(letter) || Marks.find(letter) != std::string_view::npos;
}

// Changes only A to Z.
inline std::string ToLower(std::string_view text) {
    std::string lower(text);
    for (char& letter : lower) {
        if (letter >= 'A' && letter <= 'Z') {
            letter = static_cast<char>(letter - 'A' + 'a');
        }
    }
    return lower;
}

// Removes blanks, tabs and line ends at both ends.
inline std::string_view Trim(std::string_view text) {
    constexpr std::string_view Blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(Blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

// Replaces control characters with blanks, so that a text stays on one line.
inline std::string WithoutControls(std::string_view text) {
    std::string clean(text);
    for (char& letter : clean) {
        if (IsControl(letter)) {
            letter = ' ';
        }
    }
    return clean;
}
