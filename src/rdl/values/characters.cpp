// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/values/characters.h"

#include <QChar>
#include <algorithm>
#include <clocale>
#include <cwctype>

#include "rdl/values/utf8.h"

namespace rdl {
namespace {

// Case must not depend on the locale that the process happens to run in.
locale_t UnicodeLocale() {
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
}

template <typename Change>
std::string Changed(std::string_view text, Change change) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        AppendUtf8(change(NextCharacter(text, at)), result);
    }
    return result;
}

}  // namespace

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
    return QChar::isSpace(c);
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

std::u32string Lower(std::u32string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char32_t c) { return Lower(c); });
    return text;
}

int CompareNoCase(std::string_view left, std::string_view right) {
    std::size_t l = 0;
    std::size_t r = 0;
    while (l < left.size() && r < right.size()) {
        const char32_t a = Lower(NextCharacter(left, l));
        const char32_t b = Lower(NextCharacter(right, r));
        if (a != b) {
            return a < b ? -1 : 1;
        }
    }
    return l < left.size() ? 1 : r < right.size() ? -1 : 0;
}

}  // namespace rdl
