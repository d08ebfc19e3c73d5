// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/rtf/text.h"

#include <QChar>
#include <algorithm>
#include <cmath>
#include <cstddef>

#include "rdl/values/ascii.h"
#include "rdl/values/utf8.h"
#include "rdl/writers/common/content.h"

namespace rdl::writers {
namespace {

constexpr char32_t LineSeparator = 0x2028, ParagraphSeparator = 0x2029;
constexpr double LongestLength = 1584;  // points: 22 inches, the largest page of a word processor

void AppendUnit(unsigned unit, std::string& out) {
    // The number is one of 16 bits with a sign; the mark is for readers that know no Unicode.
    out += "\\u" + std::to_string(unit < 0x8000 ? static_cast<int>(unit) : static_cast<int>(unit) - 0x10000);
    out += '?';
}

void AppendCode(char32_t code, std::string& out) {
    if (QChar::requiresSurrogates(code)) {
        AppendUnit(QChar::highSurrogate(code), out);
        AppendUnit(QChar::lowSurrogate(code), out);
    } else if (code >= 0xA0 && code < 0xFFFE) {
        AppendUnit(code, out);
    }
}

bool IsPlain(unsigned char c) {
    return c >= 0x20 && c < 0x7F && c != '\\' && c != '{' && c != '}';
}

void AppendEscaped(std::string_view text, bool oneLine, std::string& out) {
    for (std::size_t i = 0; i < text.size();) {
        const char32_t code = NextCharacter(text, i);
        if (code == '\\' || code == '{' || code == '}') {
            out += '\\';
            out += static_cast<char>(code);
        } else if (code < 0x7F && IsPlain(static_cast<unsigned char>(code))) {
            out += static_cast<char>(code);
        } else if (code == '\n' || code == '\t' || code == LineSeparator || code == ParagraphSeparator) {
            out += oneLine ? " " : code == '\t' ? "\\tab " : "\\line ";
        } else {
            AppendCode(code, out);
        }
    }
}

}  // namespace

void AppendRtf(std::string_view text, std::string& out) {
    AppendEscaped(text, false, out);
}

void AppendRtfName(std::string_view text, std::string& out) {
    AppendEscaped(text, true, out);
}

void AppendWord(const char* word, int number, std::string& out) {
    out += word;
    out += std::to_string(number);
}

int Twips(double points) {
    const double bounded = std::isfinite(points) ? std::clamp(points, -LongestLength, LongestLength) : 0;
    return static_cast<int>(std::lround(bounded * 20));
}

void AppendTwips(const char* word, double points, std::string& out) {
    AppendWord(word, Twips(points), out);
}

std::string RtfAddress(const std::string& link) {
    const std::string safe = SafeLink(link);
    const std::string scheme = LowerAscii(std::string_view(safe).substr(0, safe.find(':')));
    const auto allowed = {"http", "https", "mailto", "ftp"};
    if (scheme.size() == safe.size() || std::find(allowed.begin(), allowed.end(), scheme) == allowed.end()) {
        return {};
    }
    return PercentEncoded(
        safe, [](char c) { return IsPlain(static_cast<unsigned char>(c)) && c != '"' && c != ' '; });
}

}  // namespace rdl::writers
