// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/xml_text.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "platform/base/ascii.h"
#include "platform/base/text.h"
#include "rdl/api/xml_encoding.h"

namespace designer {
namespace {

struct Interval {
    char32_t first, last;
};

// NameStartChar (section 2.3) beyond ASCII.
constexpr Interval NameStarts[] = {{0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2FF},    {0x370, 0x37D},
                                   {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F}, {0x2C00, 0x2FEF},
                                   {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF}};

bool IsNameStart(char32_t c) {
    if (c < 0x80) {
        return c == ':' || c == '_' || IsAsciiLetter(static_cast<char>(c));
    }
    return std::any_of(std::begin(NameStarts), std::end(NameStarts),
                       [c](const Interval& range) { return c >= range.first && c <= range.last; });
}

bool IsNameCharacter(char32_t c) {
    return IsNameStart(c) || c == '-' || c == '.' || (c >= '0' && c <= '9') || c == 0xB7 ||
           (c >= 0x300 && c <= 0x36F) || (c >= 0x203F && c <= 0x2040);
}

// Appends the text with references resolved; `blank` takes the place of a tab or a line end, 0: they stay.
std::string Resolve(std::string_view written, char blank) {
    std::string text;
    text.reserve(written.size());
    for (std::size_t at = 0; at < written.size(); ++at) {
        const char c = written[at];
        if (c == '\r') {
            const bool isPair = at + 1 < written.size() && written[at + 1] == '\n';
            text += isPair ? "" : std::string(1, blank != '\0' ? blank : '\n');
        } else if (blank != '\0' && (c == '\n' || c == '\t')) {
            text += blank;
        } else if (c == '&') {
            const std::size_t length = written.substr(at, rdl::xml::LongestReference).find(';');
            const auto character = length == std::string_view::npos
                                       ? std::nullopt
                                       : rdl::xml::ReferredCharacter(written.substr(at + 1, length - 1));
            if (character) {
                AppendCharacter(text, *character);
                at += length;
            } else {
                text += c;
            }
        } else {
            text += c;
        }
    }
    return text;
}

}  // namespace

std::size_t NameLength(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        const Character character = CharacterAt(text, at);
        if (at == 0 ? !IsNameStart(character.code) : !IsNameCharacter(character.code)) {
            break;
        }
        at += character.length;
    }
    return at;
}

std::string Resolved(std::string_view written) {
    return Resolve(written, '\0');
}

std::string ResolvedValue(std::string_view written) {
    return Resolve(written, ' ');
}

std::string EscapedText(std::string_view text, std::string_view lineEnd) {
    std::string escaped;
    for (std::size_t at = 0; at < text.size();) {
        const Character character = CharacterAt(text, at);
        const std::string_view bytes = text.substr(at, character.length);
        at += character.length;
        if (!rdl::xml::IsXmlCharacter(character.code)) {
            continue;
        }
        if (bytes == "<") {
            escaped += "&lt;";
        } else if (bytes == ">") {
            escaped += "&gt;";
        } else if (bytes == "&") {
            escaped += "&amp;";
        } else if (bytes == "\n") {
            escaped += lineEnd;
        } else if (bytes == "\r") {
            escaped += "&#xD;";
        } else {
            escaped += bytes;
        }
    }
    return escaped;
}

std::string EscapedValue(std::string_view text, char quote) {
    std::string escaped;
    for (const char c : EscapedText(text, "&#xA;")) {
        if (c == quote) {
            escaped += quote == '"' ? "&quot;" : "&apos;";
        } else if (c == '\t') {
            escaped += "&#x9;";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

std::string ElementXml(std::string_view name, std::string_view content) {
    return "<" + std::string(name) + ">" + std::string(content) + "</" + std::string(name) + ">";
}

std::string LeafOf(std::string_view name, std::string_view text) {
    return ElementXml(name, EscapedText(text, "\n"));
}

std::string WithLineEnds(std::string_view text, std::string_view lineEnd) {
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool isAlone = text[at] == '\n' && (at == 0 || text[at - 1] != '\r');
        result += isAlone && !lineEnd.empty() ? lineEnd : text.substr(at, 1);
    }
    return result;
}

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

}  // namespace designer
