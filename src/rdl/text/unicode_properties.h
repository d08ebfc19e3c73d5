// SPDX-License-Identifier: GPL-3.0-or-later
// Decodes UTF-8 and classifies characters for the shaper.
#pragma once

#include <cstddef>
#include <string_view>

namespace rdl::text {

// Returns the character at `at` and moves `at` after it. Each malformed byte gives U+FFFD.
char32_t NextCharacter(std::string_view utf8, std::size_t& at);

// Whether a table lookup would be wrong: combining marks, joined and reordered scripts.
bool NeedsShaping(char32_t character);
bool IsRightToLeft(char32_t character);
// Whether the character draws nothing: control characters, joiners, variation selectors and so on.
bool IsInvisible(char32_t character);

}  // namespace rdl::text
