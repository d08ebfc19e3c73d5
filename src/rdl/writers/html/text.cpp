// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/html/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "rdl/values/ascii.h"
#include "rdl/values/base64.h"
#include "rdl/writers/common/escape.h"

namespace rdl::writers {
namespace {

constexpr double LongestLength = 1e6;

// Controls and noncharacters are errors in HTML; after a carriage return a line feed follows or stands for
// it.
bool IsAllowed(char32_t code) {
    const bool control = (code < 0x20 && code != '\t' && code != '\n') || (code >= 0x7F && code < 0xA0);
    return !control && (code & 0xFFFE) != 0xFFFE && !(code >= 0xFDD0 && code <= 0xFDEF);
}

}  // namespace

void AppendHtml(std::string_view text, std::string& out) {
    AppendEscaped(text, IsAllowed, Apostrophes::AsEntities, out);
}

void AppendNumber(double number, std::string& out) {
    const double bounded = std::isfinite(number) ? std::clamp(number, -LongestLength, LongestLength) : 0;
    const auto hundredths = std::llround(bounded * 100);
    char buffer[40];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, static_cast<double>(hundredths) / 100,
                                       std::chars_format::fixed);
    out.append(buffer, static_cast<std::size_t>(written.ptr - buffer));
}

void AppendPoints(double points, std::string& out) {
    const std::size_t before = out.size();
    AppendNumber(points, out);
    out += std::string_view(out).substr(before) == "0" ? "" : "pt";
}

void AppendColor(layout::Color color, std::string& out) {
    out += '#';
    for (const int shift : {16, 8, 0}) {
        AppendHexByte(static_cast<char>(color >> shift & 0xFF), out, SmallHexDigits);
    }
    if (const unsigned alpha = color >> 24; alpha != 0xFF) {
        AppendHexByte(static_cast<char>(alpha), out, SmallHexDigits);
    }
}

void AppendDataUri(image::Type type, std::string_view bytes, std::string& out) {
    static constexpr const char* Types[] = {"png", "jpeg", "gif", "bmp"};
    out.append("data:image/")
        .append(Types[static_cast<int>(type)])
        .append(";base64,")
        .append(ToBase64(bytes));
}

void AppendFamily(std::string_view family, std::string& css) {
    css += "font-family:\"";
    for (const char c : family) {
        if (IsNameByte(c) || c == ' ' || c == '-') {
            css += c;
        }
    }
    css += "\",sans-serif;";
}

}  // namespace rdl::writers
