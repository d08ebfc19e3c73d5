// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/docx/text.h"

#include "rdl/values/ascii.h"
#include "rdl/writers/common/flow_text.h"
#include "rdl/writers/common/xml_text.h"

namespace rdl::writers {
namespace {

constexpr std::string_view LineSeparator = "\xE2\x80\xA8", ParagraphSeparator = "\xE2\x80\xA9";

// Readers drop white space at the ends of a text unless it is asked for.
void AppendPiece(std::string_view text, std::string& out) {
    if (text.empty()) {
        return;
    }
    const bool spaced = text.front() == ' ' || text.back() == ' ' || text.find("  ") != text.npos;
    out += spaced ? "<w:t xml:space=\"preserve\">" : "<w:t>";
    AppendXml(text, out);
    out += "</w:t>";
}

}  // namespace

std::string DocxNamespaces() {
    const std::string office = "http://schemas.openxmlformats.org/";
    return " xmlns:w=\"" + office + "wordprocessingml/2006/main\" xmlns:r=\"" + office +
           "officeDocument/2006/relationships\" xmlns:wp=\"" + office +
           "drawingml/2006/wordprocessingDrawing\" xmlns:a=\"" + office +
           "drawingml/2006/main\" xmlns:pic=\"" + office + "drawingml/2006/picture\"";
}

void AppendRunText(std::string_view text, std::string& out) {
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::size_t length = 1;
        const char* element = nullptr;
        if (text[i] == '\t') {
            element = "<w:tab/>";
        } else if (text[i] == '\n') {
            element = "<w:br/>";
        } else if (text[i] == '\xE2' &&
                   IsOneOf(text.substr(i, LineSeparator.size()), {LineSeparator, ParagraphSeparator})) {
            element = "<w:br/>";
            length = LineSeparator.size();
        } else {
            continue;
        }
        AppendPiece(text.substr(begin, i - begin), out);
        out += element;
        i += length - 1;
        begin = i + 1;
    }
    AppendPiece(text.substr(begin), out);
}

void AppendAttribute(const char* name, std::string_view value, std::string& out) {
    out += ' ';
    out += name;
    out += "=\"";
    AppendXml(value, out);
    out += '"';
}

void AppendAttribute(const char* name, int value, std::string& out) {
    AppendAttribute(name, std::to_string(value), out);
}

void AppendTwipsAttribute(const char* name, double points, std::string& out) {
    AppendAttribute(name, Twips(points), out);
}

std::string DocxColor(layout::Color color) {
    std::string hex;
    for (const int shift : {16, 8, 0}) {
        AppendHexByte(static_cast<char>(OnPaper(color) >> shift & 0xFF), hex);
    }
    return hex;
}

}  // namespace rdl::writers
