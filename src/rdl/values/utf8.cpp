// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/values/utf8.h"

namespace rdl {

char32_t NextLongCharacter(std::string_view text, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(text[at++]);
    const std::size_t more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4 || text.size() - at < more) {
        return ReplacementCharacter;
    }
    char32_t character = lead & (0x3FU >> more);
    for (std::size_t i = at; i < at + more; ++i) {
        if (!IsContinuationByte(text[i])) {
            return ReplacementCharacter;
        }
        character = character << 6 | (static_cast<unsigned char>(text[i]) & 0x3FU);
    }
    constexpr char32_t Least[] = {0, 0x80, 0x800, 0x10000};
    if (character < Least[more] || character > 0x10FFFF || (character >= 0xD800 && character <= 0xDFFF)) {
        return ReplacementCharacter;
    }
    at += more;
    return character;
}

char* PutUtf8(char32_t character, char* to) {
    const auto put = [&to](char32_t byte) { *to++ = static_cast<char>(byte); };
    if (character < 0x80) {
        put(character);
        return to;
    }
    if (character < 0x800) {
        put(0xC0 | character >> 6);
    } else {
        if (character < 0x10000) {
            put(0xE0 | character >> 12);
        } else {
            put(0xF0 | character >> 18);
            put(0x80 | (character >> 12 & 0x3F));
        }
        put(0x80 | (character >> 6 & 0x3F));
    }
    put(0x80 | (character & 0x3F));
    return to;
}

std::u32string ToUtf32(std::string_view text) {
    std::u32string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        result.push_back(NextCharacter(text, at));
    }
    return result;
}

std::string ToUtf8(std::u32string_view characters) {
    std::string result;
    result.reserve(characters.size());
    for (const char32_t character : characters) {
        AppendUtf8(character, result);
    }
    return result;
}

std::size_t CharacterCount(std::string_view text) {
    return CharacterIndex(text, text.size());
}

std::size_t CharacterIndex(std::string_view text, std::size_t byte) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < byte && at < text.size(); ++count) {
        NextCharacter(text, at);
    }
    return count;
}

std::size_t ByteIndex(std::string_view text, std::size_t character) {
    std::size_t at = 0;
    while (character > 0 && at < text.size()) {
        NextCharacter(text, at);
        --character;
    }
    return at;
}

std::string_view Slice(std::string_view text, std::size_t start, std::size_t count) {
    text.remove_prefix(ByteIndex(text, start));
    return text.substr(0, ByteIndex(text, count));
}

std::string_view WholeCharacters(std::string_view text, std::size_t bytes) {
    if (bytes >= text.size()) {
        return text;
    }
    std::size_t end = bytes;
    while (end > 0 && bytes - end < LongestUtf8 && IsContinuationByte(text[end])) {
        --end;
    }
    return text.substr(0, end);
}

}  // namespace rdl
