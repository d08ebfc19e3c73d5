// Which font file stands for a font that a report names.
#pragma once

#include "platform/rdl/text/fonts.h"

namespace rdl::text {

// The best file that the machine has, by fontconfig's rules (metric-compatible substitutes first).
// `character`: the file must have it; 0: none in particular. Raises rdl::Error when the machine has no font
// at all.
FontFile MatchFont(const FontRequest& request, char32_t character);

}  // namespace rdl::text
