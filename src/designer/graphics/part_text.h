// SPDX-License-Identifier: GPL-3.0-or-later
// Texts of parts of charts, gauges and bar codes, as they are read and written.
#pragma once

#include <string>
#include <string_view>

#include "designer/document/document.h"

namespace designer {

// Returns the text at the path from the element, without blanks around it; "" if there is none.
std::string TrimmedTextAt(const Document& document, ElementId id, std::string_view path);
// Writes the text there if it is another than `old`, which was read so. An empty one removes the element.
void PutTrimmedText(Document& document, ElementId id, std::string_view path, const std::string& old,
                    const std::string& text);

}  // namespace designer
