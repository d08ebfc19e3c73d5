// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/new_report/text_width.h"

#include <algorithm>

#include "platform/base/text.h"

namespace designer {
namespace {

bool IsOneOf(char32_t code, std::string_view characters) {
    return code < 0x80 && characters.find(static_cast<char>(code)) != std::string_view::npos;
}

double WidthOf(char32_t code) {
    if (IsOneOf(code, " .,:;'|!ijlftrI()[]/-")) {
        return 0.33;
    }
    if (IsOneOf(code, "mwMW@%")) {
        return 0.86;
    }
    if (code >= 'A' && code <= 'Z') {
        return 0.69;
    }
    // From Hangul Jamo on most characters are as wide as high.
    return code >= 0x1100 && code < NoCharacter ? 1.0 : 0.556;
}

}  // namespace

double WidthOf(std::string_view text) {
    double width = 0;
    for (std::size_t at = 0; at < text.size();) {
        const Character character = CharacterAt(text, at);
        at += character.length;
        width += WidthOf(character.code);
    }
    return width;
}

double WidthOfWord(std::string_view text) {
    double widest = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(" \t\n"), text.size());
        widest = std::max(widest, WidthOf(text.substr(0, end)));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return widest;
}

}  // namespace designer
