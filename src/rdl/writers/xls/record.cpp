// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xls/record.h"

#include <QChar>
#include <algorithm>

#include "rdl/values/utf8.h"

namespace rdl::writers {

void XlsRecords::ShortText(std::u16string_view text) {
    text = text.substr(0, 0xFF);
    U8(static_cast<unsigned>(text.size()));
    Characters(text);
}

void XlsRecords::LongText(std::u16string_view text) {
    text = text.substr(0, 0xFFFF);
    U16(static_cast<unsigned>(text.size()));
    Characters(text);
}

void XlsRecords::Characters(std::u16string_view text) {
    const bool narrow = IsNarrow(text);
    U8(narrow ? 0 : 1);
    for (const char16_t c : text) {
        if (narrow) {
            U8(c);
        } else {
            U16(c);
        }
    }
}

std::u16string ToUtf16(std::string_view utf8, std::size_t limit) {
    std::u16string text;
    text.reserve(std::min(utf8.size(), limit));
    std::size_t i = 0;
    while (i < utf8.size()) {
        const char32_t code = NextCharacter(utf8, i);
        const std::size_t units = QChar::requiresSurrogates(code) ? 2 : 1;
        if (text.size() + units > limit) {
            break;
        }
        if (units == 2) {
            text += QChar::highSurrogate(code);
            text += QChar::lowSurrogate(code);
        } else if (code >= 0x20 || code == '\n' || code == '\t') {
            text += static_cast<char16_t>(code);
        }
    }
    return text;
}

bool IsNarrow(std::u16string_view text) {
    return std::all_of(text.begin(), text.end(), [](char16_t c) { return c < 0x100; });
}

}  // namespace rdl::writers
