// SPDX-License-Identifier: GPL-3.0-or-later
// Decodes texts that may be invalid UTF-8.
#pragma once

#include <cstddef>
#include <string_view>

namespace rdl::writers {

inline constexpr char32_t Replacement = 0xFFFD;

// Returns the code point at `i` and moves `i` after it. The first byte of a malformed sequence gives U+FFFD.
inline char32_t NextCodePoint(std::string_view text, std::size_t& i) {
    const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(text[k]); };
    const unsigned char first = byte(i++);
    if (first < 0x80) {
        return first;
    }
    const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
    if (first < 0xC2 || first > 0xF4 || i + static_cast<std::size_t>(more) > text.size()) {
        return Replacement;
    }
    char32_t code = first & (0x3Fu >> more);
    for (int k = 0; k < more; ++k) {
        const unsigned char next = byte(i + static_cast<std::size_t>(k));
        if ((next & 0xC0) != 0x80) {
            return Replacement;
        }
        code = code << 6 | (next & 0x3Fu);
    }
    const char32_t smallest = more == 3 ? 0x10000 : more == 2 ? 0x800 : 0x80;
    if (code < smallest || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) {
        return Replacement;
    }
    i += static_cast<std::size_t>(more);
    return code;
}

}  // namespace rdl::writers
