// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/common/escape.h"

#include "rdl/values/utf8.h"

namespace rdl::writers {
namespace {

bool IsPlain(char c) {
    return c >= 0x20 && c < 0x7F && c != '&' && c != '<' && c != '>' && c != '"' && c != '\'';
}

// Returns an empty text for a character that stands for itself.
std::string_view EntityOf(char32_t code, Apostrophes apostrophes) {
    switch (code) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        case '\'':
            return apostrophes == Apostrophes::AsEntities ? "&#39;" : "";
        default:
            return "";
    }
}

}  // namespace

void AppendEscaped(std::string_view text, bool (*isAllowed)(char32_t), Apostrophes apostrophes,
                   std::string& out) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        while (at < text.size() && IsPlain(text[at])) {
            ++at;
        }
        out += text.substr(begin, at - begin);
        if (at == text.size()) {
            return;
        }
        const char32_t code = NextCharacter(text, at);
        if (const std::string_view entity = EntityOf(code, apostrophes); !entity.empty()) {
            out += entity;
        } else if (isAllowed(code)) {
            AppendUtf8(code, out);
        }
    }
}

}  // namespace rdl::writers
