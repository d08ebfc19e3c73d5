// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/regfile/utf16.h"

#include <cstddef>

#include "platform/base/text.h"

namespace {

char32_t UnitAt(std::string_view bytes, std::size_t at) {
    return static_cast<unsigned char>(bytes[at]) |
           static_cast<char32_t>(static_cast<unsigned char>(bytes[at + 1])) << 8U;
}

bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

void AppendUnit(std::string& bytes, char32_t unit) {
    bytes += static_cast<char>(unit & 0xFFU);
    bytes += static_cast<char>(unit >> 8U);
}

}  // namespace

std::string Utf8OfUtf16(std::string_view bytes) {
    std::string text;
    std::size_t at = 0;
    for (; at + 1 < bytes.size(); at += 2) {
        char32_t code = UnitAt(bytes, at);
        const char32_t next = at + 3 < bytes.size() ? UnitAt(bytes, at + 2) : 0;
        if (IsHighSurrogate(code) && IsLowSurrogate(next)) {
            code = 0x10000 + ((code - 0xD800) << 10U) + (next - 0xDC00);
            at += 2;
        } else if (IsHighSurrogate(code) || IsLowSurrogate(code)) {
            code = ReplacementCharacter;
        }
        AppendCharacter(text, code);
    }
    if (at < bytes.size()) {
        AppendCharacter(text, ReplacementCharacter);
    }
    return text;
}

std::string Utf16OfUtf8(std::string_view text) {
    std::string bytes;
    for (std::size_t at = 0; at < text.size();) {
        const Character character = CharacterAt(text, at);
        const char32_t code = character.code >= NoCharacter ? ReplacementCharacter : character.code;
        if (code >= 0x10000) {
            AppendUnit(bytes, 0xD800 + ((code - 0x10000) >> 10U));
            AppendUnit(bytes, 0xDC00 + ((code - 0x10000) & 0x3FFU));
        } else {
            AppendUnit(bytes, code);
        }
        at += character.length;
    }
    return bytes;
}
