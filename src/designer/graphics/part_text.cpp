// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphics/part_text.h"

#include "designer/document/xml_text.h"
#include "platform/base/ascii.h"

namespace designer {

std::string TrimmedTextAt(const Document& document, ElementId id, std::string_view path) {
    return std::string(Trim(document.TextAt(id, path).value_or("")));
}

std::string LeafOf(std::string_view name, std::string_view text) {
    return "<" + std::string(name) + ">" + EscapedText(text, "\n") + "</" + std::string(name) + ">";
}

}  // namespace designer
