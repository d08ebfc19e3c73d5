// SPDX-License-Identifier: GPL-3.0-or-later
// Constants of a report, read as the engine reads them but without a refusal: what is no constant of its kind
// is as if it were missing.
#pragma once

#include <string_view>

#include "designer/document/document.h"

namespace designer {

// Returns whether the text at the path is true ("true" in any case, or "1"; blanks around it do not count).
// A missing element, an empty one and an expression are not.
bool FlagOf(const Document& document, ElementId id, std::string_view path);

}  // namespace designer
