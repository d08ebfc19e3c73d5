// Colours as reports write them.
#pragma once

#include <string_view>

#include "rdl/layout/model/style.h"

namespace rdl::layout {

// #RGB, #RRGGBB, #AARRGGBB or a name of the web's palette in any case; Transparent has alpha 0. False when
// the text is no colour; `color` is untouched then.
bool ParseColor(std::string_view text, Color& color);

}  // namespace rdl::layout
