// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/base/text.h"

#include <clocale>
#include <cstddef>
#include <cstdint>
#include <cwctype>

namespace {

bool IsTrail(std::string_view text, std::size_t at) {
    return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U;
}

// A locale that knows the characters of every script; the locale of the process may not.
locale_t AllCharacters() {
    static const locale_t characters = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return characters;
}

char32_t Upper(char32_t code) {
    if (code < 0x80) {
        return code >= 'a' && code <= 'z' ? code - ('a' - 'A') : code;
    }
    if (code >= NoCharacter || AllCharacters() == nullptr) {
        return code;
    }
    return static_cast<char32_t>(towupper_l(static_cast<wint_t>(code), AllCharacters()));
}

char32_t Lower(char32_t code) {
    if (code < 0x80) {
        return code >= 'A' && code <= 'Z' ? code + ('a' - 'A') : code;
    }
    if (code >= NoCharacter || AllCharacters() == nullptr) {
        return code;
    }
    return static_cast<char32_t>(towlower_l(static_cast<wint_t>(code), AllCharacters()));
}

}  // namespace

Character CharacterAt(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t offset) { return static_cast<unsigned char>(text[at + offset]); };
    const unsigned char first = byte(0);
    if (first < 0x80) {
        return {first, 1};
    }
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    bool whole = first >= 0xC2 && first <= 0xF4;
    for (std::size_t offset = 1; whole && offset < length; ++offset) {
        whole = IsTrail(text, at + offset);
    }
    if (!whole) {
        return {NoCharacter + first, 1};
    }
    char32_t code = first & (0x7FU >> length);
    for (std::size_t offset = 1; offset < length; ++offset) {
        code = code << 6U | (byte(offset) & 0x3FU);
    }
    constexpr char32_t Smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < Smallest[length] || code > 0x10FFFF || surrogate) {
        return {NoCharacter + first, 1};
    }
    return {code, length};
}

std::size_t CountCharacters(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); at += CharacterAt(text, at).length) {
        ++count;
    }
    return count;
}

std::string_view FirstCharacters(std::string_view text, std::size_t count) {
    std::size_t end = 0;
    for (; count > 0 && end < text.size(); --count) {
        end += CharacterAt(text, end).length;
    }
    return text.substr(0, end);
}

std::string_view CutText(std::string_view text, std::size_t bytes) {
    if (text.size() <= bytes) {
        return text;
    }
    while (bytes > 0 && IsTrail(text, bytes)) {
        --bytes;
    }
    return text.substr(0, bytes);
}

void AppendCharacter(std::string& text, char32_t code) {
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0U | code >> 6U);
        text += static_cast<char>(0x80U | (code & 0x3FU));
    } else if (code < 0x10000) {
        text += static_cast<char>(0xE0U | code >> 12U);
        text += static_cast<char>(0x80U | (code >> 6U & 0x3FU));
        text += static_cast<char>(0x80U | (code & 0x3FU));
    } else if (code < NoCharacter) {
        text += static_cast<char>(0xF0U | code >> 18U);
        text += static_cast<char>(0x80U | (code >> 12U & 0x3FU));
        text += static_cast<char>(0x80U | (code >> 6U & 0x3FU));
        text += static_cast<char>(0x80U | (code & 0x3FU));
    } else {
        text += static_cast<char>(code - NoCharacter);
    }
}

bool IsUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const Character character = CharacterAt(text, at);
        if (character.code >= NoCharacter) {
            return false;
        }
        at += character.length;
    }
    return true;
}

std::string ValidUtf8(std::string_view text) {
    std::string valid;
    valid.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Character character = CharacterAt(text, at);
        AppendCharacter(valid, character.code < NoCharacter ? character.code : ReplacementCharacter);
        at += character.length;
    }
    return valid;
}

std::string UpperText(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Character character = CharacterAt(text, at);
        AppendCharacter(result, Upper(character.code));
        at += character.length;
    }
    return result;
}

int CompareText(std::string_view left, std::string_view right) {
    std::size_t leftAt = 0;
    std::size_t rightAt = 0;
    while (leftAt < left.size() && rightAt < right.size()) {
        if (left[leftAt] == right[rightAt] && static_cast<unsigned char>(left[leftAt]) < 0x80) {
            ++leftAt;
            ++rightAt;
            continue;
        }
        const Character one = CharacterAt(left, leftAt);
        const Character other = CharacterAt(right, rightAt);
        const char32_t oneLower = Lower(one.code);
        const char32_t otherLower = Lower(other.code);
        if (oneLower != otherLower) {
            return oneLower < otherLower ? -1 : 1;
        }
        leftAt += one.length;
        rightAt += other.length;
    }
    const bool leftEnded = leftAt >= left.size();
    const bool rightEnded = rightAt >= right.size();
    return static_cast<int>(rightEnded) - static_cast<int>(leftEnded);
}

namespace {

// One element of a pattern at a position.
struct PatternPiece {
    enum Kind { Any, One, Exactly } kind;
    char32_t code;
    std::size_t length;
};

PatternPiece PieceAt(std::string_view pattern, std::size_t at, char32_t escape) {
    const Character character = CharacterAt(pattern, at);
    if (character.code == escape && at + character.length < pattern.size()) {
        const Character escaped = CharacterAt(pattern, at + character.length);
        return {PatternPiece::Exactly, Lower(escaped.code), character.length + escaped.length};
    }
    const auto kind = character.code == '%'   ? PatternPiece::Any
                      : character.code == '_' ? PatternPiece::One
                                              : PatternPiece::Exactly;
    return {kind, Lower(character.code), character.length};
}

}  // namespace

// A mismatch returns only to the last %: an earlier one could match nothing that the last one cannot. So the
// time is bounded by the product of the two lengths.
bool LikeText(std::string_view text, std::string_view pattern, char32_t escape) {
    std::size_t textAt = 0;
    std::size_t patternAt = 0;
    std::size_t afterWildcard = std::string_view::npos;
    std::size_t wildcardText = 0;
    while (true) {
        const bool hasPiece = patternAt < pattern.size();
        const PatternPiece piece = hasPiece ? PieceAt(pattern, patternAt, escape)
                                            : PatternPiece{PatternPiece::Exactly, NoCharacter, 0};
        if (hasPiece && piece.kind == PatternPiece::Any) {
            patternAt += piece.length;
            afterWildcard = patternAt;
            wildcardText = textAt;
            continue;
        }
        if (textAt >= text.size()) {
            return !hasPiece;
        }
        const Character character = CharacterAt(text, textAt);
        if (hasPiece && (piece.kind == PatternPiece::One || piece.code == Lower(character.code))) {
            textAt += character.length;
            patternAt += piece.length;
        } else if (afterWildcard != std::string_view::npos) {
            wildcardText += CharacterAt(text, wildcardText).length;
            textAt = wildcardText;
            patternAt = afterWildcard;
        } else {
            return false;
        }
    }
}
