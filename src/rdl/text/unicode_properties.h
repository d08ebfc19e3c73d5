// SPDX-License-Identifier: GPL-3.0-or-later
// Classifies characters for the shaper.
#pragma once

namespace rdl::text {

// Whether a table lookup would be wrong: combining marks, joined and reordered scripts.
bool NeedsShaping(char32_t character);
bool IsRightToLeft(char32_t character);
// Whether the character draws nothing: control characters, joiners, variation selectors and so on.
bool IsInvisible(char32_t character);

}  // namespace rdl::text
