// SPDX-License-Identifier: GPL-3.0-or-later
// Texts prepared for error messages.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace rdl {

// Replaces every ' by ". Applications put error texts into SQL statements, where ' would end a literal.
inline std::string WithoutMarks(std::string_view text) {
    std::string plain(text);
    std::replace(plain.begin(), plain.end(), '\'', '"');
    return plain;
}

}  // namespace rdl
