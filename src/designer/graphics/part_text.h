// SPDX-License-Identifier: GPL-3.0-or-later
// Texts of parts of charts, gauges and bar codes, as they are read and written.
#pragma once

#include <string>
#include <string_view>

#include "designer/document/document.h"

namespace designer {

// Returns the text at the path from the element, without blanks around it; "" if there is none.
std::string TrimmedTextAt(const Document& document, ElementId id, std::string_view path);
// Returns an element that contains the text only, as XML.
std::string LeafOf(std::string_view name, std::string_view text);

}  // namespace designer
