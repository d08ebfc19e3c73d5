// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/html/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "rdl/values/utf8.h"

namespace rdl::writers {
namespace {

constexpr double LongestLength = 1e6;

bool IsPlain(unsigned char c) {
    return c >= 0x20 && c < 0x7F && c != '&' && c != '<' && c != '>' && c != '"' && c != '\'';
}

// Controls and noncharacters are errors in HTML.
bool IsAllowed(char32_t code) {
    const bool control =
        (code < 0x20 && code != '\t' && code != '\n' && code != '\r') || (code >= 0x7F && code < 0xA0);
    return !control && (code & 0xFFFE) != 0xFFFE && !(code >= 0xFDD0 && code <= 0xFDEF);
}

void AppendSpecial(char32_t code, std::string_view bytes, std::string& out) {
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
        case '\'':
            out += "&#39;";
            break;
        case ReplacementCharacter:
            out += "\xEF\xBF\xBD";
            break;
        case '\r':
            break;  // a line feed follows or stands for it
        default:
            if (IsAllowed(code)) {
                out += bytes;
            }
    }
}

}  // namespace

void AppendHtml(std::string_view text, std::string& out) {
    std::size_t i = 0;
    while (i < text.size()) {
        const std::size_t begin = i;
        while (i < text.size() && IsPlain(static_cast<unsigned char>(text[i]))) {
            ++i;
        }
        out += text.substr(begin, i - begin);
        if (i < text.size()) {
            const std::size_t at = i;
            const char32_t code = NextCharacter(text, i);
            AppendSpecial(code, text.substr(at, i - at), out);
        }
    }
}

void AppendPoints(double points, std::string& out) {
    const double bounded = std::isfinite(points) ? std::clamp(points, -LongestLength, LongestLength) : 0;
    const auto hundredths = std::llround(bounded * 100);
    char buffer[40];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, static_cast<double>(hundredths) / 100,
                                       std::chars_format::fixed);
    out.append(buffer, static_cast<std::size_t>(written.ptr - buffer));
    out += hundredths == 0 ? "" : "pt";
}

}  // namespace rdl::writers
