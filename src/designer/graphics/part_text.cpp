// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphics/part_text.h"

#include "designer/document/editing.h"
#include "platform/base/ascii.h"

namespace designer {

std::string TrimmedTextAt(const Document& document, ElementId id, std::string_view path) {
    return std::string(Trim(document.TextAt(id, path).value_or("")));
}

void PutTrimmedText(Document& document, ElementId id, std::string_view path, const std::string& old,
                    const std::string& text) {
    if (old != text) {
        SetOrRemove(document, id, path, text);
    }
}

}  // namespace designer
