// SPDX-License-Identifier: GPL-3.0-or-later
// Texts in expressions.
#pragma once

#include <string>
#include <string_view>

namespace rdl {

// Returns the text as expressions write it: in quotation marks, those in the text doubled. A line end stays
// one.
inline std::string TextLiteral(std::string_view text) {
    std::string literal = "\"";
    for (const char c : text) {
        literal.append(c == '"' ? 2 : 1, c);
    }
    return literal + "\"";
}

}  // namespace rdl
