// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/operations/characters.h"

#include <algorithm>
#include <clocale>
#include <cwctype>

namespace rdl::expr {
namespace {

// Case must not depend on the locale that the process happens to run in.
locale_t UnicodeLocale() {
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
}

// Returns the character at `at` and moves `at` after it.
char32_t Next(std::string_view text, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(text[at++]);
    if (lead < 0x80) {
        return lead;
    }
    const int more = lead >= 0xF0 && lead < 0xF8   ? 3
                     : lead >= 0xE0 && lead < 0xF0 ? 2
                     : lead >= 0xC2 && lead < 0xE0 ? 1
                                                   : 0;
    if (more == 0) {
        return 0xFFFD;
    }
    char32_t character = lead & (0x3F >> more);
    for (int i = 0; i < more; ++i) {
        if (at >= text.size() || (static_cast<unsigned char>(text[at]) & 0xC0) != 0x80) {
            return 0xFFFD;
        }
        character = (character << 6) | (static_cast<unsigned char>(text[at++]) & 0x3F);
    }
    return character > 0x10FFFF ? 0xFFFD : character;
}

template <typename Change>
std::string Changed(std::string_view text, Change change) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        Append(result, change(Next(text, at)));
    }
    return result;
}

}  // namespace

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::u32string Decode(std::string_view text) {
    std::u32string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        result.push_back(Next(text, at));
    }
    return result;
}

void Append(std::string& text, char32_t c) {
    if (c < 0x80) {
        text += static_cast<char>(c);
    } else if (c < 0x800) {
        text += static_cast<char>(0xC0 | (c >> 6));
        text += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        text += static_cast<char>(0xE0 | (c >> 12));
        text += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        text += static_cast<char>(0xF0 | (c >> 18));
        text += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        text += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (c & 0x3F));
    }
}

std::string Encode(std::u32string_view characters) {
    std::string result;
    result.reserve(characters.size());
    for (const char32_t c : characters) {
        Append(result, c);
    }
    return result;
}

std::size_t CharacterCount(std::string_view text) {
    return CharacterIndex(text, text.size());
}

std::size_t CharacterIndex(std::string_view text, std::size_t byte) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < byte && at < text.size(); ++count) {
        Next(text, at);
    }
    return count;
}

std::size_t ByteIndex(std::string_view text, std::size_t character) {
    std::size_t at = 0;
    while (character > 0 && at < text.size()) {
        Next(text, at);
        --character;
    }
    return at;
}

std::string_view Slice(std::string_view text, std::size_t start, std::size_t count) {
    text.remove_prefix(ByteIndex(text, start));
    return text.substr(0, ByteIndex(text, count));
}

char32_t Upper(char32_t c) {
    if (c < 0x80) {
        return c >= 'a' && c <= 'z' ? c - 32 : c;
    }
    const locale_t locale = UnicodeLocale();
    return locale ? static_cast<char32_t>(towupper_l(static_cast<wint_t>(c), locale)) : c;
}

char32_t Lower(char32_t c) {
    if (c < 0x80) {
        return c >= 'A' && c <= 'Z' ? c + 32 : c;
    }
    const locale_t locale = UnicodeLocale();
    return locale ? static_cast<char32_t>(towlower_l(static_cast<wint_t>(c), locale)) : c;
}

bool IsSpace(char32_t c) {
    return c == ' ' || (c >= 0x09 && c <= 0x0D) || c == 0x85 || c == 0xA0 || c == 0x1680 ||
           (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 || c == 0x202F || c == 0x205F ||
           c == 0x3000;
}

bool IsLetter(char32_t c) {
    const locale_t locale = UnicodeLocale();
    return c < 0x80 || !locale ? (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')
                               : iswalpha_l(static_cast<wint_t>(c), locale) != 0;
}

std::string Upper(std::string_view text) {
    return Changed(text, [](char32_t c) { return Upper(c); });
}

std::string Lower(std::string_view text) {
    return Changed(text, [](char32_t c) { return Lower(c); });
}

int CompareNoCase(std::string_view left, std::string_view right) {
    std::size_t l = 0;
    std::size_t r = 0;
    while (l < left.size() && r < right.size()) {
        const char32_t a = Lower(Next(left, l));
        const char32_t b = Lower(Next(right, r));
        if (a != b) {
            return a < b ? -1 : 1;
        }
    }
    return l < left.size() ? 1 : r < right.size() ? -1 : 0;
}

}  // namespace rdl::expr
