// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/constants.h"

#include <string>

#include "platform/base/ascii.h"

namespace designer {

bool FlagOf(const Document& document, ElementId id, std::string_view path) {
    const std::string text = document.TextAt(id, path).value_or("");
    return SameAscii(Trim(text), "true") || Trim(text) == "1";
}

}  // namespace designer
