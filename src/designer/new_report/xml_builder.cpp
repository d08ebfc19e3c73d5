// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/new_report/xml_builder.h"

#include <algorithm>
#include <iterator>

#include "platform/base/text.h"
#include "rdl/api/xml_encoding.h"

namespace designer {
namespace {

enum class Where { Content, Attribute };

// Unlike EscapedText of the document room, which oxc-report does not link, it keeps a place for a character
// that XML does not have: two columns of a query stay two.

void AppendEscaped(std::string& out, std::string_view text, Where where) {
    for (std::size_t at = 0; at < text.size();) {
        const Character character = CharacterAt(text, at);
        at += character.length;
        switch (character.code) {
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
                out += where == Where::Attribute ? "&quot;" : "\"";
                break;
            case '\r':  // a reader takes one that is written as it is for a line feed
                out += "&#13;";
                break;
            default:
                AppendCharacter(
                    out, rdl::xml::IsXmlCharacter(character.code) ? character.code : ReplacementCharacter);
        }
    }
}

void PrintElement(std::string& out, const Xml& element, std::size_t level) {
    out.append(level * 2, ' ');
    out += "<" + element.name;
    for (const auto& [name, value] : element.attributes) {
        out += " " + name + "=\"";
        AppendEscaped(out, value, Where::Attribute);
        out += "\"";
    }
    if (element.children.empty() && element.text.empty()) {
        out += " />\n";
        return;
    }
    out += ">";
    if (element.children.empty()) {
        AppendEscaped(out, element.text, Where::Content);
    } else {
        out += "\n";
        for (const Xml& child : element.children) {
            PrintElement(out, child, level + 1);
        }
        out.append(level * 2, ' ');
    }
    out += "</" + element.name + ">\n";
}

}  // namespace

Xml Element(std::string_view name, XmlList children) {
    std::erase_if(children, [](const Xml& child) { return child.name.empty(); });
    return {.name = std::string(name), .children = std::move(children)};
}

Xml Named(std::string_view name, std::string_view itemName, XmlList children) {
    Xml element = Element(name, std::move(children));
    element.attributes.emplace_back("Name", itemName);
    return element;
}

Xml Text(std::string_view name, std::string_view text) {
    return {.name = std::string(name), .text = std::string(text)};
}

std::string Print(const Xml& root) {
    std::string out = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
    PrintElement(out, root, 0);
    return out;
}

}  // namespace designer
