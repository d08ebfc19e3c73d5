// Characters of UTF-8 texts, and what they ask of the shaper.
#pragma once

#include <cstddef>
#include <string_view>

namespace rdl::text {

// The character at `at`, which moves behind it. Bytes that are no UTF-8 are U+FFFD each.
char32_t NextCharacter(std::string_view utf8, std::size_t& at);

// Marks that combine, joined and reordered scripts: what a table lookup gets wrong.
bool NeedsShaping(char32_t character);
bool IsRightToLeft(char32_t character);
// Control characters, joiners, variation selectors and the like: nothing is drawn.
bool IsInvisible(char32_t character);

}  // namespace rdl::text
