// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/common/xml_text.h"

#include "rdl/values/utf8.h"

namespace rdl::writers {
namespace {

bool IsAllowed(char32_t code) {
    return (code >= 0x20 || code == '\t' || code == '\n') && code != 0xFFFE && code != 0xFFFF;
}

bool IsPlain(char c) {
    return c >= 0x20 && c < 0x7F && c != '&' && c != '<' && c != '>' && c != '"';
}

}  // namespace

std::string XmlText(std::string_view text) {
    std::string clean;
    clean.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const char32_t code = NextCharacter(text, at);
        if (IsAllowed(code)) {
            AppendUtf8(code, clean);
        }
    }
    return clean;
}

void AppendXml(std::string_view text, std::string& out) {
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
        switch (code) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            default:
                if (IsAllowed(code)) {
                    AppendUtf8(code, out);
                }
        }
    }
}

}  // namespace rdl::writers
