// SPDX-License-Identifier: GPL-3.0-or-later
// What the markup languages have in common: the characters that content and quoted attributes must not hold
// as they are.
#pragma once

#include <string>
#include <string_view>

namespace rdl::writers {

enum class Apostrophes { AsTheyAre, AsEntities };
// Appends the text with & < > " as entities, and apostrophes if they are AsEntities; a malformed byte becomes
// U+FFFD. A character for which `isAllowed` returns false is left out.
void AppendEscaped(std::string_view text, bool (*isAllowed)(char32_t), Apostrophes apostrophes,
                   std::string& out);

}  // namespace rdl::writers
