// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/rtf/text.h"

#include <QChar>
#include <cstddef>

#include "rdl/values/utf8.h"
#include "rdl/writers/common/flow_text.h"

namespace rdl::writers {
namespace {

constexpr char32_t LineSeparator = 0x2028, ParagraphSeparator = 0x2029;

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

enum class LineEnds { Kept, AsSpaces };  // and tabs

void AppendEscaped(std::string_view text, LineEnds lineEnds, std::string& out) {
    for (std::size_t i = 0; i < text.size();) {
        const char32_t code = NextCharacter(text, i);
        if (code == '\\' || code == '{' || code == '}') {
            out += '\\';
            out += static_cast<char>(code);
        } else if (code < 0x7F && IsPlain(static_cast<unsigned char>(code))) {
            out += static_cast<char>(code);
        } else if (code == '\n' || code == '\t' || code == LineSeparator || code == ParagraphSeparator) {
            out += lineEnds == LineEnds::AsSpaces ? " " : code == '\t' ? "\\tab " : "\\line ";
        } else {
            AppendCode(code, out);
        }
    }
}

}  // namespace

void AppendRtf(std::string_view text, std::string& out) {
    AppendEscaped(text, LineEnds::Kept, out);
}

void AppendRtfName(std::string_view text, std::string& out) {
    AppendEscaped(text, LineEnds::AsSpaces, out);
}

void AppendWord(const char* word, int number, std::string& out) {
    out += word;
    out += std::to_string(number);
}

void AppendTwips(const char* word, double points, std::string& out) {
    AppendWord(word, Twips(points), out);
}

}  // namespace rdl::writers
