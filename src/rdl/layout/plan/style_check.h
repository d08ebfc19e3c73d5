// SPDX-License-Identifier: GPL-3.0-or-later
// Finds constants of styles that mean nothing. They count as the default, so nothing else shows the mistake.
#pragma once

#include <string>
#include <string_view>

#include "rdl/definition/model.h"

namespace rdl::layout {

// Returns what is wrong with the constant, and what is near it: "Boldd" is not known; the nearest is "Bold".
// Returns an empty text if the property can be drawn with it, or takes any text.
std::string FlawOfStyle(StyleProperty property, std::string_view value);

}  // namespace rdl::layout
