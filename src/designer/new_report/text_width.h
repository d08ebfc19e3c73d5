// SPDX-License-Identifier: GPL-3.0-or-later
// Estimates of widths, for columns whose values are known before a font is.
#pragma once

#include <string_view>

namespace designer {

// Returns the width of the text in a common sans-serif font, in parts of the font size (1 is as wide as the
// font is high).
double WidthOf(std::string_view text);
// The same for the widest word, between blanks.
double WidthOfWord(std::string_view text);

}  // namespace designer
