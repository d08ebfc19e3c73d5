// SPDX-License-Identifier: GPL-3.0-or-later
// Colours in reports.
#pragma once

#include <string_view>
#include <vector>

#include "rdl/layout/model/style.h"

namespace rdl::layout {

// Parses #RGB, #RRGGBB, #AARRGGBB or a CSS colour name in any case; Transparent has alpha 0. Returns false
// and leaves `color` unchanged for any other text.
bool ParseColor(std::string_view text, Color& color);

// Returns the names of all colours, in lower case.
std::vector<std::string_view> ColorNames();

// Whether dark text on this colour cannot be read; false for a colour that is not opaque.
bool IsDark(Color color);

}  // namespace rdl::layout
