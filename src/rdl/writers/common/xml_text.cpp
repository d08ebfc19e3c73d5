// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/common/xml_text.h"

#include "rdl/api/xml_encoding.h"
#include "rdl/values/utf8.h"
#include "rdl/writers/common/escape.h"

namespace rdl::writers {
namespace {

// A reader of the document takes a carriage return as the end of a line.
bool IsAllowed(char32_t code) {
    return code != '\r' && xml::IsXmlCharacter(code);
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
    AppendEscaped(text, IsAllowed, Apostrophes::AsTheyAre, out);
}

}  // namespace rdl::writers
