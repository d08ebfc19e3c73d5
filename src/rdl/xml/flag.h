// SPDX-License-Identifier: GPL-3.0-or-later
// Truth values in files (XML Schema, boolean).
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "rdl/values/ascii.h"

namespace rdl::xml {

// Returns the truth of true, 1, false or 0 in any case, with blanks around it or not; nullopt for other
// texts.
inline std::optional<bool> FlagOf(std::string_view text) {
    text = Trimmed(text);
    if (EqualNoCase(text, "true") || text == "1") {
        return true;
    }
    return EqualNoCase(text, "false") || text == "0" ? std::optional(false) : std::nullopt;
}

// Returns the error text for such a text.
inline std::string NotAFlag(std::string_view text) {
    return "\"" + std::string(Trimmed(text)) + "\" is neither true nor false";
}

}  // namespace rdl::xml
